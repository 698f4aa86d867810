#include "messagegen/Resolver.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "messagegen/Definitions.h"
#include "messagegen/Dependence.h"
#include "messagegen/RowChecks.h"

namespace twqb::messagegen {

namespace {

using messages::Type;

constexpr std::array kPlainTypes = {
    std::pair{std::string_view("id"), Type::Id},           std::pair{std::string_view("b"), Type::Bool},
    std::pair{std::string_view("i"), Type::Int},           std::pair{std::string_view("amt"), Type::Amt},
    std::pair{std::string_view("price"), Type::Price},     std::pair{std::string_view("quan"), Type::Quan},
    std::pair{std::string_view("pct"), Type::Percent},     std::pair{std::string_view("f"), Type::Float},
    std::pair{std::string_view("d"), Type::Date},          std::pair{std::string_view("dt"), Type::DateTime},
    std::pair{std::string_view("ti"), Type::TimeInterval}, std::pair{std::string_view("guid"), Type::Guid},
    std::pair{std::string_view("macro"), Type::Macro},     std::pair{std::string_view("s"), Type::Str},
};

bool IsCapital(char c) { return c >= 'A' && c <= 'Z'; }

// Each level and the colons between them.
int PathLength(const NameLengths& names) { return names.levels * names.length + names.levels - 1; }

// What an entry can't see of itself: who uses it.
struct Context {
  Role role = Role::None;
  std::optional<NameLengths> names;  // what `name` and `path` mean
  bool namesHaveNoLimit = false;     // ... where there are no names: texts of any length
  std::string hint;                  // where the rows are: "Invoice/ORInvoiceLineAdd"
};

enum class Order : std::uint8_t { Sequence, Choice };

class Resolver {
 public:
  Resolver(std::span<const SourceFile> files, std::span<const Text> texts)
      : definitions_(files, texts), dependences_(definitions_), texts_(texts) {}

  Table Read() {
    for (const auto& text : texts_) {
      for (const auto& message : text.messages) ReadMessage(message);
    }
    definitions_.ExpectAllUsed();
    for (const auto& text : texts_) {
      for (const auto& definition : text.definitions) ExpectRolesUsed(definition.entries);
    }
    std::ranges::sort(table_.messages, {}, &TableMessage::name);
    return std::move(table_);
  }

 private:
  // --- Messages ---

  void ReadMessage(const MessageText& text) {
    // Said of each, 1.0 too: one that was forgotten would be taken in documents that are older than it.
    if (!text.marks.since) {
      definitions_.Fail(text.place, fmt::format("the first version of {} is missing, as in @1.0", text.name));
    }
    TableMessage message = {.name = text.name, .known = KnownBy(text.marks, text.place), .set = text.set};
    if (text.kind == MessageKind::Free) {
      ExpectNoAttribute(text.marks, text.place);
      message.request = ReadMessageRows(text.request, {.hint = text.name + "Rq"}, text.place);
      message.answer = ReadMessageRows(text.answer, {.role = Role::Ret, .hint = text.name + "Rs"}, text.place);
    } else {
      ReadRecordMessage(text, message);
    }
    if (!messageNames_.insert(message.name).second) {
      definitions_.Fail(text.place, "there is a message " + message.name + " already");
    }
    table_.messages.push_back(std::move(message));
  }

  std::optional<std::size_t> ReadMessageRows(const Entries& entries, const Context& context, Place place) {
    if (entries.empty()) return std::nullopt;
    return ReadList(entries, context, Order::Sequence, place);
  }

  // An Add and a Mod answer with the record, if anything, a query with any number of them.
  void ReadRecordMessage(const MessageText& text, TableMessage& message) {
    const auto& record = definitions_.Find(text.name, {DefinitionKind::Record}, "record", text.place);
    auto returned = ReadRecord(record, Role::Ret, text.place);
    if (text.kind == MessageKind::Query) {
      ExpectNoAttribute(text.marks, text.place);
      message.name += "Query";
      message.request = ReadMessageRows(text.request, {.hint = message.name + "Rq"}, text.place);
    } else {
      const auto role = text.kind == MessageKind::Add ? Role::Add : Role::Mod;
      message.name += RoleName(role);
      auto sent = ReadRecord(record, role, text.place);
      sent.attribute = text.marks.attribute;
      message.request = AddList({std::move(sent)}, message.name + "Rq", text.place.file);
    }
    returned.optional = true;
    returned.repeating = text.kind == MessageKind::Query;
    message.answer = AddList({std::move(returned)}, message.name + "Rs", text.place.file);
  }

  Row ReadRecord(const Definition& record, Role role, Place place) {
    return {.place = place,
            .name = record.name + std::string(RoleName(role)),
            .type = Type::Aggregate,
            .children = ReadDefined(record, {.role = role, .names = record.names}, place)};
  }

  // --- Rows ---

  std::size_t ReadDefined(const Definition& definition, Context context, Place place) {
    context.hint = definition.name;
    const Nested nested(*this, definition, place);
    return ReadList(definition.entries, context, Order::Sequence, definition.place);
  }

  std::size_t ReadList(const Entries& entries, const Context& context, Order order, Place place) {
    const auto key = KeyOf(entries, context);
    if (const auto known = lists_.find(key); known != lists_.end()) return known->second;
    auto rows = ReadRows(entries, context);
    const auto fault = order == Order::Choice ? FaultOfBranches(table_, rows) : FaultOfSequence(rows);
    if (fault) definitions_.Fail(fault->place, fmt::format("{} in {}", fault->what, context.hint));
    if (rows.empty()) {
      const bool depends = std::get<Role>(key) != Role::None;
      definitions_.Fail(place, depends
                                   ? fmt::format("nothing is left in {} for {}", context.hint, RoleName(context.role))
                                   : "there is nothing in " + context.hint);
    }
    return lists_[key] = AddList(std::move(rows), NameOf(key, context), place.file);
  }

  // What does not depend on who uses it is one list.
  using ListKey = std::tuple<const Entries*, Role, std::string>;
  ListKey KeyOf(const Entries& entries, const Context& context) {
    const auto dependence = dependences_.Of(entries);
    std::string names;
    if (dependence.names && context.names) {
      names = fmt::format("{}x{}", context.names->levels, context.names->length);
    } else if (dependence.names && !context.namesHaveNoLimit) {
      names = "none";  // which is refused, and must not find the list of those without a limit
    }
    return {&entries, dependence.role ? context.role : Role::None, names};
  }
  static std::string NameOf(const ListKey& key, const Context& context) {
    auto name = context.hint;
    std::ranges::replace(name, '/', '_');
    if (const auto role = RoleName(std::get<Role>(key)); !role.empty()) name.append("_").append(role);
    if (const auto& names = std::get<std::string>(key); !names.empty()) name.append("_").append(names);
    return name;
  }

  std::size_t AddList(std::vector<Row> rows, const std::string& hint, std::size_t file) {
    table_.rowLists.push_back({.name = NewName(hint), .file = file, .rows = std::move(rows)});
    return table_.rowLists.size() - 1;
  }

  std::string NewName(const std::string& hint) {
    const auto count = ++timesNamed_[hint];
    return count == 1 ? hint : fmt::format("{}_{}", hint, count);
  }

  std::vector<Row> ReadRows(const Entries& entries, const Context& context) {
    std::vector<Row> rows;
    for (const auto& entry : entries) {
      if (entry.kind == EntryKind::Splice) {
        for (auto& row : ReadGroup(entry, context)) rows.push_back(std::move(row));
      } else if (const auto marks = MarksIn(entry, context.role)) {
        rows.push_back(ReadRow(entry, *marks, context));
      }
    }
    return rows;
  }

  std::vector<Row> ReadGroup(const Entry& entry, Context context) {
    const auto& group = definitions_.Find(entry.name, {DefinitionKind::Group}, "group", entry.place);
    context.hint = group.name;
    const Nested nested(*this, group, entry.place);
    return ReadRows(group.entries, context);
  }

  // Marks for a role that no message has are a slip, or left over.
  void ExpectRolesUsed(const Entries& entries) const {
    for (const auto& entry : entries) {
      for (const auto& own : entry.roles) {
        if (!usedRoles_.contains({&entry, own.role})) {
          definitions_.Fail(entry.place, fmt::format("{} has marks for {}, and no message has it there", entry.name,
                                                     RoleName(own.role)));
        }
      }
      ExpectRolesUsed(entry.body);
    }
  }

  // Nothing when the entry is none of that role's.
  std::optional<Marks> MarksIn(const Entry& entry, Role role) {
    usedRoles_.emplace(&entry, role);
    if (!entry.roles.empty() && role == Role::None) {
      definitions_.Fail(
          entry.place,
          fmt::format("{} depends on Add, Mod and Ret, and is used where there is none of them", entry.name));
    }
    const auto own = std::ranges::find(entry.roles, role, &RoleMarks::role);
    if (own == entry.roles.end()) return entry.listedRolesOnly ? std::nullopt : std::optional(entry.marks);
    auto marks = entry.marks;
    marks.optional |= own->marks.optional;
    marks.repeating |= own->marks.repeating;
    if (own->marks.since) marks.since = own->marks.since;
    if (own->marks.sinceInCanada) marks.sinceInCanada = own->marks.sinceInCanada;
    if (own->marks.until) marks.until = own->marks.until;
    if (own->marks.countries) marks.countries = own->marks.countries;
    if (!own->marks.attribute.empty()) marks.attribute = own->marks.attribute;
    return marks;
  }

  Row ReadRow(const Entry& entry, const Marks& marks, const Context& context) {
    Row row = {.place = entry.place,
               .name = entry.name,
               .optional = marks.optional,
               .repeating = marks.repeating,
               .attribute = marks.attribute,
               .known = KnownBy(marks, entry.place)};
    if (entry.kind == EntryKind::Element) {
      ReadType(entry, context, row);
      return row;
    }
    auto inner = context;
    inner.hint += "/" + entry.name;
    row.children =
        ReadList(entry.body, inner, entry.kind == EntryKind::Choice ? Order::Choice : Order::Sequence, entry.place);
    row.type = entry.kind == EntryKind::Choice ? Type::Choice
               : entry.kind == EntryKind::Step ? Type::Step
                                               : Type::Aggregate;
    if (row.type != Type::Aggregate) ExpectNoAttribute(marks, entry.place);
    if (row.type == Type::Step && (row.optional || row.repeating)) {
      definitions_.Fail(entry.place, fmt::format("{} leaves no element and takes no ? or *", entry.name));
    }
    return row;
  }

  // --- Types ---

  void ReadType(const Entry& entry, const Context& context, Row& row) {
    if (IsCapital(entry.type.front())) {
      ReadDefinedType(entry, context, row);
      return;
    }
    if (!entry.typeOf.empty()) definitions_.Fail(entry.place, entry.type + " takes no list of names");
    if (entry.type == "name" || entry.type == "path") {
      if (!context.names && !context.namesHaveNoLimit) {
        definitions_.Fail(entry.place, fmt::format("there are no names here that tell how long a {} is", entry.type));
      }
      if (context.names) row.maxLength = entry.type == "name" ? context.names->length : PathLength(*context.names);
      return;
    }
    const auto plain = std::ranges::find(kPlainTypes, entry.type, &std::pair<std::string_view, Type>::first);
    if (plain != kPlainTypes.end()) {
      row.type = plain->second;
    } else if (!ReadTextLength(entry.type, row.maxLength)) {
      definitions_.Fail(entry.place, fmt::format("there is no type \"{}\"", entry.type));
    }
  }

  // "s41"
  static bool ReadTextLength(std::string_view type, int& length) {
    const auto* end = type.data() + type.size();
    const auto read = std::from_chars(type.data() + 1, end, length);
    return type.front() == 's' && read.ec == std::errc{} && read.ptr == end && length > 0;
  }

  void ReadDefinedType(const Entry& entry, const Context& context, Row& row) {
    const auto* defined = definitions_.Peek(entry.type);
    if (defined != nullptr && defined->kind == DefinitionKind::Record && context.role == Role::Ret) {
      ReadAnsweredRecord(entry, row);
      return;
    }
    const auto& definition = definitions_.Find(entry.type, {DefinitionKind::Aggregate, DefinitionKind::Enumeration},
                                               "aggregate and no enumeration", entry.place);
    if (definition.kind == DefinitionKind::Enumeration) {
      if (!entry.typeOf.empty()) definitions_.Fail(entry.place, "an enumeration takes no list of names");
      row.type = Type::Enum;
      row.values = ReadValues(definition);
      return;
    }
    Context inner = {.role = context.role, .namesHaveNoLimit = entry.typeOf.empty()};
    if (!entry.typeOf.empty()) {
      const auto& named = definitions_.Find(entry.typeOf, {DefinitionKind::Names, DefinitionKind::Record},
                                            "list of names and no record", entry.place);
      if (!named.names) definitions_.Fail(entry.place, "the record " + named.name + " does not tell its names");
      inner.names = named.names;
    }
    row.type = Type::Aggregate;
    row.children = ReadDefined(definition, inner, entry.place);
  }

  // An answer may hold whole records, of kinds that have messages of their own too.
  void ReadAnsweredRecord(const Entry& entry, Row& row) {
    if (!entry.typeOf.empty()) definitions_.Fail(entry.place, "a record takes no list of names");
    const auto& record = definitions_.Find(entry.type, {DefinitionKind::Record}, "record", entry.place);
    row.type = Type::Aggregate;
    row.children = ReadDefined(record, {.role = Role::Ret, .names = record.names}, entry.place);
  }

  std::size_t ReadValues(const Definition& definition) {
    const auto [known, added] = valuesOf_.emplace(&definition, table_.valueLists.size());
    if (!added) return known->second;
    ValueList list = {.name = NewName(definition.name + "Values"), .file = definition.place.file};
    for (const auto& value : definition.values) {
      ExpectNoAttribute(value.marks, value.place);
      if (std::ranges::find(list.values, value.name, &RowValue::name) != list.values.end()) {
        definitions_.Fail(value.place, fmt::format("{} has two values {}", definition.name, value.name));
      }
      if (std::ranges::find(list.values, value.number, &RowValue::number) != list.values.end()) {
        definitions_.Fail(value.place,
                          fmt::format("{} has two values of the number {}", definition.name, value.number));
      }
      list.values.push_back({.name = value.name, .number = value.number, .known = KnownBy(value.marks, value.place)});
    }
    if (list.values.empty()) definitions_.Fail(definition.place, definition.name + " has no values");
    table_.valueLists.push_back(std::move(list));
    return known->second;
  }

  // --- Marks ---

  messages::Availability KnownBy(const Marks& marks, Place place) const {
    messages::Availability known;
    if (marks.since) known.since = *marks.since;
    if (marks.sinceInCanada) known.sinceInCanada = *marks.sinceInCanada;
    if (marks.until) known.until = *marks.until;
    if (marks.countries) known.countries = *marks.countries;
    const bool inCanadaOnly = known.countries == messages::kCanada;
    if (marks.sinceInCanada && (known.countries & messages::kCanada) == 0) {
      definitions_.Fail(place, "the Canadian form has a version of its own for what it does not know");
    }
    if (marks.sinceInCanada && inCanadaOnly)
      definitions_.Fail(place, "what Canada alone knows needs no second version");
    if (marks.until && (*marks.until <= known.since || *marks.until <= known.sinceInCanada)) {
      definitions_.Fail(place, "ends before it begins");
    }
    return known;
  }

  void ExpectNoAttribute(const Marks& marks, Place place) const {
    if (!marks.attribute.empty()) definitions_.Fail(place, "an attribute is an element's");
  }

  // Notices a definition that is part of itself.
  class Nested {
   public:
    Nested(Resolver& resolver, const Definition& definition, Place place) : open_(resolver.open_) {
      if (std::ranges::find(open_, &definition) != open_.end()) {
        resolver.definitions_.Fail(place, definition.name + " is a part of itself");
      }
      open_.push_back(&definition);
    }
    ~Nested() { open_.pop_back(); }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;

   private:
    std::vector<const Definition*>& open_;
  };

  Definitions definitions_;
  Dependences dependences_;
  std::span<const Text> texts_;
  Table table_;
  std::map<ListKey, std::size_t> lists_;
  std::map<const Definition*, std::size_t> valuesOf_;
  std::map<std::string, int> timesNamed_;
  std::set<std::string> messageNames_;
  std::set<std::pair<const Entry*, Role>> usedRoles_;
  std::vector<const Definition*> open_;
};

}  // namespace

Table Resolve(std::span<const SourceFile> files, std::span<const Text> texts) { return Resolver(files, texts).Read(); }

}  // namespace twqb::messagegen
