// What is swept: the scenarios of each table, and of runs over all of them. A further table adds its function here and
// one line to the test.
#pragma once

#include <vector>

#include "Sweep.h"

namespace twqb::sweep {

[[nodiscard]] std::vector<Scenario> ClientScenarios();
[[nodiscard]] std::vector<Scenario> AllTablesScenarios();

}  // namespace twqb::sweep
