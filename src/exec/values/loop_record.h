// Counts of the DO loops that are under way, and the rules of entering and repeating them.
#ifndef ZORVIK_EXEC_VALUES_LOOP_RECORD_H_
#define ZORVIK_EXEC_VALUES_LOOP_RECORD_H_

#include <cstdint>

#include "exec/values/scalar_operations.h"

namespace zorvik {

// A loop that its DO has started.
struct LoopRecord {
  double* variable;  // null before
  double count;      // the current count as a number
  std::int64_t current, step, initial;
  std::int64_t rounds;  // still to come after this one; below 0 when the loop is over
};

// The record of the loop whose body begins at that code position.
LoopRecord& loop_record_before(int body);

// A count as a 64-bit number; sums of such numbers stay far from overflow.
inline std::int64_t loop_count(double value) {
  constexpr double kLargest = 2305843009213693952.0;  // 2^61
  const double rounded = whole(value);
  if (!(rounded > -kLargest)) return static_cast<std::int64_t>(-kLargest);  // not a number, too
  return static_cast<std::int64_t>(rounded < kLargest ? rounded : kLargest);
}

// How often the step leads from `first` on without passing the limit; below 0: the limit is passed.
inline std::int64_t rounds_between(std::int64_t first, std::int64_t limit, std::int64_t step) {
  if (step >= 1 ? first > limit : first < limit) return -1;
  return (limit - first) / step;
}

// Starts a loop, whose variable gets the initial value; false, and nothing happens, for a step of
// 0.
inline bool start_loop(LoopRecord& record, double* variable, double initial, double limit,
                       double step) {
  const std::int64_t first = loop_count(initial), counted_step = loop_count(step);
  if (counted_step == 0) return false;
  record = {variable, static_cast<double>(first),
            first,    counted_step,
            first,    rounds_between(first, loop_count(limit), counted_step)};
  *variable = record.count;
  return true;
}

// True while the count has not passed the limit.
inline bool loop_continues(const LoopRecord& record) { return record.rounds >= 0; }

// Whether the loop was started and its variable still holds the count.
inline bool may_repeat(const LoopRecord& record) {
  if (record.variable == nullptr) return false;
  const double value = *record.variable;
  return value == record.count || loop_count(value) == record.current;
}

// Counts the loop on and stores its variable; true when the body is to run again. At the loop's end
// the variable holds the initial value.
inline bool advance_loop(LoopRecord& record) {
  record.current += record.step;
  record.count = static_cast<double>(record.current);
  --record.rounds;
  const bool again = loop_continues(record);
  *record.variable = again ? record.count : static_cast<double>(record.initial);
  return again;
}

}  // namespace zorvik

#endif  // ZORVIK_EXEC_VALUES_LOOP_RECORD_H_
