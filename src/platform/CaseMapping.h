// Case of single characters, which is the system's to know: Unicode's simple mappings, one code point to one.
//
// It stands under platform/Text, which walks texts; nothing else calls it. The file beside this header is for systems
// with ICU; another system brings its own.
#pragma once

namespace twqb {

[[nodiscard]] char32_t UpperCaseOf(char32_t character);
// Two characters that differ in case alone fold to one.
[[nodiscard]] char32_t FoldedCaseOf(char32_t character);

}  // namespace twqb
