#include "adapters/backup/BackupFolder.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "adapters/backup/BackupError.h"
#include "adapters/backup/FileState.h"
#include "adapters/backup/Sha256.h"
#include "adapters/storage/StillDatabase.h"
#include "adapters/system/FileDescriptor.h"
#include "adapters/system/FileReplacement.h"
#include "platform/Text.h"

namespace twqb::backup {

namespace fs = std::filesystem;

namespace {

constexpr const char* kManifest = "manifest.json";
constexpr const char* kEnd = "end.json";
constexpr const char* kUndone = "undone";
constexpr const char* kPieces = "pieces";
constexpr const char* kLock = "lock";
constexpr const char* kCopy = "copy";
constexpr mode_t kOwnersAlone = 0600;

constexpr std::size_t kStampLength = 17;

// A name of Make's, and whole: what has another one is not this program's to remove, nor what stands in such a folder
// beside the files of a set.
bool IsSetName(std::string_view name) {
  constexpr std::string_view kForm = "0000-00-00-000000";
  static_assert(kForm.size() == kStampLength);
  constexpr std::size_t kNumberLength = 4;  // at least
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  if (name.size() < kStampLength) return false;
  for (std::size_t i = 0; i < kStampLength; ++i) {
    if (kForm[i] == '0' ? !isDigit(name[i]) : name[i] != kForm[i]) return false;
  }
  const auto rest = name.substr(kStampLength);
  return rest.empty() ||
         (rest.size() > kNumberLength && rest.front() == '.' && std::ranges::all_of(rest.substr(1), isDigit));
}

// A file of a set, or one that was about to replace it.
bool IsOfSet(std::string_view name) {
  return std::ranges::any_of(std::array{kManifest, kEnd, kUndone}, [&](std::string_view own) {
    return name == own || (name.starts_with(own) && name.substr(own.size()).starts_with('.') && name.ends_with(".tmp"));
  });
}

// What the name of a set would be, had nobody given it another.
std::string StampOf(const Set& set) {
  if (!set.isNamed) return set.name;
  auto stamp = set.manifest.made.substr(0, kStampLength + 2);
  std::ranges::replace(stamp, 'T', '-');
  std::erase(stamp, ':');
  return stamp;
}

// What counts together: runs on one pair of databases. What can't be taken back any more, and what an undo has made,
// must not push out what still can.
std::string CountedWith(const Set& set) {
  const bool canBeTakenBack =
      set.manifest.by != MadeBy::Undo && !set.isUndone && set.manifest.condition == Condition::Whole;
  std::string key = canBeTakenBack ? "run" : "undo";
  for (const auto& file : set.manifest.files) {
    if (IsDatabase(file.part)) key += fmt::format("\n{} {}", NameOf(file.part), file.path);
  }
  return key;
}

std::optional<std::string> ReadText(const std::string& path) {
  const auto file = OpenForReading(path);
  std::string text;
  if (!file || !ReadRest(file, text)) return std::nullopt;
  return text;
}

// One that can't be read may be damaged, or of a later version. What the system does not let be read may be one.
bool SeemsManifest(const std::string& path) {
  const auto text = ReadText(path);
  return !text || std::ranges::all_of(std::array{"\"format\"", "\"made\"", "\"files\""},
                                      [&](const char* key) { return text->find(key) != std::string::npos; });
}

void MakeFolder(const std::string& path) {
  std::error_code failure;
  if (fs::create_directory(path, failure)) {
    fs::permissions(path, fs::perms::owner_all, failure);  // names and amounts are in it, as in the databases
  } else if (failure) {
    RaiseForFile(path, "made", failure.value());
  }
}

// What a set knows of a file that is as it was; nothing where none does.
const KeptFile* FindKnown(const std::vector<Set>& sets, const KeptFile& file, const std::string& identity) {
  if (identity.empty()) return nullptr;
  const auto in = [&](const std::vector<KeptFile>& files) -> const KeptFile* {
    const auto known = std::ranges::find_if(files, [&](const KeptFile& other) {
      return other.part == file.part && other.path == file.path && other.identity == identity;
    });
    return known == files.end() ? nullptr : &*known;
  };
  for (const auto& set : sets) {
    if (const auto* known = in(set.manifest.files)) return known;
    if (const auto* known = set.end ? in(set.end->files) : nullptr) return known;
  }
  return nullptr;
}

}  // namespace

// Two runs on other files may use the folder at once: what one has not named in a manifest yet the other must not take
// for unused.
class BackupFolder::Hold {
 public:
  explicit Hold(const std::string& path) : file_(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kOwnersAlone)) {
    if (!file_) RaiseForFile(path, "written");
    while (::flock(file_.Get(), LOCK_EX) != 0 && errno == EINTR) {
    }
  }

 private:
  FileDescriptor file_;
};

BackupFolder::BackupFolder(std::string folder, std::function<bool()> goOn)
    : folder_(std::move(folder)), goOn_(std::move(goOn)), pieces_(Path(kPieces)) {}

std::string BackupFolder::Path(std::string_view name) const {
  return fmt::format("{}/{}/{}", folder_, kBackupFolder, name);
}

std::vector<Set> BackupFolder::Sets() const {
  std::vector<Set> sets;
  std::error_code failure;
  for (const auto& entry : fs::directory_iterator(fs::path(folder_) / kBackupFolder, failure)) {
    const auto name = entry.path().filename().string();
    const auto text = ReadText((entry.path() / kManifest).string());
    auto manifest = text ? ManifestFrom(*text, folder_) : std::nullopt;
    if (!manifest) continue;
    Set set{.name = name, .manifest = std::move(*manifest), .isNamed = !IsSetName(name)};
    if (const auto end = ReadText((entry.path() / kEnd).string())) set.end = EndNoteFrom(*end, folder_);
    std::error_code ignored;
    set.isUndone = fs::exists(entry.path() / kUndone, ignored);
    sets.push_back(std::move(set));
  }
  std::ranges::sort(sets, {}, [](const Set& set) { return std::pair(StampOf(set), set.name); });
  return sets;
}

std::vector<std::string> BackupFolder::UnreadableSets() const {
  auto names = SetFolders(Whole::Yes);
  const auto sets = Sets();
  std::erase_if(names, [&](const auto& name) { return std::ranges::find(sets, name, &Set::name) != sets.end(); });
  std::ranges::sort(names);
  return names;
}

Set BackupFolder::Make(const Manifest& manifest, const std::vector<PartFile>& files, std::string_view stamp,
                       const std::vector<KeptFile>& known) {
  MakeFolder(fmt::format("{}/{}", folder_, kBackupFolder));
  const Hold hold(Path(kLock));
  RemoveHalfSets();
  auto sets = Sets();
  // What is put back may be the oldest one: it goes behind that.
  if (manifest.by == MadeBy::Transfer) RemoveOldSets(sets);
  Set set{.name = FreeName(stamp), .manifest = manifest};
  // To trust what is known is to trust that its pieces are what they were, and this may be the only copy of what is
  // about to be replaced. Reading the file compares them, and writes a damaged one anew.
  const auto trusted = manifest.by == MadeBy::Transfer ? sets : std::vector<Set>();
  try {
    for (const auto& file : files) {
      const auto told = std::ranges::find(known, file.part, &KeptFile::part);
      if (told != known.end()) pieces_.Read(told->content, [](std::string_view) {});
      set.manifest.files.push_back(told != known.end() ? *told : Keep(file, trusted));
    }
    pieces_.Settle();
    MakeFolder(Path(set.name));
    WriteManifest(set);
  } catch (...) {
    RemoveSet(set.name);
    RemoveUnusedPieces(sets);
    throw;
  }
  SynchroniseFolderOf(Path(set.name));
  return set;
}

void BackupFolder::Add(Set& set, const PartFile& file) {
  const Hold hold(Path(kLock));
  auto kept = Keep(file, Sets());
  pieces_.Settle();
  std::erase_if(set.manifest.files, [&](const KeptFile& other) { return other.part == file.part; });
  set.manifest.files.push_back(std::move(kept));
  WriteManifest(set);
}

void BackupFolder::NoteEnd(const Set& set, const std::string& at) {
  const Hold hold(Path(kLock));
  auto sets = Sets();
  EndNote end{.at = at};
  for (const auto& before : set.manifest.files) {
    WaitUntilSettled(before.path);
    end.files.push_back(Keep({.part = before.part, .path = before.path}, sets));
  }
  if (!WriteEnd(set, end)) return;
  const auto own = std::ranges::find(sets, set.name, &Set::name);
  if (own != sets.end()) own->end = std::move(end);
  RemoveOldSets(sets);
}

void BackupFolder::NoteEnd(const Set& set, const EndNote& end) {
  const Hold hold(Path(kLock));
  static_cast<void>(WriteEnd(set, end));
}

// False: nothing is other than it was, and the set has gone.
bool BackupFolder::WriteEnd(const Set& set, const EndNote& end) {
  const bool isChanged = !std::ranges::equal(
      set.manifest.files, end.files, [](const KeptFile& before, const KeptFile& now) { return before.IsLike(now); });
  if (!isChanged) {
    RemoveSet(set.name);
    return false;
  }
  pieces_.Settle();
  Write(Path(set.name) + "/" + kEnd, TextOf(end, folder_));
  return true;
}

void BackupFolder::Remove(const Set& set) const noexcept {
  try {
    const Hold hold(Path(kLock));
    RemoveSet(set.name);
    RemoveUnusedPieces(Sets());
  } catch (const std::exception&) {
    return;
  }
}

void BackupFolder::ClearUp() const noexcept {
  try {
    const Hold hold(Path(kLock));
    auto sets = Sets();
    RemoveOldSets(sets);
  } catch (const std::exception&) {
    return;
  }
}

void BackupFolder::MarkUndone(const std::string& set) const {
  std::error_code ignored;
  if (fs::exists(Path(set), ignored)) Write(Path(set) + "/" + kUndone, "\n");
}

KeptFile BackupFolder::Look(const PartFile& file) {
  const Hold hold(Path(kLock));
  auto kept = Keep(file, Sets());
  pieces_.Settle();
  return kept;
}

bool BackupFolder::IsAt(const std::string& path, const KeptFile& file) const {
  return PieceStore::IsMadeOf(path, file.content, goOn_);
}

void BackupFolder::WriteTo(const KeptFile& file, const std::string& path) const {
  FileDescriptor target(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnersAlone));
  if (!target) RaiseForFile(path, "made");
  try {
    pieces_.Read(file.content, [&](std::string_view piece) {
      if (!goOn_()) throw BackupEnded();
      if (!WriteAll(target, piece)) RaiseForFile(path, "written");
    });
    if (::fsync(target.Get()) != 0 || !target.Close()) RaiseForFile(path, "written");
  } catch (...) {
    ::unlink(path.c_str());
    throw;
  }
  SynchroniseFolderOf(path);
}

// What is known of a file that has not changed since is not read again.
KeptFile BackupFolder::Keep(const PartFile& file, const std::vector<Set>& sets) {
  KeptFile kept{.part = file.part, .path = file.path};
  std::error_code ignored;
  kept.isThere = fs::exists(file.path, ignored);
  if (!kept.isThere) return kept;
  // A manifest could not tell it, and another file would be put back.
  if (!IsUtf8(PathFrom(file.path, folder_))) {
    throw BackupError(fmt::format("{} can't be kept: its name is not UTF-8. Give it another one.", file.path));
  }
  if (!IsDatabase(file.part)) {
    kept.content = pieces_.Keep(file.path, goOn_);
    return kept;
  }
  // Ahead of the hold: closing the file, which this does, would drop the engine's locks.
  const auto identity = IdentityTextOf(file.path);
  {
    const storage::StillDatabase still(file.path);
    if (still.CouldNotBeHeld()) {
      throw BackupError(fmt::format("{} can't be read as one state: another program is writing to it.", file.path));
    }
    if (still.HasLog()) {
      const auto copy = Path(kCopy);
      {
        const FileDescriptor made(::open(copy.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, kOwnersAlone));
        if (!made) RaiseForFile(copy, "written");
      }
      const bool isCopied = still.CopyTo(copy);
      if (isCopied) kept.content = pieces_.Keep(copy, goOn_);
      ::unlink(copy.c_str());
      if (!isCopied) throw BackupError(fmt::format("{} can't be written: is there room?", copy));
      return kept;
    }
    if (const auto* known = FindKnown(sets, kept, identity)) return *known;
    kept.content = pieces_.Keep(file.path, goOn_);
  }
  if (IdentityTextOf(file.path) == identity) kept.identity = identity;
  return kept;
}

// Behind all that are there, those that can't be read, too.
std::string BackupFolder::FreeName(std::string_view stamp) const {
  auto names = SetFolders(Whole::Yes);
  std::erase_if(names, [](const std::string& name) { return !IsSetName(name); });
  const auto newest = std::ranges::max_element(names);
  if (newest == names.end() || *newest < stamp) return std::string(stamp);
  // The clock was put back, or it is still the same second.
  const auto rest = newest->size() > kStampLength ? std::strtoul(newest->c_str() + kStampLength + 1, nullptr, 10) : 1UL;
  return fmt::format("{}.{:04}", newest->substr(0, kStampLength), rest + 1);
}

void BackupFolder::Write(const std::string& path, const std::string& text) const {
  if (!ReplaceFile(path, text)) RaiseForFile(path, "written");
}

void BackupFolder::WriteManifest(const Set& set) const {
  Write(Path(set.name) + "/" + kManifest, TextOf(set.manifest, folder_));
}

// The manifest first: without it there is no set. What somebody has put beside it stays, and so does its folder then.
void BackupFolder::RemoveSet(const std::string& name) const {
  std::error_code ignored;
  fs::remove(Path(name) + "/" + kManifest, ignored);
  std::vector<fs::path> own;
  for (const auto& entry : fs::directory_iterator(Path(name), ignored)) {
    if (IsOfSet(entry.path().filename().string())) own.push_back(entry.path());
  }
  for (const auto& file : own) fs::remove(file, ignored);
  fs::remove(Path(name), ignored);
}

// A folder by another name is a set only when its manifest is one of this program's by all that can be seen; others
// have files of that name, too.
std::vector<std::string> BackupFolder::SetFolders(Whole whole) const {
  std::vector<std::string> names;
  std::error_code failure;
  for (const auto& entry : fs::directory_iterator(fs::path(folder_) / kBackupFolder, failure)) {
    std::error_code ignored;
    const auto name = entry.path().filename().string();
    const bool hasManifest = fs::exists(entry.path() / kManifest, ignored);
    const bool isSet = IsSetName(name) || (hasManifest && SeemsManifest((entry.path() / kManifest).string()));
    if (isSet && hasManifest == (whole == Whole::Yes)) names.push_back(name);
  }
  return names;
}

void BackupFolder::RemoveHalfSets() const {
  for (const auto& name : SetFolders(Whole::No)) RemoveSet(name);
}

void BackupFolder::RemoveOldSets(std::vector<Set>& sets) const {
  std::map<std::string, std::size_t> counts;
  std::unordered_set<std::string> old;
  for (auto set = sets.rbegin(); set != sets.rend(); ++set) {
    if (set->IsAutomatic() && ++counts[CountedWith(*set)] > kKeptSets) old.insert(set->name);
  }
  std::erase_if(sets, [&](const Set& set) {
    if (!old.contains(set.name)) return false;
    RemoveSet(set.name);
    return true;
  });
  RemoveUnusedPieces(sets);
}

// A set whose manifest can't be read, of a later version of twqb perhaps, has pieces that nobody here knows.
void BackupFolder::RemoveUnusedPieces(const std::vector<Set>& sets) const {
  for (const auto& name : SetFolders(Whole::Yes)) {
    if (std::ranges::find(sets, name, &Set::name) == sets.end()) return;
  }
  std::unordered_set<std::string_view> used;
  const auto use = [&](const std::vector<KeptFile>& files) {
    for (const auto& file : files) {
      const std::string_view pieces = file.content.pieces;
      for (std::size_t at = 0; at < pieces.size(); at += kDigestLength) used.insert(pieces.substr(at, kDigestLength));
    }
  };
  for (const auto& set : sets) {
    use(set.manifest.files);
    if (set.end) use(set.end->files);
  }
  pieces_.RemoveAllBut(used);
}

}  // namespace twqb::backup
