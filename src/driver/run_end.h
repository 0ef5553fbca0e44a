// The one place where the process ends.
#ifndef ZORVIK_DRIVER_RUN_END_H_
#define ZORVIK_DRIVER_RUN_END_H_

namespace zorvik {

enum class RunEnd {
  kNormal,  // MAIN's end, STOP, a service command that was carried out
  kFailed,  // a fatal message
};

// Flushes and closes every unit, whatever way the run ends (a data file that was being written
// when the run failed is left as its writer said), and leaves with exit status 0 after a
// normal end with error_count 0, else 1. A final write that fails gives "%fat- Write error. " and
// the unit's subject on the console (and in the listing for an OUTPUT's file), and exit status 1. A
// console that could not be written gives "%fat- Write error. Console" in the listing: the run went
// on without it.
// A run that was interrupted dies by the signal instead.
[[noreturn]] void end_run(RunEnd end);

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_RUN_END_H_
