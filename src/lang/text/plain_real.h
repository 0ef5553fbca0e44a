// Reals in the form in which most of them are written, converted at once:
//   12.5  0.001  1.234567890E+04, at most 19 characters before the exponent, which has one or two
//   digits; then a blank or the end
#ifndef ZORVIK_LANG_TEXT_PLAIN_REAL_H_
#define ZORVIK_LANG_TEXT_PLAIN_REAL_H_

namespace zorvik {

// Converts the number that begins at `first` and ends before `end` or a blank; returns where it
// ends, or nullptr for any other form. The value is the double nearest the decimal number.
const char* take_plain_real(const char* first, const char* end, double& value);

}  // namespace zorvik

#endif  // ZORVIK_LANG_TEXT_PLAIN_REAL_H_
