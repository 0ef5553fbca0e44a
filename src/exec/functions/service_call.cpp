// The command must not need this layer, so it gets the two arguments as plain values.
#include "exec/functions/service_call.h"

#include "exec/values/evaluation_stack.h"
#include "exec/values/run_state.h"
#include "service/service_command.h"

namespace zorvik {

void call_service_command(int) {
  const StackEntry& command = evaluation.entry[evaluation.depth - 1];
  const StackEntry& number = top_entry();
  const bool has_numbers = is_numeric(number.base_type);
  run_service_command(
      {.procedure_name = running_name(),
       .command_type = command.base_type,
       .command = command.base_type == kCharacter ? text_of(command) : std::string_view(),
       .number_type = number.base_type,
       .number_shape = number.shape,
       .numbers = {values_of(number), has_numbers ? static_cast<std::size_t>(number.length) : 0}});
}

}  // namespace zorvik
