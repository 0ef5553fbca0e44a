// One loop serves MAIN, the block and every OUTPUT. It runs plain statements as far as they go, one
// statement in the general way, and again.
//   three records: MAIN up to BEGIN, the block three times, MAIN from behind the block on
#include "exec/executor.h"

#include "driver/interruption.h"
#include "driver/messages.h"
#include "driver/run_end.h"
#include "driver/text.h"
#include "exec/assignment.h"
#include "exec/do_loop.h"
#include "exec/evaluator.h"
#include "exec/output_statement.h"
#include "exec/values/call_stack.h"
#include "exec/values/evaluation_stack.h"
#include "exec/values/run_state.h"
#include "lang/code/code_store.h"
#include "native/native_code.h"
#include "results/results_reader.h"
#include "stores/results_store.h"

namespace zorvik {
namespace {

class Executor {
 public:
  void run_main() {
    enter_context(kMainProcedure);
    run_state.position = first_statement(kMainProcedure);
    while (!finished_) step();
  }

 private:
  static int word_at(int position) { return code_store.word[position]; }

  void step() {
    stop_if_interrupted();
    int& position = run_state.position;
    position = run_plain(position);
    const std::int32_t head = word_at(position);
    const auto code = static_cast<StatementCode>(head_code(head));
    evaluation.line = head_line(head);
    switch (code) {
      case kCodeAssignment:
        position = execute_assignment(position + 1);
        break;
      case kCodeIf:
        execute_if();
        break;
      case kCodeElse:
        // Met only behind a THEN part that was run: the ELSE part is passed by.
        position = word_at(position + 1) + kPairWords;
        break;
      case kCodeEndif:
        position += kPairWords;
        break;
      case kCodeGoto:
        if (!count_jump()) stop_on_jumps();
        position = word_at(position + 1);
        break;
      case kCodeOut:
        call(word_at(position + 1));
        break;
      case kCodePrint:
      case kCodeWrite:
      case kCodeWrite1:
        position = execute_output_statement(code, position + 1);
        break;
      case kCodeDo:
        position = execute_do(position);
        break;
      case kCodeEnddo:
        position = execute_enddo(position);
        break;
      case kCodeStop:
        execute_stop();
      case kCodeEnd:
      case kCodeReturn:
        leave(code);
        break;
      default:
        stop_on_code(code);
    }
  }

  void execute_if() {
    const int pair = u92xt3(run_state.position + 1);
    const StackEntry& condition = evaluation.entry[1];
    // A text is refused like an array; what is not a number counts as true.
    if (condition.shape != kScalar || condition.base_type == kCharacter) stop_on_array();
    run_state.position =
        *values_of(condition) == 0.0 ? word_at(pair + 1) + kPairWords : pair + kPairWords;
  }

  [[noreturn]] static void stop_on_array() {
    // Outside MAIN the text begins with two blanks, and an OUTPUT's name follows the word.
    const bool in_main = run_state.context == Context::kMain;
    const bool in_output = run_state.context == Context::kOutput;
    stop_at_statement(message(in_main ? "%fat- " : "%fat-  ", "Array is invalid after IF. ",
                              in_output ? "OUTPUT " : "", running_name()));
  }

  [[noreturn]] static void stop_on_jumps() {
    const bool in_output = run_state.context == Context::kOutput;
    issue_message(listing_unit, message("%fat- ", in_output ? "OUTPUT " : "", running_name(),
                                        ". Number of processed GOTOs > ", kMaxJumps));
    stop_at_statement("%fat- ZORVIK treats it as infinite loop. See GOTO at");
  }

  [[noreturn]] static void execute_stop() {
    const bool in_output = run_state.context == Context::kOutput;
    issue_message(-listing_unit,
                  message("STOP executed in ", in_output ? "OUTPUT " : "", running_name()),
                  kNoIoStatus, evaluation.line);
    end_run(RunEnd::kNormal);
  }

  [[noreturn]] static void stop_on_code(int code) {
    const std::string_view routine = run_state.context == Context::kMain    ? "S9XMA3"
                                     : run_state.context == Context::kBlock ? "U9XBE3"
                                                                            : "U9XOU3";
    stop_on_console(message("%dbg- ", routine, ": Invalid code = ", code));
  }

  void call(int procedure) {
    // Also for an OUTPUT that is turned off: whether it runs is asked after the call.
    if (call_stack.depth == kMaxCalls) {
      stop_run(-listing_unit,
               message("%fat- Call stack is full. See OUT ", procedure_name(procedure)),
               Stop::kWithNotice, evaluation.line);
    }
    const int return_position = run_state.position + kPairWords;
    if (is_call_of_block(procedure)) {
      push_call(return_position);
      enter_context(procedure);
      run_next_record();
    } else if (is_turned_on(procedure)) {
      push_call(return_position);
      enter_context(procedure);
      run_state.position = first_statement(procedure);
    } else {
      run_state.position = return_position;
    }
  }

  // The block begins again with the next record, or ends with the last one.
  void run_next_record() {
    // Pass 2 has loaded the first record. A GOTO back to BEGIN finds the file closed and no more
    // records.
    if (first_record_) {
      first_record_ = false;
    } else if (read_results_record() == kNoMoreRecords) {
      return leave_block();
    }
    // GOTOs are counted for each record anew.
    jump_count() = 0;
    run_state.position = first_statement(kBlockProcedure);
  }

  void leave_block() {
    run_state.position = pop_call();
    if (const int status = close_results_file(); status != 0) {
      stop_with_listing("%fat- Close error. File <vnxres>", evaluation.line, status);
    }
  }

  // END and RETURN differ in the block alone: the one goes on with the next record, the other
  // leaves it.
  void leave(StatementCode code) {
    switch (run_state.context) {
      case Context::kMain:
        finished_ = true;
        break;
      case Context::kBlock:
        code == kCodeEnd ? run_next_record() : leave_block();
        break;
      default:
        run_state.position = pop_call();
    }
  }

  bool first_record_ = true;
  bool finished_ = false;
};

}  // namespace

void S9XMA3() { Executor().run_main(); }

}  // namespace zorvik
