// One record of a list, as the company file keeps it: the fields that rules work on, and the rest as it goes out.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Currency.h"

namespace twqb::company {

// Of another QuickBooks' records identifiers are unique in one list alone. Where two lists have the same, one keeps it,
// and the file keeps the other behind this and the name of its kind; nobody is told of that.
inline constexpr char kIdOfKind = '@';
[[nodiscard]] constexpr std::string_view ToldId(std::string_view stored) {
  return stored.substr(0, stored.find(kIdOfKind));
}

struct ListRecord {
  std::string listId;
  std::string parentId;        // empty at the top
  std::string parentFullName;  // read only: it is the parent's to change
  std::string name;
  std::string fullName;
  std::string fullKey;  // see FullNameKey
  int sublevel = 0;     // 0 at the top
  bool active = true;
  std::int64_t created = 0;   // Unix seconds
  std::int64_t modified = 0;  // Unix seconds
  std::int64_t editSequence = 0;
  Currency balance;       // without its children
  Currency totalBalance;  // with them
  std::string type;       // of kinds that have types; see ListKind
  std::string number;     // of kinds whose records are numbered
  std::string body;       // all other fields: elements as in the answer, in the order of the union of all forms
};

struct ListKind;

// A record whose kind was not known before it was found.
struct FoundRecord {
  const ListKind* kind;
  ListRecord record;
};

}  // namespace twqb::company
