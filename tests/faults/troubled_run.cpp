#include "faults/troubled_run.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

int zorvik_main(int argc, char** argv);  // the program's main

// A fault that a sanitizer finds ends the run by a signal. The search for leaks and the copying of
// freed memory into each run would take most of its time.
static constexpr const char* kSanitizers =
    "abort_on_error=1:print_stacktrace=1:detect_leaks=0:quarantine_size_mb=2:"
    "thread_local_quarantine_size_kb=64";
extern "C" const char* __asan_default_options() { return kSanitizers; }
extern "C" const char* __ubsan_default_options() { return kSanitizers; }

namespace zorvik::faults {
namespace {

constexpr timespec kLongestRun = {20, 0};          // a run takes a millisecond
constexpr rlim_t kLargestFile = 16 * 1024 * 1024;  // bytes

std::string content_of(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

void redirect(int descriptor, const std::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  ::dup2(file, descriptor);
  ::close(file);
}

sigset_t child_ended() {
  sigset_t set;
  ::sigemptyset(&set);
  ::sigaddset(&set, SIGCHLD);
  return set;
}

}  // namespace

bool Outcome::any_met() const {
  return std::any_of(met.begin(), met.end(), [](int calls) { return calls > 0; });
}

Machine::Machine() {
  const std::filesystem::path memory = "/dev/shm";  // many times faster than a disk
  const bool found = ::access(memory.c_str(), W_OK) == 0;
  std::string pattern =
      (found ? memory : std::filesystem::temp_directory_path()) / "zorvik_faults_XXXXXX";
  void* const shared = ::mmap(nullptr, sizeof(Outcome::met), PROT_READ | PROT_WRITE,
                              MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (::mkdtemp(pattern.data()) == nullptr || shared == MAP_FAILED) {
    std::cout << "no temporary directory: " << pattern << '\n';
    std::exit(2);
  }
  root_ = pattern;
  directory_ = root_ / "run";
  std::filesystem::create_directory(directory_);
  met_ = static_cast<int*>(shared);
}

Machine::~Machine() {
  std::filesystem::remove_all(root_);
  ::munmap(met_, sizeof(Outcome::met));
}

void Machine::lay(const Files& files) {
  for (const auto& [name, content] : on_disk_) {
    if (!files.contains(name)) std::filesystem::remove(directory_ / name);
  }
  for (const auto& [name, content] : files) {
    const auto old = on_disk_.find(name);
    if (old != on_disk_.end() && old->second == content) continue;
    std::ofstream(directory_ / name, std::ios::binary | std::ios::trunc) << content;
  }
}

void Machine::become_zorvik(const Trouble& trouble) const {
  redirect(STDOUT_FILENO, root_ / "console");
  redirect(STDERR_FILENO, root_ / "errors");
  const rlimit limit = {kLargestFile, kLargestFile}, none = {0, 0};
  ::setrlimit(RLIMIT_FSIZE, &limit);
  ::setrlimit(RLIMIT_CORE, &none);
  char name[] = "zorvik";
  char* arguments[] = {name, nullptr};
  if (::chdir(directory_.c_str()) != 0) ::_exit(127);
  begin_trouble(trouble, met_);
  ::_exit(zorvik_main(1, arguments));
}

Outcome Machine::run(const Files& files, const Trouble& trouble) {
  lay(files);
  std::fill_n(met_, std::size_t{kCallKinds}, 0);
  const sigset_t ended = child_ended();
  ::sigprocmask(SIG_BLOCK, &ended, nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    ::sigprocmask(SIG_UNBLOCK, &ended, nullptr);
    become_zorvik(trouble);
  }
  const bool hangs = ::sigtimedwait(&ended, nullptr, &kLongestRun) < 0;
  if (hangs) ::kill(child, SIGKILL);
  int state = 0;
  rusage usage{};
  ::wait4(child, &state, 0, &usage);
  const int status = WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state);
  Outcome outcome{hangs ? kHangs : status,
                  content_of(root_ / "console"),
                  content_of(root_ / "errors"),
                  {},
                  usage.ru_maxrss,
                  {}};
  std::copy_n(met_, outcome.met.size(), outcome.met.begin());
  for (const auto& entry : std::filesystem::directory_iterator(directory_)) {
    outcome.files[entry.path().filename()] = content_of(entry.path());
  }
  on_disk_ = outcome.files;
  return outcome;
}

}  // namespace zorvik::faults
