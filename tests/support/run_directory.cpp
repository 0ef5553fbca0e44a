// The directory stands in another one beside the files that take the console's place. Files that
// already are as the next run wants them stay, as most do in a sweep.
#include "support/run_directory.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

namespace zorvik::support {
namespace {

constexpr unsigned kLongestRun = 30;  // seconds

void redirect(int descriptor, const std::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  ::dup2(file, descriptor);
  ::close(file);
}

}  // namespace

std::string content_of(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

RunDirectory::RunDirectory(const std::filesystem::path& parent) : owner_(::getpid()) {
  std::string pattern = parent / "zorvik_run_XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) {
    std::cout << "no temporary directory: " << pattern << '\n';
    std::exit(2);
  }
  root_ = pattern;
  directory_ = root_ / "run";
  std::filesystem::create_directory(directory_);
}

RunDirectory::~RunDirectory() {
  if (::getpid() == owner_) std::filesystem::remove_all(root_);  // not in a run that ends by itself
}

void RunDirectory::lay(const Files& files) {
  for (const auto& [name, content] : on_disk_) {
    if (!files.contains(name)) std::filesystem::remove(directory_ / name);
  }
  for (const auto& [name, content] : files) {
    const auto old = on_disk_.find(name);
    if (old != on_disk_.end() && old->second == content) continue;
    std::ofstream(directory_ / name, std::ios::binary | std::ios::trunc) << content;
  }
}

Outcome RunDirectory::run(const Files& files, const std::function<void()>& routine,
                          rlim_t largest_file) {
  lay(files);
  const pid_t child = ::fork();
  if (child == 0) {
    redirect(STDOUT_FILENO, root_ / "console");
    redirect(STDERR_FILENO, root_ / "errors");
    const rlimit limit = {largest_file, largest_file}, none = {0, 0};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::setrlimit(RLIMIT_CORE, &none);
    ::alarm(kLongestRun);
    if (::chdir(directory_.c_str()) == 0) routine();
    ::_exit(kReturned);
  }
  int state = 0;
  rusage usage{};
  ::wait4(child, &state, 0, &usage);
  on_disk_.clear();
  for (const auto& entry : std::filesystem::directory_iterator(directory_)) {
    on_disk_[entry.path().filename()] = content_of(entry.path());
  }
  return {WIFEXITED(state) ? WEXITSTATUS(state) : -WTERMSIG(state), content_of(root_ / "console"),
          content_of(root_ / "errors"), on_disk_, usage.ru_maxrss};
}

}  // namespace zorvik::support
