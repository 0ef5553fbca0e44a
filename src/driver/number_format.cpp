// The digits are those of the exact binary value, correctly rounded: found by one multiplication
// or, where that can't tell, by std::to_chars. The field rules of the format are applied to
// them.
//   1.5e+100 -> mantissa "1.500000000", exponent "+100" -> 1.500000000+100
#include "driver/number_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "driver/decimal_digits.h"
#include "driver/notes.h"

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

// Two characters for every number below 100.
struct Pairs {
  char text[200];
};
constexpr Pairs make_pairs() {
  Pairs pairs{};
  for (int k = 0; k < 100; ++k) {
    pairs.text[2 * k] = static_cast<char>('0' + k / 10);
    pairs.text[2 * k + 1] = static_cast<char>('0' + k % 10);
  }
  return pairs;
}
constexpr Pairs kPairs = make_pairs();

void put_pair(char* to, std::uint64_t number) { std::memcpy(to, kPairs.text + 2 * number, 2); }

void note_missing_letter() {
  note(Hazard::kExponentWithoutE, [] {
    return std::string(
        "a number with an exponent of three digits is written without the letter E, "
        "as 1.5+100: some readers take it for a sum");
  });
}

// Writes the sign, the digits with the point behind the first, and the exponent.
NumberText laid_out(bool negative, DecimalDigits decimal, int decimals) {
  NumberText result;
  char* first = result.text;
  if (negative) *first++ = '-';
  char digits[kMaxFastDigits];  // right-justified
  for (int k = kMaxFastDigits - 2; k >= 0; k -= 2, decimal.digits /= 100) {
    put_pair(digits + k, decimal.digits % 100);
  }
  const char* const significant = digits + kMaxFastDigits - 1 - decimals;
  first[0] = significant[0];
  first[1] = '.';
  std::copy_n(significant + 1, decimals, first + 2);
  char* end = first + 2 + decimals;
  auto magnitude = static_cast<std::uint64_t>(std::abs(decimal.exponent));
  if (magnitude < 100) *end++ = 'E';
  *end++ = decimal.exponent < 0 ? '-' : '+';
  if (magnitude >= 100) {
    note_missing_letter();
    *end++ = static_cast<char>('0' + magnitude / 100);
    magnitude %= 100;
  }
  put_pair(end, magnitude);
  result.length = static_cast<int>(end + 2 - result.text);
  return result;
}

// The exact conversion, for what the fast one leaves.
NumberText converted(double value, int decimals) {
  NumberText result;
  char* const end = std::to_chars(result.text, result.text + sizeof result.text, value,
                                  std::chars_format::scientific, decimals)
                        .ptr;
  char* e = end - 4;  // "e+XX", or "e+XXX" one character earlier
  if (*e == 'e') {
    *e = 'E';
    result.length = static_cast<int>(end - result.text);
  } else {
    note_missing_letter();
    --e;
    std::memmove(e, e + 1, static_cast<std::size_t>(end - e - 1));
    result.length = static_cast<int>(end - result.text) - 1;
  }
  return result;
}

NumberText scientific(double value, int decimals) {
  if (!std::isfinite(value)) return not_finite(value);
  if (decimals < 1 || decimals >= kMaxFastDigits) return converted(value, decimals);
  if (value == 0) return laid_out(std::signbit(value), {0, 0}, decimals);
  DecimalDigits decimal;
  if (find_leading_digits(std::fabs(value), decimals + 1, decimal)) {
    return laid_out(value < 0, decimal, decimals);
  }
  return converted(value, decimals);
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
  char digits[64];  // filled when the number is longer: too long for any field
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
