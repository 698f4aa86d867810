#include "cli/runs/BridgeRun.h"

#include <fmt/core.h>

#include <filesystem>
#include <optional>

#include "adapters/backup/RestoreJournal.h"
#include "adapters/system/FileReplacement.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/options/ExitStatus.h"
#include "cli/runs/Checks.h"
#include "cli/runs/RunBackup.h"
#include "cli/workplace/RunFiles.h"
#include "cli/workplace/TransferLock.h"
#include "quickbooks/CompanyFileChecks.h"

namespace twqb::cli {

namespace {

// The copies that a run makes on its way to a file, of runs that were killed.
void RemoveWhatKillsLeft(const Workplace& place) {
  constexpr const char* kBackup = "_TWB.bak";
  RemoveAbandonedReplacements(place.settings);
  if (!place.company.empty()) RemoveAbandonedReplacements(place.company + kBackup);
  if (const auto billing = BillingFileOf(place); !billing.empty()) RemoveAbandonedReplacements(billing + kBackup);
  // What is laid ready for a restore is removed where the restore is made from; it may be another folder's.
  std::error_code failure;
  const auto here = std::filesystem::current_path(failure);
  for (const auto& part : PartsOf(place)) {
    if (!failure && std::filesystem::path(part.path).parent_path() == here) backup::RemoveStaged(part.path);
  }
}

// What the run leaves is noted on every way out of it.
class NotedEnd {
 public:
  NotedEnd(RunBackup& backup, const std::function<bool()>& wrote) : backup_(backup), wrote_(wrote) {}
  ~NotedEnd() { wrote_ && !wrote_() ? backup_.Drop() : backup_.NoteEnd(); }
  NotedEnd(const NotedEnd&) = delete;
  NotedEnd& operator=(const NotedEnd&) = delete;

 private:
  RunBackup& backup_;
  const std::function<bool()>& wrote_;
};

}  // namespace

void SetUp(CTWQBBridge& bridge, const Composition& composition, const Options& options) {
  bridge.SetConnectString(composition.Place().billing);
  bridge.SetTWSettingsPath(composition.Place().settings);
  bridge.SetUseTWSTable(options.settingsTable);
  bridge.SetIsQBSingleMode(options.singleUser);
  bridge.SetNoProgressBar(options.noProgress);
  bridge.SetLeaveMsgBoxOpen(options.leaveOpen);
}

bool RunComposed(const Options& options, Sides sides, const std::function<void(Composition&)>& work,
                 const std::function<bool()>& wrote) {
  const auto place = WorkplaceOf(options);
  auto surroundings = ReadSurroundings(options);
  CheckApart(place, options);
  if (!options.settingsTable) CheckSettings(place);
  CheckBilling(place);
  CheckCompany(place);
  std::optional<EndSignals> signals;
  std::optional<TransferLock> held;
  std::optional<RunBackup> backup;
  std::optional<NotedEnd> end;
  if (sides == Sides::Written) {
    signals.emplace();
    held.emplace(place, options);
    RemoveWhatKillsLeft(place);
    end.emplace(backup.emplace(place, options), wrote);
    surroundings.companyOpened = [&](const std::string& path) {
      held->HoldToo(path);
      backup->CompanyOpened(path);
    };
  }
  Composition composition(place, surroundings);
  std::optional<SessionWithoutTrace> traceless;
  if (sides == Sides::Looked) traceless.emplace();
  work(composition);
  return composition.TranscriptIsWhole();
}

void RefuseTranscript(const Options& options) {
  throw UsageError(fmt::format("The transcript {} could not be written to its end.", options.transcript));
}

}  // namespace twqb::cli
