#include "adapters/storage/KeepingLayer.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "adapters/storage/ReaderPlace.h"

namespace twqb::storage {

namespace {

constexpr const char* kName = "twqb-keeping";

sqlite3_vfs* Below() { return sqlite3_vfs_find(nullptr); }

// The file of the layer below, and the place of one that is a database. How much memory that layer wants is known when
// the file is opened.
struct Inner {
  explicit Inner(int size) : memory(std::make_unique<std::byte[]>(static_cast<std::size_t>(size))) {}

  [[nodiscard]] sqlite3_file* file() const { return reinterpret_cast<sqlite3_file*>(memory.get()); }
  [[nodiscard]] const sqlite3_io_methods& methods() const { return *file()->pMethods; }

  std::unique_ptr<std::byte[]> memory;
  std::optional<ReaderPlace> place;
};

// In memory of the engine's, which makes nothing and takes nothing down.
struct KeepingFile {
  sqlite3_file base;
  std::unique_ptr<Inner> inner;
};

Inner& Of(sqlite3_file* file) { return *reinterpret_cast<KeepingFile*>(file)->inner; }

int Close(sqlite3_file* file) {
  auto& inner = Of(file);
  inner.place.reset();
  const int code = inner.methods().xClose(inner.file());
  std::destroy_at(reinterpret_cast<KeepingFile*>(file));
  return code;
}

int Lock(sqlite3_file* file, int level) {
  auto& inner = Of(file);
  return inner.place ? inner.place->Lock(level) : inner.methods().xLock(inner.file(), level);
}

int Unlock(sqlite3_file* file, int level) {
  auto& inner = Of(file);
  return inner.place ? inner.place->Unlock(level) : inner.methods().xUnlock(inner.file(), level);
}

// The methods that a file of such a version has. Shared memory is asked for of databases alone, which have a place.
constexpr sqlite3_io_methods Methods(int version) {
  return {
      .iVersion = version,
      .xClose = Close,
      .xRead = [](sqlite3_file* file, void* bytes, int count,
                  sqlite3_int64 at) { return Of(file).methods().xRead(Of(file).file(), bytes, count, at); },
      .xWrite = [](sqlite3_file* file, const void* bytes, int count,
                   sqlite3_int64 at) { return Of(file).methods().xWrite(Of(file).file(), bytes, count, at); },
      .xTruncate = [](sqlite3_file* file,
                      sqlite3_int64 size) { return Of(file).methods().xTruncate(Of(file).file(), size); },
      .xSync = [](sqlite3_file* file, int flags) { return Of(file).methods().xSync(Of(file).file(), flags); },
      .xFileSize = [](sqlite3_file* file,
                      sqlite3_int64* size) { return Of(file).methods().xFileSize(Of(file).file(), size); },
      .xLock = Lock,
      .xUnlock = Unlock,
      .xCheckReservedLock = [](sqlite3_file* file,
                               int* held) { return Of(file).methods().xCheckReservedLock(Of(file).file(), held); },
      .xFileControl = [](sqlite3_file* file, int operation,
                         void* value) { return Of(file).methods().xFileControl(Of(file).file(), operation, value); },
      .xSectorSize = [](sqlite3_file* file) { return Of(file).methods().xSectorSize(Of(file).file()); },
      .xDeviceCharacteristics =
          [](sqlite3_file* file) { return Of(file).methods().xDeviceCharacteristics(Of(file).file()); },
      .xShmMap = [](sqlite3_file* file, int page, int size, int extend,
                    void volatile** memory) { return Of(file).place->MapIndex(page, size, extend, memory); },
      .xShmLock = [](sqlite3_file* file, int offset, int count,
                     int flags) { return Of(file).place->LockIndex(offset, count, flags); },
      .xShmBarrier = [](sqlite3_file* file) { Of(file).methods().xShmBarrier(Of(file).file()); },
      .xShmUnmap = [](sqlite3_file* file, int remove) { return Of(file).place->UnmapIndex(remove); },
      .xFetch = [](sqlite3_file* file, sqlite3_int64 at, int count,
                   void** bytes) { return Of(file).methods().xFetch(Of(file).file(), at, count, bytes); },
      .xUnfetch = [](sqlite3_file* file, sqlite3_int64 at,
                     void* bytes) { return Of(file).methods().xUnfetch(Of(file).file(), at, bytes); },
  };
}
constexpr std::array<sqlite3_io_methods, 3> kMethods = {Methods(1), Methods(2), Methods(3)};

int Open(sqlite3_vfs* /*layer*/, sqlite3_filename path, sqlite3_file* file, int flags, int* flagsOut) try {
  file->pMethods = nullptr;
  auto* below = Below();
  auto inner = std::make_unique<Inner>(below->szOsFile);
  const int code = below->xOpen(below, path, inner->file(), flags, flagsOut);
  if (inner->file()->pMethods == nullptr) return code;
  auto* own = std::construct_at(reinterpret_cast<KeepingFile*>(file));
  own->inner = std::move(inner);
  const int version = std::clamp(Of(file).methods().iVersion, 1, static_cast<int>(kMethods.size()));
  own->base.pMethods = &kMethods[static_cast<std::size_t>(version) - 1];
  if ((flags & SQLITE_OPEN_MAIN_DB) != 0) Of(file).place.emplace(path, Of(file).file());
  return code;
} catch (const std::bad_alloc&) {
  return SQLITE_NOMEM;
}

bool Register() {
  static sqlite3_vfs layer = {};
  if (Below() == nullptr) return false;
  // What is not about files does not hang on the layer that it is asked of.
  layer = *Below();
  layer.pNext = nullptr;
  layer.zName = kName;
  layer.szOsFile = sizeof(KeepingFile);
  layer.xOpen = Open;
  layer.xDelete = [](sqlite3_vfs*, const char* path, int sync) { return Below()->xDelete(Below(), path, sync); };
  layer.xAccess = [](sqlite3_vfs*, const char* path, int flags, int* result) {
    return Below()->xAccess(Below(), path, flags, result);
  };
  layer.xFullPathname = [](sqlite3_vfs*, const char* path, int size, char* full) {
    return Below()->xFullPathname(Below(), path, size, full);
  };
  constexpr int kNotTheDefault = 0;
  return sqlite3_vfs_register(&layer, kNotTheDefault) == SQLITE_OK;
}

}  // namespace

const char* KeepingLayer() {
  static const bool isThere = Register();
  return isThere ? kName : nullptr;
}

}  // namespace twqb::storage
