// Operations on scalars, written once for every form in which statements are executed.
#ifndef ZORVIK_EXEC_VALUES_SCALAR_OPERATIONS_H_
#define ZORVIK_EXEC_VALUES_SCALAR_OPERATIONS_H_

namespace zorvik {

// A divisor of less magnitude is a zero.
constexpr double kSmallestDivisor = 2.3e-308;

// Arithmetic on two scalars, shared with whatever evaluates statements in another form. Integer
// results are rounded by the caller; a zero divisor ends the run.
double divide(double left, double right, bool integer);
double raise_to_power(double left, double right, bool integer_exponent, bool integer_result);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_VALUES_SCALAR_OPERATIONS_H_
