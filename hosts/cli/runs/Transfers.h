// One transfer by the library, as a host asks for it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/runs/Operations.h"
#include "services/Direction.h"
#include "services/ModuleVariables.h"
#include "twqb/enTables.h"

namespace twqb::cli {

struct TransferRequest {
  Direction direction = Direction::Send;
  enTables table = enAll;
  std::optional<std::string> id = {};  // the one record; nothing: what the saved filters let through
  bool sync = false;                   // the newer record wins, whatever the settings say
  LikelyTwins likelyTwins = LikelyTwins::NotLookedFor;
};

// The tables that it moves by itself, in their order; what it pulls beside them is not among them. Those of the library
// as it is composed.
[[nodiscard]] std::vector<std::int32_t> TablesOf(const TransferRequest& request);

[[nodiscard]] BridgeOperation TransferOperation(const TransferRequest& request);

// Whether the transfer returned True. Raises DeskGaveUp.
[[nodiscard]] bool RunTransfer(Composition& composition, const Options& options, const TransferRequest& request);

}  // namespace twqb::cli
