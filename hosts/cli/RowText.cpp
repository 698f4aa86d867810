#include "cli/RowText.h"

#include <nlohmann/json.hpp>
#include <string_view>

#include "adapters/transcript/TranscriptWriter.h"

namespace twqb::cli {

namespace {

std::string Escaped(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '\r':
        escaped += "\\r";
        break;
      case '\n':
        escaped += "\\n";
        break;
      case '\t':
        escaped += "\\t";
        break;
      case '\\':
        escaped += "\\\\";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string TabbedValue(const Value& value) {
  if (IsNull(value)) return "\\N";
  if (const auto* date = std::get_if<Date>(&value)) return IsoDate(*date);
  return Escaped(ToText(value));
}

template <typename TextOf>
std::string TabbedLine(const ado::Recordset& rows, TextOf textOf) {
  std::string line;
  for (int i = 0; i < rows.FieldCount(); ++i) {
    if (i > 0) line += '\t';
    line += textOf(i);
  }
  return line + '\n';
}

}  // namespace

std::string TabbedHeader(const ado::Recordset& rows) {
  return TabbedLine(rows, [&](int i) { return Escaped(rows.FieldName(i)); });
}

std::string TabbedRow(const ado::Recordset& rows) {
  return TabbedLine(rows, [&](int i) { return TabbedValue(rows.FieldAt(i)); });
}

std::string JsonRow(const ado::Recordset& rows) {
  constexpr int kOneLine = -1;
  auto object = nlohmann::ordered_json::object();
  for (int i = 0; i < rows.FieldCount(); ++i) object[rows.FieldName(i)] = ToJson(rows.FieldAt(i));
  return object.dump(kOneLine, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

}  // namespace twqb::cli
