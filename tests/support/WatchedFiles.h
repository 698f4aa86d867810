// What SQLite does to its files, seen one layer below it: each call to the file system is told to a watcher, who may
// refuse it in the file system's place, count it, or end the process there.
//
// It stands between the engine and the engine's own file layer for as long as it lives; at most one lives at a time,
// and every database that was opened under it must be closed before it goes.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace twqb {

enum class FileCall : std::uint8_t {
  Open,           // of a file, by the system
  Lock,           // one call to the system that takes or gives back a lock, or asks for one
  Read,           // of pages; told to those alone who ask for it
  Write,          // of pages
  Sync,           // a file's content is made durable
  SyncDirectory,  // that a file is there is made durable
  Truncate,
  Delete,
  MapIndex,  // the shared memory of a log
};

// SQLITE_OK (0) lets the call through; anything else is answered in its place. What is answered to Lock and
// SyncDirectory makes no difference. `path` is empty for Lock.
using FileWatcher = std::function<int(FileCall call, std::string_view path)>;

// Whether files can have memory that processes share, which a log is not to be had without.
enum class SharedMemory : std::uint8_t { Yes, No };

enum class Reads : std::uint8_t { Untold, Told };

class WatchedFiles {
 public:
  explicit WatchedFiles(FileWatcher watcher, SharedMemory memory = SharedMemory::Yes, Reads reads = Reads::Untold);
  ~WatchedFiles();
  WatchedFiles(const WatchedFiles&) = delete;
  WatchedFiles& operator=(const WatchedFiles&) = delete;
};

}  // namespace twqb
