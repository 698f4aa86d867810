// A document of requests, read and checked against the published messages, before anything of it is carried out.
//
// What makes QuickBooks refuse the document as a whole raises here. What it answers with a status of the one request is
// kept with that request. Which requests this company file carries out is not looked at.
#pragma once

#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "messages/Schema.h"
#include "messages/Validation.h"

namespace twqb::company {

enum class OnError : std::uint8_t { Stop, Continue };

struct Request {
  const messages::Message* message = nullptr;
  pugi::xml_node node;                       // the element whose name ends in Rq
  std::optional<messages::Problem> problem;  // the first one that a status tells
};

class RequestSet {
 public:
  // Raises `error::kParse` for a document that QuickBooks does not take. `kind` is the set that the document must hold;
  // nothing: whichever it does.
  RequestSet(std::string_view document, std::optional<messages::MessageSet> kind);

  [[nodiscard]] messages::MessageSet Kind() const { return kind_; }
  [[nodiscard]] const messages::Form& GetForm() const { return form_; }
  [[nodiscard]] OnError GetOnError() const { return onError_; }
  // In document order. The nodes live as long as the set.
  [[nodiscard]] std::span<const Request> Requests() const { return requests_; }

 private:
  void ReadForm();
  pugi::xml_node ReadSet(std::optional<messages::MessageSet> kind);
  void ReadRequest(pugi::xml_node node);

  pugi::xml_document document_;
  messages::MessageSet kind_ = messages::MessageSet::Company;
  messages::Form form_;
  OnError onError_ = OnError::Stop;
  std::vector<Request> requests_;
};

// The element that holds the requests: "QBXMLMsgs" or "QBXMLSubscriptionMsgs", without Rq and Rs.
[[nodiscard]] std::string SetName(messages::MessageSet kind);
// Raises `error::kParse` with its published text and `detail` behind it.
[[noreturn]] void RefuseDocument(std::string_view detail);

}  // namespace twqb::company
