// Calls are kept on a stack of their own, so that no routine calls itself. An entry belongs to the
// called procedure: where its caller goes on, and the GOTOs that it has counted itself, none at
// first. The entry below all others is MAIN's.
#include "exec/values/call_stack.h"

#include "exec/values/run_state.h"
#include "lang/code/code_store.h"
#include "lang/code/procedure_table.h"
#include "stores/results_store.h"

namespace zorvik {

CallStack call_stack;

void push_call(int return_position) {
  call_stack.call[++call_stack.depth] = {return_position, run_state.procedure, 0};
}

int pop_call() {
  const CallStack::Call& call = call_stack.call[call_stack.depth--];
  enter_context(call.caller);
  return call.return_position;
}

// BEGIN is compiled as an OUT; no other OUT can name the block.
bool is_call_of_block(int procedure) {
  return run_state.procedure == kMainProcedure && procedure_table.has_block &&
         procedure == kBlockProcedure;
}

bool is_turned_on(int output) {
  // TURN_ON is the first of the keys. Any value but 0 turns the OUTPUT on.
  const int descriptor = header_word(output, kFirstKeyDescriptor);
  return results_store.value[results_store.descriptor[descriptor].start] != 0.0;
}

int first_statement(int procedure) {
  return procedure_table.procedure[procedure].start + kHeaderWords;
}

}  // namespace zorvik
