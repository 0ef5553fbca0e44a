// The program's main is called as if it had been started; what it meets it counts in shared memory.
#include "faults/troubled_run.h"

#include <sys/mman.h>
#include <unistd.h>

#include <new>

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

constexpr const char* kMemory = "/dev/shm";  // many times faster than a disk
constexpr rlim_t kLargestFile = 1 << 24;     // bytes

}  // namespace

Machine::Machine()
    : directory_(::access(kMemory, W_OK) == 0 ? kMemory : std::filesystem::temp_directory_path()) {
  void* const shared =
      ::mmap(nullptr, sizeof *met_, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) throw std::bad_alloc();
  met_ = static_cast<std::array<int, kCallKinds>*>(shared);
}

Outcome Machine::run(const Files& files, const Trouble& trouble) {
  met_->fill(0);
  const auto program = [&] {
    char name[] = "zorvik";
    char* arguments[] = {name, nullptr};
    begin_trouble(trouble, met_->data());
    ::_exit(zorvik_main(1, arguments));
  };
  return {directory_.run(files, program, kLargestFile), *met_};
}

}  // namespace zorvik::faults
