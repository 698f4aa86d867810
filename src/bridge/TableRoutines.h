// Which routines move which table, and what is read of QuickBooks for it. The dispatch goes by this and knows no
// table's module.
//
// A new table is one entry in TableRoutines.cpp.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "engine/SavedFilters.h"
#include "platform/ado.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// What a table's send is called with.
struct SendCall {
  const std::string& sql;  // the selection
  const SavedFilters& filters;
  QBSessionManager& session;
};

// What a table's get is called with, once for each of its reads that found something.
struct GetCall {
  const RecordList& records;
  const SavedFilters& filters;
  bool blnByID = false;                   // the pull of one record for another table's sake, on `connection`
  ado::Connection* connection = nullptr;  // the caller's; nothing: the routine opens its own
  std::int16_t part = 0;                  // which of the table's reads, from 0
};

struct TableRoutines {
  std::int32_t table = 0;  // of enTables
  // The outcome is `g_TableOk`. False, which few tables ever answer, ends the run of the table at once.
  bool (*send)(const SendCall& call) = nullptr;
  // The outcome is `g_TableOk`.
  void (*get)(const GetCall& call) = nullptr;
};

// The routines of a table; nullptr: this version does not include it.
[[nodiscard]] const TableRoutines* FindTableRoutines(std::int32_t table);

// Lets a host bring tables of its own, each in the place of the built-in table of its number. They are the host's and
// must live as long as they are in use. An empty span goes back to the built-in tables alone.
void UseTableRoutines(std::span<const TableRoutines> own);

// One read of QuickBooks for a table.
struct TableRead {
  std::int32_t kind = 0;            // as the reader counts: a table, or one kind of records beyond the tables
  std::int16_t ExpenseLogKind = 0;  // checks, credit card charges, bills
  bool looksUpActiveOnly = false;   // whatever the run says of active records
  bool takesTransactionDates = true;
};

// The reads of a table, in order: for most the one of their own records.
[[nodiscard]] std::span<const TableRead> ReadsOf(std::int32_t table);

}  // namespace twqb
