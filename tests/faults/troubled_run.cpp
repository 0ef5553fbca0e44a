// The program's main is called as if it had been started.
#include "faults/troubled_run.h"

#include <unistd.h>

int zorvik_main(int argc, char** argv);  // the program's main

// A fault that a sanitizer finds ends the run by a signal. The search for leaks and the copying of
// freed memory into each run would take most of its time.
static constexpr const char* kSanitizers =
    "abort_on_error=1:print_stacktrace=1:detect_leaks=0:quarantine_size_mb=2:"
    "thread_local_quarantine_size_kb=64";
extern "C" const char* __asan_default_options() { return kSanitizers; }
extern "C" const char* __ubsan_default_options() { return kSanitizers; }

namespace zorvik::faults {

Outcome run(const Files& files, const Trouble& trouble) {
  constexpr const char* kMemory = "/dev/shm";  // many times faster than a disk
  static support::RunDirectory directory(
      ::access(kMemory, W_OK) == 0 ? kMemory : std::filesystem::temp_directory_path());
  calls_met() = 0;
  return directory.run(files, [&] {
    char name[] = "zorvik";
    char* arguments[] = {name, nullptr};
    begin_trouble(trouble);
    ::_exit(zorvik_main(1, arguments));
  });
}

}  // namespace zorvik::faults
