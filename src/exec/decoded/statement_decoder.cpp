// A statement is its expressions, what is done with their values, and an instruction that goes on:
//   S = S + X*I -> multiply t0 X I, add last S S, go on
//   IF X > 1 THEN -> unless X > 1 branch to the ELSE, go on
#include "exec/decoded/decoded_program.h"
#include "exec/decoded/expression_decoder.h"
#include "exec/values/call_stack.h"
#include "exec/values/scalar_operations.h"

namespace zorvik {
namespace {

using Value = ExpressionDecoder::Value;

class StatementDecoder {
 public:
  explicit StatementDecoder(int position) : position_(position), decoder_(position) {}

  int decode() { return decode_by_code() ? decoder_.keep() : decoder_.drop(); }

 private:
  static int word_at(int position) { return code_store.word[position]; }

  bool decode_by_code() {
    switch (head_code(word_at(position_))) {
      case kCodeAssignment:
        return decode_assignment();
      case kCodeIf:
        return decode_if();
      case kCodeElse:
        // Reached at the end of the other way: what comes is behind the ENDIF.
        return go_on_at(word_at(position_ + 1) + kPairWords);
      case kCodeEndif:
        return go_on_at(position_ + kPairWords);
      case kCodeGoto:
        decoder_.emit({.op = Op::kJump, .with = {.branch = {nullptr, word_at(position_ + 1)}}});
        return true;
      case kCodeDo:
        return decode_do();
      case kCodeEnddo:
        return decode_enddo();
      case kCodeOut:
        return decode_out();
      case kCodeEnd:
      case kCodeReturn:
        // Where it does not end an OUTPUT, executing it leaves it to the general way.
        decoder_.emit({.op = Op::kReturn});
        return true;
      default:
        return false;
    }
  }

  bool go_on_at(int position) {
    decoder_.emit({.op = Op::kGo, .with = {.branch = {nullptr, position}}});
    return true;
  }

  // A list of values is stored in the general way. So is a real in a whole variable, which ends the
  // run there with a message.
  bool decode_assignment() {
    const int value_at = after_expression(position_ + 1);
    const int next = after_expression(value_at);
    if (word_at(next) == kListSeparator) return false;
    ExpressionDecoder::Target target;
    Value value;
    if (!decoder_.decode_target(position_ + 1, target) || !decoder_.decode_value(value_at, value) ||
        !may_hold(target.variable.base_type, value.type)) {
      return false;
    }
    target.is_element ? store_in_element(target, value) : store_in_scalar(target.variable, value);
    return go_on_at(next);
  }

  // Storing is the last thing that a statement does, so its last operation may do it.
  void store_in_scalar(const Variable& variable, const Value& value) {
    if (Instruction* const operation = decoder_.instruction_of(value.place); operation != nullptr) {
      operation->to = variable.values();
    } else {
      decoder_.emit({.op = Op::kCopy, .to = variable.values(), .a = value.place});
    }
  }

  void store_in_element(const ExpressionDecoder::Target& target, const Value& value) {
    const Descriptor& block = target.variable.block;
    decoder_.emit({.op = target.column == nullptr ? Op::kStore : Op::kStore2,
                   .a = target.row,
                   .b = target.column,
                   .with = {.block = {target.variable.values(), block.d1, block.d2, value.place}}});
  }

  // A bound of a DO, whole by its type.
  bool decode_whole(int at, Value& value) {
    return decoder_.decode_value(at, value) && value.type == kInteger;
  }

  // Decodes a bound or the step of a DO, which must not name the loop's variable: that has its
  // initial value by then.
  bool decode_bound(int at, const Item& loop_variable, Value& value) {
    const int count = word_at(at);
    for (int k = 0; k < count; ++k) {
      if (code_item(at, count, k).first == loop_variable.first) return false;
    }
    return decode_whole(at, value);
  }

  // The words of a DO: head, ENDDO's position, variable, initial value, comma, limit, step if there
  // is one, and the five words of the loop record, in front of the body.
  bool decode_do() {
    static constexpr double kOne = 1.0;
    int at = position_ + 2;
    const Item target_item = code_item(at, 1, 0);
    ExpressionDecoder::Target target;
    if (word_at(at) != 1 || !decoder_.decode_target(at, target)) return false;  // an element
    Value initial, limit, step{&kOne, kInteger};
    at = after_expression(at);
    if (target.variable.base_type != kInteger || !decode_whole(at, initial)) return false;
    at = after_expression(at) + 1;
    if (!decode_bound(at, target_item, limit)) return false;
    at = after_expression(at);
    if (word_at(at) == kListSeparator) {
      if (!decode_bound(at + 1, target_item, step)) return false;
      at = after_expression(at + 1);
    }
    const int body = at + kLoopRecordWords;
    decoder_.emit(
        {.op = Op::kDo,
         .to = target.variable.values(),
         .a = initial.place,
         .b = limit.place,
         .with = {.loop = {nullptr, word_at(position_ + 1) + kPairWords, body, step.place}}});
    return go_on_at(body);
  }

  bool decode_enddo() {
    const int body = word_at(position_ + 1);
    decoder_.emit(
        {.op = Op::kEnddo, .with = {.loop_end = {nullptr, body, &loop_record_before(body)}}});
    return go_on_at(position_ + kPairWords);
  }

  // The block is run by the executor, which loads its records.
  bool decode_out() {
    const int procedure = word_at(position_ + 1);
    if (is_call_of_block(procedure)) return false;
    decoder_.emit(
        {.op = Op::kOut, .with = {.call = {nullptr, first_statement(procedure), procedure}}});
    return go_on_at(position_ + kPairWords);
  }

  // The condition's last comparison branches itself; any other value is compared with 0.
  bool decode_if() {
    Value condition;
    if (!decoder_.decode_value(position_ + 1, condition)) return false;
    const int pair = after_expression(position_ + 1);
    const Branch otherwise{nullptr, word_at(pair + 1) + kPairWords};
    Instruction* const operation = decoder_.instruction_of(condition.place);
    if (operation != nullptr && is_comparison(operation->op)) {
      branch_unless(*operation);
      operation->with.branch = otherwise;
    } else {
      decoder_.emit({.op = Op::kUnless, .a = condition.place, .with = {.branch = otherwise}});
    }
    return go_on_at(pair + kPairWords);
  }

  // Not "&" and "|", which have no branch of their own.
  static bool is_comparison(Op op) { return op >= Op::kLess && op <= Op::kEqual; }

  // Makes a comparison a branch, in its second form when an operand is the result before it.
  void branch_unless(Instruction& comparison) {
    constexpr int kToBranch = static_cast<int>(Op::kUnlessLess) - static_cast<int>(Op::kLess);
    constexpr int kToLast = static_cast<int>(Op::kUnlessLessLast) - static_cast<int>(Op::kLess);
    if (decoder_.is_result_before(comparison, comparison.a)) {
      std::swap(comparison.a, comparison.b);
      comparison.op = with_sides_changed(comparison.op);
    }
    const bool has_last = decoder_.is_result_before(comparison, comparison.b);
    comparison.op =
        static_cast<Op>(static_cast<int>(comparison.op) + (has_last ? kToLast : kToBranch));
  }
  static Op with_sides_changed(Op comparison) {
    switch (comparison) {
      case Op::kLess:
        return Op::kGreater;
      case Op::kGreater:
        return Op::kLess;
      case Op::kLessEqual:
        return Op::kGreaterEqual;
      case Op::kGreaterEqual:
        return Op::kLessEqual;
      default:
        return comparison;
    }
  }

  int position_;
  ExpressionDecoder decoder_;
};

}  // namespace

int decode_statement(int position) { return StatementDecoder(position).decode(); }

int decode_expression(int position) {
  ExpressionDecoder decoder(position);
  Value value;
  if (!decoder.decode_value(position, value)) return decoder.drop();
  decoder.emit({.op = Op::kValue, .type = static_cast<std::uint8_t>(value.type), .a = value.place});
  return decoder.keep();
}

}  // namespace zorvik
