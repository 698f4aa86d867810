#include "adapters/faults/FaultAnswers.h"

#include <pugixml.hpp>
#include <sstream>
#include <utility>

#include "platform/Text.h"

namespace twqb::faults {

namespace {

// Neither reading nor writing translates anything, so values pass as they are spelled: "&#13;" stays "&#13;".
constexpr unsigned kParseAsSpelled = pugi::parse_cdata | pugi::parse_pi | pugi::parse_comments |
                                     pugi::parse_declaration | pugi::parse_doctype | pugi::parse_ws_pcdata;
constexpr unsigned kWriteAsSpelled = pugi::format_raw | pugi::format_no_escapes;

constexpr std::string_view kRequestsSuffix = "MsgsRq";
constexpr std::string_view kResponsesSuffix = "MsgsRs";
constexpr std::string_view kSuffix = "Rs";  // of a response, in place of the request's Rq

bool Load(pugi::xml_document& parsed, std::string_view text) {
  return static_cast<bool>(parsed.load_buffer(text.data(), text.size(), kParseAsSpelled, pugi::encoding_utf8));
}

// An attribute is written in double quotes, whichever it had.
struct DoubleQuotes : pugi::xml_tree_walker {
  bool for_each(pugi::xml_node& node) override {
    for (auto attribute : node.attributes()) {
      const std::string_view value = attribute.value();
      if (value.find('"') != std::string_view::npos) attribute.set_value(ReplaceAll(value, "\"", "&quot;").c_str());
    }
    return true;
  }
};

// The document as it now is; what stands before its root element as it was in `source`, from which it was read.
std::string Save(pugi::xml_document& parsed, std::string_view source) {
  DoubleQuotes quotes;
  parsed.traverse(quotes);
  const auto root = parsed.document_element();
  std::ostringstream out;
  out << source.substr(0, static_cast<std::size_t>(root.offset_debug() - 1));  // the offset is that of its name
  root.print(out, "", kWriteAsSpelled, pugi::encoding_utf8);
  return std::move(out).str();
}

pugi::xml_node MessageSet(const pugi::xml_document& parsed, std::string_view suffix) {
  return parsed.document_element().find_child(
      [&](pugi::xml_node child) { return std::string_view(child.name()).ends_with(suffix); });
}

std::vector<pugi::xml_node> Elements(pugi::xml_node parent) {
  std::vector<pugi::xml_node> elements;
  for (const auto child : parent.children()) {
    if (child.type() == pugi::node_element) elements.push_back(child);
  }
  return elements;
}

std::string WithResponseSuffix(std::string_view name) {
  return std::string(name.substr(0, name.size() - kSuffix.size())).append(kSuffix);
}

std::string AttributeText(std::string_view text) {
  static constexpr std::pair<std::string_view, std::string_view> kEntities[] = {
      {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"\r", "&#13;"}, {"\n", "&#10;"}};
  std::string result(text);
  for (const auto& [character, entity] : kEntities) result = ReplaceAll(result, character, entity);
  return result;
}

const StatusFault& NotProcessed() {
  static const StatusFault kFault = {
      .code = 3231, .severity = "Error", .message = "The request has not been processed."};
  return kFault;
}

// One request of the document in hand. A request that is kept has no fault.
struct Request {
  std::string name;
  std::string id;  // as spelled
  bool hasId = false;
  const StatusFault* fault = nullptr;
};

void FillAnswer(pugi::xml_node response, const Request& request, const StatusFault& fault) {
  if (request.hasId) response.append_attribute("requestID").set_value(request.id.c_str());
  response.append_attribute("statusCode").set_value(fault.code);
  response.append_attribute("statusSeverity").set_value(fault.severity.c_str());
  response.append_attribute("statusMessage").set_value(AttributeText(fault.message).c_str());
}

std::string OwnForm(std::string_view setName) {
  return std::string("<?xml version=\"1.0\" ?><QBXML><")
      .append(setName)
      .append("></")
      .append(setName)
      .append("></QBXML>");
}

}  // namespace

FaultAnswers::FaultAnswers(std::vector<StatusFault> statuses) {
  lines_.reserve(statuses.size());
  for (auto& fault : statuses) lines_.push_back({.fault = std::move(fault)});
}

const StatusFault* FaultAnswers::Count(std::string_view request) {
  const StatusFault* due = nullptr;
  for (auto& line : lines_) {
    if (line.fault.request == request && ++line.seen == line.fault.nth && due == nullptr) due = &line.fault;
  }
  return due;
}

std::string FaultAnswers::Process(std::string_view document,
                                  const std::function<std::string(std::string_view)>& carryOut) {
  pugi::xml_document asked;
  if (lines_.empty() || !Load(asked, document)) return carryOut(document);
  auto set = MessageSet(asked, kRequestsSuffix);
  const bool stopsOnError = std::string_view(set.attribute("onError").value()) == "stopOnError";

  // Count the requests, and take out those that are answered here.
  std::vector<Request> requests;
  bool anyFault = false;
  bool anyLeft = false;
  bool stopped = false;
  for (auto element : Elements(set)) {
    const auto id = element.attribute("requestID");
    Request request{.name = element.name(), .id = id.value(), .hasId = static_cast<bool>(id)};
    const auto* const due = Count(request.name);
    request.fault = stopped ? &NotProcessed() : due;
    if (request.fault != nullptr) {
      anyFault = true;
      stopped = stopped || (stopsOnError && request.fault->severity == "Error");
      set.remove_child(element);
    } else {
      anyLeft = true;
    }
    requests.push_back(std::move(request));
  }
  if (!anyFault) return carryOut(document);

  // The rest goes on.
  auto answer = anyLeft ? carryOut(Save(asked, document)) : OwnForm(WithResponseSuffix(set.name()));
  pugi::xml_document answered;
  if (!Load(answered, answer)) return answer;
  auto responses = MessageSet(answered, kResponsesSuffix);
  if (!responses) return answer;

  // Put the answers in: each before the response of the next request that was carried out.
  const auto carriedOut = Elements(responses);
  auto next = carriedOut.begin();
  bool failedBefore = false;
  for (const auto& request : requests) {
    if (request.fault == nullptr) {
      if (next == carriedOut.end()) continue;
      failedBefore = failedBefore || std::string_view(next->attribute("statusSeverity").value()) == "Error";
      ++next;
      continue;
    }
    const auto name = WithResponseSuffix(request.name);
    auto response = next == carriedOut.end() ? responses.append_child(name.c_str())
                                             : responses.insert_child_before(name.c_str(), *next);
    FillAnswer(response, request, stopsOnError && failedBefore ? NotProcessed() : *request.fault);
  }
  return Save(answered, answer);
}

}  // namespace twqb::faults
