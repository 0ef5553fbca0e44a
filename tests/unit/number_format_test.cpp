#include "driver/number_format.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <random>
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

TEST(NumberFormat, ANewRunBeginsWithTenDigits) {
  for (int run = 1; run <= 2; ++run) {
    reset_number_format();
    EXPECT_EQ(text(format_real(1.5)), "1.500000000E+00");
    adopt_format_key(5.0);
    EXPECT_EQ(text(format_real(1.5)), "1.5000E+00");
  }
  reset_number_format();
}

// By the exact conversion of the standard library.
std::string exact(double value, int decimals) {
  char buffer[64];
  const auto end =
      std::to_chars(buffer, buffer + 64, value, std::chars_format::scientific, decimals).ptr;
  std::string field(buffer, end);
  const std::size_t e = field.find('e');
  return field.substr(0, e) + (field.size() - e == 5 ? "" : "E") + field.substr(e + 1);
}

std::string formatted(double value, int decimals) {
  const std::string field = text(format_scientific(value, 20, decimals));
  return field.substr(field.find_first_not_of(' '));
}

TEST(NumberFormat, DigitsAreThoseOfTheExactConversion) {
  std::mt19937_64 random(20);
  for (int k = 0; k < 300000; ++k) {
    const double any = std::bit_cast<double>(random());
    const double near_tie = static_cast<double>(random() % 200000000000) / (1 << random() % 12);
    const int decimals = 1 + static_cast<int>(random() % 9);
    if (std::isfinite(any)) {
      ASSERT_EQ(formatted(any, decimals), exact(any, decimals));
    }
    ASSERT_EQ(formatted(near_tie, decimals), exact(near_tie, decimals));
  }
}

TEST(NumberFormat, DigitsAroundThePowersOfTen) {
  for (int power = -323; power <= 308; ++power) {
    const double ten = std::pow(10.0, power);
    for (const double value : {ten, std::nextafter(ten, 0.0), std::nextafter(ten, 1e308)}) {
      ASSERT_EQ(formatted(value, 9), exact(value, 9));
      ASSERT_EQ(formatted(-value, 3), exact(-value, 3));
    }
  }
}

}  // namespace
}  // namespace zorvik
