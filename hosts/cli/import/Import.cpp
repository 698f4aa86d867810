#include "cli/import/Import.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <unordered_set>

#include "cli/options/ExitStatus.h"
#include "cli/options/NearestName.h"
#include "engine/WriteBack.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Sql.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kLink = "QBLinkID";
constexpr std::string_view kChanged = "LastUpdated";

// Keys as BillingDb compares them: without case, and without blanks at their end.
std::string Folded(std::string_view key) {
  const auto end = key.find_last_not_of(' ');
  return FoldCase(key.substr(0, end == std::string_view::npos ? 0 : end + 1));
}

// The keys that a column holds.
class KeySet {
 public:
  KeySet() = default;
  KeySet(ado::Connection& connection, std::string_view table, std::string_view column) {
    const auto rows = connection.Execute(Sql("SELECT {} FROM {}", column, table), nullptr);
    for (; !rows->Eof(); rows->MoveNext()) keys_.insert(Folded(ToText(rows->FieldAt(0))));
  }
  [[nodiscard]] bool Has(std::string_view key) const { return keys_.contains(Folded(key)); }
  // False when it is there already.
  bool Add(std::string_view key) { return keys_.insert(Folded(key)).second; }

 private:
  std::unordered_set<std::string> keys_;
};

// The column that makes a row one of the table, and what stands there: "IsSub = -1", or "PayID IS NULL".
struct FixedColumn {
  std::string name;
  Value value = Null();
};
std::optional<FixedColumn> FixedBy(std::string_view condition) {
  constexpr std::string_view kIsNull = " IS NULL";
  constexpr std::string_view kIs = " = ";
  if (condition.ends_with(kIsNull)) {
    return FixedColumn{.name = std::string(condition.substr(0, condition.size() - kIsNull.size()))};
  }
  const auto at = condition.find(kIs);
  const auto text = at == std::string_view::npos ? std::string_view() : condition.substr(at + kIs.size());
  std::int64_t number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec != std::errc() || read.ptr != text.data() + text.size()) return std::nullopt;
  return FixedColumn{.name = std::string(condition.substr(0, at)), .value = number};
}

class Planner {
 public:
  Planner(ado::Connection& connection, const Table& table, const std::vector<CsvRecord>& records, const ColumnMap& map)
      : connection_(connection), table_(table), records_(records), columns_(ColumnsOf(connection, table.rows.table)) {
    if (records_.empty()) throw UsageError("The file is empty: its first line has to name the columns.");
    if (!records_.front().trouble.empty()) {
      throw UsageError(fmt::format("Line {}: {}.", records_.front().line, records_.front().trouble));
    }
    ReadHeading(map);
    ReadKeys();
  }

  ImportPlan Make() && {
    FindDayFirst();
    for (std::size_t i = 1; i < records_.size(); ++i) TakeRecord(records_[i]);
    CheckParents();
    return std::move(plan_);
  }

 private:
  // Where a column of the file goes.
  struct Target {
    const ImportColumn* column = nullptr;  // nothing: nowhere
    DayFirst dates = DayFirst::No;
  };

  [[nodiscard]] const ImportColumn* Find(std::string_view name) const {
    const auto found = std::ranges::find_if(columns_, [&](const auto& column) { return SameName(column.name, name); });
    return found == columns_.end() ? nullptr : &*found;
  }
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& column : columns_) names.push_back(column.name);
    return names;
  }

  // --- The heading

  void ReadHeading(const ColumnMap& map) {
    std::vector<std::string> names;
    for (const auto& field : records_.front().fields) names.push_back(Trim(field));
    if (names.size() == 1 && names.front().find_first_of(";\t") != std::string::npos) {
      throw UsageError("The columns of the file have semicolons or tabs between them. Save it with commas.");
    }
    for (const auto& [from, to] : map) {
      if (std::ranges::find(names, from) == names.end()) {
        throw UsageError(fmt::format("--map: the file has no column \"{}\".{}", from, DidYouMean(from, names)));
      }
    }
    for (const auto& name : names) {
      if (name.empty()) {
        PassOverNameless(targets_.size());
        continue;
      }
      const auto mapped = map.find(name);
      AddTarget(name, mapped == map.end() ? name : mapped->second, mapped != map.end());
    }
    plan_.fileColumns = plan_.columns.size();
    if (plan_.columns.empty()) throw UsageError("No column of the file goes anywhere.");
    AddOwnColumns();
    for (const auto& column : columns_) {
      if ((column.isRequired || column.isKey) && !IsFilled(column.name)) {
        throw UsageError(
            fmt::format("The file has no column {}, and no row can do without it. Name the one that holds "
                        "it with --map.",
                        column.name));
      }
    }
  }

  // Spreadsheets write empty columns behind the data.
  void PassOverNameless(std::size_t place) {
    const auto holds = [&](const CsvRecord& record) {
      return place < record.fields.size() && !Trim(record.fields[place]).empty();
    };
    const auto found = std::ranges::find_if(records_, holds);
    if (found != records_.end()) {
      throw UsageError(
          fmt::format("Column {} has no name in the first line, and line {} has something in it. Give it a "
                      "name there, or take it out.",
                      place + 1, found->line));
    }
    targets_.push_back({});
  }

  void AddTarget(const std::string& name, const std::string& to, bool isMapped) {
    if (to.empty() && isMapped) {
      targets_.push_back({});
      return;
    }
    const auto* column = Find(to);
    if (column == nullptr) {
      throw UsageError(
          fmt::format("{} has no column \"{}\".{}\n--map \"{}=COLUMN\" names the one that it goes into, "
                      "and --map \"{}=\" leaves it out.",
                      table_.rows.table, to, DidYouMean(to, Names()), name, name));
    }
    if (SameName(column->name, kLink)) {
      throw UsageError(fmt::format("{} is made by the link alone. --map \"{}=\" leaves it out.", kLink, name));
    }
    if (IsFilled(column->name)) throw UsageError(fmt::format("Two columns of the file go into {}.", column->name));
    targets_.push_back({.column = column});
    plan_.columns.push_back(column->name);
  }

  [[nodiscard]] bool IsFilled(std::string_view column) const {
    return std::ranges::any_of(plan_.columns, [&](const auto& name) { return SameName(name, column); });
  }

  // What rows of the program's own have.
  void AddOwnColumns() {
    const auto add = [&](std::string_view name, const Value& value) {
      if (name.empty() || Find(name) == nullptr || IsFilled(name)) return;
      plan_.columns.emplace_back(name);
      own_.push_back(value);
    };
    makesKey_ = !table_.rows.madeKey.empty() && !IsFilled(table_.rows.madeKey);
    add(table_.rows.madeKey, std::string());
    fixed_ = FixedBy(table_.rows.condition);
    if (fixed_) add(fixed_->name, fixed_->value);
    constexpr std::int64_t kSecond = Date::kSecond;
    const auto now = LocalToUTC(TheMachine().Now()).Milliseconds();
    add(kChanged, Date::FromMilliseconds(now - now % kSecond));
  }

  void ReadKeys() {
    for (const auto& column : columns_) {
      if (!column.isKey) continue;
      key_ = column.name;
      keys_ = KeySet(connection_, table_.rows.table, key_);
      return;
    }
  }

  void FindDayFirst() {
    for (std::size_t i = 0; i < targets_.size(); ++i) {
      if (targets_[i].column == nullptr || targets_[i].column->type != ColumnType::Date) continue;
      const bool isDayFirst = std::any_of(records_.begin() + 1, records_.end(), [&](const CsvRecord& record) {
        return i < record.fields.size() && IsDayFirst(Trim(record.fields[i]));
      });
      if (isDayFirst) targets_[i].dates = DayFirst::Yes;
    }
  }

  // --- The rows

  void Refuse(std::size_t line, std::string_view column, std::string reason) {
    if (plan_.refused.empty() || plan_.refused.back().line != line) ++plan_.refusedRows;
    plan_.refused.push_back({.line = line, .column = std::string(column), .reason = std::move(reason)});
  }

  void TakeRecord(const CsvRecord& record) {
    const auto refusedBefore = plan_.refused.size();
    if (!record.trouble.empty()) {
      Refuse(record.line, "", record.trouble);
    } else if (record.fields.size() != targets_.size()) {
      Refuse(record.line, "",
             fmt::format("it has {} field{}, and the heading {}", record.fields.size(),
                         record.fields.size() == 1 ? "" : "s", targets_.size()));
    }
    if (plan_.refused.size() != refusedBefore) return;
    ImportRow row{.line = record.line, .values = {}};
    for (std::size_t i = 0; i < targets_.size(); ++i) {
      if (targets_[i].column != nullptr) row.values.push_back(Taken(record, *targets_[i].column, i));
    }
    row.values.insert(row.values.end(), own_.begin(), own_.end());
    if (makesKey_) row.values[plan_.fileColumns] = GenerateGUID();
    CheckKey(row);
    CheckFixed(row);
    if (plan_.refused.size() == refusedBefore) plan_.rows.push_back(std::move(row));
  }

  Value Taken(const CsvRecord& record, const ImportColumn& column, std::size_t field) {
    auto read = ReadField(column, record.fields[field], targets_[field].dates);
    if (!read.refused.empty()) {
      Refuse(record.line, column.name, fmt::format("\"{}\" {}", record.fields[field], read.refused));
    } else if (IsNull(read.value) && (column.isRequired || column.isKey)) {
      Refuse(record.line, column.name, "it is empty, and no row can do without it");
    }
    return std::move(read.value);
  }

  [[nodiscard]] std::string TextIn(const ImportRow& row, std::string_view column) const {
    for (std::size_t i = 0; i < plan_.columns.size(); ++i) {
      if (SameName(plan_.columns[i], column)) return ToText(row.values[i]);
    }
    return {};
  }

  void CheckKey(const ImportRow& row) {
    const auto key = TextIn(row, key_);
    if (key.empty()) return;
    const auto condition = KeyCondition(key_, key);
    if (CatchError([&] { static_cast<void>(static_cast<std::string_view>(condition)); })) {
      Refuse(row.line, key_,
             "a key has no quotation mark in it: nothing could be written to the row, not its link either");
    } else if (keys_.Has(key) && !ownKeys_.Has(key)) {
      Refuse(row.line, key_, fmt::format("\"{}\" is in BillingDb already", key));
    } else if (!ownKeys_.Add(key)) {
      Refuse(row.line, key_, fmt::format("\"{}\" stands in the file twice", key));
    }
    keys_.Add(key);
  }

  void CheckFixed(const ImportRow& row) {
    if (!fixed_ || !IsFilled(fixed_->name)) return;
    const auto text = TextIn(row, fixed_->name);
    const auto fixed = ToText(fixed_->value);
    if (text == fixed) return;
    Refuse(row.line, fixed_->name,
           fmt::format("\"{}\" makes it no row of this table: it has to be {}", text, fixed.empty() ? "empty" : fixed));
  }

  // Behind all rows: one may stand under another of the file.
  void CheckParents() {
    std::unordered_set<std::size_t> orphans;
    for (const auto& parent : table_.parents) {
      const bool isOwn = SameName(parent.table, table_.rows.table);
      const auto keys = isOwn ? keys_ : KeySet(connection_, parent.table, parent.key);
      for (const auto& row : plan_.rows) {
        const auto name = TextIn(row, parent.column);
        if (name.empty() || keys.Has(name)) continue;
        orphans.insert(row.line);
        plan_.refused.push_back({.line = row.line,
                                 .column = std::string(parent.column),
                                 .reason = fmt::format("there is no {} \"{}\"", parent.table, name)});
      }
    }
    std::erase_if(plan_.rows, [&](const ImportRow& row) { return orphans.contains(row.line); });
    plan_.refusedRows += orphans.size();
    std::ranges::stable_sort(plan_.refused, {}, &RefusedField::line);
  }

  ado::Connection& connection_;
  const Table& table_;
  const std::vector<CsvRecord>& records_;
  std::vector<ImportColumn> columns_;
  std::vector<Target> targets_;  // one for each column of the file
  std::vector<Value> own_;       // of the columns behind the file's
  std::optional<FixedColumn> fixed_;
  bool makesKey_ = false;
  std::string key_;  // its column
  KeySet keys_;      // those of BillingDb and of the file
  KeySet ownKeys_;   // those of the file
  ImportPlan plan_;
};

}  // namespace

ColumnMap ReadColumnMap(std::string_view text) {
  ColumnMap map;
  if (text.empty()) return map;
  for (const auto& pair : Split(text, ',')) {
    const auto sign = pair.find('=');
    const auto from = Trim(pair.substr(0, sign));
    if (sign == std::string::npos || from.empty()) {
      throw UsageError(fmt::format("--map: \"{}\" is not FILE-COLUMN=DB-COLUMN.", pair));
    }
    if (!map.emplace(from, Trim(pair.substr(sign + 1))).second) {
      throw UsageError(fmt::format("--map names \"{}\" twice.", from));
    }
  }
  return map;
}

ImportPlan PlanImport(ado::Connection& connection, const Table& table, const std::vector<CsvRecord>& records,
                      const ColumnMap& map) {
  return Planner(connection, table, records, map).Make();
}

void AddRows(ado::Connection& connection, const Table& table, const ImportPlan& plan, std::size_t& line) {
  connection.Execute("BEGIN IMMEDIATE", nullptr);
  try {
    const auto rows = connection.OpenRecordset(Sql("SELECT * FROM {};", table.rows.table), ado::CursorType::Static,
                                               ado::LockType::Optimistic);
    for (const auto& row : plan.rows) {
      line = row.line;
      rows->AddNew();
      for (std::size_t i = 0; i < plan.columns.size(); ++i) {
        // What is empty gets what the table puts in its place.
        if (!IsNull(row.values[i])) rows->SetField(plan.columns[i], row.values[i]);
      }
      rows->Update();
    }
    rows->Close();
    connection.Execute("COMMIT", nullptr);
  } catch (const PlatformError&) {
    IgnoreErrors([&] { connection.Execute("ROLLBACK", nullptr); });
    throw;
  }
}

}  // namespace twqb::cli
