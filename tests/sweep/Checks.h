// What must hold on both sides after a run that broke, and after the clean run behind it.
//
// Pure comparisons of snapshots with those of a clean run; each finding is a sentence in the list that comes back.
#pragma once

#include <vector>

#include "Child.h"
#include "Snapshot.h"
#include "Trace.h"

namespace twqb::sweep {

// The data of a scenario before its transfers and after a clean run of them.
struct Expectation {
  std::vector<LinkedTable> tables;
  Snapshot before;
  Snapshot after;
};

// Right after the break: both files sound; every row and every record as a whole either as before or as after a clean
// run, none lost, none of another name; and no record without its row but the one in work, where `leaves` has it.
[[nodiscard]] Problems CheckBroken(const Snapshot& now, const Expectation& expected, Leaves leaves);

// After the clean run: both sides as after a clean run alone (times aside), but for what `leaves` says.
[[nodiscard]] Problems CheckInStep(const Snapshot& now, const Expectation& expected, Leaves leaves);

}  // namespace twqb::sweep
