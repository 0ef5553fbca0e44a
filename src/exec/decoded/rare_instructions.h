// The instructions that are seldom or take long anyway.
#ifndef ZORVIK_EXEC_DECODED_RARE_INSTRUCTIONS_H_
#define ZORVIK_EXEC_DECODED_RARE_INSTRUCTIONS_H_

#include "exec/decoded/decoded_program.h"

namespace zorvik {

constexpr bool is_rare(Op op) {
  return (op >= Op::kDivideWhole && op <= Op::kSmallerWhole) ||
         (op >= Op::kFunction && op <= Op::kProperty);
}

// Does the work of such an instruction; false when its statement is not plain.
bool run_rare(const Instruction& instruction);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_DECODED_RARE_INSTRUCTIONS_H_
