#include "adapters/storage/WriteAhead.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <string_view>
#include <system_error>
#include <thread>

#ifdef __linux__
#include <sys/vfs.h>
#endif

namespace twqb::storage {

namespace {

// How long something waits for others that can as well be done later.
constexpr int kMoment = 20;  // milliseconds

struct Closer {
  void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
};
using Handle = std::unique_ptr<sqlite3, Closer>;

bool Run(sqlite3* handle, const char* sql) { return sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK; }

// Reads the file, so that the engine learns in which form it is.
bool Look(sqlite3* handle) { return Run(handle, "SELECT count(*) FROM sqlite_schema"); }

// Empty for a database that is not in a file.
std::string PathOf(sqlite3* handle) {
  const char* path = sqlite3_db_filename(handle, "main");
  return path == nullptr ? "" : path;
}

// Whether another file stands at the path by now: what is beside that one is not this handle's to touch.
bool HasMoved(sqlite3* handle) {
  int moved = 0;
  return sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved != 0;
}

// The log and its index want room; a file that went over and then can't have them could not even be read.
bool HasRoom(const std::string& path) {
  constexpr std::uintmax_t kRoom = 32U * 1024 * 1024;
  std::error_code failed;
  const auto space = std::filesystem::space(path, failed);
  return !failed && space.available >= kRoom;
}

bool HasLog(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(path + "-wal", ignored);
}

// For as long as this lives, the engine waits but a moment for others: what it is about can as well be done later.
class ShortPatience {
 public:
  explicit ShortPatience(sqlite3* handle) : handle_(handle) {
    const auto take = [](void* out, int, char** values, char**) {
      if (values[0] != nullptr) *static_cast<int*>(out) = std::atoi(values[0]);
      return 0;
    };
    sqlite3_exec(handle, "PRAGMA busy_timeout", take, &before_, nullptr);
    sqlite3_busy_timeout(handle, std::min(before_, kMoment));
  }
  ~ShortPatience() { sqlite3_busy_timeout(handle_, before_); }
  ShortPatience(const ShortPatience&) = delete;
  ShortPatience& operator=(const ShortPatience&) = delete;

 private:
  sqlite3* handle_;
  int before_ = 0;
};

// Nothing when it can't be opened for writing.
Handle Open(const std::string& path) {
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE, nullptr);
  Handle handle(opened);
  if (code != SQLITE_OK) handle.reset();
  return handle;
}

// Where the memory for the log's index can't be had, the file could not even be read any more. A connection that holds
// the file alone needs none.
void TakeBack(const std::string& path) {
  const auto handle = Open(path);
  if (!handle) return;
  Run(handle.get(), "PRAGMA locking_mode = EXCLUSIVE");
  Run(handle.get(), "PRAGMA journal_mode = DELETE");
}

Form TryToEnd(const std::string& path) {
  const auto handle = Open(path);
  if (!handle || !Look(handle.get())) return Form::Ordinary;  // no longer ours to put in order
  return EndWriteAhead(handle.get());
}

// Two that close at the same moment each see the other, and then neither puts the file in order. So each looks again
// once it has closed: if the log is still there somebody has the file open, who will look when he closes; if it is
// gone, nobody has, or one who is looking, too.
void LookBehind(const std::string& path) {
  constexpr int kAttempts = 20;
  constexpr int kLongestPause = 5;  // milliseconds
  // Two processes began at other moments.
  std::minstd_rand random(
      static_cast<std::minstd_rand::result_type>(std::chrono::steady_clock::now().time_since_epoch().count()));
  std::uniform_int_distribution<int> pause(0, kLongestPause);
  for (int i = 0; i < kAttempts && !HasLog(path); ++i) {
    if (TryToEnd(path) == Form::Ordinary) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(pause(random)));
  }
}

}  // namespace

int SetUp(sqlite3* handle) {
  // Beyond FULL, the going of a rollback journal is durable, too.
  constexpr auto kSettings = "PRAGMA synchronous = EXTRA; PRAGMA wal_autocheckpoint = 4000";
  return sqlite3_exec(handle, kSettings, nullptr, nullptr, nullptr);
}

bool TakesWriteAhead(const std::string& path) {
#ifdef __linux__
  // ext2 to ext4, XFS, Btrfs, F2FS, ZFS, bcachefs, JFS, ReiserFS, NTFS, exFAT, FAT, eCryptfs, overlays, memory.
  constexpr std::array<std::uint32_t, 15> kLocal = {
      0xEF53,     0x58465342, 0x9123683E, 0xF2F52010, 0x2FC12FC1, 0xCA451A4E, 0x3153464A, 0x52654973,
      0x7366746E, 0x2011BAB0, 0x4D44,     0xF15F,     0x794C7630, 0x01021994, 0x858458F6,
  };
  struct statfs system = {};
  return statfs(path.c_str(), &system) == 0 &&
         std::ranges::find(kLocal, static_cast<std::uint32_t>(system.f_type)) != kLocal.end();
#else
  static_cast<void>(path);
  return false;
#endif
}

Form FormOf(sqlite3* handle) {
  auto form = Form::Ordinary;
  const auto take = [](void* out, int, char** values, char**) {
    if (values[0] != nullptr && std::string_view(values[0]) == "wal") *static_cast<Form*>(out) = Form::WriteAhead;
    return 0;
  };
  sqlite3_exec(handle, "PRAGMA journal_mode", take, &form, nullptr);
  return form;
}

Form BeginWriteAhead(sqlite3* handle) {
  if (FormOf(handle) == Form::WriteAhead) return Form::WriteAhead;
  const auto path = PathOf(handle);
  if (path.empty() || HasMoved(handle) || !TakesWriteAhead(path) || !HasRoom(path)) return Form::Ordinary;
  // By a handle of its own: one that has begun and then can't share the memory is of no use any more.
  auto beginning = Open(path);
  if (!beginning) return Form::Ordinary;
  sqlite3_busy_timeout(beginning.get(), kMoment);
  if (!Run(beginning.get(), "PRAGMA journal_mode = WAL") || FormOf(beginning.get()) == Form::Ordinary) {
    return Form::Ordinary;
  }
  if (!Look(beginning.get())) {
    beginning.reset();
    TakeBack(path);
    return Form::Ordinary;
  }
  Look(handle);  // is in it from now on, before the other one goes
  return FormOf(handle);
}

void WriteAhead::BeforeWrite(sqlite3* handle) {
  constexpr auto kPause = std::chrono::seconds(1);
  if (form_ == Form::WriteAhead || sqlite3_get_autocommit(handle) == 0) return;
  const auto now = std::chrono::steady_clock::now();
  if (tried_ != std::chrono::steady_clock::time_point() && now - tried_ < kPause) return;
  tried_ = now;
  form_ = BeginWriteAhead(handle);
}

Form EndWriteAhead(sqlite3* handle) {
  if (HasMoved(handle)) return Form::Ordinary;
  const ShortPatience patience(handle);
  if (FormOf(handle) == Form::WriteAhead) Run(handle, "PRAGMA journal_mode = DELETE");
  return FormOf(handle);
}

void CloseInOrder(sqlite3* handle) {
  const bool isLeft = EndWriteAhead(handle) == Form::WriteAhead;
  const auto path = PathOf(handle);
  sqlite3_close_v2(handle);
  if (isLeft) LookBehind(path);
}

}  // namespace twqb::storage
