#include "adapters/preview/Snapshots.h"

#include <fmt/core.h>

#include <filesystem>

#include "adapters/snapshot/BillingSnapshot.h"
#include "adapters/snapshot/CompanySnapshot.h"

namespace twqb::preview {

std::string Snapshots::NewPath(std::string_view name) {
  if (!folder_) folder_.emplace();
  return (std::filesystem::path(folder_->Path()) / name).string();
}

const Snapshots::Billing& Snapshots::BillingOf(ado::Provider& source, const std::string& connection,
                                               std::span<const std::string> schema) {
  if (billing_) return *billing_;
  constexpr int kPatience = 59;  // seconds, as a transfer has
  const auto opened = source.CreateConnection();
  opened->SetCursorLocation(ado::CursorLocation::Client);
  opened->SetConnectionTimeout(kPatience);
  opened->SetConnectionString(connection);
  opened->Open();
  begins_("BillingDb");
  Billing read{.file = NewPath("billing.db"), .provider = opened->Provider()};
  snapshot::ReadBilling(*opened, read.file, schema, watch_);
  opened->Close();
  return billing_.emplace(std::move(read));
}

const std::string& Snapshots::CompanyOf(Transport& session, const std::string& name, Machine& machine) {
  const auto found = companies_.find(name);
  if (found != companies_.end()) return found->second;
  begins_("QuickBooks");
  auto path = NewPath(fmt::format("company{}.twq", companies_.size() + 1));
  snapshot::ReadCompany(session, path, machine, watch_);
  return companies_.emplace(name, std::move(path)).first->second;
}

}  // namespace twqb::preview
