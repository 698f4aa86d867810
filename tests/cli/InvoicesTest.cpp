// The invoices of the sample firm on both sides: each that can go is worth the same to the cent, in every edition and
// in every form.
//
// The two sides are joined by links alone: QuickBooks cuts a long number.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "Firm.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::Pair;

constexpr double kCents = 100;

long long Cents(const std::string& amount) { return amount.empty() ? 0 : std::llround(std::stod(amount) * kCents); }

// An invoice of QuickBooks.
struct Invoice {
  struct Line {
    std::string item;
    std::string amount;
  };
  std::string number;
  long long cents = 0;
  std::vector<Line> lines = {};

  [[nodiscard]] std::vector<std::string> Items() const {
    std::vector<std::string> items;
    for (const auto& line : lines) items.push_back(line.item);
    return items;
  }
};

// QuickBooks' own invoices and credit memos come in with a get.
constexpr const char* kOfTheFirm =
    "PayID IS NULL AND TransactionInvNum NOT BETWEEN '2001' AND '2006' AND TransactionInvNum < 'CM'";
bool IsQuickBooksOwn(const std::string& number) { return number.size() == 4 && number.starts_with("200"); }

class Invoices : public Firm {
 protected:
  using Firm::Firm;

  // Those that went to QuickBooks by their identifiers.
  std::map<std::string, Invoice> InvoicesThere() const {
    std::map<std::string, Invoice> invoices;
    ForEachRecord("Invoice", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& record) {
      Invoice invoice{.number = record.child_value("RefNumber")};
      if (IsQuickBooksOwn(invoice.number)) return;
      for (const char* part : {"Subtotal", "SalesTaxTotal", "Tax1Total", "Tax2Total"}) {
        invoice.cents += Cents(record.child_value(part));
      }
      for (const auto& line : record.children("InvoiceLineRet")) {
        invoice.lines.push_back(
            {.item = line.child("ItemRef").child_value("FullName"), .amount = line.child_value("Amount")});
      }
      invoices.emplace(record.child_value("TxnID"), std::move(invoice));
    });
    return invoices;
  }
  // Columns of the rows that are linked, in the order of their numbers.
  std::vector<std::vector<std::string>> LinkedRows(const std::string& columns) const {
    return Rows("SELECT " + columns + " FROM TransactionTable WHERE " + kOfTheFirm +
                " AND QBLinkID <> '' ORDER BY TransactionInvNum");
  }
  // The twins of those rows by the rows' numbers.
  std::map<std::string, Invoice> InvoicesByNumber() const {
    auto there = InvoicesThere();
    std::map<std::string, Invoice> invoices;
    for (const auto& row : LinkedRows("TransactionInvNum, QBLinkID")) {
      if (const auto found = there.find(row.at(1)); found != there.end()) invoices.emplace(row.at(0), found->second);
    }
    return invoices;
  }
  void ExpectTheSameTotals() const {
    constexpr const char* kSum =
        "ServiceAmt + ExpAmt + TransactionManInvMiscAmt + ServiceTaxAmt + ExpTaxAmt + MainServiceTaxAmt + "
        "MainExpenseTaxAmt - TransactionInvDiscount - InvRetainerAmtApplied";
    const auto there = InvoicesByNumber();
    for (const auto& row : LinkedRows(std::string("TransactionInvNum, TransactionInvBillAmt, ") + kSum)) {
      ASSERT_TRUE(there.contains(row.at(0))) << row.at(0);
      EXPECT_EQ(there.at(row.at(0)).cents, Cents(row.at(2))) << row.at(0);
      EXPECT_EQ(Cents(row.at(1)), Cents(row.at(2))) << row.at(0);
    }
  }
  std::vector<std::string> Items(const std::string& number) const { return InvoicesByNumber()[number].Items(); }
  std::string LinkOf(const std::string& number) const {
    return Scalar("SELECT COALESCE(QBLinkID, '') FROM TransactionTable WHERE PayID IS NULL AND TransactionInvNum = '" +
                  number + "'");
  }
  std::string Linked() const {
    std::string numbers;
    for (const auto& row : LinkedRows("TransactionInvNum")) numbers += (numbers.empty() ? "" : " ") + row.at(0);
    return numbers;
  }
  int TimesThere(const std::string& number) const {
    int times = 0;
    for (const auto& [id, invoice] : InvoicesThere()) times += invoice.number == number ? 1 : 0;
    return times;
  }
  // What an invoice refers to, so that invoices alone can go from then on.
  void SendLists() const {
    for (const auto* table : {"clients", "projects", "activities", "expensecodes"}) {
      EXPECT_EQ(Run("send", table, 11).status, 0) << table;
    }
  }
};

constexpr const char* kAllThatCanGo =
    "1041 1042 1044 1045 1046 1047 1048 1049 1050 1051 1052 1053 1055 1056 1058 2008-02-0117-A";

class InvoicesOfCountry : public Invoices, public testing::WithParamInterface<std::string> {
 protected:
  InvoicesOfCountry() : Invoices(GetParam()) {}
};

TEST_P(InvoicesOfCountry, Are_worth_the_same_on_both_sides_to_the_cent) {
  const auto ended = Run("send", "all", 11);
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, Not(AnyOf(HasSubstr("Invoice"), HasSubstr("Error"))));
  EXPECT_EQ(Linked(), kAllThatCanGo);
  ExpectTheSameTotals();
}

TEST_P(InvoicesOfCountry, A_second_send_adds_none) {
  Transfer("send", 11);
  Transfer("send", 12);
  EXPECT_THAT(Transcript("send", 11), HasSubstr("<InvoiceAddRq"));
  EXPECT_THAT(Transcript("send", 12), Not(AnyOf(HasSubstr("<InvoiceAddRq"), HasSubstr("<InvoiceModRq"))));
  EXPECT_EQ(InvoicesByNumber().size(), 16U);
}

TEST_P(InvoicesOfCountry, Still_go_when_their_items_have_been_to_BillingDb_and_back) {
  Transfer("send", 11);
  Transfer("get", 12);
  Transfer("send", 13);
  EXPECT_EQ(
      Scalar("SELECT COUNT(*) FROM Activity WHERE ActivityID IN ('GEN WUD:', 'TWServiceAmt:') AND QBLinkID <> ''"),
      "2");
  // Every form once more: what QuickBooks had is unknown to the rows.
  Sql(std::string("UPDATE TransactionTable SET QBLinkID = NULL WHERE ") + kOfTheFirm);
  Transfer("send", 14);
  EXPECT_EQ(Linked(), kAllThatCanGo);
  ExpectTheSameTotals();
}

INSTANTIATE_TEST_SUITE_P(Invoices, InvoicesOfCountry, testing::Values("US", "CA", "UK", "AU"),
                         [](const auto& suite) { return suite.param; });

TEST_F(Invoices, That_are_drafts_below_nothing_or_without_a_number_stay_without_a_word) {
  Sql("UPDATE TransactionTable SET TransactionInvNum = NULL WHERE TransactionInvNum = '1045'");
  const auto ended = Run("send", "all", 11);
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, Not(HasSubstr("Invoice")));
  EXPECT_EQ(Linked(), "1041 1042 1044 1046 1047 1048 1049 1050 1051 1052 1053 1055 1056 1058 2008-02-0117-A");
  for (const auto* number : {"1043", "1057", "1059"}) EXPECT_EQ(LinkOf(number), "") << number;
  EXPECT_EQ(Scalar("SELECT TransactionInvBillAmt FROM TransactionTable WHERE TransactionInvNum = '1057'"), "-180");
  const auto log = folder_.Read("TWQBLog20083.txt");
  EXPECT_THAT(log, Not(AnyOf(HasSubstr("1043"), HasSubstr("1057"), HasSubstr("1059"))));
}

TEST_F(Invoices, With_nothing_on_them_stay_and_are_told_by_each_send_while_all_others_go) {
  Sql("UPDATE TransactionTable SET IsDraft = 0 WHERE TransactionInvNum = '1059'");
  for (const int hour : {11, 12}) {
    const auto ended = Run("send", "all", hour);
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.err, AllOf(HasSubstr("Following Invoice(s) not transferred to QuickBooks"), HasSubstr("1059"),
                                 Not(HasSubstr("1056"))));
    EXPECT_EQ(Linked(), kAllThatCanGo);
  }
  EXPECT_THAT(folder_.Read("TWQBLog20083.txt"),
              HasSubstr("Could not transfer an invoice to QB, because its amount is zero. TransactionID = "
                        "{1A2B0019-6C3D-4E5F-8A90-0B1C2D3E4F19}  TransactionInvNum = 1059"));
}

TEST_F(Invoices, Of_a_project_without_a_link_stay_and_are_told_once_while_all_others_go) {
  SendLists();
  Sql("UPDATE Project SET QBLinkID = NULL WHERE ProjectID IN ('MARINA:', 'BRIDGE:')");
  const auto ended = Run("send", "invoices", 12);
  EXPECT_EQ(ended.status, 1);
  const std::string told = "There was a problem in transfering Invoice(s).";
  EXPECT_THAT(ended.err, HasSubstr(told));
  EXPECT_EQ(ended.err.find(told), ended.err.rfind(told));
  EXPECT_EQ(Linked(), "1041 1042 1044 1045 1047 1048 1049 1050 1052 1053 1055 1056 1058 2008-02-0117-A");

  Transfer("send", 13);
  EXPECT_EQ(Linked(), kAllThatCanGo);
  ExpectTheSameTotals();
}

TEST_F(Invoices, Ahead_of_their_clients_and_projects_stay_all) {
  EXPECT_EQ(Run("send", "invoices", 11).status, 1);
  EXPECT_THAT(InvoicesThere(), IsEmpty());
  Transfer("send", 12);
  EXPECT_EQ(Linked(), kAllThatCanGo);
}

TEST_F(Invoices, Whose_twin_is_gone_go_again_and_keep_the_time_of_their_last_change) {
  const auto before = LinkOf("1055");
  Transfer("send", 11);
  EXPECT_THAT(LinkOf("1055"), AllOf(Not(IsEmpty()), Not(before)));
  EXPECT_TRUE(InvoicesThere().contains(LinkOf("1055")));
  const auto lastUpdated = [this](const std::string& number) {
    return Scalar("SELECT LastUpdated FROM TransactionTable WHERE PayID IS NULL AND TransactionInvNum = '" + number +
                  "'");
  };
  EXPECT_EQ(lastUpdated("1055"), "2008-01-31T21:30:00");
  EXPECT_THAT(lastUpdated("1045"), HasSubstr("2008-03-05")) << "had none";
}

TEST_F(Invoices, Show_each_hour_and_each_expense_with_a_line_that_makes_up_for_the_rest) {
  Transfer("send", 11);
  const auto invoices = InvoicesByNumber();
  EXPECT_THAT(invoices.at("1044").Items(), ElementsAre("SURVEY FIELD", "SURVEY FIELD", "SURVEY FIELD", "SURVEY FIELD",
                                                       "SURVEY FIELD", "SURVEY FIELD", "GEN WUD", "TRAVEL MILE",
                                                       "REPRO ", "TRAVEL FARE", "TWServiceTaxAmt", "TWExpenseTaxAmt"));
  EXPECT_THAT(invoices.at("1055").Items(), ElementsAre("STRUCT CALC", "STRUCT CALC", "STRUCT CALC"));
  EXPECT_THAT(invoices.at("1058").Items(), ElementsAre("From Tallywick", "REPRO MYLAR", "TRAVEL HOTEL"));

  std::map<std::string, std::string> corrections;
  for (const auto& [number, invoice] : invoices) {
    for (const auto& line : invoice.lines) {
      if (line.item == "GEN WUD") corrections.emplace(number, line.amount);
    }
  }
  EXPECT_THAT(corrections, ElementsAre(Pair("1044", "-1.65"),                // two quantities that QuickBooks rounds up
                                       Pair("1045", "-368.75"),              // up to a limit
                                       Pair("1046", "795.00"),               // a fixed fee
                                       Pair("1048", "-1978.75"),             // by the month
                                       Pair("1049", "-92.00"),               // with a limit
                                       Pair("1053", "0.07"),                 // a rate of many decimals
                                       Pair("2008-02-0117-A", "-247.50")));  // hours that are taken back have no line
}

TEST_F(Invoices, Of_hand_or_without_hours_have_one_line_for_the_services) {
  Transfer("send", 11);
  const auto invoices = InvoicesByNumber();
  EXPECT_THAT(invoices.at("1042").Items(), ElementsAre("TWServiceAmt", "TWInvDiscount"));
  EXPECT_THAT(invoices.at("1047").Items(),
              ElementsAre("TWServiceAmt", "FILING ", "LAB COURIER", "TWMainExpenseTaxAmt"));
  EXPECT_THAT(invoices.at("1050").Items(), ElementsAre("TWServiceAmt", "TRAVEL MILE", "REPRO COLOR"));
  EXPECT_THAT(invoices.at("1052").Items(),
              ElementsAre("TWServiceAmt", "TWExpenseAmt", "TWManInvMiscAmt", "TWInvDiscount"));
}

TEST_F(Invoices, Have_a_line_for_each_tax_and_lose_discount_and_retainer) {
  Transfer("send", 11);
  const auto invoices = InvoicesByNumber();
  const auto amountOf = [&](const std::string& number, const std::string& item) {
    for (const auto& line : invoices.at(number).lines) {
      if (line.item == item) return line.amount;
    }
    return std::string();
  };
  EXPECT_EQ(amountOf("1053", "TWServiceTaxAmt"), "113.83");
  EXPECT_EQ(amountOf("1053", "TWExpenseTaxAmt"), "1.45");
  EXPECT_EQ(amountOf("1053", "TWMainServiceTaxAmt"), "22.77");
  EXPECT_EQ(amountOf("1053", "TWMainExpenseTaxAmt"), "0.29");
  EXPECT_EQ(amountOf("1048", "TWInvDiscount"), "-450.00");
  EXPECT_EQ(amountOf("1051", "TWRetainerChargeItem"), "-2500.00");
  EXPECT_EQ(amountOf("1052", "TWManInvMiscAmt"), "35.50");
  EXPECT_EQ(invoices.at("1056").cents, 0) << "all of it is a discount";
  EXPECT_EQ(invoices.at("2008-02-0117-A").number, "2008-02-011");
}

TEST_F(Invoices, Have_their_taxes_on_sales_tax_items_where_the_accounts_say_so) {
  std::string liability;
  ForEachRecord("Account", "<AccountType>OtherCurrentLiability</AccountType>", [&](const pugi::xml_node& account) {
    if (liability.empty()) liability = account.child_value("ListID");
  });
  std::string agency;
  ForEachRecord("Vendor", "<MaxReturned>1</MaxReturned>",
                [&](const pugi::xml_node& vendor) { agency = vendor.child_value("ListID"); });
  for (const auto* number : {"6", "8", "9", "10"}) {
    folder_.Done({"settings", "set", "GENERAL", std::string("InvIncomeAcct_No") + number, liability});
    folder_.Done({"settings", "set", "GENERAL", std::string("InvVendorID_No") + number, agency});
  }
  Transfer("send", 11);
  std::vector<std::string> taxes;
  ForEachRecord("ItemSalesTax", "", [&](const pugi::xml_node& item) { taxes.emplace_back(item.child_value("Name")); });
  EXPECT_THAT(taxes,
              IsSupersetOf({"TWServiceTaxAmt", "TWExpenseTaxAmt", "TWMainServiceTaxAmt", "TWMainExpenseTaxAmt"}));
  EXPECT_EQ(Linked(), kAllThatCanGo);
  ExpectTheSameTotals();
}

// A contract type, and what an invoice of it shows where the settings want a summary.
struct Summed {
  std::string name;
  std::string key;
  std::string number;
  std::vector<std::string> items;
};

class SummedInvoices : public Invoices, public testing::WithParamInterface<Summed> {};

TEST_P(SummedInvoices, Are_those_of_the_contract_type_alone_and_worth_the_same) {
  const auto& [name, key, number, items] = GetParam();
  folder_.Done({"settings", "set", "GENERAL", key, "1"});
  Transfer("send", 11);
  EXPECT_EQ(Items(number), items);
  ExpectTheSameTotals();
  // What shows its expenses one by one, whatever becomes of the hours.
  const std::map<std::string, std::string> kDetails = {
      {"1044", "REPRO "},          {"1045", "HYDRO "},      {"1046", "STRUCT BRIDGE"}, {"1047", "FILING "},
      {"1048", "SURVEY BOUNDARY"}, {"1049", "SURVEY TOPO"}, {"1050", "REPRO COLOR"}};
  const auto invoices = InvoicesByNumber();
  for (const auto& [other, item] : kDetails) {
    if (other == number) continue;
    EXPECT_THAT(invoices.at(other).Items(), testing::Contains(item)) << other;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Invoices, SummedInvoices,
    testing::Values(
        Summed{"Hourly", "_chkHourly", "1044", {"TWServiceAmt", "TWExpenseAmt", "TWServiceTaxAmt", "TWExpenseTaxAmt"}},
        Summed{"HourlyNotToExceed", "_chkHNTE", "1045", {"TWServiceAmt"}},
        Summed{"Fixed", "_chkFixed", "1046", {"TWServiceAmt", "TWMainServiceTaxAmt"}},
        Summed{"Percentage", "_chkPerc", "1047", {"TWServiceAmt", "TWExpenseAmt", "TWMainExpenseTaxAmt"}},
        Summed{"Recurring", "_chkRecur", "1048", {"TWServiceAmt", "TWInvDiscount"}},
        Summed{"RecurringWithCap", "_chkRecurCap", "1049", {"TWServiceAmt"}},
        Summed{"RecurringWithExpense", "_chkRecurExp", "1050", {"TWServiceAmt", "TWExpenseAmt"}}),
    [](const auto& suite) { return suite.param.name; });

TEST_F(Invoices, Go_alone_by_project_and_number) {
  SendLists();
  EXPECT_EQ(Run("send", "invoices", 12, {"--id", "CULVERT:,1045"}).status, 0);
  ASSERT_EQ(InvoicesThere().size(), 1U);
  EXPECT_EQ(InvoicesThere().begin()->second.number, "1045");
  EXPECT_EQ(Run("send", "invoices", 13, {"--id", "CULVERT:,1045"}).status, 0);
  EXPECT_EQ(Run("send", "invoices", 14, {"--id", "MARINA:,1045"}).status, 0) << "no such invoice";
  EXPECT_EQ(InvoicesThere().size(), 1U);
}

TEST_F(Invoices, Are_there_twice_when_the_link_of_one_is_lost) {
  Transfer("send", 11);
  Sql("UPDATE TransactionTable SET QBLinkID = NULL WHERE TransactionInvNum = '1045'");
  Transfer("send", 12);
  EXPECT_EQ(TimesThere("1045"), 2);
}

TEST_F(Invoices, Are_there_twice_when_the_twin_of_one_can_not_be_read_which_is_told) {
  Transfer("send", 11);
  folder_.Write("faults.txt", "InvoiceQueryRq 1 status 3180 Error \"scripted\"\n");
  const auto ended = Run("send", "invoices", 12, {"--id", "CULVERT:,1045", "--faults", "faults.txt"});
  EXPECT_THAT(ended.err, HasSubstr("scripted"));
  EXPECT_EQ(TimesThere("1045"), 2);
}

TEST_F(Invoices, That_are_there_never_go_again_whatever_changes_here) {
  Transfer("send", 11);
  Sql("UPDATE TransactionTable SET ServiceAmt = 9999, TransactionInvBillAmt = 9999, LastUpdated = '2008-03-05 "
      "11:30:00' "
      "WHERE TransactionInvNum = '1045'");
  Transfer("send", 12);
  EXPECT_EQ(InvoicesByNumber().at("1045").cents, 250000);
}

}  // namespace
}  // namespace twqb::cli
