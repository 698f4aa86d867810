#include "adapters/companyfile/ListKind.h"

#include "platform/Text.h"

namespace twqb::company {

namespace {

// Below every character that XML lets into a name, so that a parent's children come before its next sibling.
constexpr char kKeySeparator = '\x01';

// Customers, vendors, employees and other names.
constexpr std::string_view kPeopleNames = "names";

constexpr FieldDefault kCustomerDefaults[] = {{.field = "JobStatus", .value = "None"}};

constexpr ListKind kListKinds[] = {
    {.name = "Customer", .nameSpace = kPeopleNames, .maxLevels = 5, .defaults = kCustomerDefaults},
};

}  // namespace

std::span<const ListKind> ListKinds() { return kListKinds; }

std::string NameKey(std::string_view name) {
  const auto last = name.find_last_not_of(' ');
  return FoldCase(name.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::string FullNameKey(std::string_view fullName) {
  std::string key;
  for (const auto& name : Split(fullName, kLevelSeparator)) key = ChildKey(key, NameKey(name));
  return key;
}

std::string ChildKey(std::string_view parentKey, std::string_view nameKey) {
  std::string key(parentKey);
  if (!key.empty()) key += kKeySeparator;
  return key.append(nameKey);
}

KeyRange KeysBelow(std::string_view key) {
  return {.from = std::string(key) + kKeySeparator, .to = std::string(key) + static_cast<char>(kKeySeparator + 1)};
}

}  // namespace twqb::company
