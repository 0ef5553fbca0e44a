// Progress of a long run, for the person who waits: one line on standard error.
//
// When standard error is a terminal and the run takes longer than a second, the line is rewritten
// in place once a second, and gone before anything else is written and at the end. SIGUSR1 writes
// the same line once, wherever standard error goes. Signals look at counters that the run keeps
// anyway, so watching costs the run nothing.
#ifndef ZORVIK_DRIVER_PROGRESS_H_
#define ZORVIK_DRIVER_PROGRESS_H_

#include <cstdint>
#include <string_view>

#include "driver/file.h"

namespace zorvik {

// What is going on, by the counters of whoever does it; they outlive the task.
struct Task {
  std::string_view unit;     // what is counted: "records", "bytes of vnxsav"
  const std::int64_t* done;  // so far
  std::int64_t total;        // 0: not known
  const double* tau;         // the problem time reached, s; null: none
};

// Begins to listen to the signals. Called once, before the first task.
void watch_progress();

// The task that is shown from now on.
void show_progress_of(const Task& task);

// The way through a file that is read from its beginning, or written up to `total` bytes.
void show_progress_through(File& file, std::string_view name);
void show_progress_of_copy(const File& output, std::int64_t total);

// Takes the line off the terminal, if it is there.
void clear_progress();

// Takes the line off and shows none any more.
void end_progress();

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_PROGRESS_H_
