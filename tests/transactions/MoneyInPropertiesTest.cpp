// What holds of whatever money comes in: amounts in BillingDb come to those of QuickBooks, to the cent.

#include <gtest/gtest.h>

#include <array>

#include "tests/support/Chance.h"
#include "tests/transactions/ArrivalsHouse.h"

namespace twqb {
namespace {

constexpr auto kInvoices = Got(enInvoices, "TransactionTable", "TransactionID", MoveInvoicesToTW);
constexpr auto kPayments = Got(enPayments, "Payment", "PayID", MovePaymentsToTW);

using Cents = std::int64_t;

class RandomMoney : public testing::TestWithParam<unsigned> {
 protected:
  Cents Any(Cents from, Cents to) { return chance_.Of(from, to); }

 private:
  Chance chance_{GetParam()};
};

// Subtotal, tax and what is paid already; lines that come to the subtotal.
TEST_P(RandomMoney, Of_an_invoice_comes_to_its_total_in_the_row_and_in_the_details) {
  ArrivalsHouse house(kInvoices, "Invoice", {}, {});
  constexpr int kRecords = 40;
  Texts invoices;
  std::vector<Cents> totals;
  for (int i = 0; i < kRecords; ++i) {
    std::string lines;
    Cents subtotal = 0;
    for (auto left = Any(1, 6); left > 0; --left) {
      const auto amount = Any(-500'00, 99'999'99);
      subtotal += amount;
      lines += Any(0, 3) == 0
                   ? Element("InvoiceLineGroupRet", Element("Desc", "Kit") + Element("TotalAmount", Amount(amount)))
                   : Element("InvoiceLineRet", Element("Desc", "Work") + Element("Amount", Amount(amount)));
    }
    totals.push_back(subtotal + Any(0, 1) * Any(0, 9'999'99));
    const auto paid = Any(0, 1) * Any(0, 999'99);
    auto text = RecordOf("Invoice",
                         {{"TxnID", fmt::format("{}-1", i)},
                          {"CustomerRef", kJobRef},
                          {"RefNumber", "7"},
                          {"Subtotal", Amount(subtotal)},
                          {"AppliedAmount", Amount(-paid)},
                          {"BalanceRemaining", Amount(totals.back() - paid)}},
                         {});
    invoices.push_back(text.insert(text.rfind("</InvoiceRet>"), lines));
  }
  house.Take(invoices);
  ASSERT_EQ(house.Count("TransactionTable"), std::to_string(kRecords));
  for (int i = 0; i < kRecords; ++i) {
    const auto txnId = fmt::format("{}-1", i);
    const auto total = totals[static_cast<std::size_t>(i)];
    EXPECT_EQ(InCents(house.Got("TransactionInvBillAmt", txnId)), total);
    EXPECT_EQ(InCents(house.Got("ServiceAmt", txnId)) + InCents(house.Got("ExpTaxAmt", txnId)), total);
    EXPECT_EQ(InCents(house.Scalar("SELECT SUM(ManInvDetailTot) FROM ManInvDetail WHERE TransactionID = '" +
                                   house.Got("TransactionID", txnId) + "'")),
              total);
  }
}

// What is applied to invoices that are here, with and without discounts, and some money that is not applied.
TEST_P(RandomMoney, Of_a_payment_is_there_once_as_money_and_once_as_where_it_went) {
  ArrivalsHouse house(kPayments, "ReceivePayment", {}, {});
  constexpr int kRecords = 40;
  constexpr int kInvoicesHere = 3;
  for (int i = 0; i < kInvoicesHere; ++i) {
    house.Sql(
        fmt::format("INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ProjectID, QBLinkID) VALUES "
                    "('{{{0}}}', '{0}', 'ROOF:', 'I-{0}')",
                    i));
  }
  Texts payments;
  std::vector<std::array<Cents, 3>> sums;  // in all, applied, discounts
  for (int i = 0; i < kRecords; ++i) {
    std::string entries;
    Cents applied = 0;
    Cents discounts = 0;
    for (auto left = Any(1, 4); left > 0; --left) {
      const auto amount = Any(1, 99'999'99);
      const auto discount = Any(0, 1) * Any(1, 999'99);
      applied += amount;
      discounts += discount;
      entries +=
          Element("AppliedToTxnRet", Element("TxnID", fmt::format("I-{}", Any(0, kInvoicesHere - 1))) +
                                         "<TxnType>Invoice</TxnType>" + Element("Amount", Amount(amount)) +
                                         (discount == 0 ? std::string() : Element("DiscountAmount", Amount(discount))));
    }
    sums.push_back({applied + Any(0, 1) * Any(0, 999'99), applied, discounts});
    auto text = RecordOf(
        "ReceivePayment",
        {{"TxnID", fmt::format("{}-1", i)}, {"CustomerRef", kJobRef}, {"TotalAmount", Amount(sums.back()[0])}}, {});
    payments.push_back(text.insert(text.rfind("</ReceivePaymentRet>"), entries));
  }
  house.Take(payments);
  for (int i = 0; i < kRecords; ++i) {
    const auto ofRecord = fmt::format(" WHERE QBLinkID = '{}-1'", i);
    const auto sum = [&](std::string_view method) {
      return InCents(house.Scalar(
          fmt::format("SELECT coalesce(SUM(PayAmt), 0) FROM Payment{} AND PayMethod = '{}'", ofRecord, method)));
    };
    const auto went = [&](std::string_view method) {
      return InCents(house.Scalar(
          fmt::format("SELECT coalesce(SUM(TransactionPayAmtApplied), 0) FROM TransactionTable{} AND PayID IN (SELECT "
                      "PayID FROM Payment{} AND PayMethod = '{}')",
                      ofRecord, ofRecord, method)));
    };
    const auto& [all, applied, discounts] = sums[static_cast<std::size_t>(i)];
    EXPECT_EQ(sum("1"), all);
    EXPECT_EQ(went("1"), applied);
    EXPECT_EQ(sum("3"), discounts);
    EXPECT_EQ(went("3"), discounts);
  }
}

INSTANTIATE_TEST_SUITE_P(MoneyIn, RandomMoney, testing::Range(1U, 6U));

}  // namespace
}  // namespace twqb
