// The screen that results are shown on: how wide it is, and tables and paragraphs that fit it.
//
// A table is cut for a terminal alone; what goes elsewhere is read by programs and stays whole. Colours, and what may
// reach a terminal at all, are Output's affair.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "cli/screen/TextTable.h"

namespace twqb::cli {

struct Options;

// Columns of standard output; 80 where it is no terminal and the variable COLUMNS names no number.
[[nodiscard]] std::size_t ScreenWidth();
// The same for running text: longer lines read badly.
[[nodiscard]] std::size_t ProseWidth();

// Prints a table with its heading in the first line. On a terminal its columns are cut to the width, and those at the
// end left out that find no room, unless --wide is on; what was done is told.
void PrintTable(const Options& options, std::span<const TableLine> lines, std::span<const Align> alignments = {});

// The text in lines that fit the screen, each behind as many blanks.
[[nodiscard]] std::string Paragraph(std::string_view text, std::size_t indent = 0);

}  // namespace twqb::cli
