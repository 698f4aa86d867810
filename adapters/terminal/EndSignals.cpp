#include "adapters/terminal/EndSignals.h"

#include <unistd.h>

#include <atomic>
#include <cstddef>

namespace twqb {

namespace {

// A handler may touch nothing but lock-free atomics.
std::atomic<int> first{0};
std::atomic<bool> asking{false};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

extern "C" void KeepSignal(int signal) {
  int before = 0;
  // Databases recover from an end at any moment.
  if (!first.compare_exchange_strong(before, signal)) _exit(EndSignals::ExitStatusOf(before));
}

}  // namespace

EndSignals::EndSignals() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) {
    sigaction(kSignals[i], nullptr, &before_[i]);
    if (before_[i].sa_handler == SIG_IGN) continue;
    struct sigaction keeping = {};
    keeping.sa_handler = KeepSignal;
    keeping.sa_flags = SA_RESTART;  // a signal must not break a write to a database into an error
    sigemptyset(&keeping.sa_mask);
    sigaction(kSignals[i], &keeping, nullptr);
  }
}

EndSignals::~EndSignals() {
  for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &before_[i], nullptr);
}

int EndSignals::Came() { return first.load(); }
int EndSignals::Pending() { return asking.load() ? 0 : first.load(); }
void EndSignals::Forget() { first.store(0); }

EndSignals::Asking::Asking() { asking.store(true); }
EndSignals::Asking::~Asking() { asking.store(false); }

const char* SignalName(int signal) {
  switch (signal) {
    case SIGINT:
      return "SIGINT";
    case SIGTERM:
      return "SIGTERM";
    case SIGHUP:
      return "SIGHUP";
    default:
      return "a signal";
  }
}

}  // namespace twqb
