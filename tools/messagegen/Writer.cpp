#include "messagegen/Writer.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <set>
#include <utility>
#include <vector>

namespace twqb::messagegen {

namespace {

using messages::Availability;
using messages::Type;
using messages::Version;

constexpr std::array kTypeNames = {
    std::pair{Type::Aggregate, "Aggregate"},
    std::pair{Type::Choice, "Choice"},
    std::pair{Type::Step, "Step"},
    std::pair{Type::Str, "Str"},
    std::pair{Type::Id, "Id"},
    std::pair{Type::Bool, "Bool"},
    std::pair{Type::Int, "Int"},
    std::pair{Type::Amt, "Amt"},
    std::pair{Type::Price, "Price"},
    std::pair{Type::Quan, "Quan"},
    std::pair{Type::Percent, "Percent"},
    std::pair{Type::Float, "Float"},
    std::pair{Type::Date, "Date"},
    std::pair{Type::DateTime, "DateTime"},
    std::pair{Type::TimeInterval, "TimeInterval"},
    std::pair{Type::Enum, "Enum"},
    std::pair{Type::Guid, "Guid"},
    std::pair{Type::Macro, "Macro"},
};

std::string_view TypeName(Type type) {
  for (const auto& [known, name] : kTypeNames) {
    if (known == type) return name;
  }
  return "Str";
}

std::string Stem(std::string_view path) {
  const auto file = path.substr(path.rfind('/') + 1);  // npos + 1 is 0
  return std::string(file.substr(0, file.find('.')));
}

std::string VersionText(const Version& version) { return fmt::format("{{{}, {}}}", version.major, version.minor); }

// Only what is unlike an initialiser left out.
std::string KnownText(const Availability& known) {
  std::vector<std::string> parts;
  if (known.since != Availability{}.since) parts.push_back(".since = " + VersionText(known.since));
  if (known.sinceInCanada != Version{}) parts.push_back(".sinceInCanada = " + VersionText(known.sinceInCanada));
  if (known.until != Version{}) parts.push_back(".until = " + VersionText(known.until));
  if (known.countries != messages::kEverywhere) parts.push_back(fmt::format(".countries = {}", known.countries));
  if (parts.empty()) return {};
  return fmt::format(", .known = {{{}}}", fmt::join(parts, ", "));
}

class Writer {
 public:
  Writer(const Table& table, std::span<const SourceFile> files, std::string_view function)
      : table_(table), files_(files), function_(function) {}

  std::map<std::string, std::string> Write() const {
    std::map<std::string, std::string> texts;
    for (std::size_t file = 0; file < files_.size(); ++file) texts[Stem(files_[file].name) + ".rows.cpp"] = Rows(file);
    texts[function_ + ".cpp"] = Messages();
    return texts;
  }

 private:
  [[nodiscard]] std::string Head() const {
    return fmt::format(
        "// Made out of the .messages files; see docs/messages.md.\n#include \"messages/Schema.h\"\n\n"
        "namespace twqb::messages {{\n\nnamespace rows::{} {{\n\n",
        function_);
  }

  std::string Rows(std::size_t file) const {
    std::set<std::string> declared;
    std::string text;
    for (const auto& list : table_.valueLists) {
      if (list.file == file) text += Values(list, declared);
    }
    for (const auto& list : table_.rowLists) {
      if (list.file == file) text += Rows(list, declared);
    }
    return fmt::format("{}{}\n{}\n}}  // namespace rows::{}\n\n}}  // namespace twqb::messages\n", Head(),
                       fmt::join(declared, ""), text, function_);
  }

  static std::string Values(const ValueList& list, std::set<std::string>& declared) {
    declared.insert(Declaration(list));
    auto text = fmt::format("constinit const EnumValue k{}[] = {{\n", list.name);
    for (const auto& value : list.values) {
      text +=
          fmt::format("    {{.name = \"{}\", .number = {}{}}},\n", value.name, value.number, KnownText(value.known));
    }
    return text + "};\n";
  }

  std::string Rows(const RowList& list, std::set<std::string>& declared) const {
    declared.insert(Declaration(list));
    auto text = fmt::format("constinit const Element k{}[] = {{\n", list.name);
    for (const auto& row : list.rows) text += "    " + RowText(row, declared) + ",\n";
    return text + "};\n" + Index(list);
  }

  // Where each name stands among the rows; of one that stands there twice, the first.
  static std::string Index(const RowList& list) {
    std::vector<messages::NameSlot> slots(messages::SlotCount(list.rows.size()));
    for (std::size_t i = 0; i < list.rows.size(); ++i) {
      auto slot = messages::FirstSlot(list.rows[i].name, slots.size());
      while (slots[slot] != 0) slot = messages::NextSlot(slot, slots.size());
      slots[slot] = static_cast<messages::NameSlot>(i + 1);
    }
    const bool hasRequiredChoice =
        std::ranges::any_of(list.rows, [](const Row& row) { return row.type == Type::Choice && !row.optional; });
    return fmt::format(
        "constexpr NameSlot k{0}Slots[] = {{{1}}};\n"
        "constinit const RowIndex k{0}Index = {{.slots = k{0}Slots, .hasRequiredChoice = {2}}};\n",
        list.name, fmt::join(slots, ", "), hasRequiredChoice);
  }

  std::string RowText(const Row& row, std::set<std::string>& declared) const {
    auto text = fmt::format("{{.name = \"{}\", .type = Type::{}", row.name, TypeName(row.type));
    if (row.maxLength != 0) text += fmt::format(", .maxLength = {}", row.maxLength);
    if (row.optional) text += ", .optional = true";
    if (row.repeating) text += ", .repeating = true";
    if (!row.attribute.empty()) text += fmt::format(", .attribute = \"{}\"", row.attribute);
    text += KnownText(row.known);
    if (row.children) {
      const auto& list = table_.rowLists[*row.children];
      declared.insert(Declaration(list));
      text +=
          fmt::format(", .firstChild = k{0}, .childCount = {1}, .childIndex = &k{0}Index", list.name, list.rows.size());
    }
    if (row.values) {
      const auto& list = table_.valueLists[*row.values];
      declared.insert(Declaration(list));
      text += fmt::format(", .firstValue = k{}, .valueCount = {}", list.name, list.values.size());
    }
    return text + "}";
  }

  static std::string Declaration(const RowList& list) {
    return fmt::format("extern const Element k{0}[];\nextern const RowIndex k{0}Index;\n", list.name);
  }
  static std::string Declaration(const ValueList& list) {
    return fmt::format("extern const EnumValue k{}[];\n", list.name);
  }

  std::string Messages() const {
    std::set<std::string> declared;
    std::string text;
    for (const auto& message : table_.messages) {
      text += fmt::format("    {{.name = \"{}\"{}{}{}{}}},\n", message.name, Span("request", message.request, declared),
                          Span("response", message.answer, declared), KnownText(message.known),
                          message.set == messages::MessageSet::Subscription ? ", .set = MessageSet::Subscription" : "");
    }
    return fmt::format(
        "{}{}\nconstinit const Message kMessages[] = {{\n{}}};\n\n}}  // namespace rows::{}\n\n"
        "std::span<const Message> {}() {{ return rows::{}::kMessages; }}\n\n}}  // namespace twqb::messages\n",
        Head(), fmt::join(declared, ""), text, function_, function_, function_);
  }

  std::string Span(std::string_view field, std::optional<std::size_t> rows, std::set<std::string>& declared) const {
    if (!rows) return {};
    const auto& list = table_.rowLists[*rows];
    declared.insert(Declaration(list));
    return fmt::format(", .{0} = {{k{1}, {2}, &k{1}Index}}", field, list.name, list.rows.size());
  }

  const Table& table_;
  std::span<const SourceFile> files_;
  std::string function_;
};

}  // namespace

std::map<std::string, std::string> WriteTable(const Table& table, std::span<const SourceFile> files,
                                              std::string_view function) {
  return Writer(table, files, function).Write();
}

}  // namespace twqb::messagegen
