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

// Each compiles one statement whose keyword (or first lexeme) is `head`. An expression that fails
// is counted once more, and the rest of its statement is skipped.
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
