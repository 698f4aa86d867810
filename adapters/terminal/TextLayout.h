// Text as a terminal shows it: which characters may reach it, how many columns they take, where a line breaks.
//
// Pure functions below everything else that the terminal desk prints. Texts come from both databases, so nothing of
// them is trusted: only what `Printable` or `OneLine` lets through is ever written to a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace twqb {

// The text with every character that could steer a terminal replaced by "?": control characters (line ends too),
// direction marks, bytes that are no UTF-8. A tab becomes one blank.
[[nodiscard]] std::string Printable(std::string_view text);
// The text printable and on one line: a line end (CR LF, CR or LF) becomes a blank, those at its end disappear.
[[nodiscard]] std::string OneLine(std::string_view text);

// Columns that a printable text takes: two for an East Asian wide character, none for a combining mark.
[[nodiscard]] std::size_t ColumnCount(std::string_view text);
// The longest beginning of a printable text that takes at most `columns`.
[[nodiscard]] std::string TrimToColumns(std::string_view text, std::size_t columns);
// A printable text that takes at most `columns` (at least 1): the whole of it, or its beginning and an ellipsis. What a
// joiner holds together is not cut apart.
[[nodiscard]] std::string CutToColumns(std::string_view text, std::size_t columns);
// The printable lines of a text, none wider than `columns` (at least 2). Breaks at line ends and blanks, and inside a
// word only where it alone is wider. Empty lines stay, except at the end.
[[nodiscard]] std::vector<std::string> WrapText(std::string_view text, std::size_t columns);

}  // namespace twqb
