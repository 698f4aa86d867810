#include "cli/BridgeRun.h"

#include <fmt/core.h>

#include "cli/Checks.h"
#include "cli/ExitStatus.h"

namespace twqb::cli {

void SetUp(CTWQBBridge& bridge, const Composition& composition, const Options& options) {
  bridge.SetConnectString(composition.Place().billing);
  bridge.SetTWSettingsPath(composition.Place().settings);
  bridge.SetUseTWSTable(options.settingsTable);
  bridge.SetIsQBSingleMode(options.singleUser);
  bridge.SetNoProgressBar(options.noProgress);
  bridge.SetLeaveMsgBoxOpen(options.leaveOpen);
}

bool RunComposed(const Options& options, const std::function<void(Composition&)>& work) {
  const auto place = WorkplaceOf(options);
  if (!options.settingsTable) CheckSettings(place);
  CheckBilling(place);
  CheckCompany(place);
  Composition composition(place, ReadSurroundings(options));
  work(composition);
  return composition.TranscriptIsWhole();
}

void RefuseTranscript(const Options& options) {
  throw UsageError(fmt::format("The transcript {} could not be written to its end.", options.transcript));
}

}  // namespace twqb::cli
