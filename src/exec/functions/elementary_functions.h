// Functions of one or two numbers, and the extremes of an array. Each routine takes the function's
// number and its arguments from the evaluation stack, which it replaces by the result. Every error
// ends the run.
#ifndef ZORVIK_EXEC_FUNCTIONS_ELEMENTARY_FUNCTIONS_H_
#define ZORVIK_EXEC_FUNCTIONS_ELEMENTARY_FUNCTIONS_H_

#include "stores/value_types.h"

namespace zorvik {

// MINA, MAXA of an array or a scalar. "%err- Text or pointer arg. in function ", "%err- Meaningless
// shape <i1:i2> of argument in function ".
void smallest_element(int number);
void largest_element(int number);

// ABS to RAND. "%err- Text or pointer arg. in function ", "%err- Array argument in function ";
// outside the domain of LOG, SQRT, ASIN or ACOS the run ends with "%fat- LOG(X); X <= 0" and the
// like.
void apply_elementary(int number);

// The same functions of a number, for callers that know their argument to be a numeric scalar.
struct ElementaryFunction {
  double (*value)(double x);
  bool (*outside)(double x);  // outside the function's domain; null: there is no outside
};
ElementaryFunction elementary_function(int number);
BaseType elementary_type(int number, BaseType argument);  // of the value
inline bool outside_square_root(double x) { return x < 0.0; }

// The extremes of `count` numbers, at least one; of equal ones, the first.
double smallest_of(const double* values, int count);
double largest_of(const double* values, int count);

// MOD, MAX, MIN, RANDG. As apply_elementary; MOD: "%err- Not integer argument(s) in function ",
// "%fat- Integer divide by zero".
void remainder_of_two(int number);
void larger_of_two(int number);
void smaller_of_two(int number);
void normal_random_number(int number);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_ELEMENTARY_FUNCTIONS_H_
