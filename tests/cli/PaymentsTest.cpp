// The payments of the sample firm on both sides, in every edition: each goes to QuickBooks under the name of its
// method, as money or as a discount, and a retainer as an invoice of nothing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "Firm.h"

namespace twqb::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PaymentsOfEveryCountry : public Firm, public testing::WithParamInterface<std::string> {
 protected:
  PaymentsOfEveryCountry() : Firm(GetParam()) { Transfer("send", 11); }

  // What a check is called there.
  [[nodiscard]] std::string Check() const { return country_ == "CA" || country_ == "UK" ? "Cheque" : "Check"; }
  // "method: total, applied, discount to account" of each payment by its identifier.
  std::map<std::string, std::string> PaymentsThere() const {
    std::map<std::string, std::string> payments;
    ForEachRecord("ReceivePayment", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& record) {
      const auto applied = record.child("AppliedToTxnRet");
      auto text = std::string(record.child("PaymentMethodRef").child_value("FullName")) + ": " +
                  record.child_value("TotalAmount") + ", " + applied.child_value("Amount");
      if (const std::string discount = applied.child_value("DiscountAmount"); !discount.empty()) {
        text += ", " + discount + " to " + applied.child("DiscountAccountRef").child_value("FullName");
      }
      payments.emplace(record.child_value("TxnID"), text);
    });
    return payments;
  }
};

TEST_P(PaymentsOfEveryCountry, Go_by_every_method_one_for_each_invoice) {
  const auto there = PaymentsThere();
  std::vector<std::string> gone;
  for (const auto& row : Rows("SELECT t.TransactionInvNum, p.PayMethod, t.QBLinkID FROM TransactionTable t, Payment p "
                              "WHERE p.PayID = t.PayID AND p.PayRetainer = 0 AND p.PayMethod <> '6' ORDER BY "
                              "p.PayID, t.TransactionID")) {
    ASSERT_TRUE(there.contains(row.at(2))) << row.at(0) << " by " << row.at(1);
    gone.push_back(row.at(0) + " " + row.at(1) + " " + there.at(row.at(2)));
  }
  EXPECT_THAT(gone,
              ElementsAre("1041 1 " + Check() + ": 2000.00, 2000.00", "1042 8 EFT: 4400.00, 4400.00",
                          "1044 1 " + Check() + ": 3906.17, 3906.17", "1053 1 " + Check() + ": 1000.00, 1000.00",
                          "1053 2 Cash: 444.01, 444.01", "1046 7 Credit Card: 6000.00, 6000.00",
                          "1046 3 Credit: 0.00, 0.00, 500.00 to Other Income", "1058 5 Other: 298.00, 298.00",
                          "1058 4 WriteOff: 0.00, 0.00, 0.52 to Other Income", "1047 9 Money Order: 3313.72, 3313.72",
                          "1048 8 EFT: 8550.00, 8550.00", "1052 a Credit: 400.00, 400.00",
                          "1049 1 " + Check() + ": 5500.00, 5500.00", "1050 1 " + Check() + ": 500.77, 500.77",
                          "1050 A Credit: 0.00, 0.00, 1000.00 to TWUnearnedRetAccount"));
}

TEST_P(PaymentsOfEveryCountry, That_are_retainers_are_invoices_of_nothing_on_the_project_or_the_client) {
  std::map<std::string, std::string> invoices;
  ForEachRecord("Invoice", "<IncludeLineItems>true</IncludeLineItems>", [&](const pugi::xml_node& record) {
    invoices.emplace(record.child_value("TxnID"), std::string(record.child("CustomerRef").child_value("ListID")) + " " +
                                                      record.child_value("RefNumber") + " " +
                                                      record.child_value("Subtotal") + " " +
                                                      record.child_value("BalanceRemaining") + " " +
                                                      record.child("InvoiceLineRet").child_value("Amount"));
  });
  const std::vector<std::vector<std::string>> expected = {
      {"SELECT QBLinkID FROM Project WHERE ProjectID = 'MARINA:'", "3309 0.00 0.00 5000.00"},
      {"SELECT QBLinkID FROM Project WHERE ProjectID = 'DEPOT:'", "967 0.00 0.00 1500.00"},
      {"SELECT QBLinkID FROM Client WHERE ClientID = 'FARROW'", "TR200802051 0.00 0.00 2000.00"}};
  const auto rows = Rows("SELECT QBLinkID FROM Payment WHERE PayRetainer = -1 ORDER BY PayID");
  ASSERT_EQ(rows.size(), expected.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(invoices[rows[i].at(0)], Scalar(expected[i][0]) + " " + expected[i][1]);
  }
}

TEST_P(PaymentsOfEveryCountry, Do_not_go_a_second_time) {
  const auto before = PaymentsThere();
  const auto ended = Run("send", "payments", 12);
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.err, IsEmpty());
  EXPECT_EQ(PaymentsThere(), before);
}

INSTANTIATE_TEST_SUITE_P(Countries, PaymentsOfEveryCountry, testing::Values("US", "CA", "UK", "AU"),
                         [](const auto& suite) { return suite.param; });

}  // namespace
}  // namespace twqb::cli
