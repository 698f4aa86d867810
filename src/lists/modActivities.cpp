#include "lists/modActivities.h"

#include <fmt/core.h>

#include <array>
#include <vector>

#include "engine/FreeKey.h"
#include "engine/InvalidReference.h"
#include "lists/ActiveFlag.h"
#include "lists/Items.h"
#include "lists/SharedNames.h"
#include "messages/StatusCodes.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Countries.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

// --- Field mapping ---------------------------------------------------------------------------------------------------

using When = SendField::When;

// Inside the form that the item has.
constexpr std::array kSendSalesAndPurchase = {
    SendField{.path = "SalesDesc", .column = "ActivityDescription"},
    SendField{.path = "PurchaseCost", .column = "AC_CostRate", .when = When::NotNull},
    SendField{.path = "SalesPrice", .column = "AC_BillRate", .when = When::NotNull},
};
constexpr std::array kSendSalesOrPurchase = {
    SendField{.path = "Desc", .column = "ActivityDescription"},
    SendField{.path = "ORPrice.PRICE", .column = "AC_BillRate", .when = When::NotNull},
};

constexpr std::array kGetSalesAndPurchase = {
    GetField{.path = "SalesDesc", .column = "ActivityDescription"},
    GetField{.path = "IncomeAccountRef.ListID", .column = "QBAccountID1"},
    GetField{.path = "ExpenseAccountRef.ListID", .column = "QBAccountID2"},
};
// There is no expense account: the column keeps its value.
constexpr std::array kGetSalesOrPurchase = {
    GetField{.path = "Desc", .column = "ActivityDescription"},
    GetField{.path = "AccountRef.ListID", .column = "QBAccountID1"},
};

constexpr std::array<std::string_view, 4> kZeroColumns = {"Tax1_Rate", "Tax2_Rate", "Tax3_Rate", "AC_MinHours"};

// --- Hooks of the send -----------------------------------------------------------------------------------------------

// An item that carries the activity's sub alone keeps its name.
bool IsRenamed(const SendRecord& record) {
  const auto twinName = record.twin["Name"].GetValueOrEmpty();
  if (ItemName(record.key) == twinName) return false;
  const auto parts = Split(record.key, ':');
  const auto sub = parts.size() < 2 ? std::string() : parts[1];
  return sub.empty() || sub != twinName;
}

struct DefaultAccounts {
  std::string income;
  std::string expense;
};

void AssignAddFields(const RequestField& request, const ado::Recordset& row, const DefaultAccounts& defaults) {
  const auto form = request["ORSalesPurchase"]["SalesAndPurchase"];
  AssignReference(form["IncomeAccountRef"], ColumnText(row, "QBAccountID1"), defaults.income);
  if (IsCanadianOrBritish(FileCountry())) {
    request["TaxCodeForSaleRef"]["FullName"].SetValue("E");
  }
  AssignReference(form["ExpenseAccountRef"], ColumnText(row, "QBAccountID2"), defaults.expense);
  SendFields(form, row, kSendSalesAndPurchase);
}

void AssignModFields(const RequestField& request, const ado::Recordset& row, const Record& twin) {
  const auto form = request["ORSalesPurchaseMod"];
  if (FormOf(twin) == ItemForm::SalesOrPurchase) {
    SendFields(form["SalesOrPurchaseMod"], row, kSendSalesOrPurchase);
  } else {
    SendFields(form["SalesAndPurchaseMod"], row, kSendSalesAndPurchase);
  }
}

using Lines = std::vector<std::string>;

std::string NameInUse(std::string_view doing, const SendRecord& record) {
  return fmt::format("{} Activity : '{}' already exists in QB", doing, record.countedName);
}

// A name in use is logged and not shown; whoever reads the log learns of one that stood in the way of another error.
Lines ModifyingNameInUse(const RefusedRequest& refused) { return {NameInUse("Modifying", refused.record)}; }
Lines AddingNameInUse(const RefusedRequest& refused) { return {NameInUse("Adding", refused.record)}; }
Lines NameWasInUse(const RefusedRequest& refused) {
  return refused.record.countedName == refused.record.key ? Lines() : AddingNameInUse(refused);
}

// --- Hooks of the get ------------------------------------------------------------------------------------------------

struct ActivityNames {
  std::string code;
  std::string sub;
};

// Levels below the second are dropped.
ActivityNames NamesOf(const ado::Recordset& row, const Record& item) {
  const auto parts = Split(item["FullName"].GetValue(), ':');
  const auto part = [&](std::string_view column, std::string_view text) {
    return CutTo(row, column, ReplaceJunkChars(text));
  };
  if (parts.size() < 2) return {.code = part("ActivityCode", item["Name"].GetValue()), .sub = {}};
  return {.code = part("ActivityCode", parts[0]), .sub = part("ActivitySub", parts[1])};
}

// Counts in the last two places of the sub, or behind one that has no more than these.
std::string MakeUnique(const GetRecord& item, ActivityNames& names) {
  constexpr std::size_t kPlaces = 2;
  const auto length = CharacterCount(names.sub);
  const auto base = length > kPlaces ? Left(names.sub, length - kPlaces) : names.sub;
  return FreeKey(item.connection, {.table = "Activity", .column = "ActivityID"}, item.record["FullName"].GetValue(),
                 [&](int counter) {
                   if (counter > 0) names.sub = fmt::format("{}{}", base, counter);
                   return ItemKey(names.code, names.sub);
                 });
}

void AddActivityRow(ado::Recordset& rows, GetRecord& item) {
  auto names = NamesOf(rows, item.record);
  const auto key = MakeUnique(item, names);
  rows.AddNew();
  rows.SetField("ActivityID", key);
  WriteCut(rows, "ActivitySub", names.sub);
  WriteCut(rows, "ActivityCode", names.code);
  rows.SetField("QBLinkID", item.record["ListID"].GetValue());
  for (const auto column : kZeroColumns) rows.SetField(column, 0.0);
  rows.SetField("ActivityBillable", true);
}

void WriteRate(ado::Recordset& row, std::string_view column, const Record& price) {
  if (!price.IsNothing()) row.SetField(column, price.GetNumber());
}

void WriteActivityFields(ado::Recordset& row, const Record& item) {
  WriteInactive(row, item);
  // An item that lost its description blanks the column.
  row.SetField("ActivityDescription", std::string());
  switch (FormOf(item)) {
    case ItemForm::SalesAndPurchase: {
      const auto form = FieldAtPath(item, "ORSalesPurchase.SalesAndPurchase");
      GetFields(row, form, kGetSalesAndPurchase);
      WriteRate(row, "AC_CostRate", form["PurchaseCost"]);
      WriteRate(row, "AC_BillRate", form["SalesPrice"]);
      break;
    }
    case ItemForm::SalesOrPurchase: {
      const auto form = FieldAtPath(item, "ORSalesPurchase.SalesOrPurchase");
      GetFields(row, form, kGetSalesOrPurchase);
      WriteRate(row, "AC_BillRate", FieldAtPath(form, "ORPrice.Price"));
      break;
    }
    case ItemForm::Neither:
      break;
  }
}

// --- Description -----------------------------------------------------------------------------------------------------

constexpr std::array kRules = {
    StatusRule{.status = status::kNameInUse, .on = OnRequest::Mod, .log = ModifyingNameInUse},
    StatusRule{.status = status::kNameInUse, .on = OnRequest::Add, .then = Refusal::TryNextName},
    StatusRule{.status = status::kNameInUse, .on = OnRequest::AddNamesSpent, .log = AddingNameInUse},
    StatusRule{.status = status::kInvalidReference,
               .on = OnRequest::Add,
               .then = Refusal::AskToGoOn,
               .log = NameWasInUse,
               .box = InvalidReference},
    StatusRule{.on = OnRequest::Add, .then = Refusal::AskInItsOwnBox, .log = NameWasInUse},
};

constexpr ListTable kActivities = {
    .tableName = "Activity",
    .keyColumn = "ActivityID",
    // Its own fallback: without a date an activity is older than any item.
    .fallbackDateColumn = "LastUpdated",
    .send =
        {
            .texts = {.routine = "MoveActivityToQB", .shown = "Sending Activities to QuickBooks..."},
            .recordLabel = "Activity ID",
            .addRequest = "ItemServiceAddRq",
            .modRequest = "ItemServiceModRq",
            .announces = Announces::PairsThatGo,
            .inVersion1 = InVersion1::AddAnew,
            .rules = kRules,
            .assign = QBAssignActivityFldValues,
        },
    .get =
        {
            .texts = {.routine = "MoveActivitiesToTW",
                      .shown = "Getting Activities from QuickBooks...",
                      .log = "Error in Activity transfer to Tallywick. Activity = "},
            .addRow = AddActivityRow,
            .writeLast = WriteActivityFields,
        },
};

constexpr std::array kClauses = {
    Clause{ClauseOn::LastSend, kChangedSinceLastSend},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}(Activity.ActivityID BETWEEN '{a}' AND '{b}') "},
    Clause{ClauseOn::Filter2,
           "{K}(Activity.ActivityID IN(SELECT ActivityID FROM ActivityGroupDetail  WHERE AGID BETWEEN '{a}' AND "
           "'{b}')) "},
};

// The text has always named projects.
constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBActivityFilters",
    .copyRoutine = "GetQBActivityRecordsInCollectionObject",
    .requests = {"ItemServiceQueryRq"},
    .choice = "ORListQuery",
    .readingText = "Reading Projects from QuickBooks...",
}};

// A sub-item's full name is a key of two parts.
constexpr std::array<std::string_view, 1> kCalled = {"ActivityID"};
constexpr std::array<std::string_view, 2> kItemCalled = {"Name", "FullName"};

}  // namespace

constinit const Table kActivitiesTable = {
    .number = enActivities,
    .name = "Activities",
    .names = {.send = "Activities", .get = "Activities(QB)"},
    .rows = {.table = "Activity"},
    .selection =
        {
            .base = "SELECT ActivityID, QBLinkID, ActivityDescription,LastUpdated, AC_CostRate, AC_BillRate, "
                    "IsInActive, QBAccountID1, QBAccountID2 FROM Activity ",
            .prefix = "Activity.",
            .clauses = kClauses,
            .activeOnly = " AND (Activity.IsInActive IS NULL OR Activity.IsInActive = 0) ",
        },
    .send = MoveActivityToQB,
    .lostLink = {.row = "activity",
                 .record = "item",
                 .keys = {.table = "Activity", .column = "ActivityID", .adds = "ItemServiceAdd"},
                 .called = {.columns = kCalled, .elements = kItemCalled, .sharing = kListsOfItems},
                 .takeUp =
                     [](const LostAddition& lost) { return TakeUpListLink(kActivitiesTable, kActivities, lost); }},
    .reads = kReads,
    .get = MoveActivitiesToTW,
    .billingDeletion = {.rows = "Activity"},
    .quickBooksDeletion = {.kind = QuickBooksKind::List, .type = 17},
};

// --- Public routines -------------------------------------------------------------------------------------------------

void MoveActivityToQB(const SendCall& call) { SendList(kActivitiesTable, kActivities, call); }

void MoveActivitiesToTW(const GetCall& call) { GetList(kActivities, call); }

Filling QBAssignActivityFldValues(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                                  const SendRecord& record) {
  return RunAs("QBAssignActivityFldValues", Filling::EndTable, [&] {
    // Read for a Mod too: settings that can't be read end the table whatever is sent.
    const DefaultAccounts defaults = {.income = DefaultIncomeAccount(), .expense = DefaultExpenseAccount()};
    if (kind == RequestKind::Add || IsRenamed(record)) SetCut(request["Name"], ItemName(record.countedName));
    AssignActive(request, row);
    if (kind == RequestKind::Add) {
      AssignAddFields(request, row, defaults);
    } else {
      AssignModFields(request, row, record.twin);
    }
    return Filling::Filled;
  });
}

}  // namespace twqb
