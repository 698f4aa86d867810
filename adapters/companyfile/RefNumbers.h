// The reference numbers of transactions as texts: how they lie in a range.
#pragma once

#include <string>
#include <string_view>

namespace twqb::company {

// A key in whose order the numbers lie, without regard to case: "9" before "10", "A9" before "A10".
[[nodiscard]] std::string RefOrderKey(std::string_view refNumber);

}  // namespace twqb::company
