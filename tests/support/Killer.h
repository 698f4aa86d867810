// Kills at moments that no seam knows of: at the n-th system call of a process, ahead of it or behind it, and after a
// time, wherever it stands by then.
//
// The child inherits all that the parent has in memory. It must not use database handles that the parent has open.
#pragma once

#include <cstdint>
#include <functional>

namespace twqb {

struct KillPlan {
  enum class At : std::uint8_t { SystemCall, Microsecond };
  At at = At::SystemCall;
  std::uint64_t n = 0;  // from 1; of system calls each counts twice, when it begins and when it ends
};

// How much there is of both in a run of `body` to its end. Raises std::runtime_error where a process can't be watched.
struct Length {
  std::uint64_t systemCalls = 0;
  std::uint64_t microseconds = 0;
};
[[nodiscard]] Length MeasureInChild(const std::function<void()>& body);

// Whether it was killed; otherwise it came to its end before.
[[nodiscard]] bool KillInChild(const std::function<void()>& body, const KillPlan& plan);

}  // namespace twqb
