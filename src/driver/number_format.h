// Numbers as text: whole numbers in plain decimal, reals in scientific notation.
//
// Reals follow the format 1PEw.d: one digit before the point, d after it, an exponent of two digits
// after "E", or of three digits without the "E". It starts as 1PE17.9 (ten significant digits); the
// key FORMAT narrows it.
#ifndef ZORVIK_DRIVER_NUMBER_FORMAT_H_
#define ZORVIK_DRIVER_NUMBER_FORMAT_H_

#include <string_view>

namespace zorvik {

constexpr int kIntegerWidth = 11;  // digits of the largest integer, 2147483647, plus 1
constexpr int kStartDigits = 10;   // significant digits of reals at the start of a run
constexpr int kMinimalDigits = 3;  // a FORMAT of 3 or less changes nothing
constexpr int kMaxExponent = 306;  // limit of the decimal exponents of constants

constexpr int kMaxNumberWidth = 24;

// A number's text, blanks removed.
struct NumberText {
  char text[kMaxNumberWidth];
  int length;
  operator std::string_view() const {  // NOLINT: it is a text wherever a text is wanted
    return {text, static_cast<std::size_t>(length)};
  }
};

// `value` holds a whole number. A value that is not finite, or whose text would be longer than 11
// characters, gives 11 asterisks.
NumberText format_integer(double value);

// 12345.678 gives 1.234567800E+04, 1e100 gives 1.000000000+100; NaN, Infinity, -Infinity.
NumberText format_real(double value);

// The same two written to `to`, which has room for kMaxNumberWidth characters; each returns the
// end.
char* put_integer(char* to, double value);
char* put_real(char* to, double value);

// A percentage: 6 characters, 2 decimals, right-justified.
NumberText format_percentage(double value);

// Any real in the format 1PEw.d or Fw.d of `width` characters, right-justified; a value that does
// not fit gives `width` asterisks.
NumberText format_scientific(double value, int width, int decimals);
NumberText format_fixed(double value, int width, int decimals);

// Brings the format of reals up to date from the value of the key FORMAT (rounded half away from
// zero). Nothing happens when it equals the value seen last, is 3 or less, or 10 or more.
void adopt_format_key(double format_key);

void reset_number_format();

// Rounds half away from zero by adding 0.5 (-0.5 for a negative value) and truncating. Magnitudes
// from 2^52 up are whole already and come back unchanged, as do values that are not numbers.
inline double round_half_away(double value) {
  if (!(value > -4503599627370496.0 && value < 4503599627370496.0)) return value;
  return static_cast<double>(static_cast<long long>(value < 0 ? value - 0.5 : value + 0.5));
}

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_NUMBER_FORMAT_H_
