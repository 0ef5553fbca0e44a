// As in the loop over all instructions, nothing is changed before all operands have been looked at.
#include "exec/decoded/rare_instructions.h"

#include <algorithm>

#include "exec/functions/interpolation.h"
#include "exec/functions/property_functions.h"
#include "exec/values/scalar_operations.h"

namespace zorvik {
namespace {

bool apply(Op op, double a, double b, double& result) {
  switch (op) {
    case Op::kDivideWhole:
      return divide_whole(a, b, result);
    case Op::kRemainder:
      return remainder(a, b, result);
    case Op::kPower:
      return raise_to_power(a, b, false, result);
    case Op::kRealPowerOfWhole:
      return raise_to_power(a, b, true, result);
    case Op::kPowerWhole:
      if (!raise_to_power(a, b, true, result)) return false;
      result = whole(result);
      return true;
    case Op::kLarger:
      result = larger(a, b);
      return true;
    case Op::kSmaller:
      result = smaller(a, b);
      return true;
    case Op::kLargerWhole:
      result = whole(larger(a, b));
      return true;
    default:
      result = whole(smaller(a, b));
      return true;
  }
}

bool find_extreme(const Instruction& i, double (*extreme)(const double* values, int count)) {
  const int count = i.with.block.rows * i.with.block.columns;
  if (any_undefined(i.with.block.first, count)) return false;
  *i.to = extreme(i.with.block.first, count);
  return true;
}

bool interpolate(const Instruction& i) {
  const auto& [y, x, y_length, x_length] = i.with.table;
  const int n = subscript(*i.b, std::min(y_length, x_length));
  if (may_be_undefined(*i.a) || n < 2) return false;
  if (any_undefined(y, y_length) || any_undefined(x, x_length)) return false;
  *i.to = interpolate_linearly(y, x, n, *i.a);
  return true;
}

bool call_function(const Instruction& i) {
  const double x = *i.a;
  if (may_be_undefined(x) || (i.with.function.outside != nullptr && i.with.function.outside(x)))
    return false;
  *i.to = i.with.function.value(x);
  return true;
}

bool find_property(const Instruction& i) {
  const PropertyRequest& request = i.with.property;
  if (may_be_undefined(*i.a) || may_be_undefined(*i.b)) return false;
  if (may_be_undefined(*request.phase) || may_be_undefined(*request.property)) return false;
  return find_property(request, *i.a, *i.b, *i.to);
}

}  // namespace

bool run_rare(const Instruction& i) {
  switch (i.op) {
    case Op::kProperty:
      return find_property(i);
    case Op::kLargest:
      return find_extreme(i, largest_of);
    case Op::kSmallest:
      return find_extreme(i, smallest_of);
    case Op::kInterpolate:
      return interpolate(i);
    case Op::kFunction:
      return call_function(i);
    default:
      return !may_be_undefined(*i.a) && !may_be_undefined(*i.b) && apply(i.op, *i.a, *i.b, *i.to);
  }
}

}  // namespace zorvik
