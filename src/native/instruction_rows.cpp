// A row looks at everything that could make its statement not plain before it changes anything but
// registers of results; then it leaves.   S = S + X*I   looks at X, I and S; xmm0 = X * I; xmm13 =
// S + xmm0; S = xmm13
// Looking at a value is one comparison of whole numbers: read as such, every double from the marker
// of undefined values on is at least as large as it, and of all others only what is not a number.
// That is left to decoded execution too.
#include "native/instruction_rows.h"

#include <algorithm>

#include "exec/decoded/rare_instructions.h"

#ifndef __code_model_small__
#error "Native code needs all tables within 2 GB: build with -DZORVIK_NATIVE=OFF"
#endif

namespace zorvik::native {
namespace {

struct alignas(16) Constants {
  std::uint64_t magnitude[2] = {~(1ULL << 63), ~(1ULL << 63)};
  std::uint64_t sign[2] = {1ULL << 63, 1ULL << 63};
  double one[2] = {1.0, 1.0};
  double zero[2] = {0.0, 0.0};
  double half = 0.5;
  double smallest_divisor = kSmallestDivisor;
  double undefined = kUndefined;
};
constexpr Constants kConstants;

GoingOn run_rare_instruction(const Instruction& i) {
  return run_rare(i) ? GoingOn::kGoesOn : GoingOn::kNotPlain;
}

// Forms of an operation differ in how decoded execution gets at b, and which operands it looks at.
Op in_first_form(Op op) {
  constexpr int kAdd = static_cast<int>(Op::kAdd);
  constexpr int kForms = static_cast<int>(Op::kAddLast) - kAdd;
  constexpr int kToLast = static_cast<int>(Op::kUnlessLessLast) - static_cast<int>(Op::kUnlessLess);
  if (op <= Op::kMultiplyWholeSure) {
    return static_cast<Op>(kAdd + (static_cast<int>(op) - kAdd) % kForms);
  }
  if (op >= Op::kUnlessLessLast && op <= Op::kUnlessEqualLast) {
    return static_cast<Op>(static_cast<int>(op) - kToLast);
  }
  if (op == Op::kLastSubtract) return Op::kSubtract;
  return op == Op::kLastDivide ? Op::kDivide : op;
}

Instruction with_sides_changed(Instruction i) {
  std::swap(i.a, i.b);
  return i;
}

bool has_column(Op op) { return op == Op::kLoad2 || op == Op::kStore2; }

}  // namespace

// The distance fits: no table is farther away than the code model lets the compiler place it.
Memory at(const volatile void* place) {
  const auto distance = static_cast<const volatile char*>(place) -
                        reinterpret_cast<const volatile char*>(&decoded_program);
  return {kBase, static_cast<std::int32_t>(distance)};
}

Routine routine_of(Op op) {
  if (is_rare(op)) return run_rare_instruction;
  if (op == Op::kDo) return enter_loop;
  if (op == Op::kOut) return call_output;
  return op == Op::kJump ? jump : nullptr;
}

void InstructionRows::set_counter(const double* place, Register in) {
  counter_ = place;
  counter_register_ = in;
}

void InstructionRows::begin_statement(int position, int next, const Instruction* first,
                                      const Instruction* end) {
  position_ = position;
  next_ = next;
  looked_at_.clear();
  calls_routine_ =
      std::any_of(first, end, [](const Instruction& i) { return routine_of(i.op) != nullptr; });
}

// ---- Values ----

const Held* InstructionRows::held(const double* place) const {
  const auto found =
      std::find_if(held_.begin(), held_.end(), [place](const Held& h) { return h.place == place; });
  return found == held_.end() ? nullptr : &*found;
}

// Routines take results from their places in memory.
bool InstructionRows::has_register(const double* place) const {
  if (!is_temporary(place)) return held(place) != nullptr;
  return !calls_routine_ && place < decoded_program.temporary + results_;
}
Operand InstructionRows::operand(const double* place) const {
  if (!has_register(place)) return at(place);
  if (!is_temporary(place)) return held(place)->in;
  return Xmm{static_cast<Byte>(place - decoded_program.temporary)};
}

// Leaves the statement when the value is undefined. Constants and results are not looked at: the
// general evaluator looks at what it fetches from a variable, and never at a result. What is held
// is defined.
void InstructionRows::look_at(const double* place) {
  if (place == nullptr || is_temporary(place) || is_constant(place)) return;
  const bool is_known = std::find(looked_at_.begin(), looked_at_.end(), place) != looked_at_.end();
  if (is_known || held(place) != nullptr) return;
  looked_at_.push_back(place);
  code_.cmp(at(place), kMarker);
  leave_if(Condition::kGreaterOrEqual);
}

void InstructionRows::load(Xmm to, const double* place) {
  const Operand from = operand(place);
  from.is_memory ? code_.movsd(to, from.memory) : code_.movapd(to, Xmm{from.number});
}

// Looks at the operands, and loads a to the register in which the result is made.
Xmm InstructionRows::begin(const Instruction& i) {
  look_at(i.a);
  look_at(i.b);
  const bool is_kept = i.to != nullptr && is_temporary(i.to) && has_register(i.to);
  const Xmm result = is_kept ? Xmm{operand(i.to).number} : kWork;
  load(result, i.a);
  return result;
}

// Brings the result from that register to its place. A held variable that is no longer defined is
// held no more: what follows goes on without.
void InstructionRows::keep(const Instruction& i) {
  if (is_temporary(i.to) && has_register(i.to)) return;
  if (const Held* const variable = held(i.to); variable != nullptr) {
    code_.movapd(variable->in, kWork);
    code_.ucomisd(kWork, at(&kConstants.undefined));
    jump_if(Condition::kAboveOrEqual, next_, Way::kPlain);
  } else {
    code_.movsd(at(i.to), kWork);
  }
}

// ---- Rows ----

// What has a fraction, or may have lost one, is not plain, and no whole zero is negative.
void InstructionRows::calculate(const Instruction& i, Operation operation, bool is_whole) {
  const Xmm x = begin(i);
  (code_.*operation)(x, operand(i.b));
  if (is_whole) {
    code_.cvttsd2si(kRax, x);
    code_.xorpd(kOther, kOther);  // the next instruction would wait for its old value
    code_.cvtsi2sd(kOther, kRax);
    code_.ucomisd(kOther, x);
    leave_if(Condition::kNotEqual);
    leave_if(Condition::kParity);
    code_.addsd(x, at(kConstants.zero));
  }
  keep(i);
}

// The magnitude of the divisor is compared, without its sign; what is not a number is below, too,
// and left to decoded execution.
void InstructionRows::divide(const Instruction& i) {
  const Xmm x = begin(i);
  load(kOther, i.b);
  code_.andpd(kOther, at(kConstants.magnitude));
  code_.comisd(kOther, at(&kConstants.smallest_divisor));
  leave_if(Condition::kBelow);
  code_.divsd(x, operand(i.b));
  keep(i);
}

// A sign is changed or dropped bit by bit, that of zero and of what is not a number as well.
void InstructionRows::mask(const Instruction& i, Operation operation, const void* bits) {
  (code_.*operation)(begin(i), at(bits));
  keep(i);
}

// Of -0.0 the root is -0.0, as the processor has it: only what is below is left.
void InstructionRows::square_root(const Instruction& i) {
  const Xmm x = begin(i);
  code_.comisd(x, at(kConstants.zero));
  leave_if(Condition::kBelow);
  code_.sqrtsd(x, x);
  keep(i);
}

// A comparison gives all bits or none: of those of 1, all or none.
void InstructionRows::compare(const Instruction& i, const Operand& b, Predicate predicate) {
  const Xmm x = begin(i);
  code_.cmpsd(x, b, predicate);
  code_.andpd(x, at(kConstants.one));
  keep(i);
}
void InstructionRows::combine_truths(const Instruction& i, Operation operation) {
  const Xmm x = begin(i);
  load(kOther, i.b);
  code_.cmpsd(x, at(kConstants.zero), Predicate::kNotEqual);
  code_.cmpsd(kOther, at(kConstants.zero), Predicate::kNotEqual);
  (code_.*operation)(x, kOther);
  code_.andpd(x, at(kConstants.one));
  keep(i);
}

// What is not a number is below and equal to anything, for these conditions.
void InstructionRows::branch_unless_greater(const Instruction& i, Condition branches) {
  code_.comisd(begin(i), operand(i.b));
  jump_if(branches, i.with.branch.target);
}
void InstructionRows::branch_unless_equal(const Instruction& i) {
  code_.ucomisd(begin(i), operand(i.b));
  jump_if(Condition::kNotEqual, i.with.branch.target);
  jump_if(Condition::kParity, i.with.branch.target);
}
void InstructionRows::branch_if_equal(const Instruction& i, const Operand& b) {
  code_.ucomisd(begin(i), b);
  Byte* const not_numbers = code_.jcc(Condition::kParity);
  jump_if(Condition::kEqual, i.with.branch.target);
  Assembler::land(not_numbers, code_.next);
}

// rax: the subscript - 1; leaves the statement when it is not one of 1 .. extent.
void InstructionRows::subscript(const double* place, int extent) {
  if (place == counter_) {
    code_.mov(kRax, counter_register_);
  } else {
    load(kOther, place);
    code_.addsd(kOther, at(&kConstants.half));
    code_.cvttsd2si(kRax, kOther);
  }
  code_.dec(kRax);
  code_.cmp_rax(extent);
  leave_if(Condition::kAboveOrEqual);
}

// The place of the element; rax counts those in front of it: column by column, as they are stored.
Memory InstructionRows::element(const Instruction& i) {
  if (has_column(i.op)) {
    subscript(i.b, i.with.block.columns);
    code_.imul(kRcx, kRax, i.with.block.rows);
  }
  subscript(i.a, i.with.block.rows);
  if (has_column(i.op)) code_.add(kRax, kRcx);
  Memory place = at(i.with.block.first);
  place.is_indexed = true;
  return place;
}

// Elements are not held: every round looks at them in memory.
void InstructionRows::load_element(const Instruction& i) {
  const Memory place = element(i);
  code_.cmp(place, kMarker);
  leave_if(Condition::kGreaterOrEqual);
  const Operand to = operand(i.to);
  const Xmm x = is_temporary(i.to) && !to.is_memory ? Xmm{to.number} : kWork;
  code_.movsd(x, place);
  keep(i);
}

// The value is looked at before the subscripts, which use rax; nothing is stored before both are
// good.
void InstructionRows::store_element(const Instruction& i) {
  look_at(i.with.block.value);
  const Memory place = element(i);
  load(kWork, i.with.block.value);
  code_.movsd(place, kWork);
}

// The routine may change rax, rcx, rdx, rsi, rdi, r8 to r11 and every xmm register: nothing is in
// them then, since its statement keeps results in memory, and a loop that holds variables has none.
void InstructionRows::call(std::uint64_t routine, const Instruction& i) {
  code_.mov(Register::kRdi, reinterpret_cast<std::uint64_t>(&i));
  code_.mov(kRax, routine);
  code_.call(kRax);
}
// Outcomes are compared as numbers: kNotPlain is below kGoesOn, kBranches above.
void InstructionRows::leave_if_not_plain() {
  code_.cmp32(kRax, static_cast<std::int8_t>(GoingOn::kGoesOn));
  leave_if(Condition::kBelow);
}
void InstructionRows::call_routine(const Instruction& i) {
  call(reinterpret_cast<std::uint64_t>(routine_of(i.op)), i);
  leave_if_not_plain();
  if (!is_rare(i.op)) jump_if(Condition::kAbove, i.with.branch.target);
}

void InstructionRows::write(const Instruction& i) {
  switch (in_first_form(i.op)) {
    case Op::kAdd:
      return calculate(i, &Assembler::addsd, false);
    case Op::kSubtract:
      return calculate(i, &Assembler::subsd, false);
    case Op::kMultiply:
      return calculate(i, &Assembler::mulsd, false);
    case Op::kAddWhole:
      return calculate(i, &Assembler::addsd, true);
    case Op::kSubtractWhole:
      return calculate(i, &Assembler::subsd, true);
    case Op::kMultiplyWhole:
      return calculate(i, &Assembler::mulsd, true);
    case Op::kDivide:
      return divide(i);
    case Op::kLess:
      return compare(i, operand(i.b), Predicate::kLess);
    case Op::kGreater:
      return compare(with_sides_changed(i), operand(i.a), Predicate::kLess);
    case Op::kLessEqual:
      return compare(i, operand(i.b), Predicate::kLessOrEqual);
    case Op::kGreaterEqual:
      return compare(with_sides_changed(i), operand(i.a), Predicate::kLessOrEqual);
    case Op::kNotEqual:
      return compare(i, operand(i.b), Predicate::kNotEqual);
    case Op::kEqual:
      return compare(i, operand(i.b), Predicate::kEqual);
    case Op::kAnd:
      return combine_truths(i, &Assembler::andpd);
    case Op::kOr:
      return combine_truths(i, &Assembler::orpd);
    case Op::kUnlessLess:
      return branch_unless_greater(with_sides_changed(i), Condition::kBelowOrEqual);
    case Op::kUnlessGreater:
      return branch_unless_greater(i, Condition::kBelowOrEqual);
    case Op::kUnlessLessEqual:
      return branch_unless_greater(with_sides_changed(i), Condition::kBelow);
    case Op::kUnlessGreaterEqual:
      return branch_unless_greater(i, Condition::kBelow);
    case Op::kUnlessEqual:
      return branch_unless_equal(i);
    case Op::kUnlessNotEqual:
      return branch_if_equal(i, operand(i.b));
    case Op::kUnless:
      return branch_if_equal(i, at(kConstants.zero));
    case Op::kCopy:
      begin(i);
      return keep(i);
    case Op::kNegate:
      return mask(i, &Assembler::xorpd, kConstants.sign);
    case Op::kAbsolute:
      return mask(i, &Assembler::andpd, kConstants.magnitude);
    case Op::kNot:
      return compare(i, at(kConstants.zero), Predicate::kEqual);
    case Op::kSquareRoot:
      return square_root(i);
    case Op::kLoad:
    case Op::kLoad2:
      return load_element(i);
    case Op::kStore:
    case Op::kStore2:
      return store_element(i);
    default:
      return call_routine(i);
  }
}

}  // namespace zorvik::native
