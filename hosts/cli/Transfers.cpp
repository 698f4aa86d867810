#include "cli/Transfers.h"

#include "cli/TableArgument.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::cli {

bool RunTransfer(Composition& composition, const Options& options, const TransferRequest& request) {
  CTWQBBridge bridge;
  bridge.SetConnectString(composition.Place().billing);
  bridge.SetTWSettingsPath(composition.Place().settings);
  bridge.SetUseTWSTable(options.settingsTable);
  bridge.SetIsQBSingleMode(options.singleUser);
  bridge.SetNoProgressBar(options.noProgress);
  bridge.SetLeaveMsgBoxOpen(options.leaveOpen);
  bridge.SetUsePreferencesTW(!request.id.has_value());
  bridge.SetPassedID(request.id.value_or(""));
  bridge.SetIsSync(request.sync);
  const bool sends = request.direction == Direction::Send;
  const auto name = sends ? "SendDataToQB" : "GetDataFromQB";
  return composition.Run(name, {DeclaredName(request.table)}, [&] {
    return sends ? bridge.SendDataToQB(request.table) : bridge.GetDataFromQB(request.table);
  });
}

}  // namespace twqb::cli
