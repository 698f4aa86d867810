#include "cli/screen/RowText.h"

#include <fmt/core.h>

#include <string_view>
#include <vector>

#include "adapters/transcript/TranscriptWriter.h"
#include "platform/Text.h"

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
  return ReplaceControls(escaped, [](unsigned control) { return fmt::format("\\x{:02x}", control); });
}

std::string TabbedValue(const Value& value) {
  if (IsNull(value)) return "\\N";
  if (const auto* date = std::get_if<Date>(&value)) return IsoDate(*date);
  return Escaped(ToText(value));
}

template <typename Cell, typename TextOf>
std::string TabbedLine(std::span<const Cell> cells, TextOf textOf) {
  std::string line;
  for (const auto& cell : cells) {
    if (&cell != cells.data()) line += '\t';
    line += textOf(cell);
  }
  return line + '\n';
}

std::vector<std::string> NamesOf(const ado::Recordset& rows) {
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(rows.FieldCount()));
  for (int i = 0; i < rows.FieldCount(); ++i) names.push_back(rows.FieldName(i));
  return names;
}

std::vector<Value> ValuesOf(const ado::Recordset& rows) {
  std::vector<Value> values;
  values.reserve(static_cast<std::size_t>(rows.FieldCount()));
  for (int i = 0; i < rows.FieldCount(); ++i) values.push_back(rows.FieldAt(i));
  return values;
}

}  // namespace

std::string TabbedNames(std::span<const std::string> names) {
  return TabbedLine(names, [](const std::string& name) { return Escaped(name); });
}

std::string TabbedValues(std::span<const Value> values) { return TabbedLine(values, TabbedValue); }

std::string JsonValues(std::span<const std::string> names, std::span<const Value> values) {
  EventFields fields;
  for (std::size_t i = 0; i < names.size(); ++i) fields[names[i]] = EventValue(values[i]);
  return JsonLine(fields) + '\n';
}

std::string TabbedHeader(const ado::Recordset& rows) { return TabbedNames(NamesOf(rows)); }
std::string TabbedRow(const ado::Recordset& rows) { return TabbedValues(ValuesOf(rows)); }
std::string JsonRow(const ado::Recordset& rows) { return JsonValues(NamesOf(rows), ValuesOf(rows)); }

}  // namespace twqb::cli
