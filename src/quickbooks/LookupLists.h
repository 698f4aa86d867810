// What the host's dialogs and some tables look up in QuickBooks: whole lists, the accounts as an array, whether a
// customer is a job.
//
// Stands on the request model, below the public object. Nothing here connects: the caller has done so, and without a
// session the lookup fails with 91. No filter but all or active, and no copy of a list.
#pragma once

#include <cstdint>
#include <string_view>

#include "quickbooks/ResponseModel.h"
#include "twqb/AccountArray.h"

namespace twqb {

enum class LookupList : std::uint8_t {
  Accounts,
  Employees,
  Customers,  // and jobs
  Vendors,
  Invoices,
  Payments,
  ExpCodes,    // other-charge items
  Activities,  // service items
  TimeEntries,
  Checks,
  Bills,
  ClassItems,
  PayrollItems,
  SalesTaxItems,
};
inline constexpr auto kLastLookupList = LookupList::SalesTaxItems;

// Which records: those that QuickBooks answers a plain query with, or inactive ones too. A list that has no choice
// always answers the plain query.
enum class LookupScope : std::uint8_t { Plain, All };

struct LookupResult {
  ReturnedList list;
  bool foundNone = false;  // QuickBooks has no such record; never told for classes, payroll and sales tax items
};

// The name under which the errors of a lookup are reported.
[[nodiscard]] std::string_view LookupName(LookupList list);

// Asks for the list. Nothing when QuickBooks has none, when it refused (told), or when a call failed (ErrorHandler).
[[nodiscard]] LookupResult LookUp(LookupList list, LookupScope scope = LookupScope::Plain);

// Whether the fourth row is filled.
enum class AccountTypes : std::uint8_t { Left, Filled };

// One column for each account of the company file: ListID, FullName, Name and, where it is wanted and the company is
// neither Canadian nor British, the wire name of its type. False without a word, and the array as it was, when
// QuickBooks refuses. Raises what the calls raise, and 91 when there is no account.
[[nodiscard]] bool FillAccountArray(AccountArray& strAccounts, AccountTypes types);

// Whether the customer of that ListID is a job. False for one that is not there, without a word; False after a box when
// QuickBooks refuses. Raises what the calls raise.
[[nodiscard]] bool IsJobInQuickBooks(std::string_view strListID);

}  // namespace twqb
