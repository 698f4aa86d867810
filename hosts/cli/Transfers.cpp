#include "cli/Transfers.h"

#include "cli/BridgeRun.h"
#include "cli/TableArgument.h"

namespace twqb::cli {

bool RunTransfer(Composition& composition, const Options& options, const TransferRequest& request) {
  CTWQBBridge bridge;
  SetUp(bridge, composition, options);
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
