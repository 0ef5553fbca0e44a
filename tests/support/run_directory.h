// Runs in processes of their own, each in a directory that holds just the files it is given.
#ifndef ZORVIK_TESTS_SUPPORT_RUN_DIRECTORY_H_
#define ZORVIK_TESTS_SUPPORT_RUN_DIRECTORY_H_

#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace zorvik::support {

using Files = std::map<std::string, std::string>;  // contents by name

constexpr int kReturned = 127;            // the status when the routine did not end the process
constexpr int kHangs = -SIGALRM;          // when it took far too long
constexpr rlim_t kLargestFile = 1 << 24;  // what writes without end is ended by a signal, too

struct Outcome {
  int status;  // the exit status, or minus the number of the signal that ended the process
  std::string console, errors;  // standard output and standard error
  Files files;                  // what the directory holds afterwards
  long memory;                  // most kilobytes in use at a time
};

class RunDirectory {
 public:
  explicit RunDirectory(
      const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  ~RunDirectory();
  RunDirectory(const RunDirectory&) = delete;
  RunDirectory& operator=(const RunDirectory&) = delete;

  std::string path(const std::string& name) const { return directory_ / name; }

  Outcome run(const Files& files, const std::function<void()>& routine,
              rlim_t largest_file = kLargestFile);

 private:
  void lay(const Files& files);

  pid_t owner_;
  std::filesystem::path root_, directory_;
  Files on_disk_;
};

// A file's content; nothing when it cannot be read.
std::string content_of(const std::filesystem::path& path);

// A routine that is expected to end the process, run in no particular directory.
inline Outcome ended_run(const std::function<void()>& routine) {
  return RunDirectory().run({}, routine);
}

}  // namespace zorvik::support

#endif  // ZORVIK_TESTS_SUPPORT_RUN_DIRECTORY_H_
