// Numeric constants: from the text of a numeric lexeme to its value.
#ifndef ZORVIK_LANG_TEXT_CONSTANTS_H_
#define ZORVIK_LANG_TEXT_CONSTANTS_H_

#include <string>
#include <string_view>

namespace zorvik {

constexpr int kMaxInteger = 2147483647;

// `text` is unsigned digits. Returns the value, 0 with an error text ("%err- Integer overflow in
// integer constant " or "%err- Syntax error in integer constant " and the text in double quotes)
// when there is none; `error` is empty for a valid constant. An empty text is 0.
int parse_integer_constant(std::string_view text, std::string& error);

// digits [ "." digits ] [ "E" [sign] digits ] with at least one digit before the exponent. The
// value is the correctly rounded decimal. A leading significant digit beyond 10^306 or below
// 10^-306 is an overflow or an underflow, decided after every digit of the exponent; with a
// mantissa of 0 the error is "Ugliness". Errors come back as for integers, with the value 0.
double parse_real_constant(std::string_view text, std::string& error);

}  // namespace zorvik

#endif  // ZORVIK_LANG_TEXT_CONSTANTS_H_
