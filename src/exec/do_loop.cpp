// A DO evaluates its variable, initial value, limit and step in the order of the text and enters
// its body or goes on behind the matching ENDDO. An ENDDO counts on what the DO has noted.
#include "exec/do_loop.h"

#include <algorithm>
#include <cstdint>

#include "driver/messages.h"
#include "driver/number_format.h"
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
  stop_at_statement(message("See procedure <", run_state.name, ">"));
}

std::int64_t whole(double value) {
  constexpr double kLargest = 2305843009213693952.0;  // 2^61: sums stay far from overflow
  const double rounded = round_half_away(value);
  if (!(rounded > -kLargest)) return static_cast<std::int64_t>(-kLargest);  // not a number, too
  return static_cast<std::int64_t>(std::min(rounded, kLargest));
}

double* create_loop_variable(const Reference& reference) {
  const int number = reference.variable.number;
  if (reference.subscripts > 0) {
    stop_on_loop(message("%fat- Loop variable ", notkey_name(number),
                         " is undefined array or array element"));
  }
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
  if (variable.base_type != kInteger) {
    stop_at_statement(
        message("%fat- Loop variable is not integer. Procedure <", run_state.name, ">"));
  }
  const Region& region = reference.region;
  if (!region.is_element) stop_on_loop("%fat- Loop variable is (sub)array. Scalar expected.");
  return variable.values() + (region.first_column - 1) * variable.block.d1 + region.first_row - 1;
}

// Evaluates an initial value, limit or step; `position` moves past it.
std::int64_t loop_value(int& position, std::string_view what) {
  position = u92xt3(position);
  const StackEntry& value = evaluation.entry[1];
  if (value.base_type != kInteger) stop_on_loop(message("%fat- ", what, " is not integer."));
  if (value.shape != kScalar) stop_on_loop(message("%fat- ", what, " is not scalar."));
  return whole(*values_of(value));
}

}  // namespace

int execute_do(int position) {
  constexpr std::string_view kBound = "Bound value of loop variable or step";
  const int after_loop = code_store.word[position + 1] + kPairWords;
  position += 2;
  LoopRecord record{};
  record.variable = loop_variable(position);
  record.current = record.initial = loop_value(position, "Initial value of loop variable");
  *record.variable = static_cast<double>(record.initial);
  record.limit = loop_value(++position, kBound);
  record.step = 1;
  if (code_store.word[position] == kListSeparator) record.step = loop_value(++position, kBound);
  if (record.step == 0) {
    stop_at_statement(message("%fat- Loop step = 0 Procedure <", run_state.name, ">"));
  }
  const int body = position + kLoopRecordWords;
  loop_record_before(body) = record;
  return loop_continues(record) ? body : after_loop;
}

int execute_enddo(int position) {
  const int body = code_store.word[position + 1];
  LoopRecord& record = loop_record_before(body);
  if (record.variable == nullptr || whole(*record.variable) != record.current) {
    stop_at_statement(
        message("%fat- Loop variable changed inside DO body.Proc.<", run_state.name, ">"));
  }
  if (advance_loop(record)) return body;
  return position + kPairWords;
}

}  // namespace zorvik
