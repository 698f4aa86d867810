// The one way to name a table. The values are part of the interface and never change: a new table takes the number
// behind the last one, and counts in kTableCount.
#pragma once

#include <cstdint>

namespace twqb {

enum enTables : std::int32_t {
  enEmployees = 0,
  enVendors,
  enClients,   // QuickBooks customers
  enProjects,  // QuickBooks jobs
  enActivities,
  enExpenseCodes,
  enAccounts,
  enExpenseLog,
  enTimeEntries,
  enInvoices,
  enPayments,
  enVendorBill,
  enEstimates,
  enAll,         // all tables in a row
  enCreditMemo,  // used inside the invoice read alone, never by a host
};

inline constexpr int kTableCount = 13;  // of single tables

}  // namespace twqb
