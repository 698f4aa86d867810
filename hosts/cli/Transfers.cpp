#include "cli/Transfers.h"

#include "cli/BridgeRun.h"
#include "cli/TableArgument.h"

namespace twqb::cli {

BridgeOperation TransferOperation(const TransferRequest& request) {
  const bool sends = request.direction == Direction::Send;
  return {.name = sends ? "SendDataToQB" : "GetDataFromQB",
          .arguments = {DeclaredName(request.table)},
          .run = [request, sends](CTWQBBridge& bridge) {
            bridge.SetUsePreferencesTW(!request.id.has_value());
            bridge.SetPassedID(request.id.value_or(""));
            bridge.SetIsSync(request.sync);
            return sends ? bridge.SendDataToQB(request.table) : bridge.GetDataFromQB(request.table);
          }};
}

bool RunTransfer(Composition& composition, const Options& options, const TransferRequest& request) {
  return Perform(composition, options, TransferOperation(request));
}

}  // namespace twqb::cli
