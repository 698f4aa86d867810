// Random values of a defined form, whatever generator the bits come from.
//
// The machines of this folder share it. It makes no bits of its own.
#pragma once

#include <cstdint>
#include <random>

#include "platform/machine.h"

namespace twqb {

// At least 0, below 1. One step of the generator; the same sequence with every standard library.
[[nodiscard]] double UnitInterval(std::mt19937_64& generator);
// The same bytes, marked as a random GUID (version 4).
[[nodiscard]] GuidBytes AsRandomGuid(GuidBytes bytes);

}  // namespace twqb
