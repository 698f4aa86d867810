// What single characters do at a terminal, which is the system's to know: those that steer it, and how many columns the
// others take.
//
// It stands under TextLayout, which walks texts. The file beside this header is for systems with ICU; another system
// brings its own.
#pragma once

#include <cstddef>

namespace twqb {

// Control characters, line and paragraph separators, direction marks.
[[nodiscard]] bool SteersTerminal(char32_t character);
// Two for an East Asian wide character, none for a combining mark.
[[nodiscard]] std::size_t ColumnsOf(char32_t character);

}  // namespace twqb
