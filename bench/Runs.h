// One transfer on the files of a folder, timed through the public object and against its floor.
//
// Does not make the files: that is Bases. A transfer that shows a box has not done what is to be measured, and raises;
// but the offer to show the bill that it made.
#pragma once

#include <string>
#include <vector>

#include "bench/FileCounts.h"
#include "bench/Floor.h"
#include "bridge/Tables.h"
#include "twqb/enTables.h"

namespace twqb {

struct TimedRun {
  enTables table;
  Direction direction;
  std::string named = {};  // quoted keys that a host names to a send, in place of the saved filters
};

// What was asked of the files is the same in each repetition; it is counted from the beginning of the transfer until
// both files are in order behind it.
struct Measurement {
  double library = 0;  // seconds
  double floor = 0;
  FileCounts libraryFiles;
  FileCounts floorFiles;
  [[nodiscard]] double Ratio() const { return library / floor; }
};

struct MeasuredRun {
  double seconds = 0;  // of the transfer alone
  FileCounts files;
};

inline constexpr int kRepetitions = 3;  // the median counts

// Copies the files of a base into another folder, which does not know that they are a copy.
void CopyBase(const std::string& from, const std::string& to);

// Carries the run out on the files of the folder, which change.
MeasuredRun TimeLibrary(const std::string& folder, const TimedRun& run, Journal journal = Journal::WrittenAhead);

// Library and floor by turns, each on a copy of the base: the medians.
[[nodiscard]] Measurement Measure(const std::string& base, const TimedRun& run);

// The library on copies of the base, with the journal that both files had before they were written ahead: the median.
[[nodiscard]] MeasuredRun MeasureRollback(const std::string& base, const TimedRun& run);

// Where the time of a run of all tables goes, on a copy of the base.
[[nodiscard]] std::vector<TableShare> SharesOf(const std::string& base, const TimedRun& run);

}  // namespace twqb
