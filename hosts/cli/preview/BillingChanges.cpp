#include <fmt/core.h>

#include <cstddef>
#include <memory>
#include <utility>

#include "adapters/preview/CopiedDatabase.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "cli/preview/PreviewChanges.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "services/Errors.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kLinkColumn = "QBLinkID";

std::string Quoted(std::string_view name) { return fmt::format("\"{}\"", ReplaceAll(name, "\"", "\"\"")); }

std::optional<std::string> TextOf(const Value& value) {
  if (IsNull(value)) return std::nullopt;
  if (const auto* date = std::get_if<Date>(&value)) return IsoDate(*date);
  return ToText(value);
}

struct Column {
  std::string name;
  int placeInKey = 0;  // from 1; 0: it is no part of it
};

// One table as it is on both sides.
class TableDifference {
 public:
  TableDifference(ado::Connection& connection, std::string table) : connection_(connection), table_(std::move(table)) {
    const auto columns = connection_.Execute(
        fmt::format("SELECT name, pk FROM pragma_table_info('{}')", ReplaceAll(table_, "'", "''")), nullptr);
    for (; !columns->Eof(); columns->MoveNext()) {
      columns_.push_back({.name = ToText(columns->FieldAt(0)),
                          .placeInKey = static_cast<int>(LeadingNumber(ToText(columns->FieldAt(1))))});
    }
    if (!HasRowNumbers()) FindRowsByKey();
  }

  void AddTo(std::vector<RecordChange>& changes) {
    if (number_.empty()) return;
    std::string differs;
    for (const auto& column : columns_) {
      // Whatever the column's own collation calls equal: upper and lower case differ.
      differs += fmt::format(" OR a.{0} COLLATE BINARY IS NOT b.{0}", Quoted(column.name));
    }
    TakeRows(fmt::format("{0} LEFT JOIN before_run.{1} AS b ON {2} WHERE b.{3} IS NULL{4} ORDER BY a.{3}",
                         Selected("main", "a", "b"), Quoted(table_), sameRow_, number_, differs),
             [&](const Row& row) { changes.push_back(ChangeOf(row.first, row.second, row.isThere)); });
    TakeRows(fmt::format("{0} LEFT JOIN main.{1} AS a ON {2} WHERE a.{3} IS NULL ORDER BY b.{3}",
                         Selected("before_run", "b", "a"), Quoted(table_), sameRow_, number_),
             [&](const Row& row) {
               auto change = ChangeOf(row.first, row.second, false);
               change.kind = ChangeKind::Removed;
               for (auto& field : change.fields) std::swap(field.before, field.after);
               changes.push_back(std::move(change));
             });
  }

 private:
  using Texts = std::vector<std::optional<std::string>>;
  struct Row {
    bool isThere = false;  // on the second side
    Texts first;
    Texts second;
  };

  [[nodiscard]] std::string Selected(std::string_view side, std::string_view first, std::string_view second) const {
    auto list = fmt::format("SELECT {0}.{2}, {1}.{2} IS NOT NULL", first, second, number_);
    for (const auto& alias : {first, second}) {
      for (const auto& column : columns_) list += fmt::format(", {}.{}", alias, Quoted(column.name));
    }
    return fmt::format("{} FROM {}.{} AS {}", list, side, Quoted(table_), first);
  }

  // Copies are made page by page, so that a row has one number on both sides.
  [[nodiscard]] bool HasRowNumbers() const {
    bool has = false;
    IgnoreErrors([&] {
      connection_.Execute(fmt::format("SELECT rowid FROM main.{} WHERE 1 = 0", Quoted(table_)), nullptr);
      has = true;
    });
    return has;
  }

  void FindRowsByKey() {
    std::vector<std::string> same;
    number_.clear();
    for (const auto& column : columns_) {
      if (column.placeInKey == 0) continue;
      number_ = Quoted(column.name);
      same.push_back(fmt::format("a.{0} = b.{0}", number_));
    }
    sameRow_ = Join(same, " AND ");
  }

  template <typename Take>
  void TakeRows(const std::string& statement, Take take) {
    const auto rows = connection_.Execute(statement, nullptr);
    for (; !rows->Eof(); rows->MoveNext()) {
      rowInHand_ = ToText(rows->FieldAt(0));
      Row row;
      row.isThere = ToText(rows->FieldAt(1)) != "0";
      constexpr std::size_t kAhead = 2;
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        row.first.push_back(TextOf(rows->FieldAt(static_cast<int>(kAhead + i))));
        row.second.push_back(TextOf(rows->FieldAt(static_cast<int>(kAhead + columns_.size() + i))));
      }
      take(row);
    }
  }

  [[nodiscard]] RecordChange ChangeOf(const Texts& now, const Texts& then, bool wasThere) const {
    RecordChange change = {.side = ChangedSide::Billing,
                           .kind = wasThere ? ChangeKind::Changed : ChangeKind::Added,
                           .place = table_,
                           .key = KeyOf(now)};
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (SameName(columns_[i].name, kLinkColumn)) {
        change.identifier = now[i] && !now[i]->empty() ? *now[i] : then[i].value_or("");
      }
      if (now[i] == then[i]) continue;
      change.fields.push_back({.field = columns_[i].name, .before = then[i], .after = now[i]});
    }
    return change;
  }

  [[nodiscard]] std::string KeyOf(const Texts& values) const {
    std::vector<std::string> parts;
    for (int place = 1; std::cmp_less_equal(place, columns_.size()); ++place) {
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].placeInKey == place) parts.push_back(values[i].value_or(""));
      }
    }
    return parts.empty() ? fmt::format("row {}", rowInHand_) : Join(parts, ",");
  }

  ado::Connection& connection_;
  std::string table_;
  std::vector<Column> columns_;
  std::string number_ = "rowid";               // the column that no row is without; empty: there is none
  std::string sameRow_ = "a.rowid = b.rowid";  // on both sides
  std::string rowInHand_;
};

}  // namespace

std::vector<RecordChange> BillingChanges(const std::string& connection, const preview::ScratchFile& billing) {
  const auto compared = SqliteProvider().CreateConnection();
  compared->SetConnectionString(preview::ConnectionTo(connection, billing.worked));
  compared->Open();
  compared->Execute(fmt::format("ATTACH DATABASE '{}' AS before_run", ReplaceAll(billing.before, "'", "''")), nullptr);
  std::vector<std::string> tables;
  const auto names = compared->Execute(
      "SELECT name FROM main.sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite~_%' ESCAPE '~' AND name IN "
      "(SELECT name FROM before_run.sqlite_master WHERE type = 'table') ORDER BY name",
      nullptr);
  for (; !names->Eof(); names->MoveNext()) tables.push_back(ToText(names->FieldAt(0)));
  std::vector<RecordChange> changes;
  for (const auto& table : tables) TableDifference(*compared, table).AddTo(changes);
  std::erase_if(changes, [](const RecordChange& change) { return change.fields.empty(); });
  compared->Execute("DETACH DATABASE before_run", nullptr);
  compared->Close();
  return changes;
}

}  // namespace twqb::cli
