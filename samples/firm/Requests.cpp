#include "samples/firm/Requests.h"

#include <fmt/format.h>

#include <utility>

#include "platform/Text.h"
#include "samples/firm/DecimalText.h"

namespace twqb::firm {

namespace {

constexpr int kRequestsOfADocument = 200;

std::string Escaped(std::string_view text) {
  return ReplaceAll(ReplaceAll(ReplaceAll(text, "&", "&amp;"), "<", "&lt;"), ">", "&gt;");
}

}  // namespace

Request::Request(std::string_view kind, std::string_view macro) : kind_(kind) {
  const auto attribute = macro.empty() ? "" : fmt::format(" defMacro=\"TxnID:{}\"", macro);
  text_ = fmt::format("<{0}AddRq><{0}Add{1}>", kind, attribute);
}

Request& Request::Put(std::string_view field, std::string_view text) {
  if (!text.empty()) text_ += fmt::format("<{0}>{1}</{0}>", field, Escaped(text));
  return *this;
}

Request& Request::Money(std::string_view field, std::int64_t cents) { return Number(field, cents, 2); }

Request& Request::Number(std::string_view field, std::int64_t digits, int decimals) {
  return Put(field, DecimalText(digits, decimals));
}

Request& Request::Ref(std::string_view field, std::string_view fullName) {
  return fullName.empty() ? *this : Open(field).Put("FullName", fullName).Close();
}

Request& Request::Use(std::string_view field, std::string_view macro) {
  text_ += fmt::format("<{0} useMacro=\"TxnID:{1}\"></{0}>", field, macro);
  return *this;
}

Request& Request::Open(std::string_view field) {
  open_.emplace_back(field);
  text_ += fmt::format("<{}>", field);
  return *this;
}

Request& Request::Close() {
  text_ += fmt::format("</{}>", open_.back());
  open_.pop_back();
  return *this;
}

std::string Request::Text() const { return fmt::format("{0}</{1}Add></{1}AddRq>", text_, kind_); }

void Requests::Add(const Request& request) {
  gathered_ += request.Text();
  if (++count_ == kRequestsOfADocument) Flush();
}

void Requests::Flush() {
  if (count_ == 0) return;
  count_ = 0;
  take_(
      fmt::format("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<?qbxml version=\"3.0\"?>\n<QBXML><QBXMLMsgsRq "
                  "onError=\"stopOnError\">{}</QBXMLMsgsRq></QBXML>\n",
                  std::exchange(gathered_, {})));
}

}  // namespace twqb::firm
