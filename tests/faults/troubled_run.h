// One run of ZORVIK in a process forked from this one, in a directory of its own, with trouble.
#ifndef ZORVIK_TESTS_FAULTS_TROUBLED_RUN_H_
#define ZORVIK_TESTS_FAULTS_TROUBLED_RUN_H_

#include <array>
#include <filesystem>
#include <map>
#include <string>

#include "faults/failing_system.h"

namespace zorvik::faults {

using Files = std::map<std::string, std::string>;

constexpr int kHangs = -1000;  // the run was ended as it took far too long

struct Outcome {
  int status;  // the exit status, minus the number of the signal that ended the run, or kHangs
  std::string console, errors;      // standard output and standard error
  Files files;                      // what the directory holds afterwards
  long memory;                      // most kilobytes in use at a time
  std::array<int, kCallKinds> met;  // calls that met the trouble

  bool any_met() const;
};

class Machine {
 public:
  Machine();
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  // Runs ZORVIK in a directory that holds just these files.
  Outcome run(const Files& files, const Trouble& trouble = {});

 private:
  void lay(const Files& files);
  [[noreturn]] void become_zorvik(const Trouble& trouble) const;

  std::filesystem::path root_, directory_;
  Files on_disk_;
  int* met_;  // shared with the runs
};

}  // namespace zorvik::faults

#endif  // ZORVIK_TESTS_FAULTS_TROUBLED_RUN_H_
