#include "adapters/transcript/TranscriptWriter.h"

#include <string>

#include "adapters/transcript/Masking.h"
#include "platform/PlatformError.h"

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

struct JsonOf {
  Json operator()(Null /*null*/) const { return nullptr; }
  Json operator()(Currency value) const { return value.ToDouble(); }
  Json operator()(Date value) const { return IsoDate(value); }
  template <typename Plain>
  Json operator()(const Plain& value) const {
    return value;
  }
};

std::ofstream OpenForWriting(const std::filesystem::path& file) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  if (!out) throw PlatformError(error::kPathNotFound);
  return out;
}

}  // namespace

TranscriptWriter::TranscriptWriter(std::ostream& out, Masking masking) : out_(out), masking_(masking) {}

TranscriptWriter::TranscriptWriter(const std::filesystem::path& file, Masking masking)
    : file_(OpenForWriting(file)), out_(file_), masking_(masking) {}

void TranscriptWriter::Write(std::string_view kind, const Json& fields) {
  Json event = {{"seq", ++seq_}, {"kind", kind}};
  if (masking_ == Masking::Masked) {
    auto masked = fields;
    Mask(kind, masked);
    event.update(masked);
  } else {
    event.update(fields);
  }
  constexpr int kOneLine = -1;
  out_ << event.dump(kOneLine, ' ', false, Json::error_handler_t::replace) << '\n' << std::flush;
}

Json ToJson(const Value& value) { return std::visit(JsonOf{}, value); }

}  // namespace twqb
