#include "cli/backup/PuttingBack.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "adapters/backup/BackupError.h"
#include "adapters/storage/Replaceable.h"
#include "cli/options/ExitStatus.h"
#include "cli/screen/Output.h"

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

// Sessions of the embedded company file may be others than transfers. Raises BackupError.
std::optional<company::FileLock> TakeCompany(const std::string& path) {
  if (!IsFile(path)) return std::nullopt;
  auto session = company::FileLock::TryTake(path + ".lock", company::LockKind::Exclusive);
  if (session) return session;
  throw BackupError(fmt::format("A program has a session open in {}.\nEnd it, then start again.", path));
}

// The files of the workplace, and of a part that is put back the one that it is put to.
std::vector<backup::PartFile> PartsWith(const Workplace& place, const std::vector<KeptFile>& files) {
  auto parts = PartsOf(place);
  for (const auto& file : files) {
    std::erase_if(parts, [&](const backup::PartFile& part) { return part.part == file.part; });
    parts.push_back({.part = file.part, .path = file.path});
  }
  return parts;
}

// The state that somebody has changed, and what has become of it: what is told of no change is as it was in that state,
// whether it stands there at the moment or not. A mixture of both states would double records with the next transfer.
std::vector<KeptFile> StateWith(const std::vector<backup::Change>& changes, backup::ChangedFrom state,
                                const backup::RestoreJournal& journal) {
  std::vector<KeptFile> files;
  for (const auto& step : journal.steps) {
    const auto change = std::ranges::find_if(
        changes, [&](const backup::Change& each) { return each.now.part == step.file.part && each.from == state; });
    const auto& before = state == backup::ChangedFrom::Set ? step.file : step.was;
    files.push_back(change != changes.end() ? change->now : before);
  }
  return files;
}

// A run that was killed behind making the set has not noted it.
std::optional<backup::Set> FindMade(const backup::BackupFolder& folder, const std::string& label,
                                    const std::vector<KeptFile>& files) {
  for (auto& set : folder.Sets()) {
    const bool isLike = set.manifest.before == label && std::ranges::all_of(files, [&](const KeptFile& file) {
                          const auto* kept = set.Find(file.part);
                          return kept != nullptr && kept->path == file.path && kept->IsLike(file);
                        });
    if (isLike) return std::move(set);
  }
  return std::nullopt;
}

// What somebody has changed since a restore was broken off is in no set yet, and goes with its completion. Noted in the
// journal, so that another attempt keeps it no second time.
void KeepChanges(const Options& options, const std::string& folder, backup::RestoreJournal& journal) {
  // What stands beside a database is taken into it first, and is a part of it from then on.
  const auto isChanged = !backup::ChangedSinceItBegan(folder, journal).empty();
  if (!isChanged) return;
  for (const auto& step : journal.steps) {
    if (backup::IsDatabase(step.file.part) && IsFile(step.file.path)) backup::RequireReplaceable(step.file.path);
  }
  const auto changes = backup::ChangedSinceItBegan(folder, journal);
  backup::BackupFolder backups(folder);
  const auto place = WorkplaceOf(options);
  const auto label = fmt::format("changes amid restore {}", journal.set);
  for (const auto state : {backup::ChangedFrom::Set, backup::ChangedFrom::Was}) {
    if (std::ranges::find(changes, state, &backup::Change::from) == changes.end()) continue;
    const auto files = StateWith(changes, state, journal);
    auto set = FindMade(backups, label, files);
    if (!set) set = MakeSet(backups, place, options, PartsWith(place, files), backup::MadeBy::Hand, label, files);
    if (std::ranges::find(journal.changes, set->name) == journal.changes.end()) journal.changes.push_back(set->name);
    for (auto& step : journal.steps) {
      const auto change = std::ranges::find_if(
          changes, [&](const backup::Change& each) { return each.now.part == step.file.part && each.from == state; });
      if (change != changes.end()) step.changed = change->now;
    }
    backup::BeginRestore(folder, journal);
  }
}

// So that undo can take the restore back. What else has changed meanwhile is none of its doing. Nobody goes back
// unasked to what a restore has left that was broken off.
void NoteCompleted(const Options& options, const std::string& folder, const backup::RestoreJournal& journal) {
  backup::BackupFolder backups(folder);
  for (const auto& set : backups.Sets()) {
    if (set.name != journal.kept || set.manifest.condition == backup::Condition::InPart) continue;
    backup::EndNote end{.at = TimeWithZone(WorkplaceOf(options), options), .files = set.manifest.files};
    for (auto& file : end.files) {
      const auto step = std::ranges::find(journal.steps, file.part, [](const auto& each) { return each.file.part; });
      if (step != journal.steps.end()) file = step->file;
    }
    try {
      backups.NoteEnd(set, end);
    } catch (const BackupError& failure) {
      Tell(fmt::format("{}\n\"twqb undo\" can't take this back; \"twqb restore {}\" can.", failure.what(), set.name));
    }
  }
}

void TellOthers(const std::vector<std::string>& files) {
  for (const auto& file : files) {
    Tell(fmt::format(
        "{} has another owner or group than before: this user can't give it those that it had, and its rights "
        "may shut others out.",
        file));
  }
}

std::optional<backup::RestoreJournal> ReadableJournal(const std::string& folder) {
  try {
    return backup::ReadRestoreJournal(folder);
  } catch (const BackupError&) {
    return std::nullopt;
  }
}

// Each step of the journal, then what undo must know, then that it is done: whatever is broken off is done again.
void CarryOut(const Options& options, const std::string& folder, const backup::RestoreJournal& journal) {
  TellOthers(backup::CarryOutRestore(folder, journal));
  NoteCompleted(options, folder, journal);
  // Ahead of the end: nobody else would come to know of them.
  for (const auto& set : journal.changes) {
    Tell(
        fmt::format("Something has changed since a restore was broken off, and is kept: \"twqb restore {}\" brings it "
                    "back.",
                    set));
  }
  backup::EndRestore(folder, journal);
}

}  // namespace

void RaiseForNothing(const backup::Set& set, std::optional<Part> only) {
  throw UsageError(fmt::format("The set {} has {}.", set.name,
                               only ? fmt::format("not kept {}", backup::CalledOf(*only)) : "nothing to put back"));
}

PuttingBack::PuttingBack(const Options& options, backup::Set set, std::optional<Part> only, backup::Condition condition)
    : options_(options),
      place_(WorkplaceOf(options)),
      set_(std::move(set)),
      files_(Chosen(set_, only)),
      condition_(condition),
      folder_(BackupsOf(place_)) {
  if (files_.empty()) RaiseForNothing(set_, only);
  auto paths = DatabasesOf(files_);
  for (const auto& part : PartsOf(place_)) {
    if (backup::IsDatabase(part.part)) paths.push_back(part.path);
  }
  held_.emplace(paths, options_);
  // Refused ahead of the question; but while that waits, who only reads goes on.
  static_cast<void>(TakeSession());
  TakeUpLogs();
  ChooseStaging();
  LayReady();
}

PuttingBack::~PuttingBack() { RemoveLaidReady(); }

std::optional<company::FileLock> PuttingBack::TakeSession() const {
  const auto company = std::ranges::find(files_, Part::Company, &KeptFile::part);
  if (company == files_.end()) return std::nullopt;
  try {
    return TakeCompany(company->path);
  } catch (const BackupError& failure) {
    throw UsageError(fmt::format("Nothing has been put back. {}", failure.what()));
  }
}

// What a killed process has left beside a database would be taken up by the first look into it, and count as a change.
void PuttingBack::TakeUpLogs() const {
  for (const auto& path : DatabasesOf(files_)) {
    if (IsFile(path)) static_cast<void>(storage::MakeReplaceable(path));
  }
}

KeptFile PuttingBack::Now(const backup::PartFile& file) {
  try {
    return folder_.Look(file);
  } catch (const backup::BackupEnded&) {
    throw EndedBySignal();
  } catch (const BackupError& failure) {
    throw UsageError(fmt::format("It can't be told whether something has changed since. {}", failure.what()));
  }
}

KeptFile PuttingBack::Seen(const backup::PartFile& file) {
  const auto known = std::ranges::find(seen_, file.part, &KeptFile::part);
  return known != seen_.end() ? *known : seen_.emplace_back(Now(file));
}

// What a journal that stands goes by is not touched. Without one nothing is of any use that was laid ready before.
void PuttingBack::ChooseStaging() {
  if (const auto journal = ReadableJournal(place_.folder)) {
    staging_ = journal->staging == backup::Staging::First ? backup::Staging::Second : backup::Staging::First;
    return;
  }
  for (const auto& file : files_) backup::RemoveStaged(file.path);
}

void PuttingBack::LayReady() {
  RemoveLaidReady();
  try {
    for (const auto& file : files_) {
      if (!file.isThere) continue;
      if (backup::LayReady(folder_, file, staging_) == backup::Ownership::Other) others_.push_back(file.path);
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
  for (const auto& file : files_) backup::RemoveStaged(file.path, staging_);
}

std::vector<SideDifferences> PuttingBack::Differences() {
  std::vector<SideDifferences> all;
  for (const auto& file : files_) {
    const bool isLike = Seen({.part = file.part, .path = file.path}).IsLike(file);
    auto found =
        DifferencesOf(file.part, file.path, file.isThere ? backup::StagedName(file.path, staging_) : std::string());
    found.isFileAlone = !isLike && found.IsNone();
    all.push_back(std::move(found));
  }
  return all;
}

std::vector<SideDifferences> PuttingBack::ChangedSince(const backup::EndNote& end) {
  std::vector<SideDifferences> all;
  try {
    for (const auto& file : end.files) {
      const auto now = Seen({.part = file.part, .path = file.path});
      if (now.IsLike(file)) continue;
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

std::vector<backup::RestoreStep> PuttingBack::Steps() {
  std::vector<backup::RestoreStep> steps;
  for (const auto& file : files_) {
    const backup::PartFile target{.part = file.part, .path = file.path};
    const auto now = Now(target);
    if (!now.IsLike(Seen(target))) {
      throw UsageError(fmt::format(
          "Nothing has been put back: {} has changed since it was looked at, which was not shown.\nStart again.",
          backup::CalledOf(file.part)));
    }
    steps.push_back({.file = file, .was = now});
  }
  return steps;
}

std::string PuttingBack::PutBack(backup::MadeBy by, const std::string& what) {
  auto options = options_;
  options.label = what;
  const auto session = TakeSession();
  RequireAlone();
  RunBackup before(place_, options, PartsWith(place_, files_), by, condition_);
  backup::RestoreJournal journal{
      .set = set_.name, .isUndo = by == backup::MadeBy::Undo, .kept = before.Name(), .staging = staging_};
  try {
    RequireAlone();
    journal.steps = Steps();
    backup::BeginRestore(place_.folder, journal);
  } catch (const BackupError& failure) {
    before.Drop();
    throw UsageError(fmt::format("Nothing has been put back. {}", failure.what()));
  } catch (...) {
    before.Drop();
    throw;
  }
  // What is laid ready belongs to the journal now.
  files_.clear();
  try {
    CarryOut(options_, place_.folder, journal);
  } catch (const BackupError& failure) {
    throw UsageError(
        fmt::format("The set {} is put back in part. {}\nMake that possible; whatever twqb command comes "
                    "next in this folder puts back the rest.",
                    set_.name, failure.what()));
  }
  TellOthers(others_);
  return before.Name();
}

namespace {

void Complete(const Options& options, const std::string& folder) {
  const auto begun = backup::ReadRestoreJournal(folder);
  if (!begun) return;
  // It is near its end, and what comes next looks at them.
  const EndSignals signals;
  std::vector<std::string> files;
  std::optional<company::FileLock> session;
  for (const auto& step : begun->steps) {
    if (backup::IsDatabase(step.file.part)) files.push_back(step.file.path);
  }
  const TransferLock held(files, options);
  // Whoever held them may have come to the end of it.
  auto journal = backup::ReadRestoreJournal(folder);
  if (!journal) return;
  for (const auto& step : journal->steps) {
    if (step.file.part == Part::Company) session = TakeCompany(step.file.path);
  }
  KeepChanges(options, folder, *journal);
  CarryOut(options, folder, *journal);
  Tell(fmt::format("The set {} was being put back when a run was broken off; that is completed now.", journal->set));
}

// What a user needs who has to do without its completion.
std::string WhyNot(const std::string& folder, std::string_view what, std::string_view reason) {
  auto text = fmt::format("{} can't be completed now.\n{}\nWhat has to be done stands in {}/restore.json.", what,
                          reason, backup::kBackupFolder);
  if (const auto journal = ReadableJournal(folder)) {
    if (!journal->kept.empty()) text += fmt::format(" How the files were before it is the set {}.", journal->kept);
    for (const auto& set : journal->changes) text += fmt::format(" What has changed since is in the set {}.", set);
  }
  return text +
         "\nMake it possible, and start anything again; or put a whole set in the place of all of it, with \"twqb "
         "restore SET\". \"twqb backup --list\" and \"twqb restore SET --to DIR\" run meanwhile.";
}

}  // namespace

std::optional<std::string> WhyNotCompleted(const Options& options, WhenHeld held) {
  std::error_code failure;
  const auto folder = fs::current_path(failure).string();
  if (failure) return std::nullopt;
  constexpr std::string_view kBrokenOff = "A run was broken off while it put files back, and that";
  try {
    Complete(options, folder);
    return std::nullopt;
  } catch (const BackupError& reason) {
    return WhyNot(folder, kBrokenOff, reason.what());
  } catch (const UsageError& reason) {
    return WhyNot(folder, kBrokenOff, reason.what());
  } catch (const HeldByOther& reason) {
    if (held == WhenHeld::Raises) throw;
    return WhyNot(folder, "Files are being put back here, or were when a run was broken off; that", reason.what());
  }
}

void CompleteRestore(const Options& options) {
  if (const auto reason = WhyNotCompleted(options, WhenHeld::Raises)) throw UsageError(*reason);
}

void RequireInPlaceOfBrokenOff(const backup::Set& set) {
  const auto journal = ReadableJournal(fs::current_path().string());
  if (!journal) return;
  const auto files = Chosen(set, std::nullopt);
  for (const auto& step : journal->steps) {
    if (std::ranges::find(files, step.file.path, &KeptFile::path) != files.end()) continue;
    throw UsageError(
        fmt::format("The set {} does not have {}, which was being put back when a run was broken off. Name a set that "
                    "has all of its files.",
                    set.name, step.file.path));
  }
}

}  // namespace twqb::cli
