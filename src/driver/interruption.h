// Signals that ask the run to end: SIGINT, SIGTERM, SIGHUP and SIGXCPU.
//
// They only set a flag, which is looked at between statements, records and copied blocks: whatever
// loops without end must look. The run then ends as after an error, so that everything written is
// in its files, and the process dies by the same signal.
#ifndef ZORVIK_DRIVER_INTERRUPTION_H_
#define ZORVIK_DRIVER_INTERRUPTION_H_

#include <csignal>

#include "driver/run_end.h"

namespace zorvik {

// Begins to listen, but not to a signal that the caller of the program had ignored. Called once.
void heed_signals();

extern volatile std::sig_atomic_t pending_signal;  // 0: none has come

inline bool is_interrupted() { return pending_signal != 0; }

inline void stop_if_interrupted() {
  if (is_interrupted()) end_run(RunEnd::kFailed);
}

// Lets the signal that has come do what it does to any process. Called by end_run.
[[noreturn]] void die_by_pending_signal();

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_INTERRUPTION_H_
