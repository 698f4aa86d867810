#include "adapters/storage/Opening.h"

#include <sqlite3.h>

#include <map>
#include <memory>
#include <mutex>

#include "adapters/storage/Handles.h"
#include "adapters/storage/KeepingLayer.h"
#include "adapters/storage/WriteAhead.h"

namespace twqb::storage {

namespace {

constexpr const char* kUnsharedLayer = "twqb-unshared";

// The engine's own layer for files, without shared memory: of the methods of a file, those of the first version alone.
class UnsharedLayer {
 public:
  // Nothing where the engine has no layer of its own.
  static bool IsThere() {
    static const bool isThere = Register();
    return isThere;
  }

 private:
  static sqlite3_vfs*& Engines() {
    static sqlite3_vfs* engines = nullptr;
    return engines;
  }

  static bool Register() {
    static sqlite3_vfs layer = {};
    for (const char* name : {"unix", "win32"}) {
      if (Engines() == nullptr) Engines() = sqlite3_vfs_find(name);
    }
    if (Engines() == nullptr) return false;
    layer = *Engines();
    layer.pNext = nullptr;
    layer.zName = kUnsharedLayer;
    layer.xOpen = OpenFile;
    constexpr int kNotTheDefault = 0;
    return sqlite3_vfs_register(&layer, kNotTheDefault) == SQLITE_OK;
  }

  static int OpenFile(sqlite3_vfs* /*layer*/, sqlite3_filename path, sqlite3_file* file, int flags, int* flagsOut) {
    const int code = Engines()->xOpen(Engines(), path, file, flags, flagsOut);
    if (file->pMethods != nullptr) file->pMethods = WithoutMemory(file->pMethods);
    return code;
  }

  // The engine has a few sets of methods, one for each kind of lock.
  static const sqlite3_io_methods* WithoutMemory(const sqlite3_io_methods* methods) {
    static std::mutex mutex;
    static std::map<const sqlite3_io_methods*, std::unique_ptr<sqlite3_io_methods>> known;
    const std::lock_guard lock(mutex);
    auto& without = known[methods];
    if (!without) {
      without = std::make_unique<sqlite3_io_methods>(*methods);
      without->iVersion = 1;
    }
    return without.get();
  }
};

bool CanWriteBeside(const std::string& path) {
  const auto folder = std::filesystem::path(path).parent_path().string();
  auto* system = sqlite3_vfs_find(nullptr);
  int can = 0;
  return system->xAccess(system, folder.c_str(), SQLITE_ACCESS_READWRITE, &can) == SQLITE_OK && can != 0;
}

// What the engine answers where a log has no index, or can't be taken up.
bool IsAboutTheLog(int code) {
  constexpr int kPrimaryCode = 0xFF;
  switch (code & kPrimaryCode) {
    case SQLITE_CANTOPEN:
    case SQLITE_READONLY:
    case SQLITE_IOERR:
    case SQLITE_PROTOCOL:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool SaysWrittenAhead(sqlite3* handle) {
  constexpr sqlite3_int64 kReadVersion = 19;
  constexpr unsigned char kWrittenAhead = 2;
  sqlite3_file* file = nullptr;
  unsigned char version = 0;
  return sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file) == SQLITE_OK && file != nullptr &&
         file->pMethods != nullptr && file->pMethods->xRead(file, &version, 1, kReadVersion) == SQLITE_OK &&
         version == kWrittenAhead;
}

int Open(const std::string& path, int flags, sqlite3** handle) {
  return Open(path, flags, TakesWriteAhead(path) ? SharedMemory::Yes : SharedMemory::No, handle);
}

int Open(const std::string& path, int flags, SharedMemory memory, sqlite3** handle) {
  const char* unshared = UnsharedLayer::IsThere() ? kUnsharedLayer : nullptr;
  const char* layer = memory == SharedMemory::Yes ? KeepingLayer() : unshared;
  return sqlite3_open_v2(path.c_str(), handle, flags | SQLITE_OPEN_NOMUTEX, layer);
}

std::string MakeReadable(sqlite3* handle) {
  if (Look(handle) || !IsAboutTheLog(sqlite3_errcode(handle))) return {};
  const auto path = PathOf(handle);
  if (path.empty() || !SaysWrittenAhead(handle)) return {};
  TakeBack(path);
  if (Look(handle)) return {};
  if (sqlite3_db_readonly(handle, "main") == 1 || !CanWriteBeside(path)) {
    return "what was written to it last stands in files beside it (\"-wal\"), which can't be read where nothing can be "
           "written: copy it, with these files, into a folder that can be written, and open the copy";
  }
  return "a program on another machine, or one that shares no memory with this one, has it open and writes to it "
         "ahead, in files beside it (\"-wal\"): open it on the machine on whose disk it stands, or when no other "
         "program has it open";
}

}  // namespace twqb::storage
