// Decodes expressions into instructions that leave the value in a place.
#ifndef ZORVIK_EXEC_DECODED_EXPRESSION_DECODER_H_
#define ZORVIK_EXEC_DECODED_EXPRESSION_DECODER_H_

#include "exec/decoded/decoded_program.h"
#include "exec/values/variables.h"

namespace zorvik {

// Appends the instructions of one statement or expression to the decoded program. What cannot be
// decoded makes a routine give false; `keep` or `drop` ends the work.
class ExpressionDecoder {
 public:
  explicit ExpressionDecoder(int position) : position_(position), first_(decoded_program.count) {}

  // One number: a variable, a constant or a temporary.
  struct Value {
    const double* place;
    BaseType type;
  };
  bool decode_value(int at, Value& value);

  // The target of an assignment: a scalar, or one element whose subscripts are decoded here.
  struct Target {
    Variable variable;
    bool is_element;
    const double *row, *column;  // of an element; the column in two dimensions only
  };
  bool decode_target(int at, Target& target);

  // A variable that is a number, to be assigned by other means; false when it is none, or not yet.
  bool is_plain(const Variable& variable);

  void emit(const Instruction& instruction);

  // The instruction before, when its result is this place and nothing else has that place.
  Instruction* instruction_of(const double* place);

  // Whether the place holds the result of the instruction before that one.
  bool is_result_before(const Instruction& operation, const double* place) const;

  // Makes what was emitted the decoded form, or drops it; gives the new entry in `start`.
  int keep();
  int drop();

 private:
  struct Operand {
    const double* place;
    BaseType type;
    const Variable* array;  // null: one number or a text
    std::string_view text;  // of a text, whose place is null
    int elements() const { return array == nullptr ? 1 : array->block.d1 * array->block.d2; }
  };

  bool decode_items(int at, int count);
  bool decode_item(const Item& item);
  bool push_variable(const Variable& variable);
  bool push_element(const Variable& variable, const double* row, const double* column);
  bool decode_unary(int code);
  bool decode_binary(int code);
  bool is_last(const double* place) { return instruction_of(place) != nullptr; }
  void choose_form(Instruction& operation);
  void decode_arithmetic(int code, const Operand& left, const Operand& right, bool is_whole);
  bool decode_function(int number);
  bool decode_elementary(int number);
  bool decode_of_two(int number);
  bool decode_extreme(int number);
  bool decode_interpolation();
  bool decode_property(int number);
  bool push_text_constant(int number);
  bool take_subscripts(const Variable& variable, int count, const double*& row,
                       const double*& column);

  void push(const double* place, BaseType type, const Variable* array = nullptr);
  Operand pop();
  bool are_numbers(int count) const;
  double* new_temporary();
  void emit_result(Instruction instruction, BaseType type);

  int position_, first_;
  int outcome_ = kNeverDecoded;  // when it cannot be decoded
  bool full_ = false;
  Operand stack_[kMaxItems + 1];
  Variable arrays_[kMaxItems + 1];
  int depth_ = 0;
  int values_ = 0, text_ = 0;  // that the general evaluator would hold
  int temporaries_ = 0;
};

}  // namespace zorvik

#endif  // ZORVIK_EXEC_DECODED_EXPRESSION_DECODER_H_
