#include "adapters/backup/RestoreJournal.h"

#include <fmt/core.h>
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

void CarryOut(BackupFolder& folder, const RestoreStep& step) {
  if (!step.isThere) {
    Remove(step.target);
    SynchroniseFolderOf(step.target);
    return;
  }
  std::error_code failure;
  const auto staged = StagedName(step.target);
  if (!fs::exists(staged, failure)) {
    if (failure) RaiseForFile(staged, "read", failure.value());
    const auto now = folder.Look({.part = step.part, .path = step.target});
    if (now.isThere && now.content == step.content) return;  // it is in place
    folder.WriteTo({.part = step.part, .path = step.target, .content = step.content}, staged);
  }
  if (IsDatabase(step.part)) {
    RequireReplaceable(step.target);
    SynchroniseFolderOf(step.target);
  }
  fs::rename(staged, step.target, failure);
  if (failure) RaiseForFile(step.target, "replaced", failure.value());
  SynchroniseFolderOf(step.target);
}

}  // namespace

void RequireReplaceable(const std::string& database) {
  if (storage::MakeReplaceable(database)) return;
  throw BackupError(fmt::format("{} can't be replaced: another program has it open and writes to it.", database));
}

std::string StagedName(const std::string& target) { return target + ".restoring"; }

void RemoveStaged(const std::string& target) {
  std::error_code ignored;
  fs::remove(StagedName(target), ignored);
}

std::optional<RestoreJournal> ReadRestoreJournal(const std::string& folder) {
  const auto path = JournalPath(folder);
  const auto file = OpenForReading(path);
  if (!file && (errno == ENOENT || errno == ENOTDIR)) return std::nullopt;
  std::string text;
  if (!file || !ReadRest(file, text)) RaiseForFile(path, "read");
  try {
    const auto json = nlohmann::json::parse(text);
    RestoreJournal journal{.set = json.at("set").get<std::string>(), .isUndo = json.at("undo").get<bool>()};
    for (const auto& step : json.at("steps")) {
      journal.steps.push_back(
          {.part = PartFrom(step.at("part").get<std::string>()).value(),
           .target = step.at("target").get<std::string>(),
           .isThere = step.at("there").get<bool>(),
           .content = {.size = step.at("size").get<std::uint64_t>(), .pieces = step.at("pieces").get<std::string>()}});
    }
    return journal;
  } catch (const std::exception& failure) {
    throw BackupError(fmt::format("{} can't be read: {}.", path, failure.what()));
  }
}

void BeginRestore(const std::string& folder, const RestoreJournal& journal) {
  auto steps = nlohmann::ordered_json::array();
  for (const auto& step : journal.steps) {
    steps.push_back({{"part", NameOf(step.part)},
                     {"target", step.target},
                     {"there", step.isThere},
                     {"size", step.content.size},
                     {"pieces", step.content.pieces}});
  }
  const nlohmann::ordered_json json = {{"set", journal.set}, {"undo", journal.isUndo}, {"steps", std::move(steps)}};
  const auto path = JournalPath(folder);
  if (!ReplaceFile(path, json.dump(1) + "\n")) RaiseForFile(path, "written");
}

void CarryOutRestore(const std::string& folder, const RestoreJournal& journal) {
  BackupFolder backups(folder);
  for (const auto& step : journal.steps) CarryOut(backups, step);
  if (journal.isUndo) backups.MarkUndone(journal.set);
  const auto path = JournalPath(folder);
  Remove(path);
  SynchroniseFolderOf(path);
}

}  // namespace twqb::backup
