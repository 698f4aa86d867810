#include "adapters/companyfile/Sqlite.h"

#include <sqlite3.h>

#include "adapters/companyfile/CompanyErrors.h"
#include "adapters/storage/Opening.h"

namespace twqb::company {

namespace {

// How long a call waits for another process that is writing.
constexpr int kBusyMilliseconds = 10'000;

void Check(sqlite3* database, bool ok) {
  if (!ok) Raise(kUnexpected, sqlite3_errmsg(database));
}

void Bind(sqlite3* database, sqlite3_stmt* statement, int index, const SqlValue& value) {
  int result = SQLITE_OK;
  if (const auto* number = std::get_if<std::int64_t>(&value)) {
    result = sqlite3_bind_int64(statement, index, *number);
  } else if (const auto* text = std::get_if<std::string_view>(&value)) {
    // An empty view may have no data at all, which would bind NULL.
    result = sqlite3_bind_text64(statement, index, text->empty() ? "" : text->data(), text->size(),
                                 SQLITE_TRANSIENT,  // NOLINT: the engine's own constant
                                 SQLITE_UTF8);
  } else {
    result = sqlite3_bind_null(statement, index);
  }
  Check(database, result == SQLITE_OK);
}

}  // namespace

bool SqliteRows::Next() {
  const int result = sqlite3_step(statement_.get());
  Check(database_, result == SQLITE_ROW || result == SQLITE_DONE);
  return result == SQLITE_ROW;
}

std::string SqliteRows::Text(int column) const {
  const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_.get(), column));
  if (bytes == nullptr) return {};
  return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

std::int64_t SqliteRows::Integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }

void SqliteRows::Reset::operator()(sqlite3_stmt* statement) const {
  sqlite3_reset(statement);
  if (sqlite3_bind_parameter_count(statement) > 0) sqlite3_clear_bindings(statement);
}

void SqliteDatabase::Close::operator()(sqlite3* database) const { storage::CloseInOrder(database); }

void SqliteDatabase::Finalize::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

SqliteDatabase::SqliteDatabase(const std::string& path) {
  sqlite3* opened = nullptr;
  const int result = storage::Open(path, SQLITE_OPEN_READWRITE, &opened);
  database_.reset(opened);
  Check(opened, result == SQLITE_OK);
  if (const auto why = storage::MakeReadable(opened); !why.empty()) Raise(kCannotOpenFile, "Its storage: " + why + ".");
  sqlite3_busy_timeout(opened, kBusyMilliseconds);
}

void SqliteDatabase::SetUp() {
  Check(database_.get(), storage::SetUp(database_.get()) == SQLITE_OK);
  // What a part of a transaction can be taken back to is kept for each page that it writes: not in a file for each.
  RunScript("PRAGMA temp_store = MEMORY");
  storage::EndWriteAhead(database_.get());
}

void SqliteDatabase::BeforeWrite() { writeAhead_.BeforeWrite(database_.get()); }

SqliteRows SqliteDatabase::Query(std::string_view sql, std::span<const SqlValue> values) {
  auto found = statements_.find(sql);
  if (found == statements_.end()) {
    sqlite3_stmt* prepared = nullptr;
    const int result =
        sqlite3_prepare_v2(database_.get(), sql.data(), static_cast<int>(sql.size()), &prepared, nullptr);
    Check(database_.get(), result == SQLITE_OK);
    found = statements_.emplace(std::string(sql), prepared).first;
  }
  SqliteRows rows(database_.get(), found->second.get());
  int index = 0;
  for (const auto& value : values) Bind(database_.get(), found->second.get(), ++index, value);
  return rows;
}

SqliteRows SqliteDatabase::Query(std::string_view sql, std::initializer_list<SqlValue> values) {
  return Query(sql, std::span(values.begin(), values.size()));
}

void SqliteDatabase::Execute(std::string_view sql, std::initializer_list<SqlValue> values) {
  auto rows = Query(sql, values);
  while (rows.Next()) {
  }
}

void SqliteDatabase::RunScript(const std::string& sql) {
  Check(database_.get(), sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
}

void SqliteDatabase::TakeBack(const char* sql) noexcept {
  sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr);
}

bool SqliteDatabase::InTransaction() const { return sqlite3_get_autocommit(database_.get()) == 0; }

SqliteTransaction::SqliteTransaction(SqliteDatabase& database, Purpose purpose) : database_(database) {
  if (purpose == Purpose::Write) database_.BeforeWrite();
  database_.Execute(purpose == Purpose::Write ? "BEGIN IMMEDIATE" : "BEGIN");
}

SqliteTransaction::~SqliteTransaction() {
  // Where that fails, the engine rolls back by itself when the next one opens the file.
  if (database_.InTransaction()) database_.TakeBack("ROLLBACK");
}

void SqliteTransaction::Commit() { database_.Execute("COMMIT"); }

SqliteSavepoint::SqliteSavepoint(SqliteDatabase& database) : database_(database) {
  database_.Execute("SAVEPOINT part");
}

SqliteSavepoint::~SqliteSavepoint() {
  // Where that fails, the transaction as a whole is not committed either.
  if (!kept_ && database_.InTransaction()) database_.TakeBack("ROLLBACK TO part; RELEASE part");
}

void SqliteSavepoint::Keep() {
  database_.Execute("RELEASE part");
  kept_ = true;
}

}  // namespace twqb::company
