// The digits come from std::to_chars, which rounds the exact binary value correctly; the field
// rules of the format are applied to them.   1.5e+100 -> mantissa "1.500000000", exponent "+100"
// -> 1.500000000+100
#include "driver/number_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace zorvik {
namespace {

int real_decimals = kStartDigits - 1;
double last_format_key = kStartDigits;

NumberText copied(std::string_view text) {
  NumberText result;
  std::memcpy(result.text, text.data(), text.size());
  result.length = static_cast<int>(text.size());
  return result;
}

NumberText asterisks(int width) {
  NumberText result;
  std::memset(result.text, '*', static_cast<std::size_t>(width));
  result.length = width;
  return result;
}

NumberText not_finite(double value) {
  if (std::isnan(value)) return copied("NaN");
  return copied(value > 0 ? "Infinity" : "-Infinity");
}

// Right-justifies `number` in a field of `width` characters.
NumberText in_field(std::string_view number, int width) {
  const auto length = static_cast<int>(number.size());
  if (length > width) return asterisks(width);
  NumberText result;
  const auto blanks = static_cast<std::size_t>(width - length);
  std::memset(result.text, ' ', blanks);
  std::memcpy(result.text + blanks, number.data(), number.size());
  result.length = width;
  return result;
}

NumberText scientific(double value, int decimals) {
  if (!std::isfinite(value)) return not_finite(value);
  NumberText result;
  char* const end = std::to_chars(result.text, result.text + sizeof result.text, value,
                                  std::chars_format::scientific, decimals)
                        .ptr;
  char* e = end - 4;  // "e+XX", or "e+XXX" one character earlier
  if (*e == 'e') {
    *e = 'E';
    result.length = static_cast<int>(end - result.text);
  } else {
    --e;
    std::memmove(e, e + 1, static_cast<std::size_t>(end - e - 1));
    result.length = static_cast<int>(end - result.text) - 1;
  }
  return result;
}

}  // namespace

NumberText format_integer(double value) {
  if (!(std::fabs(value) < 1e11)) return asterisks(kIntegerWidth);
  NumberText result;
  const auto whole = static_cast<long long>(value);
  const auto end = std::to_chars(result.text, result.text + sizeof result.text, whole).ptr;
  result.length = static_cast<int>(end - result.text);
  return result.length > kIntegerWidth ? asterisks(kIntegerWidth) : result;
}

NumberText format_real(double value) { return scientific(value, real_decimals); }

NumberText format_percentage(double value) { return format_fixed(value, 6, 2); }

NumberText format_scientific(double value, int width, int decimals) {
  return in_field(scientific(value, decimals), width);
}

NumberText format_fixed(double value, int width, int decimals) {
  if (!std::isfinite(value)) return in_field(not_finite(value), width);
  if (std::fabs(value) >= 1e15) return asterisks(width);
  char digits[64];
  const auto end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals).ptr;
  return in_field({digits, static_cast<std::size_t>(end - digits)}, width);
}

void adopt_format_key(double format_key) {
  const double rounded = round_half_away(format_key);
  if (rounded == last_format_key) return;
  last_format_key = rounded;
  if (rounded > kMinimalDigits && rounded < kStartDigits) {
    real_decimals = static_cast<int>(rounded) - 1;
  }
}

void reset_number_format() {
  real_decimals = kStartDigits - 1;
  last_format_key = kStartDigits;
}

}  // namespace zorvik
