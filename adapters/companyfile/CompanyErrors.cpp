#include "adapters/companyfile/CompanyErrors.h"

#include <fmt/format.h>

#include <string>

namespace twqb::company {

namespace {

std::string_view TextOf(ErrorNumber number) {
  switch (number) {
    case kUnexpected:
      return "An unexpected error occurred in the QuickBooks company data file.";
    case kCannotOpenFile:
      return "QuickBooks could not open the specified company data file.";
    case kOtherFileOpen:
      return "A company data file is already open in QuickBooks and it is not the one requested.";
    case kCallOutOfOrder:
      return "The call is not valid in the present state of the session.";
    case kOpenInOtherMode:
      return "The QuickBooks company data file is open in a mode other than the one requested.";
    case kFileNameRequired:
      return "If QuickBooks is not running, the name of a company data file must be specified.";
    default:
      return ErrorText(number);
  }
}

}  // namespace

void Raise(ErrorNumber number, std::string_view detail) {
  const auto text = TextOf(number);
  throw PlatformError(number, detail.empty() ? std::string(text) : fmt::format("{} {}", text, detail));
}

}  // namespace twqb::company
