// AccountArray: the accounts of a company file as a host's dialog takes them, a text array of two dimensions.
//
// One column for each account and four rows, both from 0: array[column][row]. Filled by a lookup; it is a copy, and
// keeps no answer alive.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace twqb {

enum AccountRow : std::size_t { enAccountListID, enAccountFullName, enAccountName, enAccountType };

inline constexpr std::size_t kAccountRows = 4;

using AccountArray = std::vector<std::array<std::string, kAccountRows>>;

}  // namespace twqb
