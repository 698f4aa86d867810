// Expenses to QuickBooks: whose rows are one bill, the person to bill, lines and what they are linked to, refusals.

#include <gtest/gtest.h>

#include "tests/transactions/BillsHouse.h"

namespace twqb {
namespace {

using VendorForms = std::vector<std::string>;  // whom the form was about

VendorForms AskedAbout(const ExpensesHouse& house) {
  VendorForms about;
  for (const auto& form : house.desk.VendorForms()) about.push_back(form.message);
  return about;
}
std::string Question(std::string_view employee) {
  return "Tallywick allows you to transfer employee expenses as a vendor bill in QuickBooks. However, it needs to know "
         "which vendor to use for employee " +
         std::string(employee) + ".";
}

// --- Bills -----------------------------------------------------------------------------------------------------------

TEST(ExpenseLogSend, The_rows_of_a_vendor_are_one_bill_with_a_line_each_and_are_linked_by_their_places) {
  ExpensesHouse house;
  house.Expense("E1", {{"ELDescription", "'Train'"}, {"ELMarkup", "50"}});
  house.Expense("E2", {{"ELUnits", "3"}, {"ELCost", "1.115"}, {"ELBillable", "0"}, {"ELDate", "'2008-02-12'"}});
  house.SendAll();
  EXPECT_EQ(house.Header(), "<VendorRef><ListID>" + house.vendor +
                                "</ListID></VendorRef><TxnDate>2008-02-12</TxnDate><DueDate>2008-03-13</DueDate>");
  const auto item = "<ItemRef><ListID>" + house.expense + "</ListID></ItemRef>";
  const auto customer = "<CustomerRef><ListID>" + house.job + "</ListID></CustomerRef>";
  EXPECT_EQ(house.Lines(), (Texts{item + "<Desc>Train</Desc><Quantity>2</Quantity><Amount>20.00</Amount>" + customer +
                                      "<BillableStatus>Billable</BillableStatus>",
                                  item + "<Quantity>3</Quantity><Amount>3.35</Amount>" + customer +
                                      "<BillableStatus>NotBillable</BillableStatus>"}));
  const auto bill = ReplaceAll(Vars().g_PassedID, "'", "");
  EXPECT_EQ(Vars().g_PassedID, "'" + bill + "'");
  const auto ids = house.LineIds(bill);
  ASSERT_EQ(ids.size(), 2U);
  EXPECT_EQ(house.Statements("UPDATE "),
            (Texts{"UPDATE ExpenseLog SET QBLinkID = '" + ids[0] + "' WHERE ELID = 'E1';",
                   "UPDATE ExpenseLog SET QBLinkID = '" + ids[1] + "' WHERE ELID = 'E2';",
                   "UPDATE ExpenseLog SET LastUpdated = '03/05/2008 15:00:00' WHERE (ELID IN('E1','E2'));"}));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Expenses to QuickBooks..."});
  EXPECT_FALSE(house.desk.Form());
}

TEST(ExpenseLogSend, Rows_of_two_vendors_are_two_bills_each_dated_by_its_last_dated_row) {
  ExpensesHouse house;
  house.Vendor("TAYLOR", "Taylor Ltd");
  house.Expense("E1");
  house.Expense("E2", {{"ELDate", "NULL"}});
  house.Expense("E3", {{"EmployeeID", "'TAYLOR'"}, {"ELDate", "NULL"}});
  house.SendAll();
  ASSERT_EQ(house.Requests("BillAddRq").size(), 2U);
  EXPECT_EQ(house.Lines(0).size(), 2U);
  EXPECT_EQ(house.Lines(1).size(), 1U);
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(0), "TxnDate"), "2008-02-10");
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(0), "DueDate"), "2008-03-11");
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(1), "TxnDate"), "1990-01-01");
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(1), "DueDate"), "1990-01-31");
  EXPECT_EQ(Split(Vars().g_PassedID, ',').size(), 2U);
}

TEST(ExpenseLogSend, Rows_that_have_dates_keep_them_unless_one_of_their_bill_has_none) {
  ExpensesHouse house;
  house.Vendor("TAYLOR", "Taylor Ltd");
  house.Expense("E1", {{"LastUpdated", "'2008-01-02 03:04:05'"}});
  house.Expense("E2", {{"LastUpdated", "'2008-01-02 03:04:05'"}, {"EmployeeID", "'TAYLOR'"}});
  house.Expense("E3", {{"EmployeeID", "'TAYLOR'"}});
  house.SendAll();
  EXPECT_EQ(house.Statements("UPDATE ExpenseLog SET LastUpdated"),
            Texts{"UPDATE ExpenseLog SET LastUpdated = '03/05/2008 15:00:00' WHERE (ELID IN('E2','E3'));"});
}

TEST(ExpenseLogSend, A_bill_that_stayed_here_leaves_the_next_one_no_date_and_what_is_to_be_stamped) {
  ExpensesHouse house({.answers = "yes"}, Refuses("BillAddRq", 1, 3000));
  house.Vendor("TAYLOR", "Taylor Ltd");
  house.Expense("E1");
  house.Expense("E2", {{"LastUpdated", "'2008-01-02 03:04:05'"}, {"EmployeeID", "'TAYLOR'"}, {"ELDate", "NULL"}});
  house.SendAll();
  ASSERT_EQ(house.Requests("BillAddRq").size(), 2U);
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(1), "TxnDate"), "1990-01-01");
  EXPECT_EQ(house.Statements("UPDATE ExpenseLog SET LastUpdated"),
            Texts{"UPDATE ExpenseLog SET LastUpdated = '03/05/2008 15:00:00' WHERE (ELID IN('E2'));"});
}

TEST(ExpenseLogSend, The_identifier_of_the_last_bill_is_the_record_last_added) {
  ExpensesHouse house;
  house.Expense("E1");
  house.SendAll();
  EXPECT_EQ("'" + Vars().g_NewQBLinkID + "'", Vars().g_PassedID);
}

TEST(ExpenseLogSend, With_no_selected_rows_it_ends_well_and_forgets_what_was_passed) {
  ExpensesHouse house;
  Vars().g_PassedID = "old";
  house.SendAll();
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_EQ(Vars().g_PassedID, "");
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_TRUE(house.traffic.documents.empty());
}

TEST(ExpenseLogSend, A_link_that_is_no_check_and_no_charge_is_stale_and_one_of_blanks_is_none) {
  ExpensesHouse house;
  house.Expense("E1", {{"QBLinkID", "'FFF-1'"}});
  house.Expense("E2", {{"QBLinkID", "'  '"}});
  house.SendAll();
  EXPECT_EQ(house.Requests("CheckQueryRq").size(), 1U);
  EXPECT_EQ(house.Requests("CreditCardChargeQueryRq").size(), 1U);
  EXPECT_EQ(house.Lines().size(), 2U);
  EXPECT_NE(house.LinkOf("E1"), "FFF-1");
}

struct Paid {
  std::string kind;
  std::string accountType;
};

class PaidExpenses : public testing::TestWithParam<Paid> {};

TEST_P(PaidExpenses, That_QuickBooks_holds_are_left_alone) {
  ExpensesHouse house;
  house.Add("Account", "<Name>Money</Name><AccountType>" + GetParam().accountType + "</AccountType>");
  const auto answer = house.Company(
      fmt::format("<{0}AddRq><{0}Add><AccountRef><FullName>Money</FullName></AccountRef><ExpenseLineAdd><AccountRef>"
                  "<FullName>Costs</FullName></AccountRef><Amount>5.00</Amount></ExpenseLineAdd></{0}Add></{0}AddRq>",
                  GetParam().kind));
  const auto paid = SpiedHouse::TextOf(answer, "TxnID");
  ASSERT_NE(paid, "(none)") << answer;
  house.Expense("E1", {{"QBLinkID", "'" + paid + "'"}});
  house.SendAll();
  EXPECT_TRUE(house.Requests("BillAddRq").empty());
  EXPECT_EQ(house.LinkOf("E1"), paid);
}

INSTANTIATE_TEST_SUITE_P(ExpenseLogSend, PaidExpenses,
                         testing::Values(Paid{"Check", "Bank"}, Paid{"CreditCardCharge", "CreditCard"}),
                         [](const auto& test) { return test.param.kind; });

// --- The person to bill ----------------------------------------------------------------------------------------------

TEST(ExpenseLogSend, An_employee_s_rows_are_billed_as_the_vendor_that_is_picked_once_for_the_bill) {
  ExpensesHouse house({.answers = "vendor SMITH"});
  house.Expense("E1", {{"EmployeeID", "'AL'"}, {"isSub", "0"}});
  house.Expense("E2", {{"EmployeeID", "'AL'"}, {"isSub", "0"}});
  house.SendAll();
  EXPECT_EQ(AskedAbout(house), VendorForms{Question("AL")});
  EXPECT_EQ(house.desk.VendorForms()[0].choices, Texts{"SMITH"});
  EXPECT_EQ(SpiedHouse::TextOf(house.Header(), "ListID"), house.vendor);
  EXPECT_EQ(house.Lines().size(), 2U);
  EXPECT_TRUE(house.IsSent("E1") && house.IsSent("E2"));
  EXPECT_EQ(Vars().g_PickedVendor, "");
}

TEST(ExpenseLogSend, Nobody_is_asked_where_there_is_no_vendor_to_pick_and_the_rows_are_passed_over_without_a_word) {
  ExpensesHouse house;
  house.Sql("UPDATE Employee SET QBLinkID = NULL");
  house.Expense("E1", {{"EmployeeID", "'AL'"}, {"isSub", "0"}});
  house.SendAll();
  EXPECT_TRUE(house.desk.VendorForms().empty());
  EXPECT_TRUE(house.Requests("BillAddRq").empty());
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ExpenseLogSend, After_a_skip_the_next_row_goes_on_a_bill_without_a_vendor_which_QuickBooks_refuses) {
  ExpensesHouse house({.answers = "skip\nyes"});
  house.Expense("E1", {{"EmployeeID", "'AL'"}, {"isSub", "0"}});
  house.Expense("E2", {{"EmployeeID", "'AL'"}, {"isSub", "0"}});
  house.Expense("E3");
  house.SendAll();
  EXPECT_EQ(AskedAbout(house).size(), 1U);
  ASSERT_EQ(house.Requests("BillAddRq").size(), 2U);
  EXPECT_EQ(house.Header(0).find("VendorRef"), std::string::npos);
  EXPECT_EQ(house.Lines(0).size(), 1U);
  EXPECT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_FALSE(house.IsSent("E1") || house.IsSent("E2"));
  EXPECT_TRUE(house.IsSent("E3"));
}

TEST(ExpenseLogSend, A_vendor_without_a_link_passes_the_first_row_over) {
  ExpensesHouse house;
  house.Insert("Employee", {{"EmployeeID", "'NEW'"}, {"IsSub", "-1"}});
  house.Expense("E1", {{"EmployeeID", "'NEW'"}});
  house.Expense("E2");
  house.SendAll();
  EXPECT_EQ(house.Requests("BillAddRq").size(), 1U);
  EXPECT_TRUE(house.IsSent("E2"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- Lines -----------------------------------------------------------------------------------------------------------

TEST(ExpenseLogSend, A_row_of_an_unlinked_project_leaves_no_line_and_one_of_an_unlinked_code_an_empty_one) {
  ExpensesHouse house;
  house.Insert("Project", {{"ProjectID", "'YARD:'"}});
  house.Insert("Expense", {{"ExpID", "'HOTEL:'"}});
  house.Expense("E1", {{"ProjectID", "'YARD:'"}});
  house.Expense("E2", {{"ExpID", "'HOTEL:'"}});
  house.Expense("E3");
  house.SendAll();
  const auto lines = house.Lines();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], "");
  EXPECT_NE(lines[1], "");
}

TEST(ExpenseLogSend, A_row_without_a_project_gets_as_far_as_its_amount) {
  ExpensesHouse house;
  house.Expense("E1", {{"ProjectID", "NULL"}});
  house.Expense("E2");
  house.SendAll();
  EXPECT_EQ(house.Lines()[0],
            "<ItemRef><ListID>" + house.expense + "</ListID></ItemRef><Quantity>2</Quantity><Amount>20.00</Amount>");
}

TEST(ExpenseLogSend, A_row_that_says_little_goes_without) {
  ExpensesHouse house;
  house.Expense("E1", {{"ExpID", "NULL"}, {"ELUnits", "NULL"}, {"ELBillable", "NULL"}});
  house.Expense("E2", {{"ELCost", "NULL"}});
  house.Expense("E3");
  house.SendAll();
  EXPECT_EQ(house.Lines()[0], "<Amount>0.00</Amount><CustomerRef><ListID>" + house.job + "</ListID></CustomerRef>");
  EXPECT_EQ(SpiedHouse::TextOf(house.Lines()[1], "Amount"), "0.00");
}

TEST(ExpenseLogSend, The_class_is_the_project_s_or_else_the_code_s) {
  ExpensesHouse house;
  const auto east = house.Add("Class", "<Name>East</Name>");
  house.Sql("UPDATE Expense SET QBClassID = '" + east + "'");
  house.Expense("E1");
  house.SendAll();
  EXPECT_NE(house.Lines()[0].find("<ClassRef><ListID>" + east + "</ListID></ClassRef>"), std::string::npos);
  EXPECT_TRUE(house.Asked("SELECT QBClassID FROM Project WHERE QBLinkID = '" + house.job + "';"));
  EXPECT_TRUE(house.Asked("SELECT QBClassID FROM Expense WHERE QBLinkID = '" + house.expense + "';"));
}

// --- Refusals and errors ---------------------------------------------------------------------------------------------

TEST(ExpenseLogSend, A_bill_that_can_not_be_sent_is_logged_and_told_at_the_end) {
  ExpensesHouse house({}, "DoRequests 1 raise 0x80040404 \"Broken.\"\n");
  house.Vendor("TAYLOR", "Taylor Ltd");
  house.Expense("E1");
  house.Expense("E2");
  house.Expense("E3", {{"EmployeeID", "'TAYLOR'"}});
  house.SendAll();
  EXPECT_EQ(house.Log(), Texts{"Could not transfer Bill to QB, because its amount is zero. ELID = 'E1','E2'"});
  ASSERT_EQ(house.BoxTexts(), Texts{ProblemBox()});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_TRUE(house.IsSent("E3"));
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ExpenseLogSend, A_refusal_is_asked_about_and_yes_goes_on) {
  ExpensesHouse house({.answers = "yes"}, Refuses("BillAddRq", 1, 3000));
  house.Vendor("TAYLOR", "Taylor Ltd");
  house.Expense("E1");
  house.Expense("E2", {{"EmployeeID", "'TAYLOR'"}});
  house.SendAll();
  ASSERT_EQ(house.BoxTexts(), Texts{kAsk});
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Question);
  EXPECT_TRUE(house.IsSent("E2"));
}

TEST(ExpenseLogSend, No_leaves_the_table_without_a_word_about_it) {
  ExpensesHouse house({.answers = "no"}, Refuses("BillAddRq", 1, 3000));
  house.Vendor("TAYLOR", "Taylor Ltd");
  house.Expense("E1");
  house.Expense("E2", {{"EmployeeID", "'TAYLOR'"}});
  house.SendAll();
  EXPECT_EQ(house.BoxTexts(), Texts{kAsk});
  EXPECT_EQ(house.Requests("BillAddRq").size(), 1U);
  EXPECT_TRUE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ExpenseLogSend, An_invalid_reference_leaves_the_table) {
  ExpensesHouse house({}, Refuses("BillAddRq", 1, 3140));
  house.Vendor("TAYLOR", "Taylor Ltd");
  house.Expense("E1");
  house.Expense("E2", {{"EmployeeID", "'TAYLOR'"}});
  house.SendAll();
  ASSERT_EQ(house.BoxTexts(), Texts{kInvalidBillAccount});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::None);
  EXPECT_EQ(house.Requests("BillAddRq").size(), 1U);
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ExpenseLogSend, Cancel_ends_the_run_behind_the_row_in_hand_and_the_bill_that_it_completed) {
  ExpensesHouse house({.answers = "cancel after 2\nyes"});
  house.Vendor("TAYLOR", "Taylor Ltd");
  house.Vendor("UPTON", "Upton Ltd");
  house.Expense("E1");
  house.Expense("E2", {{"EmployeeID", "'TAYLOR'"}});
  house.Expense("E3", {{"EmployeeID", "'UPTON'"}});
  house.SendAll();
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled}));
  EXPECT_TRUE(house.IsSent("E1"));
  EXPECT_FALSE(house.IsSent("E3"));
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ExpenseLogSend, Without_a_bar_nothing_is_shown) {
  ExpensesHouse house;
  Vars().g_NoProgressBar = true;
  house.Expense("E1");
  house.SendAll();
  EXPECT_TRUE(house.IsSent("E1"));
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(ExpenseLogSend, An_error_ends_the_run_in_a_box_of_its_own) {
  ExpensesHouse house({}, Breaks("UPDATE ExpenseLog SET QBLinkID"));
  house.Expense("E1");
  house.SendAll();
  ASSERT_EQ(house.BoxTexts(), Texts{"Error in 'MoveExpenseLogToQB()' :- Broken.\r\nError No = -2147217900"});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ExpenseLogSend, The_call_back_hears_the_identifier_of_each_bill) {
  ExpensesHouse house;
  Vars().g_IsSubscribed = true;
  house.Expense("E1");
  house.SendAll();
  EXPECT_EQ(house.callback.Events(),
            (std::vector<CallbackEvent>{1, std::string(), ReplaceAll(Vars().g_PassedID, "'", "")}));
}

}  // namespace
}  // namespace twqb
