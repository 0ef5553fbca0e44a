// One run of the built program in a directory of its own.
#ifndef ZORVIK_TESTS_RUNNER_PROGRAM_RUN_H_
#define ZORVIK_TESTS_RUNNER_PROGRAM_RUN_H_

#include <filesystem>
#include <map>
#include <string>

#include "runner/case_file.h"

namespace zorvik::runner {

struct RunResult {
  int status;           // the exit status, or minus the number of the signal that ended the run
  std::string console;  // standard output
  std::string errors;   // standard error
};

class ProgramRun {
 public:
  explicit ProgramRun(const std::string& program);
  ~ProgramRun();  // removes the directory
  ProgramRun(const ProgramRun&) = delete;
  ProgramRun& operator=(const ProgramRun&) = delete;

  // Runs the program in an emptied directory that holds just these files, with the argument, the
  // environment and the room of the case.
  RunResult run(const Case& c, const std::map<std::string, std::string>& files);

  const std::filesystem::path& directory() const { return directory_; }

 private:
  std::filesystem::path program_, root_, directory_;
};

}  // namespace zorvik::runner

#endif  // ZORVIK_TESTS_RUNNER_PROGRAM_RUN_H_
