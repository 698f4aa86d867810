#include "cli/workplace/CompanyAnswer.h"

#include <fmt/core.h>

#include <utility>

#include "messages/StatusCodes.h"

namespace twqb::cli {

void RequireTaken(pugi::xml_node response) {
  if (response.attribute("statusCode").as_int(-1) == status::kOk) return;
  throw std::runtime_error(
      fmt::format("The company file refuses a record of the sample: {}", response.attribute("statusMessage").value()));
}

messages::Form FormOf(company::CompanyFile& file) {
  const auto accepts = file.Summary().options.accepts;
  // Australia has no documents of its own, and takes the American ones.
  if (accepts.empty() || accepts.front() == messages::Country::AU) return {};
  return {.country = accepts.front()};
}

RefusedByQuickBooks::RefusedByQuickBooks(std::int32_t code, std::string words)
    : std::runtime_error(fmt::format("QuickBooks refuses: {}", words)), code_(code), words_(std::move(words)) {}

CompanyAnswer::CompanyAnswer(company::CompanyFile file, const messages::Form& form, const std::string& request) {
  const auto answer =
      file.Process(fmt::format("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<?qbxml version=\"{}\"?>\n"
                               "<QBXML><QBXMLMsgsRq onError=\"stopOnError\">{}</QBXMLMsgsRq></QBXML>",
                               messages::FormTag(form), request));
  document_.load_buffer(answer.data(), answer.size());
  const auto response = Response();
  const int code = response.attribute("statusCode").as_int(-1);
  if (code == status::kOk || code == status::kFoundNothing) return;
  throw RefusedByQuickBooks(code, response.attribute("statusMessage").value());
}

CompanyAnswer::CompanyAnswer(const std::string& company, Machine& machine, const std::string& request)
    : CompanyAnswer(company::CompanyFile(company, machine), messages::Form{}, request) {}

pugi::xml_node CompanyAnswer::Response() const { return document_.child("QBXML").child("QBXMLMsgsRs").first_child(); }

}  // namespace twqb::cli
