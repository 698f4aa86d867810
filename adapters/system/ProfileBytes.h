// In which bytes a profile (INI) file holds its text.
//
// It stands under ProfileFile. The files of this system are in UTF-8, and what is not stays as it is; on Windows, where
// hosts write them by the system's calls of one byte a character, a file of the same name takes the place of this one's
// source.
#pragma once

#include <string>
#include <string_view>

namespace twqb {

// As the library has texts, in UTF-8.
[[nodiscard]] std::string TextOfProfile(std::string_view bytes);
// As they go into the file. What can't be written in its characters becomes a question mark, as by the system's calls.
[[nodiscard]] std::string BytesForProfile(std::string_view text);

}  // namespace twqb
