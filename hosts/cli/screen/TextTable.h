// Lines of cells as columns that line up, for people to read.
//
// Pure functions. What the screen is like, and what is told of a table that does not fit it, is Screen's affair.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace twqb::cli {

// Whole: to the left, and not cut where there is no room. Half an identifier or half a date is another one.
enum class Align : std::uint8_t { Left, Right, Whole };

using TableLine = std::vector<std::string>;

// The lines one below the other, with two blanks between columns and none at an end. A cell is shown on one line and as
// a terminal may show it. Columns without an alignment stand to the left; all lines have as many cells as the first.
[[nodiscard]] std::string TextTable(std::span<const TableLine> lines, std::span<const Align> alignments = {});

// A table that takes at most some columns of the screen.
struct FittedTable {
  std::string text;
  bool isCut = false;                // cells end in an ellipsis
  std::vector<std::string> leftOut;  // headings of columns that found no room
};
// Cuts the widest columns first, none that stand to the right or are to stay whole. Columns go from the end where that
// is not enough; the first one stays.
[[nodiscard]] FittedTable FitTable(std::span<const TableLine> lines, std::span<const Align> alignments,
                                   std::size_t width);

}  // namespace twqb::cli
