#include "adapters/sqlite/Database.h"

#include <fmt/core.h>

#include <filesystem>
#include <system_error>

#include "adapters/sqlite/Collations.h"
#include "adapters/sqlite/Failure.h"
#include "adapters/sqlite/SqlTokens.h"

namespace twqb::sqlite {

namespace {

constexpr int kPrimaryCode = 0xFF;

PlatformError CannotOpen(const std::string& file, std::string_view cause) {
  return Failure(error::kCannotOpen, fmt::format("{}: {}.", file, cause));
}

// What a failed call stands for. The engine's message names the table, the column or the constraint.
PlatformError FailureOf(sqlite3* handle, int code) {
  const std::string_view message = sqlite3_errmsg(handle);
  switch (code & kPrimaryCode) {
    case SQLITE_ERROR: {
      const bool isTable = message.starts_with("no such table") || message.starts_with("no such view");
      return Failure(isTable ? error::kNoSuchTable : error::kBadSyntax, message);
    }
    case SQLITE_CONSTRAINT:
      return Failure(error::kConstraint, message);
    case SQLITE_MISMATCH:
      return Failure(error::kConversion, message);
    default: {
      const char* file = sqlite3_db_filename(handle, "main");
      return {error::kCannotOpen,
              fmt::format("The database {} can't be used: {}.", file == nullptr ? "" : file, message)};
    }
  }
}

// Whether the file of the handle is still the one at its path. False, too, where the system can't tell: there a file
// that is open can't be moved or removed, and no handle may be kept.
bool IsInPlace(sqlite3* handle) {
  int moved = 0;
  return sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved == 0;
}

// Within moments nobody brings back a backup in place of the file, which the handle might not notice.
bool IsFresh(const Remains& remains) {
  constexpr auto kMoments = std::chrono::seconds(1);
  return remains.handle && std::chrono::steady_clock::now() - remains.closed < kMoments &&
         IsInPlace(remains.handle.get());
}

std::filesystem::path PathOf(const std::string& file) { return {std::u8string(file.begin(), file.end())}; }

}  // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Statement
// ---------------------------------------------------------------------------------------------------------------------

int Statement::ColumnCount() const { return sqlite3_column_count(raw()); }

void Statement::Check(int code) {
  if (code != SQLITE_OK) throw FailureOf(sqlite3_db_handle(raw()), code);
}

void Statement::BindNull(int parameter) { Check(sqlite3_bind_null(raw(), parameter)); }
void Statement::BindInteger(int parameter, std::int64_t value) { Check(sqlite3_bind_int64(raw(), parameter, value)); }
void Statement::BindReal(int parameter, double value) { Check(sqlite3_bind_double(raw(), parameter, value)); }
void Statement::BindText(int parameter, std::string_view value) {
  Check(sqlite3_bind_text64(raw(), parameter, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

bool Statement::Step() {
  const int code = sqlite3_step(raw());
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  const auto failure = FailureOf(sqlite3_db_handle(raw()), code);
  Reset();
  throw failure;
}

void Statement::Reset() noexcept {
  sqlite3_reset(raw());  // answers the failure of the last step, which has been raised there
  sqlite3_clear_bindings(raw());
}

// ---------------------------------------------------------------------------------------------------------------------
// Database
// ---------------------------------------------------------------------------------------------------------------------

Handle Database::OpenHandle(const std::string& file, int flags) {
  sqlite3* raw = nullptr;
  const int code = sqlite3_open_v2(file.c_str(), &raw, flags | SQLITE_OPEN_EXRESCODE, nullptr);
  Handle handle(raw);
  if (code != SQLITE_OK) throw CannotOpen(file, raw == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(raw));
  return handle;
}

Database::Database(const std::string& file, Access access, std::chrono::milliseconds patience, Remains remains)
    : access_(access) {
  std::error_code ignored;
  const auto status = std::filesystem::status(PathOf(file), ignored);
  if (!std::filesystem::exists(status)) throw CannotOpen(file, "there is no such file");
  if (std::filesystem::is_directory(status)) throw CannotOpen(file, "this is a folder");
  path_ = std::filesystem::absolute(PathOf(file), ignored).string();
  const bool serves = IsFresh(remains) && remains.path == path_ && remains.access == access;
  const int flags = access == Access::Read ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  handle_ = serves ? std::move(remains.handle) : OpenHandle(file, flags);
  try {
    if (!serves) SetUp();
    BeginWork(patience);
  } catch (const PlatformError& failure) {
    throw Failure(error::kCannotOpen, failure.description());
  }
}

void Database::Check(int code) const {
  if (code != SQLITE_OK) throw FailureOf(handle_.get(), code);
}

void Database::SetUp() {
  Check(sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr));
  Check(sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr));
  Check(sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr));
  Check(RegisterCollations(handle_.get()));
}

void Database::BeginWork(std::chrono::milliseconds patience) {
  Check(sqlite3_busy_timeout(handle_.get(), static_cast<int>(patience.count())));
  Run("SELECT count(*) FROM sqlite_schema");  // reads the file: one that is no database fails here
  if (access_ == Access::ReadWrite) {
    Run("PRAGMA journal_mode = DELETE");
    Run("PRAGMA synchronous = FULL");
  }
  Check(sqlite3_busy_timeout(handle_.get(), static_cast<int>(kBusyPatience.count())));
}

void Database::Create(const std::string& file) {
  std::error_code ignored;
  if (std::filesystem::exists(PathOf(file), ignored)) throw CannotOpen(file, "the file is there already");
  OpenHandle(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  // The engine writes the file with its first change alone. This one leaves nothing else behind.
  Database(file, Access::ReadWrite, kBusyPatience).Run("PRAGMA user_version = 0");
}

Remains Database::Close() {
  // A transaction that the caller began and left open would live on as long as a recordset keeps a statement.
  if (sqlite3_get_autocommit(handle_.get()) == 0) {
    sqlite3_exec(handle_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
  Remains remains{
      .handle = std::move(handle_), .path = path_, .access = access_, .closed = std::chrono::steady_clock::now()};
  if (sqlite3_next_stmt(remains.handle.get(), nullptr) != nullptr || !IsInPlace(remains.handle.get())) {
    remains.handle.reset();
  } else {
    // Pages are read anew: what happens to the file while nobody has it open must show.
    sqlite3_db_release_memory(remains.handle.get());
  }
  return remains;
}

Statement Database::Prepare(std::string_view sql, Use use) {
  sqlite3_stmt* raw = nullptr;
  const char* tail = nullptr;
  const unsigned flags = use == Use::Again ? SQLITE_PREPARE_PERSISTENT : 0;
  const int code = sqlite3_prepare_v3(handle_.get(), sql.data(), static_cast<int>(sql.size()), flags, &raw, &tail);
  Statement statement(raw);
  if (code != SQLITE_OK) throw FailureOf(handle_.get(), code);
  if (statement.IsEmpty()) throw Failure(error::kBadSyntax, "The statement is empty.");
  for (const auto& token : SignificantTokens(sql.substr(static_cast<std::size_t>(tail - sql.data())))) {
    if (!token.IsSymbol(';')) {
      throw Failure(error::kBadSyntax, fmt::format("There is more than one statement, from \"{}\" on.", token.text));
    }
  }
  return statement;
}

void Database::Run(std::string_view sql) {
  auto statement = Prepare(sql, Use::Once);
  while (statement.Step()) {
  }
}

std::int64_t Database::RowsChanged() const { return sqlite3_changes64(handle_.get()); }
std::int64_t Database::TotalRowsChanged() const { return sqlite3_total_changes64(handle_.get()); }
std::int64_t Database::LastRowId() const { return sqlite3_last_insert_rowid(handle_.get()); }

}  // namespace twqb::sqlite
