// A step that the command line runs, as a host runs it: the properties that the command sets, and the operation behind
// it.
//
// For hosts that have no command line. What the command prints, and its exit status, are not in it.
#pragma once

#include <string>
#include <vector>

#include "tests/golden/ScenarioHost.h"

namespace twqb {

struct HostTransfer {
  std::string billing = {};  // connection string; empty: the usual database
  std::string company = {};  // company file, from the run's folder; empty: the usual one
  std::vector<HostWords> settings = {};
  HostCall call = {};
};

// Of the step's words: "send", "clients", "--id", "ACME". Throws std::runtime_error for what no host can do.
[[nodiscard]] HostTransfer HostTransferOf(const std::vector<std::string>& words);

}  // namespace twqb
