// Reals in plain form are taken straight from the line; the lexer, with all its checks, reads the
// rest. A real without the letter of its exponent is converted in a second attempt:
//   1.500000000+300 -> syntax error, no "E" -> 1.500000000E+300
#include "service/text_reader.h"

#include "driver/notes.h"
#include "driver/source_line.h"
#include "driver/text.h"
#include "driver/units.h"
#include "lang/text/constants.h"
#include "lang/text/plain_real.h"
#include "stores/value_types.h"

namespace zorvik {
namespace {

bool is_sign(char c) { return c == '+' || c == '-'; }

}  // namespace

TextReader::TextReader(int text_unit, const TextForm& form, GroupWriter& output)
    : unit_(text_unit), form_(form), output_(output) {
  reset_source_line();
  source_line.width = kTextColumns;
  reset_lexer();
  lexer_state.labels = false;
  lexer_state.operators = false;
}

void TextReader::stop_at_end() {
  if (source_line.failure != 0) {
    output_.stop(message("%fat- Read error. File ", form_.text_name, '.'), source_line.failure);
  }
  output_.stop(message("%fat- Premature end of file detected. File ", form_.text_name));
}

std::string_view TextReader::lexeme() {
  if (peeked_) {
    peeked_ = false;
    return lexeme_.view();
  }
  switch (next_lexeme(unit_, lexeme_)) {
    case LexStatus::kLexeme:
      break;
    case LexStatus::kEnd:
      stop_at_end();
    case LexStatus::kError:
      output_.stop(message(lexeme_.view(), " File ", form_.text_name));
  }
  return lexeme_.view();
}

bool TextReader::more_follows() {
  if (peeked_) return true;
  const LexStatus status = next_lexeme(unit_, lexeme_);
  if (status == LexStatus::kError) output_.stop(message(lexeme_.view(), " File ", form_.text_name));
  if (status == LexStatus::kEnd && source_line.failure != 0) stop_at_end();
  peeked_ = status == LexStatus::kLexeme;
  return peeked_;
}

// The next lexeme without the sign it may have.
std::string_view TextReader::number(Sign sign, bool& negative) {
  std::string_view text = lexeme();
  if (text == "+" || text == "-") {
    output_.stop(message("%fat- Invalid lexeme\"", text, "\" File ", form_.text_name));
  }
  negative = text.front() == '-' && sign == Sign::kPlusOrMinus;
  if (text.front() == '+' || negative) text.remove_prefix(1);
  return text;
}

std::int32_t TextReader::integer(Sign sign) {
  bool negative = false;
  const int value = parse_integer_constant(number(sign, negative), error_);
  if (!error_.empty()) output_.stop(message(error_, " File ", form_.text_name));
  return negative ? -value : value;
}

// Takes a real in plain form that the lexer would take as one lexeme; false, with nothing taken,
// when anything else follows.
bool TextReader::take_plain(Sign sign, double& value) {
  if (peeked_) return false;
  if (source_line.wants_line || source_line.position > source_line.length) {
    source_line.wants_line = true;
    if (read_source_line(unit_) == kEndOfText) return false;
    go_back_to(1);
  }
  const char* const end = source_line.text + source_line.length;
  const char* first = source_line.text + source_line.position - 1;
  while (first < end && *first == ' ') ++first;
  const char* const digits = first < end && is_sign(*first) ? first + 1 : first;
  if (digits != first && *first == '-' && sign != Sign::kPlusOrMinus) return false;
  const char* const stop = take_plain_real(digits, end, value);
  // The lexer refuses what is longer, the sign counted: then it shall say so.
  if (stop == nullptr || stop - first > kMaxIdentifierLength) return false;
  if (*first == '-') value = -value;
  source_line.position = static_cast<int>(stop - source_line.text) + 1;
  return true;
}

double TextReader::real(Sign sign) {
  if (double value = 0.0; take_plain(sign, value)) return value;
  bool negative = false;
  const std::string_view text = number(sign, negative);
  // The whole lexeme: with a sign before it it is a number in error.
  if (lexeme_.view() == "UNDEF") return kUndefined;
  double value = parse_real_constant(text, error_);
  if (!error_.empty()) value = repaired_real(text);
  return negative ? -value : value;
}

// The print format leaves the letter out when the exponent has three digits. A sign that begins the
// number was taken before.
double TextReader::repaired_real(std::string_view text) {
  if (text.find('E') == std::string_view::npos) {
    std::size_t sign = text.find('-');
    if (sign == std::string_view::npos) sign = text.find('+');
    if (sign != std::string_view::npos) {
      const std::string repaired = message(text.substr(0, sign), 'E', text.substr(sign));
      const double value = parse_real_constant(repaired, error_);
      if (error_.empty()) return value;
    }
  } else if (form_.bad_exponent_is_zero) {
    note(Hazard::kZeroForReal, [&] {
      return message("line ", source_line.number, " of ", form_.text_name, ": ", text,
                     " is no number and is stored as 0");
    });
    return 0.0;
  }
  output_.stop(message(error_, " File ", form_.text_name));
}

void TextReader::marker(std::string_view text) {
  if (lexeme() != text) {
    output_.stop(message("%fat- File ", form_.text_name, ". String ", text, " expected"));
  }
}

std::string_view TextReader::whole_line(int columns) {
  // What is left of the line that was read last is not looked at.
  if (read_source_line(unit_) == kEndOfText) stop_at_end();
  source_line.wants_line = true;  // lexemes go on with the line after it
  const std::string_view all(source_line.text, static_cast<std::size_t>(source_line.length));
  line_ = trim_right(trim_left(all.substr(0, static_cast<std::size_t>(columns))));
  return line_;
}

std::string_view TextReader::text_item() {
  const std::string_view text = whole_line(kTextColumns);
  if (text.size() < kShortestItemLine) stop_on_line();
  return text.substr(1, text.size() - 2);
}

void TextReader::stop_on_line() {
  output_.stop(message("%fat- File ", form_.text_name, ". Invalid string ", line_));
}

}  // namespace zorvik
