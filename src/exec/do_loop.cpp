// A DO evaluates its variable, initial value, limit and step in the order of the text and enters
// its body or goes on behind the matching ENDDO. An ENDDO counts on what the DO has noted.
//   DO I = 5, 1, -2 -> 5, 3, 1, and I is 5 again    DO I = 3, 1 -> not entered, I is 3
#include "exec/do_loop.h"

#include "driver/messages.h"
#include "driver/text.h"
#include "exec/evaluator.h"
#include "exec/values/evaluation_stack.h"
#include "exec/values/loop_record.h"
#include "exec/values/run_state.h"
#include "lang/code/code_store.h"
#include "stores/notkeys.h"
#include "stores/value_types.h"

namespace zorvik {
namespace {

[[noreturn]] void stop_on_loop(std::string_view text) {
  issue_message(listing_unit, text);
  stop_at_statement(message("See procedure <", running_name(), ">"));
}

double* create_loop_variable(const Reference& reference) {
  const int number = reference.variable.number;
  if (reference.subscripts > 0) {
    stop_on_loop(message("%fat- Loop variable ", notkey_name(number),
                         " is undefined array or array element"));
  }
  // It exists from here on, but an initial value that uses it meets the marker.
  define_notkey(number, kInteger, 0, 1, 1, evaluation.line);
  double* const value = notkeys.value + notkeys.notkey[number].descriptor.start;
  *value = kUndefined;
  return value;
}

// Evaluates the loop variable; `position` moves past it.
double* loop_variable(int& position) {
  Reference reference;
  position = evaluate_target(position, reference);
  const Variable& variable = reference.variable;
  if (!variable.defined) return create_loop_variable(reference);
  // Its type is judged before its shape.
  if (variable.base_type != kInteger) {
    stop_at_statement(
        message("%fat- Loop variable is not integer. Procedure <", running_name(), ">"));
  }
  const Region& region = reference.region;
  if (!region.is_element) stop_on_loop("%fat- Loop variable is (sub)array. Scalar expected.");
  return variable.values() + (region.first_column - 1) * variable.block.d1 + region.first_row - 1;
}

// Evaluates an initial value, limit or step; `position` moves past it.
double loop_value(int& position, std::string_view what) {
  position = u92xt3(position);
  const StackEntry& value = evaluation.entry[1];
  if (value.base_type != kInteger) stop_on_loop(message("%fat- ", what, " is not integer."));
  if (value.shape != kScalar) stop_on_loop(message("%fat- ", what, " is not scalar."));
  return *values_of(value);
}

}  // namespace

int execute_do(int position) {
  constexpr std::string_view kBound = "Bound value of loop variable or step";
  const int after_loop = code_store.word[position + 1] + kPairWords;
  position += 2;
  double* const variable = loop_variable(position);
  const double initial = loop_value(position, "Initial value of loop variable");
  *variable = static_cast<double>(loop_count(initial));  // the bounds may use it
  const double limit = loop_value(++position, kBound);
  double step = 1.0;
  if (code_store.word[position] == kListSeparator) step = loop_value(++position, kBound);
  const int body = position + kLoopRecordWords;
  LoopRecord& record = loop_record_before(body);
  if (!start_loop(record, variable, initial, limit, step)) {
    stop_at_statement(message("%fat- Loop step = 0 Procedure <", running_name(), ">"));
  }
  return loop_continues(record) ? body : after_loop;
}

int execute_enddo(int position) {
  const int body = code_store.word[position + 1];
  LoopRecord& record = loop_record_before(body);
  // Also when no loop is under way, since a GOTO from another block has led into this one.
  if (!may_repeat(record)) {
    stop_at_statement(
        message("%fat- Loop variable changed inside DO body.Proc.<", running_name(), ">"));
  }
  if (advance_loop(record)) return body;
  return position + kPairWords;
}

}  // namespace zorvik
