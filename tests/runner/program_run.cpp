#include "runner/program_run.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>

namespace zorvik::runner {
namespace {

// A run that hangs or writes without end is ended by a signal.
constexpr unsigned kLongestRun = 30;                 // seconds
constexpr unsigned long kLargestFile = 100'000'000;  // bytes

void limit_run(unsigned long room) {
  alarm(kLongestRun);
  const rlim_t bytes = room != 0 ? room : kLargestFile;
  const rlimit limit = {bytes, bytes};
  setrlimit(RLIMIT_FSIZE, &limit);
}

void redirect(int descriptor, const std::filesystem::path& path) {
  dup2(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), descriptor);
}

}  // namespace

ProgramRun::ProgramRun(const std::string& program) : program_(std::filesystem::absolute(program)) {
  std::string pattern = std::filesystem::temp_directory_path() / "zorvik_case_XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) {
    std::cout << "no temporary directory: " << pattern << '\n';
    std::exit(2);
  }
  root_ = pattern;
  directory_ = root_ / "run";
}

ProgramRun::~ProgramRun() { std::filesystem::remove_all(root_); }

RunResult ProgramRun::run(const Case& c, const std::map<std::string, std::string>& files) {
  std::filesystem::remove_all(directory_);
  std::filesystem::create_directory(directory_);
  for (const auto& [name, content] : files) {
    std::ofstream(directory_ / name, std::ios::binary) << content;
  }
  const pid_t child = fork();
  if (child == 0) {
    redirect(STDOUT_FILENO, root_ / "console");
    redirect(STDERR_FILENO, root_ / "errors");
    limit_run(c.room);
    unsetenv("ZORVIK_NOTES");
    std::string variable = c.environment;
    if (!variable.empty()) putenv(variable.data());
    const char* word = c.argument.empty() ? nullptr : c.argument.c_str();
    if (chdir(directory_.c_str()) == 0) execl(program_.c_str(), program_.c_str(), word, nullptr);
    _exit(127);
  }
  int state = 0;
  waitpid(child, &state, 0);
  return {WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state), content_of(root_ / "console"),
          content_of(root_ / "errors")};
}

}  // namespace zorvik::runner
