// The first point beyond the wanted abscissa is looked for from the beginning, as the table may
// have equal abscissae: the first interval that reaches it counts.
//   X = 1, 2, 3    Y = 10, 20, 40    LINS at 2.5 -> 20 + 20/1*0.5 = 30
#include "exec/functions/interpolation.h"

#include <algorithm>
#include <cmath>

#include "driver/number_format.h"
#include "exec/functions/function_arguments.h"
#include "exec/values/run_state.h"

namespace zorvik {

void evenly_spaced_array(int number) {
  constexpr int kArguments = 3;
  require_numeric_scalars(number, kArguments);
  require_integers(number, 3, 3);
  const double first = argument_value(1, kArguments), last = argument_value(2, kArguments);
  const double wanted = std::fabs(round_half_away(argument_value(3, kArguments)));
  // The array may take the room of the arguments, which are read.
  pop_entries(kArguments);
  // Compared as a real: the number may be larger than any int, or none.
  if (!(wanted <= kValueCapacity - evaluation.values_used)) {
    stop_at_statement("%fat- Function LINA. 3rd argument is too large");
  }
  const int count = std::max(static_cast<int>(wanted), 2);
  double* const values = push_array(kReal, count);
  for (int k = 0; k < count; ++k) values[k] = first + k * (last - first) / (count - 1);
}

double interpolate_linearly(const double* y, const double* x, int n, double at) {
  // Whether X is monotonic between its ends is not looked at.
  const bool ascending = x[0] <= x[n - 1];
  const int lowest = ascending ? 0 : n - 1, highest = n - 1 - lowest;
  if (at <= x[lowest]) return y[lowest];
  if (at >= x[highest]) return y[highest];
  int i = 1;
  while (i < n - 1 && !(ascending ? x[i] > at : x[i] < at)) ++i;
  return y[i - 1] + (y[i] - y[i - 1]) / (x[i] - x[i - 1]) * (at - x[i - 1]);
}

void interpolate_linearly(int number) {
  constexpr int kArguments = 4;
  require_numeric(number, 1, kArguments);
  require_scalars(number, 3, 4);
  require_integers(number, 3, 3);
  const StackEntry y = argument(1, kArguments), x = argument(2, kArguments);
  if (y.shape != kArray || x.shape != kArray) {
    stop_on_error("%err- Function LINS. 1st (and/or 2nd) argument not array");
  }
  const int n = rounded_argument(3, kArguments);
  if (n < 2) stop_on_error("%err- Function LINS. 3rd argument < 2");
  if (y.length < n || x.length < n) {
    stop_on_error("%err- Function LINS. Length of 1st (and/or 2nd) argument < 3rd argument");
  }
  const double at = argument_value(4, kArguments);
  replace_by_scalar(kArguments, kReal, interpolate_linearly(values_of(y), values_of(x), n, at));
}

}  // namespace zorvik
