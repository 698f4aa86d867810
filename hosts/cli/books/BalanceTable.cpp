#include "cli/books/BalanceTable.h"

#include "messages/ValueFormat.h"

namespace twqb::cli {

namespace {

void AddMoney(TableLine& line, Currency billing, Currency quickBooks) {
  for (const auto amount : {billing, quickBooks, billing - quickBooks}) line.push_back(MoneyText(amount));
}

}  // namespace

std::string MoneyText(Currency amount) {
  constexpr int kTenThousandthsOfACent = 100;
  // BillingDb has fractions of a cent, which may be all that differs.
  return amount.TenThousandths() % kTenThousandthsOfACent == 0 ? messages::AmountText(amount) : ToText(amount);
}

std::string TextOrNone(const std::string& text) { return text.empty() ? "-" : text; }

TableLine CellsOf(const Payer& payer) {
  return {TextOrNone(payer.client), TextOrNone(payer.customer.empty() ? payer.project : payer.customer)};
}

std::vector<TableLine> BalanceLines(const std::vector<Balance>& balances) {
  std::vector<TableLine> lines = {{"CLIENT", "PROJECT", "BILLINGDB", "QUICKBOOKS", "DIFFERENCE"}};
  Currency billing;
  Currency quickBooks;
  for (const auto& balance : balances) {
    billing = billing + balance.billing;
    quickBooks = quickBooks + balance.quickBooks;
    AddMoney(lines.emplace_back(CellsOf(balance.payer)), balance.billing, balance.quickBooks);
  }
  AddMoney(lines.emplace_back(TableLine{"TOTAL", ""}), billing, quickBooks);
  return lines;
}

}  // namespace twqb::cli
