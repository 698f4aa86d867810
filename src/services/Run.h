// The state of the run in hand: its outcome, the wish to stop, what narrowed it, how it is shown.
//
// A value that is passed to whatever takes part in a run. The rules keep every one of its fields from run to run, and
// the Cancel button must reach it, so the one instance is a part of the module variables; below the dispatch nothing
// looks for it there.
#pragma once

#include <cstdint>

namespace twqb {

// Outcome of the table in hand. `GoOn` is left by a failed record of a get when the user chose to go on; readers that
// ask whether it is set count it as set.
enum class TableOk : std::int16_t { False = 0, True = -1, GoOn = 2 };

struct Run {
  TableOk g_TableOk = TableOk::False;
  bool g_Cancelled = false;      // read after every record
  bool g_FiltersActive = false;  // a filter narrowed the run, or the table was skipped
  bool g_NoQBRecords = false;    // QuickBooks had no records for the query
  bool g_AllTablesRun = false;   // an enAll run keeps the form open between tables
  bool g_NoProgressBar = false;
  bool g_LeaveMsgBoxOpen = false;

  [[nodiscard]] bool ShowsProgress() const { return !g_NoProgressBar; }
};

}  // namespace twqb
