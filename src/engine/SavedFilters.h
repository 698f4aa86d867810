// What narrows a transfer: the filter values and flags of one table run.
#pragma once

#include <cstdint>
#include <string>

namespace twqb {

// Whether only active records are read. LookUp: as the table's saved setting says.
enum class ActiveOnly : std::int16_t { False = 0, True = -1, LookUp = 2 };

// In a run over all tables the texts carry over from one table to the next where its option is off; the four flags are
// read for every table.
struct SavedFilters {
  std::string Date1a;  // "SKIP": the table is left out
  std::string Date1b;
  std::string Filter1a;
  std::string Filter2a;
  std::string Filter3a;
  std::string Filter1b;
  std::string Filter2b;
  std::string Filter3b;
  std::string From;
  std::string To;
  bool MostRecent = false;
  bool Never = false;
  bool IgnoreLastSync = false;
  bool ActiveOnly = false;
};

}  // namespace twqb
