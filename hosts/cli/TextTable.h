// Lines of cells as columns that line up, for people to read.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace twqb::cli {

enum class Align : std::uint8_t { Left, Right };

using TableLine = std::vector<std::string>;

// The lines one below the other, with two blanks between columns and none at an end. A cell is shown on one line and as
// a terminal may show it. Columns without an alignment stand to the left; all lines have as many cells as the first.
[[nodiscard]] std::string TextTable(std::span<const TableLine> lines, std::span<const Align> alignments = {});

}  // namespace twqb::cli
