#include "adapters/snapshot/Questions.h"

#include <fmt/core.h>

#include <utility>

#include "messages/StatusCodes.h"
#include "platform/PlatformError.h"

namespace twqb::snapshot {

namespace {

using messages::Country;

constexpr ErrorNumber kUnknownVersion = 0x80040423;  // how an edition turns down another's form

}  // namespace

Answer::Answer(std::string text) : text_(std::make_unique<std::string>(std::move(text))) {
  const auto parsed = document_.load_buffer_inplace(
      text_->data(), text_->size(),
      pugi::parse_minimal | pugi::parse_escapes | pugi::parse_eol | pugi::parse_ws_pcdata_single | pugi::parse_cdata,
      pugi::encoding_utf8);
  isWhole_ = static_cast<bool>(parsed) && Code() >= 0;
}

pugi::xml_node Answer::Response() const { return document_.child("QBXML").child("QBXMLMsgsRs").first_child(); }

void RefuseUntold(std::string_view what, std::string_view why) {
  throw SnapshotError(fmt::format("QuickBooks can't be read: it does not tell {}. {}", what, why));
}

Questions::Host Questions::AskHost() {
  constexpr std::string_view kWhat = "which edition it is";
  for (const auto country : {Country::US, Country::CA, Country::UK, Country::AU}) {
    form_ = {.country = country};
    watch_("the edition");
    Host host = {.answered = country, .answer = {}};
    try {
      host.answer = Send(kWhat, "<HostQueryRq/>");
    } catch (const PlatformError& raised) {
      if (raised.number() == kUnknownVersion || raised.number() == error::kParse) continue;
      RefuseUntold(kWhat, raised.description());
    }
    if (host.answer.Code() != status::kOk) RefuseUntold(kWhat, host.answer.Message());
    // Australia has no other documents of its own.
    if (country == Country::AU) form_ = {};
    return host;
  }
  throw SnapshotError("QuickBooks can't be read: this edition of it answers none of the messages that twqb knows.");
}

Answer Questions::Ask(std::string_view what, const std::string& request) {
  watch_(what);
  try {
    return Send(what, request);
  } catch (const PlatformError& raised) {
    RefuseUntold(what, raised.description());
  }
}

std::optional<Answer> Questions::AskIfKnown(std::string_view what, const std::string& request) {
  watch_(what);
  try {
    auto answer = Send(what, request);
    if (answer.Code() == status::kOk) return answer;
  } catch (const PlatformError& raised) {
    if (raised.number() != error::kParse) RefuseUntold(what, raised.description());
  }
  return std::nullopt;
}

Answer Questions::Send(std::string_view what, const std::string& request) {
  Answer answer(session_.ProcessDocument(Enveloped(request)));
  if (!answer.IsWhole()) RefuseUntold(what, "Its answer breaks off, or is none.");
  return answer;
}

std::string Questions::Enveloped(const std::string& request) const {
  return fmt::format(
      "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<?qbxml version=\"{}\"?>\n"
      "<QBXML><QBXMLMsgsRq onError=\"continueOnError\">{}</QBXMLMsgsRq></QBXML>",
      messages::FormTag(form_), request);
}

}  // namespace twqb::snapshot
