// The digits are those of the exact binary value, correctly rounded: found by one multiplication
// or, where that can't tell, by std::to_chars. The field rules of the format are applied to
// them.
//   1.5e+100 -> mantissa "1.500000000", exponent "+100" -> 1.500000000+100
#include "driver/number_format.h"

#include <algorithm>
#include <array>
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

char* put_text(char* to, std::string_view text) { return std::copy(text.begin(), text.end(), to); }

char* put_asterisks(char* to, int width) { return std::fill_n(to, width, '*'); }

std::string_view not_finite(double value) {
  if (std::isnan(value)) return "NaN";
  return value > 0 ? "Infinity" : "-Infinity";
}

// Right-justifies `number` in a field of `width` characters.
NumberText in_field(std::string_view number, int width) {
  NumberText result;
  result.length = width;
  const auto length = static_cast<int>(number.size());
  if (length > width) {
    put_asterisks(result.text, width);
  } else {
    put_text(std::fill_n(result.text, width - length, ' '), number);
  }
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

char* put_exponent(char* to, int exponent) {
  auto magnitude = static_cast<unsigned>(std::abs(exponent));
  if (magnitude < 100) *to++ = 'E';
  *to++ = exponent < 0 ? '-' : '+';
  if (magnitude >= 100) {
    note_missing_letter();
    *to++ = static_cast<char>('0' + magnitude / 100);
    magnitude %= 100;
  }
  put_pair(to, magnitude);
  return to + 2;
}

// By decimals, at least two: what makes the digits a fraction of 64 bits behind the first two.
constexpr int kFewestDecimals = 2;
constexpr auto kParts = [] {
  std::array<std::uint64_t, kMaxFastDigits> parts{};
  for (std::size_t k = kFewestDecimals; k < parts.size(); ++k) {
    parts[k] = ~std::uint64_t{0} / kTens[k - 1] + 1;  // 10^(1 - k), the least above it
  }
  return parts;
}();

// Writes the sign, the digits with the point behind the first, and the exponent. Multiplied by 100
// the fraction yields two further digits at its upper end. There are always ten to write; the
// exponent stands over those that are too many.
char* lay_out(char* to, bool negative, const DecimalDigits& decimal, int decimals) {
  *to = '-';
  to += negative ? 1 : 0;
  Wide number = Wide{decimal.digits} * kParts[static_cast<std::size_t>(decimals)];
  put_pair(to + 1, static_cast<std::uint64_t>(number >> 64));
  to[0] = to[1];
  to[1] = '.';
  for (int k = 3; k <= 9; k += 2) {
    number = Wide{static_cast<std::uint64_t>(number)} * 100;
    put_pair(to + k, static_cast<std::uint64_t>(number >> 64));
  }
  return put_exponent(to + 2 + decimals, decimal.exponent);
}

// The exact conversion, for what the fast one leaves.
char* convert(char* to, double value, int decimals) {
  char* const end =
      std::to_chars(to, to + kMaxNumberWidth, value, std::chars_format::scientific, decimals).ptr;
  char* e = end - 4;  // "e+XX", or "e+XXX" one character earlier
  if (*e == 'e') {
    *e = 'E';
    return end;
  }
  note_missing_letter();
  --e;
  std::memmove(e, e + 1, static_cast<std::size_t>(end - e - 1));
  return end - 1;
}

char* put_scientific(char* to, double value, int decimals) {
  if (decimals >= kFewestDecimals && decimals < kMaxFastDigits) {
    const DecimalDigits decimal = find_leading_digits(std::fabs(value), decimals + 1);
    if (decimal.digits != 0 || value == 0) {
      return lay_out(to, std::signbit(value), decimal, decimals);
    }
  }
  if (!std::isfinite(value)) return put_text(to, not_finite(value));
  return convert(to, value, decimals);
}

// Makes a text of what `put` writes.
template <class Put>
NumberText number_text(Put put) {
  NumberText result;
  result.length = static_cast<int>(put(result.text) - result.text);
  return result;
}

}  // namespace

char* put_integer(char* to, double value) {
  // NaN fails this comparison too; what passes it can be made a whole number of 64 bits.
  if (!(std::fabs(value) < 1e11)) return put_asterisks(to, kIntegerWidth);
  char* const end = std::to_chars(to, to + kMaxNumberWidth, static_cast<long long>(value)).ptr;
  return end - to > kIntegerWidth ? put_asterisks(to, kIntegerWidth) : end;
}

char* put_real(char* to, double value) { return put_scientific(to, value, real_decimals); }

NumberText format_integer(double value) {
  return number_text([=](char* to) { return put_integer(to, value); });
}

NumberText format_real(double value) {
  return number_text([=](char* to) { return put_real(to, value); });
}

NumberText format_percentage(double value) { return format_fixed(value, 6, 2); }

NumberText format_scientific(double value, int width, int decimals) {
  return in_field(number_text([=](char* to) { return put_scientific(to, value, decimals); }),
                  width);
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
