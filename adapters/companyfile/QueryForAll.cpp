#include "adapters/companyfile/QueryForAll.h"

#include <fmt/core.h>

#include "adapters/companyfile/SchemaWalk.h"

namespace twqb::company {

std::string QueryForAll(std::string_view kind, const messages::Form& form) {
  const auto* message = messages::FindMessage(fmt::format("{}Query", kind));
  if (message == nullptr || !message->KnownIn(form)) return {};
  std::string fields;
  const auto add = [&](std::string_view name, std::string_view value) {
    const auto* row = FindRow(message->request, name);
    if (row != nullptr && row->KnownIn(form)) fields += fmt::format("<{0}>{1}</{0}>", name, value);
  };
  add("ActiveStatus", "All");
  add("IncludeLineItems", "true");
  add("IncludeLinkedTxns", "true");
  return fmt::format("<{0}QueryRq>{1}</{0}QueryRq>", kind, fields);
}

}  // namespace twqb::company
