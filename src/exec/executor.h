// The executor: runs the compiled program.
#ifndef ZORVIK_EXEC_EXECUTOR_H_
#define ZORVIK_EXEC_EXECUTOR_H_

namespace zorvik {

// Runs MAIN; returns when its END is reached. MAIN's BEGIN runs the block once per record of the
// results file, and OUT statements run OUTPUTs. STOP ends the run, as does every error.
void S9XMA3();

}  // namespace zorvik

#endif  // ZORVIK_EXEC_EXECUTOR_H_
