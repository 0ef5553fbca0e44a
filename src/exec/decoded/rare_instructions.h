// The instructions that are seldom or take long anyway: kDivideWhole to kSmallerWhole, kFunction,
// and those of whole arrays.
#ifndef ZORVIK_EXEC_DECODED_RARE_INSTRUCTIONS_H_
#define ZORVIK_EXEC_DECODED_RARE_INSTRUCTIONS_H_

#include "exec/decoded/decoded_program.h"

namespace zorvik {

// Does the work of such an instruction; false when its statement is not plain.
bool run_rare(const Instruction& instruction);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_DECODED_RARE_INSTRUCTIONS_H_
