// One handle of SQLite, with the statements that were prepared on it and will run again, and those handles that are
// kept a little longer than the connections that used them.
//
// The library opens and closes connections for each table, and in some gets for each record. A handle that is kept
// knows the schema and its statements, and opens no file. As long as a connection of the pool has the file open the
// handles of closed ones stay; the last one closed leaves the file in its ordinary form, one handle that holds no lock
// beside it.
#pragma once

#include <sqlite3.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/storage/WriteAhead.h"

namespace twqb::sqlite {

struct Column;  // Columns.h

// How often a statement will run; the engine keeps its memory accordingly.
enum class Use : std::uint8_t { Once, Again };

// What statements of its users may have left on a handle: settings, attached files and temporary tables last as long as
// it does, and are not for the next one to find. Changes of tables count among them.
enum class Leaves : std::uint8_t { RowsAlone, More };

// One prepared statement. Must be reset once its rows are read: until then it keeps the file locked against writers.
class Statement {
 public:
  Statement(sqlite3_stmt* raw, Leaves leaves) : raw_(raw), leaves_(leaves) {}

  [[nodiscard]] bool IsEmpty() const { return raw_ == nullptr; }
  [[nodiscard]] int ColumnCount() const;
  [[nodiscard]] sqlite3_stmt* raw() const { return raw_.get(); }
  [[nodiscard]] Leaves Left() const { return leaves_; }

  // Parameters count from 1. The text is copied.
  void BindNull(int parameter);
  void BindInteger(int parameter, std::int64_t value);
  void BindReal(int parameter, double value);
  void BindText(int parameter, std::string_view value);

  // Runs to the next row; false at the end. Raises what the result code stands for.
  bool Step();
  void Reset() noexcept;

  // How often the engine has prepared it anew: because it found the tables changed.
  [[nodiscard]] int TimesPreparedAnew() const;
  // What its result columns are, for who keeps it: ColumnsOf (Columns.h).
  struct Description {
    std::shared_ptr<const std::vector<Column>> columns;  // not described yet: nothing
    int timesPreparedAnew = 0;                           // at that time
  };
  [[nodiscard]] Description& Described() { return described_; }

 private:
  void Check(int code);

  struct Finalizer {
    void operator()(sqlite3_stmt* raw) const { sqlite3_finalize(raw); }
  };
  std::unique_ptr<sqlite3_stmt, Finalizer> raw_;
  Leaves leaves_;
  Description described_;
};

// What a connection may do with the file.
enum class Access : std::uint8_t { ReadWrite, Read };

struct Engine {
  // Statements may outlive the close; the engine then lets go of the file with the last of them.
  struct Closer {
    void operator()(sqlite3* raw) const { storage::CloseInOrder(raw); }
  };

  std::string path;  // absolute
  Access access = Access::ReadWrite;
  std::unique_ptr<sqlite3, Closer> handle;
  storage::WriteAhead writeAhead = {};
  Leaves leaves = Leaves::RowsAlone;
  // By their text; they go ahead of the handle. Each is reset behind each use, so that all who use one share it.
  std::map<std::string, Statement, std::less<>> statements = {};
  std::chrono::steady_clock::time_point closed = {};
  // When it last read which tables there are, and the pool's changes by then.
  std::chrono::steady_clock::time_point looked = {};
  unsigned changesSeen = 0;
};

// Handles of closed connections, for those that open the same file again. May be used by several threads.
class EnginePool {
 public:
  // Counts a connection that opens the file in. One that was kept for the same file and access, if it is fit; else one
  // without a handle.
  [[nodiscard]] Engine Open(const std::string& path, Access access);
  // Counts it out. The last one leaves the file in its ordinary form, unless others have it open.
  void Close(Engine engine) noexcept;

  // Statements that may have changed tables, run by connections of the pool: how many there were.
  void NoteChange() { ++changes_; }
  [[nodiscard]] unsigned Changes() const { return changes_; }

 private:
  struct File {
    int connections = 0;
    std::vector<Engine> kept;
  };

  std::atomic<unsigned> changes_ = 0;
  std::mutex mutex_;
  std::map<std::string, File> files_;  // by path
};

}  // namespace twqb::sqlite
