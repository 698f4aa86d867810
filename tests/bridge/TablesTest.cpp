// The dispatch by routines, with routines that only note what they are called with: what is read and sent for each
// table, in which order, and what becomes of their outcomes.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>

#include "bridge/Tables.h"
#include "bridge/modTWQBBridge.h"
#include "engine/DependentPull.h"
#include "tests/bridge/BridgeHouse.h"
#include "tests/quickbooks/CannedQuickBooks.h"
#include "tests/support/PlainVendors.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<std::int32_t>;

// What the routines were called with, and what they do. They are plain functions, so that it stands here.
struct Noted {
  Numbers sent;
  Texts statements;
  Numbers got;
  std::vector<std::int16_t> parts;
  std::vector<bool> byId;
  std::vector<ado::Connection*> connections;
  TwinRule rule = TwinRule::Overwrite;  // of the last call

  TableOk outcome = TableOk::True;
  std::string passedIdAfterwards;  // of a send
};
Noted noted;

template <std::int32_t kTable>
void NoteSend(const SendCall& call) {
  noted.sent.push_back(kTable);
  noted.statements.push_back(call.sql.Text());
  noted.rule = call.rule;
  Vars().g_TableOk = noted.outcome;
  Vars().g_PassedID = noted.passedIdAfterwards;
}

template <std::int32_t kTable>
void NoteGet(const GetCall& call) {
  noted.got.push_back(kTable);
  noted.parts.push_back(call.part);
  noted.byId.push_back(call.dependent == Dependent::Yes);
  noted.connections.push_back(call.connection);
  noted.rule = call.rule;
  Vars().g_TableOk = noted.outcome;
}

// The built-in tables with routines that note. Estimates, which are never sent, keep what they do in place of it.
template <std::int32_t... kNumbers>
std::vector<Table> NotingTables(std::integer_sequence<std::int32_t, kNumbers...> /*numbers*/) {
  std::vector<Table> tables;
  const auto add = [&](Table table, void (*send)(const SendCall&), void (*get)(const GetCall&)) {
    if (table.number != enEstimates) table.send = send;
    table.get = get;
    tables.push_back(table);
  };
  (add(*BuiltInTables()[kNumbers], NoteSend<kNumbers>, NoteGet<kNumbers>), ...);
  return tables;
}

class Routines : public testing::Test {
 protected:
  Routines() { noted = {}; }

  // A house of the test's own making; the session is there.
  BridgeHouse& House(HouseOptions options = {}, std::string_view faults = {}) {
    house_.emplace(std::move(options), faults);
    house_->tables = list_;
    house_->EnterSpied();
    house_->Connect();
    return *house_;
  }
  // What the next queries of QuickBooks find, in order: a record, or nothing where the name is empty.
  void Find(std::initializer_list<std::string_view> records) {
    for (const auto name : records) {
      house_->traffic.canned.push_back(
          name.empty() ? CannedAnswer("QueryRs", "statusCode=\"1\" statusSeverity=\"Info\"", "")
                       : CannedAnswer("QueryRs", kStatusOk,
                                      "<" + std::string(name) + "><TxnID>1-1</TxnID></" + std::string(name) + ">"));
    }
  }
  // The requests that went over the wire, in order.
  [[nodiscard]] Texts Wire() const {
    Texts names;
    for (const auto& document : house_->traffic.documents) {
      const auto to = document.find(" requestID=");
      const auto from = document.rfind('<', to) + 1;
      names.push_back(document.substr(from, to - from));
    }
    return names;
  }

 private:
  std::vector<Table> tables_ = NotingTables(std::make_integer_sequence<std::int32_t, enAll>());
  std::vector<const Table*> list_ = [this] {
    std::vector<const Table*> list;
    for (const auto& table : tables_) list.push_back(&table);
    return list;
  }();
  std::optional<BridgeHouse> house_;
};

TEST_F(Routines, Tables_of_a_host_stand_in_the_place_of_the_built_in_ones) {
  const auto* builtIn = FindTable(enClients);
  ASSERT_NE(builtIn, nullptr);
  House();
  EXPECT_EQ(FindTable(enClients)->send, NoteSend<enClients>);
  EXPECT_EQ(FindTable(enAll), nullptr);
  Compose({});
  EXPECT_EQ(FindTable(enClients), builtIn);
}

TEST(BuiltInTables, Have_numbers_and_names_of_their_own) {
  std::set<std::int32_t> numbers = {enAll, enCreditMemo};
  std::set<std::string_view> names;
  for (const auto* table : BuiltInTables()) {
    EXPECT_TRUE(numbers.insert(table->number).second) << table->name;
    for (const auto name : {table->name, table->names.send, table->names.get}) EXPECT_FALSE(name.empty());
    EXPECT_TRUE(names.insert(table->name).second) << table->name;
    EXPECT_FALSE(table->reads.empty()) << table->name;
  }
}

// What a new table costs: its value, and its line in the list.
TEST(AddedTable, Moves_both_ways) {
  auto added = kPlainVendorsTable;
  added.number = static_cast<enTables>(enCreditMemo + 1);
  added.name = "PlainVendors";
  added.names = {.send = "Plain Vendors", .get = "Plain Vendors(QB)"};
  std::vector<const Table*> list(BuiltInTables().begin(), BuiltInTables().end());
  list.push_back(&added);
  BridgeHouse house;
  house.tables = list;
  house.EnterSpied();
  house.Connect();
  house.Sql("INSERT INTO Employee (EmployeeID, IsSub, EmpCompany, EmpCity) VALUES ('Acme', -1, 'Acme Works', 'Bath')");
  EXPECT_TRUE(SendTableToQB(added.number, {}));
  EXPECT_EQ(house.Requests("VendorAddRq").size(), 1U);
  house.Company(
      "<VendorAddRq><VendorAdd><Name>Brick</Name><CompanyName>Brick Yard</CompanyName></VendorAdd></VendorAddRq>");
  EXPECT_TRUE(GetTableFromQB(added.number, {}, ActiveOnly::False, false, nullptr));
  EXPECT_EQ(house.Scalar("SELECT EmpCompany FROM Employee WHERE EmployeeID = 'Brick'"), "Brick Yard");
  EXPECT_NE(house.Scalar("SELECT QBLinkID FROM Employee WHERE EmployeeID = 'Acme'"), "NULL");
}

// --- Sending ---------------------------------------------------------------------------------------------------------

TEST_F(Routines, A_send_hands_on_selection_and_filters) {
  House();
  EXPECT_TRUE(SendTableToQB(enClients, {.Filter1a = "A", .Filter1b = "M", .rule = TwinRule::LeaveAlone}));
  EXPECT_EQ(noted.sent, Numbers{enClients});
  EXPECT_NE(noted.statements.at(0).find("ClientID BETWEEN 'A' AND 'M'"), std::string::npos);
  EXPECT_EQ(noted.rule, TwinRule::LeaveAlone);
}

TEST_F(Routines, A_send_is_good_with_the_outcome_True_alone) {
  House();
  for (const auto& [outcome, expected] :
       {std::pair(TableOk::True, true), std::pair(TableOk::False, false), std::pair(TableOk::GoOn, false)}) {
    noted.outcome = outcome;
    EXPECT_EQ(SendTableToQB(enActivities, {}), expected);
    EXPECT_EQ(Vars().g_CnRefCount, 0);
  }
}

TEST_F(Routines, Estimates_are_not_sent_and_that_is_True) {
  House();
  EXPECT_TRUE(SendTableToQB(enEstimates, {}));
  EXPECT_EQ(Vars().g_TableOk, TableOk::True);
  EXPECT_TRUE(noted.sent.empty());
}

TEST_F(Routines, Beyond_the_tables_there_is_nothing_to_do) {
  auto& house = House();
  EXPECT_TRUE(SendTableToQB(enAll, {}));
  EXPECT_TRUE(SendTableToQB(enCreditMemo, {}));
  EXPECT_TRUE(GetTableFromQB(enAll, {}, ActiveOnly::False, false, nullptr));
  EXPECT_TRUE(noted.sent.empty() && noted.got.empty());
  EXPECT_TRUE(Wire().empty() && house.traffic.statements.empty());
}

// --- Expenses and the review of their bill ---------------------------------------------------------------------------

TEST_F(Routines, Expenses_that_nothing_selects_are_not_sent_and_that_is_True) {
  House();
  EXPECT_TRUE(SendTableToQB(enExpenseLog, {}));
  EXPECT_TRUE(noted.sent.empty());
  EXPECT_EQ(Vars().g_TableOk, TableOk::True);
}

TEST_F(Routines, Expenses_that_were_passed_are_sent_by_name_and_count_as_good_whatever_happened) {
  auto& house = House();
  noted.outcome = TableOk::False;
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID("'{E1}'");
  EXPECT_TRUE(bridge.SendDataToQB(enExpenseLog));
  EXPECT_EQ(noted.sent, Numbers{enExpenseLog});
  EXPECT_NE(noted.statements.at(0).find("ELID IN('{E1}')"), std::string::npos);
  EXPECT_EQ(Vars().g_TableOk, TableOk::True);
}

struct Review {
  std::string bills;
  std::string answer;
  std::size_t boxes;
  Texts shown;  // bills that QuickBooks is told to open
};

TEST_F(Routines, The_user_may_look_at_the_first_of_the_new_bills) {
  const std::string_view question = "Would you like to review the transferred Bill?";
  const auto opened = [](std::string_view id) {
    return Texts{"<TxnDisplayModType>Bill</TxnDisplayModType><TxnID>" + std::string(id) + "</TxnID>"};
  };
  const Review cases[] = {{.bills = "", .answer = "", .boxes = 0, .shown = {}},
                          {.bills = "'1A-1'", .answer = "yes", .boxes = 1, .shown = opened("1A-1")},
                          {.bills = "'1A-1'", .answer = "no", .boxes = 1, .shown = {}},
                          {.bills = "'2B-2','1A-1','3C-3'", .answer = "yes", .boxes = 1, .shown = opened("2B-2")}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.bills + " " + c.answer);
    auto& house = House({.answers = c.answer}, "TxnDisplayModRq 1 status 0 Info \"Status OK\"");
    Vars().g_PassedID = "'{E1}'";
    noted.passedIdAfterwards = c.bills;
    EXPECT_TRUE(SendTableToQB(enExpenseLog, {.Filter1a = "'{E1}'"}));
    ASSERT_EQ(house.desk.Boxes().size(), c.boxes);
    for (const auto& shown : house.desk.Boxes()) {
      EXPECT_EQ(shown.box.text, question);
      EXPECT_EQ(shown.box.title, "Review Bill in QuickBooks");
      EXPECT_EQ(shown.box.icon, BoxIcon::Question);
      EXPECT_EQ(shown.box.buttons, BoxButtons::YesNo);
    }
    EXPECT_EQ(house.Requests("TxnDisplayModRq"), c.shown);
  }
}

TEST_F(Routines, Whatever_fails_in_the_review_is_ignored) {
  for (const std::string_view fault :
       {"TxnDisplayModRq 1 status 3120 Error \"Not found.\"", "DoRequests 1 raise 0x80040408 \"Gone.\"",
        "box 1 raise 91 \"No desk.\" Would you like"}) {
    SCOPED_TRACE(fault);
    auto& house = House({.answers = "yes"}, fault);
    Vars().g_PassedID = "'{E1}'";
    noted.passedIdAfterwards = "'1A-1'";
    EXPECT_TRUE(SendTableToQB(enExpenseLog, {.Filter1a = "'{E1}'"}));
    EXPECT_LE(house.desk.Boxes().size(), 1U) << "the question alone";
    EXPECT_EQ(Vars().g_CnRefCount, 0);
  }
}

TEST_F(Routines, Other_tables_are_not_reviewed) {
  auto& house = House();
  noted.passedIdAfterwards = "'1A-1'";
  EXPECT_TRUE(SendTableToQB(enVendorBill, {}));
  EXPECT_TRUE(house.desk.Boxes().empty());
}

// --- Getting ---------------------------------------------------------------------------------------------------------

TEST_F(Routines, Every_table_is_read_by_its_own_query) {
  const std::pair<std::int32_t, Texts> cases[] = {
      {enEmployees, {"EmployeeQueryRq"}},
      {enVendors, {"VendorQueryRq"}},
      {enClients, {"CustomerQueryRq"}},
      {enProjects, {"CustomerQueryRq"}},
      {enActivities, {"ItemServiceQueryRq"}},
      {enExpenseCodes, {"ItemOtherChargeQueryRq"}},  // the first of its set
      {enAccounts, {"AccountQueryRq"}},
      {enExpenseLog, {"CheckQueryRq", "CreditCardChargeQueryRq", "BillQueryRq"}},
      {enTimeEntries, {"TimeTrackingQueryRq"}},
      {enInvoices, {"InvoiceQueryRq", "CreditMemoQueryRq"}},
      {enPayments, {"ReceivePaymentQueryRq"}},
      {enVendorBill, {"BillQueryRq"}},
      {enEstimates, {"EstimateQueryRq"}},
  };
  for (const auto* table : BuiltInTables()) {
    EXPECT_EQ(std::ranges::count(cases, table->number, [](const auto& c) { return c.first; }), 1) << table->name;
  }
  for (const auto& [table, queries] : cases) {
    SCOPED_TRACE(table);
    noted = {};
    House();
    Find({"", "", ""});
    EXPECT_TRUE(GetTableFromQB(table, {}, ActiveOnly::False, false, nullptr)) << "nothing found is no failure";
    EXPECT_EQ(Wire(), queries);
    EXPECT_TRUE(noted.got.empty());
    EXPECT_EQ(Vars().g_CnRefCount, 0);
  }
}

TEST_F(Routines, The_expense_log_comes_of_checks_charges_and_bills) {
  House();
  Find({"CheckRet", "CreditCardChargeRet", "BillRet"});
  EXPECT_TRUE(GetTableFromQB(enExpenseLog, {}, ActiveOnly::False, false, nullptr));
  EXPECT_EQ(noted.got, (Numbers{enExpenseLog, enExpenseLog, enExpenseLog}));
  EXPECT_EQ(noted.parts, (std::vector<std::int16_t>{0, 1, 2}));
}

TEST_F(Routines, A_read_of_the_expense_log_that_finds_nothing_does_not_keep_the_next_from_its_kind) {
  House();
  Find({"CheckRet", "", "BillRet"});
  EXPECT_TRUE(GetTableFromQB(enExpenseLog, {}, ActiveOnly::False, false, nullptr));
  EXPECT_EQ(noted.parts, (std::vector<std::int16_t>{0, 2}));
}

TEST_F(Routines, Bills_of_the_expense_log_look_the_active_setting_up_for_themselves) {
  auto& house = House();
  house.Setting("QBGET_", "Expense Log (QB)_chkActiveOnly", "perhaps");
  Find({"CheckRet", "CreditCardChargeRet", "BillRet"});
  EXPECT_TRUE(GetTableFromQB(enExpenseLog, {}, ActiveOnly::False, false, nullptr));
  EXPECT_EQ(noted.parts, (std::vector<std::int16_t>{0, 1}));
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("ApplyQBFiltersAndReadRecords")));
}

TEST_F(Routines, Transaction_dates_narrow_no_read_of_the_expense_log) {
  auto& house = House();
  Find({"", "", ""});
  const SavedFilters filters = {.From = "3/1/2008", .To = "3/5/2008"};
  EXPECT_TRUE(GetTableFromQB(enExpenseLog, filters, ActiveOnly::False, false, nullptr));
  ASSERT_EQ(house.traffic.documents.size(), 3U);
  for (const auto& document : house.traffic.documents) EXPECT_EQ(document.find("TxnDate"), std::string::npos);
  // ... but one of time entries.
  house.traffic.documents.clear();
  Find({""});
  EXPECT_TRUE(GetTableFromQB(enTimeEntries, filters, ActiveOnly::False, false, nullptr));
  EXPECT_NE(house.traffic.documents.at(0).find("<FromTxnDate>2008-03-01</FromTxnDate>"), std::string::npos);
}

TEST_F(Routines, QuickBooks_2002_is_said_to_know_little_of_expenses_and_is_read_all_the_same) {
  for (const auto version : {std::int16_t{1}, std::int16_t{2}, std::int16_t{3}}) {
    SCOPED_TRACE(version);
    auto& house = House();
    Vars().g_QBMajorVer = version;
    Find({"", "", "", ""});
    EXPECT_TRUE(GetTableFromQB(enExpenseLog, {}, ActiveOnly::False, false, nullptr));
    EXPECT_EQ(Wire().size(), 3U);
    EXPECT_TRUE(GetTableFromQB(enVendorBill, {}, ActiveOnly::False, false, nullptr));
    ASSERT_EQ(house.desk.Boxes().size(), version == 1 ? 1U : 0U);
    if (version != 1) continue;
    const auto& box = house.desk.Boxes()[0].box;
    EXPECT_EQ(box.text, "QuickBooks 2002 Does not provide complete support for Transferring the Expense Log");
    EXPECT_EQ(box.title, "Error");
    EXPECT_EQ(box.icon, BoxIcon::None);
    EXPECT_EQ(box.buttons, BoxButtons::Ok);
  }
}

TEST_F(Routines, Credit_memos_come_behind_invoices) {
  House();
  Find({"InvoiceRet", "CreditMemoRet"});
  EXPECT_TRUE(GetTableFromQB(enInvoices, {}, ActiveOnly::False, false, nullptr));
  EXPECT_EQ(noted.parts, (std::vector<std::int16_t>{0, 1}));
}

TEST_F(Routines, Credit_memos_come_also_where_there_is_no_invoice) {
  House();
  Find({"", "CreditMemoRet"});
  EXPECT_TRUE(GetTableFromQB(enInvoices, {}, ActiveOnly::False, false, nullptr));
  EXPECT_EQ(noted.got, Numbers{enInvoices});
  EXPECT_EQ(noted.parts, std::vector<std::int16_t>{1});
}

TEST_F(Routines, Invoices_that_failed_count_as_well_where_there_is_no_credit_memo) {
  House();
  noted.outcome = TableOk::False;
  Find({"InvoiceRet", ""});
  EXPECT_TRUE(GetTableFromQB(enInvoices, {}, ActiveOnly::False, false, nullptr));
  EXPECT_TRUE(Vars().g_NoQBRecords);
}

TEST_F(Routines, A_get_is_good_with_any_outcome_but_False) {
  for (const auto& [outcome, expected] :
       {std::pair(TableOk::True, true), std::pair(TableOk::False, false), std::pair(TableOk::GoOn, true)}) {
    auto& house = House();
    noted.outcome = outcome;
    house.AddCustomer("<Name>Acme</Name>");
    Bridge bridge(house);
    EXPECT_EQ(bridge.GetDataFromQB(enClients), expected);
    EXPECT_EQ(house.LastGet() == "(none)", !expected);
  }
}

// --- The pull for a transaction's sake -------------------------------------------------------------------------------

TEST_F(Routines, A_pull_is_of_clients_of_projects_or_of_both_in_that_order) {
  const std::pair<std::string_view, Numbers> cases[] = {
      {"CLIENT", {enClients}},   {"Client", {enClients}},       {"project", {enProjects}},
      {"PROJECT", {enProjects}}, {"", {enClients, enProjects}}, {"INVOICE", {enClients, enProjects}}};
  for (const auto& [kind, tables] : cases) {
    SCOPED_TRACE(kind);
    noted = {};
    auto& house = House();
    const auto id = house.AddCustomer("<Name>Acme</Name>");
    const auto connection = Vars().platform.database->CreateConnection();
    TransferCustomerOrJobFromQB(id, connection.get(), kind);
    EXPECT_EQ(noted.got, tables);
    EXPECT_EQ(noted.byId, std::vector<bool>(tables.size(), true));
    EXPECT_EQ(noted.connections, std::vector<ado::Connection*>(tables.size(), connection.get()));
    EXPECT_EQ(noted.rule, TwinRule::Overwrite);
    EXPECT_EQ(house.Requests("CustomerQueryRq"), Texts(tables.size(), "<ListID>" + id + "</ListID>"));
  }
}

// --- All of them -----------------------------------------------------------------------------------------------------

TEST_F(Routines, A_send_over_all_tables_goes_in_their_order_and_leaves_expenses_out) {
  auto& house = House();
  Vars().g_PassedID = "'{E1}'";  // would select them
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enAll));
  EXPECT_EQ(noted.sent, (Numbers{enEmployees, enVendors, enClients, enProjects, enActivities, enExpenseCodes,
                                 enAccounts, enTimeEntries, enInvoices, enPayments, enVendorBill}));
  for (std::int32_t table = 0; table < enAll; ++table) {
    EXPECT_EQ(house.SettingOf("QBSEND_", std::string(GetTableName(Direction::Send, table)) + "_LastSendAt") == "(none)",
              table == enExpenseLog)
        << table;
  }
}

TEST_F(Routines, A_get_over_all_tables_goes_in_their_order_and_takes_expenses_in) {
  std::string nothing;
  for (const std::string query :
       {"CheckQueryRq 1", "CreditCardChargeQueryRq 1", "BillQueryRq 1", "TimeTrackingQueryRq 1", "InvoiceQueryRq 1",
        "CreditMemoQueryRq 1", "ReceivePaymentQueryRq 1", "BillQueryRq 2", "EstimateQueryRq 1"}) {
    nothing += query + " status 1 Info \"None\"\n";
  }
  auto& house = House({}, nothing);
  house.AddCustomer("<Name>Acme</Name>");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.GetDataFromQB(enAll));
  auto wire = Wire();
  std::erase(wire, "HostQueryRq");
  EXPECT_EQ(wire, (Texts{"EmployeeQueryRq", "VendorQueryRq", "CustomerQueryRq", "CustomerQueryRq", "ItemServiceQueryRq",
                         "ItemOtherChargeQueryRq", "AccountQueryRq", "CheckQueryRq", "CreditCardChargeQueryRq",
                         "BillQueryRq", "TimeTrackingQueryRq", "InvoiceQueryRq", "CreditMemoQueryRq",
                         "ReceivePaymentQueryRq", "BillQueryRq", "EstimateQueryRq"}));
  EXPECT_NE(house.LastGet(), "(none)");
  EXPECT_EQ(house.SettingOf("QBGET_", "Payments(QB)_LastSendAt"), "(none)") << "nothing was found";
}

}  // namespace
}  // namespace twqb
