// Entries and their values are laid behind one another and dropped from the end, so a fill mark for
// each area is all that is kept. Whatever pushes checks the room first:
//   2, 3:5, A  ->  values 2 | 3 5 | A(1) A(2) ..., three entries
#include "exec/values/evaluation_stack.h"

#include <algorithm>

#include "driver/messages.h"
#include "driver/number_format.h"

namespace zorvik {

EvaluationStack evaluation;

namespace {

[[noreturn]] void stop_on_long_expression() {
  stop_with_listing("%fat- Expression is too long", evaluation.line);
}

StackEntry& push_entry(BaseType base_type, Shape shape, int length) {
  if (evaluation.depth >= kStackCapacity || length > kValueCapacity - evaluation.values_used) {
    stop_on_long_expression();
  }
  StackEntry& entry = evaluation.entry[++evaluation.depth];
  entry = {base_type, shape, evaluation.values_used + 1, length};
  evaluation.values_used += length;
  return entry;
}

}  // namespace

void reset_evaluation() {
  evaluation.depth = 0;
  evaluation.values_used = 0;
  evaluation.text_used = 0;
}

std::int64_t element_count(const StackEntry& entry) {
  if (entry.shape != kRange) return entry.length;
  constexpr double kFarApart = 9007199254740992.0;  // 2^53, larger than any store
  const double* const bounds = values_of(entry);
  return static_cast<std::int64_t>(std::min(bounds[1] - bounds[0], kFarApart)) + 1;
}

double element_of(const StackEntry& entry, std::int64_t k) {
  const double* const values = values_of(entry);
  return entry.shape == kRange ? values[0] + static_cast<double>(k - 1) : values[k - 1];
}

void push_scalar(BaseType base_type, double value) {
  *values_of(push_entry(base_type, kScalar, 1)) = value;
}

void push_range(double first, double last) {
  double* const bounds = values_of(push_entry(kInteger, kRange, 2));
  bounds[0] = first;
  bounds[1] = last;
}

double* push_array(BaseType base_type, int length) {
  return values_of(push_entry(base_type, kArray, length));
}

char* push_text(int length) {
  if (evaluation.depth >= kStackCapacity || length > kTextAreaCapacity - evaluation.text_used) {
    stop_on_long_expression();
  }
  evaluation.entry[++evaluation.depth] = {kCharacter, kScalar, evaluation.text_used + 1, length};
  evaluation.text_used += length;
  return evaluation.text + evaluation.text_used - length + 1;
}

void pop_entries(int count) {
  for (; count > 0; --count, --evaluation.depth) {
    const StackEntry& entry = top_entry();
    int& used = entry.base_type == kCharacter ? evaluation.text_used : evaluation.values_used;
    // Texts and numbers have a fill mark each: the one goes back to where the entry began.
    used = entry.start - 1;
  }
}

void replace_by_scalar(int count, BaseType base_type, double value) {
  pop_entries(count);
  push_scalar(base_type, value);
}

}  // namespace zorvik
