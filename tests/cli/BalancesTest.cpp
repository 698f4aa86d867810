// What clients owe on both sides of the sample firm: after transfers the balances agree but for what a rule explains,
// and whatever differs is told by the records that make it up.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <sstream>

#include "Firm.h"
#include "tests/support/Process.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAreArray;

using Json = nlohmann::json;
using Texts = std::vector<std::string>;

constexpr double kCents = 100;
long long Cents(const Json& amount) { return std::llround(amount.get<double>() * kCents); }

std::string TextOf(const Json& text) { return text.is_null() ? "-" : text.get<std::string>(); }

// What never goes: an invoice below nothing, and a debit.
const Texts kExplained = {"HARBOR:PLANS belowNothing 1057 -18000", "HARBOR:SURVEY debit 1041 -4537"};

// A document of QuickBooks.
struct BookedThere {
  std::string id;
  std::string customer;
};

class Balances : public Firm {
 protected:
  using Firm::Firm;

  std::vector<Json> All() const {
    std::istringstream lines(folder_.Done({"balances", "--json"}));
    std::vector<Json> balances;
    for (std::string line; std::getline(lines, line);) balances.push_back(Json::parse(line));
    return balances;
  }
  // Of each balance with records: whose it is, and each record as "cause invoice cents".
  Texts Causes() const {
    Texts causes;
    for (const auto& balance : All()) {
      for (const auto& record : balance.at("records")) {
        causes.push_back(TextOf(balance.at("project")) + " " + TextOf(record.at("cause")) + " " +
                         TextOf(record.at("invoice")) + " " + std::to_string(Cents(record.at("difference"))));
      }
    }
    return causes;
  }
  void ExpectEachDifferenceToBeItsRecords() const {
    for (const auto& balance : All()) {
      long long sum = 0;
      for (const auto& record : balance.at("records")) sum += Cents(record.at("difference"));
      EXPECT_EQ(Cents(balance.at("difference")), sum) << balance;
      EXPECT_EQ(Cents(balance.at("billing")) - Cents(balance.at("quickBooks")), sum) << balance;
    }
  }
  // Without what never goes.
  Texts NewCauses() const {
    auto causes = Causes();
    for (const auto& explained : kExplained) std::erase(causes, explained);
    return causes;
  }
  BookedThere Booked(const std::string& kind, const std::string& number) const {
    BookedThere booked;
    ForEachRecord(kind, "", [&](const pugi::xml_node& record) {
      if (record.child_value("RefNumber") != number) return;
      booked = {.id = record.child_value("TxnID"), .customer = record.child("CustomerRef").child_value("ListID")};
    });
    EXPECT_FALSE(booked.id.empty()) << kind << " " << number;
    return booked;
  }
  // A payment that somebody enters in QuickBooks itself; `how` it goes to the document.
  void Receive(const BookedThere& document, const std::string& how) const {
    folder_.Write("receive.xml",
                  "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">"
                  "<ReceivePaymentAddRq><ReceivePaymentAdd><CustomerRef><ListID>" +
                      document.customer + "</ListID></CustomerRef><AppliedToTxnAdd><TxnID>" + document.id + "</TxnID>" +
                      how + "</AppliedToTxnAdd></ReceivePaymentAdd></ReceivePaymentAddRq></QBXMLMsgsRq></QBXML>");
    ASSERT_THAT(folder_.Done({"company", "run", "receive.xml"}), HasSubstr("statusMessage=\"Status OK\""));
  }
  // After both directions, and once more out.
  void Exchange() const {
    Transfer("send", 11);
    Transfer("get", 12);
    Transfer("send", 13);
  }
};

class BalancesOfEveryCountry : public Balances, public testing::WithParamInterface<std::string> {
 protected:
  BalancesOfEveryCountry() : Balances(GetParam()) {}
};

TEST_P(BalancesOfEveryCountry, Agree_after_an_exchange_but_for_what_never_goes) {
  Exchange();
  EXPECT_EQ(Causes(), kExplained);
  ExpectEachDifferenceToBeItsRecords();
  EXPECT_GT(All().size(), kExplained.size()) << "others owe something too";
}

// A send that holds payments back counts as failed each time, and what goes behind payments stays.
TEST_P(BalancesOfEveryCountry, Agree_after_an_exchange_but_for_payments_that_are_held_back_each_of_which_is_told) {
  Sql(ReadWholeFile(TWQB_SOURCE_DIR "/samples/billing/held-payments.sql"));
  const auto send = [this](int hour) {
    const auto ended = Run("send", "all", hour);
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, AllOf(HasSubstr("There were 1 Tallywick Payment(s) which you have"),
                                 HasSubstr("There were 1 Tallywick Payment(s) for which the payment amount"),
                                 HasSubstr("There were 1 Tallywick Payment(s) that did tranfer")));
  };
  send(11);
  Transfer("get", 12);
  send(13);
  EXPECT_THAT(NewCauses(), UnorderedElementsAreArray(Texts{
                               // of more than the invoice comes to
                               "HARBOR: moreThanIsOpen 1055 -283000",
                               // of an invoice that the payment before it has settled
                               "MILL:DESIGN invoiceIsPaid 1048 -855000",
                               // of a draft, which is not in QuickBooks, beside a retainer that has been used in part
                               "MARINA: invoiceIsDraft 1043 0", "MARINA: notApplied - 0"}));
  ExpectEachDifferenceToBeItsRecords();
  EXPECT_EQ(Scalar("SELECT COUNT(*) FROM Payment WHERE QBLinkID IS NULL AND PayMethod <> '6'"), "3");
}

TEST_P(BalancesOfEveryCountry, Are_in_QuickBooks_what_its_customers_owe_but_for_payments_without_an_invoice) {
  Transfer("send", 11);
  long long owed = 0;
  ForEachRecord("Customer", "<ActiveStatus>All</ActiveStatus>", [&](const pugi::xml_node& customer) {
    owed += std::llround(customer.child("Balance").text().as_double() * kCents);
  });
  long long unused = 0;
  ForEachRecord("ReceivePayment", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& payment) {
    unused += std::llround(payment.child("UnusedPayment").text().as_double() * kCents);
  });
  EXPECT_GT(unused, 0);
  long long open = 0;
  for (const auto& balance : All()) open += Cents(balance.at("quickBooks"));
  EXPECT_EQ(open, owed + unused);
}

INSTANTIATE_TEST_SUITE_P(Countries, BalancesOfEveryCountry, testing::Values("US", "CA", "UK", "AU"),
                         [](const auto& suite) { return suite.param; });

TEST_F(Balances, Tell_before_the_first_send_that_nothing_was_sent) {
  const auto causes = Causes();
  EXPECT_THAT(causes, AllOf(Contains("CULVERT: neverSent 1045 250000"), Contains("HARBOR: twinIsGone 1055 282750"),
                            Contains("HARBOR:PLANS belowNothing 1057 -18000")));
  EXPECT_THAT(causes, Not(Contains(HasSubstr("1043")))) << "a draft";
  ExpectEachDifferenceToBeItsRecords();
}

TEST_F(Balances, Tell_after_the_first_send_what_QuickBooks_has_alone) {
  Transfer("send", 11);
  for (const auto& balance : All()) {
    if (!balance.at("customer").is_null()) {
      EXPECT_TRUE(balance.at("client").is_null());
      EXPECT_EQ(Cents(balance.at("billing")), 0);
      EXPECT_THAT(balance.at("records"), Not(IsEmpty()));
    } else if (TextOf(balance.at("client")) != "ABBOTT") {
      EXPECT_EQ(Cents(balance.at("difference")), 0) << balance;
    }
  }
  EXPECT_THAT(Causes(), IsSupersetOf({"- notInBilling 2001 -143000", "- notInBilling 88 235000"}));
  EXPECT_THAT(Causes(), Not(Contains(HasSubstr(" 2005 ")))) << "pending, and owed by nobody";
  ExpectEachDifferenceToBeItsRecords();
}

// What happens to one side alone, and what is told of it besides what never goes.
struct Change {
  std::string name;
  std::string sql;
  Texts causes;
};

// A payment that is entered here for invoice 1045, of which 2,500 are open; its key is in other letters.
std::string NewPayment(const std::string& amount) {
  return "INSERT INTO Payment (PayID, ClientID, PayAmt, PayMethod, PayRef) VALUES ('{NEW}', 'EASTON', " + amount +
         ", '1', '7'); INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, PayID, "
         "TransactionPayAmtApplied) VALUES ('{NEW}', '1045', 'EASTON', 'culvert:', '{NEW}', " +
         amount + ")";
}

class ChangedBalances : public Balances, public testing::WithParamInterface<Change> {};

TEST_P(ChangedBalances, Are_told_by_the_records_behind_them) {
  Exchange();
  Sql(GetParam().sql);
  EXPECT_THAT(NewCauses(), UnorderedElementsAreArray(GetParam().causes));
  ExpectEachDifferenceToBeItsRecords();
}

INSTANTIATE_TEST_SUITE_P(
    Balances, ChangedBalances,
    testing::Values(
        Change{"AmountOfAnInvoice",
               "UPDATE TransactionTable SET TransactionInvBillAmt = 2500.01 WHERE TransactionInvNum = '1045'",
               {"CULVERT: amountDiffers 1045 1"}},
        Change{"LinkOfAnInvoiceLost",
               "UPDATE TransactionTable SET QBLinkID = NULL WHERE TransactionInvNum = '1045'",
               {"CULVERT: neverSent 1045 250000", "CULVERT: notInBilling 1045 -250000"}},
        Change{"LinkOfAnInvoiceToNothing",
               "UPDATE TransactionTable SET QBLinkID = 'FFFF-1' WHERE TransactionInvNum = '1045'",
               {"CULVERT: twinIsGone 1045 250000", "CULVERT: notInBilling 1045 -250000"}},
        Change{"LinkOfTwoInvoices",
               "INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, IsDraft, "
               "TransactionInvBillAmt, QBLinkID) SELECT '{AGAIN}', '1045B', ClientID, ProjectID, 0, 10, QBLinkID FROM "
               "TransactionTable WHERE TransactionInvNum = '1045'",
               {"CULVERT: linkIsTaken 1045B 1000"}},
        Change{"ProjectOfAnInvoice",
               "UPDATE TransactionTable SET ProjectID = 'BRIDGE:' WHERE TransactionInvNum = '1045'",
               {"BRIDGE: otherCustomer 1045 250000", "CULVERT: otherCustomer 1045 -250000"}},
        Change{"PaymentGone",
               "DELETE FROM TransactionTable WHERE PayID = '{4D5E0002-2F3A-4B6C-8D70-7E8F9A0B1C02}'",
               {"CULVERT:DESIGN paymentInQuickBooksAlone 1042 440000"}},
        Change{"PaymentOfAnotherAmount",
               "UPDATE TransactionTable SET TransactionPayAmtApplied = 4300 WHERE PayID = "
               "'{4D5E0002-2F3A-4B6C-8D70-7E8F9A0B1C02}'",
               {"CULVERT:DESIGN paymentDiffers 1042 10000"}},
        Change{"NewPayment", NewPayment("25"), {"CULVERT: paymentInBillingAlone 1045 -2500"}},
        Change{"NewPaymentOfAllThatIsOpen", NewPayment("2500"), {"CULVERT: paymentInBillingAlone 1045 -250000"}},
        Change{"NewPaymentOfACentMore", NewPayment("2500.01"), {"CULVERT: moreThanIsOpen 1045 -250001"}},
        Change{"PaymentOfAnUnknownInvoice",
               "INSERT INTO Payment (PayID, ClientID, PayAmt, PayMethod, PayRef) VALUES ('{NEW}', 'EASTON', 25, '1', "
               "'7'); INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, PayID, "
               "TransactionPayAmtApplied) VALUES ('{NEW}', '9999', 'EASTON', 'CULVERT:', '{NEW}', 25)",
               {"CULVERT: noSuchInvoice 9999 0"}},
        Change{"AmountWhereARetainerWaits",
               "UPDATE TransactionTable SET TransactionInvBillAmt = 5000 WHERE TransactionInvNum = '1051'",
               {"MARINA: amountDiffers 1051 -19125", "MARINA: notApplied - 0"}}),
    [](const auto& suite) { return suite.param.name; });

TEST_F(Balances, Tell_a_retainer_that_waits_with_what_is_left_of_it) {
  const auto all = All();
  const auto marina =
      std::ranges::find_if(all, [](const Json& balance) { return TextOf(balance.at("project")) == "MARINA:"; });
  ASSERT_NE(marina, all.end());
  const auto& waiting = marina->at("records").back();
  EXPECT_EQ(TextOf(waiting.at("cause")), "notApplied");
  EXPECT_EQ(Cents(waiting.at("billingUnused")), 250000) << "5,000 less 2,500 on invoice 1051";
  EXPECT_EQ(Cents(waiting.at("quickBooksUnused")), 0);
}

TEST_F(Balances, Tell_a_credit_memo_that_was_set_against_an_invoice_on_both_of_them) {
  Exchange();
  const auto memo = Booked("CreditMemo", "2003");
  const auto invoice = Booked("Invoice", "2003");
  Receive(invoice,
          "<SetCredit><CreditTxnID>" + memo.id + "</CreditTxnID><AppliedAmount>125.00</AppliedAmount></SetCredit>");
  EXPECT_THAT(NewCauses(), IsSupersetOf({"Oven Room: otherCredit 2003 12500", "Oven Room: otherCredit CM2003 -12500"}));
  ExpectEachDifferenceToBeItsRecords();
}

TEST_F(Balances, Tell_a_payment_that_was_entered_on_both_sides_twice_and_a_send_holds_it_back) {
  Exchange();
  Sql(NewPayment("2500"));
  Receive(Booked("Invoice", "1045"), "<PaymentAmount>2500.00</PaymentAmount>");
  const Texts twice = {"CULVERT: paymentInQuickBooksAlone 1045 250000", "CULVERT: invoiceIsPaid 1045 -250000"};
  EXPECT_THAT(NewCauses(), UnorderedElementsAreArray(twice));
  ExpectEachDifferenceToBeItsRecords();
  EXPECT_THAT(folder_.Done({"balances"}),
              ContainsRegex("CULVERT: +1045 +7 +-2500.00 +- +-2500.00 +payment in BillingDb alone: its invoice is paid "
                            "in QuickBooks already\n"));
  EXPECT_THAT(Run("send", "payments", 14).err, HasSubstr("There were 1 Tallywick Payment(s) which you have"));
  EXPECT_THAT(NewCauses(), UnorderedElementsAreArray(twice));
}

TEST_F(Balances, Tell_a_payment_of_a_credit_memo_as_one_here_alone) {
  Exchange();
  const auto memo = Booked("CreditMemo", "2003");
  Sql("INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ProjectID, PayID, TransactionPayAmtApplied) "
      "SELECT '{NEW}', TransactionInvNum, ProjectID, '{NEW}', 5 FROM TransactionTable WHERE QBLinkID = '" +
      memo.id + "'");
  EXPECT_THAT(NewCauses(), Contains("Oven Room: paymentInBillingAlone CM2003 -500"));
  ExpectEachDifferenceToBeItsRecords();
}

TEST_F(Balances, Tell_a_payment_that_came_in_under_the_number_that_QuickBooks_has_cut) {
  Exchange();
  Receive(Booked("Invoice", "2008-02-011"), "<PaymentAmount>100.00</PaymentAmount>");
  const std::string inQuickBooks = "HARBOR:SURVEY paymentInQuickBooksAlone 2008-02-0117-A 10000";
  EXPECT_THAT(NewCauses(), UnorderedElementsAreArray({inQuickBooks}));
  EXPECT_EQ(Run("get", "payments", 14).status, 0);
  const auto causes = NewCauses();
  EXPECT_THAT(causes, IsSupersetOf({inQuickBooks, std::string("HARBOR:SURVEY noSuchInvoice 2008-02-011 0")}));
  ExpectEachDifferenceToBeItsRecords();
}

TEST_F(Balances, Of_an_invoice_that_is_pending_in_QuickBooks_stand_in_BillingDb_alone) {
  Exchange();
  const auto pending = Booked("Invoice", "2005").id;
  Sql("INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ProjectID, IsDraft, TransactionInvBillAmt, "
      "QBLinkID) SELECT '{NEW}', '2005', ProjectID, 0, 190, '" +
      pending + "' FROM Project WHERE ProjectID = 'Warehouse:'");
  EXPECT_THAT(Causes(), Contains("Warehouse: pending 2005 19000"));
  ExpectEachDifferenceToBeItsRecords();
}

TEST_F(Balances, Stand_side_by_side_with_a_total_and_the_records_below) {
  Transfer("send", 11);
  const auto shown = folder_.Done({"balances"});
  std::istringstream lines(shown);
  std::string header;
  std::getline(lines, header);
  EXPECT_THAT(header, testing::MatchesRegex("CLIENT +PROJECT +BILLINGDB +QUICKBOOKS +DIFFERENCE"));
  EXPECT_THAT(shown, ContainsRegex("EASTON +CULVERT: +2500.00 +2500.00 +0.00\n"));
  EXPECT_THAT(shown, ContainsRegex("\n- +Solano:Pump Station +0.00 +567.87 +-567.87\n"));
  EXPECT_THAT(shown, ContainsRegex("\nTOTAL +[0-9.]+ +[0-9.]+ +-[0-9.]+\n\nCLIENT "));
  EXPECT_THAT(shown, ContainsRegex("HARBOR:SURVEY +1041 .* -45.37 +- +-45.37 +payment in BillingDb alone: a "
                                   "debit never goes"));
}

TEST_F(Balances, Change_nothing_on_either_side) {
  Transfer("send", 11);
  const auto names = folder_.Names();
  const auto billing = folder_.Read("billing.db");
  const auto company = folder_.Read("company.twq");
  folder_.Done({"balances"});
  EXPECT_EQ(folder_.Names(), names);
  EXPECT_TRUE(folder_.Read("billing.db") == billing);
  EXPECT_TRUE(folder_.Read("company.twq") == company);
}

TEST_F(Balances, Can_not_be_told_without_both_files_which_is_said) {
  for (const auto& [option, value] :
       {std::pair{"--billing", "Provider=SQLITE;Data Source=none.db"}, std::pair{"--company", "none.db"}}) {
    const auto ended = folder_.Twqb({"balances", option, value});
    EXPECT_EQ(ended.status, 2) << option;
    EXPECT_THAT(ended.out, IsEmpty());
    EXPECT_THAT(ended.err, AllOf(HasSubstr("none.db"), HasSubstr("twqb init")));
  }
  Sql("DROP TABLE Payment");
  const auto ended = folder_.Twqb({"balances"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("no table Payment"));
}

}  // namespace
}  // namespace twqb::cli
