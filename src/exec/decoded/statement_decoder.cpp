// The postfix items are run over a stack of places: a constant and a scalar variable are where they
// stand, a result is in a temporary.   S = S + X*I -> multiply t0 X I, add S S t0, go on
#include "exec/decoded/decoded_program.h"
#include "exec/functions/elementary_functions.h"
#include "exec/values/variables.h"
#include "lang/code/constant_pool.h"
#include "lang/text/language_tables.h"

namespace zorvik {

namespace {

constexpr int kNotYet = 0, kNever = -1;

struct Place {
  const double* value;
  BaseType type;
};

struct OperatorOp {
  Op real, whole;
};

// Arithmetic by operator code; other codes have no row.
OperatorOp arithmetic_op(int code) {
  switch (code) {
    case kPlus:
      return {Op::kAdd, Op::kAddWhole};
    case kMinus:
      return {Op::kSubtract, Op::kSubtractWhole};
    case kTimes:
      return {Op::kMultiply, Op::kMultiplyWhole};
    default:
      return {Op::kDivide, Op::kDivideWhole};
  }
}

// Operators whose result is a truth value, and what they decode to.
struct LogicalOp {
  int code;
  Op op;
};
constexpr LogicalOp kLogicalOps[] = {{kLess, Op::kLess},
                                     {kGreater, Op::kGreater},
                                     {kLessEqual, Op::kLessEqual},
                                     {kNotEqual, Op::kNotEqual},
                                     {kGreaterEqual, Op::kGreaterEqual},
                                     {kEqual, Op::kEqual},
                                     {kAnd, Op::kAnd},
                                     {kOr, Op::kOr}};

class Decoder {
 public:
  explicit Decoder(int position) : position_(position), first_(decoded_program.count) {}

  int decode() {
    const bool good = decode_by_code();
    int& start = decoded_program.start[position_];
    if (good && !full_) {
      for (int k = first_; k < decoded_program.count; ++k) {
        Instruction& instruction = decoded_program.instruction[k];
        instruction.statement = position_;
        instruction.next = &instruction + 1;
      }
      start = first_ + 1;
    } else {
      decoded_program.count = first_;
      start = outcome_;
    }
    return start;
  }

 private:
  bool decode_by_code() {
    const std::int32_t head = code_store.word[position_];
    switch (head_code(head)) {
      case kCodeAssignment:
        return decode_assignment();
      case kCodeIf:
        return decode_if();
      case kCodeElse:
        emit({.op = Op::kGo, .target = code_store.word[position_ + 1] + kPairWords});
        return true;
      case kCodeEndif:
        emit({.op = Op::kGo, .target = position_ + kPairWords});
        return true;
      case kCodeGoto:
        emit({.op = Op::kJump, .target = code_store.word[position_ + 1]});
        return true;
      case kCodeDo:
        return decode_do();
      case kCodeEnddo:
        return decode_enddo();
      default:
        return false;
    }
  }

  Instruction* emit(const Instruction& instruction) {
    if (decoded_program.count == kInstructionCapacity) {
      full_ = true;
      return decoded_program.instruction + kInstructionCapacity - 1;
    }
    decoded_program.instruction[decoded_program.count] = instruction;
    return decoded_program.instruction + decoded_program.count++;
  }

  Instruction& last_instruction() { return decoded_program.instruction[decoded_program.count - 1]; }

  void push(const double* value, BaseType type) { stack_[depth_++] = {value, type}; }
  const Place& pop() { return stack_[--depth_]; }

  double* new_temporary() {
    double* const place = decoded_program.temporary + temporaries_;
    if (temporaries_ < kTemporaries - 1) {
      ++temporaries_;
    } else {
      full_ = true;
    }
    return place;
  }

  // Emits an instruction with a new temporary as its result, which is pushed.
  void emit_result(Instruction instruction, BaseType type) {
    instruction.to = new_temporary();
    emit(instruction);
    push(instruction.to, type);
  }

  // A statement must wait for variables that do not exist yet.
  bool is_plain(const Variable& variable) {
    if (!variable.defined) outcome_ = kNotYet;
    return variable.defined && is_numeric(variable.base_type);
  }

  bool decode_items(int at, int last) {
    const int count = code_store.word[at];
    for (int k = 0; k < last; ++k) {
      if (!decode_item(code_item(at, count, k))) return false;
    }
    return true;
  }

  bool decode_value(int at) { return decode_items(at, code_store.word[at]) && depth_ == 1; }

  bool decode_item(const Item& item) {
    switch (item.item_class()) {
      case ItemClass::kConstant:
        if (item.base_type() == kCharacter) return false;
        push(&number_constant(item.first), item.base_type());
        return true;
      case ItemClass::kVariable: {
        const Variable variable = variable_of(item);
        if (!is_plain(variable) || variable.rank != 0) return false;
        push(variable.values(), variable.base_type);
        return true;
      }
      case ItemClass::kOperator:
        return item.operands() == 1 ? decode_unary(item.first) : decode_binary(item.first);
      case ItemClass::kFunction:
        return decode_function(item.first);
      case ItemClass::kSubscripted:
        return decode_element(item);
    }
    return false;
  }

  bool decode_unary(int code) {
    const Place operand = pop();
    if (code == kNot) {
      emit_result({.op = Op::kNot, .a = operand.value}, kInteger);
    } else {
      emit_result({.op = code == kMinus ? Op::kNegate : Op::kCopy, .a = operand.value},
                  operand.type);
    }
    return true;
  }

  bool decode_binary(int code) {
    const Place right = pop(), left = pop();
    Instruction instruction{.a = left.value, .b = right.value};
    for (const LogicalOp& row : kLogicalOps) {
      if (row.code != code) continue;
      instruction.op = row.op;
      emit_result(instruction, kInteger);
      return true;
    }
    if (code == kColon) return false;
    const bool whole = left.type == kInteger && right.type == kInteger;
    if (code == kPower) {
      instruction.op = right.type == kInteger ? Op::kPowerWhole : Op::kPower;
      instruction.count = whole ? 1 : 0;
    } else {
      const OperatorOp op = arithmetic_op(code);
      instruction.op = whole ? op.whole : op.real;
    }
    emit_result(instruction, whole ? kInteger : kReal);
    return true;
  }

  bool decode_function(int number) {
    if (number >= kFunctionAbs && number <= kFunctionTeta) {
      const Place argument = pop();
      emit_result({.op = Op::kFunction, .count = number, .a = argument.value},
                  elementary_type(number, argument.type));
      return true;
    }
    if (number != kFunctionMod && number != kFunctionMax && number != kFunctionMin) return false;
    const Place right = pop(), left = pop();
    const bool whole = left.type == kInteger && right.type == kInteger;
    if (number == kFunctionMod && !whole) return false;
    const Op op = number == kFunctionMod   ? Op::kRemainder
                  : number == kFunctionMax ? Op::kMaximum
                                           : Op::kMinimum;
    emit_result({.op = op, .count = whole ? 1 : 0, .a = left.value, .b = right.value},
                whole ? kInteger : kReal);
    return true;
  }

  // The place of one element: its subscript in the first column or in column `column`.
  struct Element {
    Variable variable;
    const double* row;
    double* column;  // elements before the column; null in one dimension
  };

  // Takes the subscripts from the stack; false unless they are whole scalars as many as the rank.
  bool take_element(const Item& item, Element& element) {
    element.variable = variable_of(item);
    const Variable& variable = element.variable;
    if (!is_plain(variable) || variable.rank != item.subscripts()) return false;
    element.column = nullptr;
    if (variable.rank == 2) {
      const Place column = pop();
      if (column.type != kInteger) return false;
      element.column = new_temporary();
      emit({.op = Op::kColumn,
            .target = variable.block.d1,
            .count = variable.block.d2,
            .to = element.column,
            .a = column.value});
    }
    const Place row = pop();
    element.row = row.value;
    return row.type == kInteger;
  }

  bool decode_element(const Item& item) {
    Element element;
    if (!take_element(item, element)) return false;
    const Variable& variable = element.variable;
    emit_result({.op = element.column == nullptr ? Op::kLoadElement : Op::kLoadElement2,
                 .count = variable.block.d1,
                 .a = element.row,
                 .b = element.column,
                 .block = variable.values()},
                variable.base_type);
    return true;
  }

  static bool accepts(BaseType target, BaseType value) {
    return target == kReal || value == kInteger;
  }

  bool decode_assignment() {
    const int target_at = position_ + 1;
    const int value_at = after_expression(target_at);
    const int next = after_expression(value_at);
    if (code_store.word[next] == kListSeparator) return false;
    const int count = code_store.word[target_at];
    const Item target = code_item(target_at, count, count - 1);
    if (!decode_items(target_at, count - 1)) return false;
    const bool good = target.item_class() == ItemClass::kVariable
                          ? decode_store_to_scalar(target, value_at)
                          : decode_store_to_element(target, value_at);
    emit({.op = Op::kGo, .target = next});
    return good;
  }

  bool decode_store_to_scalar(const Item& target, int value_at) {
    const Variable variable = variable_of(target);
    if (!is_plain(variable) || variable.rank != 0 || !decode_value(value_at)) return false;
    const Place value = pop();
    if (!accepts(variable.base_type, value.type)) return false;
    const bool is_result = temporaries_ > 0 && last_instruction().to == value.value;
    if (is_result) {
      last_instruction().to = variable.values();  // the last thing that its statement does
    } else {
      emit({.op = Op::kCopy, .to = variable.values(), .a = value.value});
    }
    return true;
  }

  bool decode_store_to_element(const Item& target, int value_at) {
    Element element;
    if (!take_element(target, element) || depth_ != 0 || !decode_value(value_at)) return false;
    const Place value = pop();
    if (!accepts(element.variable.base_type, value.type)) return false;
    emit({.op = element.column == nullptr ? Op::kStoreElement : Op::kStoreElement2,
          .count = element.variable.block.d1,
          .to = element.column,
          .a = element.row,
          .b = value.value,
          .block = element.variable.values()});
    return true;
  }

  bool decode_enddo() {
    const int body = code_store.word[position_ + 1];
    emit({.op = Op::kEnddo,
          .target = body,
          .count = position_ + kPairWords,
          .loop = &loop_record_before(body)});
    return true;
  }

  // Decodes a bound or the step of a DO, which must not name the loop's variable: that has its
  // initial value by then.
  const double* decode_bound(int at, const Item& loop_variable) {
    const int count = code_store.word[at];
    for (int k = 0; k < count; ++k) {
      if (code_item(at, count, k).first == loop_variable.first) return nullptr;
    }
    return decode_whole(at);
  }

  const double* decode_whole(int at) {
    if (!decode_value(at)) return nullptr;
    const Place value = pop();
    return value.type == kInteger ? value.value : nullptr;
  }

  bool decode_do() {
    static constexpr double kOne = 1.0;
    int at = position_ + 2;
    if (code_store.word[at] != 1) return false;  // an element
    const Item target = code_item(at, code_store.word[at], 0);
    const Variable variable = variable_of(target);
    if (!is_plain(variable) || variable.rank != 0 || variable.base_type != kInteger) return false;
    at = after_expression(at);
    const double* const initial = decode_whole(at);
    at = after_expression(at) + 1;
    const double* const limit = initial == nullptr ? nullptr : decode_bound(at, target);
    at = after_expression(at);
    const double* step = &kOne;
    if (code_store.word[at] == kListSeparator) {
      step = limit == nullptr ? nullptr : decode_bound(at + 1, target);
      at = after_expression(at + 1);
    }
    if (limit == nullptr || step == nullptr) return false;
    const int body = at + kLoopRecordWords;
    emit({.op = Op::kDo,
          .target = body,
          .count = code_store.word[position_ + 1] + kPairWords,
          .to = variable.values(),
          .a = initial,
          .b = limit,
          .c = step,
          .loop = &loop_record_before(body)});
    return true;
  }

  bool decode_if() {
    const int condition_at = position_ + 1;
    if (!decode_value(condition_at)) return false;
    const int pair = after_expression(condition_at);
    const int otherwise = code_store.word[pair + 1] + kPairWords;
    const Place condition = pop();
    const bool is_result = temporaries_ > 0 && last_instruction().to == condition.value;
    if (is_result && is_comparison(last_instruction().op)) {
      Instruction& comparison = last_instruction();
      comparison.op = branch_of(comparison.op);
      comparison.target = otherwise;
    } else {
      emit({.op = Op::kUnless, .target = otherwise, .a = condition.value});
    }
    emit({.op = Op::kGo, .target = pair + kPairWords});
    return true;
  }

  static bool is_comparison(Op op) { return op >= Op::kLess && op <= Op::kEqual; }
  static Op branch_of(Op comparison) {
    constexpr int kApart = static_cast<int>(Op::kUnlessLess) - static_cast<int>(Op::kLess);
    return static_cast<Op>(static_cast<int>(comparison) + kApart);
  }

  int position_, first_;
  int outcome_ = kNever;
  bool full_ = false;
  Place stack_[kMaxItems + 1];
  int depth_ = 0;
  int temporaries_ = 0;
};

}  // namespace

int decode_statement(int position) { return Decoder(position).decode(); }

}  // namespace zorvik
