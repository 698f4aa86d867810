// Work in a process of its own, so that what it takes of memory is not hidden by what another took before it.
//
// The child is a fork: it must be made while this process has held little, since a heap that was large once has room in
// it that the child would fill unseen. What is large (making a base, too) goes into children.
#pragma once

#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>
#include <type_traits>

namespace twqb {

// The most memory that this process has held, in bytes.
inline std::size_t PeakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

// What the work answers, carried over. Raises when it failed, which has been told on standard error.
template <typename Result>
[[nodiscard]] Result InOwnProcess(const std::function<Result()>& work) {
  static_assert(std::is_trivially_copyable_v<Result>);
  std::fflush(stdout);
  int ends[2] = {};
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) {
    close(ends[0]);
    bool told = false;
    try {
      const Result result = work();
      told = write(ends[1], &result, sizeof result) == static_cast<ssize_t>(sizeof result);
    } catch (const std::exception& failure) {
      fmt::print(stderr, "{}\n", failure.what());
    }
    _exit(told ? 0 : 1);
  }
  close(ends[1]);
  Result result{};
  const bool whole = read(ends[0], &result, sizeof result) == static_cast<ssize_t>(sizeof result);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (!whole) throw std::runtime_error("a process of its own failed");
  return result;
}

}  // namespace twqb
