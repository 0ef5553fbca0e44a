// value = m * 2^e and 10^k = p * 2^x, both m and p with 64 bits and the highest one set. m * p has
// 128 bits, of which the integer part of value * 10^k are the leading ones when k is chosen so that
// it has `count` digits; of at most ten digits they and the 29 bits behind them stand in its upper
// half. p is cut off and the lower half is left out, so the upper half is short by less than 3;
// unless the fraction lies that close to one half, the digits are those of the exact product.
#include "driver/decimal_digits.h"

#include <array>
#include <bit>

namespace zorvik {
namespace {

// A double of 1 to 10 digits needs 10^k for k from -308 (of 1.8e308) to 317 (of 2.3e-308).
constexpr int kLowestPower = -320, kHighestPower = 330;
constexpr Wide kOne = 1;

// The 128 leading bits of 10^k, one power after the other; an error of a few units a step stays far
// below the 64 bits that are used.
struct Powers {
  std::array<std::uint64_t, kHighestPower - kLowestPower + 1> bits{};
  constexpr void set(int power, Wide mantissa) {
    bits[static_cast<std::size_t>(power - kLowestPower)] =
        static_cast<std::uint64_t>(mantissa >> 64);
  }
  constexpr std::uint64_t operator[](int power) const {
    return bits[static_cast<std::size_t>(power - kLowestPower)];
  }
};

constexpr Wide normalized(Wide mantissa) {
  while ((mantissa >> 127) == 0) mantissa <<= 1;
  return mantissa;
}

// Up and down from 1, each power from the one before; four bits are left free for the factor 10.
constexpr Powers make_powers() {
  Powers powers;
  Wide mantissa = kOne << 127;
  for (int k = 0; k <= kHighestPower; ++k) {
    powers.set(k, mantissa);
    mantissa = normalized((mantissa >> 4) * 10);
  }
  mantissa = kOne << 127;
  for (int k = 0; k >= kLowestPower; --k) {
    powers.set(k, mantissa);
    mantissa = normalized(mantissa / 10);
  }
  return powers;
}
constexpr Powers kPowers = make_powers();
static_assert(kPowers[0] == 0x8000000000000000u && kPowers[1] == 0xA000000000000000u &&
              kPowers[-1] == 0xCCCCCCCCCCCCCCCCu && kPowers[27] == 0xCECB8F27F4200F3Au);

constexpr std::uint64_t kShortBy = 3;

constexpr int floor_log10_of_2_to(int e) { return e * 78913 >> 18; }   // |e| < 1650
constexpr int floor_log2_of_10_to(int k) { return k * 217706 >> 16; }  // |k| < 350
static_assert(floor_log10_of_2_to(10) == 3 && floor_log10_of_2_to(-1) == -1);
static_assert(floor_log2_of_10_to(-1) == -4 && floor_log2_of_10_to(3) == 9);

}  // namespace

DecimalDigits find_leading_digits(double value, int count) {
  constexpr DecimalDigits kNone{0, 0};
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const int biased = static_cast<int>(bits >> 52);
  if (biased == 0 || biased == 0x7FF) return kNone;
  const int binary = biased - 1023;  // value lies in 2^binary .. 2^(binary + 1)
  // The leading 1 that the stored form leaves out is put back.
  const std::uint64_t mantissa = (bits << 11) | (std::uint64_t{1} << 63);

  // A power of ten between the two parts the values there. One that was cut off and equals the
  // mantissa would be taken for the value: nines come out, which round to the power.
  int exponent = floor_log10_of_2_to(binary);
  if (floor_log2_of_10_to(exponent + 1) == binary && mantissa >= kPowers[exponent + 1]) ++exponent;

  const int power = count - 1 - exponent;
  const Wide product = Wide{mantissa} * kPowers[power];
  const int fraction_bits = 62 - binary - floor_log2_of_10_to(power);
  const auto upper = static_cast<std::uint64_t>(product >> 64);
  const std::uint64_t half = std::uint64_t{1} << (fraction_bits - 1);
  const std::uint64_t fraction = upper & (2 * half - 1);
  // Unsigned: a fraction below half - kShortBy wraps around and is far above.
  if (fraction - half + kShortBy <= 2 * kShortBy) return kNone;
  const std::uint64_t digits = (upper >> fraction_bits) + (fraction > half ? 1 : 0);
  if (digits == kTens[count]) return {digits / 10, exponent + 1};
  return {digits, exponent};
}

}  // namespace zorvik
