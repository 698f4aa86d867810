// BillingDb as the options name it, open: for commands that work on it alone, without a bridge object.
//
// The library is composed meanwhile, so that its clock and its identifiers can be had; nothing else of it runs.
#pragma once

#include <memory>

#include "cli/options/Options.h"
#include "cli/runs/Composition.h"
#include "platform/ado.h"

namespace twqb::cli {

class BillingDb {
 public:
  // Raises UsageError for one that can't be used, and PlatformError when it can't be opened.
  explicit BillingDb(const Options& options);

  [[nodiscard]] ado::Connection& Connection() { return *connection_; }

 private:
  Composition composition_;
  std::unique_ptr<ado::Connection> connection_;
};

}  // namespace twqb::cli
