// Statements and expressions on plain scalars, decoded once into three-address instructions.
//
// The code store stays what is compiled, reported and resolved. A statement whose variables exist,
// and in which every value is one number, is decoded the first time it is reached after that, and
// run in its decoded form from then on. Whatever is not plain - an undefined value, a subscript out
// of bounds, a division by zero - leaves the statement to the general evaluator before anything has
// been changed, so results and messages are the same.
//
// The instructions of a statement stand one after the other from the one that `start` tells, up to
// the first kGo, kJump, kReturn or kValue. All types and places are settled when they are decoded:
// whoever runs or translates instructions needs nothing else. A place holds one double and is a
// variable, a constant or a temporary; a temporary has its value until its statement ends.
//   S = S + X*I    kMultiply t0 X I, kAddLast S S t0, kGo to the next statement
//   IF X > 1 THEN  kUnlessGreater X 1 to the ELSE, kGo to what follows THEN
#ifndef ZORVIK_EXEC_DECODED_DECODED_PROGRAM_H_
#define ZORVIK_EXEC_DECODED_DECODED_PROGRAM_H_

#include <cstdint>

#include "exec/functions/elementary_functions.h"
#include "exec/functions/property_functions.h"
#include "exec/values/loop_record.h"
#include "lang/code/code_store.h"
#include "lang/code/constant_pool.h"
#include "stores/value_types.h"

namespace zorvik {

// Whatever `a` and `b` name is looked at before it is used, unless said otherwise, and an undefined
// one leaves the statement.
enum class Op : std::uint8_t {
  // to = a op b, of reals and of whole numbers. In the second form of each, b is the result of the
  // instruction before; in the third, b is a constant or an earlier result, which is not looked at.
  kAdd,
  kSubtract,
  kMultiply,
  kDivide,
  kAddWhole,
  kSubtractWhole,
  kMultiplyWhole,
  kAddLast,
  kSubtractLast,
  kMultiplyLast,
  kDivideLast,
  kAddWholeLast,
  kSubtractWholeLast,
  kMultiplyWholeLast,
  kAddSure,
  kSubtractSure,
  kMultiplySure,
  kDivideSure,
  kAddWholeSure,
  kSubtractWholeSure,
  kMultiplyWholeSure,
  // The same, where a is the result of the instruction before.
  kLastSubtract,
  kLastDivide,
  // to = a op b, without further forms.
  kDivideWhole,
  kRemainder,
  kPower,
  kRealPowerOfWhole,  // a real a, a whole b
  kPowerWhole,
  kLarger,
  kSmaller,
  kLargerWhole,
  kSmallerWhole,
  // to = 1 when a op b holds, else 0.
  kLess,
  kGreater,
  kLessEqual,
  kNotEqual,
  kGreaterEqual,
  kEqual,
  kAnd,
  kOr,
  // Branches unless a op b holds; in the second form b is the result of the instruction before.
  kUnlessLess,
  kUnlessGreater,
  kUnlessLessEqual,
  kUnlessNotEqual,
  kUnlessGreaterEqual,
  kUnlessEqual,
  kUnlessLessLast,
  kUnlessGreaterLast,
  kUnlessLessEqualLast,
  kUnlessNotEqualLast,
  kUnlessGreaterEqualLast,
  kUnlessEqualLast,
  kUnless,  // branches when a is 0
  // to = op a
  kCopy,
  kNegate,
  kNot,
  kAbsolute,
  kSquareRoot,
  kFunction,
  // Of whole arrays, every element of which must be defined.
  kLargest,      // to = the largest element of the block
  kSmallest,     // to = the smallest one
  kInterpolate,  // to = LINS(y, x, b, a) of the table
  kProperty,     // to = a property of water or steam at a, or at a and b
  // Elements of a block: row a, or row a of column b.
  kLoad,    // to = the element
  kLoad2,   // the same in two dimensions
  kStore,   // the element = block.value
  kStore2,  // the same in two dimensions
  // Going on.
  kGo,      // branches
  kJump,    // branches, counted as a GOTO
  kDo,      // starts the loop over `to` from a to b; branches when its body is not to run
  kEnddo,   // branches to the loop's body when it is to run again
  kOut,     // calls an OUTPUT: branches to its first statement when it is turned on
  kReturn,  // of an OUTPUT, to its caller
  kValue,   // ends an expression: its value is a, of type `type`
};

// Where a branch leads: a code position, and the instruction there once that is known. The other
// kinds of branch begin in the same way.
struct Branch {
  const struct Instruction* instruction;
  int target;
};

struct Instruction {
  struct LoopStart {
    const Instruction* instruction;
    int target, body;  // the body's code position
    const double* step;
  };
  struct LoopEnd {
    const Instruction* instruction;
    int target;
    LoopRecord* record;
  };
  struct Call {
    const Instruction* instruction;
    int target, output;  // the number of the called procedure
  };
  struct Block {
    double* first;
    int rows, columns;
    const double* value;  // what a store puts there
  };
  struct Table {
    const double *y, *x;
    int y_length, x_length;
  };

  Op op = Op{};
  std::uint8_t type = 0;    // of kValue: a BaseType
  std::uint8_t passes = 0;  // of kEnddo, kOut and kJump: see is_often
  int statement = 0;        // code position of the statement or expression that it is a part of
  double* to = nullptr;
  const double* a = nullptr;
  const double* b = nullptr;
  const Instruction* next = nullptr;  // what follows when nothing branches
  union With {
    Branch branch = {};
    LoopStart loop;
    LoopEnd loop_end;
    Call call;
    Block block;
    Table table;
    ElementaryFunction function;
    PropertyRequest property;
  } with = {};
};

constexpr int kInstructionCapacity = kCodeCapacity;
constexpr int kTemporaries = 200;

struct DecodedProgram {
  Instruction instruction[kInstructionCapacity] = {};
  int count = 0;
  // By code position of a statement or an expression: its first instruction + 1, or a DecodeState.
  int start[kCodeCapacity + 1] = {};
  double temporary[kTemporaries] = {};
  double value = 0.0;  // of the expression that was evaluated last
  BaseType type = kInteger;
};
extern DecodedProgram decoded_program;

inline bool is_temporary(const double* place) {
  return place >= decoded_program.temporary && place < decoded_program.temporary + kTemporaries;
}
inline bool is_constant(const double* place) {
  return place >= constant_pool.number && place <= constant_pool.number + kMaxNumbers;
}

enum DecodeState : int {
  kNotDecoded = 0,
  kNeverDecoded = -1,
  kSeenOnce = -2,  // an expression: decoding pays from the second time on
};

// Decode the statement or expression at the code position if it can be; its new entry in `start`.
int decode_statement(int position);
int decode_expression(int position);

// How often a statement is reached before it is worth its translation to machine code.
extern const int kPatience;

// Counts a pass; true, and the count begins anew, when there have been enough.
inline bool is_often(std::uint8_t& passes) {
  if (++passes < kPatience) return false;
  passes = 0;
  return true;
}

// The code position of a statement that the general way must execute, or, if `often`, of one that
// may go on decoded but is reached often.
struct Reached {
  int position;
  bool often = false;
};

// Runs decoded statements from the code position on.
Reached run_decoded(int position);

// Evaluates the expression at the code position if it is decoded and plain: one number.
bool evaluate_decoded(int position, double& value, BaseType& type);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_DECODED_DECODED_PROGRAM_H_
