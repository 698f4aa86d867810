// Letters with marks as people write them who have none on their keys: "ü" is "u" to some and "ue" to others.
//
// For the comparison of names alone, of texts that are folded already. Letters of other alphabets stay as they are.
#pragma once

#include <string>
#include <string_view>

namespace twqb {

[[nodiscard]] bool HasMarkedLetters(std::string_view folded);
// Without the marks: "muller".
[[nodiscard]] std::string WithoutMarks(std::string_view folded);
// With another letter in the place of the mark, where one is used so: "mueller".
[[nodiscard]] std::string WithMarksSpelled(std::string_view folded);

}  // namespace twqb
