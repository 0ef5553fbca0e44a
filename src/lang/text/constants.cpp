// The place of the leading significant digit decides overflow and underflow:
//   15.0E+306: n = 2 digits before the point, s = 306 + 1 = 307
//   0.001E-304: first digit at place z = 3, s = -304 - 3 = -307
#include "lang/text/constants.h"

#include <charconv>

#include "driver/number_format.h"
#include "driver/text.h"

namespace zorvik {
namespace {

constexpr int kOverflowGuard = 214748365;  // ten times as much passes kMaxInteger

bool is_digit(char c) { return c >= '0' && c <= '9'; }

void set_error(std::string& error, std::string_view fault, std::string_view kind,
               std::string_view text) {
  error = message("%err- ", fault, " in ", kind, " constant \"", text, '"');
}

enum class Fault { kNone, kSyntax, kOverflow, kUnderflow, kUgliness };

// Walks over the parts of a real constant and judges its form and its exponent.
// The exponent is judged after each of its digits, so that a very long one cannot overflow.
class RealScanner {
 public:
  explicit RealScanner(std::string_view text) : text_(text) {}

  Fault scan() {
    if (text_ == ".") return Fault::kSyntax;
    scan_mantissa();
    if (next_ == text_.size()) return digits_ > 0 ? Fault::kNone : Fault::kSyntax;
    if (digits_ == 0 || text_[next_] != 'E') return Fault::kSyntax;
    ++next_;
    return scan_exponent();
  }

 private:
  // Zeros in front count as digits, so that 0 is a number, but not as significant ones.
  void scan_mantissa() {
    for (; next_ < text_.size() && is_digit(text_[next_]); ++next_, ++digits_) {
      if (significant_ > 0 || text_[next_] != '0') ++significant_;
    }
    if (next_ == text_.size() || text_[next_] != '.') return;
    ++next_;
    for (int place = 1; next_ < text_.size() && is_digit(text_[next_]); ++next_, ++place) {
      ++digits_;
      if (text_[next_] == '0') continue;
      if (significant_ == 0 && first_place_ == 0) first_place_ = place;
    }
  }

  Fault scan_exponent() {
    bool negative = false;
    if (next_ < text_.size() && (text_[next_] == '+' || text_[next_] == '-')) {
      negative = text_[next_++] == '-';
    }
    if (next_ == text_.size()) return Fault::kSyntax;
    // Places count from 1: 0 says that there is no digit but zeros.
    const bool zero = significant_ == 0 && first_place_ == 0;
    int exponent = 0;
    for (; next_ < text_.size(); ++next_) {
      if (!is_digit(text_[next_])) return Fault::kSyntax;
      exponent = exponent * 10 + (text_[next_] - '0');
      const int place =
          (negative ? -exponent : exponent) + (significant_ > 0 ? significant_ - 1 : -first_place_);
      if (place > kMaxExponent) return zero ? Fault::kUgliness : Fault::kOverflow;
      if (place < -kMaxExponent) return zero ? Fault::kUgliness : Fault::kUnderflow;
    }
    return Fault::kNone;
  }

  std::string_view text_;
  std::size_t next_ = 0;
  int digits_ = 0;       // digits of the mantissa
  int significant_ = 0;  // digits before the point from the first that is not zero
  int first_place_ = 0;  // place after the point of the first digit that is not zero
};

}  // namespace

int parse_integer_constant(std::string_view text, std::string& error) {
  error.clear();
  int value = 0;
  for (const char c : trim_left_char(text, '0')) {
    if (!is_digit(c)) {
      set_error(error, "Syntax error", "integer", text);
      return 0;
    }
    const int digit = c - '0';
    if (value >= kOverflowGuard || digit > kMaxInteger - 10LL * value) {
      set_error(error, "Integer overflow", "integer", text);
      return 0;
    }
    value = value * 10 + digit;
  }
  return value;
}

double parse_real_constant(std::string_view text, std::string& error) {
  error.clear();
  switch (RealScanner(text).scan()) {
    case Fault::kNone:
      break;
    case Fault::kSyntax:
      set_error(error, "Syntax error", "real", text);
      return 0.0;
    case Fault::kOverflow:
      set_error(error, "Floating overflow", "real", text);
      return 0.0;
    case Fault::kUnderflow:
      set_error(error, "Floating underflow", "real", text);
      return 0.0;
    case Fault::kUgliness:
      set_error(error, "Ugliness", "real", text);
      return 0.0;
  }
  // The form is good and the exponent in range: all of the text is taken, and no value is denormal.
  double value = 0.0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

}  // namespace zorvik
