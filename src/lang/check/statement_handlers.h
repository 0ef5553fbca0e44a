// The handlers of pass 1, one for each kind of statement. Each is called when the keyword (for a
// label and an assignment the label or the name) has been read as `head`.
#ifndef ZORVIK_LANG_CHECK_STATEMENT_HANDLERS_H_
#define ZORVIK_LANG_CHECK_STATEMENT_HANDLERS_H_

#include <string>
#include <string_view>

#include "lang/check/statement_state.h"

namespace zorvik {

// check_values.cpp: assignments, output statements and conditions.
Outcome check_assignment(int unit, const Lexeme& head);
Outcome check_output_statement(int unit);  // PRINT, WRITE and WRITE1
Outcome check_if(int unit, const Lexeme& head);
Outcome check_do(int unit, const Lexeme& head);

// check_blocks.cpp: the rest of the IF and DO blocks.
void check_then(const Lexeme& head);
void check_else(const Lexeme& head);
void check_endif(const Lexeme& head);
void check_enddo(const Lexeme& head);

// check_jumps.cpp: labels, jumps and calls.
Outcome define_label(const Lexeme& label);
Outcome check_goto(int unit, const Lexeme& head);
Outcome check_out(int unit, const Lexeme& head);
Outcome check_return(int unit, const Lexeme& head);

// check_procedures.cpp: where procedures begin and end.
Outcome check_output(int unit, const Lexeme& head);
Outcome check_begin(int unit, const Lexeme& head);
void end_procedure(int unit, const Lexeme& head);
void check_out_targets();  // once, at the end of the text

// "%err- " and what the lexeme is, as a message that it may not follow the statement `word`; for a
// character constant, an operator or a keyword.
std::string invalid_after(const Lexeme& lexeme, std::string_view word);

}  // namespace zorvik

#endif  // ZORVIK_LANG_CHECK_STATEMENT_HANDLERS_H_
