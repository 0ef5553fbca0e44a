// DO loops: entering and repeating.
#ifndef ZORVIK_EXEC_DO_LOOP_H_
#define ZORVIK_EXEC_DO_LOOP_H_

namespace zorvik {

// Executes the DO whose head stands at `position`; returns the position of its body, or that after
// the matching ENDDO when the body is not entered.
int execute_do(int position);

// Executes the ENDDO whose head stands at `position`; returns the position of the body or that
// after it.
int execute_enddo(int position);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_DO_LOOP_H_
