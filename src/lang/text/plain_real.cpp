// The digits as one whole number, times or divided by a power of ten: with both exact in a double
// the one rounding of the product is the right one. What is larger goes to std::from_chars. Of the
// digits behind the point, mostly nine, eight are taken in one word.
//   1.234567890E+04 -> 1234567890 / 10^5
#include "lang/text/plain_real.h"

#include <charconv>
#include <cstdint>
#include <cstring>
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

// Eight characters as one word, the first in its lowest byte.
std::uint64_t eight_at(const char* p) {
  std::uint64_t word;
  std::memcpy(&word, p, sizeof word);
  return word;
}

bool are_digits(std::uint64_t word) {
  constexpr std::uint64_t kUpperHalves = 0xF0F0F0F0F0F0F0F0, kZeros = 0x3030303030303030;
  return (word & kUpperHalves) == kZeros && ((word + 0x0606060606060606) & kUpperHalves) == kZeros;
}

// Neighbours are put together three times, in lanes of two, four and eight bytes:
//   1 2 3 4 5 6 7 8 -> 12 34 56 78 -> 1234 5678 -> 12345678
std::uint64_t value_of_eight(std::uint64_t word) {
  word = (word & 0x0F0F0F0F0F0F0F0F) * (1 + (10 << 8)) >> 8;
  word = (word & 0x00FF00FF00FF00FF) * (1 + (100 << 16)) >> 16;
  return (word & 0x0000FFFF0000FFFF) * (1 + (std::uint64_t{10000} << 32)) >> 32;
}

// Adds the digits at `p` to `number`; returns the character behind them.
// More digits than `number` holds wrap round: the caller refuses them by their count.
const char* take_digits(const char* p, const char* end, std::uint64_t& number) {
  for (; p < end && is_digit(*p); ++p) number = number * 10 + static_cast<std::uint64_t>(*p - '0');
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
  std::uint64_t magnitude = 0;
  p = take_digits(p, limit, magnitude);
  exponent = negative ? -static_cast<int>(magnitude) : static_cast<int>(magnitude);
  return p == digits ? nullptr : p;
}

}  // namespace

const char* take_plain_real(const char* first, const char* end, double& value) {
  std::uint64_t digits = 0;
  const char* const point = take_digits(first, end, digits);
  if (point == first || point == end || *point != '.') return nullptr;
  const char* p = point + 1;
  if (end - p >= 8 && are_digits(eight_at(p))) {
    digits = digits * 100000000 + value_of_eight(eight_at(p));
    p += 8;
  }
  p = take_digits(p, end, digits);
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
