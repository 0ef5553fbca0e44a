// The postfix items are run over a stack of operands: a constant, a scalar variable and an array
// are where they stand, a result is in a temporary.   S + X*I -> multiply t0 X I, add last t1 S An
// operand that is the result of the instruction before is taken over from it: where it stands on
// the left, operands that may change sides do so.
#include "exec/decoded/expression_decoder.h"

#include "exec/values/evaluation_stack.h"
#include "exec/values/scalar_operations.h"
#include "lang/code/constant_pool.h"
#include "lang/text/language_tables.h"

namespace zorvik {
namespace {

struct OpOfCode {
  int code;
  Op op;
};

template <std::size_t n>
const OpOfCode* find_op(const OpOfCode (&rows)[n], int code) {
  for (const OpOfCode& row : rows) {
    if (row.code == code) return &row;
  }
  return nullptr;
}

constexpr OpOfCode kTruthOps[] = {{kLess, Op::kLess},
                                  {kGreater, Op::kGreater},
                                  {kLessEqual, Op::kLessEqual},
                                  {kNotEqual, Op::kNotEqual},
                                  {kGreaterEqual, Op::kGreaterEqual},
                                  {kEqual, Op::kEqual},
                                  {kAnd, Op::kAnd},
                                  {kOr, Op::kOr}};

// Functions of two numbers, of reals and of whole numbers.
struct FunctionOps {
  int number;
  Op real, whole;
};
constexpr FunctionOps kFunctionsOfTwo[] = {{kFunctionMod, Op::kRemainder, Op::kRemainder},
                                           {kFunctionMax, Op::kLarger, Op::kLargerWhole},
                                           {kFunctionMin, Op::kSmaller, Op::kSmallerWhole}};

// The forms of an operation: see Op.
constexpr int kForms = static_cast<int>(Op::kAddLast) - static_cast<int>(Op::kAdd);
static_assert(static_cast<int>(Op::kAddSure) == static_cast<int>(Op::kAdd) + 2 * kForms &&
              static_cast<int>(Op::kMultiplyWholeSure) ==
                  static_cast<int>(Op::kMultiplyWhole) + 2 * kForms);
Op with_last(Op op) { return static_cast<Op>(static_cast<int>(op) + kForms); }
Op with_sure(Op op) { return static_cast<Op>(static_cast<int>(op) + 2 * kForms); }

Op arithmetic_op(int code, bool is_whole) {
  switch (code) {
    case kPlus:
      return is_whole ? Op::kAddWhole : Op::kAdd;
    case kMinus:
      return is_whole ? Op::kSubtractWhole : Op::kSubtract;
    case kTimes:
      return is_whole ? Op::kMultiplyWhole : Op::kMultiply;
    default:
      return is_whole ? Op::kDivideWhole : Op::kDivide;
  }
}

}  // namespace

// ---- Instructions ----

void ExpressionDecoder::emit(const Instruction& instruction) {
  if (decoded_program.count == kInstructionCapacity) {
    full_ = true;
    return;
  }
  decoded_program.instruction[decoded_program.count++] = instruction;
}

Instruction* ExpressionDecoder::instruction_of(const double* place) {
  if (decoded_program.count == first_ || temporaries_ == 0) return nullptr;
  Instruction& before = decoded_program.instruction[decoded_program.count - 1];
  return before.to == place && is_temporary(place) ? &before : nullptr;
}

bool ExpressionDecoder::is_result_before(const Instruction& operation, const double* place) const {
  return &operation > decoded_program.instruction + first_ && (&operation)[-1].to == place &&
         is_temporary(place);
}

int ExpressionDecoder::keep() {
  if (full_) return drop();
  for (int k = first_; k < decoded_program.count; ++k) {
    Instruction& instruction = decoded_program.instruction[k];
    instruction.statement = position_;
    instruction.next = &instruction + 1;
  }
  return decoded_program.start[position_] = first_ + 1;
}

int ExpressionDecoder::drop() {
  decoded_program.count = first_;
  return decoded_program.start[position_] = outcome_;
}

double* ExpressionDecoder::new_temporary() {
  double* const place = decoded_program.temporary + temporaries_;
  if (temporaries_ < kTemporaries - 1) {
    ++temporaries_;
  } else {
    full_ = true;
  }
  return place;
}

// Emits an instruction with a new temporary as its result, which is pushed.
void ExpressionDecoder::emit_result(Instruction instruction, BaseType type) {
  instruction.to = new_temporary();
  emit(instruction);
  push(instruction.to, type);
}

// ---- Operands ----

void ExpressionDecoder::push(const double* place, BaseType type, const Variable* array) {
  stack_[depth_] = {place, type, nullptr, {}};
  if (array != nullptr) {
    arrays_[depth_] = *array;
    stack_[depth_].array = &arrays_[depth_];
  }
  values_ += stack_[depth_++].elements();
  // The general evaluator copies arrays, and ends the run when its buffer is full.
  if (values_ > kValueCapacity) full_ = true;
}

ExpressionDecoder::Operand ExpressionDecoder::pop() {
  const Operand operand = stack_[--depth_];
  values_ -= operand.elements();
  text_ -= static_cast<int>(operand.text.size());
  return operand;
}

bool ExpressionDecoder::are_numbers(int count) const {
  for (int k = depth_ - count; k < depth_; ++k) {
    if (stack_[k].array != nullptr || stack_[k].type == kCharacter) return false;
  }
  return true;
}

// A statement must wait for variables that do not exist yet.
bool ExpressionDecoder::is_plain(const Variable& variable) {
  if (!variable.defined) outcome_ = kNotDecoded;
  return variable.defined && is_numeric(variable.base_type);
}

bool ExpressionDecoder::push_variable(const Variable& variable) {
  if (!is_plain(variable)) return false;
  push(variable.values(), variable.base_type, variable.rank == 0 ? nullptr : &variable);
  return true;
}

// Takes the subscripts from the stack; false unless they are whole numbers as many as the rank.
bool ExpressionDecoder::take_subscripts(const Variable& variable, int count, const double*& row,
                                        const double*& column) {
  if (!is_plain(variable) || variable.rank != count || !are_numbers(count)) return false;
  column = nullptr;
  if (count == 2) {
    const Operand second = pop();
    if (second.type != kInteger) return false;
    column = second.place;
  }
  const Operand first = pop();
  row = first.place;
  return first.type == kInteger;
}

// The subscripts are looked at when the element is loaded.
bool ExpressionDecoder::push_element(const Variable& variable, const double* row,
                                     const double* column) {
  emit_result(
      {.op = column == nullptr ? Op::kLoad : Op::kLoad2,
       .a = row,
       .b = column,
       .with = {.block = {variable.values(), variable.block.d1, variable.block.d2, nullptr}}},
      variable.base_type);
  return true;
}

// ---- Items ----

bool ExpressionDecoder::decode_items(int at, int count) {
  const int all = code_store.word[at];
  for (int k = 0; k < count; ++k) {
    if (!decode_item(code_item(at, all, k))) return false;
  }
  return true;
}

bool ExpressionDecoder::decode_item(const Item& item) {
  switch (item.item_class()) {
    case ItemClass::kConstant:
      if (item.base_type() == kCharacter) return push_text_constant(item.first);
      push(&number_constant(item.first), item.base_type());
      return true;
    case ItemClass::kVariable:
      return push_variable(variable_of(item));
    case ItemClass::kOperator:
      if (!are_numbers(item.operands())) return false;
      return item.operands() == 1 ? decode_unary(item.first) : decode_binary(item.first);
    case ItemClass::kFunction:
      return decode_function(item.first);
    case ItemClass::kSubscripted: {
      const Variable variable = variable_of(item);
      const double *row, *column;
      return take_subscripts(variable, item.subscripts(), row, column) &&
             push_element(variable, row, column);
    }
  }
  return false;
}

// A sign keeps the type, "^" gives a whole 0 or 1.
bool ExpressionDecoder::decode_unary(int code) {
  if (code == kPlus) return true;
  const Operand operand = pop();
  const bool is_sign = code == kMinus;
  emit_result({.op = is_sign ? Op::kNegate : Op::kNot, .a = operand.place},
              is_sign ? operand.type : kInteger);
  return true;
}

// A range is no number; whoever wants one is not plain.
bool ExpressionDecoder::decode_binary(int code) {
  if (code == kColon) return false;
  const Operand right = pop(), left = pop();
  if (const OpOfCode* const row = find_op(kTruthOps, code); row != nullptr) {
    emit_result({.op = row->op, .a = left.place, .b = right.place}, kInteger);
    return true;
  }
  const BaseType type = result_type(left.type, right.type);
  if (code == kPower) {
    const Op op = type == kInteger         ? Op::kPowerWhole
                  : right.type == kInteger ? Op::kRealPowerOfWhole
                                           : Op::kPower;
    emit_result({.op = op, .a = left.place, .b = right.place}, type);
  } else {
    decode_arithmetic(code, left, right, type == kInteger);
  }
  return true;
}

// Sums and products are the same with their sides changed, to the last bit; on the right stands
// what spares a look or a way through memory.
void ExpressionDecoder::decode_arithmetic(int code, const Operand& left, const Operand& right,
                                          bool is_whole) {
  Instruction instruction{.op = arithmetic_op(code, is_whole), .a = left.place, .b = right.place};
  const bool may_change_sides = code == kPlus || code == kTimes;
  const bool is_better_right =
      is_last(left.place) || (is_constant(left.place) && !is_last(right.place));
  if (may_change_sides && is_better_right) std::swap(instruction.a, instruction.b);
  choose_form(instruction);
  emit_result(instruction, is_whole ? kInteger : kReal);
}

// A whole quotient has one form only: its routine looks at both operands.
void ExpressionDecoder::choose_form(Instruction& operation) {
  Op& op = operation.op;
  if (op == Op::kDivideWhole) return;
  if (is_last(operation.b)) {
    op = with_last(op);
  } else if (is_last(operation.a) && op == Op::kSubtract) {
    op = Op::kLastSubtract;
  } else if (is_last(operation.a) && op == Op::kDivide) {
    op = Op::kLastDivide;
  } else if (is_constant(operation.b) || is_temporary(operation.b)) {
    op = with_sure(op);
  }
}

// ---- Functions ----

bool ExpressionDecoder::decode_function(int number) {
  if (number == kFunctionMaxa || number == kFunctionMina) return decode_extreme(number);
  if (number == kFunctionLins) return decode_interpolation();
  if (number == kFunctionWs1p1 || number == kFunctionWs2p1) return decode_property(number);
  if (!are_numbers(function_of(number).arguments)) return false;
  if (number >= kFunctionAbs && number <= kFunctionTeta) return decode_elementary(number);
  return decode_of_two(number);
}

// ABS to TETA, of one number; ABS of a whole number is whole.
bool ExpressionDecoder::decode_elementary(int number) {
  const Operand argument = pop();
  const BaseType type = elementary_type(number, argument.type);
  if (number == kFunctionFloat) {  // the same value: whoever takes it looks at it
    push(argument.place, type);
    return true;
  }
  Instruction instruction{.op = Op::kFunction, .a = argument.place};
  if (number == kFunctionAbs) {
    instruction.op = Op::kAbsolute;
  } else if (number == kFunctionSqrt) {
    instruction.op = Op::kSquareRoot;
  } else {
    instruction.with.function = elementary_function(number);
  }
  emit_result(instruction, type);
  return true;
}

// MOD of anything but two whole numbers has a message to tell.
bool ExpressionDecoder::decode_of_two(int number) {
  for (const FunctionOps& row : kFunctionsOfTwo) {
    if (row.number != number) continue;
    const Operand right = pop(), left = pop();
    const BaseType type = result_type(left.type, right.type);
    if (number == kFunctionMod && type != kInteger) return false;
    emit_result({.op = type == kInteger ? row.whole : row.real, .a = left.place, .b = right.place},
                type);
    return true;
  }
  return false;
}

// MAXA and MINA of a whole variable, in its place.
bool ExpressionDecoder::decode_extreme(int number) {
  const Operand array = pop();
  if (array.array == nullptr) return false;
  const Descriptor& block = array.array->block;
  emit_result({.op = number == kFunctionMaxa ? Op::kLargest : Op::kSmallest,
               .with = {.block = {array.array->values(), block.d1, block.d2, nullptr}}},
              array.type);
  return true;
}

// LINS(Y, X, N, x) with both tables in their places; the number of points is looked at each time.
bool ExpressionDecoder::decode_interpolation() {
  if (!are_numbers(2)) return false;
  const Operand at = pop(), n = pop(), x = pop(), y = pop();
  if (n.type != kInteger) return false;
  if (x.array == nullptr || y.array == nullptr) return false;
  emit_result({.op = Op::kInterpolate,
               .a = at.place,
               .b = n.place,
               .with = {.table = {y.place, x.place, y.elements(), x.elements()}}},
              kReal);
  return true;
}

// A text is there for the functions of properties only. Where it stands on the stack it takes the
// room of a value, which the general evaluator does not give it: that is less than its limit.
bool ExpressionDecoder::push_text_constant(int number) {
  const std::string_view text = text_constant(number);
  if (text_ + static_cast<int>(text.size()) > kTextAreaCapacity) return false;
  push(nullptr, kCharacter);
  stack_[depth_ - 1].text = text;
  text_ += static_cast<int>(text.size());
  return true;
}

// Operands: phase, kind, one or two state values, property. The kind is settled here, which a
// variable's text could not be; a kind that has a message to tell is left.
bool ExpressionDecoder::decode_property(int number) {
  const bool is_saturated = number == kFunctionWs1p1;
  if (!are_numbers(is_saturated ? 2 : 3)) return false;
  const Operand property = pop(), second = pop(), first = is_saturated ? second : pop();
  const Operand kind = pop();
  if (kind.type != kCharacter || !are_numbers(1)) return false;
  const Operand phase = pop();
  if (property.type != kInteger || phase.type != kInteger) return false;
  const PropertyRequest request{phase.place, property.place,
                                property_kind(is_saturated, kind.text)};
  if (!may_be_asked_again(request.kind)) return false;
  emit_result(
      {.op = Op::kProperty, .a = first.place, .b = second.place, .with = {.property = request}},
      kReal);
  return true;
}

// ---- Whole expressions ----

bool ExpressionDecoder::decode_value(int at, Value& value) {
  if (!decode_items(at, code_store.word[at]) || depth_ != 1 || !are_numbers(1)) return false;
  const Operand operand = pop();
  value = {operand.place, operand.type};
  return true;
}

bool ExpressionDecoder::decode_target(int at, Target& target) {
  const int count = code_store.word[at];
  const Item item = code_item(at, count, count - 1);
  target = {variable_of(item), item.item_class() == ItemClass::kSubscripted, nullptr, nullptr};
  if (!target.is_element) return is_plain(target.variable) && target.variable.rank == 0;
  return decode_items(at, count - 1) &&
         take_subscripts(target.variable, item.subscripts(), target.row, target.column) &&
         depth_ == 0;
}

}  // namespace zorvik
