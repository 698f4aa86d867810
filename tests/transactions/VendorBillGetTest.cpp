// The get of vendor bills: the bill, its lines in two tables, the conflict rule line by line, errors.

#include <gtest/gtest.h>

#include "tests/transactions/CostsHouse.h"
#include "transactions/VendorBillsIn.h"

namespace twqb {
namespace {

constexpr TestedTable kTested = Got(enVendorBill, "VendorBill", "VendorBillID", MoveVendorBillToTW);

// Three hours at 40.
std::string Hours(const Changes& changes = {}) {
  return Line("ItemLine",
              {{"TxnLineID", "L-1"},
               {"ItemRef", kDesignRef},
               {"Desc", "Details"},
               {"Quantity", "3"},
               {"Cost", "40"},
               {"Amount", "120.00"},
               {"CustomerRef", kJobRef}},
              changes);
}
std::string Travel(const Changes& changes = {}) {
  auto all = changes;
  all.emplace("TxnLineID", "X-9");
  all.emplace("ItemRef", kTravelRef);
  return Hours(all);
}
// Expense lines stand ahead of item lines.
std::string Bill(const Texts& lines, const Changes& changes = {}) {
  return With(RecordOf("Bill",
                       {{"TxnID", "1-1"},
                        {"TimeCreated", "2008-03-02T08:00:00-05:00"},
                        {"TimeModified", std::string(kModified)},
                        {"VendorRef", kVendorRef},
                        {"TxnDate", "2008-03-03"},
                        {"DueDate", "2008-04-02"},
                        {"RefNumber", "S-77"}},
                       changes),
              lines);
}

class BillsInHouse : public CostsHouse {
 public:
  explicit BillsInHouse(HouseOptions options = {}, std::string_view faults = {})
      : CostsHouse(kTested, std::move(options), faults) {}
  void Bills(const std::string& text, MoveFlags flags = {}) { TakeAnswer("Bill", text, flags); }

  [[nodiscard]] std::string Header(std::string_view column, std::string_view link = "1-1") {
    return Scalar(fmt::format("SELECT {} FROM VendorBill WHERE QBLinkID = '{}'", column, link));
  }
  [[nodiscard]] std::string Time(std::string_view column, std::string_view link = "L-1") {
    return Scalar(fmt::format("SELECT {} FROM TimeEntry WHERE QBLinkID = '{}'", column, link));
  }
  [[nodiscard]] std::string Expense(std::string_view column, std::string_view link = "X-9") {
    return Scalar(fmt::format("SELECT {} FROM ExpenseLog WHERE QBLinkID = '{}'", column, link));
  }
  // A row that came in before, linked to the line.
  void HereAsTime(std::string_view link, const Columns& changed = {}) {
    Here("TimeEntry", "TEID", "TEBillStatus", link, changed);
  }
  void HereAsExpense(std::string_view link, const Columns& changed = {}) {
    Here("ExpenseLog", "ELID", "ELBilled", link, changed);
  }

 private:
  void Here(std::string_view table, const std::string& key, const std::string& status, std::string_view link,
            const Columns& changed) {
    Columns columns = {{status, "'N'"}, {"EmployeeID", "'OLD'"}, {"LastUpdated", "'2008-03-05 15:00:00'"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns[key] = fmt::format("'{{{}}}'", link);
    columns["QBLinkID"] = fmt::format("'{}'", link);
    Insert(table, columns);
    Clear();
  }
};

// --- The bill --------------------------------------------------------------------------------------------------------

TEST(VendorBillsIn, A_bill_becomes_a_row_with_every_column) {
  BillsInHouse house;
  house.Bills(Bill({Hours()}, {{"Memo", "March"}}));
  const std::pair<std::string_view, std::string_view> columns[] = {
      {"VendorID", "SMITH"},       {"BillNumber", "S-77"},
      {"BillDate", "3/3/2008"},    {"BillMemo", "March"},
      {"BillDueDate", "4/2/2008"}, {"BillRef", "From QuickBooks"},
      {"QBLinkID", "1-1"},         {"LastUpdated", "3/5/2008 3:00:00 PM"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Header(column), value) << column;
  EXPECT_TRUE(IsGuid(house.Header("VendorBillID")));
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(house.ShownRecords().back(), "Vendor Bill No. S-77");
}

TEST(VendorBillsIn, Dates_that_are_missing_are_those_of_the_entry) {
  BillsInHouse house;
  house.Bills(Bill({Hours()}, {{"TxnDate", {}}, {"DueDate", {}}}));
  EXPECT_EQ(house.Header("BillDate"), "3/2/2008 8:00:00 AM");
  EXPECT_EQ(house.Header("BillDueDate"), "3/2/2008 8:00:00 AM");
}

TEST(VendorBillsIn, A_bill_without_a_number_gets_one_that_is_made_up) {
  for (const auto& number : {std::optional<std::string>(), std::optional<std::string>("  ")}) {
    BillsInHouse house({.now = TextToDate("2008-03-05T10:07:09")});
    house.Bills(Bill({Hours()}, {{"RefNumber", number}}));
    const auto made = house.Header("BillNumber");
    EXPECT_TRUE(
        made.starts_with("2008379"
                         "0."))
        << made;
    EXPECT_LE(made.size(), 20U) << made;
  }
}

TEST(VendorBillsIn, A_bill_of_nobody_here_is_passed_over_without_a_message) {
  BillsInHouse house;
  house.Bills(Bill({Hours()}, {{"VendorRef", kUnknownRef}}));
  EXPECT_EQ(house.Count("VendorBill"), "0");
  EXPECT_EQ(house.Count("TimeEntry"), "0");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(VendorBillsIn, A_bill_of_unknown_items_alone_adds_no_header) {
  BillsInHouse house;
  house.Bills(Bill({Hours({{"ItemRef", kUnknownRef}}), Hours({{"ItemRef", {}}})}));
  EXPECT_EQ(house.Count("VendorBill"), "0");
  const auto deleted = house.Statements("DELETE FROM VendorBill");
  ASSERT_EQ(deleted.size(), 1U);
  EXPECT_TRUE(deleted[0].starts_with("DELETE FROM VendorBill WHERE VendorBillID = '{")) << deleted[0];
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(VendorBillsIn, A_bill_that_is_here_is_never_deleted) {
  BillsInHouse house;
  house.Sql("INSERT INTO VendorBill (VendorBillID, BillNumber, QBLinkID) VALUES ('{OLD}', 'old', '1-1')");
  house.Bills(Bill({}));
  EXPECT_EQ(house.Header("BillNumber"), "S-77");
  EXPECT_EQ(house.Header("VendorBillID"), "{OLD}");
}

TEST(VendorBillsIn, A_bill_that_is_here_moves_as_the_rule_says_with_all_its_lines) {
  for (const auto& [flags, number] :
       {std::pair(MoveFlags{}, "S-77"), std::pair(kMostRecent, "old"), std::pair(kNever, "old")}) {
    BillsInHouse house;
    house.Sql(
        "INSERT INTO VendorBill (VendorBillID, BillNumber, QBLinkID, LastUpdated) VALUES ('{OLD}', 'old', '1-1', "
        "'2008-03-05 15:00:00')");
    house.Bills(Bill({Hours()}), flags);
    EXPECT_EQ(house.Header("BillNumber"), number);
    EXPECT_EQ(house.Count("TimeEntry"), number == std::string("old") ? "0" : "1");
    EXPECT_EQ(Outcome(), TableOk::True);
  }
}

// --- Lines -----------------------------------------------------------------------------------------------------------

TEST(VendorBillsIn, A_line_on_an_activity_becomes_hours_with_every_column) {
  BillsInHouse house;
  house.Bills(Bill({Hours()}));
  const std::pair<std::string_view, std::string> columns[] = {{"TEBill", "-1"},
                                                              {"TEBillStatus", "N"},
                                                              {"TEMemoExists", "0"},
                                                              {"TEPosted", "-1"},
                                                              {"TEFlag1", "0"},
                                                              {"TEFlag2", "0"},
                                                              {"TEFlag3", "0"},
                                                              {"TETax2", "0"},
                                                              {"TETax3", "0"},
                                                              {"TEXtraWork", "0"},
                                                              {"TEOT", "0"},
                                                              {"TECompTime", "0"},
                                                              {"isSub", "-1"},
                                                              {"ApprovalStatus", "2"},
                                                              {"ApprovedBy", "SUPERVISOR"},
                                                              {"WUD", "0"},
                                                              {"ShowMemoOnInvoice", "-1"},
                                                              {"ShowMemoOnJournal", "0"},
                                                              {"EmployeeID", "SMITH"},
                                                              {"ProjectID", "ROOF:"},
                                                              {"ProjectName", "The roof"},
                                                              {"ActivityID", "DESIGN:"},
                                                              {"TEDescription", "Details"},
                                                              {"TECostRate", "40"},
                                                              {"TEBillRate", "40"},
                                                              {"TEDate", "3/3/2008"},
                                                              {"TEHours", "3"},
                                                              {"aHours", "3"},
                                                              {"TETax1", "0"},
                                                              {"LastUpdated", "3/5/2008 3:00:00 PM"},
                                                              {"VendorBillID", house.Header("VendorBillID")}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Time(column), value) << column;
  EXPECT_TRUE(IsGuid(house.Time("TEID")));
  EXPECT_EQ(house.Count("ExpenseLog"), "0");
}

TEST(VendorBillsIn, A_line_on_an_expense_becomes_an_expense_with_every_column) {
  BillsInHouse house;
  house.Bills(Bill({Travel()}));
  const std::pair<std::string_view, std::string> columns[] = {{"ELBillable", "-1"},
                                                              {"ELBilled", "N"},
                                                              {"ELMemoFlag", "0"},
                                                              {"ELPosted", "-1"},
                                                              {"ELFlag1", "0"},
                                                              {"ELFlag2", "0"},
                                                              {"ELFlag3", "0"},
                                                              {"ELTax2", "0"},
                                                              {"ELTax3", "0"},
                                                              {"Reimbursable", "0"},
                                                              {"ELPaid", "0"},
                                                              {"isProduct", "0"},
                                                              {"ELMarkup", "0"},
                                                              {"isSub", "-1"},
                                                              {"ApprovalStatus", "2"},
                                                              {"ApprovedBy", "SUPERVISOR"},
                                                              {"WUD", "0"},
                                                              {"ShowMemoOnInvoice", "-1"},
                                                              {"ShowMemoOnJournal", "0"},
                                                              {"ExpType", "0"},
                                                              {"EmployeeID", "SMITH"},
                                                              {"ProjectID", "ROOF:"},
                                                              {"ExpID", "TRAVEL:"},
                                                              {"ELDescription", "Details"},
                                                              {"ELCost", "40"},
                                                              {"ELChgAmt", "120"},
                                                              {"ELDate", "3/3/2008"},
                                                              {"ELUnits", "3"},
                                                              {"ELTax1", "0"},
                                                              {"LastUpdated", "3/5/2008 3:00:00 PM"},
                                                              {"VendorBillID", house.Header("VendorBillID")}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Expense(column), value) << column;
  EXPECT_TRUE(IsGuid(house.Expense("ELID")));
  EXPECT_EQ(house.Count("TimeEntry"), "0");
}

TEST(VendorBillsIn, A_line_on_an_account_is_an_expense_of_the_reserved_code) {
  BillsInHouse house;
  house.Bills(Bill({AccountLine(), AccountLine({{"TxnLineID", "E-2"}, {"Memo", {}}}),
                    AccountLine({{"TxnLineID", "E-3"}, {"Memo", std::string(120, 'm')}})}));
  EXPECT_EQ(house.RowsOf("QBLinkID,ExpID,ELDescription,ELCost,ELChgAmt", "ExpenseLog"),
            "E-1|FROMQB:|Fuel|1|10\nE-2|FROMQB:|From QuickBooks|1|10\nE-3|FROMQB:|" + std::string(100, 'm') + "|1|10");
  EXPECT_EQ(house.Expense("ELUnits", "E-1"), "0");
}

TEST(VendorBillsIn, What_a_line_leaves_out_has_a_value_that_stands_for_it) {
  BillsInHouse house;
  house.Bills(Bill({Hours({{"Cost", {}}, {"Quantity", {}}, {"Amount", {}}}), Travel({{"Amount", {}}})}));
  EXPECT_EQ(house.Time("TECostRate"), "1") << "not 0";
  EXPECT_EQ(house.Time("TEHours"), "0");
  EXPECT_EQ(house.Expense("ELChgAmt"), "0");
}

TEST(VendorBillsIn, A_line_without_words_takes_those_of_its_code_or_says_where_it_is_from) {
  BillsInHouse house;
  house.Sql("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('MUTE:', 'X-2')");
  house.Bills(Bill({Hours({{"Desc", {}}}), Travel({{"Desc", {}}}),
                    Travel({{"TxnLineID", "X-8"}, {"Desc", {}}, {"ItemRef", "<ListID>X-2</ListID>"}})}));
  EXPECT_EQ(house.Time("TEDescription"), "Design work");
  EXPECT_EQ(house.Expense("ELDescription"), "Travel by rail");
  EXPECT_EQ(house.Expense("ELDescription", "X-8"), "From QuickBooks");
}

TEST(VendorBillsIn, A_long_description_is_cut) {
  BillsInHouse house;
  const std::string text = "A" + std::string(300, 'b');
  house.Bills(Bill({Hours({{"Desc", text}}), Travel({{"Desc", text}})}));
  EXPECT_EQ(house.Time("TEDescription"), text.substr(0, 255));
  EXPECT_EQ(house.Expense("ELDescription"), text.substr(0, 255));
}

TEST(VendorBillsIn, Lines_of_no_customer_and_of_no_project_are_left) {
  BillsInHouse house;
  house.Bills(Bill({Hours({{"CustomerRef", {}}}),
                    Travel({{"CustomerRef", "<ListID>Z-1</ListID><FullName>Nobody:Here</FullName>"}}), AccountLine()}));
  EXPECT_EQ(house.Count("TimeEntry"), "0");
  EXPECT_EQ(house.RowsOf("QBLinkID", "ExpenseLog"), "E-1");
  EXPECT_TRUE(house.Requests("CustomerQueryRq").empty());
}

TEST(VendorBillsIn, A_customer_comes_in_as_client_and_project_first) {
  BillsInHouse house;
  const auto customer = house.AddCustomer("<Name>Barnes</Name>");
  house.Bills(Bill({Hours({{"CustomerRef", Element("ListID", customer) + "<FullName>Barnes</FullName>"}})}));
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM Client WHERE QBLinkID = '" + customer + "'"), "1");
  EXPECT_EQ(house.Time("ProjectID"), house.Scalar("SELECT ProjectID FROM Project WHERE QBLinkID = '" + customer + "'"));
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(VendorBillsIn, A_tax_is_per_cent_of_the_amount_in_two_decimals) {
  const auto amount = [](double value) { return Currency::FromDouble(value); };
  EXPECT_EQ(TaxPercent(amount(7), amount(100)), 7);
  EXPECT_EQ(TaxPercent(amount(1), amount(3)), 33.33);
  EXPECT_EQ(TaxPercent(amount(2), amount(3)), 66.67);
  EXPECT_EQ(TaxPercent(amount(0.99), amount(100)), 0);
  EXPECT_EQ(TaxPercent(amount(7), amount(0.5)), 0);
}

// --- Lines that are here ---------------------------------------------------------------------------------------------

TEST(VendorBillsIn, A_line_that_is_here_is_written_over_and_keeps_what_only_new_rows_get) {
  BillsInHouse house;
  house.HereAsTime("L-1", {{"TEPosted", "0"}});
  house.HereAsExpense("X-9", {{"ELMarkup", "12"}});
  house.Bills(Bill({Hours(), Travel()}));
  EXPECT_EQ(house.Time("EmployeeID"), "SMITH");
  EXPECT_EQ(house.Time("TEPosted"), "0");
  EXPECT_EQ(house.Time("TEID"), "{L-1}");
  EXPECT_EQ(house.Expense("EmployeeID"), "SMITH");
  EXPECT_EQ(house.Expense("ELMarkup"), "12");
  EXPECT_EQ(house.Expense("VendorBillID"), house.Header("VendorBillID"));
}

TEST(VendorBillsIn, A_row_that_was_billed_keeps_its_values_and_is_still_of_the_bill) {
  BillsInHouse house;
  house.HereAsExpense("X-9", {{"ELBilled", "'B'"}});
  house.HereAsTime("L-1", {{"TEBillStatus", "'P'"}});
  house.Bills(Bill({Travel(), Hours()}));
  EXPECT_EQ(house.Expense("EmployeeID"), "OLD");
  EXPECT_EQ(house.Expense("VendorBillID"), house.Header("VendorBillID"));
  EXPECT_EQ(house.Time("EmployeeID"), "OLD");
  EXPECT_EQ(house.Count("VendorBill"), "1") << "a line was met";
}

TEST(VendorBillsIn, Hours_that_are_here_are_handed_to_the_expenses_where_no_row_is_found) {
  BillsInHouse house;
  house.HereAsTime("L-1", {{"TEBillStatus", "'B'"}});
  house.Bills(Bill({Hours()}));
  EXPECT_TRUE(house.Asked("UPDATE EXPENSELOG SET VendorBillID = '" + house.Header("VendorBillID") +
                          "' WHERE QBLinkID = 'L-1';"));
  EXPECT_EQ(house.Time("VendorBillID"), "NULL");
}

class Dialects : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(Dialects, Find_the_same_row_by_their_own_literals) {
  const auto& [provider, literal] = GetParam();
  BillsInHouse house({.provider = provider});
  Vars().g_DbKind = provider == "SQLITE" ? "SQL" : "JET";
  const std::string id = "11111111-2222-3333-4444-555555555555";
  house.HereAsTime(id, {{"TEBillStatus", "'B'"}});
  house.HereAsExpense(id, {{"ELBilled", "'B'"}});
  house.Bills(Bill({Hours({{"TxnLineID", id}}), Travel({{"TxnLineID", id}})}));
  EXPECT_TRUE(house.Asked("SELECT TEBillStatus FROM TimeEntry WHERE TEID=" + literal + ";"));
  EXPECT_TRUE(house.Asked("SELECT ELBilled FROM ExpenseLog WHERE ELID=" + literal + ";"));
  EXPECT_EQ(house.Time("EmployeeID", id), "OLD");
  EXPECT_EQ(house.Expense("EmployeeID", id), "OLD");
}

INSTANTIATE_TEST_SUITE_P(VendorBillsIn, Dialects,
                         testing::Values(std::pair("SQLITE", "'{11111111-2222-3333-4444-555555555555}'"),
                                         std::pair("JETLITE", "{guid {11111111-2222-3333-4444-555555555555}}")),
                         [](const auto& test) { return test.param.first; });

TEST(VendorBillsIn, The_later_side_wins_line_by_line) {
  BillsInHouse house;
  house.HereAsTime("L-1");
  house.HereAsExpense("X-9", {{"LastUpdated", "NULL"}});
  house.Bills(Bill({Hours(), Travel()}), kMostRecent);
  EXPECT_EQ(house.Time("EmployeeID"), "OLD");
  EXPECT_EQ(house.Expense("EmployeeID"), "SMITH");
}

TEST(VendorBillsIn, Never_leaves_lines_that_are_here_and_takes_them_for_lines_of_the_bill) {
  BillsInHouse house;
  house.HereAsExpense("X-9");
  house.Bills(Bill({Travel()}), kNever);
  EXPECT_EQ(house.Expense("EmployeeID"), "OLD");
  EXPECT_EQ(house.Count("VendorBill"), "1");
}

TEST(VendorBillsIn, Tables_of_lines_are_opened_for_the_rows_that_are_linked) {
  BillsInHouse house;
  house.Bills(Bill({Hours(), Travel()}));
  EXPECT_TRUE(house.Asked("SELECT * FROM TimeEntry WHERE QBLINKID IS NOT NULL;"));
  EXPECT_TRUE(house.Asked("SELECT * FROM ExpenseLog WHERE QBLINKID IS NOT NULL;"));
}

// --- Errors ----------------------------------------------------------------------------------------------------------

const std::string kOneBillFailed =
    "There were 1 bills that did not transfer properly. Please\r\nreview the log file for additional details or try "
    "resending.";

TEST(VendorBillsIn, An_error_in_a_line_is_logged_and_the_bill_goes_on_with_what_is_behind) {
  BillsInHouse house({}, Breaks("SELECT ProjectName FROM Project", 2));
  house.Bills(Bill({AccountLine(), Hours(), Hours({{"TxnLineID", "L-2"}}), Hours({{"TxnLineID", "L-3"}})}) +
              Bill({Hours({{"TxnLineID", "L-4"}})}, {{"TxnID", "2-1"}}));
  EXPECT_EQ(
      house.Log(),
      Texts{"Error getting Bill No. S-77 and row number 2 to QB. Vendor = SMITH BIll Date 3/3/2008 Error Number = "
            "-2147217900 Error Description = Broken."});
  EXPECT_EQ(house.RowsOf("QBLinkID", "TimeEntry"), "L-1\nL-4");
  EXPECT_EQ(house.RowsOf("QBLinkID", "ExpenseLog"), "E-1");
  EXPECT_EQ(house.BoxTexts(), Texts{kOneBillFailed});
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(VendorBillsIn, A_bill_whose_only_line_has_an_error_is_logged_counted_and_deleted_again) {
  BillsInHouse house({}, Breaks("SELECT ProjectName FROM Project"));
  house.Bills(Bill({Hours()}));
  EXPECT_EQ(
      house.Log(),
      Texts{"Error getting Bill No. S-77 and row number 1 to QB. Vendor = SMITH BIll Date 3/3/2008 Error Number = "
            "-2147217900 Error Description = Broken."});
  ASSERT_EQ(house.BoxTexts(), Texts{kOneBillFailed});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Message");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.Statements("DELETE FROM VendorBill").size(), 1U);
  EXPECT_EQ(house.Count("VendorBill"), "0");
  EXPECT_EQ(house.Count("TimeEntry"), "0");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(VendorBillsIn, A_line_that_can_not_be_stored_is_no_line) {
  BillsInHouse house({}, "row 1 raise 0x80040E2F \"Full.\" TimeEntry\n");
  house.Bills(Bill({Hours()}) + Bill({Hours({{"TxnLineID", "L-2"}})}, {{"TxnID", "2-1"}}));
  EXPECT_EQ(house.RowsOf("QBLinkID", "TimeEntry"), "L-2");
  EXPECT_EQ(house.RowsOf("QBLinkID", "VendorBill"), "2-1");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(VendorBillsIn, A_code_that_can_not_be_looked_up_is_none) {
  BillsInHouse house({}, Breaks("SELECT ActivityID FROM Activity"));
  house.Bills(Bill({Hours()}));
  EXPECT_TRUE(house.Asked("SELECT ExpID FROM Expense WHERE QBLinkID = 'A-1';"));
  EXPECT_EQ(house.Count("VendorBill"), "0");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(VendorBillsIn, An_error_in_the_bill_itself_ends_the_run_with_a_box) {
  BillsInHouse house({}, "row 1 raise 0x80040E2F \"Full.\" VendorBill\n");
  house.Bills(Bill({Hours()}) + Bill({Hours()}, {{"TxnID", "2-1"}}));
  EXPECT_EQ(house.BoxTexts(), Texts{OwnBox("MoveVendorBillToTW", "Full.", -2147217873)});
  EXPECT_EQ(house.Count("VendorBill"), "0");
  EXPECT_EQ(Outcome(), TableOk::False);
}

}  // namespace
}  // namespace twqb
