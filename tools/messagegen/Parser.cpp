#include "messagegen/Parser.h"

#include <fmt/core.h>

#include <array>
#include <charconv>
#include <utility>

#include "messagegen/Tokens.h"

namespace twqb::messagegen {

namespace {

using messages::Countries;
using messages::Version;

constexpr std::array kRoles = {std::pair{Role::Add, std::string_view("Add")},
                               std::pair{Role::Mod, std::string_view("Mod")},
                               std::pair{Role::Ret, std::string_view("Ret")}};

constexpr std::array kCountryMarks = {std::pair{std::string_view("US"), messages::kUnitedStates},
                                      std::pair{std::string_view("CA"), messages::kCanada},
                                      std::pair{std::string_view("UK"), messages::kBritain}};

std::optional<Role> RoleOf(const Token& token) {
  for (const auto& [role, name] : kRoles) {
    if (token.IsWord(name)) return role;
  }
  return std::nullopt;
}

std::optional<Countries> CountriesOf(const Token& token) {
  for (const auto& [name, countries] : kCountryMarks) {
    if (token.IsWord(name)) return countries;
  }
  return std::nullopt;
}

bool IsName(const Token& token) {
  return token.kind == TokenKind::Word && token.text.front() >= 'A' && token.text.front() <= 'Z';
}

std::string Quoted(const Token& token) {
  switch (token.kind) {
    case TokenKind::LineEnd:
      return "the end of the line";
    case TokenKind::End:
      return "the end of the file";
    case TokenKind::Since:
      return "\"@" + token.text + "\"";
    case TokenKind::Until:
      return "\"<" + token.text + "\"";
    default:
      return "\"" + token.text + "\"";
  }
}

class Reader {
 public:
  Reader(const SourceFile& file, std::size_t index) : file_(file), index_(index), tokens_(ReadTokens(file)) {}

  Text Read() {
    Text text;
    for (SkipLineEnds(); Here().kind != TokenKind::End; SkipLineEnds()) {
      ReadStatement(text);
      if (Here().kind != TokenKind::LineEnd) Fail("a new line is expected, not " + Quoted(Here()));
    }
    return text;
  }

 private:
  [[noreturn]] void Fail(std::string_view what) const { throw BadInput(file_.name, Here().line, what); }

  [[nodiscard]] const Token& Here() const { return tokens_[at_]; }
  const Token& Take() { return Here().kind == TokenKind::End ? tokens_[at_] : tokens_[at_++]; }
  bool TakeSign(std::string_view sign) {
    if (!Here().IsSign(sign)) return false;
    Take();
    return true;
  }
  bool TakeWord(std::string_view word) {
    if (!Here().IsWord(word)) return false;
    Take();
    return true;
  }
  void ExpectSign(std::string_view sign) {
    if (!TakeSign(sign)) Fail(fmt::format("\"{}\" is expected, not {}", sign, Quoted(Here())));
  }
  std::string ExpectName() {
    if (!IsName(Here())) Fail("a name, which begins with a capital, is expected, not " + Quoted(Here()));
    return Take().text;
  }
  int ExpectNumber() {
    if (Here().kind != TokenKind::Number) Fail("a number is expected, not " + Quoted(Here()));
    return NumberOf(Take().text);
  }
  int NumberOf(std::string_view digits) const {
    int number = 0;
    const auto* end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, number);
    if (read.ec != std::errc{} || read.ptr != end) Fail(fmt::format("\"{}\" is no number", digits));
    return number;
  }
  void SkipLineEnds() {
    while (Here().kind == TokenKind::LineEnd) Take();
  }
  [[nodiscard]] Place PlaceHere() const { return {.file = index_, .line = Here().line}; }

  void ReadStatement(Text& text) {
    const auto place = PlaceHere();
    const auto keyword = Take();
    if (keyword.IsWord("names")) {
      text.definitions.push_back({.kind = DefinitionKind::Names, .place = place, .name = ExpectName()});
      text.definitions.back().names = ReadNameLengths();
    } else if (keyword.IsWord("enum")) {
      text.definitions.push_back({.kind = DefinitionKind::Enumeration, .place = place, .name = ExpectName()});
      text.definitions.back().values = ReadValues();
    } else if (keyword.IsWord("aggregate")) {
      ReadEntriesOf(DefinitionKind::Aggregate, place, text);
    } else if (keyword.IsWord("group")) {
      ReadEntriesOf(DefinitionKind::Group, place, text);
    } else if (keyword.IsWord("record")) {
      ReadEntriesOf(DefinitionKind::Record, place, text);
    } else if (keyword.IsWord("add") || keyword.IsWord("mod")) {
      ReadMessageHead(keyword.IsWord("add") ? MessageKind::Add : MessageKind::Mod, place, text);
    } else if (keyword.IsWord("query")) {
      auto& message = ReadMessageHead(MessageKind::Query, place, text);
      message.request = ReadBlock();
    } else if (keyword.IsWord("message")) {
      ReadFreeMessage(ReadMessageHead(MessageKind::Free, place, text));
    } else {
      --at_;
      Fail(Quoted(Here()) + " begins no definition and no message");
    }
  }

  NameLengths ReadNameLengths() {
    NameLengths names = {.length = ExpectNumber()};
    if (TakeWord("x")) names = {.levels = names.length, .length = ExpectNumber()};
    if (names.levels == 0 || names.length == 0) Fail("a name has a length");
    return names;
  }

  void ReadEntriesOf(DefinitionKind kind, Place place, Text& text) {
    text.definitions.push_back({.kind = kind, .place = place, .name = ExpectName()});
    auto& definition = text.definitions.back();
    if (kind == DefinitionKind::Record && TakeWord("names")) definition.names = ReadNameLengths();
    definition.entries = ReadBlock();
  }

  MessageText& ReadMessageHead(MessageKind kind, Place place, Text& text) {
    text.messages.push_back({.kind = kind, .place = place, .name = ExpectName()});
    auto& message = text.messages.back();
    while (ReadMark(message.marks)) {
    }
    if (TakeWord("subscription")) message.set = messages::MessageSet::Subscription;
    return message;
  }

  void ReadFreeMessage(MessageText& message) {
    ExpectSign("{");
    SkipLineEnds();
    if (TakeWord("request")) message.request = ReadBlock();
    SkipLineEnds();
    if (TakeWord("answer")) message.answer = ReadBlock();
    SkipLineEnds();
    ExpectSign("}");
  }

  std::vector<Value> ReadValues() {
    std::vector<Value> values;
    int next = 0;
    ExpectSign("{");
    for (SkipSeparators(); !TakeSign("}"); EndEntry("}")) {
      Value value = {.place = PlaceHere(), .name = ExpectName(), .number = next};
      if (TakeSign("=")) value.number = ExpectNumber();
      next = value.number + 1;
      while (ReadMark(value.marks)) {
      }
      values.push_back(std::move(value));
    }
    return values;
  }

  // { ... } of entries, each on a line of its own or with commas between.
  Entries ReadBlock() {
    ExpectSign("{");
    return ReadEntriesUpTo("}");
  }
  Entries ReadEntriesUpTo(std::string_view close) {
    Entries entries;
    for (SkipSeparators(); !TakeSign(close); EndEntry(close)) entries.push_back(ReadEntry());
    return entries;
  }
  void SkipSeparators() {
    SkipLineEnds();
    if (Here().IsSign(",")) Fail("there is nothing before the comma");
  }
  void EndEntry(std::string_view close) {
    const bool comma = TakeSign(",");
    const bool lineEnd = Here().kind == TokenKind::LineEnd;
    if (!comma && !lineEnd && !Here().IsSign(close)) {
      Fail(fmt::format("a new line, a comma or \"{}\" is expected, not {}", close, Quoted(Here())));
    }
    SkipLineEnds();
  }

  // What stands between the brackets of a choice.
  Entries ReadBranches() {
    Entries branches;
    for (;;) {
      SkipLineEnds();
      branches.push_back(ReadEntry());
      SkipLineEnds();
      if (TakeSign("]")) return branches;
      if (!TakeSign("|")) Fail("\"|\" or \"]\" is expected, not " + Quoted(Here()));
    }
  }

  Entry ReadEntry() {
    Entry entry = {.place = PlaceHere()};
    if (TakeSign("+")) {
      entry.kind = EntryKind::Splice;
      entry.name = ExpectName();
      return entry;
    }
    entry.name = ExpectName();
    while (ReadObligation(entry.marks)) {
    }
    ReadContent(entry);
    while (ReadMark(entry.marks)) {
    }
    ReadRoles(entry);
    return entry;
  }

  void ReadContent(Entry& entry) {
    if (TakeSign("{")) {
      entry.kind = EntryKind::Inline;
      entry.body = ReadEntriesUpTo("}");
    } else if (TakeSign("[")) {
      entry.kind = EntryKind::Choice;
      entry.body = ReadBranches();
    } else if (TakeSign("(")) {
      entry.kind = EntryKind::Step;
      entry.body = ReadEntriesUpTo(")");
    } else if (TakeSign(":")) {
      if (Here().kind != TokenKind::Word) Fail("a type is expected, not " + Quoted(Here()));
      entry.type = Take().text;
      if (TakeSign("(")) {
        entry.typeOf = ExpectName();
        ExpectSign(")");
      }
    } else {
      entry.type = entry.name;
    }
  }

  // `in` before the roles: only in these. Without it: in the others too, as the marks before say.
  void ReadRoles(Entry& entry) {
    entry.listedRolesOnly = TakeWord("in");
    while (const auto role = RoleOf(Here())) {
      for (const auto& known : entry.roles) {
        if (known.role == *role) Fail(Quoted(Here()) + " stands twice");
      }
      Take();
      auto& marks = entry.roles.emplace_back(RoleMarks{.role = *role, .marks = {}}).marks;
      while (ReadObligation(marks) || ReadMark(marks)) {
      }
    }
    if (entry.listedRolesOnly && entry.roles.empty()) Fail("Add, Mod or Ret is expected, not " + Quoted(Here()));
  }

  bool ReadObligation(Marks& marks) {
    if (!Here().IsSign("?") && !Here().IsSign("*")) return false;
    auto& mark = Here().IsSign("?") ? marks.optional : marks.repeating;
    if (mark) Fail(Quoted(Here()) + " stands twice");
    Take();
    mark = true;
    return true;
  }

  // One mark of a version, of countries, of an attribute.
  bool ReadMark(Marks& marks) {
    const auto& token = Here();
    if (token.kind == TokenKind::Since) {
      const bool inCanada = token.text.starts_with("CA");
      SetOnce(inCanada ? marks.sinceInCanada : marks.since, VersionOf(token.text.substr(inCanada ? 2 : 0)));
      Take();
    } else if (token.kind == TokenKind::Until) {
      SetOnce(marks.until, VersionOf(token.text));
      Take();
    } else if (token.IsWord("nowhere")) {
      SetOnce(marks.countries, messages::kNowhere);
      Take();
    } else if (CountriesOf(token)) {
      SetOnce(marks.countries, ReadCountries());
    } else if (token.IsWord("attr")) {
      if (!marks.attribute.empty()) Fail("an element has one attribute at most");
      Take();
      if (Here().kind != TokenKind::Word) Fail("the name of an attribute is expected, not " + Quoted(Here()));
      marks.attribute = Take().text;
    } else {
      return false;
    }
    return true;
  }

  template <typename Mark>
  void SetOnce(std::optional<Mark>& mark, Mark value) {
    if (mark) Fail("two marks of one kind stand here");
    mark = value;
  }

  Countries ReadCountries() {
    Countries all = 0;
    do {
      const auto countries = CountriesOf(Here());
      if (!countries) Fail("US, CA or UK is expected, not " + Quoted(Here()));
      if ((all & *countries) != 0) Fail(Quoted(Here()) + " stands twice");
      all = static_cast<Countries>(all | *countries);
      Take();
    } while (TakeSign("+"));
    return all;
  }

  Version VersionOf(std::string_view text) const {
    const auto point = text.find('.');
    if (point == std::string_view::npos) Fail(Quoted(Here()) + " is no version");
    return {.major = NumberOf(text.substr(0, point)), .minor = NumberOf(text.substr(point + 1))};
  }

  const SourceFile& file_;
  std::size_t index_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
};

}  // namespace

std::string_view RoleName(Role role) {
  for (const auto& [known, name] : kRoles) {
    if (known == role) return name;
  }
  return {};
}

Text Parse(const SourceFile& file, std::size_t index) { return Reader(file, index).Read(); }

}  // namespace twqb::messagegen
