// The executor says which procedure runs; its name is worked out when a message needs it, since
// calls are far more frequent than messages.
#include "exec/values/run_state.h"

#include "driver/messages.h"
#include "driver/text.h"
#include "exec/values/evaluation_stack.h"

namespace zorvik {

RunState run_state;

// Number 2 is the block only in a program that has one, else the first OUTPUT.
void enter_context(int procedure) {
  run_state.procedure = procedure;
  if (procedure == kMainProcedure) {
    run_state.context = Context::kMain;
  } else if (procedure == kBlockProcedure && procedure_table.has_block) {
    run_state.context = Context::kBlock;
  } else {
    run_state.context = Context::kOutput;
  }
}

std::string_view running_name() {
  switch (run_state.context) {
    case Context::kMain:
      return kMainName;
    case Context::kBlock:
      return kBlockRunName;
    default:
      return procedure_name(run_state.procedure);
  }
}

void stop_in_procedure(std::string_view text) {
  stop_at_statement(message("%fat- Procedure ", running_name(), text));
}

void stop_on_error(std::string_view text, std::string_view more) {
  issue_message(listing_unit, text);
  issue_message(listing_unit, more);  // writes nothing when it is empty
  stop_in_procedure();
}

void stop_at_statement(std::string_view text) { stop_with_listing(text, evaluation.line); }

}  // namespace zorvik
