// Runs a routine that is expected to end the process, in a child, and tells what it wrote to the
// console and the exit status; -1 when the routine returned.
#ifndef ZORVIK_TESTS_SUPPORT_ENDED_RUN_H_
#define ZORVIK_TESTS_SUPPORT_ENDED_RUN_H_

#include <sys/wait.h>
#include <unistd.h>

#include <string>

namespace zorvik::support {

struct EndedRun {
  std::string console;
  int status;
};

template <class Routine>
EndedRun ended_run(Routine routine) {
  constexpr int kReturned = 77;
  int ends[2];
  if (::pipe(ends) != 0) return {"no pipe", -1};
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(ends[1], STDOUT_FILENO);
    routine();
    ::_exit(kReturned);
  }
  ::close(ends[1]);
  EndedRun run{"", 0};
  char buffer[4096];
  for (ssize_t got; (got = ::read(ends[0], buffer, sizeof buffer)) > 0;) {
    run.console.append(buffer, static_cast<std::size_t>(got));
  }
  ::close(ends[0]);
  int state = 0;
  ::waitpid(child, &state, 0);
  run.status = WIFEXITED(state) && WEXITSTATUS(state) != kReturned ? WEXITSTATUS(state) : -1;
  return run;
}

}  // namespace zorvik::support

#endif  // ZORVIK_TESTS_SUPPORT_ENDED_RUN_H_
