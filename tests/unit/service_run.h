// Service commands run in a process of their own, as they end it, and in a fresh directory.
#ifndef ZORVIK_TESTS_UNIT_SERVICE_RUN_H_
#define ZORVIK_TESTS_UNIT_SERVICE_RUN_H_

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/run_end.h"
#include "driver/source_line.h"
#include "driver/units.h"
#include "exec/executor.h"
#include "lang/check/pass_one.h"
#include "lang/compile/pass_two.h"
#include "lang/text/lexer.h"
#include "service/service_command.h"
#include "stores/results_store.h"
#include "support/run_directory.h"

// The sanitizer's search for leaks takes far longer than a command: the processes of the commands
// end without it.
inline bool is_command_process = false;
extern "C" inline __attribute__((used)) int __lsan_is_turned_off() {  // NOLINT: name of the runtime
  return is_command_process ? 1 : 0;
}

namespace zorvik {

struct RunOutcome {
  int status;  // minus the signal that ended it
  std::string console, listing;
};

constexpr const char* kErrorsNotice = " Errors detected. See listing\n";

class ServiceRun : public ::testing::Test {
 protected:
  std::string folder() const { return directory_.path(""); }
  void put(const std::string& name, const std::string& bytes) {
    std::ofstream(directory_.path(name), std::ios::binary | std::ios::trunc) << bytes;
  }
  std::string get(const std::string& name) { return support::content_of(directory_.path(name)); }
  bool exists(const std::string& name) { return std::filesystem::exists(directory_.path(name)); }
  void remove(const std::string& name) { std::filesystem::remove(directory_.path(name)); }

  // Runs `body` as the program would run a statement of MAIN. `largest_file`: a full disk.
  template <class Body>
  RunOutcome run(Body body, rlim_t largest_file = RLIM_INFINITY) {
    remove("zrvlis");
    const pid_t child = ::fork();
    if (child == 0) {
      enter(largest_file);
      body();
      end_run(RunEnd::kNormal);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status), get("console"),
            get("zrvlis")};
  }

  // SCMD2 as a statement of MAIN, in the process of `run`.
  [[noreturn]] static void command(const std::string& text, std::vector<double> numbers,
                                   Shape shape = kScalar) {
    run_service_command({"MAIN_procedure      ", kCharacter, text, kInteger, shape, numbers});
  }

  // The program zrvdat up to MAIN's end, in the process of `run`.
  static void run_program() {
    reset_source_line();
    reset_lexer();
    open_file(kProgramUnit, "DAT");
    parse_pass(kProgramUnit);
    u91ps2(kProgramUnit);
    S9XMA3();
  }

  RunOutcome scmd2(const std::string& text, std::vector<double> numbers = {0},
                   Shape shape = kScalar, rlim_t largest_file = RLIM_INFINITY) {
    return run([&] { command(text, numbers, shape); }, largest_file);
  }

  void expect_refusal(const RunOutcome& outcome, const std::string& listing) {
    EXPECT_EQ(outcome.listing, listing);
    EXPECT_EQ(outcome.console, kErrorsNotice);
    EXPECT_EQ(outcome.status, 1);
  }

 private:
  void enter(rlim_t largest_file) {
    is_command_process = true;
    if (::chdir(folder().c_str()) != 0) ::_exit(99);
    const int console = ::open("console", O_CREAT | O_TRUNC | O_WRONLY, 0600);
    ::dup2(console, STDOUT_FILENO);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{largest_file, largest_file};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    reset_results_store();
    reset_number_format();
    reset_messages();
    open_file(kListingUnit, "LIS");
  }

  support::RunDirectory directory_;
};

}  // namespace zorvik

#endif  // ZORVIK_TESTS_UNIT_SERVICE_RUN_H_
