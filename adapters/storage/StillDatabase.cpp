#include "adapters/storage/StillDatabase.h"

#include <filesystem>
#include <system_error>

#include "adapters/storage/Handles.h"
#include "adapters/storage/WriteAhead.h"

namespace twqb::storage {

namespace {

constexpr int kPatience = 5'000;  // milliseconds

// Where a database says in which form it is: who may write it, who may read it.
constexpr sqlite3_int64 kVersions = 18;

// The copy was made of every page, and so of what the first one says of the log.
bool SayOrdinary(sqlite3* handle) {
  constexpr unsigned char kOrdinary[] = {1, 1};
  sqlite3_file* file = nullptr;
  return sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file) == SQLITE_OK && file != nullptr &&
         file->pMethods != nullptr && file->pMethods->xWrite(file, kOrdinary, sizeof kOrdinary, kVersions) == SQLITE_OK;
}

}  // namespace

void StillDatabase::Closer::operator()(sqlite3* handle) const {
  sqlite3_exec(handle, "COMMIT", nullptr, nullptr, nullptr);
  CloseInOrder(handle);
}

StillDatabase::StillDatabase(const std::string& path) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) return;
  sqlite3* opened = nullptr;
  const int code = Open(path, SQLITE_OPEN_READWRITE, &opened);
  handle_.reset(opened);
  if (code == SQLITE_OK) {
    sqlite3_busy_timeout(opened, kPatience);
    // Why it can't be read is not told here: it is not held then.
    static_cast<void>(MakeReadable(opened));
    constexpr auto kHold = "BEGIN; SELECT count(*) FROM sqlite_schema";
    const int held = sqlite3_exec(opened, kHold, nullptr, nullptr, nullptr);
    if (held == SQLITE_OK) return;
    // What can't be opened at all is told by who copies its bytes.
    couldNotBeHeld_ = held != SQLITE_NOTADB && (held != SQLITE_CANTOPEN || storage::HasLog(path));
  }
  handle_.reset();
}

bool StillDatabase::HasLog() const { return handle_ && FormOf(handle_.get()) == Form::WriteAhead; }

bool StillDatabase::CopyTo(const std::string& path) const {
  if (!handle_) return false;
  const auto copy = OpenToWrite(path);
  // It is renamed once it is whole, or removed: nothing need be written twice to undo it.
  if (!copy || !Run(copy.get(), "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF")) return false;
  auto* backup = sqlite3_backup_init(copy.get(), "main", handle_.get(), "main");
  if (backup == nullptr) return false;
  constexpr int kAllPages = -1;
  sqlite3_backup_step(backup, kAllPages);
  return sqlite3_backup_finish(backup) == SQLITE_OK && SayOrdinary(copy.get());
}

}  // namespace twqb::storage
