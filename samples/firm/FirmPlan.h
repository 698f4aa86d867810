// How large a firm is to be made, and which one of its size.
//
// The same plan makes the same firm on every machine: nothing of it comes from a clock or from a library's
// distributions. What is in a firm stands in docs/firms.md.
#pragma once

#include <cstdint>
#include <string>

namespace twqb::firm {

struct FirmPlan {
  int clients = 20;  // everything else follows from their number
  std::uint64_t seed = 1;
  int months = 12;  // of the year 2007, from January on
  int hours = 20;   // entries that a project has in a month, more or less; there are a quarter as many expenses
};

inline constexpr int kMostClients = 10'000;
inline constexpr int kMostMonths = 12;
inline constexpr int kMostHours = 200;

// What is wrong with a plan, in words for whoever gave it; empty where nothing is.
[[nodiscard]] std::string FaultOf(const FirmPlan& plan);

}  // namespace twqb::firm
