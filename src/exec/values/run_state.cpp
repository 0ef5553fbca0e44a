#include "exec/values/run_state.h"

#include "driver/messages.h"
#include "driver/text.h"
#include "exec/values/evaluation_stack.h"

namespace zorvik {

RunState run_state;

void enter_context(int procedure) {
  run_state.procedure = procedure;
  if (procedure == kMainProcedure) {
    run_state.context = Context::kMain;
    run_state.name = kMainName;
  } else if (procedure == kBlockProcedure && procedure_table.has_block) {
    run_state.context = Context::kBlock;
    run_state.name = kBlockRunName;
  } else {
    run_state.context = Context::kOutput;
    run_state.name = procedure_name(procedure);
  }
}

void stop_in_procedure(std::string_view text) {
  stop_at_statement(message("%fat- Procedure ", run_state.name, text));
}

void stop_on_error(std::string_view text, std::string_view more) {
  issue_message(listing_unit, text);
  issue_message(listing_unit, more);
  stop_in_procedure();
}

void stop_at_statement(std::string_view text) { stop_with_listing(text, evaluation.line); }

}  // namespace zorvik
