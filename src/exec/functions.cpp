#include "exec/functions.h"

#include "driver/messages.h"

namespace zorvik {

int iu9fn2(int, int) { stop_on_inconsistency("%dbg- iu9fn2: invalid function number"); }

}  // namespace zorvik
