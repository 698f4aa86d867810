#include "adapters/backup/RestoreJournal.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>

#include "adapters/backup/BackupError.h"
#include "adapters/backup/BackupFolder.h"
#include "adapters/storage/Replaceable.h"
#include "adapters/system/FileDescriptor.h"
#include "adapters/system/FileReplacement.h"

namespace twqb::backup {

namespace fs = std::filesystem;

namespace {

std::string JournalPath(const std::string& folder) { return fmt::format("{}/{}/restore.json", folder, kBackupFolder); }

void Remove(const std::string& path) {
  if (::unlink(path.c_str()) != 0 && errno != ENOENT) RaiseForFile(path, "removed");
}

// Under which it is written; a process that dies leaves half a file by it.
std::string UnfinishedName(const std::string& target, Staging staging) { return StagedName(target, staging) + ".new"; }

// A group that is another one gets no more than everybody has.
Ownership GiveRights(const std::string& of, const std::string& path) {
  struct stat was = {};
  if (::stat(of.c_str(), &was) != 0) return Ownership::AsItWas;
  const FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  if (!file) return Ownership::Other;
  constexpr mode_t kRights = 0777;
  constexpr mode_t kGroup = 0070;
  constexpr mode_t kOthers = 0007;
  constexpr int kOthersToGroup = 3;
  const bool isGroup = ::fchown(file.Get(), static_cast<uid_t>(-1), was.st_gid) == 0;
  auto rights = static_cast<mode_t>(was.st_mode & kRights);
  if (!isGroup) rights = (rights & ~kGroup) | (rights & kGroup & (rights & kOthers) << kOthersToGroup);
  static_cast<void>(::fchmod(file.Get(), rights));
  const bool isOwner = ::fchown(file.Get(), was.st_uid, static_cast<gid_t>(-1)) == 0;
  return isGroup && isOwner ? Ownership::AsItWas : Ownership::Other;
}

Ownership CarryOut(BackupFolder& folder, const KeptFile& file, Staging staging) {
  if (!file.isThere) {
    Remove(file.path);
    SynchroniseFolderOf(file.path);
    return Ownership::AsItWas;
  }
  auto ownership = Ownership::AsItWas;
  std::error_code failure;
  const auto staged = StagedName(file.path, staging);
  // What goes by its name may be of another set, or of a program that died while it wrote it.
  if (!folder.IsAt(staged, file)) {
    if (folder.Look({.part = file.part, .path = file.path}).IsLike(file)) return ownership;  // it is in place
    ownership = LayReady(folder, file, staging);
  }
  if (IsDatabase(file.part)) {
    RequireReplaceable(file.path);
    SynchroniseFolderOf(file.path);
  }
  fs::rename(staged, file.path, failure);
  if (failure) RaiseForFile(file.path, "replaced", failure.value());
  SynchroniseFolderOf(file.path);
  return ownership;
}

using Json = nlohmann::ordered_json;

constexpr int kFormat = 2;  // of the journal

Json ToJson(const KeptFile& file) {
  Json json = {{"there", file.isThere}};
  if (!file.isThere) return json;
  json["size"] = file.content.size;
  json["pieces"] = file.content.pieces;
  return json;
}

KeptFile FileFrom(Part part, const std::string& path, const Json& json) {
  KeptFile file{.part = part, .path = path, .isThere = json.at("there").get<bool>()};
  if (file.isThere) {
    file.content = {.size = json.at("size").get<std::uint64_t>(), .pieces = json.at("pieces").get<std::string>()};
  }
  return file;
}

}  // namespace

void RequireReplaceable(const std::string& database) {
  if (storage::MakeReplaceable(database)) return;
  throw BackupError(fmt::format("{} can't be replaced: another program has it open and writes to it.", database));
}

std::string StagedName(const std::string& target, Staging staging) {
  return target + (staging == Staging::First ? ".restoring" : ".restoring-2");
}

Ownership LayReady(const BackupFolder& folder, const KeptFile& file, Staging staging) {
  const auto unfinished = UnfinishedName(file.path, staging);
  std::error_code failure;
  // What has the name already stays until this is whole: that it is there tells that the target is not replaced yet.
  fs::remove(unfinished, failure);
  folder.WriteTo(file, unfinished);
  const auto ownership = GiveRights(file.path, unfinished);
  fs::rename(unfinished, StagedName(file.path, staging), failure);
  if (failure) {
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    RaiseForFile(StagedName(file.path, staging), "made", failure.value());
  }
  SynchroniseFolderOf(file.path);
  return ownership;
}

void RemoveStaged(const std::string& target, Staging staging) {
  std::error_code ignored;
  fs::remove(StagedName(target, staging), ignored);
  fs::remove(UnfinishedName(target, staging), ignored);
}

void RemoveStaged(const std::string& target) {
  for (const auto staging : {Staging::First, Staging::Second}) RemoveStaged(target, staging);
}

std::optional<RestoreJournal> ReadRestoreJournal(const std::string& folder) {
  const auto path = JournalPath(folder);
  const auto file = OpenForReading(path);
  if (!file && (errno == ENOENT || errno == ENOTDIR)) return std::nullopt;
  std::string text;
  if (!file || !ReadRest(file, text)) RaiseForFile(path, "read");
  try {
    const auto json = Json::parse(text);
    if (json.at("format").get<int>() != kFormat) throw std::runtime_error("another version of twqb wrote it");
    RestoreJournal journal{.set = json.at("set").get<std::string>(),
                           .isUndo = json.at("undo").get<bool>(),
                           .kept = json.at("kept").get<std::string>(),
                           .changes = json.value("changes", std::vector<std::string>()),
                           .staging = json.value("second", false) ? Staging::Second : Staging::First};
    for (const auto& step : json.at("steps")) {
      const auto part = PartFrom(step.at("part").get<std::string>()).value();
      const auto target = PathIn(step.at("name").get<std::string>(), folder);
      auto& read = journal.steps.emplace_back(
          RestoreStep{.file = FileFrom(part, target, step.at("file")), .was = FileFrom(part, target, step.at("was"))});
      if (step.contains("changed")) read.changed = FileFrom(part, target, step.at("changed"));
    }
    return journal;
  } catch (const std::exception& failure) {
    throw BackupError(
        fmt::format("{} can't be read ({}). It tells what was being done. Remove it, and put the set back once more: "
                    "until then some files are of the set and some are not.",
                    path, failure.what()));
  }
}

void BeginRestore(const std::string& folder, const RestoreJournal& journal) {
  auto steps = Json::array();
  for (const auto& [file, was, changed] : journal.steps) {
    steps.push_back({{"part", NameOf(file.part)},
                     {"name", PathFrom(file.path, folder)},
                     {"file", ToJson(file)},
                     {"was", ToJson(was)}});
    if (changed) steps.back()["changed"] = ToJson(*changed);
  }
  const Json json = {{"format", kFormat},          {"set", journal.set},
                     {"undo", journal.isUndo},     {"kept", journal.kept},
                     {"changes", journal.changes}, {"second", journal.staging == Staging::Second},
                     {"steps", std::move(steps)}};
  const auto path = JournalPath(folder);
  if (!ReplaceFile(path, json.dump(1) + "\n")) RaiseForFile(path, "written");
}

std::vector<Change> ChangedSinceItBegan(const std::string& folder, const RestoreJournal& journal) {
  BackupFolder backups(folder);
  std::vector<Change> all;
  // The steps are done in their order: from the first new file on that still stands beside its target, none is.
  auto from = ChangedFrom::Set;
  for (const auto& step : journal.steps) {
    std::error_code ignored;
    if (fs::exists(StagedName(step.file.path, journal.staging), ignored)) from = ChangedFrom::Was;
    auto now = backups.Look({.part = step.file.part, .path = step.file.path});
    const bool isKnown = now.IsLike(step.was) || now.IsLike(step.file) || (step.changed && now.IsLike(*step.changed));
    if (!isKnown) all.push_back({.now = std::move(now), .from = from});
  }
  return all;
}

std::vector<std::string> CarryOutRestore(const std::string& folder, const RestoreJournal& journal) {
  BackupFolder backups(folder);
  std::vector<std::string> others;
  for (const auto& step : journal.steps) {
    if (CarryOut(backups, step.file, journal.staging) == Ownership::Other) others.push_back(step.file.path);
  }
  return others;
}

void EndRestore(const std::string& folder, const RestoreJournal& journal) {
  BackupFolder backups(folder);
  if (journal.isUndo) backups.MarkUndone(journal.set);
  for (const auto& step : journal.steps) RemoveStaged(step.file.path);
  const auto path = JournalPath(folder);
  Remove(path);
  SynchroniseFolderOf(path);
  // Behind it, for the set that was put back may be the oldest one.
  backups.ClearUp();
}

}  // namespace twqb::backup
