// Operators of expressions, applied to the topmost entries of the evaluation stack.
#ifndef ZORVIK_EXEC_OPERATORS_H_
#define ZORVIK_EXEC_OPERATORS_H_

namespace zorvik {

// Replaces the operands (1 or 2) by the result. Every error ends the run: "%err- Text operand or
// pointer in operation ", "%err- Array operand in operation ", "%err- Error in operation ":".
// Operand(s)" with a second line, a division by zero.
void apply_operator(int code, int operands);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_OPERATORS_H_
