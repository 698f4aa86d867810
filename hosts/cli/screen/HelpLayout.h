// A help text laid out anew for lines of some width. The texts are written for one of 80 or more.
//
// A pure function: the command line, which makes the texts, hands them over with the width of the screen.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace twqb::cli {

// Lines that begin at the left are paragraphs, which end at an empty line or a heading such as "Examples:". Others are
// entries "  name    what it is", on more lines where these begin far to the right; what an entry is stands below that
// of the others where there is room, and below its name elsewhere. Breaks at blanks, and inside a word only where it
// alone is wider.
[[nodiscard]] std::string LaidOutHelp(std::string_view text, std::size_t width);

}  // namespace twqb::cli
