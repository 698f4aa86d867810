#include "cli/BridgeRun.h"

#include <fmt/core.h>

#include <optional>

#include "adapters/system/FileReplacement.h"
#include "adapters/terminal/EndSignals.h"
#include "cli/Checks.h"
#include "cli/ExitStatus.h"
#include "cli/RunFiles.h"
#include "cli/TransferLock.h"

namespace twqb::cli {

namespace {

// The copies that a run makes on its way to a file, of runs that were killed.
void RemoveWhatKillsLeft(const Workplace& place) {
  constexpr const char* kBackup = "_TWB.bak";
  RemoveAbandonedReplacements(place.settings);
  if (!place.company.empty()) RemoveAbandonedReplacements(place.company + kBackup);
  if (const auto billing = BillingFileOf(place); !billing.empty()) RemoveAbandonedReplacements(billing + kBackup);
}

}  // namespace

void SetUp(CTWQBBridge& bridge, const Composition& composition, const Options& options) {
  bridge.SetConnectString(composition.Place().billing);
  bridge.SetTWSettingsPath(composition.Place().settings);
  bridge.SetUseTWSTable(options.settingsTable);
  bridge.SetIsQBSingleMode(options.singleUser);
  bridge.SetNoProgressBar(options.noProgress);
  bridge.SetLeaveMsgBoxOpen(options.leaveOpen);
}

bool RunComposed(const Options& options, Sides sides, const std::function<void(Composition&)>& work) {
  const auto place = WorkplaceOf(options);
  auto surroundings = ReadSurroundings(options);
  CheckApart(place, options);
  if (!options.settingsTable) CheckSettings(place);
  CheckBilling(place);
  CheckCompany(place);
  std::optional<EndSignals> signals;
  std::optional<TransferLock> held;
  if (sides == Sides::Written) {
    signals.emplace();
    held.emplace(place, options);
    RemoveWhatKillsLeft(place);
    surroundings.companyOpened = [&held](const std::string& path) { held->HoldToo(path); };
  }
  Composition composition(place, surroundings);
  work(composition);
  return composition.TranscriptIsWhole();
}

void RefuseTranscript(const Options& options) {
  throw UsageError(fmt::format("The transcript {} could not be written to its end.", options.transcript));
}

}  // namespace twqb::cli
