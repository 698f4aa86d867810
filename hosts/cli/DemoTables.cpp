#include "cli/DemoTables.h"

#include <fmt/core.h>

#include <algorithm>
#include <string_view>

#include "cli/Output.h"

namespace twqb::cli {

namespace {

using ListedIn = DemoBooks::ListedIn;

struct DemoTable {
  std::string_view name;
  std::string_view rows;
  std::string_view condition = "1 = 1";
  ListedIn records;
  std::int64_t withoutLink = 0;  // rows of the sample firm that never get one
};

// Without a link stay the code that stands for items without one, the accounts whose names QuickBooks has, and what
// never goes: hours that are not posted or below nothing, invoices that are drafts or below nothing, and what is
// written off.
constexpr std::array<DemoTable, kDemoTables> kTables = {{
    {.name = "employees", .rows = "Employee", .condition = "IsSub = 0", .records = ListedIn::Employees},
    {.name = "vendors", .rows = "Employee", .condition = "IsSub = -1", .records = ListedIn::Vendors},
    {.name = "clients", .rows = "Client", .records = ListedIn::Customers},
    {.name = "projects", .rows = "Project", .records = ListedIn::Jobs},
    {.name = "activities", .rows = "Activity", .records = ListedIn::ServiceItems},
    {.name = "expense codes", .rows = "Expense", .records = ListedIn::OtherItems, .withoutLink = 1},
    {.name = "accounts", .rows = "AccountList", .records = ListedIn::Accounts, .withoutLink = 6},
    {.name = "time entries", .rows = "TimeEntry", .records = ListedIn::TimeEntries, .withoutLink = 11},
    {.name = "invoices",
     .rows = "TransactionTable",
     .condition = "PayID IS NULL",
     .records = ListedIn::Invoices,
     .withoutLink = 3},
    {.name = "payments", .rows = "Payment", .records = ListedIn::Payments, .withoutLink = 1},
    {.name = "vendor bills", .rows = "VendorBill", .records = ListedIn::Bills},
}};

// Places in the list above.
constexpr std::size_t kEmployees = 0;
constexpr std::size_t kActivities = 4;
constexpr std::size_t kExpenseCodes = 5;
constexpr std::size_t kAccounts = 6;
constexpr std::size_t kTimeEntries = 7;
constexpr std::size_t kInvoices = 8;
constexpr std::size_t kPayments = 9;

std::int64_t WithoutLink(const TableState& state) { return state.rows.rows - state.rows.linked; }

// Records that a send has left as they were.
std::int64_t LeftAlone(const TableState& before, const TableState& after) {
  return static_cast<std::int64_t>(before.records.size()) - MovedBetween(before, after).changed;
}

std::string LinkedOf(const TableState& state) { return fmt::format("{} of {}", state.rows.linked, state.rows.rows); }

}  // namespace

TableStates StatesOf(DemoBooks& books) {
  TableStates states;
  for (std::size_t i = 0; i < kDemoTables; ++i) {
    states[i] = {.rows = books.Rows(kTables[i].rows, kTables[i].condition),
                 .records = books.RecordsOf(kTables[i].records)};
  }
  return states;
}

Moved MovedBetween(const TableState& before, const TableState& after) {
  Moved moved;
  for (const auto& [id, editSequence] : after.records) {
    const auto earlier = before.records.find(id);
    if (earlier == before.records.end()) {
      ++moved.added;
    } else if (earlier->second != editSequence) {
      ++moved.changed;
    }
  }
  return moved;
}

void PrintFirstRound(const TableStates& before, const TableStates& sent, const TableStates& got) {
  constexpr std::string_view kLine = "   {:<13}{:>9}{:>12}{:>12}{:>8}{:>11}{:>10}\n";
  Print(fmt::format("   {:<13}  {:<32}  {}\n", "Table", "BillingDb: linked rows", "QuickBooks: records"));
  Print(fmt::format(kLine, "", "before", "after send", "after get", "before", "after send", "after get"));
  for (std::size_t i = 0; i < kDemoTables; ++i) {
    Print(fmt::format(kLine, kTables[i].name, LinkedOf(before[i]), LinkedOf(sent[i]), LinkedOf(got[i]),
                      before[i].records.size(), sent[i].records.size(), got[i].records.size()));
  }
  Print(
      fmt::format("   Without a link: {} accounts whose names QuickBooks has already, which the\n"
                  "   log tells of and each send tries again; {} expense code, FROMQB:, which\n"
                  "   stands for items without one and never goes; {} employee, who came in as\n"
                  "   the manager of jobs; and what never goes: {} time entries that are not posted\n"
                  "   or below nothing, {} invoices that are drafts or below nothing, {} payment that\n"
                  "   was written off. The retainers among the payments are invoices of nothing\n"
                  "   in QuickBooks, and a payment of two invoices is two there. One invoice had a\n"
                  "   link to what is gone there, and went again.\n",
                  WithoutLink(got[kAccounts]), WithoutLink(got[kExpenseCodes]), WithoutLink(got[kEmployees]),
                  WithoutLink(got[kTimeEntries]), WithoutLink(got[kInvoices]), WithoutLink(got[kPayments])));
}

void PrintMoreSends(const TableStates& got, const TableStates& second, const TableStates& third) {
  constexpr std::string_view kLine = "   {:<13}{:>9}{:>10}{:>12}{:>10}{:>18}\n";
  Print(
      fmt::format("   {:<13}    {:<15}       {:<15}     {}\n", "Table", "Second send", "Third send", "Still without"));
  Print(fmt::format(kLine, "", "added", "changed", "added", "changed", "a link"));
  for (std::size_t i = 0; i < kDemoTables; ++i) {
    const auto inSecond = MovedBetween(got[i], second[i]);
    const auto inThird = MovedBetween(second[i], third[i]);
    Print(fmt::format(kLine, kTables[i].name, inSecond.added, inSecond.changed, inThird.added, inThird.changed,
                      WithoutLink(third[i])));
  }
  Print(fmt::format(
      "   A row that a get has written is the later side from then on, and goes out\n"
      "   once. Linked accounts, time entries and invoices never do. The employee\n"
      "   without a link is added.\n"
      "   {} items stay as they are: the change would bring a name that another has,\n"
      "   as the log tells. The third send finds nothing to move.\n",
      LeftAlone(got[kActivities], second[kActivities]) + LeftAlone(got[kExpenseCodes], second[kExpenseCodes])));
}

std::vector<std::string> Unexpected(const TableStates& second, const TableStates& third) {
  std::vector<std::string> found;
  for (std::size_t i = 0; i < kDemoTables; ++i) {
    if (const auto unlinked = WithoutLink(third[i]); unlinked != kTables[i].withoutLink) {
      found.push_back(fmt::format("{} {} have no link, not {}.", unlinked, kTables[i].name, kTables[i].withoutLink));
    }
    if (const auto moved = MovedBetween(second[i], third[i]); moved.added + moved.changed != 0) {
      found.push_back(fmt::format("The third send still moves {} {}.", moved.added + moved.changed, kTables[i].name));
    }
  }
  return found;
}

}  // namespace twqb::cli
