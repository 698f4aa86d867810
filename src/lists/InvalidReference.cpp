#include "lists/InvalidReference.h"

#include <fmt/format.h>

#include "services/ModuleVariables.h"

namespace twqb {

namespace {

std::string HeadOf(const Response& response) {
  return fmt::format("Invalid Reference.\r\n\r\nQuickBooks has reported the following error: -\r\n{}",
                     response.StatusMessage());
}

}  // namespace

void TellInvalidReference(const Response& response) { TheDesk().ShowMessageBox({.text = HeadOf(response)}); }

void TellInvalidReference(const Response& response, std::string_view advice) {
  TheDesk().ShowMessageBox(
      {.text = fmt::format("{}\r\n(Error Code = {}\r\nSeverity: {})\r\n\r\nSuggestion: -\r\n{}", HeadOf(response),
                           response.StatusCode(), response.StatusSeverity(), advice)});
}

}  // namespace twqb
