#include "adapters/companyfile/Status.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>

#include "messages/StatusCodes.h"

namespace twqb::company {

namespace {

constexpr int kFirstWarning = 500;
constexpr int kFirstError = 1000;

// What a reference is called in a message: the name of its field without its ending.
std::string_view TargetName(std::string_view reference) {
  constexpr std::string_view kSuffix = "Ref";
  if (reference.ends_with(kSuffix)) reference.remove_suffix(kSuffix.size());
  return reference;
}

// No kind of record begins with a "u" that is spoken as a vowel.
std::string WithArticle(std::string_view kind) {
  constexpr std::string_view kVowels = "aeioAEIO";
  return fmt::format("{} {}", kVowels.find(kind.substr(0, 1)) == std::string_view::npos ? "a" : "an", kind);
}

// Each type of value has a code and a name of its own.
struct Conversion {
  messages::Type type;
  int code;
  std::string_view called;
};
constexpr std::array kConversions = {
    Conversion{.type = messages::Type::Bool, .code = 3010, .called = "boolean value"},
    Conversion{.type = messages::Type::Date, .code = 3020, .called = "date value"},
    Conversion{.type = messages::Type::DateTime, .code = 3020, .called = "date value"},
    Conversion{.type = messages::Type::TimeInterval, .code = 3035, .called = "time interval"},
    Conversion{.type = messages::Type::Amt, .code = 3040, .called = "amount"},
    Conversion{.type = messages::Type::Price, .code = 3045, .called = "price"},
    Conversion{.type = messages::Type::Percent, .code = 3050, .called = "percentage"},
    Conversion{.type = messages::Type::Quan, .code = 3060, .called = "quantity"},
};

Status NotConverted(const messages::Problem& problem) {
  constexpr Conversion kAmount = {.type = messages::Type::Amt, .code = 3040, .called = "amount"};
  const auto* const found = std::ranges::find(kConversions, problem.type, &Conversion::type);
  const auto& conversion = found == kConversions.end() ? kAmount : *found;
  return {conversion.code, fmt::format("There was an error when converting the {} \"{}\" in the field \"{}\".",
                                       conversion.called, problem.value, problem.field)};
}

}  // namespace

std::string SpokenName(std::string_view element) {
  const auto isUpper = [](char c) { return c >= 'A' && c <= 'Z'; };
  std::string spoken;
  for (std::size_t i = 0; i < element.size(); ++i) {
    const char c = element[i];
    // A row of capitals is one word.
    if (isUpper(c) && i > 0 && !isUpper(element[i - 1])) spoken += ' ';
    spoken += isUpper(c) ? static_cast<char>(c + ('a' - 'A')) : c;
  }
  return spoken;
}

std::string_view Severity(const Status& status) {
  if (status.code < kFirstWarning) return "Info";
  return IsError(status) ? "Error" : "Warn";
}

bool IsError(const Status& status) { return status.code >= kFirstError; }

// The codes that programs tell apart have their names there.
namespace codes = ::twqb::status;

namespace status {

Status NothingFound() { return {codes::kFoundNothing, "A query request did not find a matching object in QuickBooks"}; }

Status QueryIncomplete(std::string_view value) {
  return {codes::kIncomplete,
          fmt::format("The query request has not been fully completed.  There was a required element (\"{}\") that "
                      "could not be found in QuickBooks.",
                      value)};
}

Status UnsupportedMessage(std::string_view request) {
  return {1030, fmt::format("Unsupported message: \"{}\".", request)};
}

Status RequestIdTooLong(std::string_view id) { return {1060, fmt::format("The request ID \"{}\" is too long.", id)}; }

Status ReversedDates(std::string_view from, std::string_view to) {
  return {3030, fmt::format("Invalid date range: \"{}\" is later than \"{}\".", from, to)};
}

Status ReversedNames(std::string_view from, std::string_view to) {
  return {3031, fmt::format("Invalid name range: \"{}\" comes after \"{}\".", from, to)};
}

Status ColonInName(std::string_view name, std::string_view kind) {
  return {3090,
          fmt::format("There was an error when storing \"{}\" in the \"{} name\" field.  QuickBooks error message: "
                      "Names in this list cannot contain a colon.",
                      name, SpokenName(kind))};
}

Status NameInUse(std::string_view name) {
  return {codes::kNameInUse, fmt::format("The name \"{}\" of the list element is already in use.", name)};
}

Status ObjectNotFound(std::string_view id) {
  return {codes::kObjectNotFound,
          fmt::format("Object \"{}\" specified in the request cannot be found.  QuickBooks error message: {}", id,
                      kNoSuchRecord)};
}

Status BadParent(std::string_view parent, std::string_view kind, std::string_view reason) {
  return {3130,
          fmt::format("There is an invalid reference to a parent \"{}\" in the {} list.  QuickBooks error message: {}",
                      parent, kind, reason)};
}

Status BadReference(std::string_view reference, std::string_view value, std::string_view kind) {
  return {codes::kInvalidReference,
          fmt::format("There is an invalid reference to QuickBooks {} \"{}\" in the {}.  QuickBooks error message: {}",
                      TargetName(reference), value, kind, kNoSuchRecord)};
}

Status MissingElement(std::string_view element) {
  return {3150, fmt::format("There is a missing element: \"{}\".", element)};
}

Status CannotDelete(std::string_view id, std::string_view reason) {
  return {3160, fmt::format("Cannot delete the object specified by the id \"{}\".  QuickBooks error message: {}", id,
                            reason)};
}

Status CannotModify(std::string_view kind, std::string_view reason) {
  return {codes::kCannotModify, fmt::format("There was an error when modifying {}.  QuickBooks error message: {}",
                                            WithArticle(kind), reason)};
}

Status BooksClosed(std::string_view date, std::string_view closingDate) {
  return {3171,
          fmt::format("The transaction is dated \"{}\", and the books are closed up to \"{}\".", date, closingDate)};
}

Status CannotSave(std::string_view kind, std::string_view reason) {
  return {codes::kCannotSave,
          fmt::format("There was an error when saving {}.  QuickBooks error message: {}", WithArticle(kind), reason)};
}

Status EditSequenceOutOfDate(std::string_view given) {
  return {3200, fmt::format("The provided edit sequence \"{}\" is out-of-date.", given)};
}

Status InvalidValue(std::string_view field, std::string_view value, std::string_view reason) {
  return {3210, fmt::format("The \"{}\" field has an invalid value \"{}\".  QuickBooks error message: {}", field, value,
                            reason)};
}

Status NotProcessed() { return {3231, "The request has not been processed."}; }

Status ReferenceGone(std::string_view reference, std::string_view value, std::string_view kind) {
  return {codes::kReferenceGone, fmt::format("The QuickBooks {} \"{}\" that the {} refers to has been deleted.",
                                             TargetName(reference), value, kind)};
}

Status ReferenceOfWrongKind(std::string_view reference, std::string_view value, std::string_view kind) {
  return {codes::kReferenceGone,
          fmt::format("The object \"{}\" that the {} refers to is of the wrong kind for a QuickBooks {}.", value, kind,
                      TargetName(reference))};
}

Status FeatureNotEnabled(std::string_view what) {
  return {codes::kFeatureNotEnabled,
          fmt::format("This feature is not enabled or not available in this version of QuickBooks: {}.", what)};
}

Status NotPermitted() { return {codes::kNotPermitted, "Insufficient permission level to perform this action."}; }

Status PersonalDataWithheld(std::string_view field) {
  return {codes::kPersonalDataWithheld,
          fmt::format("The integrated application has no permission to access personal data, such as the field "
                      "\"{}\".",
                      field)};
}

Status TimeForPaychecksUnknown(std::string_view employee) {
  return {codes::kTimeForPaychecksUnknown,
          fmt::format("Failed to save the Time Tracking transaction.  It is not known whether time data makes the "
                      "paychecks of the employee \"{}\".",
                      employee)};
}

Status MacroUnknown(std::string_view macro) {
  return {9100, fmt::format("The macro \"{}\" has not been defined.", macro)};
}

Status MacroTaken(std::string_view macro) {
  return {9101, fmt::format("The macro \"{}\" has been defined already.", macro)};
}

Status OfProblem(const messages::Problem& problem) {
  switch (problem.kind) {
    case messages::ProblemKind::MalformedId:
      return {3000, fmt::format("The given object ID \"{}\" in the field \"{}\" is invalid.", problem.value,
                                SpokenName(problem.field))};
    case messages::ProblemKind::MalformedAmount:
    case messages::ProblemKind::MalformedValue:
      return NotConverted(problem);
    case messages::ProblemKind::TooLong:
      return {3070, fmt::format("The string \"{}\" in the field \"{}\" is too long.", problem.value, problem.field)};
    case messages::ProblemKind::MissingElement:
    case messages::ProblemKind::UnexpectedElement:
      break;
  }
  return MissingElement(problem.field);
}

}  // namespace status

}  // namespace twqb::company
