// The two ways in which a table moves.
#pragma once

#include <cstdint>

namespace twqb {

enum class Direction : std::uint8_t { Send, Get };  // to QuickBooks, from QuickBooks

}  // namespace twqb
