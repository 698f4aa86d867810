#include "cli/screen/TextTable.h"

#include <algorithm>
#include <numeric>

#include "adapters/terminal/TextLayout.h"

namespace twqb::cli {

namespace {

constexpr std::size_t kBetween = 2;
// Less of a text tells nothing.
constexpr std::size_t kLeastCell = 6;

std::vector<std::size_t> WidthsOf(std::span<const TableLine> lines) {
  std::vector<std::size_t> widths;
  for (const auto& line : lines) {
    widths.resize(line.size());
    for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], ColumnCount(OneLine(line[i])));
  }
  return widths;
}

Align AlignOf(std::span<const Align> alignments, std::size_t column) {
  return column < alignments.size() ? alignments[column] : Align::Left;
}

bool IsRight(std::span<const Align> alignments, std::size_t column) {
  return AlignOf(alignments, column) == Align::Right;
}

std::string Laid(std::span<const TableLine> lines, std::span<const Align> alignments,
                 std::span<const std::size_t> widths) {
  std::string table;
  for (const auto& line : lines) {
    std::string shown;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      const auto cell = CutToColumns(OneLine(line[i]), std::max(widths[i], std::size_t{1}));
      const std::string blanks(widths[i] - std::min(widths[i], ColumnCount(cell)), ' ');
      shown += (IsRight(alignments, i) ? blanks + cell : cell + blanks) + std::string(kBetween, ' ');
    }
    shown.erase(shown.find_last_not_of(' ') + 1);
    table += shown + "\n";
  }
  return table;
}

std::size_t TotalOf(std::span<const std::size_t> widths) {
  return std::accumulate(widths.begin(), widths.end(), kBetween * (widths.size() - 1));
}

// Takes from the widest columns until the rest takes at most `width`; false when there is nothing more to take.
bool Shrink(std::vector<std::size_t>& widths, std::span<const Align> alignments, std::size_t width) {
  while (TotalOf(widths) > width) {
    std::size_t* widest = nullptr;
    for (std::size_t i = 0; i < widths.size(); ++i) {
      if (AlignOf(alignments, i) != Align::Left || widths[i] <= kLeastCell) continue;
      if (widest == nullptr || widths[i] > *widest) widest = &widths[i];
    }
    if (widest == nullptr) return false;
    --*widest;
  }
  return true;
}

}  // namespace

std::string TextTable(std::span<const TableLine> lines, std::span<const Align> alignments) {
  return Laid(lines, alignments, WidthsOf(lines));
}

FittedTable FitTable(std::span<const TableLine> lines, std::span<const Align> alignments, std::size_t width) {
  const auto whole = WidthsOf(lines);
  if (whole.empty() || TotalOf(whole) <= width) return {.text = Laid(lines, alignments, whole), .leftOut = {}};
  FittedTable fitted;
  auto widths = whole;
  for (auto count = whole.size(); count > 0; --count) {
    widths.assign(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(count));
    if (Shrink(widths, alignments, width)) break;
  }
  fitted.isCut = !std::equal(widths.begin(), widths.end(), whole.begin());
  fitted.leftOut.assign(lines.front().begin() + static_cast<std::ptrdiff_t>(widths.size()), lines.front().end());
  fitted.text = Laid(lines, alignments, widths);
  return fitted;
}

}  // namespace twqb::cli
