// What a transfer of the demonstration has left where it was, in words: each record once, in the month in which it
// first stays.
//
// The reasons are the link's own; where one is given as a status of QuickBooks', it is put as a bookkeeper would.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "cli/demo/DemoMoves.h"
#include "services/Direction.h"

namespace twqb::cli {

// "expense codes"
[[nodiscard]] std::string_view TableWords(std::int32_t table);

class DemoStays {
 public:
  // A line for each table and reason of the transfer that was not told yet.
  [[nodiscard]] std::vector<std::string> News(Direction direction, const DemoMoves::Tables& tables);

 private:
  std::set<std::string> told_;
};

}  // namespace twqb::cli
