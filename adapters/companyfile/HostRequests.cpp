#include "adapters/companyfile/HostRequests.h"

#include <fmt/core.h>

#include <string>
#include <vector>

#include "adapters/companyfile/Forms.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/XmlText.h"
#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

std::vector<std::string> HostValues(std::string_view field, const CompanyOptions& options, FileMode mode) {
  if (field == "ProductName") return {fmt::format("QuickBooks Premier Edition {}", options.hostVersion)};
  if (field == "MajorVersion") return {std::to_string(options.hostVersion)};
  if (field == "MinorVersion") return {"0"};
  if (field == "Country") return {std::string(messages::CountryName(options.country))};
  if (field == "IsAutomaticLogin") return {messages::BoolText(false)};
  if (field == "QBFileMode") return {mode == FileMode::SingleUser ? "SingleUser" : "MultiUser"};
  std::vector<std::string> tags;
  if (field == "SupportedQBXMLVersion") {
    for (const auto country : options.accepts) {
      for (const auto version : VersionsOf(country)) tags.push_back(messages::FormTag({country, version}));
    }
  }
  return tags;
}

}  // namespace

void QueryHost(CompanyStore& store, FileMode mode, const messages::Form& form, const Request& request,
               Response& response) {
  if (store.ReadConditions().hostQuery == HostAnswer::Refused) return response.Answer(status::NotPermitted());
  response.Begin({});
  const auto& record = request.message->response.front();
  AppendOpenTag(response.Content(), record.name);
  ForEachElementRow(record.Children(), [&](const messages::Element& row) {
    if (!row.KnownIn(form)) return;
    for (const auto& value : HostValues(row.name, store.Options(), mode))
      AppendLeaf(response.Content(), row.name, value);
  });
  AppendCloseTag(response.Content(), record.name);
  response.End();
}

}  // namespace twqb::company
