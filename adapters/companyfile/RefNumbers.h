// The reference numbers of transactions as texts: how they lie in a range, and which one comes next.
#pragma once

#include <string>
#include <string_view>

namespace twqb::company {

// A key in whose order the numbers lie, without regard to case: "9" before "10", "A9" before "A10".
[[nodiscard]] std::string RefOrderKey(std::string_view refNumber);
// The number behind `last`: "8" behind "7", "A010" behind "A009". "1" behind one that does not end in a digit; empty
// behind one that leaves no room for it.
[[nodiscard]] std::string NextRefNumber(std::string_view last);

}  // namespace twqb::company
