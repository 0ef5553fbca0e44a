// One run of ZORVIK in a process forked from this one, in a directory of its own, with trouble.
#ifndef ZORVIK_TESTS_FAULTS_TROUBLED_RUN_H_
#define ZORVIK_TESTS_FAULTS_TROUBLED_RUN_H_

#include <array>

#include "faults/failing_system.h"
#include "support/run_directory.h"

namespace zorvik::faults {

using support::Files;

struct Outcome : support::Outcome {
  std::array<int, kCallKinds> met;  // calls that met the trouble
};

class Machine {
 public:
  Machine();

  // Runs ZORVIK in a directory that holds just these files.
  Outcome run(const Files& files, const Trouble& trouble = {});

 private:
  support::RunDirectory directory_;
  std::array<int, kCallKinds>* met_;  // shared with the runs
};

}  // namespace zorvik::faults

#endif  // ZORVIK_TESTS_FAULTS_TROUBLED_RUN_H_
