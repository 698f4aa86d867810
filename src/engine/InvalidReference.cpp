#include "engine/InvalidReference.h"

#include <fmt/format.h>

namespace twqb {

namespace {

std::string HeadOf(const Response& response) {
  return fmt::format("Invalid Reference.\r\n\r\nQuickBooks has reported the following error: -\r\n{}",
                     response.StatusMessage());
}

}  // namespace

MessageBox InvalidReference(const RefusedRequest& refused) { return {.text = HeadOf(refused.response)}; }

MessageBox InvalidReference(const Response& response, std::string_view advice) {
  return {.text = fmt::format("{}\r\n(Error Code = {}\r\nSeverity: {})\r\n\r\nSuggestion: -\r\n{}", HeadOf(response),
                              response.StatusCode(), response.StatusSeverity(), advice)};
}

}  // namespace twqb
