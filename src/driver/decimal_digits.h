// The leading decimal digits of a double, correctly rounded, by one 64 by 64 bit multiplication.
#ifndef ZORVIK_DRIVER_DECIMAL_DIGITS_H_
#define ZORVIK_DRIVER_DECIMAL_DIGITS_H_

#include <cstdint>

namespace zorvik {

constexpr int kMaxFastDigits = 10;

struct DecimalDigits {
  std::uint64_t digits;  // `count` digits, the first of them not zero
  int exponent;          // of ten: the value is d.ddd... times ten to it; -308 to 308
};

// Finds the first `count` (1 to kMaxFastDigits) significant digits of `value`, positive and finite,
// rounded to the nearest. 615.26 with 4 digits gives 6153 and the exponent 2, 9.999 with 3 gives
// 100 and 1. False, and nothing found, when the value is below the normal numbers (2.3e-308) or so
// close to halfway between two results, as 615.25 is, that 64 bits can't tell: the caller then
// needs an exact conversion. Nothing is reported.
bool find_leading_digits(double value, int count, DecimalDigits& result);

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_DECIMAL_DIGITS_H_
