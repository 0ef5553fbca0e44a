#ifndef ZORVIK_EXEC_FUNCTIONS_H_
#define ZORVIK_EXEC_FUNCTIONS_H_

namespace zorvik {

int iu9fn2(int function_number, int argument_count);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_H_
