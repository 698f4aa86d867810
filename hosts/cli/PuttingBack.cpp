#include "cli/PuttingBack.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "adapters/backup/BackupError.h"
#include "cli/ExitStatus.h"
#include "cli/Output.h"

namespace twqb::cli {

namespace fs = std::filesystem;

namespace {

using backup::BackupError;
using backup::KeptFile;
using backup::Part;

bool IsFile(const std::string& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

std::vector<KeptFile> Chosen(const backup::Set& set, std::optional<Part> only) {
  std::vector<KeptFile> files;
  for (const auto& file : set.manifest.files) {
    // A side that was not there is none that could be put back.
    const bool isSide = backup::IsDatabase(file.part) && !file.isThere;
    if (!isSide && (!only || *only == file.part)) files.push_back(file);
  }
  return files;
}

std::vector<std::string> DatabasesOf(const std::vector<KeptFile>& files) {
  std::vector<std::string> paths;
  for (const auto& file : files) {
    if (backup::IsDatabase(file.part)) paths.push_back(file.path);
  }
  return paths;
}

// A file that is laid ready has the rights of the one that it replaces.
void GiveRights(const std::string& from, const std::string& to) {
  std::error_code failure;
  const auto status = fs::status(from, failure);
  if (!failure && fs::exists(status)) fs::permissions(to, status.permissions(), failure);
}

}  // namespace

PuttingBack::PuttingBack(const Options& options, backup::Set set, std::optional<Part> only)
    : options_(options),
      place_(WorkplaceOf(options)),
      set_(std::move(set)),
      files_(Chosen(set_, only)),
      folder_(BackupsOf(place_)) {
  if (files_.empty()) {
    throw UsageError(fmt::format("The set {} has {}.", set_.name,
                                 only ? fmt::format("not kept {}", backup::CalledOf(*only)) : "nothing to put back"));
  }
  auto paths = DatabasesOf(files_);
  for (const auto& part : PartsOf(place_)) {
    if (backup::IsDatabase(part.part)) paths.push_back(part.path);
  }
  held_.emplace(paths, options_);
  HoldCompany();
  LayReady();
}

PuttingBack::~PuttingBack() { RemoveLaidReady(); }

// Sessions of the embedded company file may be others than transfers.
void PuttingBack::HoldCompany() {
  const auto company = std::ranges::find(files_, Part::Company, &KeptFile::part);
  if (company == files_.end() || !IsFile(company->path)) return;
  session_ = company::FileLock::TryTake(company->path + ".lock", company::LockKind::Exclusive);
  if (session_) return;
  throw UsageError(
      fmt::format("A program has a session open in {}. Nothing has been put back.\nEnd it, then start "
                  "again.",
                  company->path));
}

void PuttingBack::LayReady() {
  RemoveLaidReady();
  try {
    for (const auto& file : files_) {
      if (!file.isThere) continue;
      folder_.WriteTo(file, backup::StagedName(file.path));
      GiveRights(file.path, backup::StagedName(file.path));
    }
  } catch (const backup::BackupEnded&) {
    RemoveLaidReady();
    throw EndedBySignal();
  } catch (const BackupError& failure) {
    RemoveLaidReady();
    throw UsageError(
        fmt::format("The set {} can't be put back, and nothing has been changed.\n{}", set_.name, failure.what()));
  }
}

void PuttingBack::RemoveLaidReady() const {
  for (const auto& file : files_) backup::RemoveStaged(file.path);
}

std::vector<SideDifferences> PuttingBack::Differences() const {
  std::vector<SideDifferences> all;
  for (const auto& file : files_) {
    all.push_back(DifferencesOf(file.part, file.path, file.isThere ? backup::StagedName(file.path) : std::string()));
  }
  return all;
}

std::vector<SideDifferences> PuttingBack::ChangedSince(const backup::EndNote& end) {
  std::vector<SideDifferences> all;
  try {
    for (const auto& file : end.files) {
      const auto now = folder_.Look({.part = file.part, .path = file.path});
      if (now.isThere == file.isThere && now.content == file.content) continue;
      const auto then = fmt::format("{}/{}/then", place_.folder, backup::kBackupFolder);
      std::error_code ignored;
      fs::remove(then, ignored);
      if (file.isThere) folder_.WriteTo(file, then);
      auto found = DifferencesOf(file.part, file.path, file.isThere ? then : std::string());
      fs::remove(then, ignored);
      // A page that was written anew with what it held tells nothing.
      if (!found.IsNone()) all.push_back(std::move(found));
    }
  } catch (const backup::BackupEnded&) {
    throw EndedBySignal();
  } catch (const BackupError& failure) {
    throw UsageError(fmt::format("It can't be told whether something has changed since. {}", failure.what()));
  }
  return all;
}

// Who has a database open and writes to it ahead would go on with the one that is replaced.
void PuttingBack::RequireAlone() const {
  try {
    for (const auto& path : DatabasesOf(files_)) {
      if (IsFile(path)) backup::RequireReplaceable(path);
    }
  } catch (const BackupError& failure) {
    throw UsageError(fmt::format("Nothing has been put back. {}\nClose it there, then start again.", failure.what()));
  }
}

std::string PuttingBack::PutBack(backup::MadeBy by, const std::string& what) {
  auto options = options_;
  options.label = what;
  auto parts = PartsOf(place_);
  for (const auto& file : files_) {
    std::erase_if(parts, [&](const backup::PartFile& part) { return part.part == file.part; });
    parts.push_back({.part = file.part, .path = file.path});
  }
  RunBackup before(place_, options, parts, by);
  RequireAlone();
  backup::RestoreJournal journal{.set = set_.name, .isUndo = by == backup::MadeBy::Undo};
  for (const auto& file : files_) {
    journal.steps.push_back({.part = file.part, .target = file.path, .isThere = file.isThere, .content = file.content});
  }
  try {
    backup::BeginRestore(place_.folder, journal);
  } catch (const BackupError& failure) {
    throw UsageError(fmt::format("Nothing has been put back. {}", failure.what()));
  }
  // What is laid ready belongs to the journal now.
  files_.clear();
  try {
    backup::CarryOutRestore(place_.folder, journal);
  } catch (const BackupError& failure) {
    throw UsageError(
        fmt::format("The set {} is put back in part. {}\nMake that possible; whatever twqb command comes "
                    "next in this folder puts back the rest.",
                    set_.name, failure.what()));
  }
  before.NoteEnd();
  return before.Name();
}

void CompleteRestore(const Options& options) {
  std::error_code failure;
  const auto folder = fs::current_path(failure).string();
  if (failure) return;
  try {
    const auto begun = backup::ReadRestoreJournal(folder);
    if (!begun) return;
    std::vector<std::string> files;
    for (const auto& step : begun->steps) {
      if (backup::IsDatabase(step.part)) files.push_back(step.target);
    }
    const TransferLock held(files, options);
    // Whoever held them may have come to the end of it.
    const auto journal = backup::ReadRestoreJournal(folder);
    if (!journal) return;
    backup::CarryOutRestore(folder, *journal);
    Tell(fmt::format("The set {} was being put back when a run was broken off; that is completed now.", journal->set));
  } catch (const BackupError& reason) {
    throw UsageError(fmt::format("A run was broken off while it put files back, and that can't be completed now.\n{}",
                                 reason.what()));
  }
}

}  // namespace twqb::cli
