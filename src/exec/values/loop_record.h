// Counts of the DO loops that are under way.
#ifndef ZORVIK_EXEC_VALUES_LOOP_RECORD_H_
#define ZORVIK_EXEC_VALUES_LOOP_RECORD_H_

#include <cstdint>

namespace zorvik {

// A loop that its DO has started.
struct LoopRecord {
  double* variable;  // null before
  std::int64_t current, limit, step, initial;
};

// The record of the loop whose body begins at that code position.
LoopRecord& loop_record_before(int body);

// True while the count has not passed the limit.
bool loop_continues(const LoopRecord& record);

// Counts the loop on and stores its variable; true when the body is to run again. At the loop's end
// the variable holds the initial value.
bool advance_loop(LoopRecord& record);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_VALUES_LOOP_RECORD_H_
