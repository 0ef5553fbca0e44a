// Runs of ZORVIK while the operating system has a bad day. Linked into the test program, routines
// take the place of the system's calls: in a run the planned ones fail, do a part of their work, or
// are surrounded by a signal. A sync that succeeds only pretends: no test needs it, and it takes
// most of a run's time.
#ifndef ZORVIK_TESTS_FAULTS_FAILING_SYSTEM_H_
#define ZORVIK_TESTS_FAULTS_FAILING_SYSTEM_H_

#include "support/run_directory.h"

namespace zorvik::faults {

using support::Files;
using support::Outcome;

enum Call { kOpen, kRead, kWrite, kCut, kSync, kName, kClose, kAsk, kCopy, kMode, kCallKinds };
constexpr const char* kCallNames[kCallKinds] = {"open", "read",  "write", "cut",  "sync",
                                                "name", "close", "ask",   "copy", "mode"};

enum class Effect {
  kFails,         // with errno `value`
  kFallsShort,    // transfers half of the bytes
  kSignalBefore,  // the signal `value`, then the call
  kSignalAfter,
};

constexpr unsigned kChanges = 1U << kWrite | 1U << kCut | 1U << kSync | 1U << kName | 1U << kCopy;

struct Trouble {
  unsigned calls = 0;        // bits 1 << Call that count
  int first = 1, times = 1;  // of these the ones with the numbers first .. first + times - 1
  Effect effect = Effect::kFails;
  int value = 0;
};

// Runs ZORVIK in a process forked from this one, in a directory that holds just these files.
Outcome run(const Files& files, const Trouble& trouble = {});

// How many calls of the run met the trouble.
int& calls_met();

}  // namespace zorvik::faults

#endif  // ZORVIK_TESTS_FAULTS_FAILING_SYSTEM_H_
