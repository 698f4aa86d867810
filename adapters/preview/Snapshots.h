// The snapshots that previews are made of where a side is no file: each is taken once, however many previews follow.
//
// They stand in a folder of their own, which goes with the object. What is copied of them for a run, ScratchFiles does.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/preview/ScratchFiles.h"
#include "adapters/snapshot/Snapshot.h"
#include "platform/ado.h"
#include "platform/machine.h"
#include "platform/transport.h"

namespace twqb::preview {

class Snapshots {
 public:
  // `begins` is told the side ahead of its reading, "BillingDb" or "QuickBooks"; `watch` as the readings have it.
  Snapshots(std::function<void(std::string_view side)> begins, snapshot::Watch watch)
      : begins_(std::move(begins)), watch_(std::move(watch)) {}

  struct Billing {
    std::string file;
    std::string provider;  // as a connection to the database calls its own
  };
  // Raises PlatformError when the database can't be opened, and as ReadBilling does.
  const Billing& BillingOf(ado::Provider& source, const std::string& connection, std::span<const std::string> schema);

  // The company that the session is open on. Raises as ReadCompany does.
  const std::string& CompanyOf(Transport& session, const std::string& name, Machine& machine);

 private:
  [[nodiscard]] std::string NewPath(std::string_view name);

  std::function<void(std::string_view side)> begins_;
  snapshot::Watch watch_;
  std::optional<ScratchFolder> folder_;  // none while nothing was read
  std::optional<Billing> billing_;
  std::map<std::string, std::string> companies_;  // by the name that QuickBooks tells
};

}  // namespace twqb::preview
