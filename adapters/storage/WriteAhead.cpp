#include "adapters/storage/WriteAhead.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <optional>
#include <random>
#include <string_view>
#include <system_error>
#include <thread>

#include "adapters/storage/EndingTurn.h"
#include "adapters/storage/Handles.h"
#include "adapters/storage/ReaderPlace.h"

#ifdef __linux__
#include <sys/vfs.h>
#endif

namespace twqb::storage {

namespace {

// Whether another file stands at the path by now: what is beside that one is not this handle's to touch.
bool HasMoved(sqlite3* handle) {
  int moved = 0;
  return sqlite3_file_control(handle, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved != 0;
}

// The log and its index want room; a file that went over and then can't have them could not even be read.
bool HasRoom(const std::string& path) {
  constexpr auto kRoom = std::uintmax_t{32} * 1024 * 1024;
  std::error_code failed;
  const auto space = std::filesystem::space(path, failed);
  return !failed && space.available >= kRoom;
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

enum class Ending : std::uint8_t { Done, OthersAreInIt, Failed };

// Puts the file into its ordinary form, if this handle is alone in it. The turn is taken where there is something to
// end, and is the caller's to keep until the handle is closed. Who has nothing to end must not wait for it: one that is
// suspended in its turn would have each who opens the file wait.
Ending TryEnding(sqlite3* handle, std::optional<EndingTurn>& turn) {
  if (HasMoved(handle)) return Ending::Done;
  const ShortPatience patience(handle);
  const auto failed = [handle] { return WasBusy(handle) ? Ending::OthersAreInIt : Ending::Failed; };
  // One that has not read the file for a while knows it as it was then. Who keeps others from reading it is beginning
  // or ending: how that comes out is not known yet.
  const auto isKeptOut = [handle] { return !Look(handle) && (WasBusy(handle) || SaysWrittenAhead(handle)); };
  const bool isUnknown = isKeptOut();
  if (!isUnknown && FormOf(handle) == Form::Ordinary) return Ending::Done;
  // Behind a look at a log the handle has a hold on the file, and the form stays as it was seen.
  turn.emplace(PathOf(handle));
  if (isUnknown && isKeptOut()) return failed();
  if (FormOf(handle) == Form::Ordinary) return Ending::Done;
  if (!Run(handle, "PRAGMA journal_mode = DELETE") || FormOf(handle) == Form::WriteAhead) return failed();
  // The engine takes the log away first and then writes that there is none: one that came in between has begun another.
  return HasLog(PathOf(handle)) ? Ending::OthersAreInIt : Ending::Done;
}

// The form that it is in then.
Form TryToEnd(const std::string& path) {
  auto handle = OpenToWrite(path);
  if (!handle) return Form::Ordinary;  // no longer ours to put in order
  sqlite3_busy_timeout(handle.get(), kMoment);
  std::optional<EndingTurn> turn;
  const auto ending = TryEnding(handle.get(), turn);
  handle.reset();
  if (ending == Ending::Failed) return TakeBack(path);
  return ending == Ending::Done ? Form::Ordinary : Form::WriteAhead;
}

// Programs that take no turns may close at the same moment: then each sees the other, and neither puts the file in
// order, nor takes the log away. So who was not alone looks again once it has closed. While the log stays somebody has
// the file open, who will look when he closes, or they were two: that is tried a few times, at moments that chance
// tells apart. `began` is when the closing began: who took long to get his turn was among those who take turns, and the
// one behind him looks.
void LookBehind(const std::string& path, std::chrono::steady_clock::time_point began) {
  constexpr int kAttempts = 20;
  constexpr int kAttemptsBesideLog = 4;
  constexpr int kLongestPause = 5'000;  // microseconds
  constexpr auto kInAll = std::chrono::milliseconds(500);
  // Two processes began at other moments.
  std::minstd_rand random(
      static_cast<std::minstd_rand::result_type>(std::chrono::steady_clock::now().time_since_epoch().count()));
  std::uniform_int_distribution<int> pause(0, kLongestPause);
  int besideLog = 0;
  for (int i = 0; i < kAttempts && std::chrono::steady_clock::now() - began < kInAll; ++i) {
    const bool hasLog = HasLog(path);
    if (hasLog && ++besideLog > kAttemptsBesideLog) return;
    if (i > 0 || hasLog) std::this_thread::sleep_for(std::chrono::microseconds(pause(random)));
    if (TryToEnd(path) == Form::Ordinary) return;
  }
}

}  // namespace

Form TakeBack(const std::string& path) {
  const auto handle = OpenToWrite(path);
  if (!handle) return Form::WriteAhead;
  sqlite3_busy_timeout(handle.get(), kMoment);
  if (!Run(handle.get(), "PRAGMA locking_mode = EXCLUSIVE") || !Run(handle.get(), "PRAGMA journal_mode = DELETE") ||
      FormOf(handle.get()) == Form::WriteAhead) {
    return Form::WriteAhead;
  }
  // An index that a dead process has left goes while the file is still held.
  std::error_code ignored;
  std::filesystem::remove(path + "-shm", ignored);
  return Form::Ordinary;
}

int SetUp(sqlite3* handle) {
  // Beyond FULL, the going of a rollback journal is durable, too. A log that had to grow, beside somebody who stood
  // still in it, shrinks to 64 MB when it is begun anew.
  constexpr auto kSettings = "PRAGMA synchronous = EXTRA; PRAGMA journal_size_limit = 67108864";
  const int code = sqlite3_exec(handle, kSettings, nullptr, nullptr, nullptr);
  return code == SQLITE_OK ? sqlite3_wal_autocheckpoint(handle, kLongLog) : code;
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
  auto beginning = OpenToWrite(path);
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
  // It is in it from now on, before the other one goes.
  if (Look(handle) && FormOf(handle) == Form::WriteAhead) return Form::WriteAhead;
  CloseInOrder(beginning.release());
  return Form::Ordinary;
}

void WriteAhead::BeforeWrite(sqlite3* handle) {
  constexpr auto kPause = std::chrono::seconds(1);
  if (form_ == Form::WriteAhead || sqlite3_get_autocommit(handle) == 0) return;
  const auto now = std::chrono::steady_clock::now();
  if (tried_ != std::chrono::steady_clock::time_point() && now - tried_ < kPause) return;
  tried_ = now;
  form_ = BeginWriteAhead(handle);
}

Form EndWriteAhead(sqlite3* handle) noexcept {
  try {
    std::optional<EndingTurn> turn;
    return TryEnding(handle, turn) == Ending::Done ? Form::Ordinary : Form::WriteAhead;
  } catch (const std::bad_alloc&) {
    return Form::WriteAhead;
  }
}

void CloseInOrder(sqlite3* handle) noexcept {
  Handle open(handle);
  try {
    const auto began = std::chrono::steady_clock::now();
    const auto path = PathOf(handle);
    auto ending = Ending::Done;
    {
      std::optional<EndingTurn> turn;
      ending = TryEnding(handle, turn);
      open.reset();
      if (ending == Ending::Failed && TakeBack(path) == Form::Ordinary) return;
    }
    if (ending != Ending::Done) LookBehind(path, began);
  } catch (const std::bad_alloc&) {
    // Closed it is all the same; who opens the file next puts it in order.
  }
}

}  // namespace twqb::storage
