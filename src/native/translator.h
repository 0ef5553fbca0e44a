// Translates decoded statements to x86-64 code that does the same to the last bit.
//
// The code of a statement leaves, and gives the statement's code position, where run_decoded would
// leave, and where it is not sure: at a whole number of magnitude 2^63 or more, for instance. It
// has not changed anything then. Code also leaves in front of a statement that has none. Whoever
// runs it goes on at that position in the decoded way.
#ifndef ZORVIK_NATIVE_TRANSLATOR_H_
#define ZORVIK_NATIVE_TRANSLATOR_H_

#include "exec/decoded/decoded_program.h"
#include "native/x86_64_assembler.h"

namespace zorvik::native {

struct NativeCode {
  Byte* next = nullptr;  // free room
  Byte* end = nullptr;
  int (*enter)(const Byte* code) = nullptr;  // runs code; the position at which to go on
  const Byte* leave = nullptr;               // leaves the code with eax, a position
  // By code position of a statement; null where there is none.
  const Byte* code[kCodeCapacity + 1] = {};
  const Byte* way_out[kCodeCapacity + 1] = {};  // gives the statement's position
};
extern NativeCode native_code;

// Begins with empty memory, which can be written.
void begin_native_code(Byte* begin, Byte* end);

// Whether the statement at the position is decoded, or may be, and finds room.
bool is_translatable(int position);

// Translates the statement at the position and the ones that it leads to: those that have been
// reached before, or all of them when patience is 0. What finds no room is left out.
void translate(int position);

}  // namespace zorvik::native

#endif  // ZORVIK_NATIVE_TRANSLATOR_H_
