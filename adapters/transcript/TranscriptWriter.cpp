#include "adapters/transcript/TranscriptWriter.h"

#include <fmt/core.h>

#include <nlohmann/json.hpp>
#include <ostream>

#include "platform/Text.h"

namespace twqb {

namespace {

using Json = nlohmann::ordered_json;

// Free text: boxes, log lines, settings, arguments, descriptions of errors.
void MaskText(Json& node) {
  if (node.is_string()) {
    node = MaskQuotedIdentity(MaskPasswords(node.get_ref<const std::string&>()));
  } else if (node.is_structured()) {
    for (auto& child : node) MaskText(child);
  }
}

void MaskColumns(Json& values) {
  for (auto& [column, value] : values.items()) {
    const bool empty = value.is_null() || (value.is_string() && value.get_ref<const std::string&>().empty());
    if (!empty && IsIdentityColumn(column)) value = kMasked;
  }
}

// Documents and statements have masks of their own: what reads like a connection string in a note of a client is data
// there, and a mask that runs to the end of the line would break the document.
void Mask(std::string_view kind, Json& fields) {
  for (auto& [name, node] : fields.items()) {
    if (name == "xml") {
      node = MaskIdentityElements(node.get_ref<const std::string&>());
    } else if (kind == "sql" && name == "text") {
      node = MaskIdentityLiterals(node.get_ref<const std::string&>());
    } else if (kind == "row" && name == "values") {
      MaskColumns(node);
    } else {
      MaskText(node);
    }
  }
}

Json ToJson(const EventFields& fields);

struct JsonOf {
  Json operator()(const EventList& list) const {
    auto array = Json::array();
    for (const auto& value : list) array.push_back(std::visit(*this, value.Get()));
    return array;
  }
  Json operator()(const EventFields& fields) const { return ToJson(fields); }
  template <typename Plain>
  Json operator()(const Plain& value) const {
    return value;
  }
};

Json ToJson(const EventFields& fields) {
  auto object = Json::object();
  for (const auto& [name, value] : fields.All()) object[name] = std::visit(JsonOf{}, value.Get());
  return object;
}

std::string OneLine(const Json& object) {
  constexpr int kNotIndented = -1;
  // Of the controls JSON lets DEL and the second set through.
  return ReplaceControls(object.dump(kNotIndented, ' ', false, Json::error_handler_t::replace),
                         [](unsigned control) { return fmt::format("\\u{:04x}", control); });
}

}  // namespace

TranscriptWriter::TranscriptWriter(std::ostream& out, Masking masking) : out_(out), masking_(masking) {}

void TranscriptWriter::Write(std::string_view kind, const EventFields& fields) {
  Json event = {{"seq", ++seq_}, {"kind", kind}};
  auto told = ToJson(fields);
  if (masking_ == Masking::Masked) Mask(kind, told);
  event.update(told);
  out_ << OneLine(event) << '\n' << std::flush;
}

bool TranscriptWriter::Good() const { return out_.good(); }

std::string JsonLine(const EventFields& fields) { return OneLine(ToJson(fields)); }

}  // namespace twqb
