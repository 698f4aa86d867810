// The run of invoices to QuickBooks: which go, what is made sure of first, what is written back, what is told and when.

#include <gtest/gtest.h>

#include "tests/transactions/InvoicesHouse.h"

namespace twqb {
namespace {

// --- What goes -------------------------------------------------------------------------------------------------------

TEST(InvoiceSend, A_new_invoice_is_added_in_a_document_of_its_own_and_its_link_and_date_are_written_back) {
  InvoicesHouse house;
  house.Invoice("I1");
  house.Invoice("I2");
  house.Send();
  EXPECT_EQ(house.Requests("InvoiceAddRq").size(), 2U);
  for (const auto& document : house.traffic.documents) {
    EXPECT_LE(SpiedHouse::RequestsOf(document, "InvoiceAddRq").size(), 1U);
  }
  EXPECT_EQ(house.Header(), "<CustomerRef><ListID>" + house.job + "</ListID></CustomerRef><RefNumber>I1</RefNumber>");
  EXPECT_EQ(house.Lines(), Texts{AmountLine("TWServiceAmt", "100.00")});
  EXPECT_EQ(house.Statements("UPDATE "),
            (Texts{"UPDATE TransactionTable SET QBLinkID = '" + house.LinkOf("I1") + "' WHERE TransactionID = 'I1';",
                   "UPDATE TransactionTable SET LastUpdated = '03/05/2008 15:00:00' WHERE TransactionID = 'I1';",
                   "UPDATE TransactionTable SET QBLinkID = '" + house.LinkOf("I2") + "' WHERE TransactionID = 'I2';",
                   "UPDATE TransactionTable SET LastUpdated = '03/05/2008 15:00:00' WHERE TransactionID = 'I2';"}));
  EXPECT_EQ(Vars().g_NewQBLinkID, house.LinkOf("I2"));
  EXPECT_EQ(SpiedHouse::TextOf(house.InQuickBooks("I1"), "BalanceRemaining"), "100.00");
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(InvoiceSend, An_invoice_that_has_a_date_keeps_it) {
  InvoicesHouse house;
  house.Invoice("I1", {{"LastUpdated", "'2008-01-02 03:04:05'"}});
  house.Send();
  EXPECT_EQ(house.Statements("UPDATE ").size(), 1U);
  EXPECT_EQ(house.ColumnOf("I1", "LastUpdated"), "1/2/2008 3:04:05 AM");
}

TEST(InvoiceSend, With_no_selected_rows_it_ends_well_and_asks_for_no_item) {
  InvoicesHouse house;
  house.Send();
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.traffic.documents.empty());
}

TEST(InvoiceSend, An_invoice_that_QuickBooks_holds_is_left_alone_whatever_changed_here) {
  InvoicesHouse house;
  house.Invoice("I1");
  house.Send();
  const auto link = house.LinkOf("I1");
  house.Sql("UPDATE TransactionTable SET ServiceAmt = 200, TransactionInvBillAmt = 200");
  house.Clear();
  house.Send();
  EXPECT_EQ(house.Requests("InvoiceQueryRq").size(), 1U);
  EXPECT_TRUE(house.Requests("InvoiceAddRq").empty());
  EXPECT_TRUE(house.Statements("UPDATE ").empty());
  EXPECT_EQ(house.LinkOf("I1"), link);
  EXPECT_EQ(house.desk.FormEvents().back().state.record, "Invoice Number: I1");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoiceSend, A_stale_link_is_overwritten_with_that_of_the_new_invoice) {
  InvoicesHouse house;
  house.Invoice("I1", {{"QBLinkID", "'FFF-1'"}});
  house.Send();
  EXPECT_EQ(house.Requests("InvoiceAddRq").size(), 1U);
  EXPECT_NE(house.LinkOf("I1"), "FFF-1");
  EXPECT_EQ(SpiedHouse::TextOf(house.InQuickBooks("I1"), "RefNumber"), "I1");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoiceSend, A_negative_invoice_is_passed_over_without_a_word) {
  InvoicesHouse house;
  house.Invoice("I1", {{"TransactionInvBillAmt", "-0.01"}});
  house.Send();
  EXPECT_TRUE(house.Requests("InvoiceAddRq").empty());
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoiceSend, A_negative_invoice_with_a_link_is_looked_up_first) {
  InvoicesHouse house;
  house.Invoice("I1", {{"TransactionInvBillAmt", "-5"}, {"QBLinkID", "'FFF-1'"}});
  house.Send();
  EXPECT_EQ(house.Requests("InvoiceQueryRq").size(), 1U);
  EXPECT_EQ(house.LinkOf("I1"), "FFF-1");
}

TEST(InvoiceSend, An_invoice_of_zero_with_lines_goes) {
  InvoicesHouse house;
  house.Invoice("I1", {{"TransactionInvBillAmt", "0"}, {"TransactionInvDiscount", "100"}});
  house.Send();
  EXPECT_TRUE(house.IsSent("I1"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(InvoiceSend, Invoices_without_any_line_are_logged_and_listed_at_the_end) {
  InvoicesHouse house;
  house.Invoice("I1", {{"TransactionInvBillAmt", "0"}, {"ServiceAmt", "0"}});
  house.Invoice("I2");
  house.Invoice("I3", {{"TransactionInvBillAmt", "0"}, {"ServiceAmt", "NULL"}});
  house.Send();
  EXPECT_FALSE(house.IsSent("I1") || house.IsSent("I3"));
  EXPECT_TRUE(house.IsSent("I2"));
  EXPECT_EQ(house.Log(), (Texts{"Could not transfer an invoice to QB, because its amount is zero. TransactionID = I1  "
                                "TransactionInvNum = I1",
                                "Could not transfer an invoice to QB, because its amount is zero. TransactionID = I3  "
                                "TransactionInvNum = I3"}));
  ASSERT_EQ(house.BoxTexts(), Texts{ZeroBox({"I1", "I3"})});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(Outcome(), TableOk::False);
}

struct Unlinked {
  std::string table;
  std::string link;
};

class UnlinkedInvoices : public testing::TestWithParam<Unlinked> {};

TEST_P(UnlinkedInvoices, Are_told_once_at_the_end_whatever_their_number) {
  InvoicesHouse house;
  house.Sql("UPDATE " + GetParam().table + " SET QBLinkID = " + GetParam().link);
  house.Invoice("I1");
  house.Invoice("I2");
  house.Send();
  EXPECT_TRUE(house.Requests("InvoiceAddRq").empty());
  ASSERT_EQ(house.BoxTexts(), Texts{kProblem});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::False);
}

INSTANTIATE_TEST_SUITE_P(InvoiceSend, UnlinkedInvoices,
                         testing::Values(Unlinked{"Client", "NULL"}, Unlinked{"Client", "''"},
                                         Unlinked{"Project", "NULL"}, Unlinked{"Project", "''"}),
                         [](const auto& test) {
                           return test.param.table + (test.param.link == "NULL" ? "_Null" : "_Empty");
                         });

TEST(InvoiceSend, The_run_goes_on_behind_an_invoice_without_a_link_and_tells_the_problem_ahead_of_the_zero_amounts) {
  InvoicesHouse house;
  house.Insert("Project", {{"ProjectID", "'YARD:'"}, {"ClientID", "'ACME'"}});
  house.Invoice("I1", {{"ServiceAmt", "0"}});
  house.Invoice("I2", {{"ProjectID", "'YARD:'"}});
  house.Invoice("I3");
  house.Send();
  EXPECT_TRUE(house.IsSent("I3"));
  EXPECT_EQ(house.BoxTexts(), (Texts{kProblem, ZeroBox({"I1"})}));
  EXPECT_FALSE(house.desk.Form());
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(InvoiceSend, A_link_that_reaches_no_row_is_logged) {
  InvoicesHouse house;
  house.Invoice("I1");
  house.Sql("CREATE TRIGGER Swallow BEFORE UPDATE OF QBLinkID ON TransactionTable BEGIN SELECT RAISE(IGNORE); END");
  house.Send();
  EXPECT_FALSE(house.IsSent("I1"));
  EXPECT_EQ(house.Log(), Texts{"The link " + Vars().g_NewQBLinkID +
                               " was written to 0 rows of TransactionTable in the place of one: TransactionID = 'I1'"});
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- Items first -----------------------------------------------------------------------------------------------------

TEST(InvoiceSend, Items_of_retainers_then_of_lines_are_secured_ahead_of_the_form_and_the_first_row) {
  InvoicesHouse house;
  house.Invoice("I1");
  house.Send();
  Texts kinds;
  for (const auto& document : house.traffic.documents) {
    for (const auto* kind : {"AccountAddRq", "ItemPaymentAddRq", "ItemOtherChargeAddRq", "ItemServiceAddRq",
                             "ItemSalesTaxQueryRq", "InvoiceAddRq"}) {
      if (!SpiedHouse::RequestsOf(document, kind).empty()) kinds.emplace_back(kind);
    }
  }
  EXPECT_EQ(kinds, (Texts{"AccountAddRq", "ItemPaymentAddRq", "ItemOtherChargeAddRq", "ItemServiceAddRq",
                          "ItemSalesTaxQueryRq", "InvoiceAddRq"}));
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Invoices to QuickBooks..."});
}

struct Lacking {
  std::string request;
  std::string routine;  // "" for the items of the lines
};

class LackingItems : public testing::TestWithParam<Lacking> {};

TEST_P(LackingItems, End_the_run_with_no_row_touched_no_form_and_the_outcome_as_it_was) {
  InvoicesHouse house({}, Refuses(GetParam().request, 1, 3000));
  house.Invoice("I1");
  house.Send();
  const auto prefix = GetParam().routine.empty() ? std::string() : "\"" + GetParam().routine + "()\" : ";
  ASSERT_EQ(house.BoxTexts(), Texts{prefix + RefusalText("No.", 3000, "Error")});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::Ok);
  EXPECT_TRUE(house.Requests("InvoiceAddRq").empty());
  EXPECT_FALSE(house.Requests("ItemServiceAddRq").empty());  // those of lines whatever became of the retainers'
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_EQ(Outcome(), TableOk::False);
}

INSTANTIATE_TEST_SUITE_P(InvoiceSend, LackingItems,
                         testing::Values(Lacking{"AccountAddRq", "AddAccount"},
                                         Lacking{"ItemPaymentAddRq", "AddPaymentItem"},
                                         Lacking{"ItemOtherChargeAddRq", "AddItemOtherCharge"},
                                         Lacking{"ItemServiceAddRq", ""}),
                         [](const auto& test) { return test.param.request; });

TEST(InvoiceSend, A_run_whose_items_are_lacking_leaves_the_outcome_that_it_found) {
  InvoicesHouse house({}, Refuses("AccountAddRq", 1, 3000));
  house.Invoice("I1");
  Vars().g_TableOk = TableOk::GoOn;
  MoveInvoicesToQB({.sql = Sql::Own(BuildSelectSQL(enInvoices, {.IgnoreLastSync = true})),
                    .rule = TwinRule::Overwrite,
                    .session = SpiedHouse::Session(),
                    .run = Vars()});
  EXPECT_EQ(Outcome(), TableOk::GoOn);
}

// --- Refusals --------------------------------------------------------------------------------------------------------

TEST(InvoiceSend, A_refusal_is_asked_about_and_yes_goes_on) {
  InvoicesHouse house({.answers = "yes"}, Refuses("InvoiceAddRq", 1, 3000));
  house.Invoice("I1");
  house.Invoice("I2");
  house.Send();
  ASSERT_EQ(house.BoxTexts(), Texts{kAsk});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Question);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::YesNo);
  EXPECT_FALSE(house.IsSent("I1"));
  EXPECT_TRUE(house.IsSent("I2"));
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoiceSend, No_ends_the_run_without_a_word_about_it_keeps_the_wish_and_summarises_all_the_same) {
  InvoicesHouse house({.answers = "no"}, Refuses("InvoiceAddRq", 1, 3000));
  house.Insert("Project", {{"ProjectID", "'YARD:'"}, {"ClientID", "'ACME'"}});
  house.Invoice("I1", {{"ProjectID", "'YARD:'"}});
  house.Invoice("I2", {{"ServiceAmt", "0"}});
  house.Invoice("I3");
  house.Invoice("I4");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{kAsk, kProblem, ZeroBox({"I2"})}));
  EXPECT_TRUE(Vars().g_Cancelled);
  EXPECT_EQ(house.Requests("InvoiceAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

TEST(InvoiceSend, Yes_to_the_question_does_not_take_back_a_wish_to_stop) {
  InvoicesHouse house({.answers = "cancel after 1\nyes\nyes"}, Refuses("InvoiceAddRq", 1, 3000));
  house.Invoice("I1");
  house.Invoice("I2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kAsk, kOperationCancelled}));
  EXPECT_FALSE(Vars().g_Cancelled);
}

TEST(InvoiceSend, An_invalid_reference_leaves_the_table_and_summarises_what_was_before_it) {
  InvoicesHouse house({}, Refuses("InvoiceAddRq", 1, 3140));
  house.Invoice("I1", {{"ServiceAmt", "0"}});
  house.Invoice("I2");
  house.Invoice("I3");
  house.Send();
  ASSERT_EQ(house.BoxTexts(), (Texts{InvalidReferenceBox("Sync Settings in Tallywick."), ZeroBox({"I1"})}));
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::None);
  EXPECT_EQ(house.Requests("InvoiceAddRq").size(), 1U);
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
}

// --- On the way ------------------------------------------------------------------------------------------------------

TEST(InvoiceSend, The_form_shows_the_number_of_each_invoice_and_is_taken_down) {
  InvoicesHouse house;
  house.Invoice("I1", {{"TransactionInvBillAmt", "-1"}});
  house.Invoice("I2");
  house.Send();
  Texts shown;
  for (const auto& event : house.desk.FormEvents()) {
    if (shown.empty() || shown.back() != event.state.record) shown.push_back(event.state.record);
  }
  EXPECT_EQ(shown, (Texts{"Label1", "Invoice Number: I1", "Invoice Number: I2"}));
  EXPECT_EQ(house.desk.FormEvents().back().kind, FormEventKind::Unload);
}

TEST(InvoiceSend, Without_a_bar_nothing_is_shown) {
  InvoicesHouse house;
  Vars().g_NoProgressBar = true;
  house.Invoice("I1");
  house.Send();
  EXPECT_TRUE(house.IsSent("I1"));
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(InvoiceSend, Cancel_ends_the_run_behind_the_invoice_in_hand_and_the_summaries_follow) {
  InvoicesHouse house({.answers = "cancel after 1\nyes"});
  house.Invoice("I1", {{"ServiceAmt", "0"}});
  house.Invoice("I2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled, ZeroBox({"I1"})}));
  EXPECT_FALSE(house.IsSent("I2"));
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(InvoiceSend, The_call_back_hears_mode_2_and_the_identifier_of_each_new_invoice) {
  InvoicesHouse house;
  Vars().g_IsSubscribed = true;
  house.Invoice("I1");
  house.Invoice("I2", {{"TransactionInvBillAmt", "-1"}});
  house.Send();
  EXPECT_EQ(house.callback.Events(),
            (std::vector<CallbackEvent>{2, std::string(), house.LinkOf("I1"), 2, std::string()}));
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(InvoiceSend, A_request_that_can_not_be_sent_is_told_and_the_next_invoice_goes) {
  // Ahead of it went the three things of retainers, the accounts, the items, and the look at sales taxes.
  InvoicesHouse house({}, "DoRequests 7 raise 0x80040404 \"Broken.\"\n");
  house.Invoice("I1");
  house.Invoice("I2");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveInvoicesToQB"))) << house.BoxTexts()[0];
  EXPECT_FALSE(house.IsSent("I1"));
  EXPECT_EQ(house.ColumnOf("I1", "LastUpdated"), "NULL");
  EXPECT_TRUE(house.IsSent("I2"));
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(InvoiceSend, An_error_ends_the_run_with_its_box_and_the_invoice_in_the_log_and_summarises_nothing) {
  InvoicesHouse house({}, Breaks("UPDATE TransactionTable SET QBLinkID"));
  house.Invoice("I1", {{"ServiceAmt", "0"}});
  house.Invoice("I2");
  house.Invoice("I3");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{BrokenBox("MoveInvoicesToQB")});
  ASSERT_EQ(house.Log().size(), 2U);
  EXPECT_EQ(house.Log()[1], "Error tranfering Invoice to QB. Transaction ID = I2");
  EXPECT_EQ(house.Requests("InvoiceAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

TEST(InvoiceSend, An_invoice_whose_lines_can_not_be_read_is_told_and_counts_as_one_that_lacks_something) {
  InvoicesHouse house({}, Breaks("SELECT ActivityID, TEHours"));
  house.Invoice("I1");
  house.Invoice("I2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{BrokenBox("AssignInvoiceFldValues"), kProblem}));
  EXPECT_FALSE(house.IsSent("I1"));
  EXPECT_TRUE(house.IsSent("I2"));
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(InvoiceSend, An_error_ahead_of_the_first_row_has_no_invoice_to_tell_of) {
  InvoicesHouse house({}, Breaks("SELECT TransactionID"));
  house.Invoice("I1");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{BrokenBox("MoveInvoicesToQB")});
  EXPECT_EQ(house.Log(), Texts{"Error tranfering Invoice to QB. Transaction ID = "});
}

}  // namespace
}  // namespace twqb
