#include "engine/Mapping.h"

#include "platform/Text.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

bool Applies(SendField::When when, const Value& value, std::string_view text) {
  switch (when) {
    case SendField::When::Always:
      return true;
    case SendField::When::NotNull:
      return !IsNull(value);
    case SendField::When::NotEmpty:
      return !text.empty();
    case SendField::When::NotBlank:
      return !Trim(text).empty();
  }
  return true;
}

}  // namespace

RequestField FieldAtPath(const RequestField& request, std::string_view path) {
  const auto dot = path.find('.');
  if (dot == std::string_view::npos) return request[path];
  return FieldAtPath(request[path.substr(0, dot)], path.substr(dot + 1));
}

Record FieldAtPath(const Record& record, std::string_view path) {
  const auto dot = path.find('.');
  if (dot == std::string_view::npos) return record[path];
  const auto step = record[path.substr(0, dot)];
  return step.IsNothing() ? Record() : FieldAtPath(step, path.substr(dot + 1));
}

void SetCut(const RequestField& field, std::string_view text) {
  field.SetValue(Left(text, static_cast<std::size_t>(field.GetMaxLength())));
}

int SendFields(const RequestField& request, const ado::Recordset& row, std::span<const SendField> fields) {
  int set = 0;
  for (const auto& field : fields) {
    const auto value = row.Field(field.column);
    auto text = ToText(value);
    if (!Applies(field.when, value, text)) continue;
    if (field.convert != nullptr) text = field.convert(text);
    const auto target = FieldAtPath(request, field.path);
    if (field.length > 0) {
      target.SetValue(Left(text, field.length));
    } else if (field.cut == SendField::Cut::ToMaxLength) {
      SetCut(target, text);
    } else {
      target.SetValue(text);
    }
    ++set;
  }
  return set;
}

std::string CutTo(const ado::Recordset& row, std::string_view column, std::string_view text) {
  const int size = row.DefinedSize(column);
  return size > 0 ? Left(text, static_cast<std::size_t>(size)) : std::string(text);
}

void WriteCut(ado::Recordset& row, std::string_view column, std::string_view text) {
  row.SetField(column, CutTo(row, column, text));
}

void GetFields(ado::Recordset& row, const Record& record, std::span<const GetField> fields) {
  for (const auto& field : fields) {
    const auto source = FieldAtPath(record, field.path);
    if (source.IsNothing()) continue;
    const auto text = source.GetValue();
    WriteCut(row, field.column, field.convert == nullptr ? text : field.convert(text));
  }
}

std::string ColumnText(const ado::Recordset& row, std::string_view column) { return ToText(row.Field(column)); }

std::string_view StateFieldName() {
  const auto country = UpperCase(Vars().g_QBCountry);
  if (country == "CA") return "Province";
  if (country == "UK") return "County";
  return "State";
}

}  // namespace twqb
