// Rows whose twin is gone in QuickBooks, and records of QuickBooks whose row is gone.
//
// QuickBooks is read as a get reads it, whole, and BillingDb through the seams. Which rows there were only the kept
// sets know: a row that was linked and went before the oldest of them is not found. It changes nothing.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "adapters/backup/BackupFolder.h"
#include "cli/runs/Composition.h"
#include "engine/Table.h"

namespace twqb::cli {

enum class Gone : std::uint8_t { Record, Row };

struct LostTwin {
  Gone gone = Gone::Record;
  const Table* table = nullptr;
  std::string id;           // in QuickBooks
  std::string name;         // of the row, as people know it
  std::string record = {};  // the record's name, of one that is there
  std::string set = {};     // the last one in which the row was
};

class LostTwins {
 public:
  // With a session. Both must outlive the object.
  LostTwins(Composition& composition, const backup::BackupFolder& backups)
      : composition_(composition), backups_(backups) {}

  // Of these tables; one that nothing is got of is passed over. Raises PlatformError, and std::runtime_error when
  // QuickBooks can't be read.
  [[nodiscard]] std::vector<LostTwin> Find(const std::vector<const Table*>& tables);

 private:
  struct Row {
    std::string key;
    std::string id;
    std::string name;
  };
  using Records = std::map<std::string, std::string>;  // their names by their identifiers

  [[nodiscard]] static std::vector<Row> RowsOf(ado::Connection& connection, const Table& table);
  [[nodiscard]] static std::vector<Row> RowsOfSet(ado::Connection& connection, const Table& table);
  [[nodiscard]] static std::set<std::string> KeysOf(ado::Connection& connection, const Table& table);
  void Read(const Table& table);
  void ReadOthers(const Table& table);
  void ReadSets(const std::vector<const Table*>& tables);

  Composition& composition_;
  const backup::BackupFolder& backups_;
  std::map<const Table*, Records> records_;
  std::set<std::string> lines_;                                         // of transactions
  std::map<const Table*, std::map<std::string, LostTwin>> rowsOfSets_;  // by identifier, as the newest set knows them
  std::map<std::pair<const Table*, std::string>, std::string> keysOfSets_;  // folded, by table and identifier
};

}  // namespace twqb::cli
