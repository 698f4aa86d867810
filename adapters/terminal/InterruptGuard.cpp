#include "adapters/terminal/InterruptGuard.h"

#include <atomic>

namespace twqb {

namespace {

// A handler may touch nothing but a lock-free atomic.
std::atomic<unsigned> presses{0};
static_assert(std::atomic<unsigned>::is_always_lock_free);

extern "C" void CountPress(int) { presses.fetch_add(1, std::memory_order_relaxed); }

}  // namespace

InterruptGuard::InterruptGuard() {
  sigaction(SIGINT, nullptr, &before_);
  if (before_.sa_handler == SIG_IGN) return;
  struct sigaction counting = {};
  counting.sa_handler = CountPress;
  counting.sa_flags = SA_RESTART;  // a press must not break a write to a database into an error
  sigemptyset(&counting.sa_mask);
  sigaction(SIGINT, &counting, nullptr);
}

InterruptGuard::~InterruptGuard() { sigaction(SIGINT, &before_, nullptr); }

unsigned InterruptGuard::Presses() { return presses.load(std::memory_order_relaxed); }

}  // namespace twqb
