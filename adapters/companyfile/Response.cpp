#include "adapters/companyfile/Response.h"

#include <algorithm>

#include "adapters/companyfile/XmlText.h"

namespace twqb::company {

void Response::Begin(const Status& status) {
  constexpr const char* kRequestId = "requestID";
  constexpr std::size_t kRoom = 256;  // most answers without a record need no more
  if (out_.capacity() - out_.size() < kRoom) out_.reserve(std::max(out_.size() + kRoom, out_.capacity() * 2));
  out_.append("<").append(name_);
  if (const auto id = request_.node.attribute(kRequestId)) AppendAttribute(out_, kRequestId, id.value());
  AppendAttribute(out_, "statusCode", std::to_string(status.code));
  AppendAttribute(out_, "statusSeverity", Severity(status));
  AppendAttribute(out_, "statusMessage", status.message);
  out_.append(">");
  begun_ = true;
  failed_ = IsError(status);
}

void Response::End() { AppendCloseTag(out_, name_); }

void Response::Answer(const Status& status) {
  Begin(status);
  End();
}

}  // namespace twqb::company
