#include "bridge/TableRoutines.h"

#include <algorithm>
#include <array>

#include "engine/Template.h"
#include "lists/modAccounts.h"
#include "lists/modActivities.h"
#include "lists/modClients.h"
#include "lists/modEmployees.h"
#include "lists/modExpenseCodes.h"
#include "lists/modProjects.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

template <IsVendor isVendor>
bool SendPeople(const SendCall& call) {
  return MoveEmployeesToQB(call.sql, call.filters.Never, call.filters.MostRecent, call.session, isVendor);
}
template <IsVendor isVendor>
void GetPeople(const GetCall& call) {
  MoveEmployeesToTW(call.records, call.filters.Never, call.filters.MostRecent, isVendor);
}

constexpr std::array kBuiltIn = {
    TableRoutines{.table = enEmployees, .send = SendPeople<IsVendor::No>, .get = GetPeople<IsVendor::No>},
    TableRoutines{.table = enVendors, .send = SendPeople<IsVendor::Yes>, .get = GetPeople<IsVendor::Yes>},
    TableRoutines{
        .table = enClients,
        .send =
            [](const SendCall& call) {
              MoveClientsToQB(call.sql, call.filters.Never, call.filters.MostRecent, call.session);
              return true;
            },
        .get =
            [](const GetCall& call) {
              MoveClientsToTW(call.records, call.filters.Never, call.filters.MostRecent,
                              call.blnByID ? Dependent::Yes : Dependent::No, call.connection);
            },
    },
    TableRoutines{
        .table = enProjects,
        .send =
            [](const SendCall& call) {
              MoveProjectsToQB(call.sql, call.filters.Never, call.filters.MostRecent, call.session);
              return true;
            },
        .get =
            [](const GetCall& call) {
              MoveProjectsToTW(call.records, call.filters.Never, call.filters.MostRecent,
                               call.blnByID ? Dependent::Yes : Dependent::No, call.connection);
            },
    },
    TableRoutines{
        .table = enActivities,
        .send =
            [](const SendCall& call) {
              MoveActivityToQB(call.sql, call.filters.Never, call.filters.MostRecent, call.session);
              return true;
            },
        .get =
            [](const GetCall& call) { MoveActivitiesToTW(call.records, call.filters.Never, call.filters.MostRecent); },
    },
    TableRoutines{
        .table = enExpenseCodes,
        .send =
            [](const SendCall& call) {
              MoveExpenseCodesToQB(call.sql, call.filters.Never, call.filters.MostRecent, call.session);
              return true;
            },
        .get =
            [](const GetCall& call) {
              MoveExpenseCodesToTW(call.records, call.filters.Never, call.filters.MostRecent);
            },
    },
    TableRoutines{
        .table = enAccounts,
        .send =
            [](const SendCall& call) {
              MoveAccountsToQB(call.sql, call.filters.Never, call.filters.MostRecent, call.session);
              return true;
            },
        .get =
            [](const GetCall& call) {
              MoveAccountsToTW(call.records, call.filters.Never, call.filters.MostRecent,
                               call.blnByID ? Dependent::Yes : Dependent::No);
            },
    },
};

std::span<const TableRoutines> ownRoutines;

const TableRoutines* FindIn(std::span<const TableRoutines> routines, std::int32_t table) {
  const auto found = std::ranges::find(routines, table, &TableRoutines::table);
  return found == routines.end() ? nullptr : &*found;
}

constexpr std::int32_t kCreditMemos = 14;

constexpr std::array kExpenseLogReads = {
    TableRead{.kind = enExpenseLog, .ExpenseLogKind = 0},
    TableRead{.kind = enExpenseLog, .ExpenseLogKind = 1},
    TableRead{.kind = enExpenseLog, .ExpenseLogKind = 2, .looksUpActiveOnly = true, .takesTransactionDates = false},
};
constexpr std::array kInvoiceReads = {TableRead{.kind = enInvoices}, TableRead{.kind = kCreditMemos}};

constexpr auto kOwnReads = [] {
  std::array<TableRead, enAll> reads;
  for (std::int32_t table = 0; table < enAll; ++table) reads[static_cast<std::size_t>(table)] = {.kind = table};
  return reads;
}();

}  // namespace

const TableRoutines* FindTableRoutines(std::int32_t table) {
  const auto* own = FindIn(ownRoutines, table);
  return own != nullptr ? own : FindIn(kBuiltIn, table);
}

void UseTableRoutines(std::span<const TableRoutines> own) { ownRoutines = own; }

std::span<const TableRead> ReadsOf(std::int32_t table) {
  if (table < 0 || table >= enAll) return {};
  if (table == enExpenseLog) return kExpenseLogReads;
  if (table == enInvoices) return kInvoiceReads;
  return std::span(kOwnReads).subspan(static_cast<std::size_t>(table), 1);
}

}  // namespace twqb
