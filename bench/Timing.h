// Wall-clock times, for the benchmarks.
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

namespace twqb {

inline double Seconds(const std::function<void()>& body) {
  const auto begin = std::chrono::steady_clock::now();
  body();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

// Of at least one value.
inline double Median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

}  // namespace twqb
