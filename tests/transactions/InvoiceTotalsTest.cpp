// A thousand invoices of chance: what QuickBooks makes of each line is what decimal arithmetic makes of the row, and
// the lines of the services come to the row's total, to the cent.
//
// The expectation is worked out in whole numbers alone.

#include <gtest/gtest.h>

#include <cstdlib>

#include "messages/ValueFormat.h"
#include "tests/support/Chance.h"
#include "tests/transactions/InvoicesHouse.h"

namespace twqb {
namespace {

constexpr int kInvoices = 1000;
constexpr unsigned kSeed = 20080305;

std::int64_t Divided(std::int64_t value, std::int64_t by) {  // halves away from zero
  const auto half = value < 0 ? -by / 2 : by / 2;
  return (value + half) / by;
}

// Whole numbers as SQL texts: "12.3456".
std::string Number(std::int64_t units, int decimals) {
  const auto digits = fmt::format("{:0{}}", std::abs(units), decimals + 1);
  const auto point = digits.size() - static_cast<std::size_t>(decimals);
  return fmt::format("{}{}.{}", units < 0 ? "-" : "", digits.substr(0, point), digits.substr(point));
}

struct Expectation {
  std::vector<std::int64_t> lines;  // in cents; those of hours, the adjustment, those of expenses
  std::size_t services = 0;         // how many of them are the services'
  std::int64_t total = 0;           // of the services
};

Expectation MakeInvoice(InvoicesHouse& house, Chance& chance, const std::string& key) {
  Expectation expected;
  std::int64_t billed = 0;
  const auto entries = chance.Of(1, 9);
  for (std::int64_t i = 0; i < entries; ++i) {
    const auto hours = chance.Of(1, 120'000);                                                       // ten-thousandths
    const auto factor = chance.Of(0, 2) == 0 ? chance.Of(-20, 250) : 100;                           // hundredths
    const auto rate = chance.Of(0, 1) == 0 ? chance.Of(1, 400) * 10'000 : chance.Of(1, 4'000'000);  // ten-thousandths
    const bool billable = chance.Of(0, 9) != 0;
    house.Hour(key, {{"TEHours", Number(hours, 4)},
                     {"WUD", factor == 100 ? "NULL" : Number(factor, 2)},
                     {"TEBillRate", Number(rate, 4)},
                     {"TEBill", billable ? "-1" : "0"}});
    const auto quantity = Divided(hours * std::max<std::int64_t>(factor, 0), 10'000);  // hundredths
    expected.lines.push_back(billable ? Divided(quantity * Divided(rate, 100), 100) : 0);
    billed += expected.lines.back();
  }
  // Some totals are what the hours come to, some are not.
  const auto adjustment = chance.Of(0, 2) == 0 ? chance.Of(-billed / 2 - 1, 50'000) : 0;
  expected.total = std::max<std::int64_t>(billed + adjustment, 1);
  if (expected.total != billed) expected.lines.push_back(expected.total - billed);
  expected.services = expected.lines.size();
  const auto expenses = chance.Of(0, 4);
  std::int64_t spent = 0;
  for (std::int64_t i = 0; i < expenses; ++i) {
    const auto units = chance.Of(1, 40'000);                             // thousandths
    const auto cost = chance.Of(1, 3'000'000);                           // ten-thousandths
    const auto markup = chance.Of(0, 2) == 0 ? chance.Of(0, 5'000) : 0;  // hundredths of a percent
    house.Cost(key, {{"ELUnits", Number(units, 3)}, {"ELCost", Number(cost, 4)}, {"ELMarkup", Number(markup, 2)}});
    expected.lines.push_back(Divided(units * cost * (10'000 + markup), 1'000'000'000));
    spent += expected.lines.back();
  }
  house.Invoice(key, {{"ServiceAmt", Amount(expected.total)},
                      {"ExpAmt", expenses == 0 ? "0" : Amount(std::max<std::int64_t>(spent, 1))},
                      {"TransactionInvBillAmt", Amount(expected.total + spent)}});
  return expected;
}

std::vector<std::string> AmountsOf(std::string_view invoice) {
  std::vector<std::string> amounts;
  const std::string_view open = "<InvoiceLineRet>";
  for (auto at = invoice.find(open); at != std::string_view::npos; at = invoice.find(open, at + 1)) {
    const auto line = invoice.substr(at, invoice.find("</InvoiceLineRet>", at) - at);
    amounts.push_back(SpiedHouse::TextOf(line, "Amount"));
  }
  return amounts;
}

TEST(InvoiceTotals, Agree_on_both_sides_for_a_thousand_invoices_of_chance) {
  InvoicesHouse house;
  Chance chance(kSeed);
  std::vector<Expectation> expected;
  house.Sql("BEGIN");
  for (int i = 0; i < kInvoices; ++i) expected.push_back(MakeInvoice(house, chance, fmt::format("I{:04}", i)));
  house.Sql("COMMIT");
  Vars().g_NoProgressBar = true;
  house.Send();
  ASSERT_TRUE(house.BoxTexts().empty()) << house.BoxTexts()[0];
  for (int i = 0; i < kInvoices; ++i) {
    const auto key = fmt::format("I{:04}", i);
    const auto& invoice = expected[static_cast<std::size_t>(i)];
    const auto inQuickBooks = house.InQuickBooks(key);
    Texts lines;
    std::int64_t total = 0;
    for (const auto cents : invoice.lines) {
      lines.push_back(Amount(cents));
      total += cents;
    }
    ASSERT_EQ(AmountsOf(inQuickBooks), lines) << key;
    ASSERT_EQ(SpiedHouse::TextOf(inQuickBooks, "Subtotal"), Amount(total)) << key;
    Currency services;
    const auto amounts = AmountsOf(inQuickBooks);
    for (std::size_t line = 0; line < invoice.services; ++line) {
      services = services + messages::ParseAmount(amounts[line]).value();
    }
    ASSERT_EQ(messages::AmountText(services), Amount(invoice.total)) << key;
  }
}

}  // namespace
}  // namespace twqb
