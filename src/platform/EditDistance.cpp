#include "platform/EditDistance.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

#include "platform/Text.h"

namespace twqb {

namespace {

template <typename Letter>
std::size_t Distance(std::span<const Letter> a, std::span<const Letter> b) {
  std::vector<std::size_t> before(b.size() + 1);
  std::vector<std::size_t> above(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(above.begin(), above.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, replaced});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    std::swap(before, above);
    std::swap(above, row);
  }
  return above.back();
}

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::vector<std::string_view> Characters(std::string_view text) {
  std::vector<std::string_view> characters;
  CharacterWalk walk(text);
  for (auto next = walk.Next(); !next.empty(); next = walk.Next()) characters.push_back(next);
  return characters;
}

}  // namespace

std::size_t EditDistance(std::string_view a, std::string_view b) {
  if (IsAscii(a) && IsAscii(b)) return Distance(std::span<const char>(a), std::span<const char>(b));
  const auto first = Characters(a);
  const auto second = Characters(b);
  return Distance(std::span<const std::string_view>(first), std::span<const std::string_view>(second));
}

}  // namespace twqb
