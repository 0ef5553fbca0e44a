// The evaluator: runs a compiled expression over the evaluation stack.
#ifndef ZORVIK_EXEC_EVALUATOR_H_
#define ZORVIK_EXEC_EVALUATOR_H_

#include "exec/values/variables.h"

namespace zorvik {

// Evaluates the expression whose item count stands at code position `position` and leaves its value
// as the one entry of the evaluation stack. Returns the position after the expression. An error
// ends the run: after the operator's or function's own message with "%fat- Procedure " and the
// procedure's name.
int u92xt3(int position);

// What the target of an assignment or of a DO refers to.
struct Reference {
  Variable variable;
  int subscripts;  // 0, 1 or 2
  Region region;   // of a defined variable: what the subscripts select, all of it without any
  // Of an undefined notkey: what stands in each subscript.
  struct Subscript {
    bool is_range;
    double first, last;
  } subscript[2];
};

// Evaluates a target; returns the position after it.
int evaluate_target(int position, Reference& reference);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_EVALUATOR_H_
