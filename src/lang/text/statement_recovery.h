// What both passes do with a statement that is in error, and with the end of one that is not.
#ifndef ZORVIK_LANG_TEXT_STATEMENT_RECOVERY_H_
#define ZORVIK_LANG_TEXT_STATEMENT_RECOVERY_H_

#include <string_view>

#include "lang/text/lexer.h"

namespace zorvik {

enum class Outcome {
  kDone,
  kTextEnded,  // the text ended inside the statement
  kAbandoned,  // after an error; recovery has run
};

// "%err- Premature end of file detected", counted.
Outcome report_premature_end();

// Reads lexemes up to ";" (taken), a keyword (given back) or the end of the text; lexical errors on
// the way are reported and counted.
Outcome skip_statement(int unit);

// The same, beginning at the lexeme that was in error and is already read.
Outcome recover_from(int unit, const Lexeme& lexeme);

// Reports the error under the lexeme and recovers from there.
Outcome reject(int unit, const Lexeme& lexeme, std::string_view text);

// Takes a ";" that follows; anything else is left to be read.
void take_semicolon(int unit);

// Turns label recognition off while a statement with expressions is read.
class LabelsOff {
 public:
  LabelsOff() { lexer_state.labels = false; }
  ~LabelsOff() { lexer_state.labels = true; }
  LabelsOff(const LabelsOff&) = delete;
  LabelsOff& operator=(const LabelsOff&) = delete;
};

}  // namespace zorvik

#endif  // ZORVIK_LANG_TEXT_STATEMENT_RECOVERY_H_
