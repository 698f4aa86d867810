// Payments to QuickBooks: allocations and what holds them back, discounts, refusals.

#include <gtest/gtest.h>

#include <tuple>

#include "tests/transactions/PaymentsHouse.h"

namespace twqb {
namespace {

std::string Applied(std::string_view txnId, std::string_view rest) {
  return fmt::format("<AppliedToTxnAdd><TxnID>{}</TxnID>{}</AppliedToTxnAdd>", txnId, rest);
}

// --- Allocations -----------------------------------------------------------------------------------------------------

TEST(PaymentSend, A_payment_goes_to_its_invoice_and_is_linked_with_its_allocation) {
  PaymentsHouse house;
  const auto invoice = house.Invoice("I1");
  house.Payment("P1", {{"PayMemo", "'Thanks'"}, {"PayRef", "'4711'"}});
  house.Allocate("P1", "I1", "60");
  house.Send();
  EXPECT_EQ(house.Sent(),
            "<CustomerRef><ListID>" + house.job +
                "</ListID></CustomerRef><ARAccountRef><FullName>Accounts Receivable</FullName>"
                "</ARAccountRef><TxnDate>2008-03-04</TxnDate><RefNumber>4711</RefNumber><TotalAmount>60.00"
                "</TotalAmount><PaymentMethodRef><FullName>Check</FullName></PaymentMethodRef><Memo>Thanks"
                "</Memo>" +
                Applied(invoice, "<PaymentAmount>60.00</PaymentAmount>"));
  const auto link = house.LinkOf("P1");
  EXPECT_EQ(
      house.Statements("UPDATE "),
      (Texts{"UPDATE Payment SET QBLinkID = '" + link + "' WHERE PayID = 'P1';",
             "UPDATE TransactionTable SET QBLinkID = '" + link + "' WHERE (TransactionID = 'P1-I1');",
             "UPDATE TransactionTable SET LastUpdated = '03/05/2008 15:00:00' WHERE (TransactionID = 'P1-I1');"}));
  EXPECT_EQ(house.AllocationLink("P1", "I1"), link);
  EXPECT_EQ(house.Balance(invoice), "40.00");
  EXPECT_EQ(Vars().g_NewQBLinkID, link);
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(PaymentSend, Fields_that_say_nothing_stay_away_and_dates_are_floored_or_today_s) {
  PaymentsHouse house;
  house.Invoice("I1");
  house.Invoice("I2");
  house.Payment("P1", {{"PayDate", "NULL"}, {"PayMemo", "'  '"}, {"PayMethod", "'7'"}});
  house.Allocate("P1", "I1", "1", {{"LastUpdated", "'2008-01-02 03:04:05'"}});
  house.Payment("P2", {{"PayDate", "'1899-12-30'"}, {"PayRef", "'" + std::string(30, '9') + "'"}});
  house.Allocate("P2", "I2", "1.005");
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(0), "TxnDate"), "2008-03-05");
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(0), "Memo"), "(none)");
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(0), "RefNumber"), "(none)");
  EXPECT_NE(house.Sent(0).find("<PaymentMethodRef><FullName>Credit Card</FullName>"), std::string::npos);
  EXPECT_EQ(house.Scalar("SELECT LastUpdated FROM TransactionTable WHERE TransactionID = 'P1-I1'"),
            "1/2/2008 3:04:05 AM");
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(1), "TxnDate"), "1901-01-01");
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(1), "RefNumber"), std::string(20, '9'));
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(1), "TotalAmount"), "1.01");
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(1), "PaymentAmount"), "1.01");
}

TEST(PaymentSend, A_payment_of_two_invoices_is_two_payments_and_the_row_has_the_last_one_s_link) {
  PaymentsHouse house;
  const auto first = house.Invoice("I1");
  const auto second = house.Invoice("I2");
  house.Payment("P1");
  house.Allocate("P1", "I1", "60");
  house.Allocate("P1", "I2", "40");
  house.Send();
  EXPECT_EQ(house.Requests("ReceivePaymentAddRq").size(), 2U);
  EXPECT_EQ(house.Balance(first), "40.00");
  EXPECT_EQ(house.Balance(second), "60.00");
  EXPECT_NE(house.AllocationLink("P1", "I1"), house.AllocationLink("P1", "I2"));
  EXPECT_EQ(house.LinkOf("P1"), house.AllocationLink("P1", "I2"));
}

TEST(PaymentSend, A_missing_second_invoice_leaves_the_first_sent_and_the_next_payment_goes) {
  PaymentsHouse house;
  house.Invoice("I1");
  house.Payment("P1", {{"PayRef", "'77'"}});
  house.Allocate("P1", "I1", "60");
  house.Allocate("P1", "I2", "40");
  house.Payment("P2");
  house.Allocate("P2", "I1", "40");
  house.Send();
  EXPECT_TRUE(house.IsSent("P1") && house.IsSent("P2"));
  EXPECT_EQ(house.AllocationLink("P1", "I2"), "NULL");
  EXPECT_EQ(house.Log(),
            Texts{"Could not transfer Payment to QB, because the invoice does not exist in QB. Missing Inv "
                  "Num = I2, ClientID = ACME , ProjectID = ROOF:"});
  ASSERT_EQ(house.BoxTexts(), Texts{MissingBox(1)});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(PaymentSend, An_invoice_that_can_not_be_read_ends_the_payment_without_a_word_of_its_own) {
  PaymentsHouse house;
  const auto invoice = house.Invoice("I1");
  house.Sql("UPDATE TransactionTable SET QBLinkID = 'FFF-1' WHERE TransactionID = 'I1'");
  house.Payment("P1");
  house.Allocate("P1", "I1", "60");
  house.Send();
  EXPECT_TRUE(house.Requests("ReceivePaymentAddRq").empty());
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

struct Open {
  std::string name;
  std::string amount;
  bool goes;
};

class OpenBalances : public testing::TestWithParam<Open> {};

TEST_P(OpenBalances, Take_what_is_open_and_no_cent_more) {
  PaymentsHouse house;
  house.Invoice("I1", "100.00");
  house.Payment("P1", {{"PayRef", "'77'"}});
  house.Allocate("P1", "I1", GetParam().amount);
  house.Send();
  EXPECT_EQ(house.IsSent("P1"), GetParam().goes);
  if (GetParam().goes) {
    EXPECT_TRUE(house.BoxTexts().empty());
    EXPECT_EQ(Outcome(), TableOk::True);
    return;
  }
  EXPECT_EQ(house.BoxTexts(), Texts{ExceedingBox(1)});
  EXPECT_EQ(
      house.Log(),
      Texts{"Could not transfer Payment to QB, because the TW Payment amount is greater than the QB invoice amount. "
            "Pay ID = P1, ClientID = ACME , ProjectID = ROOF: ReferenceNumber = \"77\""});
  EXPECT_EQ(Outcome(), TableOk::False);
}

INSTANTIATE_TEST_SUITE_P(PaymentSend, OpenBalances,
                         testing::Values(Open{"All", "100", true}, Open{"CentMore", "100.01", false},
                                         Open{"PartOfACentMore", "100.001", false}, Open{"Part", "0.01", true}),
                         [](const auto& test) { return test.param.name; });

class PaidInvoices : public testing::TestWithParam<std::string> {};

TEST_P(PaidInvoices, Count_as_paid_by_hand_whatever_the_amount) {
  PaymentsHouse house;
  house.Invoice("I1", "0.00");
  house.Payment("P1");
  house.Allocate("P1", "I1", GetParam());
  house.Send();
  EXPECT_FALSE(house.IsSent("P1"));
  EXPECT_EQ(
      house.Log(),
      Texts{"Could not transfer Payment to QB, because user seems to have received a payment manually in QuickBooks "
            "for it. Pay ID = P1, ClientID = ACME , ProjectID = ROOF: ReferenceNumber = \"\""});
  EXPECT_EQ(house.BoxTexts(), Texts{ManualBox(1)});
  // This summary leaves the outcome alone.
  EXPECT_EQ(Outcome(), TableOk::True);
}

INSTANTIATE_TEST_SUITE_P(PaymentSend, PaidInvoices, testing::Values("0", "60", "NULL"),
                         [](const auto& test) { return "Amount" + test.param; });

TEST(PaymentSend, An_invoice_that_was_received_in_full_there_takes_no_payment_and_one_received_in_part_what_is_left) {
  PaymentsHouse house;
  for (const auto& [number, received] : {std::pair("I1", "100.00"), std::pair("I2", "70.00")}) {
    const auto invoice = house.Invoice(number);
    house.Add("ReceivePayment",
              fmt::format("<CustomerRef><ListID>{}</ListID></CustomerRef><TotalAmount>{}</TotalAmount>"
                          "<AppliedToTxnAdd><TxnID>{}</TxnID><PaymentAmount>{}</PaymentAmount>"
                          "</AppliedToTxnAdd>",
                          house.job, received, invoice, received));
  }
  for (const auto& [payment, invoice, amount] :
       {std::tuple("P1", "I1", "0.01"), std::tuple("P2", "I2", "30.01"), std::tuple("P3", "I2", "30")}) {
    house.Payment(payment);
    house.Allocate(payment, invoice, amount);
  }
  house.Send();
  EXPECT_FALSE(house.IsSent("P1") || house.IsSent("P2"));
  EXPECT_TRUE(house.IsSent("P3"));
  EXPECT_EQ(house.BoxTexts(), (Texts{ManualBox(1), ExceedingBox(1)}));
}

TEST(PaymentSend, The_summaries_come_in_their_order_when_all_is_closed) {
  PaymentsHouse house;
  house.Invoice("I1", "0.00");
  house.Invoice("I2");
  house.Payment("P1");
  house.Allocate("P1", "I3", "1");
  house.Payment("P2");
  house.Allocate("P2", "I2", "101");
  house.Payment("P3");
  house.Allocate("P3", "I1", "1");
  house.Payment("P4");
  house.Allocate("P4", "I3", "1");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{ManualBox(1), ExceedingBox(1), MissingBox(2)}));
  EXPECT_FALSE(house.desk.Form());
}

TEST(PaymentSend, A_client_without_a_link_ends_the_payment_and_a_project_without_one_its_allocation) {
  PaymentsHouse house;
  house.Invoice("I1");
  house.Insert("Project", {{"ProjectID", "'YARD:'"}, {"ClientID", "'ACME'"}});
  house.Insert("Client", {{"ClientID", "'BOX'"}});
  house.Payment("P1");
  house.Allocate("P1", "X1", "1", {{"ProjectID", "'YARD:'"}});
  house.Allocate("P1", "I1", "60");
  house.Payment("P2");
  house.Allocate("P2", "X2", "1", {{"ClientID", "'BOX'"}});
  house.Allocate("P2", "I1", "40");
  house.Send();
  EXPECT_TRUE(house.IsSent("P1"));
  EXPECT_EQ(house.AllocationLink("P1", "X1"), "NULL");
  EXPECT_FALSE(house.IsSent("P2"));
  EXPECT_EQ(house.AllocationLink("P2", "I1"), "NULL");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- Links of its own ------------------------------------------------------------------------------------------------

TEST(PaymentSend, A_payment_that_QuickBooks_holds_is_never_sent_again) {
  PaymentsHouse house;
  house.Invoice("I1");
  house.Payment("P1");
  house.Allocate("P1", "I1", "60");
  house.Send();
  const auto link = house.LinkOf("P1");
  house.Clear();
  house.Send();
  EXPECT_EQ(house.Requests("ReceivePaymentQueryRq").size(), 1U);
  EXPECT_TRUE(house.Requests("ReceivePaymentAddRq").empty());
  EXPECT_EQ(house.LinkOf("P1"), link);
}

TEST(PaymentSend, A_stale_link_is_overwritten) {
  PaymentsHouse house;
  house.Invoice("I1");
  house.Payment("P1", {{"QBLinkID", "'FFF-1'"}});
  house.Allocate("P1", "I1", "60");
  house.Send();
  EXPECT_NE(house.LinkOf("P1"), "FFF-1");
}

// --- Discounts -------------------------------------------------------------------------------------------------------

class Discounts : public testing::TestWithParam<std::string> {};

TEST_P(Discounts, Of_credits_and_write_offs_have_no_total_and_go_to_the_account_of_the_settings) {
  PaymentsHouse house;
  const auto invoice = house.Invoice("I1");
  house.Add("Account", "<Name>Lost</Name><AccountType>Expense</AccountType>");
  house.Setting("GENERAL", "INVOICE_SERVICE_ACCOUNT", "Lost");
  house.Payment("P1", {{"PayMethod", "'" + GetParam() + "'"}});
  house.Allocate("P1", "I1", "60.005");
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(), "TotalAmount"), "(none)");
  EXPECT_TRUE(house.Sent().ends_with(Applied(invoice,
                                             "<DiscountAmount>60.01</DiscountAmount><DiscountAccountRef><FullName>Lost"
                                             "</FullName></DiscountAccountRef>")))
      << house.Sent();
  EXPECT_TRUE(house.IsSent("P1"));
  EXPECT_EQ(house.Balance(invoice), "39.99");
}

INSTANTIATE_TEST_SUITE_P(PaymentSend, Discounts, testing::Values("3", "4"),
                         [](const auto& test) { return "Method" + test.param; });

TEST(PaymentSend, An_applied_retainer_is_a_discount_on_its_account_with_a_total_of_nothing) {
  PaymentsHouse house;
  const auto invoice = house.Invoice("I1");
  house.Payment("P1", {{"PayMethod", "'A'"}});
  house.Allocate("P1", "I1", "60");
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(), "TotalAmount"), "0.00");
  EXPECT_TRUE(house.Sent().ends_with(Applied(invoice,
                                             "<DiscountAmount>60.00</DiscountAmount><DiscountAccountRef><FullName>"
                                             "TWUnearnedRetAccount</FullName></DiscountAccountRef>")))
      << house.Sent();
  EXPECT_TRUE(house.IsSent("P1"));
  EXPECT_EQ(house.Balance(invoice), "40.00");
}

TEST(PaymentSend, A_small_a_is_a_credit_by_name_and_money_by_nature) {
  PaymentsHouse house;
  house.Invoice("I1");
  house.Payment("P1", {{"PayMethod", "'a'"}});
  house.Allocate("P1", "I1", "60");
  house.Send();
  EXPECT_NE(house.Sent().find("<FullName>Credit</FullName>"), std::string::npos);
  EXPECT_EQ(SpiedHouse::TextOf(house.Sent(), "PaymentAmount"), "60.00");
}

TEST(PaymentSend, Without_a_method_it_goes_as_a_check) {
  PaymentsHouse house({}, {}, "CA");
  house.Invoice("I1");
  // The selection leaves those out whose method is not known to be another than 6.
  house.Payment("P1", {{"PayMethod", "''"}});
  house.Allocate("P1", "I1", "60");
  house.Send();
  EXPECT_NE(house.Sent().find("<FullName>Cheque</FullName>"), std::string::npos);
  EXPECT_TRUE(house.IsSent("P1"));
}

// --- Refusals and errors ---------------------------------------------------------------------------------------------

TEST(PaymentSend, A_refusal_is_logged_and_asked_about_and_yes_goes_on_with_the_next_payment) {
  PaymentsHouse house({.answers = "yes"}, Refuses("ReceivePaymentAddRq", 1, 3000));
  house.Invoice("I1");
  house.Payment("P1");
  house.Allocate("P1", "I1", "1");
  house.Allocate("P1", "I1X", "1");
  house.Payment("P2");
  house.Allocate("P2", "I1", "2");
  house.Send();
  ASSERT_EQ(house.BoxTexts(), Texts{kAsk});
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Question);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(house.Log(), Texts{"Error transferring Payment to QB. Pay ID = P1"});
  EXPECT_FALSE(house.IsSent("P1"));
  EXPECT_TRUE(house.IsSent("P2"));
}

TEST(PaymentSend, No_ends_the_run_as_cancelled_and_the_summaries_follow) {
  PaymentsHouse house({.answers = "no"}, Refuses("ReceivePaymentAddRq", 1, 3000));
  house.Invoice("I1");
  house.Payment("P1");
  house.Allocate("P1", "I2", "1");
  house.Payment("P2");
  house.Allocate("P2", "I1", "1");
  house.Payment("P3");
  house.Allocate("P3", "I1", "1");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{kAsk, kOperationCancelled, MissingBox(1)}));
  EXPECT_FALSE(house.IsSent("P3"));
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(PaymentSend, An_invalid_reference_leaves_the_table_at_once) {
  PaymentsHouse house({}, Refuses("ReceivePaymentAddRq", 1, 3140));
  house.Invoice("I1");
  house.Payment("P1");
  house.Allocate("P1", "I1", "1");
  house.Payment("P2");
  house.Allocate("P2", "I1", "1");
  house.Send();
  ASSERT_EQ(
      house.BoxTexts(),
      Texts{"There was a problem in transfering Payment(s). Please make sure\r\nthe associated data does exist in "
            "QuickBooks. Specifically, make\r\nsure all the associated Invoices, Clients and Projects are tranfered "
            "to QuickBooks.\r\n"});
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.Log(), Texts{"Error transferring Payment to QB. Pay ID = P1"});
  EXPECT_EQ(house.Requests("ReceivePaymentAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

TEST(PaymentSend, An_error_ends_the_run_with_its_box_and_no_summary) {
  PaymentsHouse house({}, Breaks("UPDATE Payment SET QBLinkID"));
  house.Invoice("I1");
  house.Payment("P1");
  house.Allocate("P1", "I2", "1");
  house.Payment("P2");
  house.Allocate("P2", "I1", "1");
  house.Payment("P3");
  house.Allocate("P3", "I1", "1");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{BrokenBox("MovePaymentsToQB")});
  EXPECT_EQ(house.Log().size(), 1U);
  EXPECT_EQ(house.Requests("ReceivePaymentAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

TEST(PaymentSend, Items_of_retainers_that_are_lacking_end_the_run_ahead_of_the_first_payment) {
  PaymentsHouse house({}, Refuses("AccountAddRq", 1, 3000));
  house.Invoice("I1");
  house.Payment("P1");
  house.Allocate("P1", "I1", "1");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{"\"AddAccount()\" : " + RefusalText("No.", 3000, "Error")});
  EXPECT_FALSE(house.IsSent("P1"));
  EXPECT_FALSE(house.desk.Form());
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(PaymentSend, The_form_shows_date_and_client_of_each_payment) {
  PaymentsHouse house;
  house.Payment("P1");
  house.Send();
  EXPECT_EQ(house.FormTexts(),
            (Texts{"Sending Payment Methods to QuickBooks...", "Sending Payments To QuickBooks..."}));
  Texts shown;
  for (const auto& event : house.desk.FormEvents()) {
    if (shown.empty() || shown.back() != event.state.record) shown.push_back(event.state.record);
  }
  EXPECT_EQ(shown.back(), "3/4/2008, ACME");
}

TEST(PaymentSend, Cancel_ends_the_run_behind_the_payment_in_hand) {
  PaymentsHouse house({.answers = "cancel after 1\nyes"});
  house.Invoice("I1");
  for (const auto* key : {"P1", "P2", "P3"}) {
    house.Payment(key);
    house.Allocate(key, "I1", "1");
  }
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled}));
  EXPECT_FALSE(house.IsSent("P3"));
  EXPECT_EQ(Outcome(), TableOk::False);
}

class PaymentsOfACountry : public testing::TestWithParam<std::string> {};

TEST_P(PaymentsOfACountry, Go_to_their_invoices) {
  PaymentsHouse house({}, {}, GetParam());
  const auto invoice = house.Invoice("I1");
  house.Payment("P1");
  house.Allocate("P1", "I1", "60");
  house.Send();
  EXPECT_TRUE(house.IsSent("P1"));
  EXPECT_EQ(house.Balance(invoice), "40.00");
}

INSTANTIATE_TEST_SUITE_P(PaymentSend, PaymentsOfACountry, testing::Values("US", "CA", "UK"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace twqb
