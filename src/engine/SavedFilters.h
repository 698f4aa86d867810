// What narrows a transfer: the filter values and flags of one table run.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "engine/ConflictRule.h"

namespace twqb {

// Whether only active records are read. LookUp: as the table's saved setting says.
enum class ActiveOnly : std::int16_t { False = 0, True = -1, LookUp = 2 };

// In a run over all tables the texts carry over from one table to the next where its option is off; the four flags are
// read for every table.
struct SavedFilters {
  bool skipsTable = false;  // the table is left out; nothing else was read
  std::string Date1a;
  std::string Date1b;
  std::string Filter1a;
  std::string Filter2a;  // of a get: not empty, the identifier of the one record that is read
  std::string Filter3a;
  std::string Filter1b;
  std::string Filter2b;
  std::string Filter3b;
  std::string From;
  std::string To;
  TwinRule rule = TwinRule::Overwrite;  // of a record with a twin
  bool IgnoreLastSync = false;
  bool ActiveOnly = false;

  // The one record of that identifier, and no other filter.
  [[nodiscard]] static SavedFilters OneToGet(std::string_view identifier) {
    SavedFilters filters;
    filters.Filter2a = identifier;
    return filters;
  }
};

}  // namespace twqb
