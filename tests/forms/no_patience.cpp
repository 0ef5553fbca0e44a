// Stands in the place of the number of passes: every statement is translated when it is reached.
#include "exec/decoded/decoded_program.h"

namespace zorvik {

const int kPatience = 0;

}  // namespace zorvik
