#include "adapters/companyfile/TxnLines.h"

#include <algorithm>
#include <array>

#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/References.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "messages/ValueFormat.h"
#include "platform/PlatformError.h"

namespace twqb::company {

namespace {

using messages::Element;

constexpr std::string_view kAnswerSuffix = "Ret";
// Stands for an identifier until one is given out, and can't be one.
constexpr const char* kNoId = "0-0";

// Where the kinds of items keep what a line takes from them, by the side.
struct ItemPaths {
  std::array<const char*, 3> rate;
  const char* percent;
  std::array<const char*, 4> description;
  std::array<const char*, 2> taxCode;
};
constexpr ItemPaths kSalesPaths = {
    .rate = {"SalesOrPurchase/Price", "SalesAndPurchase/SalesPrice", "SalesPrice"},
    .percent = "SalesOrPurchase/PricePercent",
    .description = {"SalesOrPurchase/Desc", "SalesAndPurchase/SalesDesc", "SalesDesc", "ItemDesc"},
    .taxCode = {"SalesTaxCodeRef", "TaxCodeForSaleRef"}};
constexpr ItemPaths kPurchasePaths = {
    .rate = {"SalesOrPurchase/Price", "SalesAndPurchase/PurchaseCost", "PurchaseCost"},
    .percent = "SalesOrPurchase/PricePercent",
    .description = {"SalesOrPurchase/Desc", "SalesAndPurchase/PurchaseDesc", "PurchaseDesc", "ItemDesc"},
    .taxCode = {"SalesTaxCodeRef", "TaxCodeForPurchaseRef"}};

template <std::size_t kCount>
pugi::xml_node FirstOf(pugi::xml_node body, const std::array<const char*, kCount>& paths) {
  for (const char* path : paths) {
    if (const auto node = body.first_element_by_path(path)) return node;
  }
  return {};
}

// "12.50" and "0.08" as they are, for a field that takes either a rate or an amount of money.
std::optional<Currency> ReadMoney(pugi::xml_node parent, const char* name) {
  return messages::ParseAmount(ChildText(parent, name));
}

[[noreturn]] void RefuseTooGreat(std::string_view field, std::string_view value) {
  Refuse(status::OfProblem(
      {.kind = messages::ProblemKind::MalformedAmount, .field = std::string(field), .value = std::string(value)}));
}

}  // namespace

bool IsTaxable(CompanyStore& store, pugi::xml_node taxCodeRef, std::string_view referrer) {
  const auto code = FindReferenced(store, taxCodeRef, referrer);
  if (!code) return false;
  pugi::xml_document body;
  ParseBody(body, code->record.body);
  return messages::ParseBool(ChildText(body, "IsTaxable")).value_or(false);
}

void SetLeaf(pugi::xml_node parent, const char* name, const std::string& text) {
  auto node = parent.child(name);
  if (!node) node = parent.append_child(name);
  node.text().set(text.c_str());
}

void SetReference(pugi::xml_node parent, const char* name, std::string_view listId) {
  parent.remove_child(name);
  SetLeaf(parent.append_child(name), "ListID", std::string(listId));
}

std::optional<Decimal> ReadDecimal(pugi::xml_node parent, const char* name) {
  const auto text = ChildText(parent, name);
  if (text.empty()) return std::nullopt;
  const auto value = Decimal::Parse(text);
  if (!value) RefuseTooGreat(name, text);
  return value;
}

std::string AnswerName(const TxnLineKind& line) { return std::string(line.name).append(kAnswerSuffix); }

// What a line takes from its item.
struct TxnLines::Item {
  ItemTerms terms;
  bool isTax = false;
  // Of a told kind (ToldKinds) not all is known.
  bool isAmountKnown = true;  // that the line comes to what it says
  bool areTermsKnown = true;  // what one comes to that says nothing
  bool isTaxCodeKnown = true;
  bool isSubtotal = false;
  std::string description;
  std::string taxCodeId;
};

const Element& TxnLines::RowOf(const TxnLineKind& kind) const { return *FindRow(record_.Children(), AnswerName(kind)); }

void TxnLines::Read(pugi::xml_node fields) {
  constexpr std::string_view kSuffix = "Add";
  for (const auto given : fields.children()) {
    std::string_view name = given.name();
    if (!name.ends_with(kSuffix)) continue;
    name.remove_suffix(kSuffix.size());
    const auto* kind = FindLineKind(context_.kind, name);
    if (kind == nullptr) continue;
    switch (kind->role) {
      case LineRole::Item:
        ReadItemLine(given, *kind);
        break;
      case LineRole::ItemGroup:
        ReadGroupLine(given, *kind);
        break;
      case LineRole::Account:
        ReadAccountLine(given, *kind);
        break;
      case LineRole::Application:
        break;
    }
  }
}

pugi::xml_node TxnLines::Copy(pugi::xml_node parent, pugi::xml_node given, const Element& row,
                              std::string_view referrer) {
  auto line = parent.append_child(std::string(row.name).c_str());
  SetLeaf(line, "TxnLineID", kNoId);
  for (const auto field : given.children()) {
    if (FindRow(row.Children(), field.name()) != nullptr) {
      line.append_copy(field);
    } else if (std::string_view(field.name()).ends_with("Ref")) {
      // It is not kept, but has to be right.
      static_cast<void>(FindReferenced(context_.store, field, referrer));
    }
  }
  return line;
}

std::optional<TxnLines::Item> TxnLines::ReadItem(pugi::xml_node itemRef, std::string_view referrer) {
  const auto found = FindReferenced(context_.store, itemRef, referrer);
  if (!found) return std::nullopt;
  pugi::xml_document body;
  ParseBody(body, found->record.body);
  const auto& paths = context_.kind.side == ItemSide::Sales ? kSalesPaths : kPurchasePaths;
  Item item;
  item.terms.rate = Decimal::Parse(FirstOf(body, paths.rate).text().get());
  item.terms.percent = Decimal::Parse(body.first_element_by_path(paths.percent).text().get());
  item.description = FirstOf(body, paths.description).text().get();
  item.taxCodeId = ChildText(FirstOf(body, paths.taxCode), "ListID");
  if (found->kind->name == "ItemSalesTax") {
    item.isTax = true;
    item.terms.percent = ReadDecimal(body, "TaxRate");
  }
  if (found->kind->name == "ItemPayment") item.terms.effect = ItemTerms::Effect::Subtracts;
  TakeTold(found->kind->name, item);
  return item;
}

// Whether QuickBooks takes a discount or a subtotal where something is bought is not known either: a refusal would be
// told as its own.
void TxnLines::TakeTold(std::string_view kind, Item& item) {
  if (kind == "ItemDiscount" || kind == "ItemSubtotal") {
    item.isAmountKnown = false;
    item.isSubtotal = kind == "ItemSubtotal";
  }
  if (kind == "ItemFixedAsset") {
    item.areTermsKnown = false;
    item.isTaxCodeKnown = false;
  }
}

void TxnLines::ReadItemLine(pugi::xml_node given, const TxnLineKind& kind) {
  const auto referrer = SpokenName(kind.name);
  const auto& row = RowOf(kind);
  const auto line = Copy(root_, given, row, referrer);
  const auto item = ReadItem(ChildElement(line, "ItemRef"), referrer);
  CheckBillable(line, referrer);
  subtotal_ = subtotal_ + Complete(line, row, item, referrer);
}

Currency TxnLines::Complete(pugi::xml_node line, const Element& row, const std::optional<Item>& item,
                            std::string_view referrer) {
  const char* rateName = FindRow(row.Children(), "Rate") != nullptr ? "Rate" : "Cost";
  const LineTerms given = {.quantity = ReadDecimal(line, "Quantity"),
                           .rate = ReadDecimal(line, rateName),
                           .percent = ReadDecimal(line, "RatePercent"),
                           .amount = ReadMoney(line, "Amount")};
  const auto terms = CompleteLine(given, item ? item->terms : ItemTerms{}, item && item->isTax ? taxable_ : previous_);
  if (!terms) RefuseTooGreat("Amount", ChildText(line, "Quantity"));
  const auto amount = item && item->isSubtotal ? Currency{} : terms->amount.value_or(Currency{});
  const bool saysNothing = !given.amount && !given.rate && !given.percent;
  if (item && (!item->isAmountKnown || (!item->areTermsKnown && saysNothing))) areKnown_ = false;
  if (!item && amount != Currency{}) Refuse(status::MissingElement("ItemRef"));

  if (terms->quantity) SetLeaf(line, "Quantity", terms->quantity->Text());
  if (terms->rate) SetLeaf(line, rateName, terms->rate->Text());
  if (terms->percent && FindRow(row.Children(), "RatePercent") != nullptr) {
    SetLeaf(line, "RatePercent", terms->percent->Text());
  }
  if (terms->amount) SetLeaf(line, "Amount", MoneyText(amount));
  if (item && !item->description.empty() && !ChildElement(line, "Desc")) SetLeaf(line, "Desc", item->description);
  for (const char* code : {"SalesTaxCodeRef", "TaxCodeRef"}) {
    const auto* codeRow = FindRow(row.Children(), code);
    if (codeRow == nullptr || !codeRow->KnownIn(context_.form)) continue;
    if (item && !item->taxCodeId.empty() && !ChildElement(line, code)) SetReference(line, code, item->taxCodeId);
    if (item && !item->isTaxCodeKnown && !ChildElement(line, code)) isTaxKnown_ = false;
    if (IsTaxable(context_.store, ChildElement(line, code), referrer)) taxable_ = taxable_ + amount;
  }
  previous_ = amount;
  return amount;
}

// The group's own items, each as often as the group has it, times the quantity of the line.
void TxnLines::ReadGroupLine(pugi::xml_node given, const TxnLineKind& kind) {
  const auto referrer = SpokenName(kind.name);
  const auto& row = RowOf(kind);
  const auto line = Copy(root_, given, row, referrer);
  const auto group = FindReferenced(context_.store, ChildElement(line, "ItemGroupRef"), referrer);
  if (!group) Refuse(status::MissingElement("ItemGroupRef"));
  pugi::xml_document body;
  ParseBody(body, group->record.body);
  const auto quantity = ReadDecimal(line, "Quantity").value_or(Decimal::Whole(1));
  if (const auto description = ChildText(body, "ItemDesc"); !description.empty()) {
    SetLeaf(line, "Desc", std::string(description));
  }
  if (FindRow(row.Children(), "IsPrintItemsInGroup") != nullptr) {
    const auto print = messages::ParseBool(ChildText(body, "IsPrintItemsInGroup")).value_or(false);
    SetLeaf(line, "IsPrintItemsInGroup", messages::BoolText(print));
  }
  Currency total;
  const auto members = std::ranges::find(context_.kind.lines, LineRole::Item, &TxnLineKind::role);
  if (members == context_.kind.lines.end()) throw PlatformError(error::kNameUnknown);  // groups without items
  const auto& memberRow = RowOf(*members);
  for (const auto part : body.children("ItemGroupLine")) {
    const auto member = Copy(line, part, memberRow, referrer);
    const auto item = ReadItem(ChildElement(member, "ItemRef"), referrer);
    const auto count = Product(quantity, ReadDecimal(part, "Quantity").value_or(Decimal::Whole(1)));
    if (!count) RefuseTooGreat("Quantity", quantity.Text());
    SetLeaf(member, "Quantity", count->Text());
    total = total + Complete(member, memberRow, item, referrer);
  }
  SetLeaf(line, "TotalAmount", MoneyText(total));
  subtotal_ = subtotal_ + total;
  previous_ = total;
}

void TxnLines::ReadAccountLine(pugi::xml_node given, const TxnLineKind& kind) {
  const auto referrer = SpokenName(kind.name);
  const auto line = Copy(root_, given, RowOf(kind), referrer);
  CheckBillable(line, referrer);
  previous_ = ReadMoney(line, "Amount").value_or(Currency{});
  const auto account = ReadReference(ChildElement(line, "AccountRef"));
  if (previous_ != Currency{} && account.Value().empty()) Refuse(status::MissingElement("AccountRef"));
  subtotal_ = subtotal_ + previous_;
}

void TxnLines::CheckBillable(pugi::xml_node line, std::string_view referrer) {
  const auto billable = ChildText(line, "BillableStatus");
  if (billable == "HasBeenBilled") {
    Refuse(status::InvalidValue("BillableStatus", billable, "A line is billed by an invoice alone."));
  }
  if (billable == "Billable" && ReadReference(ChildElement(line, "CustomerRef")).Value().empty()) {
    Refuse(status::CannotSave(referrer, "A billable line must have a customer or job."));
  }
}

std::string TxnLines::Store() const {
  std::string text;
  for (const auto line : root_.children()) {
    std::string_view name = line.name();
    name.remove_suffix(kAnswerSuffix.size());
    StoreElement(text, line, *FindRow(record_.Children(), line.name()), context_.store, SpokenName(name));
  }
  return text;
}

void TxnLines::Number(std::string& lines, const std::function<std::string()>& newId) {
  // No text of a field holds a tag, so each of these is an identifier.
  constexpr std::string_view kOpen = "<TxnLineID>";
  std::string numbered;
  std::size_t from = 0;
  for (auto at = lines.find(kOpen); at != std::string::npos; at = lines.find(kOpen, from)) {
    at += kOpen.size();
    numbered.append(lines, from, at - from).append(newId());
    from = lines.find('<', at);
  }
  lines = numbered.append(lines, from);
}

}  // namespace twqb::company
