#include "cli/NearestName.h"

#include <fmt/core.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <vector>

#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::size_t kLettersPerTypo = 3;

// Letters to add, drop, replace or swap with their neighbour until `a` reads `b`.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before;
  std::vector<std::size_t> above(b.size() + 1);
  std::iota(above.begin(), above.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::vector<std::size_t> row(b.size() + 1);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, replaced});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before = std::move(above);
    above = std::move(row);
  }
  return above.back();
}

}  // namespace

std::optional<std::string> NearestName(std::string_view word, std::span<const std::string> names) {
  const auto typed = FoldCase(word);
  std::optional<std::string> nearest;
  std::size_t least = std::numeric_limits<std::size_t>::max();
  for (const auto& name : names) {
    const auto distance = Distance(typed, FoldCase(name));
    if (distance >= least || distance > (std::max(typed.size(), name.size()) + 1) / kLettersPerTypo) continue;
    least = distance;
    nearest = name;
  }
  return nearest;
}

std::string DidYouMean(std::string_view word, std::span<const std::string> names) {
  const auto nearest = NearestName(word, names);
  return nearest ? fmt::format(" Did you mean \"{}\"?", *nearest) : "";
}

}  // namespace twqb::cli
