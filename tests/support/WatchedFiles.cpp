#include "tests/support/WatchedFiles.h"

#include <fcntl.h>
#include <sqlite3.h>

#include <cstdarg>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

namespace twqb {

namespace {

using Fcntl = int (*)(int descriptor, int command, ...);
using OpenFile = int (*)(const char* path, int flags, int mode);
using OpenDirectory = int (*)(const char* path, int* descriptor);

// What the watched layer stands on.
struct Below {
  FileWatcher watcher;
  Reads reads = Reads::Untold;
  const sqlite3_io_methods* methods = nullptr;
  sqlite3_vfs* vfs = nullptr;
  sqlite3_vfs watched = {};
  Fcntl fcntl = nullptr;
  OpenFile open = nullptr;
  OpenDirectory openDirectory = nullptr;
};
std::unique_ptr<Below>& TheLayer() {
  static std::unique_ptr<Below> layer;
  return layer;
}

int Tell(FileCall call, std::string_view path = {}) { return TheLayer()->watcher(call, path); }

// --- Calls to the system ---------------------------------------------------------------------------------------------

int ToldFcntl(int descriptor, int command, ...) {
  std::va_list arguments;
  va_start(arguments, command);
  void* argument = va_arg(arguments, void*);
  va_end(arguments);
  if (command == F_SETLK || command == F_SETLKW || command == F_GETLK) Tell(FileCall::Lock);
  return TheLayer()->fcntl(descriptor, command, argument);
}

int ToldOpen(const char* path, int flags, int mode) {
  Tell(FileCall::Open, path);
  return TheLayer()->open(path, flags, mode);
}

// A directory is opened to be synced, and for nothing else.
int ToldOpenDirectory(const char* path, int* descriptor) {
  Tell(FileCall::SyncDirectory, path);
  return TheLayer()->openDirectory(path, descriptor);
}

void SetSystemCall(const char* name, sqlite3_syscall_ptr call) {
  auto* vfs = TheLayer()->vfs;
  if (vfs->xSetSystemCall(vfs, name, call) != SQLITE_OK) throw std::runtime_error("no system call of that name");
}

template <typename Call>
Call SystemCall(sqlite3_vfs* vfs, const char* name) {
  return reinterpret_cast<Call>(vfs->xGetSystemCall(vfs, name));
}

// --- Files -----------------------------------------------------------------------------------------------------------

// The engine's own file stands behind it in the same memory.
struct WatchedFile {
  sqlite3_file base;
  const char* path;
  [[nodiscard]] sqlite3_file* Inner() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

WatchedFile& Of(sqlite3_file* file) { return *reinterpret_cast<WatchedFile*>(file); }
sqlite3_file* Inner(sqlite3_file* file) { return Of(file).Inner(); }
int TellOf(FileCall call, sqlite3_file* file) { return Tell(call, Of(file).path == nullptr ? "" : Of(file).path); }

const sqlite3_io_methods kMethods = {
    .iVersion = 3,
    .xClose = [](sqlite3_file* file) { return Inner(file)->pMethods->xClose(Inner(file)); },
    .xRead =
        [](sqlite3_file* file, void* bytes, int count, sqlite3_int64 at) {
          if (TheLayer()->reads == Reads::Told) {
            if (const int answer = TellOf(FileCall::Read, file); answer != SQLITE_OK) return answer;
          }
          return Inner(file)->pMethods->xRead(Inner(file), bytes, count, at);
        },
    .xWrite =
        [](sqlite3_file* file, const void* bytes, int count, sqlite3_int64 at) {
          if (const int answer = TellOf(FileCall::Write, file); answer != SQLITE_OK) return answer;
          return Inner(file)->pMethods->xWrite(Inner(file), bytes, count, at);
        },
    .xTruncate =
        [](sqlite3_file* file, sqlite3_int64 size) {
          if (const int answer = TellOf(FileCall::Truncate, file); answer != SQLITE_OK) return answer;
          return Inner(file)->pMethods->xTruncate(Inner(file), size);
        },
    .xSync =
        [](sqlite3_file* file, int flags) {
          if (const int answer = TellOf(FileCall::Sync, file); answer != SQLITE_OK) return answer;
          return Inner(file)->pMethods->xSync(Inner(file), flags);
        },
    .xFileSize = [](sqlite3_file* file,
                    sqlite3_int64* size) { return Inner(file)->pMethods->xFileSize(Inner(file), size); },
    .xLock = [](sqlite3_file* file, int lock) { return Inner(file)->pMethods->xLock(Inner(file), lock); },
    .xUnlock = [](sqlite3_file* file, int lock) { return Inner(file)->pMethods->xUnlock(Inner(file), lock); },
    .xCheckReservedLock = [](sqlite3_file* file,
                             int* held) { return Inner(file)->pMethods->xCheckReservedLock(Inner(file), held); },
    .xFileControl = [](sqlite3_file* file, int operation,
                       void* value) { return Inner(file)->pMethods->xFileControl(Inner(file), operation, value); },
    .xSectorSize = [](sqlite3_file* file) { return Inner(file)->pMethods->xSectorSize(Inner(file)); },
    .xDeviceCharacteristics =
        [](sqlite3_file* file) { return Inner(file)->pMethods->xDeviceCharacteristics(Inner(file)); },
    .xShmMap =
        [](sqlite3_file* file, int page, int size, int extend, void volatile** memory) {
          if (const int answer = TellOf(FileCall::MapIndex, file); answer != SQLITE_OK) return answer;
          return Inner(file)->pMethods->xShmMap(Inner(file), page, size, extend, memory);
        },
    .xShmLock = [](sqlite3_file* file, int offset, int count,
                   int flags) { return Inner(file)->pMethods->xShmLock(Inner(file), offset, count, flags); },
    .xShmBarrier = [](sqlite3_file* file) { Inner(file)->pMethods->xShmBarrier(Inner(file)); },
    .xShmUnmap = [](sqlite3_file* file,
                    int deleteToo) { return Inner(file)->pMethods->xShmUnmap(Inner(file), deleteToo); },
    .xFetch = [](sqlite3_file* file, sqlite3_int64 at, int count,
                 void** bytes) { return Inner(file)->pMethods->xFetch(Inner(file), at, count, bytes); },
    .xUnfetch = [](sqlite3_file* file, sqlite3_int64 at,
                   void* bytes) { return Inner(file)->pMethods->xUnfetch(Inner(file), at, bytes); },
};

// The same without shared memory, and so all that came with it and since.
const sqlite3_io_methods kMethodsWithoutMemory = [] {
  auto methods = kMethods;
  methods.iVersion = 1;
  return methods;
}();

int OpenWatched(sqlite3_vfs* /*vfs*/, sqlite3_filename path, sqlite3_file* file, int flags, int* flagsOut) {
  file->pMethods = nullptr;
  Of(file).path = path;  // lives as long as the file is open
  const int code = TheLayer()->vfs->xOpen(TheLayer()->vfs, path, Inner(file), flags, flagsOut);
  if (Inner(file)->pMethods != nullptr) file->pMethods = TheLayer()->methods;
  return code;
}

int DeleteWatched(sqlite3_vfs* /*vfs*/, const char* path, int syncDirectory) {
  if (const int answer = Tell(FileCall::Delete, path); answer != SQLITE_OK) return answer;
  return TheLayer()->vfs->xDelete(TheLayer()->vfs, path, syncDirectory);
}

}  // namespace

WatchedFiles::WatchedFiles(FileWatcher watcher, SharedMemory memory, Reads reads) {
  auto& layer = TheLayer();
  if (layer) throw std::logic_error("files are watched already");
  layer = std::make_unique<Below>();
  layer->watcher = std::move(watcher);
  layer->reads = reads;
  layer->methods = memory == SharedMemory::Yes ? &kMethods : &kMethodsWithoutMemory;
  layer->vfs = sqlite3_vfs_find(nullptr);
  layer->fcntl = SystemCall<Fcntl>(layer->vfs, "fcntl");
  layer->open = SystemCall<OpenFile>(layer->vfs, "open");
  layer->openDirectory = SystemCall<OpenDirectory>(layer->vfs, "openDirectory");
  SetSystemCall("fcntl", reinterpret_cast<sqlite3_syscall_ptr>(ToldFcntl));
  SetSystemCall("open", reinterpret_cast<sqlite3_syscall_ptr>(ToldOpen));
  SetSystemCall("openDirectory", reinterpret_cast<sqlite3_syscall_ptr>(ToldOpenDirectory));
  // What is not watched goes to the layer below as it is: its functions know it by the data behind pAppData alone.
  layer->watched = *layer->vfs;
  layer->watched.pNext = nullptr;
  layer->watched.zName = "watched";
  layer->watched.szOsFile = static_cast<int>(sizeof(WatchedFile)) + layer->vfs->szOsFile;
  layer->watched.xOpen = OpenWatched;
  layer->watched.xDelete = DeleteWatched;
  constexpr int kDefault = 1;
  sqlite3_vfs_register(&layer->watched, kDefault);
}

WatchedFiles::~WatchedFiles() {
  auto& layer = TheLayer();
  sqlite3_vfs_unregister(&layer->watched);
  constexpr int kDefault = 1;
  sqlite3_vfs_register(layer->vfs, kDefault);
  for (const auto* name : {"fcntl", "open", "openDirectory"}) {
    layer->vfs->xSetSystemCall(layer->vfs, name, nullptr);  // its own again
  }
  layer.reset();
}

}  // namespace twqb
