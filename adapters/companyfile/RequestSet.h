// A document of requests, read and checked against the published messages, before anything of it is carried out.
//
// What makes QuickBooks refuse the document as a whole raises here. What it answers with a status of the one request is
// kept with that request. What the company file makes of a right request is not looked at.
#pragma once

#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/companyfile/Status.h"
#include "adapters/companyfile/WellFormedXml.h"
#include "messages/Schema.h"

namespace twqb::company {

enum class OnError : std::uint8_t { Stop, Continue };
enum class ResponseData : std::uint8_t { IncludeAll, IncludeNone };

// By what a set is remembered, and what is wanted in its answer.
struct SetAttributes {
  std::string newId;  // newMessageSetID: names this set
  std::string oldId;  // oldMessageSetID: names an earlier one, to be forgotten or asked for
  ResponseData data = ResponseData::IncludeAll;
  bool written = false;  // whether any of them stands there, be it empty

  // Whether any of them says anything.
  [[nodiscard]] bool Any() const { return !newId.empty() || !oldId.empty() || data != ResponseData::IncludeAll; }
};

struct Request {
  std::string_view name;                       // without Rq: "CustomerAdd"; lives as long as the set
  const messages::Message* message = nullptr;  // nullptr: published, but of nothing that company files here keep
  pugi::xml_node node;                         // the element whose name ends in Rq
  std::optional<Status> refusal;               // what it is answered without being carried out
};

class RequestSet {
 public:
  // `document` must outlive the set. Throws RefusedDocument: `error::kParse` for a document that QuickBooks does not
  // take, and `kUnknownVersion` for one in a version that never was or in the form of a country that is not among
  // `forms`; of a document that has both faults, the version is told. `kind` is the set that the document must hold;
  // nothing: whichever it does.
  RequestSet(std::string_view document, std::optional<messages::MessageSet> kind,
             std::span<const messages::Country> forms);

  [[nodiscard]] messages::MessageSet Kind() const { return kind_; }
  [[nodiscard]] const messages::Form& GetForm() const { return form_; }
  [[nodiscard]] OnError GetOnError() const { return onError_; }
  [[nodiscard]] const SetAttributes& Attributes() const { return attributes_; }
  // What stands inside the element of the set: to the letter, and without what means nothing (comments, white space
  // between elements, spellings of one and the same character).
  [[nodiscard]] std::string_view ContentText() const;
  [[nodiscard]] std::string ParsedContent() const;
  // In document order. The nodes live as long as the set.
  [[nodiscard]] std::span<const Request> Requests() const { return requests_; }

 private:
  void ReadForm(const std::optional<DocumentType>& type, std::span<const messages::Country> forms);
  pugi::xml_node FindSet(std::optional<messages::MessageSet> kind);
  void ReadAttributes();
  void ReadRequest(pugi::xml_node node);
  // Raises for what refuses the document; notes in the request what refuses that alone.
  void CheckContent(Request& request) const;

  std::string_view text_;
  pugi::xml_document document_;
  pugi::xml_node set_;
  messages::MessageSet kind_ = messages::MessageSet::Company;
  messages::Form form_;
  OnError onError_ = OnError::Stop;
  SetAttributes attributes_;
  std::vector<Request> requests_;
};

// The element that holds the requests: "QBXMLMsgs" or "QBXMLSubscriptionMsgs", without Rq and Rs.
[[nodiscard]] std::string_view SetName(messages::MessageSet kind);

}  // namespace twqb::company
