// Machine code for statements that have run some tens of times.
#ifndef ZORVIK_NATIVE_NATIVE_CODE_H_
#define ZORVIK_NATIVE_NATIVE_CODE_H_

#include "exec/decoded/decoded_program.h"

namespace zorvik {

// Runs plain statements from the code position on, in machine code where there is some, else
// decoded. Returns the position of a statement that the general way must execute.
//
// ZORVIK_NATIVE in the environment tells how many kilobytes machine code may take: 8192 unless it
// is given. With 0, or where the system refuses such memory, all statements run decoded, and
// nothing else is different.
#ifdef ZORVIK_NATIVE
int run_plain(int position);
#else
inline int run_plain(int position) {
  Reached reached{position, true};
  while (reached.often) reached = run_decoded(reached.position);
  return reached.position;
}
#endif

}  // namespace zorvik

#endif  // ZORVIK_NATIVE_NATIVE_CODE_H_
