// What the instructions that go on elsewhere do: kDo, kOut, kReturn and kJump.
#ifndef ZORVIK_EXEC_DECODED_GOING_ON_H_
#define ZORVIK_EXEC_DECODED_GOING_ON_H_

#include "driver/interruption.h"
#include "exec/decoded/decoded_program.h"
#include "exec/values/call_stack.h"
#include "exec/values/run_state.h"

namespace zorvik {

enum class GoingOn : int {
  kNotPlain,  // nothing has happened: the statement is left to the general evaluator
  kGoesOn,    // with the next instruction
  kBranches,  // to the instruction's target
};

inline GoingOn enter_loop(const Instruction& i) {
  const double* const step = i.with.loop.step;
  LoopRecord& record = loop_record_before(i.with.loop.body);
  if (may_be_undefined(*i.a) || may_be_undefined(*i.b) || may_be_undefined(*step) ||
      !start_loop(record, i.to, *i.a, *i.b, *step)) {
    return GoingOn::kNotPlain;
  }
  return loop_continues(record) ? GoingOn::kGoesOn : GoingOn::kBranches;
}

inline GoingOn call_output(const Instruction& i) {
  if (call_stack.depth == kMaxCalls || is_interrupted()) return GoingOn::kNotPlain;
  if (!is_turned_on(i.with.call.output)) return GoingOn::kGoesOn;
  push_call(i.statement + kPairWords);
  enter_context(i.with.call.output);
  return GoingOn::kBranches;
}

// The code position at which the caller goes on; 0 when it is not an OUTPUT that returns.
inline int return_from_output() { return run_state.context == Context::kOutput ? pop_call() : 0; }

inline GoingOn jump(const Instruction&) {
  return count_jump() ? GoingOn::kBranches : GoingOn::kNotPlain;
}

}  // namespace zorvik

#endif  // ZORVIK_EXEC_DECODED_GOING_ON_H_
