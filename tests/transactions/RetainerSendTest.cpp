// Retainers to QuickBooks: whose they are, what is booked, references and dates, refusals.

#include <gtest/gtest.h>

#include "tests/transactions/PaymentsHouse.h"
#include "transactions/RetainerItems.h"

namespace twqb {
namespace {

const std::string kRetainerAsk =
    "A Retainer Payment could not be sent to QuickBooks\r\n\r\nPlease contact your software vendor.\r\n\r\nDo you want "
    "to "
    "continue?";
TEST(Retainers, Of_a_project_are_an_invoice_that_comes_to_nothing) {
  PaymentsHouse house;
  house.Retainer("P1", "ROOF:", {{"PayAmt", "500.005"}, {"PayRef", "'R-1'"}});
  house.Send();
  const auto body = house.Requests("InvoiceAddRq").at(0);
  EXPECT_EQ(body,
            "<InvoiceAdd><CustomerRef><ListID>" + house.job +
                "</ListID></CustomerRef><TxnDate>2008-03-04</TxnDate><RefNumber>R-1</RefNumber><IsPending>false"
                "</IsPending><InvoiceLineAdd><ItemRef><FullName>TWRetainerChargeItem</FullName></ItemRef><Amount>500.01"
                "</Amount></InvoiceLineAdd><InvoiceLineAdd><ItemRef><FullName>TWRetainerPayment</FullName></ItemRef>"
                "<Amount>500.01</Amount></InvoiceLineAdd></InvoiceAdd>");
  const auto link = house.LinkOf("P1");
  EXPECT_EQ(house.Statements("UPDATE "),
            (Texts{"UPDATE Payment SET QBLinkID = '" + link + "' WHERE PayID = 'P1';",
                   "UPDATE TransactionTable SET QBLinkID = '" + link + "' WHERE (PayID = 'P1');"}));
  EXPECT_EQ(house.Balance(link), "0.00");
  EXPECT_EQ(Vars().g_NewQBLinkID, link);
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(Retainers, Of_a_client_go_to_the_client_s_record) {
  PaymentsHouse house;
  house.Retainer("P1", "{CLIENT RETAINER}");
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Requests("InvoiceAddRq").at(0), "ListID"), house.client);
  EXPECT_EQ(house.Statements("SELECT ProjectID FROM TransactionTable WHERE (PayID = 'P1');").size(), 1U);
  EXPECT_EQ(house.Statements("SELECT ClientID FROM TransactionTable WHERE (PayID = 'P1');").size(), 1U);
}

TEST(Retainers, Without_a_reference_send_an_empty_one_so_that_they_take_no_invoice_s_number) {
  PaymentsHouse house;
  house.Retainer("P1", "ROOF:");
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Requests("InvoiceAddRq").at(0), "RefNumber"), "");
  EXPECT_TRUE(house.IsSent("P1"));
}

TEST(Retainers, That_QuickBooks_holds_are_left_alone_and_stale_links_are_overwritten) {
  PaymentsHouse house;
  house.Retainer("P1", "ROOF:");
  house.Retainer("P2", "ROOF:", {{"QBLinkID", "'FFF-1'"}});
  house.Send();
  EXPECT_EQ(house.Requests("InvoiceAddRq").size(), 2U);
  EXPECT_NE(house.LinkOf("P2"), "FFF-1");
  house.Clear();
  house.Send();
  EXPECT_TRUE(house.Requests("InvoiceAddRq").empty());
}

TEST(Retainers, Of_nothing_are_sent_and_those_below_are_not_without_a_word) {
  PaymentsHouse house;
  house.Retainer("P1", "ROOF:", {{"PayAmt", "0"}});
  house.Retainer("P2", "ROOF:", {{"PayAmt", "-1"}});
  house.Retainer("P3", "ROOF:", {{"PayAmt", "NULL"}, {"PayDate", "NULL"}});
  house.Send();
  EXPECT_TRUE(house.IsSent("P1"));
  EXPECT_FALSE(house.IsSent("P2"));
  EXPECT_TRUE(house.IsSent("P3"));
  EXPECT_EQ(SpiedHouse::TextOf(house.Requests("InvoiceAddRq").at(1), "TxnDate"), "2008-03-05");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(Retainers, Without_a_row_are_logged_and_without_a_link_they_are_not) {
  PaymentsHouse house;
  house.Insert("Project", {{"ProjectID", "'YARD:'"}, {"ClientID", "'ACME'"}});
  house.Payment("P1", {{"PayRetainer", "1"}});
  house.Retainer("P2", "YARD:");
  house.Send();
  EXPECT_FALSE(house.IsSent("P1") || house.IsSent("P2"));
  EXPECT_EQ(house.Log(), Texts{"Error transferring Payment to QB. Pay ID = P1"});
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(Retainers, Whose_payer_can_not_be_read_end_the_run) {
  PaymentsHouse house({}, Breaks("SELECT ProjectID FROM TransactionTable"));
  house.Retainer("P1", "ROOF:");
  house.Retainer("P2", "ROOF:");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{BrokenBox("MovePaymentsToQB")});
  EXPECT_TRUE(house.Log().empty());
  EXPECT_TRUE(house.Requests("InvoiceAddRq").empty());
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(Retainers, Are_rounded_to_cents_where_money_goes_by_the_rate) {
  PaymentsHouse house({}, {}, "CA");
  EXPECT_TRUE(AddRetainerItems(SpiedHouse::Session()));
  EXPECT_NE(AddRetainerPayment(SpiedHouse::Session(), {.CustomerListID = house.job,
                                                       .TxnDate = TextToDate("2008-03-04"),
                                                       .RefNumber = "R",
                                                       .Amount = Currency::FromTenThousandths(50050)}),
            "");
  EXPECT_EQ(SpiedHouse::TextOf(house.Requests("InvoiceAddRq").at(0), "Rate"), "5.01");
}

TEST(Retainers, That_are_refused_are_told_and_asked_about_and_yes_goes_on) {
  PaymentsHouse house({.answers = "yes"}, Refuses("InvoiceAddRq", 1, 3000));
  Vars().g_IsSubscribed = true;
  house.Retainer("P1", "ROOF:");
  house.Retainer("P2", "ROOF:");
  house.Send();
  ASSERT_EQ(house.BoxTexts(), (Texts{"\"AddRetainerPayment()\" : " + RefusalText("No.", 3000, "Error"), kRetainerAsk}));
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[1].box.icon, BoxIcon::Question);
  EXPECT_EQ(house.desk.Boxes()[1].box.title, "Error");
  EXPECT_FALSE(house.IsSent("P1"));
  EXPECT_TRUE(house.IsSent("P2"));
  // The call-back hears what came back, nothing included.
  EXPECT_EQ(house.callback.Events(),
            (std::vector<CallbackEvent>{2, std::string(), std::string(), 2, std::string(), house.LinkOf("P2")}));
}

// Support knows it by a name with parentheses, as no other routine's.
TEST(Retainers, That_break_are_told_under_the_name_of_the_routine_and_asked_about_too) {
  PaymentsHouse house({.answers = "yes"}, "DoRequests 5 raise 0x80040404 \"Broken.\"\n");
  house.Retainer("P1", "ROOF:");
  house.Retainer("P2", "ROOF:");
  house.Send();
  ASSERT_EQ(house.Requests("InvoiceAddRq").size(), 2U);
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("AddRetainerPayment()"))) << house.BoxTexts()[0];
  EXPECT_NE(house.BoxTexts()[0].find("Broken."), std::string::npos);
  EXPECT_EQ(house.BoxTexts()[1], kRetainerAsk);
  EXPECT_FALSE(house.IsSent("P1"));
  EXPECT_TRUE(house.IsSent("P2"));
  EXPECT_EQ(house.desk.ShownPointer(), Pointer::Default);
}

TEST(Retainers, That_are_refused_and_no_end_the_run_as_cancelled) {
  PaymentsHouse house({.answers = "no"}, Refuses("InvoiceAddRq", 1, 3000));
  house.Retainer("P1", "ROOF:");
  house.Retainer("P2", "ROOF:");
  house.Send();
  EXPECT_EQ(house.BoxTexts().back(), kOperationCancelled);
  EXPECT_FALSE(house.IsSent("P2"));
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
}

struct Reference {
  std::string name;
  std::string given;
  std::string sent;
};

class References : public testing::TestWithParam<Reference> {};

TEST_P(References, Of_retainers_lose_their_blanks_ahead_of_their_end) {
  PaymentsHouse house;
  house.Retainer("P1", "ROOF:", {{"PayRef", "'" + GetParam().given + "'"}});
  house.Send();
  EXPECT_EQ(SpiedHouse::TextOf(house.Requests("InvoiceAddRq").at(0), "RefNumber"), GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(Retainers, References,
                         testing::Values(Reference{"Fits", "12 45 78 01", "12 45 78 01"},
                                         Reference{"FitsWithoutBlanks", "12 45 78 012",
                                                   "12457801"
                                                   "2"},
                                         Reference{"IsCut", "12 45 78 01 23456", "12457801234"}),
                         [](const auto& test) { return test.param.name; });

struct LongAgo {
  std::string name;
  std::string country;
  std::string date;
  std::string booked;
};

class LongAgoRetainers : public testing::TestWithParam<LongAgo> {};

TEST_P(LongAgoRetainers, Are_booked_in_1901_in_Britain_alone) {
  PaymentsHouse house({}, {}, GetParam().country);
  EXPECT_TRUE(AddRetainerItems(SpiedHouse::Session()));
  static_cast<void>(AddRetainerPayment(SpiedHouse::Session(), {.CustomerListID = house.job,
                                                               .TxnDate = TextToDate(GetParam().date),
                                                               .RefNumber = "R",
                                                               .Amount = Currency::FromDouble(5)}));
  EXPECT_EQ(SpiedHouse::TextOf(house.Requests("InvoiceAddRq").at(0), "TxnDate"), GetParam().booked);
}

INSTANTIATE_TEST_SUITE_P(Retainers, LongAgoRetainers,
                         testing::Values(LongAgo{"British1985", "UK", "1985-07-04", "1901-07-04"},
                                         LongAgo{"British1990", "UK", "1990-01-01", "1990-01-01"},
                                         LongAgo{"American1985", "US", "1985-07-04T12:30:00", "1985-07-04"}),
                         [](const auto& test) { return test.param.name; });

class RetainersOfACountry : public testing::TestWithParam<std::string> {};

TEST_P(RetainersOfACountry, Take_their_money_by_the_rate) {
  PaymentsHouse house({}, {}, GetParam());
  house.Retainer("P1", "ROOF:");
  house.Send();
  const auto body = house.Requests("InvoiceAddRq").at(0);
  EXPECT_EQ(SpiedHouse::TextOf(body, "Rate"), "100");
  EXPECT_EQ(SpiedHouse::TextOf(body, "Amount"), "(none)");
  EXPECT_EQ(SpiedHouse::TextOf(body, "Quantity"), "(none)");
  ASSERT_TRUE(house.IsSent("P1"));
  EXPECT_EQ(house.Balance(house.LinkOf("P1")), "0.00");
}

INSTANTIATE_TEST_SUITE_P(Retainers, RetainersOfACountry, testing::Values("CA", "UK", "AU"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace twqb
