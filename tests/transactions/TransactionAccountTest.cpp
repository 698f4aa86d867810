// What an observer hears of transactions on their way: records, their lines, and why they stay.

#include <gtest/gtest.h>

#include "tests/engine/KeptAccount.h"
#include "tests/transactions/BillsHouse.h"
#include "tests/transactions/CostsHouse.h"
#include "tests/transactions/PaymentsHouse.h"
#include "tests/transactions/TimeEntriesHouse.h"
#include "transactions/ExpenseLogIn.h"
#include "transactions/PayrollItems.h"
#include "transactions/VendorBillsIn.h"

namespace twqb {
namespace {

using Lines = std::vector<std::string>;

// --- Sends -----------------------------------------------------------------------------------------------------------

TEST(TransactionAccount, Tells_why_time_stays_here) {
  TimeEntriesHouse house;
  house.Activity("DRAW:", "");
  house.Entry("GOES");
  house.Entry("DRAFT", {{"TEPosted", "0"}});
  house.Entry("BELOW", {{"TEHours", "-1"}});
  house.Entry("LINK", {{"ActivityID", "'DRAW:'"}});
  const KeptAccount kept;
  house.Send();
  ASSERT_EQ(kept.Lines(), (Lines{"GOES added", "DRAFT passed over: it is not posted, or has comp time that stays here",
                                 "BELOW passed over: QuickBooks does not support negative time",
                                 "LINK passed over: its activity DRAW: is not in QuickBooks yet"}));
  EXPECT_EQ(kept.records[0].identifier, house.ColumnOf("GOES", "QBLinkID"));
}

TEST(TransactionAccount, Tells_a_payment_by_what_goes_to_each_invoice) {
  PaymentsHouse house;
  house.Invoice("1");
  house.Invoice("2", "10.00");
  house.Payment("P");
  house.Allocate("P", "1", "60");
  house.Allocate("P", "2", "40");
  house.Allocate("P", "3", "1");
  house.Payment("Q");
  house.Allocate("Q", "9", "1");
  house.Payment("R");
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(),
            (Lines{"- P-1 added", "- P-2 passed over: QuickBooks does not expect so much for its invoice",
                   "- P-3 passed over: behind a line that could not go",
                   "P added: in part: QuickBooks does not expect so much for its invoice",
                   "- Q-9 passed over: its invoice is not in QuickBooks",
                   "Q passed over: its invoice is not in QuickBooks", "R passed over: it goes to no invoice"}));
  EXPECT_EQ(kept.records.at(0).identifier, house.AllocationLink("P", "1"));
  EXPECT_EQ(kept.records.at(3).identifier, house.AllocationLink("P", "1"));
  EXPECT_TRUE(kept.errors.empty());
}

TEST(TransactionAccount, Tells_a_refusal_of_a_line_once) {
  PaymentsHouse house({.answers = "yes"}, "ReceivePaymentAddRq 1 status 3180 Error \"No.\"");
  house.Invoice("1");
  house.Payment("P");
  house.Allocate("P", "1", "60");
  const KeptAccount kept;
  house.Send();
  ASSERT_EQ(kept.Lines(), (Lines{"- P-1 refused: status 3180: No.", "P refused: status 3180: No."}));
  EXPECT_FALSE(kept.records[0].isOfItsLines);
  EXPECT_TRUE(kept.records[1].isOfItsLines);
}

TEST(TransactionAccount, Tells_a_refused_retainer_with_its_status_and_no_error) {
  PaymentsHouse house({.answers = "yes"}, "InvoiceAddRq 1 status 3180 Error \"No.\"");
  house.Retainer("P", "ROOF:");
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(), Lines{"P refused: status 3180: No."});
  EXPECT_TRUE(kept.errors.empty());
}

TEST(TransactionAccount, Tells_no_error_of_an_account_in_whose_place_another_one_does) {
  TimeEntriesHouse house({}, "PayrollItemWageAddRq 1 status 3140 Error \"No.\"");
  Vars().g_TWSettingsPath.clear();
  const KeptAccount kept;
  EXPECT_FALSE(SecureWageItems(TimeEntriesHouse::Session()));
  EXPECT_EQ(kept.errors, Lines{"SecureWageItems 0 no account for payroll item wages []"});
}

TEST(TransactionAccount, Tells_of_a_link_that_could_not_be_looked_up_with_the_twin_that_may_be_there) {
  TimeEntriesHouse house({}, "TimeTrackingQueryRq 1 status 3180 Error \"No.\"");
  house.Entry("T", {{"QBLinkID", "'1-1'"}});
  const KeptAccount kept;
  house.SendSelection("SELECT * FROM TimeEntry");
  ASSERT_EQ(kept.Lines(), Lines{"T added: its link 1-1 could not be looked up"});
  EXPECT_EQ(kept.records[0].former, "1-1");
  EXPECT_EQ(kept.records[0].parting, Parting::LinkUnread);
}

TEST(TransactionAccount, Tells_an_error_behind_what_had_become_of_the_record_by_then) {
  PaymentsHouse house({}, "sql 1 raise 0x80004005 \"Broken.\" UPDATE Payment");
  house.Invoice("1");
  house.Payment("P", {{"QBLinkID", "'1-1'"}});
  house.Allocate("P", "1", "60");
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(), (Lines{"- P-1 added: error -2147467259: Broken.", "P added: error -2147467259: Broken."}));
}

TEST(TransactionAccount, Tells_the_rows_of_a_bill_when_it_is_sent) {
  ExpensesHouse house({.answers = "yes"}, "BillAddRq 2 status 3180 Error \"No.\"");
  house.Vendor("TAYLOR", "Taylor Ltd");
  house.Expense("E1");
  house.Expense("E2", {{"ProjectID", "'NONE:'"}});
  house.Expense("E3");
  house.Expense("E4", {{"EmployeeID", "'TAYLOR'"}});
  const KeptAccount kept;
  house.SendAll();
  ASSERT_EQ(kept.Lines(),
            (Lines{"E2 passed over: its project has no link", "E1 added", "E3 added", "E4 refused: status 3180: No."}));
  EXPECT_EQ(kept.records[1].identifier, house.Row("ExpenseLog", "ELID", "E1", "QBLinkID"));
  EXPECT_EQ(kept.records[2].identifier, house.Row("ExpenseLog", "ELID", "E3", "QBLinkID"));
}

TEST(TransactionAccount, Tells_the_rows_of_a_bill_that_a_broken_run_never_sent) {
  ExpensesHouse house({}, "sql 4 raise 0x80004005 \"Broken.\" SELECT QBLINKID FROM Project");
  house.Expense("E1");
  house.Expense("E2");
  const KeptAccount kept;
  house.SendAll();
  for (const auto& record : kept.records) EXPECT_NE(record.fate, Fate::LeftAsItWas);
  EXPECT_EQ(kept.records.size(), 2U);
}

TEST(TransactionAccount, Tells_the_rows_of_a_bill_that_could_not_be_sent_with_the_error) {
  const std::string why = " failed: error -2147220731: Broken.";
  ExpensesHouse house({}, "DoRequests 1 raise 0x80040305 \"Broken.\"");
  for (const auto* key : {"E1", "E2"}) house.Expense(key);
  const KeptAccount kept;
  house.SendAll();
  EXPECT_EQ(kept.Lines(), (Lines{"E1" + why, "E2" + why}));
  EXPECT_EQ(kept.errors, Lines{"SendBill -2147220731 Broken. ['E1','E2']"});
}

TEST(TransactionAccount, Tells_a_vendor_bill_with_its_lines) {
  VendorBillsHouse house;
  house.Bill("B1");
  house.Hours("H1", "B1");
  house.Bill("B2");
  house.Hours("H2", "B2", {{"ProjectID", "'NONE:'"}});
  house.Bill("B3", {{"VendorID", "'AL'"}});
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(), (Lines{"- H1 added", "B1 added", "- H2 passed over: its project has no link",
                                 "B2 passed over: its project has no link", "B3 passed over: its vendor has no link"}));
}

TEST(TransactionAccount, Tells_a_vendor_bill_that_goes_in_part_with_every_line_that_stays) {
  VendorBillsHouse house;
  house.Bill("B1");
  house.Hours("H1", "B1");
  house.Hours("H2", "B1", {{"ProjectID", "'NONE:'"}});
  house.Hours("H3", "B1");
  house.Bill("B2");
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(),
            (Lines{"- H2 passed over: its project has no link", "- H3 passed over: behind a line that could not go",
                   "- H1 added", "B1 added: in part: its project has no link", "B2 passed over: it has no lines"}));
}

TEST(TransactionAccount, Tells_the_lines_of_a_vendor_bill_that_did_not_go) {
  VendorBillsHouse house({.answers = "yes"},
                         "DoRequests 1 raise 0x80040305 \"Broken.\"\nBillAddRq 1 status 3180 Error \"No.\"");
  for (const std::string number : {"1", "2"}) {
    house.Bill("B" + number);
    house.Hours("H" + number, "B" + number);
  }
  const KeptAccount kept;
  house.Send();
  EXPECT_EQ(kept.Lines(), (Lines{"- H1 passed over: its bill was not sent", "B1 failed: error -2147220731: Broken.",
                                 "- H2 passed over: its bill was refused", "B2 refused: status 3180: No."}));
}

// --- Gets ------------------------------------------------------------------------------------------------------------

TEST(TransactionAccount, Tells_why_time_stays_in_QuickBooks_and_nothing_goes_wrong_by_telling) {
  TimeEntriesHouse house;
  house.LinkAll();
  const KeptAccount kept;
  house.GetReturned({{.txnId = "1-1"},
                     {.txnId = "1-2", .customer = ""},
                     {.txnId = "1-3", .entity = "<ListID>E-9</ListID><FullName>Bo Birch</FullName>"}});
  house.GetReturned({{.txnId = "1-1"}});
  EXPECT_EQ(kept.Lines(), (Lines{house.Got("TEID") + " added", " passed over: it has no customer or job",
                                 " passed over: employee or vendor Bo Birch is not here",
                                 " left: it is here, and never comes twice"}));
  EXPECT_TRUE(kept.errors.empty());
  EXPECT_TRUE(house.BoxTexts().empty());
}

constexpr TestedTable kTestedBillsIn = Got(enVendorBill, "VendorBill", "VendorBillID", MoveVendorBillToTW);

std::string BillOf(const Texts& lines) {
  return With(RecordOf("Bill",
                       {{"TxnID", "1-1"},
                        {"TimeModified", std::string(kModified)},
                        {"VendorRef", kVendorRef},
                        {"TxnDate", "2008-03-03"},
                        {"DueDate", "2008-04-02"},
                        {"RefNumber", "S-77"}},
                       {}),
              lines);
}
const std::string kUnknownLine = Line("ItemLine", {{"TxnLineID", "L-2"}, {"ItemRef", kUnknownRef}});

TEST(TransactionAccount, Tells_a_bill_that_comes_in_with_the_lines_that_do_and_why_others_stay) {
  CostsHouse house(kTestedBillsIn);
  const KeptAccount kept;
  house.TakeAnswer("Bill", BillOf({AccountLine(), kUnknownLine}), kMostRecent);
  house.TakeAnswer("Bill", BillOf({AccountLine()}), kMostRecent);
  ASSERT_EQ(kept.records.size(), 4U);
  const auto bill = house.Scalar("SELECT VendorBillID FROM VendorBill");
  const auto line = house.Scalar("SELECT ELID FROM ExpenseLog");
  EXPECT_EQ(kept.Lines(),
            (Lines{"-  passed over: its item is not here", "- " + line + " added",
                   bill + " added: in part: its item is not here", bill + " left: BillingDb is newer by 1 d 1 h"}));
  EXPECT_EQ(kept.records[1].identifier, "E-1");
  EXPECT_EQ(kept.records[2].identifier, "1-1");
}

TEST(TransactionAccount, Tells_a_bill_that_was_taken_back) {
  CostsHouse house(kTestedBillsIn);
  const KeptAccount kept;
  house.TakeAnswer("Bill", BillOf({kUnknownLine}));
  ASSERT_EQ(kept.records.size(), 2U);
  EXPECT_EQ(kept.records[1].fate, Fate::PassedOver);
  EXPECT_EQ(kept.records[1].why, "none of its lines could come");
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM VendorBill"), "0");
}

TEST(TransactionAccount, Tells_an_error_in_a_line_that_the_log_alone_knows) {
  CostsHouse house(kTestedBillsIn, {}, "sql 1 raise 0x80004005 \"Broken.\" SELECT ProjectID FROM Project");
  const KeptAccount kept;
  house.TakeAnswer("Bill", BillOf({AccountLine()}));
  ASSERT_EQ(kept.errors.size(), 1U);
  EXPECT_TRUE(kept.errors[0].starts_with("MoveVendorBillToTW -2147467259 Error getting Bill No. S-77"))
      << kept.errors[0];
  EXPECT_EQ(kept.Lines().at(0), "-  failed: error -2147467259: Broken.");
}

constexpr TestedTable kTestedExpensesIn = Got(enExpenseLog, "ExpenseLog", "ELID", MoveExpenseLogToTW);

TEST(TransactionAccount, Tells_lines_of_a_bill_as_expenses_and_a_bill_for_no_project_as_passed_over) {
  constexpr std::int16_t kBills = 2;
  CostsHouse house(kTestedExpensesIn);
  const KeptAccount kept;
  house.TakeAnswer("Bill", BillOf({AccountLine()}), kMostRecent, kBills);
  house.TakeAnswer("Bill", BillOf({AccountLine()}), kMostRecent, kBills);
  house.TakeAnswer("Bill", BillOf({AccountLine({{"CustomerRef", ""}})}), kMostRecent, kBills);
  const auto key = house.Scalar("SELECT ELID FROM ExpenseLog");
  EXPECT_EQ(kept.Lines(), (Lines{key + " added", key + " left: BillingDb is newer by 1 d 1 h",
                                 " passed over: no line of it is for a project"}));
  EXPECT_EQ(kept.records.at(0).identifier, "E-1");
}

}  // namespace
}  // namespace twqb
