#include "cli/TextTable.h"

#include <algorithm>

#include "adapters/terminal/TextLayout.h"

namespace twqb::cli {

std::string TextTable(std::span<const TableLine> lines, std::span<const Align> alignments) {
  std::vector<std::size_t> widths;
  for (const auto& line : lines) {
    widths.resize(line.size());
    for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], ColumnCount(OneLine(line[i])));
  }
  std::string table;
  for (const auto& line : lines) {
    std::string shown;
    for (std::size_t i = 0; i < line.size(); ++i) {
      const auto cell = OneLine(line[i]);
      const std::string blanks(widths[i] - ColumnCount(cell), ' ');
      const bool isRight = i < alignments.size() && alignments[i] == Align::Right;
      shown += (isRight ? blanks + cell : cell + blanks) + "  ";
    }
    shown.erase(shown.find_last_not_of(' ') + 1);
    table += shown + "\n";
  }
  return table;
}

}  // namespace twqb::cli
