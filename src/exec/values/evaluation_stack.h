// The work areas of the evaluator: stack entries over one value buffer and one text area.
//
// The values of an entry stand at consecutive positions of the value buffer, entries in stack
// order, so entry 1 begins at position 1. A range takes two positions, its bounds. The texts of all
// character entries stand in the text area in the same way. Nothing is allocated: a full area ends
// the run with "%fat- Expression is too long".
#ifndef ZORVIK_EXEC_VALUES_EVALUATION_STACK_H_
#define ZORVIK_EXEC_VALUES_EVALUATION_STACK_H_

#include <cstdint>
#include <string_view>

#include "stores/value_types.h"

namespace zorvik {

constexpr int kValueCapacity = 20000;
constexpr int kStackCapacity = 200;
constexpr int kTextAreaCapacity = 200;

struct StackEntry {
  BaseType base_type;
  Shape shape;
  int start;   // first position in the value buffer (from 1), or first character of the text area
  int length;  // positions taken: 1 for a scalar, 2 for a range, the elements of an array, the
               // characters
};

struct EvaluationStack {
  double value[kValueCapacity + 1];      // from 1
  char text[kTextAreaCapacity + 1];      // from 1
  StackEntry entry[kStackCapacity + 1];  // from 1
  int depth;
  int values_used, text_used;
  int line;  // of the statement being executed, for messages
};
extern EvaluationStack evaluation;

// Empties the stack for the next expression.
void reset_evaluation();

inline StackEntry& top_entry() { return evaluation.entry[evaluation.depth]; }

// Elements that an entry stands for: a range a:b has b - a + 1. Bounds of a range may be far apart,
// so the count may be larger than any store.
std::int64_t element_count(const StackEntry& entry);

// The k-th element of a numeric entry, k from 1.
double element_of(const StackEntry& entry, std::int64_t k);

inline double* values_of(const StackEntry& entry) { return evaluation.value + entry.start; }
inline std::string_view text_of(const StackEntry& entry) {
  return {evaluation.text + entry.start, static_cast<std::size_t>(entry.length)};
}

// Push an entry; the values of an array, and a text, are for the caller to fill in.
void push_scalar(BaseType base_type, double value);
void push_range(double first, double last);  // integer
double* push_array(BaseType base_type, int length);
char* push_text(int length);

// Drops the `count` topmost entries with their values.
void pop_entries(int count);

// Replaces the `count` topmost entries by one scalar.
void replace_by_scalar(int count, BaseType base_type, double value);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_VALUES_EVALUATION_STACK_H_
