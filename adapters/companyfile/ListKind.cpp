#include "adapters/companyfile/ListKind.h"

#include <algorithm>
#include <iterator>

#include "platform/Text.h"

namespace twqb::company {

namespace {

// Below every character that XML lets into a name, so that a parent's children come before its next sibling.
constexpr char kKeySeparator = '\x01';

// Customers, vendors, employees and other names.
constexpr std::string_view kPeopleNames = "names";

constexpr std::string_view kItemNames = "items";
constexpr std::string_view kTermsNames = "terms";

constexpr FieldDefault kCustomerDefaults[] = {{.field = "JobStatus", .value = "None"}};
constexpr FieldDefault kInventoryDefaults[] = {{.field = "QuantityOnHand", .value = "0"},
                                               {.field = "AverageCost", .value = "0.00"},
                                               {.field = "QuantityOnOrder", .value = "0"},
                                               {.field = "QuantityOnSalesOrder", .value = "0"}};
constexpr FieldDefault kEmployeeDefaults[] = {{.field = "EmployeeType", .value = "Regular"}};
constexpr FieldDefault kGroupDefaults[] = {{.field = "IsPrintItemsInGroup", .value = "false"}};
constexpr FieldDefault kSalesTaxDefaults[] = {{.field = "TaxRate", .value = "0.0"}};
constexpr std::string_view kEmployeeName[] = {"FirstName", "MiddleName", "LastName"};
constexpr std::string_view kEmployeeNumbers[] = {"SSN", "SIN", "NiNumber"};

constexpr int kDeepest = 5;

constexpr ListKind kListKinds[] = {
    {.name = "Customer",
     .nameSpace = kPeopleNames,
     .maxLevels = kDeepest,
     .order = ListOrder::FullName,
     .defaults = kCustomerDefaults},
    {.name = "Vendor", .nameSpace = kPeopleNames},
    {.name = "Employee",
     .nameSpace = kPeopleNames,
     .defaults = kEmployeeDefaults,
     .nameParts = kEmployeeName,
     .personalFields = kEmployeeNumbers},
    {.name = "Account",
     .nameSpace = "accounts",
     .maxLevels = kDeepest,
     .order = ListOrder::FullName,
     .typeField = "AccountType",
     .numberField = "AccountNumber"},
    {.name = "ItemService", .nameSpace = kItemNames, .maxLevels = kDeepest},
    {.name = "ItemOtherCharge", .nameSpace = kItemNames, .maxLevels = kDeepest},
    {.name = "ItemNonInventory", .nameSpace = kItemNames, .maxLevels = kDeepest},
    {.name = "ItemInventory", .nameSpace = kItemNames, .maxLevels = kDeepest, .defaults = kInventoryDefaults},
    {.name = "ItemSalesTax",
     .nameSpace = kItemNames,
     .editions = messages::kUnitedStates,
     .defaults = kSalesTaxDefaults},
    {.name = "ItemPayment", .nameSpace = kItemNames, .nameClash = NameClash::SavingError},
    {.name = "ItemGroup", .nameSpace = kItemNames, .defaults = kGroupDefaults},
    {.name = "Class", .nameSpace = "classes", .maxLevels = kDeepest},
    {.name = "JobType", .nameSpace = "job types", .maxLevels = kDeepest},
    {.name = "CustomerType", .nameSpace = "customer types", .maxLevels = kDeepest},
    {.name = "VendorType", .nameSpace = "vendor types", .maxLevels = kDeepest},
    {.name = "StandardTerms", .nameSpace = kTermsNames},
    {.name = "DateDrivenTerms", .nameSpace = kTermsNames},
    {.name = "Template", .nameSpace = "templates"},
    {.name = "PaymentMethod", .nameSpace = "payment methods"},
    {.name = "PayrollItemWage", .nameSpace = "payroll items"},
    {.name = "SalesTaxCode", .nameSpace = "tax codes", .editions = messages::kUnitedStates},
    {.name = "TaxCode",
     .nameSpace = "tax codes",
     .editions = messages::kCanada | messages::kBritain,
     .alsoDeletedAs = "SalesTaxCode"},
};

constexpr ListKind kToldKinds[] = {
    {.name = "OtherName", .nameSpace = kPeopleNames},           {.name = "ItemDiscount", .nameSpace = kItemNames},
    {.name = "ItemSubtotal", .nameSpace = kItemNames},          {.name = "ItemFixedAsset", .nameSpace = kItemNames},
    {.name = "ItemInventoryAssembly", .nameSpace = kItemNames}, {.name = "ItemSalesTaxGroup", .nameSpace = kItemNames}};

constexpr std::string_view kTerms[] = {"StandardTerms", "DateDrivenTerms"};
constexpr JointList kJointLists[] = {{.name = "Terms", .kinds = kTerms}};

}  // namespace

std::span<const ListKind> ListKinds() { return kListKinds; }

const ListKind* FindListKind(std::string_view name) {
  const auto* const found = std::ranges::find(kListKinds, name, &ListKind::name);
  return found == std::end(kListKinds) ? nullptr : found;
}

std::span<const ListKind> ToldKinds() { return kToldKinds; }
const ListKind* FindNamedKind(std::string_view name) {
  if (const auto* kept = FindListKind(name)) return kept;
  const auto* const told = std::ranges::find(kToldKinds, name, &ListKind::name);
  return told == std::end(kToldKinds) ? nullptr : told;
}

const JointList* FindJointList(std::string_view name) {
  const auto* const found = std::ranges::find(kJointLists, name, &JointList::name);
  return found == std::end(kJointLists) ? nullptr : found;
}

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
