#include "cli/runs/Transfers.h"

#include "bridge/Tables.h"
#include "cli/options/TableArgument.h"
#include "cli/runs/BridgeRun.h"

namespace twqb::cli {

std::vector<std::int32_t> TablesOf(const TransferRequest& request) {
  if (request.table != enAll) return {request.table};
  std::vector<std::int32_t> tables;
  for (const auto* table : Tables()) {
    if (GoesWithAll(*table, request.direction)) tables.push_back(table->number);
  }
  return tables;
}

BridgeOperation TransferOperation(const TransferRequest& request) {
  const bool sends = request.direction == Direction::Send;
  return {.name = sends ? "SendDataToQB" : "GetDataFromQB",
          .arguments = {DeclaredName(request.table)},
          .run = [request, sends](CTWQBBridge& bridge) {
            Vars().likelyTwins = request.likelyTwins;
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
