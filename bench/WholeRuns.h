// Runs over all tables, measured: each against its floor, what it takes of memory, and where its time goes.
//
// For the benches of whole firms, which make the bases. Prints tables for docs/performance.md.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/Runs.h"
#include "twqb/enTables.h"

namespace twqb {

struct WholeRun {
  std::string_view name;
  std::string base;  // its folder
  TimedRun run;
};

// How many records of a table the run is about; 0: it is not told of.
using RecordsOf = std::function<int(enTables table)>;

// A line for each: seconds of the library and of the floor, durable writes, and peak memory, for which the process must
// have held little by then. True when each that takes a tenth of a second is at most 1.3 times
// its floor.
[[nodiscard]] bool PrintWholeRuns(std::string_view title, const std::vector<WholeRun>& runs);

// Where the time of a run goes, by table and seam. `smaller`, where it is given, is the same run of a tenth of the
// records, against which the time of a record is held: true when no table's is more than 1.2 times as long.
bool PrintShares(const WholeRun& run, const RecordsOf& records, const WholeRun* smaller = nullptr,
                 const RecordsOf& smallerRecords = {});

}  // namespace twqb
