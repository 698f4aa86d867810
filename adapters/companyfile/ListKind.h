// The kinds of list records that the company file keeps, as descriptions. A new kind is a description here and rows in
// the message table: requests <name>AddRq, <name>ModRq, <name>QueryRq, and the record <name>Ret.
//
// No field stands here that the message table can tell.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace twqb::company {

// What a field reads as that was never given.
struct FieldDefault {
  std::string_view field;
  std::string_view value;
};

struct ListKind {
  std::string_view name;  // "Customer"
  // Records without a parent can't share a name with those of any kind in the same name space. Under a parent, names
  // are unique among the parent's children.
  std::string_view nameSpace;
  int maxLevels = 1;  // greatest depth of records within each other; 1: no record has a parent
  std::span<const FieldDefault> defaults = {};
};

[[nodiscard]] std::span<const ListKind> ListKinds();

// How names compare: without case, without trailing blanks.
[[nodiscard]] std::string NameKey(std::string_view name);

// A full name as a key: equal for names that compare equal, and in byte order it sorts level by level, a parent right
// before its children.
[[nodiscard]] std::string FullNameKey(std::string_view fullName);
[[nodiscard]] std::string ChildKey(std::string_view parentKey, std::string_view nameKey);
// The keys of everything below a record lie above `from` and below `to`.
struct KeyRange {
  std::string from;
  std::string to;
};
[[nodiscard]] KeyRange KeysBelow(std::string_view key);

inline constexpr char kLevelSeparator = ':';  // between the names of a full name

}  // namespace twqb::company
