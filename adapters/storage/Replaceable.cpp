#include "adapters/storage/Replaceable.h"

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

#include "adapters/storage/Handles.h"
#include "adapters/storage/Opening.h"
#include "adapters/storage/WriteAhead.h"

namespace twqb::storage {

namespace {

namespace fs = std::filesystem;

bool HasJournal(const std::string& path) {
  std::error_code ignored;
  return fs::exists(path + "-journal", ignored);
}

enum class Found : std::uint8_t { Database, NoDatabase, Unknown, Busy };

// Reads the file and closes it again: the engine takes up what a dead process has left. By a handle of the engine, as
// every reading of a file that others of this process may have open.
Found PutInOrder(const std::string& path) {
  auto handle = OpenToWrite(path);
  if (!handle) return Found::Unknown;
  sqlite3_busy_timeout(handle.get(), kMoment);
  static_cast<void>(MakeReadable(handle.get()));
  auto found = Found::Database;
  if (!Look(handle.get())) {
    constexpr int kPrimaryCode = 0xFF;
    const int code = sqlite3_errcode(handle.get()) & kPrimaryCode;
    // Of what is damaged beyond reading there is nothing to be kept.
    found = code == SQLITE_NOTADB || code == SQLITE_CORRUPT ? Found::NoDatabase : Found::Unknown;
  } else if (!Run(handle.get(), "BEGIN IMMEDIATE; ROLLBACK")) {
    found = Found::Busy;  // somebody is just writing
  }
  CloseInOrder(handle.release());
  return found;
}

}  // namespace

bool MakeReplaceable(const std::string& path) {
  std::error_code failed;
  // Behind a link stands another file, with its own beside it; here is none.
  const bool isFile = fs::is_regular_file(fs::symlink_status(path, failed));
  // One that keeps its journal in memory writes beside nothing.
  if (isFile) {
    const bool hasMore = HasLog(path) || HasJournal(path);
    const auto found = PutInOrder(path);
    // A journal that is there still has served: some programs leave it so.
    if (found == Found::Busy || (found == Found::Unknown && hasMore) || (found == Found::Database && HasLog(path))) {
      return false;
    }
  }
  for (const auto* suffix : {"-journal", "-wal", "-shm"}) {
    fs::remove(path + suffix, failed);
    if (failed) return false;
  }
  return true;
}

}  // namespace twqb::storage
