#include "driver/progress.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

namespace zorvik {
namespace {

void show_records() {
  static std::int64_t done = 50;
  static double tau = 2.5;
  show_progress_of({"records", &done, 200, &tau});
}

// What a process with that standard error writes there while it shows that progress for `seconds`;
// SIGUSR1 comes at once when `asked`.
std::string progress_of_run(int standard_error, int read_from, unsigned seconds, bool asked,
                            void (*show)() = show_records) {
  const pid_t child = fork();
  if (child == 0) {
    dup2(standard_error, STDERR_FILENO);
    close(read_from);
    watch_progress();
    show();
    if (asked) raise(SIGUSR1);
    for (unsigned left = seconds; left > 0;) left = sleep(left);
    end_progress();
    _exit(0);
  }
  close(standard_error);
  std::string all;
  char part[256];
  for (ssize_t got; (got = read(read_from, part, sizeof part)) > 0;) {
    all.append(part, static_cast<std::size_t>(got));
  }
  waitpid(child, nullptr, 0);
  close(read_from);
  return all;
}

constexpr std::string_view kLine = "zorvik: 50 of 200 records (25 %), TAU = 2.5, ";

TEST(Progress, ALineIsRewrittenOnATerminalAndGoneAtTheEnd) {
  int terminal, standard_error;
  ASSERT_EQ(openpty(&terminal, &standard_error, nullptr, nullptr, nullptr), 0);
  const std::string all = progress_of_run(standard_error, terminal, 2, false);
  EXPECT_EQ(all.find("\r\x1b[K" + std::string(kLine)), 0u) << all;
  EXPECT_TRUE(all.ends_with("/s\r\x1b[K")) << all;
}

TEST(Progress, ASignalWritesTheLineOnceElsewhere) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const std::string all = progress_of_run(ends[1], ends[0], 0, true);
  EXPECT_EQ(all.find(kLine), 0u) << all;
  EXPECT_EQ(all.find('\n'), all.size() - 1) << all;
  ASSERT_EQ(pipe(ends), 0);
  const std::string copy = progress_of_run(ends[1], ends[0], 0, true, [] {
    static File output;
    show_progress_of_copy(output, 200);
  });
  EXPECT_EQ(copy.find("zorvik: 0 of 200 bytes copied (0 %), "), 0u) << copy;
}

}  // namespace
}  // namespace zorvik
