// What the benchmarks print: tables in Markdown, to go into docs/performance.md as they are.
#pragma once

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace twqb {

// "10,000"
inline std::string Grouped(long long number) {
  const auto digits = std::to_string(number);
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) text += ',';
    text += digits[i];
  }
  return text;
}

inline std::string InMegabytes(std::size_t bytes) {
  constexpr double kMega = 1024.0 * 1024.0;
  return fmt::format("{:.1f} MB", static_cast<double>(bytes) / kMega);
}

// Each line is out when it returns: a run may take minutes.
inline void PrintLine(const std::vector<std::string>& cells) {
  fmt::print("| {} |\n", fmt::join(cells, " | "));
  std::fflush(stdout);
}

inline void PrintHead(const std::vector<std::string>& names) {
  PrintLine(names);
  std::string line = "|";
  for (std::size_t i = 0; i < names.size(); ++i) line += "---|";
  fmt::print("{}\n", line);
}

}  // namespace twqb
