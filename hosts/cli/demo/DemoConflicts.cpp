#include "cli/demo/DemoConflicts.h"

#include <fmt/core.h>

#include "cli/demo/DemoPage.h"
#include "platform/Date.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

std::string Address(std::string_view who, std::string_view client) {
  return fmt::format("{}@{}.example", who, FoldCase(client));
}

// An address without its domain, so that a line of the result fits on a screen.
std::string Shown(const std::string& address) { return address.substr(0, address.find('@') + 1); }

}  // namespace

const std::vector<DemoConflicts::Change> DemoConflicts::kChanges = {
    {"ABBOTT", Changed::BillingAlone},           {"BAYVIEW", Changed::BillingAlone},
    {"CEDAR", Changed::QuickBooksAlone},         {"DELMAR", Changed::QuickBooksAlone},
    {"EASTON", Changed::QuickBooksThenBilling},  {"FARROW", Changed::QuickBooksThenBilling},
    {"GRANITE", Changed::BillingThenQuickBooks}, {"HALLORAN", Changed::BillingThenQuickBooks},
};

bool DemoConflicts::BillingWins(Changed changed) {
  return changed == Changed::BillingAlone || changed == Changed::QuickBooksThenBilling;
}

std::string_view DemoConflicts::WinnerText(Changed changed) {
  switch (changed) {
    case Changed::BillingAlone:
      return "BillingDb (changed alone)";
    case Changed::QuickBooksAlone:
      return "QuickBooks (changed alone)";
    case Changed::QuickBooksThenBilling:
      return "BillingDb (changed later)";
    case Changed::BillingThenQuickBooks:
      return "QuickBooks (changed later)";
  }
  return {};
}

const std::string& DemoConflicts::Compared::Expected() const {
  return BillingWins(change.changed) ? billingBefore : quickBooksBefore;
}

void DemoConflicts::ChangeHere(const Change& change) {
  books_.ChangeInBilling(change.client, Address("billing", change.client));
}
void DemoConflicts::ChangeThere(const Change& change) {
  books_.ChangeInQuickBooks(change.client, Address("books", change.client));
}

void DemoConflicts::Make() {
  constexpr std::int64_t kLater = 2 * Date::kHour;
  for (const auto& change : kChanges) {
    if (change.changed == Changed::BillingAlone || change.changed == Changed::BillingThenQuickBooks) ChangeHere(change);
    if (change.changed == Changed::QuickBooksAlone || change.changed == Changed::QuickBooksThenBilling) {
      ChangeThere(change);
    }
  }
  clock_.Advance(kLater);
  for (const auto& change : kChanges) {
    if (change.changed == Changed::QuickBooksThenBilling) ChangeHere(change);
    if (change.changed == Changed::BillingThenQuickBooks) ChangeThere(change);
    compared_.push_back({.change = change,
                         .billingBefore = books_.EmailInBilling(change.client),
                         .quickBooksBefore = books_.EmailInQuickBooks(change.client)});
  }
}

void DemoConflicts::Look() {
  for (auto& compared : compared_) {
    compared.billingAfter = books_.EmailInBilling(compared.change.client);
    compared.quickBooksAfter = books_.EmailInQuickBooks(compared.change.client);
  }
}

void DemoConflicts::PrintResult() const {
  std::vector<TableLine> lines = {{"Client", "BillingDb had", "QuickBooks had", "Both now", "Won"}};
  for (const auto& compared : compared_) {
    const bool same = compared.billingAfter == compared.quickBooksAfter;
    lines.push_back({std::string(compared.change.client), Shown(compared.billingBefore),
                     Shown(compared.quickBooksBefore), same ? Shown(compared.billingAfter) : "(they differ)",
                     std::string(WinnerText(compared.change.changed))});
  }
  PrintTable(lines, {});
}

std::vector<std::string> DemoConflicts::Unexpected() const {
  std::vector<std::string> found;
  for (const auto& compared : compared_) {
    const auto compare = [&](std::string_view side, const std::string& has) {
      if (has == compared.Expected()) return;
      found.push_back(fmt::format("{} of {} should be \"{}\" and is \"{}\".", compared.change.client, side,
                                  compared.Expected(), has));
    };
    compare("BillingDb", compared.billingAfter);
    compare("QuickBooks", compared.quickBooksAfter);
  }
  return found;
}

}  // namespace twqb::cli
