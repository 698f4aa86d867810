#include "cli/options/NearestName.h"

#include <fmt/core.h>

#include <algorithm>
#include <limits>

#include "platform/EditDistance.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::size_t kLettersPerTypo = 3;

}  // namespace

std::optional<std::string> NearestName(std::string_view word, std::span<const std::string> names) {
  const auto typed = FoldCase(word);
  std::optional<std::string> nearest;
  std::size_t least = std::numeric_limits<std::size_t>::max();
  for (const auto& name : names) {
    const auto distance = EditDistance(typed, FoldCase(name));
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
