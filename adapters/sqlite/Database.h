// SQLite itself: one open file, the statements prepared on it, and the turning of its result codes into errors.
//
// The rest of the adapter reaches the engine through these two classes. They take statements in SQLite's own dialect:
// translation is the connection's work.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace twqb::sqlite {

// How long a statement waits for another program that is writing.
inline constexpr std::chrono::milliseconds kBusyPatience = std::chrono::seconds(5);

// How often a statement will run; the engine keeps its memory accordingly.
enum class Use : std::uint8_t { Once, Again };

// One prepared statement. Must be reset once its rows are read: until then it keeps the file locked against writers.
class Statement {
 public:
  explicit Statement(sqlite3_stmt* raw) : raw_(raw) {}

  [[nodiscard]] bool IsEmpty() const { return raw_ == nullptr; }
  [[nodiscard]] int ColumnCount() const;
  [[nodiscard]] sqlite3_stmt* raw() const { return raw_.get(); }

  // Parameters count from 1. The text is copied.
  void BindNull(int parameter);
  void BindInteger(int parameter, std::int64_t value);
  void BindReal(int parameter, double value);
  void BindText(int parameter, std::string_view value);

  // Runs to the next row; false at the end. Raises what the result code stands for.
  bool Step();
  void Reset() noexcept;

 private:
  void Check(int code);

  struct Finalizer {
    void operator()(sqlite3_stmt* raw) const { sqlite3_finalize(raw); }
  };
  std::unique_ptr<sqlite3_stmt, Finalizer> raw_;
};

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

// Statements may outlive the close; the engine then lets go of the file with the last of them.
struct HandleCloser {
  void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
};
using Handle = std::unique_ptr<sqlite3, HandleCloser>;

// What a connection may do with the file.
enum class Access : std::uint8_t { ReadWrite, Read };

// What a close leaves: a handle that holds no lock but knows the tables, and with them the greater part of the cost of
// opening the file. It serves who opens the same file again within moments; it keeps the file from nobody.
struct Remains {
  Handle handle;  // nothing where none is fit to be kept
  std::string path;
  Access access = Access::ReadWrite;
  std::chrono::steady_clock::time_point closed;
};

// Shared by a connection and its recordsets. Close ends it for all of them: each asks IsOpen before it works.
class Database {
 public:
  // Opens a file that is there, waiting up to `patience` for it. Raises `kCannotOpen`.
  Database(const std::string& file, Access access, std::chrono::milliseconds patience, Remains remains = {});
  // Makes an empty database. Raises `kCannotOpen`, also when the file is there.
  static void Create(const std::string& file);

  [[nodiscard]] bool IsOpen() const { return handle_ != nullptr; }
  // A transaction that is still open is rolled back.
  Remains Close();

  // Exactly one statement; blanks, comments and semicolons may follow. Raises `kBadSyntax`, `kNoSuchTable`.
  [[nodiscard]] Statement Prepare(std::string_view sql, Use use);
  // Runs a statement to its end; rows are dropped.
  void Run(std::string_view sql);

  [[nodiscard]] std::int64_t RowsChanged() const;       // by the last INSERT, UPDATE or DELETE
  [[nodiscard]] std::int64_t TotalRowsChanged() const;  // since the file was opened
  [[nodiscard]] std::int64_t LastRowId() const;

 private:
  static Handle OpenHandle(const std::string& file, int flags);
  void Check(int code) const;
  void SetUp();
  void BeginWork(std::chrono::milliseconds patience);

  std::string path_;  // absolute
  Access access_;
  Handle handle_;
};

}  // namespace twqb::sqlite
