#include "cli/TableArgument.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "adapters/terminal/TextLayout.h"
#include "cli/ExitStatus.h"
#include "cli/NearestName.h"
#include "platform/Text.h"

namespace twqb::cli {

namespace {

constexpr std::string_view kPrefix = "en";

struct TableName {
  enTables table;
  std::string_view name;  // without the prefix
  std::string_view billingTable;
};

// The table that is used inside the invoice read alone is no name of a command line.
constexpr std::array kTables = {
    TableName{enEmployees, "Employees", "Employee"},
    TableName{enVendors, "Vendors", "Employee"},
    TableName{enClients, "Clients", "Client"},
    TableName{enProjects, "Projects", "Project"},
    TableName{enActivities, "Activities", "Activity"},
    TableName{enExpenseCodes, "ExpenseCodes", "Expense"},
    TableName{enAccounts, "Accounts", "AccountList"},
    TableName{enExpenseLog, "ExpenseLog", "ExpenseLog"},
    TableName{enTimeEntries, "TimeEntries", "TimeEntry"},
    TableName{enInvoices, "Invoices", "TransactionTable"},
    TableName{enPayments, "Payments", "Payment"},
    TableName{enVendorBill, "VendorBill", "VendorBill"},
    TableName{enEstimates, "Estimates", "Budget"},
    TableName{enAll, "All", ""},
};

const TableName& EntryOf(enTables table) {
  return *std::ranges::find_if(kTables, [&](const TableName& entry) { return entry.table == table; });
}

std::vector<std::string> TypedNames() {
  std::vector<std::string> names;
  names.reserve(std::size(kTables));
  for (const auto& entry : kTables) names.push_back(TypedName(entry.table));
  return names;
}

}  // namespace

enTables TableFromName(std::string_view name) {
  for (const auto& entry : kTables) {
    const bool withPrefix = SameName(name.substr(0, kPrefix.size()), kPrefix);
    if (SameName(name, entry.name) || (withPrefix && SameName(name.substr(kPrefix.size()), entry.name))) {
      return entry.table;
    }
  }
  const auto names = TypedNames();
  const auto nearest = NearestName(name, names);
  throw UsageError(fmt::format("There is no table \"{}\".{}\nThe tables are: {}.", name,
                               nearest ? fmt::format(" Did you mean \"{}\"?", *nearest) : "", TableNameList()));
}

std::string TypedName(enTables table) { return FoldCase(EntryOf(table).name); }
std::string DeclaredName(enTables table) { return fmt::format("{}{}", kPrefix, EntryOf(table).name); }

std::vector<std::string_view> BillingTablesOf(enTables table) {
  if (table != enAll) return {EntryOf(table).billingTable};
  std::vector<std::string_view> names;
  for (const auto& entry : kTables) {
    if (entry.table != enAll) names.push_back(entry.billingTable);
  }
  return names;
}

std::string TableNameList() { return Join(TypedNames(), ", "); }

std::string TableHelpText(AllTables allTables) {
  constexpr std::size_t kWidth = 76;
  auto names = TypedNames();
  if (allTables == AllTables::No) std::erase(names, TypedName(enAll));
  std::string text = "TABLE is one of\n";
  for (const auto& line : WrapText(Join(names, ", "), kWidth)) text += "  " + line + "\n";
  return text + "\n";
}

}  // namespace twqb::cli
