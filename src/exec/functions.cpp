#include "exec/functions.h"

#include "driver/messages.h"
#include "exec/service_call.h"

namespace zorvik {

int iu9fn2(int function_number, int) {
  constexpr int kServiceCommand = 29;
  if (function_number == kServiceCommand) call_service_command();
  stop_on_inconsistency("%dbg- iu9fn2: invalid function number");
}

}  // namespace zorvik
