// What stands in a text of messages, as it is written: names not looked up yet, shared parts not put in yet.
// docs/messages.md says what each of these means.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "messagegen/Source.h"
#include "messages/Schema.h"

namespace twqb::messagegen {

// The part that a record has in a message: what is sent to add or modify one, or what is answered.
enum class Role : std::uint8_t { None, Add, Mod, Ret };
[[nodiscard]] std::string_view RoleName(Role role);  // "Add"

struct Marks {
  bool optional = false;
  bool repeating = false;
  std::optional<messages::Version> since;
  std::optional<messages::Version> sinceInCanada;
  std::optional<messages::Version> until;
  std::optional<messages::Countries> countries;
  std::string attribute;
};

struct RoleMarks {
  Role role = Role::None;
  Marks marks;
};

enum class EntryKind : std::uint8_t {
  Element,  // Name:type
  Inline,   // Name{ ... }
  Choice,   // Name[ ... | ... ]
  Step,     // Name( ... )
  Splice,   // +Name: the entries of a group
};

struct Entry {
  EntryKind kind = EntryKind::Element;
  Place place;
  std::string name;
  Marks marks;
  bool listedRolesOnly = false;
  std::vector<RoleMarks> roles;
  std::string type;         // of an Element: "s41", "Address"
  std::string typeOf;       // ... and whose names it has: the Customer of Ref(Customer); empty: nobody's
  std::vector<Entry> body;  // of the kinds with brackets
};
using Entries = std::vector<Entry>;

// How long the names of a list are.
struct NameLengths {
  int levels = 1;
  int length = 0;  // of the name on one level
};

struct Value {
  Place place;
  std::string name;
  int number = 0;
  Marks marks;
};

enum class DefinitionKind : std::uint8_t { Names, Enumeration, Aggregate, Group, Record };

struct Definition {
  DefinitionKind kind = DefinitionKind::Aggregate;
  Place place;
  std::string name;
  std::optional<NameLengths> names;  // of Names and Record
  std::vector<Value> values;         // of an Enumeration
  Entries entries;                   // of the others
};

enum class MessageKind : std::uint8_t { Add, Mod, Query, Free };

struct MessageText {
  MessageKind kind = MessageKind::Free;
  Place place;
  std::string name;  // of the record; of the message where it is Free
  Marks marks;
  messages::MessageSet set = messages::MessageSet::Company;
  Entries request;  // of Query and Free
  Entries answer;   // of Free
};

struct Text {
  std::vector<Definition> definitions;
  std::vector<MessageText> messages;
};

}  // namespace twqb::messagegen
