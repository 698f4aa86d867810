#include "Outline.h"

#include <fmt/core.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "platform/Text.h"

namespace twqb::messages {

namespace {

std::string_view TypeMark(Type type) {
  switch (type) {
    case Type::Id:
      return "id";
    case Type::Bool:
      return "b";
    case Type::Int:
      return "i";
    case Type::Amt:
      return "amt";
    case Type::Price:
      return "price";
    case Type::Quan:
      return "quan";
    case Type::Percent:
      return "pct";
    case Type::Float:
      return "f";
    case Type::Date:
      return "d";
    case Type::DateTime:
      return "dt";
    case Type::TimeInterval:
      return "ti";
    case Type::Guid:
      return "guid";
    case Type::Macro:
      return "macro";
    default:
      return "s";
  }
}

std::string LengthMark(int maxLength) { return maxLength == 0 ? std::string() : std::to_string(maxLength); }

std::string Marks(const Element& row) { return std::string(row.optional ? "?" : "") + (row.repeating ? "*" : ""); }

std::string VersionMark(const Element& row, const Form& form) {
  const auto since = row.known.SinceIn(form.country);
  return since == Version{1, 0} ? std::string() : fmt::format("@{}.{}", since.major, since.minor);
}

std::string EnumerationMark(const Element& row, const Form& form) {
  std::vector<std::string_view> names;
  for (const auto& value : row.Values()) {
    if (value.KnownIn(form)) names.push_back(value.name);
  }
  std::ranges::sort(names);
  return fmt::format("e({})", Join(names, "|"));
}

bool IsReference(const Element& row) {
  const auto fields = row.Children();
  return fields.size() == 2 && fields[0].name == "ListID" && fields[0].type == Type::Id && fields[0].optional &&
         fields[1].name == "FullName" && fields[1].type == Type::Str && fields[1].optional;
}

std::string ElementOutline(const Element& row, const Form& form) {
  const auto version = VersionMark(row, form);
  const auto head = std::string(row.name) + Marks(row);
  if (row.type == Type::Enum) return head + ":" + EnumerationMark(row, form) + version;
  if (row.type != Type::Aggregate)
    return fmt::format("{}:{}{}{}", head, TypeMark(row.type), LengthMark(row.maxLength), version);
  if (IsReference(row)) return fmt::format("{}:ref{}{}", head, LengthMark(row.Children()[1].maxLength), version);
  return fmt::format("{}{}{{{}}}", head, version, Outline(row.Children(), form));
}

std::string ChoiceOutline(const Element& row, const Form& form) {
  std::vector<std::string> branches;
  for (const auto& branch : row.Children()) {
    if (branch.KnownIn(form)) branches.push_back(Outline({&branch, 1}, form));
  }
  return fmt::format("[{}]{}{}", Join(branches, "|"), Marks(row), VersionMark(row, form));
}

}  // namespace

std::string Outline(std::span<const Element> rows, const Form& form) {
  std::vector<std::string> parts;
  for (const auto& row : rows) {
    if (!row.KnownIn(form)) continue;
    parts.push_back(row.type == Type::Step     ? Outline(row.Children(), form)
                    : row.type == Type::Choice ? ChoiceOutline(row, form)
                                               : ElementOutline(row, form));
  }
  return Join(parts, " ");
}

std::map<std::string, std::string> ReadOutlines(std::string_view file) {
  const auto path = fmt::format("{}/tests/messages/published/{}.outline", TWQB_SOURCE_DIR, file);
  std::ifstream in(path);
  if (!in) throw std::runtime_error("no file " + path);
  std::map<std::string, std::string> outlines;
  std::string* current = nullptr;
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line.front() == '#') continue;
    const auto indent = line.find_first_not_of(' ');
    if (indent == 0) {
      current = &outlines[line];
      continue;
    }
    if (current == nullptr) throw std::runtime_error("no message before \"" + line + "\"");
    if (!current->empty() && current->back() != '|') *current += ' ';
    *current += line.substr(indent);
  }
  return outlines;
}

}  // namespace twqb::messages
