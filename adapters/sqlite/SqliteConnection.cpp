#include "adapters/sqlite/SqliteConnection.h"

#include <fmt/core.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "adapters/sqlite/ConnectionText.h"
#include "adapters/sqlite/Failure.h"
#include "adapters/sqlite/Phrases.h"
#include "adapters/sqlite/SnapshotRecordset.h"
#include "adapters/sqlite/SqlTranslator.h"
#include "adapters/sqlite/TableRecordset.h"
#include "platform/Text.h"

namespace twqb::sqlite {

namespace {

std::chrono::milliseconds Patience(int timeoutSeconds) {
  constexpr std::chrono::milliseconds kWithoutEnd{std::numeric_limits<int>::max()};
  if (timeoutSeconds <= 0) return kWithoutEnd;
  return std::min<std::chrono::milliseconds>(std::chrono::seconds(timeoutSeconds), kWithoutEnd);
}

std::unique_ptr<ado::Recordset> FetchAll(const std::shared_ptr<Database>& database, Statement& statement) {
  auto columns = DescribeColumns(statement);
  CompactRows rows;
  constexpr int kSkipNone = 0;
  std::vector<Value> row;
  while (statement.Step()) {
    ReadRow(statement, columns, kSkipNone, row);
    rows.Add(row);
  }
  return std::make_unique<SnapshotRecordset>(database, std::move(columns), std::move(rows));
}

}  // namespace

SqliteConnection::~SqliteConnection() {
  if (database_) database_->Close();
}

ado::ObjectState SqliteConnection::State() const {
  return database_ ? ado::ObjectState::Open : ado::ObjectState::Closed;
}

void SqliteConnection::RequireOpen() const {
  if (!database_) throw PlatformError(error::kObjectClosed);
}

void SqliteConnection::SetMode(ado::ConnectMode /*mode*/) {}
void SqliteConnection::SetCursorLocation(ado::CursorLocation /*location*/) {}
void SqliteConnection::SetConnectionTimeout(int seconds) { timeoutSeconds_ = seconds; }
std::string SqliteConnection::ConnectionString() const { return connectionString_; }
void SqliteConnection::SetConnectionString(std::string text) { connectionString_ = std::move(text); }
std::string SqliteConnection::Provider() const { return ParseConnectionText(connectionString_).provider; }

void SqliteConnection::Open() {
  if (database_) throw PlatformError(error::kObjectOpen);
  const auto [provider, file, mode] = ParseConnectionText(connectionString_);
  if (!NamesEmbeddedEngine(connectionString_)) {
    throw Failure(error::kProviderNotFound,
                  provider.empty() ? "The connection string names no Provider." : fmt::format("({})", provider));
  }
  if (file.empty()) throw Failure(error::kCannotOpen, "The connection string names no Data Source.");
  const auto access = SameName(mode, "Read") ? Access::Read : Access::ReadWrite;
  database_ = std::make_shared<Database>(pool_, file, access, Patience(timeoutSeconds_));
}

void SqliteConnection::Close() {
  RequireOpen();
  database_->Close();
  database_.reset();
}

std::unique_ptr<ado::Recordset> SqliteConnection::Execute(std::string_view statement, std::int64_t* rowsAffected) {
  RequireOpen();
  auto prepared = database_->Prepare(TranslateSql(statement), Use::Once);
  database_->BeforeRun(prepared);
  const auto before = database_->TotalRowsChanged();
  std::unique_ptr<ado::Recordset> recordset;
  if (prepared.ColumnCount() > 0) {
    recordset = FetchAll(database_, prepared);
  } else {
    prepared.Step();
    recordset = std::make_unique<SnapshotRecordset>();
  }
  database_->AfterRun(prepared);
  // The engine's count of the last change outlives statements that change nothing.
  if (rowsAffected != nullptr) *rowsAffected = database_->TotalRowsChanged() == before ? 0 : database_->RowsChanged();
  return recordset;
}

std::unique_ptr<ado::Recordset> SqliteConnection::OpenRecordset(std::string_view statement, ado::CursorType /*cursor*/,
                                                                ado::LockType lock) {
  RequireOpen();
  if (lock == ado::LockType::Optimistic) return TableRecordset::Open(database_, ParseOpening(statement));
  auto prepared = database_->Prepare(TranslateSql(statement), Use::Once);
  if (prepared.ColumnCount() == 0) throw Failure(error::kBadSyntax, "The statement answers no rows.");
  database_->BeforeRun(prepared);
  auto recordset = FetchAll(database_, prepared);
  database_->AfterRun(prepared);
  return recordset;
}

}  // namespace twqb::sqlite
