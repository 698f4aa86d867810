#include "adapters/sqlite/TableRecordset.h"

#include <fmt/core.h>

#include <limits>

#include "adapters/sqlite/Failure.h"
#include "adapters/sqlite/Phrases.h"
#include "adapters/sqlite/SqlTokens.h"
#include "platform/Text.h"

namespace twqb::sqlite {

namespace {

constexpr auto kFirstRowid = std::numeric_limits<std::int64_t>::min();
constexpr auto kLastRowid = std::numeric_limits<std::int64_t>::max();
constexpr int kRowidColumn = 0;  // of every statement that reads a row
constexpr int kSkipRowid = 1;

std::string RowAtOrBehindText(std::string_view table, std::string_view condition) {
  return fmt::format("SELECT rowid, * FROM {} WHERE rowid >= ?1 AND {} ORDER BY rowid LIMIT 1", table, condition);
}

}  // namespace

std::unique_ptr<TableRecordset> TableRecordset::Open(std::shared_ptr<Database> database, const OpenedTable& opened) {
  auto quoted = QuoteName(opened.table);
  auto condition = opened.filledColumn.empty() ? "1" : QuoteName(opened.filledColumn) + " IS NOT NULL";
  database->RefreshAtTimes();
  auto columns = ColumnsOf(database->Kept(RowAtOrBehindText(quoted, condition)), kSkipRowid);
  return std::unique_ptr<TableRecordset>(
      new TableRecordset(std::move(database), std::move(columns), std::move(quoted), std::move(condition)));
}

TableRecordset::TableRecordset(std::shared_ptr<Database> database, std::shared_ptr<const Columns> columns,
                               std::string quotedTable, std::string condition)
    : SqliteRecordset(std::move(database), std::move(columns)),
      table_(std::move(quotedTable)),
      condition_(std::move(condition)),
      place_(Place::AtOrBehind),
      rowid_(kFirstRowid) {}

void TableRecordset::RequireNoEdit() const {
  RequireOpen();
  if (edit_ != ado::EditMode::None) throw PlatformError(error::kEditPending);
}

void TableRecordset::Close() {
  RequireNoEdit();
  row_.clear();
  LetGo();
}

// ---------------------------------------------------------------------------------------------------------------------
// The current row
// ---------------------------------------------------------------------------------------------------------------------

bool TableRecordset::ReadFrom(Statement& statement) const {
  const bool found = statement.Step();
  if (found) {
    Describe(ColumnsOf(statement, kSkipRowid));
    rowid_ = sqlite3_column_int64(statement.raw(), kRowidColumn);
    row_ = ReadRow(statement, columns(), kSkipRowid);
  }
  place_ = found ? Place::OnRow : Place::Eof;
  return found;
}

void TableRecordset::Locate() const {
  if (place_ == Place::OnRow || place_ == Place::Eof) return;
  auto& statement =
      database().Kept(place_ == Place::Exactly ? fmt::format("SELECT rowid, * FROM {} WHERE rowid = ?1", table_)
                                               : RowAtOrBehindText(table_, condition_));
  const ResetAtEnd reset(statement);
  statement.BindInteger(1, rowid_);
  ReadFrom(statement);
}

bool TableRecordset::Eof() const {
  RequireOpen();
  if (edit_ == ado::EditMode::Add) return false;
  Locate();
  return place_ == Place::Eof;
}

void TableRecordset::MoveFirst() {
  RequireNoEdit();
  place_ = Place::AtOrBehind;
  rowid_ = kFirstRowid;
}

void TableRecordset::MoveNext() {
  RequireNoEdit();
  if (Eof()) throw PlatformError(error::kAtEof);
  if (rowid_ == kLastRowid) {
    place_ = Place::Eof;
    return;
  }
  place_ = Place::AtOrBehind;
  ++rowid_;
}

std::int64_t TableRecordset::RecordCount() const {
  RequireOpen();
  auto& statement = database().Kept(fmt::format("SELECT count(*) FROM {} WHERE {}", table_, condition_));
  const ResetAtEnd reset(statement);
  statement.Step();
  return sqlite3_column_int64(statement.raw(), 0);
}

void TableRecordset::Find(std::string_view criterion) {
  RequireNoEdit();
  const auto [name, text] = ParseCriterion(criterion);
  const auto index = IndexOf(name);
  const auto& column = columns()[index];
  if (place_ == Place::Eof) return;
  // An index on the column holds the rowids in order, so it serves all of the condition and the sorting too.
  auto& statement =
      database().Kept(fmt::format("SELECT rowid, * FROM {} WHERE {} = ?1 AND rowid >= ?2 AND {} ORDER BY rowid LIMIT 1",
                                  table_, QuoteName(column.name), condition_));
  const ResetAtEnd reset(statement);
  statement.BindText(1, text);
  statement.BindInteger(2, rowid_);
  ReadFrom(statement);
}

void TableRecordset::HaveRow() const {
  if (edit_ != ado::EditMode::Add) Locate();
}

void TableRecordset::DescribeAnew() const {
  database().Refresh();
  Describe(ColumnsOf(database().Kept(RowAtOrBehindText(table_, condition_)), kSkipRowid));
  if (place_ != Place::OnRow) return;
  place_ = Place::Exactly;  // to be read again, by the columns that there are
  HaveRow();
}

std::size_t TableRecordset::IndexOf(std::string_view name) const {
  if (const auto index = FindColumn(columns(), name)) return *index;
  DescribeAnew();  // another program may have added it since
  return ColumnIndex(columns(), name);
}

const Value* TableRecordset::Pending(std::string_view column) const {
  for (const auto& [name, value] : pending_) {
    if (SameName(name, column)) return &value;
  }
  return nullptr;
}

Value TableRecordset::Field(std::string_view name) const {
  RequireOpen();
  HaveRow();
  return FieldAt(static_cast<int>(IndexOf(name)));
}

Value TableRecordset::FieldAt(int index) const {
  RequireOpen();
  HaveRow();
  const auto column = CheckedIndex(index);
  if (const auto* value = Pending(columns()[column].name)) return *value;
  if (edit_ == ado::EditMode::Add) return Null{};
  if (Eof()) throw PlatformError(error::kAtEof);
  return row_[column];
}

// ---------------------------------------------------------------------------------------------------------------------
// Edits
// ---------------------------------------------------------------------------------------------------------------------

ado::EditMode TableRecordset::EditState() const {
  RequireOpen();
  return edit_;
}

void TableRecordset::AddNew() {
  RequireNoEdit();
  edit_ = ado::EditMode::Add;
}

void TableRecordset::SetField(std::string_view name, Value value) {
  RequireOpen();
  HaveRow();
  const auto index = IndexOf(name);
  const auto& column = columns()[index];
  if (Eof()) throw PlatformError(error::kAtEof);
  auto assigned = Assignable(column, value);
  for (auto& [known, pending] : pending_) {
    if (SameName(known, column.name)) {
      pending = std::move(assigned);
      return;
    }
  }
  pending_.emplace_back(column.name, std::move(assigned));
  if (edit_ == ado::EditMode::None) edit_ = ado::EditMode::InProgress;
}

std::string TableRecordset::InsertText() const {
  if (pending_.empty()) return fmt::format("INSERT INTO {} DEFAULT VALUES", table_);
  std::string names;
  std::string places;
  for (const auto& [name, value] : pending_) {
    names.append(names.empty() ? "" : ", ").append(QuoteName(name));
    places.append(places.empty() ? "?" : ", ?");
  }
  return fmt::format("INSERT INTO {} ({}) VALUES ({})", table_, names, places);
}

std::string TableRecordset::UpdateText() const {
  std::string changes;
  for (const auto& [name, value] : pending_) {
    changes.append(changes.empty() ? "" : ", ").append(QuoteName(name)).append(" = ?");
  }
  return fmt::format("UPDATE {} SET {} WHERE rowid = ?", table_, changes);
}

void TableRecordset::Write() {
  const bool isNew = edit_ == ado::EditMode::Add;
  auto& statement = database().Kept(isNew ? InsertText() : UpdateText());
  const ResetAtEnd reset(statement);
  database().BeforeRun(statement);
  int parameter = 0;
  for (const auto& [name, value] : pending_) Bind(statement, ++parameter, value);
  if (!isNew) statement.BindInteger(++parameter, rowid_);
  statement.Step();
  if (!isNew && database().RowsChanged() == 0) throw PlatformError(error::kAtEof);
  if (isNew) rowid_ = database().LastRowId();
  place_ = Place::Exactly;  // defaults and rounding by the database show when the row is read again
}

void TableRecordset::Update() {
  RequireOpen();
  if (edit_ == ado::EditMode::None) return;
  try {
    Write();
  } catch (const PlatformError& failure) {
    if (failure.number() != error::kBadSyntax) throw;
    // Another program may have removed a column that was assigned.
    DescribeAnew();
    for (const auto& [name, value] : pending_) static_cast<void>(ColumnIndex(columns(), name));
    throw;
  }
  CancelUpdate();
}

void TableRecordset::CancelUpdate() {
  RequireOpen();
  pending_.clear();
  edit_ = ado::EditMode::None;
}

}  // namespace twqb::sqlite
