#include "exec/operators.h"

#include "driver/messages.h"
#include "driver/number_format.h"
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

bool is_comparison(int code) {
  return code == kLess || code == kGreater || (code >= kLessEqual && code <= kEqual);
}

bool compare(int code, double left, double right) {
  switch (code) {
    case kLess:
      return left < right;
    case kGreater:
      return left > right;
    case kLessEqual:
      return left <= right;
    case kNotEqual:
      return left != right;
    case kGreaterEqual:
      return left >= right;
    default:
      return left == right;
  }
}

double arithmetic(int code, double left, double right, bool integer_exponent, bool integer) {
  switch (code) {
    case kPlus:
      return left + right;
    case kMinus:
      return left - right;
    case kTimes:
      return left * right;
    case kDivide:
      return divide(left, right, integer);
    default:
      return raise_to_power(left, right, integer_exponent, integer);
  }
}

void apply_range(const StackEntry& left, const StackEntry& right) {
  const double first = round_half_away(*values_of(left));
  const double last = round_half_away(*values_of(right));
  const bool good = left.base_type == kInteger && right.base_type == kInteger && first >= 1.0 &&
                    last >= 1.0 && first <= last;
  if (!good) {
    stop_on_error("%err- Error in operation \":\". Operand(s)",
                  "      not integer or <=0 or 1st_operand > 2nd");
  }
  pop_entries(2);
  if (first == last) {
    push_scalar(kInteger, first);
  } else {
    push_range(first, last);
  }
}

void apply_to_scalars(int code, const StackEntry& left, const StackEntry& right) {
  const double a = *values_of(left), b = *values_of(right);
  if (is_comparison(code)) {
    replace_by_scalar(2, kInteger, compare(code, a, b) ? 1.0 : 0.0);
    return;
  }
  switch (code) {
    case kAnd:
      replace_by_scalar(2, kInteger, a == 0.0 || b == 0.0 ? 0.0 : 1.0);
      return;
    case kOr:
      replace_by_scalar(2, kInteger, a == 0.0 && b == 0.0 ? 0.0 : 1.0);
      return;
    case kColon:
      return apply_range(left, right);
    case kPlus:
    case kMinus:
    case kTimes:
    case kDivide:
    case kPower:
      break;
    default:
      stop_on_console("dbg%- Unrecognized binary operation");
  }
  const bool integer = left.base_type == kInteger && right.base_type == kInteger;
  const double result = arithmetic(code, a, b, right.base_type == kInteger, integer);
  replace_by_scalar(2, integer ? kInteger : kReal, integer ? round_half_away(result) : result);
}

// An array with a scalar on its right: every element, without rounding.
void apply_to_array(int code, const StackEntry& left, const StackEntry& right) {
  const bool allowed = left.shape == kArray && right.shape == kScalar &&
                       (code == kPlus || code == kMinus || code == kTimes);
  if (!allowed) stop_on_operand("Array operand", code);
  const double b = *values_of(right);
  double* const values = values_of(left);
  for (int k = 0; k < left.length; ++k) values[k] = arithmetic(code, values[k], b, false, false);
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
  if (operand.shape == kRange || (operand.shape == kArray && !is_sign)) {
    stop_on_operand("Array operand", code);
  }
  double* const values = values_of(operand);
  if (code == kMinus) {
    for (int k = 0; k < operand.length; ++k) values[k] = -values[k];
  } else if (code == kNot) {
    replace_by_scalar(1, kInteger, *values == 0.0 ? 1.0 : 0.0);
  } else if (!is_sign) {
    stop_on_console("dbg%- Unrecognized unary operation");
  }
}

}  // namespace

void apply_operator(int code, int operands) {
  return operands == 1 ? apply_unary(code) : apply_binary(code);
}

}  // namespace zorvik
