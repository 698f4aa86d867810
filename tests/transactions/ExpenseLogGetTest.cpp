// The get of expenses: lines of checks, charges and bills, whole transactions, the conflict rule, what is passed over.

#include <gtest/gtest.h>

#include "tests/transactions/CostsHouse.h"
#include "transactions/ExpenseLogIn.h"

namespace twqb {
namespace {

constexpr TestedTable kTested = Got(enExpenseLog, "ExpenseLog", "ELID", MoveExpenseLogToTW);

// Two tickets at 12.50.
std::string Item(const Changes& changes = {}) {
  return Line("ItemLine",
              {{"TxnLineID", "L-1"},
               {"ItemRef", kTravelRef},
               {"Desc", "To the site"},
               {"Quantity", "2"},
               {"Cost", "12.50"},
               {"Amount", "25.00"},
               {"CustomerRef", kJobRef}},
              changes);
}
Elements HeadOf(std::string_view payee) {
  return {{"TxnID", "1-1"},
          {"TimeModified", std::string(kModified)},
          {"AccountRef", "<FullName>Checking</FullName>"},
          {std::string(payee), kVendorRef},
          {"TxnDate", "2008-03-03"},
          {"Amount", "35.00"}};
}
std::string Check(const Texts& lines, const Changes& changes = {}) {
  return With(RecordOf("Check", HeadOf("PayeeEntityRef"), changes), lines);
}
std::string Charge(const Texts& lines) {
  return With(RecordOf("CreditCardCharge", HeadOf("PayeeEntityRef"), {}), lines);
}
std::string Bill(const Texts& lines, const Changes& changes = {}) {
  auto head = HeadOf("VendorRef");
  std::erase_if(head, [](const auto& element) { return element.first == "AccountRef" || element.first == "Amount"; });
  return With(RecordOf("Bill", head, changes), lines);
}

class ExpenseLogHouse : public CostsHouse {
 public:
  explicit ExpenseLogHouse(HouseOptions options = {}, std::string_view faults = {})
      : CostsHouse(kTested, std::move(options), faults) {}
  void Checks(const std::string& text, MoveFlags flags = {}) { TakeAnswer("Check", text, flags, enChecks); }
  void Charges(const std::string& text) { TakeAnswer("CreditCardCharge", text, {}, enCreditCardCharges); }
  void Bills(const std::string& text, MoveFlags flags = {}) { TakeAnswer("Bill", text, flags, enBills); }

  // An expense that came in before, linked to the line.
  void Here(std::string_view link, const Columns& changed = {}) {
    Columns columns = {
        {"ExpID", "'OLD:'"}, {"ELBilled", "'N'"}, {"ELUnits", "1"}, {"LastUpdated", "'2008-03-05 15:00:00'"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns["ELID"] = fmt::format("'{{{}}}'", link);
    columns["QBLinkID"] = fmt::format("'{}'", link);
    Insert("ExpenseLog", columns);
    Clear();
  }
  [[nodiscard]] std::string Expense(std::string_view column, std::string_view link = "L-1") {
    return Scalar(fmt::format("SELECT {} FROM ExpenseLog WHERE QBLinkID = '{}'", column, link));
  }
  [[nodiscard]] std::string Expenses() { return RowsOf("QBLinkID,ExpID,ELChgAmt", "ExpenseLog"); }
};

// --- Lines -----------------------------------------------------------------------------------------------------------

TEST(ExpenseLogIn, A_line_of_a_check_becomes_a_row_with_every_column) {
  ExpenseLogHouse house;
  house.Checks(Check({Item()}));
  const std::pair<std::string_view, std::string_view> columns[] = {{"EmployeeID", "SMITH"},
                                                                   {"ProjectID", "ROOF:"},
                                                                   {"ExpID", "TRAVEL:"},
                                                                   {"ELDescription", "To the site"},
                                                                   {"ELChgAmt", "25"},
                                                                   {"ELCost", "12.5"},
                                                                   {"ELUnits", "2"},
                                                                   {"ELMarkup", "0"},
                                                                   {"LastUpdated", "3/5/2008 3:00:00 PM"},
                                                                   {"ELDate", "3/3/2008"},
                                                                   {"ELBillable", "-1"},
                                                                   {"ELBilled", "N"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Expense(column), value) << column;
  EXPECT_TRUE(IsGuid(house.Expense("ELID")));
  EXPECT_EQ(house.Count("ExpenseLog"), "1");
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(ExpenseLogIn, A_line_on_an_account_goes_by_its_class_and_has_neither_cost_nor_units) {
  ExpenseLogHouse house;
  house.Checks(Check({AccountLine({{"ClassRef", kTravelRef}})}));
  EXPECT_TRUE(house.Asked("SELECT ExpID, ExpDescription FROM Expense WHERE QBLinkID = 'X-1';"));
  EXPECT_EQ(house.Expense("ExpID", "E-1"), "TRAVEL:");
  EXPECT_EQ(house.Expense("ELDescription", "E-1"), "Fuel");
  EXPECT_EQ(house.Expense("ELChgAmt", "E-1"), "10");
  EXPECT_EQ(house.Expense("ELCost", "E-1"), "0");
  EXPECT_EQ(house.Expense("ELUnits", "E-1"), "0");
}

TEST(ExpenseLogIn, Checks_charges_and_bills_pass_through_one_routine) {
  ExpenseLogHouse house;
  house.Checks(Check({Item()}));
  house.Charges(Charge({Item({{"TxnLineID", "L-2"}})}));
  house.Bills(Bill({Item({{"TxnLineID", "L-3"}})}));
  EXPECT_EQ(house.Expenses(), "L-1|TRAVEL:|25\nL-2|TRAVEL:|25\nL-3|TRAVEL:|25");
  for (const std::string link : {"L-1", "L-2", "L-3"}) EXPECT_EQ(house.Expense("EmployeeID", link), "SMITH") << link;
}

TEST(ExpenseLogIn, The_form_says_which_of_the_three_are_read_and_goes) {
  ExpenseLogHouse house;
  house.Checks(Check({Item()}));
  house.Charges(Charge({Item({{"TxnLineID", "L-2"}})}));
  house.Bills(Bill({Item({{"TxnLineID", "L-3"}})}));
  Texts shown;
  int gone = 0;
  for (const auto& event : house.desk.FormEvents()) {
    if (event.kind == FormEventKind::Show) shown.push_back(event.state.action);
    if (event.kind == FormEventKind::Unload) ++gone;
  }
  EXPECT_EQ(shown, (Texts{"Getting Checks from QuickBooks...", "Getting Credit Card Charges from QuickBooks...",
                          "Getting Bills from QuickBooks..."}));
  EXPECT_EQ(gone, 3);
  EXPECT_FALSE(house.desk.Form());
}

TEST(ExpenseLogIn, Without_a_person_the_manager_of_the_project_has_spent_it) {
  ExpenseLogHouse house;
  house.Checks(Check({Item()}, {{"PayeeEntityRef", kUnknownRef}}));
  EXPECT_EQ(house.Expense("EmployeeID"), "BOSS");
}

TEST(ExpenseLogIn, A_person_who_can_not_be_looked_up_is_nobody) {
  ExpenseLogHouse house({}, Breaks("SELECT EmployeeID FROM Employee"));
  house.Checks(Check({Item()}));
  EXPECT_EQ(house.Expense("EmployeeID"), "BOSS");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ExpenseLogIn, Words_of_the_line_come_before_those_of_the_code) {
  ExpenseLogHouse house;
  house.Checks(Check({Item(), Item({{"TxnLineID", "L-2"}, {"Desc", {}}})}));
  EXPECT_EQ(house.Expense("ELDescription", "L-1"), "To the site");
  EXPECT_EQ(house.Expense("ELDescription", "L-2"), "Travel by rail");
}

TEST(ExpenseLogIn, A_long_description_is_cut) {
  ExpenseLogHouse house;
  house.Checks(Check({Item({{"Desc", "A" + std::string(300, 'b')}})}));
  EXPECT_EQ(house.Expense("ELDescription"), "A" + std::string(254, 'b'));
}

TEST(ExpenseLogIn, An_unknown_item_goes_under_the_reserved_code_but_not_from_a_bill) {
  ExpenseLogHouse house;
  const auto line = Item({{"ItemRef", kUnknownRef}});
  house.Bills(Bill({line}));
  EXPECT_EQ(house.Count("ExpenseLog"), "0");
  house.Checks(Check({line}));
  EXPECT_EQ(house.Expenses(), "L-1|FROMQB:|25");
}

TEST(ExpenseLogIn, A_line_without_an_item_goes_under_the_reserved_code_from_a_bill_too) {
  ExpenseLogHouse house;
  house.Bills(Bill({Item({{"ItemRef", {}}})}));
  EXPECT_EQ(house.Expenses(), "L-1|FROMQB:|25");
}

TEST(ExpenseLogIn, An_unknown_class_goes_under_the_reserved_code_from_a_bill_too) {
  ExpenseLogHouse house;
  house.Bills(Bill({AccountLine({{"ClassRef", kUnknownRef}})}));
  EXPECT_EQ(house.Expenses(), "E-1|FROMQB:|10");
}

TEST(ExpenseLogIn, A_not_billable_line_arrives_without_a_charge_and_billable) {
  ExpenseLogHouse house;
  house.Checks(Check({Item({{"BillableStatus", "NotBillable"}})}));
  EXPECT_EQ(house.Expense("ELChgAmt"), "0");
  EXPECT_EQ(house.Expense("ELBillable"), "-1");
  EXPECT_EQ(house.Expense("ELBilled"), "N");
}

TEST(ExpenseLogIn, A_line_that_was_billed_there_arrives_as_billed) {
  ExpenseLogHouse house;
  house.Checks(Check({Item({{"BillableStatus", "HasBeenBilled"}})}));
  EXPECT_EQ(house.Expense("ELChgAmt"), "25");
  EXPECT_EQ(house.Expense("ELBillable"), "-1");
  EXPECT_EQ(house.Expense("ELBilled"), "P");
}

TEST(ExpenseLogIn, Lines_of_no_customer_of_the_retainer_account_and_groups_are_passed_over) {
  ExpenseLogHouse house;
  house.Bills(
      Bill({AccountLine({{"CustomerRef", {}}}), AccountLine({{"CustomerRef", "<ListID>P-1</ListID>"}}),
            AccountLine({{"AccountRef", "<FullName>TWUnearnedRetAccount</FullName>"}}), Item({{"CustomerRef", {}}}),
            "<ItemGroupLineRet><TxnLineID>G-1</TxnLineID><TotalAmount>5.00</TotalAmount></ItemGroupLineRet>"}));
  EXPECT_EQ(house.Count("ExpenseLog"), "0");
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ExpenseLogIn, A_job_that_is_not_here_is_logged_and_the_next_line_comes) {
  ExpenseLogHouse house;
  house.Bills(Bill({Item({{"CustomerRef", kUnknownRef}}), Item({{"TxnLineID", "L-2"}})}));
  EXPECT_EQ(house.Log(),
            Texts{"Move Expenses to TW: Skipping the record, because the job with List ID = 'Z-1 - Unheard "
                  "of' has not been transferred from QuickBooks to Tallywick"});
  EXPECT_EQ(house.Expenses(), "L-2|TRAVEL:|25");
}

TEST(ExpenseLogIn, A_project_of_nobody_is_logged) {
  ExpenseLogHouse house;
  house.Sql("UPDATE Project SET EmployeeID = NULL");
  house.Bills(Bill({Item()}));
  EXPECT_EQ(house.Log(), Texts{"Skipping the record, because Employee ID not found in the Projects table where "
                               "QBLinkID = 'P-1'"});
  EXPECT_EQ(house.Count("ExpenseLog"), "0");
}

// --- The reserved code -----------------------------------------------------------------------------------------------

TEST(ExpenseLogIn, The_reserved_code_is_added_once) {
  ExpenseLogHouse house;
  house.Checks(Check({Item()}));
  house.Checks(Check({Item({{"TxnLineID", "L-2"}})}));
  EXPECT_EQ(house.Statements("SELECT COUNT(ExpID) FROM Expense WHERE ExpID = 'FROMQB:'").size(), 2U);
  EXPECT_EQ(house.Statements("INSERT INTO Expense"),
            Texts{"INSERT INTO Expense(ExpID,ExpCode,ExpSub,ExpDescription,ExpCost,ExpMarkup,ExpBillable,Tax1_Rate,"
                  "Tax2_Rate,Tax3_Rate,Reimbursable,Exp_Memo,QBLinkID,LastUpdated) VALUES('FROMQB:','FROMQB','','From "
                  "QuickBooks',0,0,-1,0,0,0,-1,'',NULL,NULL);"});
}

TEST(ExpenseLogIn, A_reserved_code_that_can_not_be_added_is_logged_and_the_transfer_goes_on) {
  ExpenseLogHouse house({}, Breaks("INSERT INTO Expense"));
  house.Checks(Check({Item()}));
  const Texts lines = {"Could not add a record with ExpID = \"FROMQB:\" to the Expense table.",
                       "The following error occured: -", "Error Number = -2147217900", "Error Description: -Broken."};
  EXPECT_EQ(house.Log(), lines);
  EXPECT_EQ(house.Expenses(), "L-1|TRAVEL:|25");
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- What is here already --------------------------------------------------------------------------------------------

TEST(ExpenseLogIn, A_row_that_is_here_is_charged_by_cost_units_markup_and_taxes) {
  ExpenseLogHouse house;
  house.Here("L-1", {{"ELMarkup", "10"}, {"ELTax1", "5"}, {"ELTax2", "2.5"}, {"ELDate", "'2008-01-01'"}});
  house.Checks(Check({Item({{"BillableStatus", "NotBillable"}})}));
  // 25 with a tenth on it, and 7.5 per cent of that.
  EXPECT_EQ(house.Expense("ELChgAmt"), "29.5625");
  EXPECT_EQ(house.Expense("ELMarkup"), "10");
  EXPECT_EQ(house.Expense("ELDate"), "1/1/2008");
  EXPECT_EQ(house.Expense("ExpID"), "TRAVEL:");
  EXPECT_EQ(house.Expense("ELUnits"), "2");
  EXPECT_EQ(house.Count("ExpenseLog"), "1");
}

TEST(ExpenseLogIn, What_a_row_does_not_say_counts_as_nothing) {
  ExpenseLogHouse house;
  house.Here("L-1");
  house.Checks(Check({Item()}));
  EXPECT_EQ(house.Expense("ELChgAmt"), "25");
  EXPECT_EQ(house.Expense("ELMarkup"), "NULL");
}

// There is nothing to work the charge out of, whatever the amount.
TEST(ExpenseLogIn, A_row_that_is_here_loses_its_charge_to_a_line_without_cost_and_units) {
  ExpenseLogHouse house;
  house.Here("E-1", {{"ELChgAmt", "10"}, {"ELCost", "10"}, {"ELMarkup", "5"}});
  house.Here("L-1", {{"ELChgAmt", "25"}, {"ELCost", "25"}});
  house.Checks(Check({Item({{"Cost", {}}, {"Quantity", {}}}), AccountLine()}));
  for (const std::string link : {"E-1", "L-1"}) {
    EXPECT_EQ(house.Expense("ELChgAmt", link), "0") << link;
    EXPECT_EQ(house.Expense("ELCost", link), "0") << link;
    EXPECT_EQ(house.Expense("ELUnits", link), "0") << link;
    EXPECT_EQ(house.Expense("EmployeeID", link), "SMITH") << link;
  }
}

TEST(ExpenseLogIn, A_row_that_was_billed_is_left_as_it_is) {
  for (const std::string status : {"'B'", "'p'"}) {
    ExpenseLogHouse house;
    house.Here("L-1", {{"ELBilled", status}});
    house.Bills(Bill({Item()}));
    EXPECT_EQ(house.Expense("ExpID"), "OLD:") << status;
    EXPECT_TRUE(
        house.Asked("SELECT ELBilled, ELMarkup, ELTax1, ELTax2, ELTax3 from ExpenseLog WHERE QBLinkID = 'L-1';"));
  }
}

TEST(ExpenseLogIn, Never_leaves_a_row_that_is_here) {
  ExpenseLogHouse house;
  house.Here("L-1");
  house.Bills(Bill({Item(), Item({{"TxnLineID", "L-2"}})}), kNever);
  EXPECT_EQ(house.Expense("ExpID"), "OLD:");
  EXPECT_EQ(house.Expense("ExpID", "L-2"), "TRAVEL:");
}

TEST(ExpenseLogIn, The_later_side_wins_line_by_line) {
  ExpenseLogHouse house;
  house.Here("L-1");
  house.Here("L-2", {{"LastUpdated", "'2008-03-04 14:00:00'"}});  // the same moment: the record comes
  house.Here("L-3", {{"LastUpdated", "NULL"}});
  house.Bills(Bill({Item(), Item({{"TxnLineID", "L-2"}}), Item({{"TxnLineID", "L-3"}})}), kMostRecent);
  EXPECT_EQ(house.Expense("ExpID", "L-1"), "OLD:");
  EXPECT_EQ(house.Expense("ExpID", "L-2"), "TRAVEL:");
  EXPECT_EQ(house.Expense("ExpID", "L-3"), "TRAVEL:");
}

TEST(ExpenseLogIn, In_daylight_time_quickbooks_is_an_hour_later) {
  ExpenseLogHouse house({.zone = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Daylight}});
  // Nine o'clock in summer, as the clock of the record shows it, and a second behind that.
  house.Here("L-1", {{"LastUpdated", "'2008-03-04 13:00:00'"}});
  house.Here("L-2", {{"LastUpdated", "'2008-03-04 13:00:01'"}});
  house.Bills(Bill({Item(), Item({{"TxnLineID", "L-2"}})}), kMostRecent);
  EXPECT_EQ(house.Expense("ExpID", "L-1"), "TRAVEL:");
  EXPECT_EQ(house.Expense("ExpID", "L-2"), "OLD:");
}

class SameAgain : public testing::TestWithParam<std::pair<std::string, MoveFlags>> {};

TEST_P(SameAgain, Adds_nothing) {
  const auto& flags = GetParam().second;
  ExpenseLogHouse house;
  const auto lines = Check({Item(), AccountLine()});
  const auto whole = Check({}, {{"TxnID", "2-1"}, {"PayeeEntityRef", kJobRef}});
  // A payee who is a project, too: the lines of the second time are here, and the whole must not come beside them.
  const auto ofTheJob = Check({Item({{"TxnLineID", "L-9"}})}, {{"TxnID", "3-1"}, {"PayeeEntityRef", kJobRef}});
  house.Checks(lines + whole + ofTheJob, flags);
  const auto once = house.Expenses();
  EXPECT_EQ(once, "L-1|TRAVEL:|25\nE-1|FROMQB:|10\n2-1|FROMQB:|35\nL-9|TRAVEL:|25");
  house.Checks(lines + whole + ofTheJob, flags);
  EXPECT_EQ(house.Count("ExpenseLog"), "4");
}

INSTANTIATE_TEST_SUITE_P(ExpenseLogIn, SameAgain,
                         testing::Values(std::pair("Overwrite", MoveFlags{}), std::pair("NewerWins", kMostRecent),
                                         std::pair("LeaveAlone", kNever)),
                         [](const auto& test) { return test.param.first; });

// --- Whole transactions ----------------------------------------------------------------------------------------------

TEST(ExpenseLogIn, A_check_without_a_line_for_a_project_comes_as_a_whole_where_its_payee_is_one) {
  ExpenseLogHouse house;
  house.Checks(Check({AccountLine({{"CustomerRef", {}}})}, {{"PayeeEntityRef", kJobRef}, {"Memo", "Petty cash"}}));
  const std::pair<std::string_view, std::string_view> columns[] = {
      {"EmployeeID", "BOSS"}, {"ProjectID", "ROOF:"}, {"ExpID", "FROMQB:"}, {"ELDescription", "Petty cash"},
      {"ELChgAmt", "35"},     {"ELCost", "35"},       {"ELUnits", "1"},     {"ELMarkup", "0"},
      {"ELDate", "3/3/2008"}, {"ELBillable", "-1"},   {"ELBilled", "NULL"}, {"LastUpdated", "3/5/2008 3:00:00 PM"},
  };
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Expense(column, "1-1"), value) << column;
  EXPECT_TRUE(IsGuid(house.Expense("ELID", "1-1")));
}

TEST(ExpenseLogIn, A_whole_without_a_memo_says_where_it_is_from) {
  ExpenseLogHouse house;
  house.Checks(Check({}, {{"PayeeEntityRef", kJobRef}}));
  EXPECT_EQ(house.Expense("ELDescription", "1-1"), "From QB");
}

TEST(ExpenseLogIn, A_whole_of_a_payee_who_is_no_project_is_logged) {
  ExpenseLogHouse house;
  house.Checks(Check({}));
  EXPECT_EQ(house.Log(), Texts{"Move Expenses to TW: Skipping the record, because the job with List ID = 'V-1 - Smith "
                               "Ltd' has not been transferred from QuickBooks to Tallywick"});
  EXPECT_EQ(house.Count("ExpenseLog"), "0");
}

TEST(ExpenseLogIn, A_check_of_nobody_and_a_bill_do_not_come_as_a_whole) {
  ExpenseLogHouse house;
  house.Checks(Check({}, {{"PayeeEntityRef", {}}}));
  house.Bills(Bill({}, {{"VendorRef", kJobRef}}));
  EXPECT_EQ(house.Count("ExpenseLog"), "0");
  EXPECT_TRUE(house.Log().empty());
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ExpenseLogIn, A_whole_that_is_here_is_written_over_unless_it_was_billed) {
  ExpenseLogHouse house;
  house.Here("1-1");
  house.Here("2-1", {{"ELBilled", "'B'"}});
  house.Checks(Check({}, {{"PayeeEntityRef", kJobRef}}) + Check({}, {{"TxnID", "2-1"}, {"PayeeEntityRef", kJobRef}}));
  EXPECT_EQ(house.Expense("ExpID", "1-1"), "FROMQB:");
  EXPECT_EQ(house.Expense("ExpID", "2-1"), "OLD:");
}

// --- Ends ------------------------------------------------------------------------------------------------------------

TEST(ExpenseLogIn, Version_1_says_so_and_adds_nothing_and_the_run_goes_on) {
  ExpenseLogHouse house;
  const auto records = house.ReadAnswer("Check", Check({Item()}), enChecks);
  ASSERT_EQ(records.Count(), 1U);
  Vars().g_QBMajorVer = 1;
  house.Take(records);
  ASSERT_EQ(house.BoxTexts(),
            Texts{"QuickBooks 2002 Does not provide complete support for Transferring the Expense Log"});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_EQ(house.Count("ExpenseLog"), "0");
  EXPECT_EQ(house.Count("Expense"), "1") << "not even the reserved code";
}

TEST(ExpenseLogIn, Nothing_to_take_is_a_good_end) {
  ExpenseLogHouse house;
  house.Take({});
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.Statements("SELECT COUNT(ExpID)").empty());
}

TEST(ExpenseLogIn, An_error_ends_the_run_with_a_box) {
  ExpenseLogHouse house({}, Breaks("SELECT ProjectID, EmployeeID FROM Project", 2));
  house.Checks(Check({Item()}) + Check({Item({{"TxnLineID", "L-2"}})}, {{"TxnID", "2-1"}}) +
               Check({Item({{"TxnLineID", "L-3"}})}, {{"TxnID", "3-1"}}));
  EXPECT_EQ(house.BoxTexts(), Texts{OwnBox("MoveExpenseLogToTW")});
  EXPECT_EQ(house.Expenses(), "L-1|TRAVEL:|25");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_TRUE(house.Log().empty());
}

}  // namespace
}  // namespace twqb
