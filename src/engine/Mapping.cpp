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

void SetField(const RequestField& target, const SendField& field, std::string_view text) {
  if (field.length > 0) {
    SetCutTo(target, text, field.length);
  } else if (field.cut == SendField::Cut::ToMaxLength) {
    SetCut(target, text);
  } else {
    target.SetValue(text);
  }
}

bool HasChoices(std::string_view path) { return path.find('|') != std::string_view::npos; }

}  // namespace

std::vector<std::string> PathChoices(std::string_view path) {
  const auto dot = path.rfind('.');
  const auto last = dot == std::string_view::npos ? 0 : dot + 1;
  std::vector<std::string> paths;
  for (const auto& step : Split(path.substr(last), '|')) paths.push_back(std::string(path.substr(0, last)) + step);
  return paths;
}

void AssignReference(const RequestField& reference, std::string_view listID, std::string_view name) {
  if (listID.empty()) {
    reference["FullName"].SetValue(name);
  } else {
    reference["ListID"].SetValue(listID);
  }
}

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
  SetCutTo(field, text, static_cast<std::size_t>(field.GetMaxLength()));
}

void SetCutTo(const RequestField& field, std::string_view text, std::size_t length) {
  const auto kept = Left(text, length);
  NoteCut(field, text, kept, length);
  field.SetValue(kept);
}

void NoteCut(const RequestField& field, std::string_view text, std::string_view kept, std::size_t room) {
  if (Vars().cuts == nullptr || kept.size() >= text.size()) return;
  Vars().cuts->push_back(
      {.field = std::string(field.Name()), .text = std::string(text), .kept = std::string(kept), .room = room});
}

int SendFields(const RequestField& request, const ado::Recordset& row, std::span<const SendField> fields) {
  int set = 0;
  for (const auto& field : fields) {
    const auto value = row.Field(field.column);
    auto text = ToText(value);
    if (!Applies(field.when, value, text)) continue;
    if (field.convert != nullptr) text = field.convert(text);
    if (HasChoices(field.path)) {
      for (const auto& path : PathChoices(field.path)) SetField(FieldAtPath(request, path), field, text);
    } else {
      SetField(FieldAtPath(request, field.path), field, text);
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
  const auto take = [&](const GetField& field, std::string_view path) {
    const auto source = FieldAtPath(record, path);
    if (source.IsNothing()) return;
    const auto text = source.GetValue();
    WriteCut(row, field.column, field.convert == nullptr ? text : field.convert(text));
  };
  for (const auto& field : fields) {
    if (HasChoices(field.path)) {
      for (const auto& path : PathChoices(field.path)) take(field, path);
    } else {
      take(field, field.path);
    }
  }
}

void BlankColumns(ado::Recordset& row, std::span<const std::string_view> columns) {
  for (const auto column : columns) row.SetField(column, std::string());
}

std::string ColumnText(const ado::Recordset& row, std::string_view column) { return ToText(row.Field(column)); }

}  // namespace twqb
