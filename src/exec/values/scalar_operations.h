// Operations on scalars, written once for every form in which statements are executed.
//
// Numbers are doubles; what is whole by its type may hold a fraction when a file gave it one. An
// operation that has no result says so, and the caller does what it has to: the general evaluator
// ends the run with its message, decoded execution leaves the statement to the general evaluator.
#ifndef ZORVIK_EXEC_VALUES_SCALAR_OPERATIONS_H_
#define ZORVIK_EXEC_VALUES_SCALAR_OPERATIONS_H_

#include <cmath>
#include <cstdint>

#include "driver/number_format.h"
#include "lang/text/language_tables.h"
#include "stores/value_types.h"

namespace zorvik {

// A divisor of less magnitude is a zero.
constexpr double kSmallestDivisor = 2.3e-308;

constexpr bool is_undefined(double value) { return value == kUndefined; }

// True of the marker and of the few numbers above it: whoever has another way for these needs one
// comparison and no look at what is not a number.
constexpr bool may_be_undefined(double value) { return value >= kUndefined; }

inline bool any_undefined(const double* values, int count) {
  int undefined = 0;  // counting needs no branch, so that several are looked at in one step
  for (int k = 0; k < count; ++k) undefined += is_undefined(values[k]) ? 1 : 0;
  return undefined != 0;
}

// What an operation on whole numbers gives: rounded half away from zero, and no zero is negative.
// Adding 1.5 * 2^52 drops what lies behind the point of a magnitude below 2^51.
inline double whole(double value) {
  constexpr double kDropFraction = 6755399441055744.0, kLimit = 2251799813685248.0;
  const bool is_whole =
      std::fabs(value) < kLimit && (value + kDropFraction) - kDropFraction == value;
  return is_whole ? value + 0.0 : round_half_away(value);
}

// The type of a sum, difference, product, quotient, power, MAX or MIN.
constexpr BaseType result_type(BaseType left, BaseType right) {
  return left == kInteger && right == kInteger ? kInteger : kReal;
}

// Whether a number of type `value` may be stored in a variable or an element of type `variable`.
constexpr bool may_hold(BaseType variable, BaseType value) {
  return variable != kInteger || value == kInteger;
}

// "+", "-" or "*" of reals; that of whole numbers is whole() of it.
inline double arithmetic(int code, double left, double right) {
  switch (code) {
    case kPlus:
      return left + right;
    case kMinus:
      return left - right;
    default:
      return left * right;
  }
}

// Comparisons, without tolerance, and "&" and "|".
inline bool holds(int code, double left, double right) {
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
    case kEqual:
      return left == right;
    case kAnd:
      return left != 0.0 && right != 0.0;
    default:
      return left != 0.0 || right != 0.0;
  }
}
constexpr bool is_comparison_or_logical(int code) {
  return code == kLess || code == kGreater || code == kAnd || code == kOr ||
         (code >= kLessEqual && code <= kEqual);
}

inline double truth(bool condition) { return condition ? 1.0 : 0.0; }

// The sign and "^".
inline double negative(double value) { return -value; }
inline bool opposite(double value) { return value == 0.0; }

// These give false, and no result, where there is none: by a divisor of zero.
inline bool divide(double left, double right, double& result) {
  if (std::fabs(right) < kSmallestDivisor) return false;
  result = left / right;
  return true;
}
bool divide_whole(double left, double right, double& result);  // cut towards zero
bool remainder(double left, double right, double& result);     // MOD: of that division
bool raise_to_power(double left, double right, bool whole_exponent, double& result);

// MAX and MIN; of a value that is not a number and any other one, the former.
inline double larger(double left, double right) {
  return left > right || left != left ? left : right;
}
inline double smaller(double left, double right) {
  return left < right || left != left ? left : right;
}

// The subscript that a whole value stands for; 0 when it is not one of 1 .. extent.
inline int subscript(double value, int extent) {
  constexpr double kBeyond = 2147483648.0;
  const double shifted = value + 0.5;  // what rounding does to a value above 0
  if (!(shifted >= 1.0 && shifted < kBeyond)) return 0;
  const int whole_number = static_cast<int>(shifted);
  return whole_number <= extent ? whole_number : 0;
}

}  // namespace zorvik

#endif  // ZORVIK_EXEC_VALUES_SCALAR_OPERATIONS_H_
