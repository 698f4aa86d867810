#include "cli/runs/RunBackup.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "adapters/backup/BackupError.h"
#include "adapters/system/FileIdentity.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/options/ExitStatus.h"
#include "cli/screen/Output.h"
#include "cli/workplace/MakingFolder.h"
#include "cli/workplace/Surroundings.h"
#include "cli/workplace/TransferLock.h"
#include "platform/Date.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

using backup::BackupError;
using backup::MadeBy;
using backup::Part;
using backup::PartFile;

std::string_view ProgramVersion() { return TWQB_VERSION; }

std::string StampOf(const std::string& time) {
  constexpr std::size_t kSeconds = 19;
  auto stamp = time.substr(0, kSeconds);
  std::ranges::replace(stamp, 'T', '-');
  std::erase(stamp, ':');
  return stamp;
}

// What a set can't hold, in sentences.
std::vector<std::string> LackingOf(const std::vector<PartFile>& parts) {
  std::vector<std::string> lacking;
  const auto has = [&](Part part) {
    return std::ranges::any_of(parts, [&](const PartFile& file) {
      std::error_code ignored;
      return file.part == part && std::filesystem::exists(file.path, ignored);
    });
  };
  if (!has(Part::Billing)) {
    lacking.emplace_back("BillingDb is not a file here, and is not in the set: back it up where it is kept.");
  }
  if (!has(Part::Company)) {
    lacking.emplace_back(
        "There is no company file of twqb, and QuickBooks is not in the set: make a backup in QuickBooks itself.");
  }
  return lacking;
}

// What the run is called in a list of sets: "send clients", or as it was called, without the program.
std::string LabelOf(const Options& options) {
  if (!options.label.empty()) return options.label;
  const auto space = options.command.find(' ');
  return space == std::string::npos ? options.command : options.command.substr(space + 1);
}

// Large enough for somebody to wonder.
bool TakesLong(const std::vector<PartFile>& parts) {
  constexpr std::uintmax_t kLarge = std::uintmax_t{200} * 1024 * 1024;
  std::uintmax_t sum = 0;
  for (const auto& file : parts) {
    std::error_code failure;
    const auto size = std::filesystem::file_size(file.path, failure);
    if (!failure) sum += size;
  }
  return sum >= kLarge;
}

}  // namespace

backup::BackupFolder BackupsOf(const Workplace& place) {
  return backup::BackupFolder(place.folder, [] { return EndSignals::Came() == 0; });
}

std::vector<PartFile> PartsOf(const Workplace& place) {
  std::vector<PartFile> parts;
  if (const auto billing = BillingFileOf(place); !billing.empty()) {
    parts.push_back({.part = Part::Billing, .path = ResolvedPath(billing)});
  }
  if (!place.company.empty()) parts.push_back({.part = Part::Company, .path = ResolvedPath(place.company)});
  parts.push_back({.part = Part::Settings, .path = ResolvedPath(place.settings)});
  parts.push_back({.part = Part::Registry, .path = ResolvedPath(place.registry)});
  return parts;
}

std::string TimeWithZone(const Workplace& place, const Options& options) {
  constexpr int kMinutesOfHour = 60;
  const auto machine = MakeMachine(place, options.clock);
  const auto zone = machine->GetTimeZoneInformation();
  const int bias = zone.bias + (zone.state == TimeZoneState::Daylight ? zone.daylightBias : 0);
  const int minutes = std::abs(bias);
  return fmt::format("{}{}{:02}:{:02}", IsoDate(machine->Now()), bias > 0 ? '-' : '+', minutes / kMinutesOfHour,
                     minutes % kMinutesOfHour);
}

backup::Set MakeSet(backup::BackupFolder& folder, const Workplace& place, const Options& options,
                    const std::vector<PartFile>& parts, MadeBy by, const std::string& before,
                    const std::vector<backup::KeptFile>& known, backup::Condition condition) {
  if (TakesLong(parts) && folder.Sets().empty()) {
    Tell(fmt::format("The first backup of this folder is being made, in {}. It takes a while; later ones do not.",
                     backup::kBackupFolder));
  }
  const auto made = TimeWithZone(place, options);
  return folder.Make({.made = made,
                      .by = by,
                      .before = before,
                      .version = std::string(ProgramVersion()),
                      .lacking = LackingOf(parts),
                      .condition = condition},
                     parts, StampOf(made), known);
}

template <typename Body>
void RunBackup::OrRefuse(Body body) {
  try {
    body();
  } catch (const backup::BackupEnded&) {
    Tell("Nothing has been changed.");
    throw EndedBySignal();
  } catch (const BackupError& failure) {
    throw UsageError(
        fmt::format("Nothing has been changed: the backup ahead of it could not be made.\n{}\nMake room, or let this "
                    "folder take files; or go on without a backup, with --no-backup.",
                    failure.what()));
  }
}

RunBackup::RunBackup(const Workplace& place, const Options& options)
    : RunBackup(place, options, PartsOf(place), MadeBy::Transfer) {}

RunBackup::RunBackup(const Workplace& place, const Options& options, const std::vector<PartFile>& parts, MadeBy by,
                     backup::Condition condition)
    : place_(place), options_(options), folder_(BackupsOf(place)) {
  if (options.noBackup) return;
  OrRefuse([&] { set_ = MakeSet(folder_, place, options, parts, by, LabelOf(options), {}, condition); });
}

void RunBackup::CompanyOpened(const std::string& path) {
  if (!set_) return;
  const auto file = ResolvedPath(path);
  const auto* known = set_->Find(Part::Company);
  if (known != nullptr && known->isThere && known->path == file) return;
  set_->manifest.lacking.clear();
  const auto& files = set_->manifest.files;
  const bool hasBilling = std::ranges::any_of(
      files, [](const backup::KeptFile& kept) { return kept.part == Part::Billing && kept.isThere; });
  if (!hasBilling) set_->manifest.lacking = LackingOf({{.part = Part::Company, .path = file}});
  OrRefuse([&] { folder_.Add(*set_, {.part = Part::Company, .path = file}); });
}

void RunBackup::Drop() noexcept {
  if (set_) backup::BackupFolder(place_.folder).Remove(*set_);
  set_.reset();
}

void RunBackup::NoteEnd() noexcept {
  if (!set_) return;
  try {
    // A signal ended the run, and has to end this no more: it is what makes the run one that can be taken back.
    backup::BackupFolder(place_.folder).NoteEnd(*set_, TimeWithZone(place_, options_));
  } catch (const std::exception& failure) {
    Tell(
        fmt::format("How this run left the files could not be noted: {}\n\"twqb undo\" can't take it back; \"twqb "
                    "restore {}\" can.",
                    failure.what(), set_->name));
  }
}

}  // namespace twqb::cli
