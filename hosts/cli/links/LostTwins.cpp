#include "cli/links/LostTwins.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "adapters/sqlite/SqliteProvider.h"
#include "bridge/Tables.h"
#include "cli/links/TwinNames.h"
#include "cli/options/TableArgument.h"
#include "engine/RecordReader.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/msgForm.h"

namespace twqb::cli {

namespace {

// A field of that name, of a record that may have none of it.
std::string FieldOf(const Record& record, std::string_view name) {
  try {
    return record[name].GetValueOrEmpty();
  } catch (const PlatformError&) {
    return {};
  }
}

std::string NameOf(const Record& record) {
  for (const auto* name : {"FullName", "Name", "RefNumber", "TxnDate"}) {
    if (auto value = FieldOf(record, name); !value.empty()) return value;
  }
  return {};
}

// Rows of costs and hours may be linked to lines.
struct LinesOfRecord {
  std::string_view list;
  std::string_view inside;
};
constexpr std::array kLines = {LinesOfRecord{.list = "ExpenseLineRetList", .inside = ""},
                               LinesOfRecord{.list = "ORItemLineRetList", .inside = "ItemLineRet"},
                               LinesOfRecord{.list = "OREstimateLineRetList", .inside = "EstimateLineRet"}};

void TakeLines(const Record& record, std::set<std::string>& lines) {
  for (const auto& kind : kLines) {
    try {
      const auto list = record[kind.list];
      if (list.IsNothing()) continue;
      for (std::size_t i = 0; i < list.Count(); ++i) {
        const auto entry = list.GetAt(i);
        const auto line = kind.inside.empty() ? entry : entry[kind.inside];
        if (!line.IsNothing()) lines.insert(FieldOf(line, "TxnLineID"));
      }
    } catch (const PlatformError&) {
      continue;  // a kind of record that has no such lines
    }
  }
}

RecordList ReadAll(const Table& table, QuickBooksRead read) {
  // A row may be linked to what its own get would leave to another table.
  read.keeps = Keeps::Everything;
  read.readingText = {};
  read.ofTheRun = OfTheRun::Taken;
  Run& run = Vars();
  RecordList records;
  if (!ApplyQBFiltersAndReadRecords(table, read, records, *Vars().g_QBSession, {}, run) && !run.g_NoQBRecords) {
    throw std::runtime_error(fmt::format("QuickBooks could not be read for {}.", TypedName(table.number)));
  }
  return records;
}

bool IsOfTransactions(const Table& table) { return !table.reads.empty() && table.reads.front().transaction; }

// A file of a set, written out for as long as it is read.
class WrittenOut {
 public:
  WrittenOut(const backup::BackupFolder& backups, const backup::KeptFile& file)
      : path_(fmt::format("{}/{}/then", backups.Folder(), backup::kBackupFolder)) {
    Remove();
    backups.WriteTo(file, path_);
  }
  ~WrittenOut() { Remove(); }
  WrittenOut(const WrittenOut&) = delete;
  WrittenOut& operator=(const WrittenOut&) = delete;

  [[nodiscard]] std::unique_ptr<ado::Connection> Open() const {
    auto connection = SqliteProvider().CreateConnection();
    connection->SetConnectionString(fmt::format("Provider=SQLITE;Data Source=\"{}\"", path_));
    connection->Open();
    return connection;
  }

 private:
  void Remove() const {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  std::string path_;
};

}  // namespace

std::vector<LostTwins::Row> LostTwins::RowsOf(ado::Connection& connection, const Table& table) {
  std::vector<Row> rows;
  const auto found = connection.Execute(
      Sql("SELECT * FROM {} WHERE {} AND QBLinkID <> ''", table.rows.table, Sql::Own(table.rows.condition)), nullptr);
  for (; !found->Eof(); found->MoveNext()) {
    rows.push_back(
        {.key = ToText(found->FieldAt(0)), .id = ToText(found->Field("QBLinkID")), .name = WordsOfRow(*found)});
  }
  return rows;
}

std::set<std::string> LostTwins::KeysOf(ado::Connection& connection, const Table& table) {
  std::set<std::string> keys;
  const auto found = connection.Execute(Sql("SELECT * FROM {}", table.rows.table), nullptr);
  for (; !found->Eof(); found->MoveNext()) keys.insert(FoldCase(ToText(found->FieldAt(0))));
  return keys;
}

void LostTwins::Read(const Table& table) {
  if (records_.contains(&table)) return;
  auto& names = records_[&table];
  for (const auto& several : table.reads) {
    for (const auto& read : EachKindOf(several)) {
      for (const auto& record : ReadAll(table, read)) {
        names.emplace(FieldOf(record, read.transaction ? "TxnID" : "ListID"), NameOf(record));
        if (read.transaction) TakeLines(record, lines_);
      }
    }
  }
}

// A row may be linked to what another table brings: hours to a bill, an employee who has become a vendor.
void LostTwins::ReadOthers(const Table& table) {
  for (const auto* other : Tables()) {
    if (!other->reads.empty() && IsOfTransactions(*other) == IsOfTransactions(table)) Read(*other);
  }
}

// A set may be of another database, which lacks the table.
std::vector<LostTwins::Row> LostTwins::RowsOfSet(ado::Connection& connection, const Table& table) {
  try {
    return RowsOf(connection, table);
  } catch (const PlatformError&) {
    return {};
  }
}

// The newest set comes first; each state of BillingDb is looked at once.
void LostTwins::ReadSets(const std::vector<const Table*>& tables) {
  constexpr std::uint64_t kMostRead = std::uint64_t{1} << 30U;
  std::uint64_t read = 0;
  std::set<std::string> seen;
  auto sets = backups_.Sets();
  std::ranges::reverse(sets);
  for (const auto& set : sets) {
    for (const auto* files : {set.end ? &set.end->files : nullptr, &set.manifest.files}) {
      if (files == nullptr) continue;
      const auto billing = std::ranges::find(*files, backup::Part::Billing, &backup::KeptFile::part);
      if (billing == files->end() || !billing->isThere || !seen.insert(billing->content.pieces).second) continue;
      read += billing->content.size;
      if (read > kMostRead && seen.size() > 1) return;
      const WrittenOut file(backups_, *billing);
      const auto connection = file.Open();
      for (const auto* table : tables) {
        for (const auto& row : RowsOfSet(*connection, *table)) {
          const LostTwin twin{.gone = Gone::Row, .table = table, .id = row.id, .name = row.name, .set = set.name};
          if (rowsOfSets_[table].emplace(row.id, twin).second)
            keysOfSets_.emplace(std::pair(table, row.id), FoldCase(row.key));
        }
      }
    }
  }
}

std::vector<LostTwin> LostTwins::Find(const std::vector<const Table*>& tables) {
  const auto connection = composition_.Seams().database->CreateConnection();
  connection->SetConnectionString(composition_.Place().billing);
  connection->Open();
  std::set<std::string> linked;
  for (const auto* table : Tables()) {
    for (const auto& row : RowsOf(*connection, *table)) linked.insert(row.id);
  }
  ReadSets(tables);
  std::vector<LostTwin> twins;
  for (const auto* table : tables) {
    if (table->reads.empty()) continue;
    ReadOthers(*table);
    const auto isThere = [&](const std::string& id) {
      return lines_.contains(id) ||
             std::ranges::any_of(records_, [&](const auto& entry) { return entry.second.contains(id); });
    };
    for (const auto& row : RowsOf(*connection, *table)) {
      if (isThere(row.id)) continue;
      twins.push_back({.gone = Gone::Record, .table = table, .id = row.id, .name = row.name});
    }
    const auto keys = KeysOf(*connection, *table);
    for (const auto& [id, twin] : rowsOfSets_[table]) {
      const auto record = records_[table].find(id);
      if (record == records_[table].end() || linked.contains(id) || keys.contains(keysOfSets_[{table, id}])) {
        continue;
      }
      twins.push_back(twin);
      twins.back().record = record->second;
    }
  }
  // Each reading has shown it.
  IgnoreErrors([] { UnloadMsgForm(); });
  return twins;
}

}  // namespace twqb::cli
