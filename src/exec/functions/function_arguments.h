// Checks of arguments that several built-in functions make.
#ifndef ZORVIK_EXEC_FUNCTIONS_FUNCTION_ARGUMENTS_H_
#define ZORVIK_EXEC_FUNCTIONS_FUNCTION_ARGUMENTS_H_

#include <string_view>

#include "exec/functions/functions.h"
#include "exec/values/evaluation_stack.h"

namespace zorvik {

// Argument k, from 1, of a function with `count` arguments.
inline StackEntry& argument(int k, int count) {
  return evaluation.entry[evaluation.depth - count + k];
}

// The value of a numeric scalar argument.
inline double argument_value(int k, int count) { return *values_of(argument(k, count)); }

// These end the run unless the arguments are as asked for.

// "%err- Text or pointer arg. in function " unless all arguments first .. last are numeric.
void require_numeric(int number, int first, int last);

// "%err- Array argument in function " unless all of them are scalars.
void require_scalars(int number, int first, int last);

// "%err- Not integer argument(s) in function " unless all of them are integer.
void require_integers(int number, int first, int last);

// Both for all arguments: the check of elementary functions.
void require_numeric_scalars(int number, int count);

// The whole number of a value or of a scalar argument, rounded half away from zero and held within
// the range of int.
int rounded_to_int(double value);
inline int rounded_argument(int k, int count) { return rounded_to_int(argument_value(k, count)); }

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_FUNCTION_ARGUMENTS_H_
