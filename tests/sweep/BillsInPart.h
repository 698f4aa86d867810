// What must hold where a bill went with a part of its lines, or where a part of its rows knows its line: a look-up
// failed that a line can't go without, or the run broke between the links of two lines.
//
// The rows that stayed behind are billed by the next run, or stay, where the bill is a row of its own and knows its
// twin.
#pragma once

#include "Checks.h"

namespace twqb::sweep {

// Right after the break, and after the clean run behind it.
enum class BillsAt : std::uint8_t { Broken, InStep };

[[nodiscard]] Problems CheckBillInPart(const Snapshot& now, const Expectation& expected, BillsAt when);

}  // namespace twqb::sweep
