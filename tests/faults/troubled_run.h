// One run of ZORVIK in a process forked from this one, in a directory of its own, with trouble.
#ifndef ZORVIK_TESTS_FAULTS_TROUBLED_RUN_H_
#define ZORVIK_TESTS_FAULTS_TROUBLED_RUN_H_

#include "faults/failing_system.h"
#include "support/run_directory.h"

namespace zorvik::faults {

using support::Files;
using support::Outcome;

// Runs ZORVIK in a directory that holds just these files; calls_met() is then that of the run.
Outcome run(const Files& files, const Trouble& trouble = {});

}  // namespace zorvik::faults

#endif  // ZORVIK_TESTS_FAULTS_TROUBLED_RUN_H_
