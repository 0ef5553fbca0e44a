// By its first character a lexeme is a character constant, an operator, or a name or number; a
// number turns real when it meets "." or an exponent, a name turns into a label at ":", into a
// keyword or a function at its end.
//   IF A>=B THEN -> 301 "IF", 103 "A", 19 ">=", 103 "B", 302 "THEN"        2d5 -> 101 "2E5"
#include "lang/text/lexer.h"

#include <algorithm>
#include <array>

#include "driver/messages.h"
#include "driver/name_slots.h"
#include "driver/text.h"

namespace zorvik {

LexerState lexer_state;

namespace {

enum CharacterClass : unsigned char {
  kSeparator,
  kDigit,
  kOther,  // letters and what else may stand inside names; also what stands for THEN, ELSE, ENDIF
  kComment,
  kApostrophe,
  kOperatorCharacter,
  kInvalid,
};

constexpr std::array<CharacterClass, 256> make_classes() {
  std::array<CharacterClass, 256> classes{};
  classes.fill(kInvalid);
  classes[' '] = classes['\0'] = classes['\t'] = kSeparator;
  for (unsigned char c = '0'; c <= '9'; ++c) classes[c] = kDigit;
  for (unsigned char c = 'A'; c <= 'Z'; ++c) classes[c] = classes[c + 32u] = kOther;
  for (const char c : {'_', '$', '.', '"', '[', ']'}) {
    classes[static_cast<unsigned char>(c)] = kOther;
  }
  classes['!'] = kComment;
  classes['\''] = kApostrophe;
  for (const char c : kOperatorCharacters) {
    classes[static_cast<unsigned char>(c)] = kOperatorCharacter;
  }
  return classes;
}
constexpr auto kClasses = make_classes();

// While the text forms are read operators are off: a sign is a part of its number.
CharacterClass class_of(char c) {
  const CharacterClass found = kClasses[static_cast<unsigned char>(c)];
  if (found == kOperatorCharacter && !lexer_state.operators) return kOther;
  return found;
}

int operator_code(char c) { return static_cast<int>(kOperatorCharacters.find(c)) + 1; }

// Either order of "=" and a comparison is taken.
struct OperatorPair {
  char first, second;
  int code;
};
constexpr OperatorPair kOperatorPairs[] = {
    {'*', '*', kPower},        {'<', '=', kLessEqual}, {'<', '>', kNotEqual},
    {'>', '=', kGreaterEqual}, {'=', '=', kEqual},     {'=', '>', kGreaterEqual},
    {'=', '<', kLessEqual},
};

void begin_comment() { source_line.wants_line = true; }  // also for a rest that nobody is to read
void give_character_back() { --source_line.position; }

LexStatus error(Lexeme& lexeme, std::string_view text) {
  lexeme.length = static_cast<int>(std::min<std::size_t>(text.size(), kLexemeCapacity));
  std::copy_n(text.data(), lexeme.length, lexeme.text);
  return LexStatus::kError;
}

// Passes over the rest of a malformed lexeme: up to a separator, the line's end or a comment.
// The separator is taken as well; ";" and the other operators belong to the lexeme that is skipped.
void skip_rest(int unit) {
  char c;
  while (next_source_char(unit, c) == 0) {
    const CharacterClass found = class_of(c);
    if (found == kSeparator) return;
    if (found == kComment) return begin_comment();
  }
}

LexStatus invalid_character(int unit, Lexeme& lexeme, char c) {
  lexeme.column = source_line.position - 1;
  skip_rest(unit);
  // Two blanks before "Code": one ends the piece with the character, one begins the next.
  return error(lexeme, message("%err- Invalid character \"", c,
                               "\"  Code = ", static_cast<int>(static_cast<unsigned char>(c))));
}

// Skips to the first character of the next lexeme; false at the end of the text.
bool find_start(int unit, char& c) {
  for (;;) {
    const int status = next_source_char(unit, c);
    if (status == kEndOfText) return false;
    if (status == kEndOfLine) {
      if (unit == 0) return false;
      continue;
    }
    const CharacterClass found = class_of(c);
    if (found == kComment) {
      begin_comment();
    } else if (found != kSeparator) {
      return true;
    }
  }
}

// Two apostrophes stand for one; nothing else has a meaning inside, "!" included.
LexStatus character_constant(int unit, Lexeme& lexeme) {
  lexeme.code = kCharacterConstant;
  for (char c;;) {
    if (next_source_char(unit, c) != 0) return error(lexeme, "%err- closing qoute is absent");
    if (c == '\'') {
      if (next_source_char(unit, c) != 0) break;
      if (c != '\'') {
        give_character_back();
        break;
      }
    }
    if (lexeme.length == kMaxCharacterConstant) {
      begin_comment();
      return error(lexeme, message("%err- Length of character constant > ", kMaxCharacterConstant));
    }
    lexeme.text[lexeme.length++] = c;
  }
  if (lexeme.length == 0) lexeme.text[lexeme.length++] = ' ';  // '' is a text of one blank
  return LexStatus::kLexeme;
}

LexStatus operator_lexeme(int unit, Lexeme& lexeme, char first) {
  lexeme.code = operator_code(first);
  lexeme.text[lexeme.length++] = first;
  if (lexeme.code > kAssign) return LexStatus::kLexeme;  // begins no pair
  char second;
  if (next_source_char(unit, second) != 0) return LexStatus::kLexeme;
  switch (class_of(second)) {
    case kSeparator:
      return LexStatus::kLexeme;
    case kComment:
      begin_comment();
      return LexStatus::kLexeme;
    case kInvalid:
      return invalid_character(unit, lexeme, second);
    default:
      break;
  }
  for (const OperatorPair& pair : kOperatorPairs) {
    if (pair.first != first || pair.second != second) continue;
    lexeme.code = pair.code;
    lexeme.text[lexeme.length++] = second;
    return LexStatus::kLexeme;
  }
  give_character_back();
  return LexStatus::kLexeme;
}

// What ended a name or number.
enum class Ending { kBoundary, kOperator, kBadCharacter, kTooLong };

// After a separator: is the lexeme a label because ":" follows? A real constant is not, so
// that 1.5:2 stays a range.
void look_for_label(int unit, Lexeme& lexeme) {
  for (char c;;) {
    if (next_source_char(unit, c) != 0) return;
    const CharacterClass found = class_of(c);
    if (found == kSeparator) continue;
    if (found == kComment) return begin_comment();
    if (c == ':' && lexeme.code != kRealConstant) {
      lexeme.code = kLabel;
    } else {
      give_character_back();
    }
    return;
  }
}

// True when the operator character belongs to the lexeme: a sign just behind the E of a number,
// once.
bool take_exponent_sign(Lexeme& lexeme, char c, bool& has_sign) {
  if ((c != '+' && c != '-') || has_sign || !is_numeric_constant(lexeme.code)) return false;
  if (lexeme.text[lexeme.length - 1] != 'E') return false;
  has_sign = true;
  lexeme.code = kRealConstant;
  return true;
}

// D and E mean the same in an exponent; from here on there is E alone.
void store(Lexeme& lexeme, char c, bool upper) {
  if (upper) c = upper_case(c);
  if (is_numeric_constant(lexeme.code)) {
    if (c == 'D') c = 'E';
    if (c == 'E' || c == '.') lexeme.code = kRealConstant;
  } else if (c == '.' && lexeme.dot == 0) {
    lexeme.dot = lexeme.length + 1;
  }
  lexeme.text[lexeme.length++] = c;
}

// Takes the characters that follow the first one.
Ending collect(int unit, Lexeme& lexeme, char& c) {
  const bool upper = unit != 0;
  bool has_sign = false;
  for (;;) {
    if (next_source_char(unit, c) != 0) return Ending::kBoundary;
    switch (class_of(c)) {
      case kInvalid:
        return Ending::kBadCharacter;
      case kSeparator:
        if (lexer_state.labels) look_for_label(unit, lexeme);
        return Ending::kBoundary;
      case kComment:
        begin_comment();
        return Ending::kBoundary;
      case kOperatorCharacter:
        if (take_exponent_sign(lexeme, c, has_sign)) break;
        if (lexer_state.labels && c == ':' && lexeme.code != kRealConstant) {
          lexeme.code = kLabel;
        } else {
          give_character_back();
        }
        return Ending::kOperator;
      default:
        break;
    }
    // Twenty characters are stored, signs of exponents included; the one that does not fit is the
    // error.
    if (lexeme.length == kMaxIdentifierLength) return Ending::kTooLong;
    store(lexeme, c, upper);
  }
}

// The words that are no names, by their lexeme codes, and the hash that finds them.
constexpr int kKeywordEnd = kFirstKeyword + static_cast<int>(kKeywords.size());
constexpr int kFunctionEnd = kFirstFunction + static_cast<int>(kFunctions.size());
constexpr std::string_view word_of_code(int code) {
  if (code >= kFirstKeyword) return kKeywords[static_cast<std::size_t>(code - kFirstKeyword)];
  return kFunctions[static_cast<std::size_t>(code - kFirstFunction)].name;
}
// No word is a keyword and a function, so it does not matter which of them is asked for first.
constexpr NameSlots<128> make_words() {
  NameSlots<128> words;
  for (int code = kFirstFunction; code < kKeywordEnd; ++code) {
    // Between the two ranges of codes there is nothing.
    if (code == kFunctionEnd) code = kFirstKeyword;
    words.slot(word_of_code(code), word_of_code) = static_cast<std::int16_t>(code);
  }
  return words;
}
constexpr NameSlots<128> kWords = make_words();

// The code of a name without ".": a keyword, a function or a plain name.
int code_of_word(std::string_view word) {
  if (word == "[") return kThen;
  if (word == "]") return kEndif;
  if (word == "][") return kElse;
  const int code = kWords.find(word, word_of_code);
  return code != 0 ? code : kName;
}

// The error text of a malformed name, or an empty text.
std::string_view fault_of_name(const Lexeme& lexeme) {
  const std::string_view name = lexeme.view();
  if (lexeme.dot == 0) {
    if (name == "$") return "%err- Invalid lexeme \"$\"";
    if ((name[0] == '[' || name[0] == ']') && code_of_word(name) == kName) {
      return "%err- Invalid \"[\" or \"]\" at the beginning of variable";
    }
    return {};
  }
  if (name.back() == '.') return "%err- Invalid composite variable. Element is absent";
  if (name.ends_with(".$")) return "%err- Invalid \".$\" at the end of variable";
  return {};
}

LexStatus word_or_number(int unit, Lexeme& lexeme, char first) {
  lexeme.code = class_of(first) == kDigit ? kIntegerConstant : first == '.' ? kRealConstant : kName;
  store(lexeme, first, unit != 0);
  char c = first;
  const Ending ending = collect(unit, lexeme, c);
  if (ending == Ending::kBadCharacter) return invalid_character(unit, lexeme, c);
  if (ending == Ending::kTooLong) {
    skip_rest(unit);
    return error(lexeme, message("%err- Length of identifier > ", kMaxIdentifierLength));
  }
  if (lexeme.code != kName) return LexStatus::kLexeme;
  if (const std::string_view fault = fault_of_name(lexeme); !fault.empty()) {
    // Any other ending has passed over what bounds the lexeme already.
    if (ending == Ending::kOperator) skip_rest(unit);
    return error(lexeme, fault);
  }
  if (lexeme.dot == 0) lexeme.code = code_of_word(lexeme.view());
  return LexStatus::kLexeme;
}

LexStatus read_lexeme(int unit, Lexeme& lexeme, char first) {
  switch (class_of(first)) {
    case kApostrophe:
      return character_constant(unit, lexeme);
    case kInvalid:
      return invalid_character(unit, lexeme, first);
    case kOperatorCharacter:
      return operator_lexeme(unit, lexeme, first);
    default:
      return word_or_number(unit, lexeme, first);
  }
}

}  // namespace

void reset_lexer() { lexer_state = {true, true, 0, 0}; }

LexStatus next_lexeme(int unit, Lexeme& lexeme) {
  lexeme.code = 0;
  lexeme.dot = 0;
  lexeme.length = 0;
  char first;
  if (!find_start(unit, first)) {
    lexeme.line = lexer_state.line;
    lexeme.start = lexeme.column = lexer_state.column;
    return LexStatus::kEnd;
  }
  lexeme.line = lexer_state.line = source_line.number;
  lexeme.start = lexeme.column = source_line.position - 1;
  const LexStatus status = read_lexeme(unit, lexeme, first);
  lexer_state.column = lexeme.column;
  return status;
}

void report_lexical_error(const Lexeme& lexeme) { count_error_at(lexeme.column, lexeme.view()); }

}  // namespace zorvik
