// What no program shows of the built-in functions.
#include "exec/functions/functions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "exec/functions/spline.h"
#include "exec/values/evaluation_stack.h"
#include "lang/text/language_tables.h"
#include "sample/property_file.h"
#include "wsp/property_file.h"

namespace zorvik {
namespace {

TEST(Spline, OfTwoPointsIsALine) {
  const double x[] = {1, 3}, y[] = {5, 9};
  double b[2], c[2], d[2];
  spline_coefficients(2, x, y, b, c, d);
  EXPECT_EQ(b[0], 2);
  EXPECT_EQ(b[1], 2);
  EXPECT_EQ(c[0], 0);
  EXPECT_EQ(d[1], 0);
}

TEST(PropertyFunctions, ReadTheTablesOnce) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(testing::TempDir());
  std::ofstream(std::string(kPropertyFileName), std::ios::binary)
      << sample::sample_property_file_bytes();
  for (int call = 1; call <= 2; ++call) {
    reset_evaluation();
    push_scalar(kInteger, 1);
    *push_text(1) = 'T';
    push_scalar(kInteger, 500);
    push_scalar(kInteger, -1);
    iu9fn2(kFunctionWs1p1, 4);
    EXPECT_NEAR(*values_of(top_entry()), 2.639e6, 5e3);
    EXPECT_EQ(evaluation.depth, 1);
    EXPECT_EQ(evaluation.text_used, 0);
    std::filesystem::remove(kPropertyFileName);
  }
  std::filesystem::current_path(before);
}

}  // namespace
}  // namespace zorvik
