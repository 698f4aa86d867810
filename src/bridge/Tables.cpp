#include "bridge/Tables.h"

#include <algorithm>
#include <array>

#include "lists/modAccounts.h"
#include "lists/modActivities.h"
#include "lists/modClients.h"
#include "lists/modEmployees.h"
#include "lists/modExpenseCodes.h"
#include "lists/modProjects.h"
#include "services/ModuleVariables.h"
#include "transactions/modEstimates.h"
#include "transactions/modExpenseLog.h"
#include "transactions/modInvoices.h"
#include "transactions/modPayments.h"
#include "transactions/modTimeEntry.h"
#include "transactions/modlVendorBills.h"

namespace twqb {

namespace {

// What others refer to comes first.
constexpr std::array kTables = {
    &kEmployeesTable,    &kVendorsTable,    &kClientsTable,    &kProjectsTable,    &kActivitiesTable,
    &kExpenseCodesTable, &kAccountsTable,   &kExpenseLogTable, &kTimeEntriesTable, &kInvoicesTable,
    &kPaymentsTable,     &kVendorBillTable, &kEstimatesTable,
};
static_assert(kTables.size() == kTableCount, "Each table of enTables has its line here.");

}  // namespace

std::span<const Table* const> BuiltInTables() { return kTables; }

std::span<const Table* const> Tables() { return Vars().tables.empty() ? BuiltInTables() : Vars().tables; }

bool GoesWithAll(const Table& table, Direction direction) {
  if (direction == Direction::Get) return table.get != nullptr;
  return table.send != nullptr && table.sends != SentRows::NamedAlone;
}

const Table* FindTable(std::int32_t number) {
  const auto tables = Tables();
  const auto found = std::ranges::find_if(tables, [&](const Table* table) { return table->number == number; });
  return found == tables.end() ? nullptr : *found;
}

std::string_view GetTableName(Direction direction, std::int32_t number) {
  const auto* table = FindTable(number);
  return table == nullptr ? kNoTableName : table->names.Of(direction);
}

}  // namespace twqb
