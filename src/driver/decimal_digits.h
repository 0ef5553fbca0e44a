// The leading decimal digits of a double, correctly rounded, by one 64 by 64 bit multiplication.
#ifndef ZORVIK_DRIVER_DECIMAL_DIGITS_H_
#define ZORVIK_DRIVER_DECIMAL_DIGITS_H_

#include <cstdint>

namespace zorvik {

__extension__ typedef unsigned __int128 Wide;

constexpr int kMaxFastDigits = 10;

// Powers of ten, from 10^0.
inline constexpr std::uint64_t kTens[kMaxFastDigits + 1] = {
    1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000, 1000000000, 10000000000};

struct DecimalDigits {
  std::uint64_t digits;  // `count` digits, the first of them not zero, or none: 0
  int exponent;          // of ten: the value is d.ddd... times ten to it; -308 to 308
};

// The first `count` (1 to kMaxFastDigits) significant digits of `value`, not negative, rounded to
// the nearest. 615.26 with 4 digits gives 6153 and the exponent 2, 9.999 with 3 gives 100 and 1.
// {0, 0} when the value is zero, below the normal numbers (2.3e-308) or not finite, or so close to
// halfway between two results, as 615.25 is, that 64 bits can't tell: the caller then needs an
// exact conversion. Nothing is reported.
DecimalDigits find_leading_digits(double value, int count);

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_DECIMAL_DIGITS_H_
