// SQLite itself: one open file and the turning of its result codes into errors.
//
// The rest of the adapter reaches the engine through this and the statements that it prepares. It takes statements in
// SQLite's own dialect: translation is the connection's work.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/sqlite/Engine.h"

namespace twqb::sqlite {

// How long a statement waits for another program that is writing.
inline constexpr std::chrono::milliseconds kBusyPatience = std::chrono::seconds(5);

// Resets a statement at the end of its scope, whatever happens in it.
class ResetAtEnd {
 public:
  explicit ResetAtEnd(Statement& statement) : statement_(statement) {}
  ~ResetAtEnd() { statement_.Reset(); }
  ResetAtEnd(const ResetAtEnd&) = delete;
  ResetAtEnd& operator=(const ResetAtEnd&) = delete;

 private:
  Statement& statement_;
};

// Shared by a connection and its recordsets. Close ends it for all of them: each asks IsOpen before it works.
class Database {
 public:
  // Opens a file that is there, waiting up to `patience` for it. Raises `kCannotOpen`.
  Database(std::shared_ptr<EnginePool> pool, const std::string& file, Access access,
           std::chrono::milliseconds patience);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  // Makes an empty database. Raises `kCannotOpen`, also when the file is there.
  static void Create(const std::string& file);

  [[nodiscard]] bool IsOpen() const { return engine_.handle != nullptr; }
  // A transaction that is still open is rolled back.
  void Close();

  // Exactly one statement; blanks, comments and semicolons may follow. Raises `kBadSyntax`, `kNoSuchTable`.
  [[nodiscard]] Statement Prepare(std::string_view sql, Use use);
  // The same for one that recordsets run again and again: it is prepared once and kept. To be reset behind each use.
  [[nodiscard]] Statement& Kept(const std::string& sql);
  // Has the kept statements know the tables as they are by now; none of them may be in use.
  void Refresh();
  // The same if it may be that tables have changed: when a connection of the pool ran what may change them, or the last
  // look was a while ago. What another program changes within moments shows with the next row that is read.
  void RefreshAtTimes();
  // To be called ahead of a statement's first step: a write has the file written ahead from then on.
  void BeforeRun(const Statement& statement);
  // To be called behind the last step of one that isn't kept: the other connections of the pool are told that tables
  // may have changed, and told again when the transaction ends, as they saw none of it before.
  void AfterRun(const Statement& statement);

  [[nodiscard]] std::int64_t RowsChanged() const;       // by the last INSERT, UPDATE or DELETE
  [[nodiscard]] std::int64_t TotalRowsChanged() const;  // since the file was opened
  [[nodiscard]] std::int64_t LastRowId() const;

 private:
  void Check(int code) const;
  void Begin(const std::string& file, std::chrono::milliseconds patience);
  void SetUp();
  enum class Schema : std::uint8_t { AsBefore, Changed };
  // Reads the file: one that is no database fails here.
  Schema Look();

  std::shared_ptr<EnginePool> pool_;
  Engine engine_;
  bool mayHaveChanged_ = false;  // tables, in the transaction that is open
};

}  // namespace twqb::sqlite
