// What differs between two states of a side, or of a file of settings, as lines for people and for programs.
//
// The earlier state is the one of a set. Tables of BillingDb are told by their names, records of the company file by
// their kinds; what else it keeps is told as one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/backup/Manifest.h"
#include "adapters/storage/TableDifferences.h"

namespace twqb::cli {

struct Options;

struct SideDifferences {
  backup::Part part = backup::Part::Billing;
  std::vector<storage::TableDifference> tables;  // only those that differ; of settings the entries, and the comments
  std::vector<std::string> entries;              // of settings: "[QBSEND_] Clients_LastSendAt"
  bool isUnreadable = false;
  bool isFileAlone = false;  // nothing of all that differs, and yet the file is another one: damaged, perhaps

  [[nodiscard]] bool IsNone() const { return tables.empty() && !isUnreadable && !isFileAlone; }
};

// An empty path is a file that was not there.
[[nodiscard]] SideDifferences DifferencesOf(backup::Part part, const std::string& now, const std::string& before);

// As a table; nothing when nothing differs.
void PrintDifferenceTable(const Options& options, const std::vector<SideDifferences>& sides);
// A JSON object a line.
[[nodiscard]] std::string DifferenceLines(const std::vector<SideDifferences>& sides);

}  // namespace twqb::cli
