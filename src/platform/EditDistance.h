// How far two words are from each other: letters to add, drop, replace or swap with their neighbour until one reads the
// other (optimal string alignment).
//
// Case counts; who does not mind it folds both first. Debian has no library for it that a build for Windows could have,
// too, so the one place where it is counted is here.
#pragma once

#include <cstddef>
#include <string_view>

namespace twqb {

// In characters, or, where neither text has others than those of ASCII, in bytes, which is the same.
[[nodiscard]] std::size_t EditDistance(std::string_view a, std::string_view b);

}  // namespace twqb
