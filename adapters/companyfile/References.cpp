#include "adapters/companyfile/References.h"

#include <algorithm>
#include <array>

#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/SchemaWalk.h"

namespace twqb::company {

namespace {

using Names = std::string_view;

constexpr std::string_view kSuffix = "Ref";

constexpr Names kAccount[] = {"Account"};
constexpr Names kClass[] = {"Class"};
constexpr Names kCustomer[] = {"Customer"};
constexpr Names kVendor[] = {"Vendor"};
constexpr Names kWorker[] = {"Employee", "Vendor", "OtherName"};
constexpr Names kPayee[] = {"Vendor", "Employee", "Customer", "OtherName"};
constexpr Names kJobType[] = {"JobType"};
constexpr Names kPaymentMethod[] = {"PaymentMethod"};
constexpr Names kCustomerType[] = {"CustomerType"};
constexpr Names kVendorType[] = {"VendorType"};
constexpr Names kTerms[] = {"StandardTerms", "DateDrivenTerms"};
constexpr Names kTemplate[] = {"Template"};
constexpr Names kWageItem[] = {"PayrollItemWage"};
// Groups have a field and lines of their own.
constexpr Names kItem[] = {"ItemService",    "ItemOtherCharge",      "ItemNonInventory", "ItemInventory",
                           "ItemSalesTax",   "ItemPayment",          "ItemDiscount",     "ItemSubtotal",
                           "ItemFixedAsset", "ItemInventoryAssembly"};
constexpr Names kServiceItem[] = {"ItemService"};
constexpr Names kSalesTaxItem[] = {"ItemSalesTax", "ItemSalesTaxGroup"};
constexpr Names kGroupItem[] = {"ItemGroup"};
// One and the same list, which the forms call by two names.
constexpr Names kTaxCode[] = {"SalesTaxCode", "TaxCode"};

constexpr Names kReceivable[] = {"AccountsReceivable"};
constexpr Names kPayable[] = {"AccountsPayable"};

constexpr std::array kRules = {
    ReferenceRule{.field = "AccountRef", .kinds = kAccount},
    ReferenceRule{.field = "APAccountRef", .kinds = kAccount, .types = kPayable},
    ReferenceRule{.field = "ARAccountRef", .kinds = kAccount, .types = kReceivable},
    ReferenceRule{.field = "AssetAccountRef", .kinds = kAccount},
    ReferenceRule{.field = "ClassRef", .kinds = kClass},
    ReferenceRule{.field = "COGSAccountRef", .kinds = kAccount},
    ReferenceRule{.field = "CustomerRef", .kinds = kCustomer},
    ReferenceRule{.field = "CustomerSalesTaxCodeRef", .kinds = kTaxCode},
    ReferenceRule{.field = "CustomerTypeRef", .kinds = kCustomerType},
    ReferenceRule{.field = "DepositToAccountRef", .kinds = kAccount},
    ReferenceRule{.field = "DiscountAccountRef", .kinds = kAccount},
    ReferenceRule{.field = "EntityRef", .kinds = kWorker},
    ReferenceRule{.field = "ExpenseAccountRef", .kinds = kAccount},
    ReferenceRule{.field = "IncomeAccountRef", .kinds = kAccount},
    ReferenceRule{.field = "ItemGroupRef", .kinds = kGroupItem},
    ReferenceRule{.field = "ItemRef", .kinds = kItem},
    ReferenceRule{.field = "ItemSalesTaxRef", .kinds = kSalesTaxItem},
    ReferenceRule{.field = "ItemServiceRef", .kinds = kServiceItem},
    ReferenceRule{.field = "JobTypeRef", .kinds = kJobType},
    ReferenceRule{.field = "OverrideItemAccountRef", .kinds = kAccount},
    ReferenceRule{.field = "PayeeEntityRef", .kinds = kPayee},
    ReferenceRule{.field = "PaymentMethodRef", .kinds = kPaymentMethod},
    ReferenceRule{.field = "PayrollItemWageRef", .kinds = kWageItem},
    ReferenceRule{.field = "PreferredPaymentMethodRef", .kinds = kPaymentMethod},
    ReferenceRule{.field = "PrefVendorRef", .kinds = kVendor},
    ReferenceRule{.field = "SalesTaxCodeRef", .kinds = kTaxCode},
    ReferenceRule{.field = "TaxCodeForPurchaseRef", .kinds = kTaxCode},
    ReferenceRule{.field = "TaxCodeForSaleRef", .kinds = kTaxCode},
    ReferenceRule{.field = "TaxCodeRef", .kinds = kTaxCode},
    ReferenceRule{.field = "TaxVendorRef", .kinds = kVendor},
    ReferenceRule{.field = "TemplateRef", .kinds = kTemplate},
    ReferenceRule{.field = "TermsRef", .kinds = kTerms},
    ReferenceRule{.field = "VendorRef", .kinds = kVendor},
    ReferenceRule{.field = "VendorTypeRef", .kinds = kVendorType},
};

bool Holds(std::span<const Names> names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

std::optional<FoundRecord> FindByName(CompanyStore& store, const ReferenceRule& rule, std::string_view fullName) {
  const auto key = FullNameKey(fullName);
  for (const auto name : rule.kinds) {
    const auto* kind = FindNamedKind(name);
    if (auto record = store.FindByFullKey(*kind, key)) return FoundRecord{.kind = kind, .record = std::move(*record)};
  }
  return std::nullopt;
}

// Whatever list it is of, but rather of one that the field may name.
std::optional<FoundRecord> FindById(CompanyStore& store, const ReferenceRule& rule, std::string_view listId) {
  auto found = store.FindById(listId);
  if (found && Holds(rule.kinds, found->kind->name)) return found;
  for (const auto name : rule.kinds) {
    const auto* kind = FindNamedKind(name);
    if (auto record = store.FindById(*kind, listId)) return FoundRecord{.kind = kind, .record = std::move(*record)};
  }
  return found;
}

void CollectUses(pugi::xml_node parent, std::vector<std::string>& uses) {
  for (const auto node : parent.children()) {
    if (!std::string_view(node.name()).ends_with(kSuffix)) {
      CollectUses(node, uses);
    } else if (const auto id = ChildText(node, "ListID"); !id.empty()) {
      uses.emplace_back(id);
    }
  }
}

}  // namespace

const ReferenceRule* FindReferenceRule(std::string_view field) {
  const auto* const found = std::ranges::find(kRules, field, &ReferenceRule::field);
  return found == kRules.end() ? nullptr : found;
}

bool IsReference(const messages::Element& row) {
  return row.type == messages::Type::Aggregate && row.name.ends_with(kSuffix);
}

ReferenceValue ReadReference(pugi::xml_node reference) {
  return {.listId = ChildText(reference, "ListID"), .fullName = ChildText(reference, "FullName")};
}

std::optional<FoundRecord> FindReferenced(CompanyStore& store, pugi::xml_node reference, std::string_view referrer) {
  const auto value = ReadReference(reference);
  if (value.Value().empty()) return std::nullopt;
  const std::string_view field = reference.name();
  const auto* rule = FindReferenceRule(field);
  if (rule == nullptr) Refuse(status::BadReference(field, value.Value(), referrer));

  auto found = value.listId.empty() ? FindByName(store, *rule, value.fullName) : FindById(store, *rule, value.listId);
  if (!found) {
    if (store.WasDeleted(value.listId)) Refuse(status::ReferenceGone(field, value.listId, referrer));
    Refuse(status::BadReference(field, value.Value(), referrer));
  }
  const bool isOfType = rule->types.empty() || Holds(rule->types, found->record.type);
  if (!Holds(rule->kinds, found->kind->name) || !isOfType) {
    Refuse(status::ReferenceOfWrongKind(field, value.Value(), referrer));
  }
  return found;
}

std::optional<FoundRecord> FindNamed(CompanyStore& store, std::string_view field, std::string_view fullName) {
  const auto* rule = FindReferenceRule(field);
  return rule == nullptr ? std::nullopt : FindByName(store, *rule, fullName);
}

std::vector<std::string> UsesOf(pugi::xml_node body) {
  std::vector<std::string> uses;
  CollectUses(body, uses);
  std::ranges::sort(uses);
  uses.erase(std::unique(uses.begin(), uses.end()), uses.end());
  return uses;
}

const std::string& NameCache::FullNameOf(const std::string& listId) {
  const auto known = names_.find(listId);
  if (known != names_.end()) return known->second;
  return names_.emplace(listId, store_.FullNameOf(listId)).first->second;
}

}  // namespace twqb::company
