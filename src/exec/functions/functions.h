// The built-in functions: dispatch of a call to the routine that carries it out.
#ifndef ZORVIK_EXEC_FUNCTIONS_FUNCTIONS_H_
#define ZORVIK_EXEC_FUNCTIONS_FUNCTIONS_H_

namespace zorvik {

// The function dispatcher; messages show this name. Replaces the `argument_count` topmost entries
// of the evaluation stack, the first argument lowest, by the result of function 1 .. 32. Every
// error ends the run, a call that no function has with "%dbg- iu9fn2: invalid function number" or
// "%dbg- iu9fn2: unrecognized function (3 arg-s)" on the console.
void iu9fn2(int function_number, int argument_count);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_FUNCTIONS_H_
