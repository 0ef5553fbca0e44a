// Compiles the statements of one procedure into the code store, the text being valid.
#ifndef ZORVIK_LANG_COMPILE_STATEMENT_COMPILER_H_
#define ZORVIK_LANG_COMPILE_STATEMENT_COMPILER_H_

#include "lang/code/procedure_table.h"
#include "lang/compile/name_lookup.h"

namespace zorvik {

// What is being compiled.
struct Compilation {
  int unit;
  Context context;
  NameScope scope;  // its line is that of the current statement
  bool failed;      // an error of this procedure: its jumps are not resolved
};

// " Routine " and the name of the compiler of such a procedure, as messages show it.
std::string_view routine_of(Context context);

// Each compiles one statement: `head` is its keyword (of an assignment the target's name), already
// read; it reads on to the end of the statement and appends the words that code_store.h lists,
// under the line of `scope`. Labels are not recognised within statements that hold expressions.
//
// An expression that fails has written and counted its error (compile_expression); it is counted
// once more for its statement, the rest of which is skipped. What would pass the end of the code
// store ends the run: "%fat- Space for procedures is full", an assignment with "%fat- Space for
// OUTPUTs or BEGIN...END block is full". PRINT and WRITE add "%err- Errors in PRINT or WRITE
// expression", which is not counted; OUT to an unknown name, which pass 1 does not let through,
// ends the run with "%dbg- Invalid OUT", the name and routine_of.
void compile_assignment(Compilation& compilation, const Lexeme& head);
void compile_if(Compilation& compilation, const Lexeme& head);
void compile_else(Compilation& compilation, const Lexeme& head);
void compile_endif(Compilation& compilation, const Lexeme& head);
void compile_goto(Compilation& compilation, const Lexeme& head);
void compile_out(Compilation& compilation, const Lexeme& head);
void compile_do(Compilation& compilation, const Lexeme& head);
void compile_enddo(Compilation& compilation, const Lexeme& head);
void compile_output_statement(Compilation& compilation, const Lexeme& head);

}  // namespace zorvik

#endif  // ZORVIK_LANG_COMPILE_STATEMENT_COMPILER_H_
