// SIGALRM, once a second, and SIGUSR1 write the line from their handler, with nothing but what a
// handler may use: arithmetic, to_chars into a buffer of its own, clock_gettime and write.
//   zorvik: 1200 of 5000 records (24 %), TAU = 12.5, 1150/s
#include "driver/progress.h"

#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <ctime>

namespace zorvik {
namespace {

constexpr std::string_view kClearLine = "\r\x1b[K";

Task current;
double started;               // seconds on the monotonic clock, of the task
volatile sig_atomic_t shown;  // the line stands on the terminal

double now() {
  timespec time{};
  ::clock_gettime(CLOCK_MONOTONIC, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// What does not fit is cut off: a handler may not ask for memory.
class Line {
 public:
  void add(std::string_view text) {
    const std::size_t room = sizeof text_ - length_;
    const std::size_t taken = text.size() < room ? text.size() : room;
    std::memcpy(text_ + length_, text.data(), taken);
    length_ += taken;
  }
  template <class Number, class... Format>
  void add_number(Number number, Format... format) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, format...).ptr;
    add({digits, static_cast<std::size_t>(end - digits)});
  }
  void write() const {
    if (::write(STDERR_FILENO, text_, length_) < 0) return;  // nobody is there to be told
  }

 private:
  char text_[200];
  std::size_t length_ = 0;
};

void describe(Line& line) {
  line.add("zorvik: ");
  if (current.done == nullptr) {
    line.add("running");
    return;
  }
  // The run goes on changing the counters while a signal is handled: they are read as they are now.
  const std::int64_t done = *static_cast<const volatile std::int64_t*>(current.done);
  line.add_number(done);
  if (current.total > 0) {
    line.add(" of ");
    line.add_number(current.total);
  }
  line.add(" ");
  line.add(current.unit);
  if (current.total > 0) {
    line.add(" (");
    line.add_number(static_cast<std::int64_t>(100.0 * static_cast<double>(done) /
                                              static_cast<double>(current.total)));
    line.add(" %)");
  }
  if (current.tau != nullptr) {
    line.add(", TAU = ");
    line.add_number(*static_cast<const volatile double*>(current.tau), std::chars_format::general,
                    6);
  }
  if (const double seconds = now() - started; seconds > 0.0) {
    const double rate = static_cast<double>(done) / seconds;
    line.add(", ");
    line.add_number(rate, std::chars_format::fixed, rate < 10.0 ? 1 : 0);
    line.add("/s");
  }
}

void rewrite_line(int) {
  const int saved = errno;
  Line line;
  line.add(kClearLine);
  describe(line);
  line.write();
  shown = 1;
  errno = saved;
}

void write_line_once(int) {
  const int saved = errno;
  Line line;
  if (shown != 0) line.add(kClearLine);
  describe(line);
  line.add("\n");
  line.write();
  shown = 0;
  errno = saved;
}

// Calls of the system go on after these signals: looking at a run must not disturb it.
void handle(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  ::sigaction(signal, &action, nullptr);
}

}  // namespace

void watch_progress() {
  started = now();
  handle(SIGUSR1, write_line_once);
  if (::isatty(STDERR_FILENO) == 0) return;
  handle(SIGALRM, rewrite_line);
  const itimerval each_second{{1, 0}, {1, 0}};
  ::setitimer(ITIMER_REAL, &each_second, nullptr);
}

// A signal between two of the assignments would show a mixture of two tasks.
void show_progress_of(const Task& task) {
  sigset_t both, before;
  ::sigemptyset(&both);
  ::sigaddset(&both, SIGALRM);
  ::sigaddset(&both, SIGUSR1);
  ::sigprocmask(SIG_BLOCK, &both, &before);
  current = task;
  started = now();
  ::sigprocmask(SIG_SETMASK, &before, nullptr);
}

void show_progress_through(File& file, std::string_view name) {
  show_progress_of({name, file.position_counter(), file.size(), nullptr});
}

void show_progress_of_copy(const File& output, std::int64_t total) {
  show_progress_of({"bytes copied", output.position_counter(), total, nullptr});
}

void clear_progress() {
  if (shown == 0) return;
  shown = 0;
  Line line;
  line.add(kClearLine);
  line.write();
}

void end_progress() {
  ::signal(SIGALRM, SIG_IGN);
  clear_progress();
}

}  // namespace zorvik
