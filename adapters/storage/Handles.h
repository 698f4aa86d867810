// What the files of this folder do with a handle of the engine. For them alone.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "adapters/storage/Opening.h"
#include "adapters/storage/WriteAhead.h"

namespace twqb::storage {

// How long something waits for others that can as well be done later.
inline constexpr int kMoment = 20;  // milliseconds

struct HandleCloser {
  void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
};
using Handle = std::unique_ptr<sqlite3, HandleCloser>;

[[nodiscard]] inline bool Run(sqlite3* handle, const char* sql) {
  return sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

// Reads the file, so that the engine learns in which form it is.
[[nodiscard]] inline bool Look(sqlite3* handle) { return Run(handle, "SELECT count(*) FROM sqlite_schema"); }

// Whether others were in the way of what failed last.
[[nodiscard]] inline bool WasBusy(sqlite3* handle) {
  constexpr int kPrimaryCode = 0xFF;
  return (sqlite3_errcode(handle) & kPrimaryCode) == SQLITE_BUSY;
}

// Empty for a database that is not in a file.
[[nodiscard]] inline std::string PathOf(sqlite3* handle) {
  const char* path = sqlite3_db_filename(handle, "main");
  return path == nullptr ? "" : path;
}

[[nodiscard]] inline bool HasLog(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(path + "-wal", ignored);
}

// Nothing when it can't be opened for writing.
[[nodiscard]] inline Handle OpenToWrite(const std::string& path) {
  sqlite3* opened = nullptr;
  const int code = Open(path, SQLITE_OPEN_READWRITE, &opened);
  Handle handle(opened);
  if (code != SQLITE_OK) handle.reset();
  return handle;
}

// Whether the file says of itself that it is written ahead. It is read by the handle: to open it anew, and close it,
// would drop the locks that this process has on it.
[[nodiscard]] bool SaysWrittenAhead(sqlite3* handle);

// Where the memory for the log's index can't be had, the file can't even be read. A connection that holds the file
// alone needs none, and puts it into its ordinary form; while others have the file open nothing happens. The form that
// it is in then.
Form TakeBack(const std::string& path);

}  // namespace twqb::storage
