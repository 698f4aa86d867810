// A thin hold on SQLite for the company file's storage: one open database, statements prepared once and kept, rows.
//
// It knows nothing of what is stored. Every failure raises `kUnexpected` with the engine's own words behind it.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "adapters/storage/WriteAhead.h"

struct sqlite3;
struct sqlite3_stmt;

namespace twqb::company {

// What a parameter of a statement is bound to; monostate is NULL.
using SqlValue = std::variant<std::monostate, std::int64_t, std::string_view>;

// The rows of one running statement, at first before the first row. While it lives, the same statement text must not be
// run again; it must not outlive its database.
class SqliteRows {
 public:
  // Moves to the next row; False behind the last.
  [[nodiscard]] bool Next();
  // Columns of the current row, from 0. NULL reads as an empty text and as 0.
  [[nodiscard]] std::string Text(int column) const;
  [[nodiscard]] std::int64_t Integer(int column) const;

 private:
  friend class SqliteDatabase;
  struct Reset {
    void operator()(sqlite3_stmt* statement) const;
  };
  SqliteRows(sqlite3* database, sqlite3_stmt* statement) : database_(database), statement_(statement) {}

  sqlite3* database_;
  std::unique_ptr<sqlite3_stmt, Reset> statement_;
};

class SqliteDatabase {
 public:
  // Opens a file that must exist.
  explicit SqliteDatabase(const std::string& path);
  // To be called once the file is known to be the right one: makes commits durable, and takes up whole what a process
  // that died has left beside the file.
  void SetUp();
  // To be called ahead of a transaction that writes: from then on until the last one closes the file is written ahead,
  // where that can be had.
  void BeforeWrite();

  // Starts a statement with its parameters in order. `sql` is prepared at its first use and kept.
  [[nodiscard]] SqliteRows Query(std::string_view sql, std::span<const SqlValue> values);
  [[nodiscard]] SqliteRows Query(std::string_view sql, std::initializer_list<SqlValue> values = {});
  // Runs a statement that answers no rows that matter.
  void Execute(std::string_view sql, std::initializer_list<SqlValue> values = {});
  // Runs several statements without parameters, once.
  void RunScript(const std::string& sql);
  // The same for statements that take something back, on the way out of a failure: a failure of theirs is not told.
  void TakeBack(const char* sql) noexcept;
  // Whether a transaction is open.
  [[nodiscard]] bool InTransaction() const;

 private:
  struct Close {
    void operator()(sqlite3* database) const;
  };
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };

  std::unique_ptr<sqlite3, Close> database_;
  storage::WriteAhead writeAhead_;
  // Told by their lengths first: most begin with the same words.
  struct Shorter {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const {
      return a.size() != b.size() ? a.size() < b.size() : a < b;
    }
  };

  std::map<std::string, std::unique_ptr<sqlite3_stmt, Finalize>, Shorter> statements_;
};

// One transaction: rolled back when it goes without Commit.
class SqliteTransaction {
 public:
  enum class Purpose : std::uint8_t { Read, Write };

  // A transaction that writes waits for other writers from the start, so that what it reads stays true.
  SqliteTransaction(SqliteDatabase& database, Purpose purpose);
  ~SqliteTransaction();
  SqliteTransaction(const SqliteTransaction&) = delete;
  SqliteTransaction& operator=(const SqliteTransaction&) = delete;

  // Durable when it returns.
  void Commit();

 private:
  SqliteDatabase& database_;
};

// A part of a transaction that can be taken back alone: rolled back when it goes without Keep.
class SqliteSavepoint {
 public:
  explicit SqliteSavepoint(SqliteDatabase& database);
  ~SqliteSavepoint();
  SqliteSavepoint(const SqliteSavepoint&) = delete;
  SqliteSavepoint& operator=(const SqliteSavepoint&) = delete;

  void Keep();

 private:
  SqliteDatabase& database_;
  bool kept_ = false;
};

}  // namespace twqb::company
