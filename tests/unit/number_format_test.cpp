#include "driver/number_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace zorvik {
namespace {

std::string text(std::string_view view) { return std::string(view); }

TEST(NumberFormat, FieldsAreRightJustifiedAndOverflowToAsterisks) {
  EXPECT_EQ(text(format_percentage(0.52)), "  0.52");
  EXPECT_EQ(text(format_percentage(100.0)), "100.00");
  EXPECT_EQ(text(format_percentage(0.075)), "  0.07");  // the double lies just below
  EXPECT_EQ(text(format_scientific(615.2, 14, 7)), " 6.1520000E+02");
  EXPECT_EQ(text(format_scientific(-1.5, 14, 7)), "-1.5000000E+00");
  EXPECT_EQ(text(format_scientific(-1e-300, 14, 7)), "-1.0000000-300");
  EXPECT_EQ(text(format_fixed(507.848, 7, 2)), " 507.85");
  EXPECT_EQ(text(format_fixed(123456.0, 7, 2)), "*******");
}

TEST(NumberFormat, HalvesRoundAwayFromZero) {
  EXPECT_EQ(round_half_away(2.5), 3.0);
  EXPECT_EQ(round_half_away(-2.5), -3.0);
  EXPECT_EQ(round_half_away(-0.4), 0.0);
  EXPECT_EQ(round_half_away(4503599627370497.0), 4503599627370497.0);
  EXPECT_TRUE(std::isnan(round_half_away(NAN)));
  EXPECT_EQ(round_half_away(INFINITY), INFINITY);
}

}  // namespace
}  // namespace zorvik
