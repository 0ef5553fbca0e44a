// Each call is defined here and so found before the system's own, which is looked up by its name
// behind it. A failed close has closed the file all the same, as the system's has. The program's
// main is called as if it had been started; what it meets is counted in shared memory.
#include "faults/failing_system.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>

int zorvik_main(int argc, char** argv);  // the program's main

// A fault that a sanitizer finds ends the run by a signal. The search for leaks and the copying of
// freed memory into each run would take most of its time.
static constexpr const char* kSanitizers =
    "abort_on_error=1:print_stacktrace=1:detect_leaks=0:quarantine_size_mb=2:"
    "thread_local_quarantine_size_kb=64";
// NOLINTBEGIN(bugprone-reserved-identifier): names of the runtime
extern "C" const char* __asan_default_options() { return kSanitizers; }
extern "C" const char* __ubsan_default_options() { return kSanitizers; }
// NOLINTEND(bugprone-reserved-identifier)

namespace zorvik::faults {
namespace {

Trouble planned;  // none but in a run
int passed = 0;

bool is_met(Call call) {
  if ((planned.calls >> call & 1U) == 0) return false;
  const int number = ++passed - planned.first;
  if (number < 0 || number >= planned.times) return false;
  ++calls_met();
  return true;
}

template <class Real>
auto meet(Call call, std::size_t bytes, Real real) {
  if (!is_met(call)) return real(bytes);
  if (planned.effect == Effect::kFallsShort) return real(bytes > 1 ? bytes / 2 : bytes);
  if (planned.effect == Effect::kSignalBefore) ::raise(planned.value);
  if (planned.effect != Effect::kFails || call == kClose) {
    const auto result = real(bytes);
    const int status = errno;
    if (planned.effect == Effect::kSignalAfter) ::raise(planned.value);
    errno = status;
    if (planned.effect != Effect::kFails) return result;
  }
  errno = planned.value;
  return decltype(real(bytes)){-1};
}

template <class Real>
auto meet(Call call, Real real) {
  return meet(call, 0, [&](std::size_t) { return real(); });
}

}  // namespace

Outcome run(const Files& files, const Trouble& trouble) {
  constexpr const char* kMemory = "/dev/shm";  // many times faster than a disk
  static support::RunDirectory directory(
      ::access(kMemory, W_OK) == 0 ? kMemory : std::filesystem::temp_directory_path());
  calls_met() = 0;
  return directory.run(files, [&] {
    char name[] = "zorvik";
    char* arguments[] = {name, nullptr};
    planned = trouble;
    ::_exit(zorvik_main(1, arguments));
  });
}

int& calls_met() {
  static void* const shared =
      ::mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) std::abort();
  return *static_cast<int*>(shared);
}

}  // namespace zorvik::faults

using namespace zorvik::faults;

#define REAL(name) \
  static const auto real = reinterpret_cast<decltype(&::name)>(::dlsym(RTLD_NEXT, #name))
#define CALL(kind, type, name, parameters, ...)           \
  type name parameters {                                  \
    REAL(name);                                           \
    return meet(kind, [&] { return real(__VA_ARGS__); }); \
  }
#define TRANSFER(kind, name, parameters, ...)                                       \
  ssize_t name parameters {                                                         \
    REAL(name);                                                                     \
    return meet(kind, count, [&](std::size_t bytes) { return real(__VA_ARGS__); }); \
  }
#define SYNC(name)                        \
  int name(int) {                         \
    return meet(kSync, [] { return 0; }); \
  }
#define OPEN(name, parameters, ...)                              \
  int name parameters {                                          \
    REAL(name);                                                  \
    va_list more;                                                \
    va_start(more, flags);                                       \
    const mode_t mode = va_arg(more, mode_t);                    \
    va_end(more);                                                \
    return meet(kOpen, [&] { return real(__VA_ARGS__, mode); }); \
  }

extern "C" {

OPEN(open, (const char* path, int flags, ...), path, flags)
OPEN(openat, (int at, const char* path, int flags, ...), at, path, flags)

TRANSFER(kRead, read, (int fd, void* to, size_t count), fd, to, bytes)
TRANSFER(kRead, pread, (int fd, void* to, size_t count, off_t at), fd, to, bytes, at)
TRANSFER(kWrite, write, (int fd, const void* from, size_t count), fd, from, bytes)
TRANSFER(kWrite, pwrite, (int fd, const void* from, size_t count, off_t at), fd, from, bytes, at)
TRANSFER(kCopy, copy_file_range,
         (int from, off_t* a, int to, off_t* b, size_t count, unsigned int flags), from, a, to, b,
         bytes, flags)

CALL(kCopy, int, fallocate, (int fd, int mode, off_t at, off_t bytes), fd, mode, at, bytes)

CALL(kWrite, ssize_t, writev, (int fd, const iovec* parts, int count), fd, parts, count)
CALL(kCut, int, ftruncate, (int fd, off_t size) noexcept, fd, size)
CALL(kClose, int, close, (int fd), fd)
SYNC(fsync)
SYNC(fdatasync)

CALL(kName, int, rename, (const char* from, const char* to) noexcept, from, to)
CALL(kName, int, renameat, (int a, const char* from, int b, const char* to) noexcept, a, from, b,
     to)
CALL(kName, int, link, (const char* from, const char* to) noexcept, from, to)
CALL(kName, int, linkat, (int a, const char* from, int b, const char* to, int flags) noexcept, a,
     from, b, to, flags)
CALL(kName, int, unlink, (const char* path) noexcept, path)

CALL(kAsk, off_t, lseek, (int fd, off_t to, int from) noexcept, fd, to, from)
CALL(kAsk, int, fstat, (int fd, struct stat* to) noexcept, fd, to)
CALL(kAsk, int, stat, (const char* path, struct stat* to) noexcept, path, to)
CALL(kAsk, int, lstat, (const char* path, struct stat* to) noexcept, path, to)
CALL(kMode, int, fchmod, (int fd, mode_t mode) noexcept, fd, mode)
CALL(kMode, int, fchown, (int fd, uid_t user, gid_t group) noexcept, fd, user, group)

}  // extern "C"
