// Against the exact conversion of the standard library, over the whole range of doubles.
#include "driver/decimal_digits.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <random>
#include <string>

#include "driver/number_format.h"

namespace zorvik {
namespace {

std::string exact(double value, int decimals) {
  char buffer[64];
  const auto end =
      std::to_chars(buffer, buffer + 64, value, std::chars_format::scientific, decimals).ptr;
  std::string text(buffer, end);
  const std::size_t e = text.find('e');
  const bool three_digits = text.size() - e == 5;
  return text.substr(0, e) + (three_digits ? "" : "E") + text.substr(e + 1);
}

std::string formatted(double value, int decimals) {
  const NumberText field = format_scientific(value, 20, decimals);
  const std::string text(field.text, static_cast<std::size_t>(field.length));
  return text.substr(text.find_first_not_of(' '));
}

TEST(DecimalDigits, AgreeWithTheExactConversion) {
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

TEST(DecimalDigits, AgreeAroundThePowersOfTen) {
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
