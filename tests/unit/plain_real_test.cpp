#include "lang/text/plain_real.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "lang/text/constants.h"

namespace zorvik {
namespace {

// The length of what is taken, 0 when nothing is.
std::size_t taken(std::string_view text, double& value) {
  const char* const stop = take_plain_real(text.data(), text.data() + text.size(), value);
  return stop == nullptr ? 0 : static_cast<std::size_t>(stop - text.data());
}

TEST(PlainReal, TakesWhatIsWrittenPlainly) {
  const struct {
    std::string_view text;
    std::size_t length;
    double value;
  } kRows[] = {
      {"12.5", 4, 12.5},
      {"1.234567890E+04 7", 15, 12345.6789},
      {"0.25E-1", 7, 0.025},
      {"3.12345678", 10, 3.12345678},
      {"3.1234567 9", 9, 3.1234567},
      {"9.5E22 ", 6, 9.5e22},
      {"0.1E-22", 7, 1e-23},                           // the power of ten is not exact
      {"9007199254740993.0", 18, 9007199254740992.0},  // nor is the number
      {"000.000E+99", 11, 0.0},
  };
  for (const auto& row : kRows) {
    double value = -1.0;
    EXPECT_EQ(taken(row.text, value), row.length) << row.text;
    EXPECT_EQ(value, row.value) << row.text;
  }
}

TEST(PlainReal, LeavesEveryOtherForm) {
  double value = 0.0;
  for (const std::string_view text :
       {"",      ".",       "1",          "1.",         ".5",
        "-1.5",  "1.5E",    "1.5E+",      "1.5E+100",   "1.5e3",
        "1.5D3", "1.5+300", "1.5.2",      "1.5!",       "1.5\t",
        "1.5,",  "UNDEF",   "2.1234567/", "2.1234:678", "1234567890.1234567890"}) {
    EXPECT_EQ(taken(text, value), 0u) << text;
  }
  EXPECT_EQ(taken("2.1234567\xB5", value), 0u);
}

// Whatever is taken has the value, and no error, of the constant that it is.
TEST(PlainReal, AgreesWithConstants) {
  constexpr std::string_view kCharacters = "0123456789.E+-0123456789.";
  std::mt19937 random(7);
  int taken_texts = 0;
  for (int k = 0; k < 300000; ++k) {
    std::string text(1 + random() % 14, ' ');
    for (char& c : text) c = kCharacters[random() % kCharacters.size()];
    double value = 0.0;
    if (taken(text, value) == 0) continue;
    ++taken_texts;
    std::string error;
    ASSERT_EQ(value, parse_real_constant(text, error)) << text;
    ASSERT_EQ(error, "") << text;
  }
  EXPECT_GT(taken_texts, 1000);
}

}  // namespace
}  // namespace zorvik
