// References between records: which lists a reference field may name, which record it names, and what that record is
// called today.
//
// A stored body keeps a reference as its ListID alone; the full name in an answer is the one that the record has when
// the answer is written. Lists that the file does not keep hold no records, so a reference to one names nothing, but in
// a file that was read from another QuickBooks (ToldKinds).
#pragma once

#include <optional>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adapters/companyfile/CompanyStore.h"
#include "messages/Schema.h"

namespace twqb::company {

// What a reference may name.
struct ReferenceRule {
  std::string_view field;                        // "ARAccountRef"
  std::span<const std::string_view> kinds;       // of either sort
  std::span<const std::string_view> types = {};  // of accounts; empty: every type
};
// nullptr for a reference to a list that the file does not keep.
[[nodiscard]] const ReferenceRule* FindReferenceRule(std::string_view field);

// Whether the row stands for a reference to a list record: an aggregate of a ListID and a FullName.
[[nodiscard]] bool IsReference(const messages::Element& row);

// What a reference names: its identifier, and only without one its full name. Empty: it names nothing.
struct ReferenceValue {
  std::string_view listId;
  std::string_view fullName;
  [[nodiscard]] std::string_view Value() const { return listId.empty() ? fullName : listId; }
};
[[nodiscard]] ReferenceValue ReadReference(pugi::xml_node reference);

// The record that the element (CustomerRef and its like, by its name) names; nothing when the element is null or names
// nothing. Throws Refused: 3140 when there is no such record, 3240 when it was deleted or is not of a kind that the
// field may name. `referrer` is for the message: "invoice line".
[[nodiscard]] std::optional<FoundRecord> FindReferenced(CompanyStore& store, pugi::xml_node reference,
                                                        std::string_view referrer);

// The record of that full name in the lists that the field `field` may name; nothing when there is none.
[[nodiscard]] std::optional<FoundRecord> FindNamed(CompanyStore& store, std::string_view field,
                                                   std::string_view fullName);

// The identifiers of all references in a stored body, each once: what the owner of the body uses.
[[nodiscard]] std::vector<std::string> UsesOf(pugi::xml_node body);

// The full names of records, each looked up once: for one answer.
class NameCache {
 public:
  // `store` is not owned and must outlive the cache.
  explicit NameCache(CompanyStore& store) : store_(store) {}
  // Empty for a record that is not there.
  [[nodiscard]] const std::string& FullNameOf(const std::string& listId);

 private:
  CompanyStore& store_;
  std::unordered_map<std::string, std::string> names_;
};

}  // namespace twqb::company
