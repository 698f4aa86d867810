#include "adapters/sqlite/Database.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "adapters/sqlite/Collations.h"
#include "adapters/sqlite/Failure.h"
#include "adapters/sqlite/SqlTokens.h"
#include "adapters/storage/NewFile.h"
#include "adapters/storage/Opening.h"
#include "platform/Text.h"

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

std::filesystem::path PathOf(const std::string& file) { return {std::u8string(file.begin(), file.end())}; }

std::unique_ptr<sqlite3, Engine::Closer> OpenHandle(const std::string& file, int flags) {
  sqlite3* raw = nullptr;
  const int code = storage::Open(file, flags | SQLITE_OPEN_EXRESCODE, &raw);
  std::unique_ptr<sqlite3, Engine::Closer> handle(raw);
  if (code != SQLITE_OK) throw CannotOpen(file, raw == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(raw));
  return handle;
}

// What the text of a statement tells of what it leaves behind; of one that begins with a comment, nothing.
Leaves LeftBy(std::string_view sql) {
  constexpr std::array<std::string_view, 11> kOnRows = {"SELECT", "INSERT", "UPDATE", "DELETE",   "REPLACE", "VALUES",
                                                        "WITH",   "BEGIN",  "COMMIT", "ROLLBACK", "END"};
  const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  const auto begin = std::ranges::find_if_not(sql, [](char c) { return c == ' ' || c == '\r' || c == '\n'; });
  const std::string_view word(begin, std::find_if_not(begin, sql.end(), isLetter));
  const bool isOnRows = std::ranges::any_of(kOnRows, [word](std::string_view known) { return SameName(known, word); });
  return isOnRows ? Leaves::RowsAlone : Leaves::More;
}

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

int Statement::TimesPreparedAnew() const {
  constexpr int kAndGoOnCounting = 0;
  return sqlite3_stmt_status(raw(), SQLITE_STMTSTATUS_REPREPARE, kAndGoOnCounting);
}

void Statement::Reset() noexcept {
  sqlite3_reset(raw());  // answers the failure of the last step, which has been raised there
  sqlite3_clear_bindings(raw());
}

// ---------------------------------------------------------------------------------------------------------------------
// Database
// ---------------------------------------------------------------------------------------------------------------------

Database::Database(std::shared_ptr<EnginePool> pool, const std::string& file, Access access,
                   std::chrono::milliseconds patience)
    : pool_(std::move(pool)) {
  std::error_code ignored;
  const auto status = std::filesystem::status(PathOf(file), ignored);
  if (!std::filesystem::exists(status)) throw CannotOpen(file, "there is no such file");
  if (std::filesystem::is_directory(status)) throw CannotOpen(file, "this is a folder");
  engine_ = pool_->Open(std::filesystem::absolute(PathOf(file), ignored).string(), access);
  try {
    Begin(file, patience);
  } catch (...) {
    engine_.statements.clear();
    engine_.handle.reset();
    pool_->Close(std::move(engine_));
    throw;
  }
}

Database::~Database() {
  if (IsOpen()) Close();
}

void Database::Check(int code) const {
  if (code != SQLITE_OK) throw FailureOf(engine_.handle.get(), code);
}

void Database::Begin(const std::string& file, std::chrono::milliseconds patience) {
  const bool isNew = !engine_.handle;
  if (isNew) engine_.handle = OpenHandle(file, SQLITE_OPEN_READWRITE);
  auto* handle = engine_.handle.get();
  try {
    if (isNew) SetUp();
    // Ahead of the patience: who is just writing is waited for once.
    if (const auto why = isNew ? storage::MakeReadable(handle) : std::string(); !why.empty()) {
      throw PlatformError(error::kCannotOpen, fmt::format("{}: {}.", file, why));
    }
    Check(sqlite3_busy_timeout(handle, static_cast<int>(patience.count())));
    // Of a file that is written ahead a handle that is kept has a hold, and no reader has to wait.
    if (!engine_.writeAhead.HasBegun()) {
      Refresh();
      if (!isNew) engine_.writeAhead.AfterLook(handle);
    }
    if (isNew) {
      Check(storage::SetUp(handle));
      // A log that is beside the file though nobody has it open is a dead process'.
      storage::EndWriteAhead(handle);
    }
    Check(sqlite3_busy_timeout(handle, static_cast<int>(kBusyPatience.count())));
  } catch (const PlatformError& failure) {
    throw Failure(error::kCannotOpen, failure.description());
  }
}

void Database::SetUp() {
  auto* handle = engine_.handle.get();
  Check(sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr));
  Check(sqlite3_db_config(handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr));
  Check(sqlite3_db_config(handle, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr));
  Check(RegisterCollations(handle));
  // One that only reads opens the file for writing all the same: a log that a dead process left can be taken up then.
  if (engine_.access == Access::Read) Check(sqlite3_exec(handle, "PRAGMA query_only = 1", nullptr, nullptr, nullptr));
}

Database::Schema Database::Look() {
  auto& look = Kept("SELECT 1 FROM sqlite_schema LIMIT 1");
  const ResetAtEnd reset(look);
  const int before = look.TimesPreparedAnew();
  look.Step();
  return look.TimesPreparedAnew() > before ? Schema::Changed : Schema::AsBefore;
}

void Database::Refresh() {
  engine_.changesSeen = pool_->Changes();
  engine_.looked = std::chrono::steady_clock::now();
  if (Look() == Schema::Changed) engine_.statements.clear();
}

void Database::RefreshAtTimes() {
  constexpr auto kMoments = std::chrono::seconds(1);
  const bool isFresh =
      engine_.changesSeen == pool_->Changes() && std::chrono::steady_clock::now() - engine_.looked < kMoments;
  if (!isFresh) Refresh();
}

void Database::Create(const std::string& file) {
  storage::NewFile made(file);
  if (const auto failure = made.Failure()) {
    throw CannotOpen(file, failure == std::errc::file_exists ? "the file is there already" : failure.message());
  }
  const auto handle = OpenHandle(file, SQLITE_OPEN_READWRITE);
  // The engine writes the file with its first change alone. This one leaves nothing else behind.
  const int code =
      sqlite3_exec(handle.get(), "PRAGMA synchronous = EXTRA; PRAGMA user_version = 0", nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) throw FailureOf(handle.get(), code);
  made.Keep();
}

void Database::Close() {
  // A transaction that the caller began and left open would live on as long as a recordset keeps a statement.
  if (sqlite3_get_autocommit(engine_.handle.get()) == 0) {
    sqlite3_exec(engine_.handle.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  }
  pool_->Close(std::move(engine_));
}

Statement Database::Prepare(std::string_view sql, Use use) {
  sqlite3_stmt* raw = nullptr;
  const char* tail = nullptr;
  const unsigned flags = use == Use::Again ? SQLITE_PREPARE_PERSISTENT : 0;
  const int code =
      sqlite3_prepare_v3(engine_.handle.get(), sql.data(), static_cast<int>(sql.size()), flags, &raw, &tail);
  Statement statement(raw, LeftBy(sql));
  if (code != SQLITE_OK) throw FailureOf(engine_.handle.get(), code);
  if (statement.Left() == Leaves::More) engine_.leaves = Leaves::More;
  if (statement.IsEmpty()) throw Failure(error::kBadSyntax, "The statement is empty.");
  for (const auto& token : SignificantTokens(sql.substr(static_cast<std::size_t>(tail - sql.data())))) {
    if (!token.IsSymbol(';')) {
      throw Failure(error::kBadSyntax, fmt::format("There is more than one statement, from \"{}\" on.", token.text));
    }
  }
  return statement;
}

Statement& Database::Kept(const std::string& sql) {
  const auto found = engine_.statements.find(sql);
  if (found != engine_.statements.end()) return found->second;
  return engine_.statements.emplace(sql, Prepare(sql, Use::Again)).first->second;
}

void Database::BeforeRun(const Statement& statement) {
  if (engine_.access == Access::ReadWrite && sqlite3_stmt_readonly(statement.raw()) == 0) {
    engine_.writeAhead.BeforeWrite(engine_.handle.get());
  }
}

void Database::AfterRun(const Statement& statement) {
  if (statement.Left() == Leaves::More) mayHaveChanged_ = true;
  if (!mayHaveChanged_) return;
  pool_->NoteChange();
  mayHaveChanged_ = sqlite3_get_autocommit(engine_.handle.get()) == 0;
}

std::int64_t Database::RowsChanged() const { return sqlite3_changes64(engine_.handle.get()); }
std::int64_t Database::TotalRowsChanged() const { return sqlite3_total_changes64(engine_.handle.get()); }
std::int64_t Database::LastRowId() const { return sqlite3_last_insert_rowid(engine_.handle.get()); }

}  // namespace twqb::sqlite
