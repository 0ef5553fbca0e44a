// The digits as one whole number, times or divided by a power of ten: with both exact in a double
// the one rounding of the product is the right one. What is larger goes to std::from_chars.
//   1.234567890E+04 -> 1234567890 / 10^5
#include "lang/text/plain_real.h"

#include <charconv>
#include <cstdint>
#include <iterator>

namespace zorvik {
namespace {

constexpr double kExactTens[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                 1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int kMaxExactPower = std::size(kExactTens) - 1;
constexpr std::uint64_t kMaxExactWhole = std::uint64_t{1} << 53;
constexpr int kMaxMantissa = 19;  // the point included: 18 digits fit into 64 bits

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Adds the digits at `p` to `number`; returns the character behind them.
// More digits than `number` holds wrap round: the caller refuses them by their count.
template <class Number>
const char* take_digits(const char* p, const char* end, Number& number) {
  for (; p < end && is_digit(*p); ++p) number = number * 10 + static_cast<Number>(*p - '0');
  return p;
}

// The exponent at `p`, if there is one; nullptr for one that is not plain.
const char* take_exponent(const char* p, const char* end, int& exponent) {
  if (p == end || *p != 'E') return p;
  ++p;
  const bool negative = p < end && *p == '-';
  if (p < end && (*p == '+' || *p == '-')) ++p;
  const char* const digits = p;
  const char* const limit = end - p > 2 ? p + 2 : end;
  p = take_digits(p, limit, exponent);
  if (negative) exponent = -exponent;
  return p == digits ? nullptr : p;
}

}  // namespace

const char* take_plain_real(const char* first, const char* end, double& value) {
  std::uint64_t digits = 0;
  const char* const point = take_digits(first, end, digits);
  if (point == first || point == end || *point != '.') return nullptr;
  const char* p = take_digits(point + 1, end, digits);
  const auto places = static_cast<int>(p - point) - 1;
  // "12." and the like are left to the general way.
  if (places == 0 || p - first > kMaxMantissa) return nullptr;
  int exponent = 0;
  p = take_exponent(p, end, exponent);
  if (p == nullptr || (p < end && *p != ' ')) return nullptr;

  const int power = exponent - places;
  if (digits > kMaxExactWhole || power > kMaxExactPower || power < -kMaxExactPower) {
    std::from_chars(first, p, value);
  } else {
    const auto whole = static_cast<double>(digits);
    value = power < 0 ? whole / kExactTens[-power] : whole * kExactTens[power];
  }
  return p;
}

}  // namespace zorvik
