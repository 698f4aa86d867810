#include "cli/workplace/MakingFolder.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>  // mkdtemp
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "adapters/system/FileIdentity.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/options/ExitStatus.h"
#include "cli/screen/TextFile.h"

namespace twqb::cli {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kFolderName = ".twqb-init-";
// Written when all is made and nothing is in place yet: which files are about to come there.
constexpr const char* kPlacing = "placing";
constexpr std::chrono::minutes kYoung{1};

// The lock by which others know that the folder is in work.
FileDescriptor TryLock(const fs::path& folder) {
  FileDescriptor handle(::open(folder.string().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW));
  if (handle && ::flock(handle.Get(), LOCK_EX | LOCK_NB) != 0) handle.Close();
  return handle;
}

bool IsOwn(const fs::path& path) {
  struct stat status = {};
  return ::lstat(path.string().c_str(), &status) == 0 && status.st_uid == ::geteuid();
}

// Whether nothing is in the folder that a making does not put there: files of the names, with what databases and
// writers keep beside them, and the mark.
bool HoldsOursAlone(const fs::path& folder, FileNames names) {
  std::error_code failure;
  fs::directory_iterator entry(folder, failure);
  for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
    const auto name = entry->path().filename().string();
    const bool isOurs = name.starts_with(kPlacing) ||
                        std::ranges::any_of(names, [&](const char* own) { return name.starts_with(own); });
    if (!isOurs || fs::is_directory(entry->symlink_status(failure))) return false;
  }
  return !failure;
}

// One without a lock yet: its maker may be just about to take it.
bool IsJustMade(const fs::path& folder) {
  std::error_code failure;
  const auto made = fs::last_write_time(folder, failure);
  return failure || (fs::is_empty(folder, failure) && fs::file_time_type::clock::now() - made < kYoung);
}

std::string MarkText(const fs::path& made, FileNames names) {
  std::string text;
  for (const auto* name : names) {
    const auto identity = IdentityOf((made / name).string()).value_or(FileIdentity{});
    text += fmt::format("{} {} {} {}\n", name, identity.device, identity.number, fs::file_size(made / name));
  }
  return text;
}

// The files of `above` that the mark tells of and that are those still, as they were made.
std::vector<fs::path> PlacedBy(const fs::path& made, const fs::path& above) {
  std::vector<fs::path> placed;
  std::error_code failure;
  const auto mark = made / kPlacing;
  const auto written = fs::last_write_time(mark, failure);
  if (failure) return placed;
  std::istringstream lines(ReadTextFile(mark.string()));
  std::string name;
  std::uintmax_t size = 0;
  for (FileIdentity identity; lines >> name >> identity.device >> identity.number >> size;) {
    const auto file = above / name;
    if (fs::is_symlink(file, failure) || IdentityOf(file.string()) != identity) continue;
    const auto changed = fs::last_write_time(file, failure);
    // A clock that is coarse, or was put back, hides a change, and seldom one of the size as well.
    if (!failure && changed <= written && fs::file_size(file, failure) == size && !failure) placed.push_back(file);
  }
  return placed;
}

void RemoveLeftFolder(const fs::path& left, const fs::path& above, FileNames names) {
  if (!IsOwn(left) || IsJustMade(left) || !HoldsOursAlone(left, names)) return;
  const auto lock = TryLock(left);
  if (!lock) return;
  std::error_code ignored;
  const bool isComplete = std::ranges::all_of(
      names, [&](const char* name) { return fs::exists(fs::symlink_status(above / name, ignored)); });
  if (!isComplete) {
    for (const auto& file : PlacedBy(left, above)) fs::remove(file, ignored);
  }
  fs::remove_all(left, ignored);
}

// Under the name `to`, unless something is there.
void PutOneInPlace(const fs::path& from, const fs::path& to) {
  // One name from the first moment: with a second one, that a kill would leave, the file is refused by transfers.
  if (::renameat2(AT_FDCWD, from.string().c_str(), AT_FDCWD, to.string().c_str(), RENAME_NOREPLACE) == 0) return;
  if (errno == EEXIST) RefuseExisting(to);
  std::error_code failure;
  // A link fails where a renaming would overwrite. Not every file system has both of these.
  fs::create_hard_link(from, to, failure);
  if (!failure) return;
  if (failure == std::errc::file_exists || fs::exists(fs::symlink_status(to))) RefuseExisting(to);
  fs::rename(from, to);
}

}  // namespace

void RefuseExisting(const fs::path& file) {
  throw UsageError(
      fmt::format("{} is there already, and nothing is overwritten.\nMove it away, or choose another "
                  "folder with -C.",
                  file.string()));
}

void RemoveUnfinished(const fs::path& above, FileNames names) {
  std::vector<fs::path> left;
  std::error_code failure;
  fs::directory_iterator entry(above, failure);
  for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
    if (entry->path().filename().string().starts_with(kFolderName)) left.push_back(entry->path());
  }
  for (const auto& folder : left) {
    try {
      RemoveLeftFolder(folder, above, names);
    } catch (const std::exception&) {
      // What can't be looked at stays.
    }
  }
}

MakingFolder::MakingFolder(const fs::path& above, FileNames names) : above_(above), names_(names) {
  auto pattern = (above / fmt::format("{}XXXXXX", kFolderName)).string();
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw UsageError(fmt::format("Nothing can be made in the folder {}: {}.", above.string(),
                                 std::generic_category().message(errno)));
  }
  path_ = pattern;
  lock_ = TryLock(path_);  // a file system without locks keeps what a kill leaves
}

MakingFolder::~MakingFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

void MakingFolder::PutInPlace() const {
  std::vector<fs::path> placed;
  try {
    WriteTextFile((path_ / kPlacing).string(), MarkText(path_, names_));
    for (const auto* name : names_) {
      PutOneInPlace(path_ / name, above_ / name);
      placed.push_back(above_ / name);
    }
    if (EndSignals::Came() != 0) throw EndedBySignal();
  } catch (...) {
    std::error_code ignored;
    for (const auto& file : placed) fs::remove(file, ignored);
    throw;
  }
}

}  // namespace twqb::cli
