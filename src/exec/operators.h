// Operators of expressions, applied to the topmost entries of the evaluation stack.
#ifndef ZORVIK_EXEC_OPERATORS_H_
#define ZORVIK_EXEC_OPERATORS_H_

namespace zorvik {

constexpr int kOperandError = -1;

// Replaces the operands (1 or 2) by the result; 0, or kOperandError after an "%err-" message in the
// listing: "%err- Text operand or pointer in operation ", "%err- Array operand in operation ",
// "%err- Error in operation ":". Operand(s)" with a second line. Division by zero ends the run.
int apply_operator(int code, int operands);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_OPERATORS_H_
