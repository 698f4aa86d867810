#include "lists/modExpenseCodes.h"

#include <fmt/core.h>

#include <array>
#include <span>
#include <vector>

#include "engine/FreeKey.h"
#include "engine/InvalidReference.h"
#include "lists/ActiveFlag.h"
#include "lists/Items.h"
#include "lists/SharedNames.h"
#include "messages/StatusCodes.h"
#include "messages/ValueFormat.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Countries.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"

namespace twqb {

namespace {

// --- Field mapping ---------------------------------------------------------------------------------------------------

using When = SendField::When;

constexpr std::array kSendDescriptions = {
    SendField{.path = "PurchaseDesc", .column = "ExpDescription", .when = When::NotNull},
    SendField{.path = "SalesDesc", .column = "ExpDescription", .when = When::NotNull},
};

// What QuickBooks calls the kinds of items.
constexpr std::string_view kOtherCharge = "ItemOtherChargeRet";
constexpr std::string_view kInventory = "ItemInventoryRet";
constexpr std::string_view kNonInventory = "ItemNonInventoryRet";

// Where a Mod has the description, cost and price of an item.
struct ModPlaces {
  std::string_view description;
  std::string_view cost = {};  // left out: the item has none
  std::string_view costNeeds;  // the column without which the cost stays
  std::string_view price;      // stays without a markup
};
constexpr ModPlaces kOfSalesAndPurchase = {.description = "ORSalesPurchaseMod.SalesAndPurchaseMod.SalesDesc",
                                           .cost = "ORSalesPurchaseMod.SalesAndPurchaseMod.PurchaseCost",
                                           .costNeeds = "ExpCost",
                                           .price = "ORSalesPurchaseMod.SalesAndPurchaseMod.SalesPrice"};
constexpr ModPlaces kOfSalesOrPurchase = {.description = "ORSalesPurchaseMod.SalesOrPurchaseMod.Desc",
                                          .price = "ORSalesPurchaseMod.SalesOrPurchaseMod.ORPrice.Price"};
constexpr ModPlaces kOfInventory = {
    .description = "SalesDesc", .cost = "PurchaseCost", .costNeeds = "ExpMarkup", .price = "SalesPrice"};

// Of the item itself, and of what it holds for sales and purchases.
constexpr std::array kGetInventoryAccounts = {
    GetField{.path = "IncomeAccountRef.ListID", .column = "QBAccountID1"},
    GetField{.path = "COGSAccountRef.ListID", .column = "QBAccountID2"},
};
constexpr std::array kGetAccounts = {
    GetField{.path = "IncomeAccountRef.ListID", .column = "QBAccountID1"},
    GetField{.path = "ExpenseAccountRef.ListID", .column = "QBAccountID2"},
};

// --- Hooks of the send -----------------------------------------------------------------------------------------------

// The code under which the expense log books lines without an item; QuickBooks has none for it.
constexpr std::string_view kUnknownItems = "FROMQB:";

void ReadExpenseCode(const ado::Recordset& /*row*/, SendRecord& record) {
  record.passedOver = UpperCase(record.key) == kUnknownItems;
  if (record.passedOver) NoteFate(Fate::PassedOver, "no item of QuickBooks stands for it");
}

std::string_view ModRequestOf(const Record& twin) {
  const auto type = twin.GetAsString();
  if (type == kInventory) return "ItemInventoryModRq";
  return type == kNonInventory ? "ItemNonInventoryModRq" : "ItemOtherChargeModRq";
}

bool IsInventory(const Record& item) { return item.GetAsString() == kInventory; }

const ModPlaces& PlacesOf(const Record& twin) {
  if (IsInventory(twin)) return kOfInventory;
  return FormOf(twin) == ItemForm::SalesOrPurchase ? kOfSalesOrPurchase : kOfSalesAndPurchase;
}

// 0 for NULL.
double NumberOf(const Value& value) { return IsNull(value) ? 0 : TextToNumber(ToText(value)); }

// Whether the item is to bear the name that its code makes. One that bears the code's second part stands below an item
// of the first part.
bool TakesItemName(std::string_view key, std::string_view quickBooksName) {
  if (Trim(quickBooksName).empty()) return true;
  const auto parts = Split(key, ':');
  return parts.size() > 1 && (parts[1].empty() || parts[1] != quickBooksName);
}

// A British file takes three decimals.
void SetPrice(const RequestField& field, double price) {
  constexpr int kBritishDecimals = 3;
  if (UpperCase(Vars().g_QBCountry) == "UK") {
    field.SetValue(messages::DecimalText(price, kBritishDecimals));
  } else {
    field.SetValue(price);
  }
}

Filling Assign(const RequestField& request, const ado::Recordset& row, RequestKind kind, const SendRecord& record) {
  if (kind == RequestKind::Mod) {
    return QBAssignExpCodeFldValues(request, row, record) ? Filling::Filled : Filling::EndRow;
  }
  return AssignExpenseCodeFldValues(request, row, record.countedName) ? Filling::Filled : Filling::EndTable;
}

// The line has always spoken of an activity.
std::vector<std::string> ModifyingNameInUse(const RefusedRequest& refused) {
  return {fmt::format("Modifying Activity : '{}' already exists in QB", ColumnText(refused.row, "ExpDescription"))};
}

MessageBox InvalidAccount(const RefusedRequest& refused) {
  return InvalidReference(refused.response,
                          "If this table needs an account, please choose a valid account from the\r\n"
                          "Sync Settings in Tallywick.");
}

// --- Hooks of the get ------------------------------------------------------------------------------------------------

void AddExpenseCodeRow(ado::Recordset& rows, GetRecord& item) {
  const auto fullName = item.record["FullName"].GetValue();
  const auto parts = Split(GetExpenseIDForTW(fullName), ':');
  const auto firstCode = CutTo(rows, "ExpCode", ReplaceJunkChars(parts[0]));
  const auto firstSub = parts.size() < 2 ? std::string() : CutTo(rows, "ExpSub", ReplaceJunkChars(parts[1]));
  auto code = firstCode;
  auto sub = firstSub;
  const auto keyOf = [&](int counter) {
    if (counter > 0) code = CutTo(rows, "ExpCode", fmt::format("{}{}", firstCode, counter));
    if (counter > 0 && !sub.empty()) sub = CutTo(rows, "ExpSub", fmt::format("{}{}", firstSub, counter));
    return CutTo(rows, "ExpID", ItemKey(code, sub));
  };
  const auto key = FreeKey(item.connection, {.table = "Expense", .column = "ExpID"}, fullName, keyOf);
  rows.AddNew();
  rows.SetField("ExpID", key);
  rows.SetField("ExpCode", code);
  if (!Trim(sub).empty()) rows.SetField("ExpSub", sub);
}

// What an item says of itself on sales; nothing where it says nothing.
Record SalesTextOf(const Record& item) {
  if (IsInventory(item)) return item["SalesDesc"];
  const auto text = FieldAtPath(item, "ORSalesPurchase.SalesAndPurchase.SalesDesc");
  return text.IsNothing() ? FieldAtPath(item, "ORSalesPurchase.SalesOrPurchase.Desc") : text;
}

// Of inventory items the description is the name, of others their sales text. What it can't hold is the memo.
void WriteDescription(ado::Recordset& row, const Record& item) {
  WriteCut(row, "ExpDescription", item["Name"].GetValue());
  const auto field = SalesTextOf(item);
  if (field.IsNothing()) return;
  const auto text = field.GetValue();
  if (!IsInventory(item)) WriteCut(row, "ExpDescription", text);
  if (!text.empty() && text != ColumnText(row, "ExpDescription")) WriteCut(row, "Exp_Memo", text);
}

Currency AmountOf(const Record& price) {
  return price.IsNothing() ? Currency() : Currency::FromDouble(price.GetNumber());
}

// In percent of the cost; none where nothing is put on it.
double MarkupOf(Currency price, Currency cost) {
  if (price <= cost) return 0;
  if (cost == Currency()) throw PlatformError(error::kDivisionByZero);
  return static_cast<double>((price - cost).TenThousandths()) * 100 / static_cast<double>(cost.TenThousandths());
}

// Accounts, cost and markup out of what has them: the item, or its part for sales and purchases.
void WritePrices(ado::Recordset& row, const Record& priced, std::span<const GetField> accounts) {
  GetFields(row, priced, accounts);
  const auto cost = AmountOf(priced["PurchaseCost"]);
  row.SetField("ExpCost", cost);
  if (const auto price = priced["SalesPrice"]; !price.IsNothing()) {
    row.SetField("ExpMarkup", MarkupOf(AmountOf(price), cost));
  }
}

void WriteExpenseCodeFields(ado::Recordset& row, const Record& item) {
  WriteInactive(row, item);
  WriteDescription(row, item);
  // An item that is either sold or bought brings neither accounts nor a cost.
  row.SetField("ExpCost", Currency());
  row.SetField("ExpMarkup", 0.0);
  if (IsInventory(item)) {
    WritePrices(row, item, kGetInventoryAccounts);
  } else if (FormOf(item) == ItemForm::SalesAndPurchase) {
    WritePrices(row, FieldAtPath(item, "ORSalesPurchase.SalesAndPurchase"), kGetAccounts);
  }
  if (item.GetAsString() != kOtherCharge) row.SetField("IsProduct", true);
  row.SetField("ExpBillable", true);
  for (const std::string_view column : {"Tax1_Rate", "Tax2_Rate", "Tax3_Rate"}) row.SetField(column, 0.0);
  row.SetField("Reimbursable", false);
}

// --- Description -----------------------------------------------------------------------------------------------------

constexpr std::array kRules = {
    StatusRule{.status = status::kNameInUse, .on = OnRequest::Mod, .log = ModifyingNameInUse},
    StatusRule{
        .status = status::kInvalidReference, .on = OnRequest::Add, .then = Refusal::LeaveTable, .box = InvalidAccount},
};

constexpr ListTable kExpenseCodes = {
    .tableName = "Expense",
    .keyColumn = "ExpID",
    .fallbackDateColumn = "LastUpdated",
    .send =
        {
            .texts = {.routine = "MoveExpenseCodesToQB",
                      .shown = "Sending Expense Items to QuickBooks...",
                      .errors = ErrorReport::OwnBox},
            .addRequest = "ItemOtherChargeAddRq",
            .progressColumn = "ExpDescription",
            .announces = Announces::PairsThatGo,
            .inVersion1 = InVersion1::LeaveAlone,
            .rules = kRules,
            .readRow = ReadExpenseCode,
            .modRequestOf = ModRequestOf,
            .assign = Assign,
        },
    .get =
        {
            .texts = {.routine = "MoveExpenseCodesToTW",
                      .shown = "Getting Expense Items from QuickBooks...",
                      .log = "Error transfering Expense Codes to Tallywick. Expense = "},
            .addRow = AddExpenseCodeRow,
            .writeLast = WriteExpenseCodeFields,
        },
};

constexpr std::array kClauses = {
    Clause{ClauseOn::LastSend, kChangedSinceLastSend},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}(Expense.ExpID BETWEEN '{a}' AND '{b}') "},
    Clause{ClauseOn::Filter2,
           "{K}(Expense.ExpID IN(SELECT ExpID FROM ExpenseGroupDetail  WHERE XGID BETWEEN '{a}' AND '{b}')) "},
};

constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBExpenseCodeFilters",
    .copyRoutine = "GetQBExpenseCodeRecordsInCollectionObject",
    .errors = ErrorReport::OwnBox,
    .requests = {"ItemOtherChargeQueryRq", "ItemInventoryQueryRq", "ItemNonInventoryQueryRq"},
    .choice = "ORListQuery",
}};

// A sub-item's full name is a key of two parts.
constexpr std::array<std::string_view, 1> kCalled = {"ExpID"};
constexpr std::array<std::string_view, 2> kItemCalled = {"Name", "FullName"};

}  // namespace

constinit const Table kExpenseCodesTable = {
    .number = enExpenseCodes,
    .name = "ExpenseCodes",
    .names = {.send = "Expense Codes", .get = "Expense Codes (QB)"},
    .rows = {.table = "Expense"},
    .selection =
        {
            .base = "SELECT ExpID, ExpCode, ExpSub, ExpDescription, ExpCost, ExpMarkup,  LastUpdated, QBLinkID, "
                    "IsInActive, QBAccountID1, QBAccountID2 FROM Expense ",
            .clauses = kClauses,
            .activeOnly = " AND (Expense.IsInActive IS NULL OR Expense.IsInActive = 0) ",
        },
    .send = MoveExpenseCodesToQB,
    .lostLink = {.row = "expense code",
                 .record = "item",
                 .keys = {.table = "Expense", .column = "ExpID", .adds = "ItemOtherChargeAdd"},
                 .called = {.columns = kCalled, .elements = kItemCalled, .sharing = kListsOfItems},
                 .takeUp =
                     [](const LostAddition& lost) { return TakeUpListLink(kExpenseCodesTable, kExpenseCodes, lost); }},
    .reads = kReads,
    .get = MoveExpenseCodesToTW,
    .billingDeletion = {.rows = "Expense"},
    .quickBooksDeletion = {.kind = QuickBooksKind::List, .type = 13},
};

// --- Public routines -------------------------------------------------------------------------------------------------

void MoveExpenseCodesToQB(const SendCall& call) { SendList(kExpenseCodesTable, kExpenseCodes, call); }

void MoveExpenseCodesToTW(const GetCall& call) { GetList(kExpenseCodes, call); }

bool QBAssignExpCodeFldValues(const RequestField& request, const ado::Recordset& row, const SendRecord& record) {
  return RunAs("QBAssignExpCodeFldValues", [&] {
    if (TakesItemName(record.key, record.twin["Name"].GetValue())) SetCut(request["Name"], ItemName(record.key));
    AssignActive(request, row);
    const auto cost = row.Field("ExpCost");
    const auto markup = row.Field("ExpMarkup");
    const auto& places = PlacesOf(record.twin);
    FieldAtPath(request, places.description).SetValue(ColumnText(row, "ExpDescription"));
    if (!places.cost.empty() && !IsNull(row.Field(places.costNeeds))) {
      FieldAtPath(request, places.cost).SetValue(NumberOf(cost));
    }
    if (!IsNull(markup)) {
      FieldAtPath(request, places.price).SetValue((NumberOf(markup) / 100 + 1) * NumberOf(cost));
    }
  });
}

bool AssignExpenseCodeFldValues(const RequestField& request, const ado::Recordset& row, std::string_view name) {
  const auto raised = CatchError([&] {
    SetCut(request["Name"], GetExpenseNameForQB(name));
    AssignActive(request, row);
    const auto both = FieldAtPath(request, "ORSalesPurchase.SalesAndPurchase");
    SendFields(both, row, kSendDescriptions);
    const auto cost = row.Field("ExpCost");
    const auto markup = row.Field("ExpMarkup");
    if (!IsNull(cost)) SetPrice(both["PurchaseCost"], NumberOf(cost));
    if (!IsNull(cost) && !IsNull(markup)) {
      SetPrice(both["SalesPrice"], NumberOf(markup) * NumberOf(cost) / 100 + NumberOf(cost));
    }
    const auto income = ColumnText(row, "QBAccountID1");
    AssignReference(both["IncomeAccountRef"], Trim(income).empty() ? "" : income, DefaultIncomeAccount());
    // The forms of these countries have the field under other names, so it stays off the wire.
    if (IsCanadianOrBritish(FileCountry())) {
      request["SalesTaxCodeRef"]["FullName"].SetValue("E");
    }
    AssignReference(both["ExpenseAccountRef"], ColumnText(row, "QBAccountID2"), DefaultExpenseAccount());
  });
  if (!raised) return true;
  ShowErrorIn("AssignExpenseCodeFldValues", *raised);
  return false;
}

std::string GetExpenseNameForQB(std::string_view text) { return ItemName(text); }
std::string GetExpenseIDForTW(std::string_view text) { return ReplaceAll(text, " | ", ":"); }

}  // namespace twqb
