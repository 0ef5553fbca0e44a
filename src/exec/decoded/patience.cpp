// The tests replace this number. Translating a statement takes as long as running it decoded about
// thirty times.
#include "exec/decoded/decoded_program.h"

namespace zorvik {

const int kPatience = 50;

}  // namespace zorvik
