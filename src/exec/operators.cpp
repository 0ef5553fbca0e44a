// Types and shapes are looked at here, from the operands' types first to what the operator allows;
// the values go through the operations on scalars.
//   7/2 -> 3    7.0/2 -> 3.5    A + 1 -> each element of A    1 + A -> an error    3:3 -> 3
#include "exec/operators.h"

#include <algorithm>

#include "driver/messages.h"
#include "driver/text.h"
#include "exec/values/evaluation_stack.h"
#include "exec/values/run_state.h"
#include "exec/values/scalar_operations.h"
#include "lang/text/language_tables.h"

namespace zorvik {
namespace {

[[noreturn]] void stop_on_operand(std::string_view what, int code) {
  stop_on_error(message("%err- ", what, " in operation \"",
                        kOperatorTexts[static_cast<std::size_t>(code)], '"'));
}

void apply_range(const StackEntry& left, const StackEntry& right) {
  const double first = whole(*values_of(left)), last = whole(*values_of(right));
  const bool good = left.base_type == kInteger && right.base_type == kInteger && first >= 1.0 &&
                    last >= 1.0 && first <= last;
  if (!good) {
    stop_on_error("%err- Error in operation \":\". Operand(s)",
                  "      not integer or <=0 or 1st_operand > 2nd");
  }
  pop_entries(2);
  // Equal bounds are a number, which may be calculated with.
  if (first == last) {
    push_scalar(kInteger, first);
  } else {
    push_range(first, last);
  }
}

// A quotient or a power.
double quotient_or_power(int code, const StackEntry& left, const StackEntry& right) {
  const double a = *values_of(left), b = *values_of(right);
  const bool is_whole = result_type(left.base_type, right.base_type) == kInteger;
  double result;
  const bool good = code == kPower ? raise_to_power(a, b, right.base_type == kInteger, result)
                    : is_whole     ? divide_whole(a, b, result)
                                   : divide(a, b, result);
  if (!good) {
    stop_at_statement(is_whole ? "%fat- Integer divide by zero" : "%fat- Floating divide by zero");
  }
  return result;
}

void apply_to_scalars(int code, const StackEntry& left, const StackEntry& right) {
  if (code == kColon) return apply_range(left, right);
  const double a = *values_of(left), b = *values_of(right);
  if (is_comparison_or_logical(code)) {
    return replace_by_scalar(2, kInteger, truth(holds(code, a, b)));
  }
  const bool is_simple = code == kPlus || code == kMinus || code == kTimes;
  if (!is_simple && code != kDivide && code != kPower) {
    // "^" between two operands; pass 1 lets none through. The text begins with "dbg%".
    stop_on_console("dbg%- Unrecognized binary operation");
  }
  const BaseType type = result_type(left.base_type, right.base_type);
  const double result = is_simple ? arithmetic(code, a, b) : quotient_or_power(code, left, right);
  replace_by_scalar(2, type, type == kInteger ? whole(result) : result);
}

// The operator is chosen once for all elements; they are not rounded.
template <int code>
void apply_to_elements(const StackEntry& entry, double b) {
  double* const values = values_of(entry);
  for (int k = 0; k < entry.length; ++k) values[k] = arithmetic(code, values[k], b);
}

// An array with a scalar on its right. It keeps its type, whatever that of the scalar is.
void apply_to_array(int code, const StackEntry& left, const StackEntry& right) {
  const bool fits = left.shape == kArray && right.shape == kScalar;
  const double b = *values_of(right);
  if (fits && code == kPlus) {
    apply_to_elements<kPlus>(left, b);
  } else if (fits && code == kMinus) {
    apply_to_elements<kMinus>(left, b);
  } else if (fits && code == kTimes) {
    apply_to_elements<kTimes>(left, b);
  } else {
    stop_on_operand("Array operand", code);
  }
  pop_entries(1);
}

void apply_binary(int code) {
  const StackEntry& left = evaluation.entry[evaluation.depth - 1];
  const StackEntry& right = top_entry();
  if (!is_numeric(left.base_type) || !is_numeric(right.base_type)) {
    stop_on_operand("Text operand or pointer", code);
  }
  if (left.shape != kScalar || right.shape != kScalar) return apply_to_array(code, left, right);
  return apply_to_scalars(code, left, right);
}

void apply_unary(int code) {
  const StackEntry& operand = top_entry();
  if (!is_numeric(operand.base_type)) stop_on_operand("Text operand or pointer", code);
  const bool is_sign = code == kPlus || code == kMinus;
  // Of a range not even a sign is taken: it has no elements that could be changed.
  if (operand.shape == kRange || (operand.shape == kArray && !is_sign)) {
    stop_on_operand("Array operand", code);
  }
  double* const values = values_of(operand);
  if (code == kMinus) {
    std::transform(values, values + operand.length, values, negative);
  } else if (code == kNot) {
    replace_by_scalar(1, kInteger, truth(opposite(*values)));
  } else if (!is_sign) {
    stop_on_console("dbg%- Unrecognized unary operation");
  }
}

}  // namespace

void apply_operator(int code, int operands) {
  return operands == 1 ? apply_unary(code) : apply_binary(code);
}

}  // namespace zorvik
