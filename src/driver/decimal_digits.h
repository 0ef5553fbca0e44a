// The leading decimal digits of a double, correctly rounded, by one 64 by 64 bit multiplication.
#ifndef ZORVIK_DRIVER_DECIMAL_DIGITS_H_
#define ZORVIK_DRIVER_DECIMAL_DIGITS_H_

#include <cstdint>

namespace zorvik {

constexpr int kMaxFastDigits = 10;

struct DecimalDigits {
  std::uint64_t digits;  // `count` digits, the first of them not zero
  int exponent;          // of ten, of the first digit
};

// Finds the first `count` (1 to 10) significant digits of `value`, positive and finite. False when
// the value is too small or so close to halfway between two results that 64 bits can't tell; an
// exact conversion has to do it then. 615.25 with 4 digits gives 6153 (the tie: false) and 2.
bool find_leading_digits(double value, int count, DecimalDigits& result);

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_DECIMAL_DIGITS_H_
