// Statements on plain scalars, decoded once into three-address instructions.
//
// The code store stays what is compiled, reported and resolved. A statement whose variables exist,
// and in which every value is one number, is decoded the first time it is reached after that, and
// run in its decoded form from then on. Whatever is not plain - an undefined value, a subscript out
// of bounds, a division by zero, a whole number that lost its wholeness - leaves the statement to
// the general evaluator before anything has been changed, so results and messages are the same.
#ifndef ZORVIK_EXEC_DECODED_DECODED_PROGRAM_H_
#define ZORVIK_EXEC_DECODED_DECODED_PROGRAM_H_

#include <cstdint>

#include "exec/values/loop_record.h"
#include "lang/code/code_store.h"

namespace zorvik {

enum class Op : std::uint8_t {
  // to = a op b; real operands, and whole ones whose result stays whole.
  kAdd,
  kSubtract,
  kMultiply,
  kDivide,
  kPower,
  kAddWhole,
  kSubtractWhole,
  kMultiplyWhole,
  kDivideWhole,
  kRemainder,
  kPowerWhole,  // of a whole exponent; count: the result is whole
  kMaximum,     // count, also of kMinimum: the result is whole
  kMinimum,
  kAnd,
  kOr,
  // Comparisons, and in the same order branches to `target` when they do not hold.
  kLess,
  kGreater,
  kLessEqual,
  kNotEqual,
  kGreaterEqual,
  kEqual,
  kUnlessLess,
  kUnlessGreater,
  kUnlessLessEqual,
  kUnlessNotEqual,
  kUnlessGreaterEqual,
  kUnlessEqual,
  kUnless,  // to `target` when a is 0
  // to = op a
  kCopy,
  kNegate,
  kNot,
  kFunction,  // number `count`
  // Elements. Subscripts run from 1 to `count`; columns have `target` elements.
  kColumn,         // to = elements before column a
  kLoadElement,    // to = block[a]
  kLoadElement2,   // to = block[a in the column that begins after b]
  kStoreElement,   // block[a] = b
  kStoreElement2,  // block[a in the column that begins after *to] = b
  // Going on at code position `target`.
  kGo,
  kJump,   // the same, counted as a GOTO
  kDo,     // starts `loop` over `to` from a to b by c, its body at `target`, or goes on at `count`
  kEnddo,  // of `loop`: to its body at `target`, or on at `count`
};

struct Instruction {
  Op op = Op{};
  int target = 0, count = 0;
  int statement = 0;  // code position of the statement that it is a part of
  double* to = nullptr;
  const double* a = nullptr;
  const double* b = nullptr;
  const double* c = nullptr;
  double* block = nullptr;
  LoopRecord* loop = nullptr;
  const Instruction* next = nullptr;   // what follows when nothing branches
  const Instruction* other = nullptr;  // what stands at `target`, once known
};

constexpr int kInstructionCapacity = kCodeCapacity;
constexpr int kTemporaries = 200;

struct DecodedProgram {
  Instruction instruction[kInstructionCapacity] = {};
  int count = 0;
  // By code position of a statement: its first instruction + 1; 0 not decoded yet, -1 never.
  int start[kCodeCapacity + 1] = {};
  double temporary[kTemporaries] = {};
};
extern DecodedProgram decoded_program;

// Decodes the statement at the code position if it can be; the new entry of `start`.
int decode_statement(int position);

// Runs decoded statements from the code position on, counting GOTOs in `jumps` up to `max_jumps`.
// Returns the position of a statement that the general evaluator must execute.
int run_decoded(int position, int& jumps, int max_jumps);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_DECODED_DECODED_PROGRAM_H_
