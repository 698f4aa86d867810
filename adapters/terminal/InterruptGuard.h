// Ctrl-C as a press of Cancel: while a guard lives, SIGINT is counted and no longer ends the process.
//
// The terminal desk holds one while the progress form is shown. Without one SIGINT does what it did before.
#pragma once

#include <csignal>

namespace twqb {

class InterruptGuard {
 public:
  // Leaves SIGINT alone when the process was started with it ignored, as a job in the background is.
  InterruptGuard();
  // Puts back what was installed before.
  ~InterruptGuard();
  InterruptGuard(const InterruptGuard&) = delete;
  InterruptGuard& operator=(const InterruptGuard&) = delete;

  // Presses of Ctrl-C that any guard of this process has counted; it only grows.
  [[nodiscard]] static unsigned Presses();

 private:
  struct sigaction before_ = {};
};

}  // namespace twqb
