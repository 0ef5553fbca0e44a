// State of pass 1 within a procedure, and what its statement handlers share: recovery, outcomes.
#ifndef ZORVIK_LANG_STATEMENT_STATE_H_
#define ZORVIK_LANG_STATEMENT_STATE_H_

#include <string_view>

#include "lang/control_tables.h"
#include "lang/lexer.h"

namespace zorvik {

struct OpenIf {
  bool else_seen;
  int number;    // of the IF in its procedure
  int do_depth;  // at the IF
  Position then, else_part;
};

struct OpenDo {
  Position head;
  int number;
  int if_depth;  // at the DO
};

struct StatementState {
  Context context;
  bool procedure_closed;            // the last procedure's END was met
  bool then_flag;                   // THEN was met since the last IF, ELSE, ENDIF or END
  OpenIf open_if[kMaxNesting + 1];  // from 1
  OpenDo open_do[kMaxNesting + 1];
  int if_depth, do_depth;
  Position main_end;  // MAIN's END, while the block is checked
};
extern StatementState statement_state;

enum class Outcome {
  kDone,
  kTextEnded,  // the text ended inside the statement
  kAbandoned,  // after an error; recovery has run
};

inline Position position_of(const Lexeme& lexeme) { return {lexeme.line, lexeme.column}; }

// Counts an error written to the listing without a pointer.
void report_error(std::string_view text);

// The same with a pointer under `column` of the current line.
void report_error_at(int column, std::string_view text);

// "%err- Premature end of file detected", counted.
Outcome report_premature_end();

// Ends the run after a fatal message that was written with a pointer.
[[noreturn]] void stop_at(int column, std::string_view text);

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

#endif  // ZORVIK_LANG_STATEMENT_STATE_H_
