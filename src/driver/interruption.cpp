// Calls of the system are not begun again after such a signal, so that a run that waits for its
// console comes back to look at the flag.
#include "driver/interruption.h"

#include <cstdlib>
#include <initializer_list>

namespace zorvik {

volatile std::sig_atomic_t pending_signal = 0;

namespace {

void note_signal(int signal) { pending_signal = signal; }

}  // namespace

void heed_signals() {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGXCPU}) {
    struct sigaction action {};
    // Ignored by the caller, as by nohup: then it stays so.
    if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = note_signal;
    ::sigaction(signal, &action, nullptr);
  }
}

void die_by_pending_signal() {
  const int signal = pending_signal;
  std::signal(signal, SIG_DFL);
  std::raise(signal);
  std::_Exit(EXIT_FAILURE);  // it was blocked
}

}  // namespace zorvik
