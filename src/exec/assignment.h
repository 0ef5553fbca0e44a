// Assignment: the one statement that creates the user's variables.
#ifndef ZORVIK_EXEC_ASSIGNMENT_H_
#define ZORVIK_EXEC_ASSIGNMENT_H_

namespace zorvik {

// Executes target = e1, e2, ..., ek whose target expression stands at `position`; returns the
// position after the statement. Every error ends the run, and nothing of the failing part is
// stored.
int execute_assignment(int position);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_ASSIGNMENT_H_
