// The kinds of list records that the company file keeps, as descriptions. A new kind is a description here and rows in
// the message table: requests <name>AddRq, <name>ModRq, <name>QueryRq, and the record <name>Ret.
//
// No field stands here that the message table can tell.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "messages/Schema.h"

namespace twqb::company {

// What a field reads as that was never given.
struct FieldDefault {
  std::string_view field;
  std::string_view value;
};

// How the records of a list are answered. By full name, a parent stands right before its children.
enum class ListOrder : std::uint8_t { FullName, Name };
// What a second record of the kind under one name is told: that the name is in use, or that it can't be saved.
enum class NameClash : std::uint8_t { InUse, SavingError };

struct ListKind {
  std::string_view name;  // "Customer"
  // Records without a parent can't share a name with those of any kind in the same name space. Under a parent, names
  // are unique among the parent's children.
  std::string_view nameSpace;
  int maxLevels = 1;  // greatest depth of records within each other; 1: no record has a parent
  ListOrder order = ListOrder::Name;
  NameClash nameClash = NameClash::InUse;
  messages::Countries editions = messages::kEverywhere;  // whose company files keep the list
  std::span<const FieldDefault> defaults = {};
  std::string_view typeField = {};    // "AccountType": never another one than the parent's; queries choose by it
  std::string_view numberField = {};  // "AccountNumber": no two records have the same
  // The fields whose texts, joined by blanks, are the name where the form of a request has no Name.
  std::span<const std::string_view> nameParts = {};
  std::span<const std::string_view> personalFields = {};  // withheld where personal data are
  std::string_view alsoDeletedAs = {};                    // a second name that deletions have for the list
};

[[nodiscard]] std::span<const ListKind> ListKinds();
// By its exact name; nullptr when the file keeps no such list.
[[nodiscard]] const ListKind* FindListKind(std::string_view name);

// Kinds of which a file has records only when it was read from another QuickBooks: it keeps what lines and sums take
// from them, names them where they are referred to, and answers no request about them.
[[nodiscard]] std::span<const ListKind> ToldKinds();
// Of either sort; nullptr for any other name.
[[nodiscard]] const ListKind* FindNamedKind(std::string_view name);

// Kinds that one query asks for together, as if they were one list: TermsQuery. Their names share a name space.
struct JointList {
  std::string_view name;                    // "Terms"
  std::span<const std::string_view> kinds;  // of ListKind
};
// By its exact name; nullptr when there is none.
[[nodiscard]] const JointList* FindJointList(std::string_view name);

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
