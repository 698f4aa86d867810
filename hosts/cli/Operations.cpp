#include "cli/Operations.h"

#include <fmt/format.h>

#include "cli/Checks.h"
#include "cli/Output.h"

namespace twqb::cli {

bool Perform(Composition& composition, const Options& options, const BridgeOperation& operation) {
  CTWQBBridge bridge;
  bridge.SetConnectString(composition.Place().billing);
  bridge.SetTWSettingsPath(composition.Place().settings);
  bridge.SetUseTWSTable(options.settingsTable);
  bridge.SetIsQBSingleMode(options.singleUser);
  bridge.SetNoProgressBar(options.noProgress);
  bridge.SetLeaveMsgBoxOpen(options.leaveOpen);
  return composition.Run(operation.name, operation.arguments, [&] { return operation.run(bridge); });
}

ExitStatus RunOperation(const Options& options, const BridgeOperation& operation, const Verdict& verdict) {
  const auto place = WorkplaceOf(options);
  if (!options.settingsTable) CheckSettings(place);
  CheckBilling(place);
  CheckCompany(place);
  const auto surroundings = ReadSurroundings(options);

  bool done = false;
  bool recorded = false;
  {
    Composition composition(place, surroundings);
    done = Perform(composition, options, operation);
    recorded = composition.TranscriptIsWhole();
  }
  Print((done ? verdict.done : verdict.failed) + "\n");
  FlushOutput();
  if (!recorded) {
    throw UsageError(fmt::format("The transcript {} could not be written to its end.", surroundings.transcript));
  }
  return done ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace twqb::cli
