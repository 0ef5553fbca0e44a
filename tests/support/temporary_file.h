// A file of this process alone, so that tests may run at the same time; removed when it ends.
#ifndef ZORVIK_TESTS_SUPPORT_TEMPORARY_FILE_H_
#define ZORVIK_TESTS_SUPPORT_TEMPORARY_FILE_H_

#include <unistd.h>

#include <filesystem>
#include <string>

namespace zorvik::support {

class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& name)
      : owner_(::getpid()),
        path_(std::filesystem::temp_directory_path() / (name + '_' + std::to_string(owner_))) {}
  ~TemporaryFile() {
    if (::getpid() == owner_) ::unlink(path_.c_str());  // not in a child that ends on its own
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& path() const { return path_; }

 private:
  pid_t owner_;
  std::string path_;
};

}  // namespace zorvik::support

#endif  // ZORVIK_TESTS_SUPPORT_TEMPORARY_FILE_H_
