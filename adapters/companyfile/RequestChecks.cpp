#include "adapters/companyfile/RequestChecks.h"

#include <string>
#include <string_view>

#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/QueryFields.h"
#include "adapters/companyfile/RefNumbers.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "messages/ValueFormat.h"
#include "platform/Text.h"

namespace twqb::company {

namespace {

using messages::Element;
using messages::ProblemKind;
using messages::Type;

constexpr std::size_t kLongestRequestId = 50;
constexpr std::string_view kFrom = "From";
constexpr std::string_view kTo = "To";

// Whether nothing can lie between the two, so that the range is the wrong way round.
bool IsReversed(Type type, std::string_view end, std::string_view from, std::string_view to) {
  if (type == Type::Date || type == Type::DateTime) {
    const auto first = messages::ParseDateTime(from);
    const auto last = messages::ParseDateTime(to);
    if (!first || !last) return false;
    // A day alone is meant to its end.
    return first->local > (messages::ParseDateText(to) ? EndOfDay(last->local) : last->local);
  }
  if (type != Type::Str) return false;
  const bool isNumber = end.ends_with("RefNumber");
  return isNumber ? RefOrderKey(from) > RefOrderKey(to) : NameKey(from) > NameKey(to);
}

std::optional<Status> CheckRange(pugi::xml_node parent, pugi::xml_node begin, std::span<const Element> rows) {
  std::string_view what = begin.name();
  if (!what.starts_with(kFrom)) return std::nullopt;
  what.remove_prefix(kFrom.size());
  const auto end = ChildElement(parent, std::string(kTo).append(what));
  const auto* row = FindRow(rows, begin.name());
  if (!end || row == nullptr) return std::nullopt;
  const std::string_view from = begin.text().get();
  const std::string_view to = end.text().get();
  if (from.empty() || to.empty() || !IsReversed(row->type, end.name(), from, to)) return std::nullopt;
  return row->type == Type::Str ? status::ReversedNames(from, to) : status::ReversedDates(from, to);
}

std::optional<Status> CheckLimit(pugi::xml_node query) {
  const auto most = ReadMaxReturned(query);
  if (!most || *most >= 1) return std::nullopt;
  return status::InvalidValue("MaxReturned", ChildText(query, "MaxReturned"), "It must be 1 or more.");
}

std::optional<Status> CheckRanges(pugi::xml_node parent, std::span<const Element> rows) {
  for (const auto element : parent.children()) {
    if (auto refusal = CheckRange(parent, element, rows)) return refusal;
    const auto* row = FindRow(rows, element.name());
    if (row == nullptr || row->type != Type::Aggregate) continue;
    if (auto refusal = CheckRanges(element, row->Children())) return refusal;
  }
  return std::nullopt;
}

}  // namespace

bool IsToldByStatus(const messages::Problem& problem) {
  switch (problem.kind) {
    case ProblemKind::UnexpectedElement:
      return false;
    case ProblemKind::MalformedValue:
      return problem.type != Type::Enum && problem.type != Type::Int && problem.type != Type::Guid &&
             problem.type != Type::Float;
    case ProblemKind::MalformedAmount:
    case ProblemKind::MalformedId:
    case ProblemKind::TooLong:
    case ProblemKind::MissingElement:
      break;
  }
  return true;
}

std::optional<Status> CheckRequestId(pugi::xml_node request) {
  const std::string_view id = request.attribute("requestID").value();
  if (CharacterCount(id) <= kLongestRequestId) return std::nullopt;
  return status::RequestIdTooLong(id);
}

std::optional<Status> CheckConditions(pugi::xml_node request, const messages::Message& message) {
  if (!message.name.ends_with("Query")) return std::nullopt;
  if (auto refusal = CheckLimit(request)) return refusal;
  return CheckRanges(request, message.request);
}

}  // namespace twqb::company
