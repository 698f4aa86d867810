// The page of the demonstration: headings, paragraphs and small tables, none of them wider than a hundred columns.
//
// It says nothing of its own.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "cli/screen/TextTable.h"
#include "platform/Currency.h"

namespace twqb::cli {

// Of the whole, and of a part; each with a line below it.
void PrintTitle(std::string_view text);
void PrintHeading(std::string_view text);
// Behind an empty line, broken at blanks.
void PrintParagraph(std::string_view text);
// One of several, broken likewise and indented.
void PrintItem(std::string_view text);
// Behind an empty line, indented. A line that is too wide is cut in the column of that number.
void PrintTable(std::span<const TableLine> lines, std::span<const Align> alignments, std::size_t cutColumn = 0);
// Lines that are laid out already, likewise.
void PrintLines(const std::string& lines);

// "2,830.00"; "491".
[[nodiscard]] std::string Money(Currency amount);
[[nodiscard]] std::string Number(std::int64_t count);
// "one expense", "7 expenses"; behind a count of none: "no expenses".
[[nodiscard]] std::string Counted(std::int64_t count, std::string_view one, std::string_view many);
// "a, b and c".
[[nodiscard]] std::string Listed(std::span<const std::string> parts);

}  // namespace twqb::cli
