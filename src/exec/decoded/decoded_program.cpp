// Every instruction tests what could make its statement not plain before it changes anything, and
// then leaves the statement to the general evaluator, which begins it anew. So only the last
// instruction of a statement may write anything but a temporary. The result of an instruction is
// kept at hand for the next one, which spares it a way through memory.
#include "exec/decoded/decoded_program.h"

#include <cmath>

#include "exec/decoded/going_on.h"
#include "exec/decoded/rare_instructions.h"

namespace zorvik {

constinit DecodedProgram decoded_program;

namespace {

constexpr int kValueFound = -1;  // in place of a code position: an expression has its value

// ---- Arithmetic and comparisons ----

using Operation = double (*)(double, double);

template <int code>
double of_reals(double a, double b) {
  return arithmetic(code, a, b);
}
template <int code>
double of_whole(double a, double b) {
  return whole(arithmetic(code, a, b));
}

// to = the operation of a and b, in the second form of a and the last result, in the third without
// a look at b; false when an operand is undefined.
template <Operation operation>
bool binary(const Instruction& i, double& last) {
  if (may_be_undefined(*i.a) || may_be_undefined(*i.b)) return false;
  *i.to = last = operation(*i.a, *i.b);
  return true;
}
template <Operation operation>
bool binary_last(const Instruction& i, double& last) {
  if (may_be_undefined(*i.a)) return false;
  *i.to = last = operation(*i.a, last);
  return true;
}
template <Operation operation>
bool binary_sure(const Instruction& i, double& last) {
  if (may_be_undefined(*i.a)) return false;
  *i.to = last = operation(*i.a, *i.b);
  return true;
}

bool quotient(const Instruction& i, double dividend, double divisor, double& last) {
  if (may_be_undefined(dividend) || !divide(dividend, divisor, last)) return false;
  *i.to = last;
  return true;
}

template <int code>
bool compare(const Instruction& i, double& last) {
  if (may_be_undefined(*i.a) || may_be_undefined(*i.b)) return false;
  *i.to = last = truth(holds(code, *i.a, *i.b));
  return true;
}

// ---- Elements ----

// The place of an element; null when a subscript is out of bounds.
double* element(const Instruction& i) {
  const int row = subscript(*i.a, i.with.block.rows);
  return row == 0 ? nullptr : i.with.block.first + row - 1;
}
double* element2(const Instruction& i) {
  const int row = subscript(*i.a, i.with.block.rows);
  const int column = subscript(*i.b, i.with.block.columns);
  if (row == 0 || column == 0) return nullptr;
  return i.with.block.first + (column - 1) * i.with.block.rows + row - 1;
}

bool load(const Instruction& i, const double* from, double& last) {
  if (from == nullptr || may_be_undefined(*from)) return false;
  *i.to = last = *from;
  return true;
}

bool store(const Instruction& i, double* to) {
  const double value = *i.with.block.value;
  if (to == nullptr || may_be_undefined(value)) return false;
  *to = value;
  return true;
}

// ---- Going on ----

// The first instruction of the statement at the code position; null when it is not decoded.
const Instruction* first_instruction(int position) {
  int start = decoded_program.start[position];
  if (start == kNotDecoded) start = decode_statement(position);
  return start <= 0 ? nullptr : decoded_program.instruction + start - 1;
}

// The same, past statements that only go on elsewhere.
const Instruction* instruction_at(int position) {
  const Instruction* found = first_instruction(position);
  while (found != nullptr && found->op == Op::kGo) {
    const Instruction* const beyond = first_instruction(found->with.branch.target);
    if (beyond == nullptr) break;
    found = beyond;
  }
  return found;
}

Instruction& changeable(const Instruction* i) {
  return decoded_program.instruction[i - decoded_program.instruction];
}

const Instruction* look_for_target(const Instruction& i) {
  return changeable(&i).with.branch.instruction = instruction_at(i.with.branch.target);
}

// The instruction that a branch leads to, looked for until it is found once: a statement that is
// not decoded today may be when its variables exist.
inline const Instruction* taken(const Instruction& i) {
  const Instruction* const found = i.with.branch.instruction;
  return found != nullptr ? found : look_for_target(i);
}

// What follows a finished statement; the instruction before the kGo leads there directly from now
// on.
const Instruction* go_on(const Instruction& i) {
  const Instruction* const found = taken(i);
  if (found != nullptr && &i != decoded_program.instruction && (&i)[-1].statement == i.statement) {
    changeable(&i - 1).next = found;
  }
  return found;
}

// The compiler need not look whether an op is one.
[[noreturn]] inline void no_other_op() { __builtin_unreachable(); }

}  // namespace

Reached run_decoded(int position) {
  const Instruction* next = first_instruction(position);
  if (next == nullptr) return {position};
  double last = 0.0;
  for (;;) {
    const Instruction& i = *next;
    next = i.next;
    switch (i.op) {
      case Op::kAdd:
        if (!binary<of_reals<kPlus>>(i, last)) return {i.statement};
        break;
      case Op::kAddLast:
        if (!binary_last<of_reals<kPlus>>(i, last)) return {i.statement};
        break;
      case Op::kAddSure:
        if (!binary_sure<of_reals<kPlus>>(i, last)) return {i.statement};
        break;
      case Op::kAddWhole:
        if (!binary<of_whole<kPlus>>(i, last)) return {i.statement};
        break;
      case Op::kAddWholeSure:
        if (!binary_sure<of_whole<kPlus>>(i, last)) return {i.statement};
        break;
      case Op::kAddWholeLast:
        if (!binary_last<of_whole<kPlus>>(i, last)) return {i.statement};
        break;
      case Op::kSubtract:
        if (!binary<of_reals<kMinus>>(i, last)) return {i.statement};
        break;
      case Op::kSubtractLast:
        if (!binary_last<of_reals<kMinus>>(i, last)) return {i.statement};
        break;
      case Op::kSubtractSure:
        if (!binary_sure<of_reals<kMinus>>(i, last)) return {i.statement};
        break;
      case Op::kSubtractWhole:
        if (!binary<of_whole<kMinus>>(i, last)) return {i.statement};
        break;
      case Op::kSubtractWholeSure:
        if (!binary_sure<of_whole<kMinus>>(i, last)) return {i.statement};
        break;
      case Op::kSubtractWholeLast:
        if (!binary_last<of_whole<kMinus>>(i, last)) return {i.statement};
        break;
      case Op::kMultiply:
        if (!binary<of_reals<kTimes>>(i, last)) return {i.statement};
        break;
      case Op::kMultiplyLast:
        if (!binary_last<of_reals<kTimes>>(i, last)) return {i.statement};
        break;
      case Op::kMultiplySure:
        if (!binary_sure<of_reals<kTimes>>(i, last)) return {i.statement};
        break;
      case Op::kMultiplyWhole:
        if (!binary<of_whole<kTimes>>(i, last)) return {i.statement};
        break;
      case Op::kMultiplyWholeSure:
        if (!binary_sure<of_whole<kTimes>>(i, last)) return {i.statement};
        break;
      case Op::kMultiplyWholeLast:
        if (!binary_last<of_whole<kTimes>>(i, last)) return {i.statement};
        break;
      case Op::kLastSubtract:
        if (may_be_undefined(*i.b)) return {i.statement};
        *i.to = last = arithmetic(kMinus, last, *i.b);
        break;
      case Op::kDivide:
        if (may_be_undefined(*i.b) || !quotient(i, *i.a, *i.b, last)) return {i.statement};
        break;
      case Op::kDivideLast:
        if (!quotient(i, *i.a, last, last)) return {i.statement};
        break;
      case Op::kDivideSure:
        if (!quotient(i, *i.a, *i.b, last)) return {i.statement};
        break;
      case Op::kLastDivide:
        if (may_be_undefined(*i.b) || !quotient(i, last, *i.b, last)) return {i.statement};
        break;
      case Op::kLess:
        if (!compare<zorvik::kLess>(i, last)) return {i.statement};
        break;
      case Op::kGreater:
        if (!compare<zorvik::kGreater>(i, last)) return {i.statement};
        break;
      case Op::kLessEqual:
        if (!compare<zorvik::kLessEqual>(i, last)) return {i.statement};
        break;
      case Op::kNotEqual:
        if (!compare<zorvik::kNotEqual>(i, last)) return {i.statement};
        break;
      case Op::kGreaterEqual:
        if (!compare<zorvik::kGreaterEqual>(i, last)) return {i.statement};
        break;
      case Op::kEqual:
        if (!compare<zorvik::kEqual>(i, last)) return {i.statement};
        break;
      case Op::kAnd:
        if (!compare<zorvik::kAnd>(i, last)) return {i.statement};
        break;
      case Op::kOr:
        if (!compare<zorvik::kOr>(i, last)) return {i.statement};
        break;
      case Op::kUnlessLess:
        if (may_be_undefined(*i.a) || may_be_undefined(*i.b)) return {i.statement};
        if (holds(zorvik::kLess, *i.a, *i.b)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessLessLast:
        if (may_be_undefined(*i.a)) return {i.statement};
        if (holds(zorvik::kLess, *i.a, last)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessGreater:
        if (may_be_undefined(*i.a) || may_be_undefined(*i.b)) return {i.statement};
        if (holds(zorvik::kGreater, *i.a, *i.b)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessGreaterLast:
        if (may_be_undefined(*i.a)) return {i.statement};
        if (holds(zorvik::kGreater, *i.a, last)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessLessEqual:
        if (may_be_undefined(*i.a) || may_be_undefined(*i.b)) return {i.statement};
        if (holds(zorvik::kLessEqual, *i.a, *i.b)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessLessEqualLast:
        if (may_be_undefined(*i.a)) return {i.statement};
        if (holds(zorvik::kLessEqual, *i.a, last)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessNotEqual:
        if (may_be_undefined(*i.a) || may_be_undefined(*i.b)) return {i.statement};
        if (holds(zorvik::kNotEqual, *i.a, *i.b)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessNotEqualLast:
        if (may_be_undefined(*i.a)) return {i.statement};
        if (holds(zorvik::kNotEqual, *i.a, last)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessGreaterEqual:
        if (may_be_undefined(*i.a) || may_be_undefined(*i.b)) return {i.statement};
        if (holds(zorvik::kGreaterEqual, *i.a, *i.b)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessGreaterEqualLast:
        if (may_be_undefined(*i.a)) return {i.statement};
        if (holds(zorvik::kGreaterEqual, *i.a, last)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessEqual:
        if (may_be_undefined(*i.a) || may_be_undefined(*i.b)) return {i.statement};
        if (holds(zorvik::kEqual, *i.a, *i.b)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnlessEqualLast:
        if (may_be_undefined(*i.a)) return {i.statement};
        if (holds(zorvik::kEqual, *i.a, last)) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kUnless:
        if (may_be_undefined(*i.a)) return {i.statement};
        if (*i.a != 0.0) break;
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kCopy:
        if (may_be_undefined(*i.a)) return {i.statement};
        *i.to = last = *i.a;
        break;
      case Op::kNegate:
        if (may_be_undefined(*i.a)) return {i.statement};
        *i.to = last = negative(*i.a);
        break;
      case Op::kNot:
        if (may_be_undefined(*i.a)) return {i.statement};
        *i.to = last = truth(opposite(*i.a));
        break;
      case Op::kAbsolute:
        if (may_be_undefined(*i.a)) return {i.statement};
        *i.to = last = std::fabs(*i.a);
        break;
      case Op::kSquareRoot:
        if (may_be_undefined(*i.a) || outside_square_root(*i.a)) return {i.statement};
        *i.to = last = std::sqrt(*i.a);
        break;
      case Op::kDivideWhole:
      case Op::kRemainder:
      case Op::kPower:
      case Op::kRealPowerOfWhole:
      case Op::kPowerWhole:
      case Op::kLarger:
      case Op::kSmaller:
      case Op::kLargerWhole:
      case Op::kSmallerWhole:
      case Op::kLargest:
      case Op::kSmallest:
      case Op::kInterpolate:
      case Op::kProperty:
      case Op::kFunction:
        if (!run_rare(i)) return {i.statement};
        last = *i.to;
        break;
      case Op::kLoad:
        if (!load(i, element(i), last)) return {i.statement};
        break;
      case Op::kLoad2:
        if (!load(i, element2(i), last)) return {i.statement};
        break;
      case Op::kStore:
        if (!store(i, element(i))) return {i.statement};
        break;
      case Op::kStore2:
        if (!store(i, element2(i))) return {i.statement};
        break;
      case Op::kGo:
        if (next = go_on(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kJump:
        if (jump(i) == GoingOn::kNotPlain) return {i.statement};
        if (is_often(changeable(&i).passes)) return {i.with.branch.target, true};
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kDo: {
        const GoingOn outcome = enter_loop(i);
        if (outcome == GoingOn::kGoesOn) break;
        if (outcome == GoingOn::kNotPlain) return {i.statement};
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      }
      case Op::kEnddo:
        if (!may_repeat(*i.with.loop_end.record) || is_interrupted()) return {i.statement};
        if (!advance_loop(*i.with.loop_end.record)) break;
        if (is_often(changeable(&i).passes)) return {i.with.branch.target, true};
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      case Op::kOut: {
        const GoingOn outcome = call_output(i);
        if (outcome == GoingOn::kGoesOn) break;
        if (outcome == GoingOn::kNotPlain) return {i.statement};
        if (is_often(changeable(&i).passes)) return {i.with.branch.target, true};
        if (next = taken(i); next == nullptr) return {i.with.branch.target};
        break;
      }
      case Op::kReturn: {
        const int back = return_from_output();
        if (back == 0) return {i.statement};
        if (next = first_instruction(back); next == nullptr) return {back};
        break;
      }
      case Op::kValue:
        if (may_be_undefined(*i.a)) return {i.statement};
        decoded_program.value = *i.a;
        decoded_program.type = static_cast<BaseType>(i.type);
        return {kValueFound};
      default:
        no_other_op();
    }
  }
}

// An expression is decoded the second time that it is evaluated: many are evaluated once, and
// decoding takes longer than that.
bool evaluate_decoded(int position, double& value, BaseType& type) {
  if (code_store.word[position] == 1) return false;  // one item: nothing to gain
  int& start = decoded_program.start[position];
  if (start == kNotDecoded) {
    start = kSeenOnce;
    return false;
  }
  if (start == kSeenOnce) decode_expression(position);
  if (start <= 0 || run_decoded(position).position != kValueFound) return false;
  value = decoded_program.value;
  type = decoded_program.type;
  return true;
}

}  // namespace zorvik
