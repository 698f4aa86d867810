// What FindDifference found, as text for people and as JSON Lines for programs.
//
// Nothing is worked out here but what is worth showing first.
#pragma once

#include <cstdint>
#include <string>

#include "cli/preview/Diff.h"

namespace twqb::cli {

// How rows are told that would come back as others: each whole, or, of many, each column with a few of its rows, those
// ahead that lose most letters.
enum class Shown : std::uint8_t { Whole, InShort };

// Each line comes with its end.
[[nodiscard]] std::string DifferenceText(const Difference& difference, Shown shown);
// One object a line.
[[nodiscard]] std::string DifferenceJson(const Difference& difference);

}  // namespace twqb::cli
