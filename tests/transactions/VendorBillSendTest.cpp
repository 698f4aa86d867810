// Bills of vendors to QuickBooks: header, lines out of hours and expenses, write-back, refusals.

#include <gtest/gtest.h>

#include "tests/transactions/BillsHouse.h"

namespace twqb {
namespace {

TEST(VendorBillSend, A_bill_goes_with_its_hours_and_expenses_and_all_are_linked) {
  VendorBillsHouse house;
  house.Bill("B1");
  house.Hours("T1", "B1", {{"TEDescription", "'Drawing'"}});
  house.Expense("E1", {{"VendorBillID", "'B1'"}, {"ELMarkup", "50"}, {"ELBillable", "0"}});
  house.Send();
  EXPECT_EQ(house.Header(),
            "<VendorRef><ListID>" + house.vendor +
                "</ListID></VendorRef><TxnDate>2008-02-10</TxnDate><DueDate>2008-02-20</DueDate><RefNumber>"
                "B1</RefNumber>");
  const auto customer = "<CustomerRef><ListID>" + house.job + "</ListID></CustomerRef>";
  EXPECT_EQ(
      house.Lines(),
      (Texts{"<ItemRef><ListID>" + house.activity +
                 "</ListID></ItemRef><Desc>Drawing</Desc><Quantity>1.5</Quantity><Amount>60.00</Amount>" + customer +
                 "<BillableStatus>Billable</BillableStatus>",
             "<ItemRef><ListID>" + house.expense + "</ListID></ItemRef><Quantity>2</Quantity><Amount>20.00</Amount>" +
                 customer + "<BillableStatus>NotBillable</BillableStatus>"}));
  const auto link = house.LinkOf("B1");
  const auto ids = house.LineIds(link);
  ASSERT_EQ(ids.size(), 2U);
  EXPECT_EQ(house.Statements("UPDATE "),
            (Texts{"UPDATE VendorBill SET QBLinkID = '" + link + "' WHERE VendorBillID = 'B1';",
                   "UPDATE TimeEntry SET QBLinkID = '" + ids[0] + "' WHERE TEID = 'T1';",
                   "UPDATE ExpenseLog SET QBLinkID = '" + ids[0] + "' WHERE ELID = 'T1';",
                   "UPDATE TimeEntry SET QBLinkID = '" + ids[1] + "' WHERE TEID = 'E1';",
                   "UPDATE ExpenseLog SET QBLinkID = '" + ids[1] + "' WHERE ELID = 'E1';",
                   "UPDATE TimeEntry SET LastUpdated = '03/05/2008 15:00:00' WHERE (TEID IN('T1','E1'));",
                   "UPDATE ExpenseLog SET LastUpdated = '03/05/2008 15:00:00' WHERE (ELID IN('T1','E1'));"}));
  EXPECT_EQ(house.Row("TimeEntry", "TEID", "T1", "QBLinkID"), ids[0]);
  EXPECT_EQ(house.Row("ExpenseLog", "ELID", "E1", "QBLinkID"), ids[1]);
  EXPECT_EQ(house.ColumnOf("B1", "LastUpdated"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Vars().g_PassedID, "");
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Bills to QuickBooks..."});
}

TEST(VendorBillSend, Dates_and_number_that_are_missing_are_today_a_month_later_and_none) {
  VendorBillsHouse house;
  house.Bill("B1", {{"BillDate", "NULL"}, {"BillDueDate", "NULL"}, {"BillNumber", "NULL"}});
  house.Hours("T1", "B1");
  house.Send();
  EXPECT_EQ(house.Header(), "<VendorRef><ListID>" + house.vendor +
                                "</ListID></VendorRef><TxnDate>2008-03-05</TxnDate><DueDate>2008-04-04</DueDate>");
}

TEST(VendorBillSend, A_bill_without_lines_sends_nothing_and_leaves_no_mark) {
  VendorBillsHouse house;
  house.Bill("B1");
  house.Send();
  EXPECT_TRUE(house.Requests("BillAddRq").empty());
  EXPECT_TRUE(house.Statements("UPDATE ").empty());
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(VendorBillSend, A_bill_ends_ahead_of_the_line_whose_project_has_no_link) {
  VendorBillsHouse house;
  house.Insert("Project", {{"ProjectID", "'YARD:'"}});
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Hours("T2", "B1", {{"ProjectID", "'YARD:'"}});
  house.Hours("T3", "B1");
  house.Send();
  EXPECT_EQ(house.Lines().size(), 1U);
  EXPECT_NE(house.Row("TimeEntry", "TEID", "T1", "QBLinkID"), "NULL");
  EXPECT_EQ(house.Row("TimeEntry", "TEID", "T2", "QBLinkID"), "NULL");
  EXPECT_EQ(house.Row("TimeEntry", "TEID", "T3", "QBLinkID"), "NULL");
}

TEST(VendorBillSend, A_vendor_without_a_link_leaves_the_bill_and_the_next_one_goes) {
  VendorBillsHouse house;
  house.Insert("Employee", {{"EmployeeID", "'NEW'"}, {"IsSub", "-1"}});
  house.Bill("B1", {{"VendorID", "'NEW'"}});
  house.Hours("T1", "B1");
  house.Bill("B2");
  house.Hours("T2", "B2");
  house.Send();
  EXPECT_FALSE(house.IsSent("B1"));
  EXPECT_TRUE(house.IsSent("B2"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(VendorBillSend, A_bill_that_QuickBooks_holds_is_left_alone_and_a_stale_link_is_overwritten) {
  VendorBillsHouse house;
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Bill("B2", {{"QBLinkID", "'FFF-1'"}});
  house.Hours("T2", "B2");
  house.Send();
  EXPECT_EQ(house.Requests("BillAddRq").size(), 2U);
  EXPECT_NE(house.LinkOf("B2"), "FFF-1");
  house.Clear();
  house.Send();
  EXPECT_TRUE(house.Requests("BillAddRq").empty());
}

TEST(VendorBillSend, Its_identifier_is_that_of_the_record_last_added) {
  VendorBillsHouse house;
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Send();
  EXPECT_EQ(Vars().g_NewQBLinkID, house.LinkOf("B1"));
}

TEST(VendorBillSend, Of_two_that_a_host_names_with_a_server_s_marks_between_them_both_go) {
  VendorBillsHouse house;
  for (const auto* key : {"B1", "B2", "B3"}) {
    house.Bill(key);
    house.Hours("T" + std::string(key), key);
  }
  Vars().g_PassedID = "B1','B3";
  house.SendSelection(BuildSelectSQL(enVendorBill, {.Filter1a = Vars().g_PassedID}));
  EXPECT_TRUE(house.IsSent("B1"));
  EXPECT_FALSE(house.IsSent("B2"));
  EXPECT_TRUE(house.IsSent("B3"));
}

TEST(VendorBillSend, Each_dialect_has_its_own_literal_for_an_identifier_and_finds_the_same_rows) {
  for (const auto* kind : {"SQL", "JET"}) {
    VendorBillsHouse house;
    Vars().g_DbKind = kind;
    const std::string id = "{11111111-2222-3333-4444-555555555555}";
    house.Bill(id, {{"BillNumber", "'7'"}});
    house.Hours("T1", id);
    house.Send();
    const auto literal = std::string_view(kind) == "SQL" ? "'" + id + "'" : "{guid " + id + "}";
    EXPECT_TRUE(house.Asked("SELECT * FROM TimeExpense WHERE VendorBillID =" + literal + ";")) << kind;
    EXPECT_TRUE(house.IsSent(id)) << kind;
  }
}

TEST(VendorBillSend, The_class_is_the_project_s_or_else_that_of_activity_or_expense_code) {
  VendorBillsHouse house;
  const auto east = house.Add("Class", "<Name>East</Name>");
  const auto west = house.Add("Class", "<Name>West</Name>");
  house.Sql("UPDATE Activity SET QBClassID = '" + east + "'");
  house.Sql("UPDATE Expense SET QBClassID = '" + west + "'");
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Expense("E1", {{"VendorBillID", "'B1'"}});
  house.Send();
  EXPECT_NE(house.Lines()[0].find(east), std::string::npos);
  EXPECT_NE(house.Lines()[1].find(west), std::string::npos);
}

TEST(VendorBillSend, A_bill_that_can_not_be_sent_is_logged_and_told_at_the_end) {
  VendorBillsHouse house({}, "DoRequests 1 raise 0x80040404 \"Broken.\"\n");
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Bill("B2");
  house.Hours("T2", "B2");
  house.Send();
  EXPECT_EQ(house.Log(), Texts{"Could not transfer Bill to QB, because its amount is zero. ELID = 'T1'"});
  EXPECT_EQ(house.BoxTexts(), Texts{ProblemBox()});
  EXPECT_TRUE(house.IsSent("B2"));
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(VendorBillSend, An_error_behind_one_tells_the_problem_in_other_words) {
  VendorBillsHouse house({}, "DoRequests 1 raise 0x80040404 \"Broken.\"\n" + Breaks("UPDATE TimeEntry SET QBLinkID"));
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Bill("B2");
  house.Hours("T2", "B2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            (Texts{BrokenBox("MoveVendorBillToQB"), ProblemBox("Expense Codes, Vendors and Projects")}));
  EXPECT_EQ(house.Log().back(), "Error tranfering Bill to QB. ID = B2");
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(VendorBillSend, An_error_alone_is_told_and_logged) {
  VendorBillsHouse house({}, Breaks("UPDATE TimeEntry SET QBLinkID"));
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{BrokenBox("MoveVendorBillToQB")});
  EXPECT_EQ(house.Log(), Texts{"Error tranfering Bill to QB. ID = B1"});
}

TEST(VendorBillSend, A_refusal_is_asked_about_and_no_leaves_the_table) {
  VendorBillsHouse house({.answers = "yes\nno"}, Refuses("BillAddRq", 1, 3000) + Refuses("BillAddRq", 2, 3000));
  for (const auto* key : {"1", "2", "3"}) {
    house.Bill(std::string("B") + key);
    house.Hours(std::string("T") + key, std::string("B") + key);
  }
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{kAsk, kAsk}));
  EXPECT_EQ(house.Requests("BillAddRq").size(), 2U);
  EXPECT_TRUE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(VendorBillSend, An_invalid_reference_leaves_the_table) {
  VendorBillsHouse house({}, Refuses("BillAddRq", 1, 3140));
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Bill("B2");
  house.Hours("T2", "B2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{kInvalidBillAccount});
  EXPECT_EQ(house.Requests("BillAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(VendorBillSend, An_unlinked_code_leaves_an_empty_line_and_ends_the_bill) {
  VendorBillsHouse house;
  house.Insert("Activity", {{"ActivityID", "'OTHER:'"}});
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Hours("T2", "B1", {{"ActivityID", "'OTHER:'"}});
  house.Hours("T3", "B1");
  house.Send();
  ASSERT_EQ(house.Lines().size(), 2U);
  EXPECT_EQ(house.Lines()[1], "");
  EXPECT_EQ(house.Row("TimeEntry", "TEID", "T2", "QBLinkID"), "NULL");
}

TEST(VendorBillSend, From_the_first_bill_without_a_date_on_all_rows_are_stamped) {
  VendorBillsHouse house;
  for (const auto* key : {"1", "2", "3"}) {
    const bool isDated = std::string_view(key) != "2";
    house.Bill(std::string("B") + key, {{"LastUpdated", isDated ? "'2008-01-02 03:04:05'" : "NULL"}});
    house.Hours(std::string("T") + key, std::string("B") + key);
  }
  house.Send();
  EXPECT_EQ(house.Statements("UPDATE TimeEntry SET LastUpdated"),
            (Texts{"UPDATE TimeEntry SET LastUpdated = '03/05/2008 15:00:00' WHERE (TEID IN('T2'));",
                   "UPDATE TimeEntry SET LastUpdated = '03/05/2008 15:00:00' WHERE (TEID IN('T3'));"}));
}

TEST(VendorBillSend, Cancel_ends_the_run_behind_the_bill_in_hand) {
  VendorBillsHouse house({.answers = "cancel after 1\nyes"});
  for (const auto* key : {"1", "2", "3"}) {
    house.Bill(std::string("B") + key);
    house.Hours(std::string("T") + key, std::string("B") + key);
  }
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled}));
  EXPECT_FALSE(house.IsSent("B3"));
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(VendorBillSend, The_call_back_hears_the_identifier_of_each_bill) {
  VendorBillsHouse house;
  Vars().g_IsSubscribed = true;
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Send();
  EXPECT_EQ(house.callback.Events(), (std::vector<CallbackEvent>{1, std::string(), house.LinkOf("B1")}));
}

class BillsOfACountry : public testing::TestWithParam<std::string> {};

TEST_P(BillsOfACountry, Go) {
  VendorBillsHouse house({}, {}, GetParam());
  house.Bill("B1");
  house.Hours("T1", "B1");
  house.Send();
  EXPECT_TRUE(house.IsSent("B1"));
}

INSTANTIATE_TEST_SUITE_P(VendorBillSend, BillsOfACountry, testing::Values("US", "CA", "UK"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace twqb
