#include "adapters/companyfile/CompanyErrors.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

namespace twqb::company {

std::string_view TextOf(ErrorNumber number) {
  switch (number) {
    case kUnexpected:
      return "An unexpected error occurred in the QuickBooks company data file.";
    case kCannotOpenFile:
      return "QuickBooks could not open the specified company data file.";
    case kCannotOpenNamed:
      return "QuickBooks could not open the previously used company data file.";
    case kOtherFileOpen:
      return "A company data file is already open in QuickBooks and it is not the one requested.";
    case kCallOutOfOrder:
      return "The call is not valid in the present state of the session.";
    case kOpenInOtherMode:
      return "The QuickBooks company data file is open in a mode other than the one requested.";
    case kNoRollback:
      return "The onError value \"rollbackOnError\" is not supported.";
    case kUnknownVersion:
      return "The version of QBXML that was requested is not supported or is unknown.";
    case kDialogOpen:
      return "A dialog is open in QuickBooks, and no program can use QuickBooks until it is answered.";
    case kFileNameRequired:
      return "If QuickBooks is not running, the name of a company data file must be specified.";
    case kNoPermission:
      return "This application is not allowed to access this QuickBooks company data file.";
    case kNoAutoLogon:
      return "This application is not allowed to log into this QuickBooks company data file automatically.";
    default:
      return ErrorText(number);
  }
}

void Raise(ErrorNumber number, std::string_view detail) {
  const auto text = TextOf(number);
  throw PlatformError(number, detail.empty() ? std::string(text) : fmt::format("{} {}", text, detail));
}

std::string_view DetailOf(const PlatformError& raised) {
  std::string_view detail = raised.description();
  if (const auto text = TextOf(raised.number()); detail.starts_with(text)) detail.remove_prefix(text.size());
  return detail.substr(std::min(detail.find_first_not_of(' '), detail.size()));
}

}  // namespace twqb::company
