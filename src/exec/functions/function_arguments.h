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

// Writes an "%err-" message to the listing; returns kFunctionRefused.
int refuse(std::string_view text);

// Ends the run with a "%fat-" message and the statement's line.
[[noreturn]] void stop_in_function(std::string_view text);

// "%err- Text or pointer arg. in function " unless all arguments first .. last are numeric.
int require_numeric(int number, int first, int last);

// "%err- Array argument in function " unless all of them are scalars.
int require_scalars(int number, int first, int last);

// "%err- Not integer argument(s) in function " unless all of them are integer.
int require_integers(int number, int first, int last);

// Both for all arguments: the check of elementary functions.
int require_numeric_scalars(int number, int count);

// A scalar's whole number, rounded half away from zero and held within the range of int.
int rounded_argument(int k, int count);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_FUNCTION_ARGUMENTS_H_
