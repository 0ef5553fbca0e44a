// Lexer: cuts a text into lexemes, one per call, and classifies each by a code.
//
// It works on the characters of the current source line, so lexemes may follow one another across
// line ends. It never counts an error and never stops the run: an error text comes back in place of
// the lexeme, and the caller writes it with issue_pointed_message at lexeme.column and counts it.
#ifndef ZORVIK_LANG_TEXT_LEXER_H_
#define ZORVIK_LANG_TEXT_LEXER_H_

#include <string_view>

#include "driver/source_line.h"
#include "lang/text/language_tables.h"

namespace zorvik {

constexpr int kLexemeCapacity = 100;

struct Lexeme {
  int code;          // LexemeCode, 200 + function or Keyword
  int line, column;  // of its first character; of the offending one for an invalid character
  int start;         // column of its first character, always
  int dot;           // of a name: position of its first ".", from 1; 0 without
  int length;
  char text[kLexemeCapacity];  // upper case (outside character constants, and not with unit 0)

  std::string_view view() const { return {text, static_cast<std::size_t>(length)}; }
  bool is(int wanted) const { return code == wanted; }
};

// A place of the program text, from 1.
struct Position {
  int line, column;
  friend auto operator<=>(const Position&, const Position&) = default;
};

inline Position position_of(const Lexeme& lexeme) { return {lexeme.line, lexeme.column}; }

// What may name a procedure or a label.
inline bool is_name_or_function(const Lexeme& lexeme) {
  return lexeme.is(kName) || is_function(lexeme.code);
}

enum class LexStatus {
  kLexeme,
  kEnd,    // end of the text; the lexeme keeps the position of the one read last
  kError,  // lexeme.text holds the error text
};

// Switches of the lexer, and the position of the lexeme read last.
struct LexerState {
  bool labels;     // "name:" is a label; statement parsers turn it off while they read expressions
  bool operators;  // operator characters are operators; off, they are ordinary characters of a
                   // lexeme
  int line, column;
};
extern LexerState lexer_state;
void reset_lexer();

// Reads the next lexeme of the text on `unit`. With unit 0 only the text already in the current
// line is scanned, and letters keep their case.
LexStatus next_lexeme(int unit, Lexeme& lexeme);

// Gives back the lexeme read last, malformed or not: the next call reads it again.
inline void give_back(const Lexeme& lexeme) { go_back_to(lexeme.start); }

// Writes the error text of a lexeme under its column and counts it.
void report_lexical_error(const Lexeme& lexeme);

}  // namespace zorvik

#endif  // ZORVIK_LANG_TEXT_LEXER_H_
