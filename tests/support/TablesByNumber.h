// The engine's steps for a table named by its number, as tests name them.
#pragma once

#include <string>

#include "bridge/Tables.h"
#include "engine/RecordReader.h"
#include "engine/SelectionQueries.h"
#include "services/ModuleVariables.h"

namespace twqb {

// The transactions that the expense log is read from, by the place of their reads.
enum ExpenseLogKinds : std::size_t { enChecks = 0, enCreditCardCharges, enBills };

// The read of a table, credit memos as a table of their own.
inline const QuickBooksRead& ReadOf(std::int32_t table, std::size_t part = 0) {
  return table == enCreditMemo ? FindTable(enInvoices)->reads[1] : FindTable(table)->reads[part];
}

inline std::string BuildSelectSQL(std::int32_t table, const SavedFilters& filters) {
  return BuildSelectSQL(*FindTable(table), filters).Text();
}

inline bool ApplyQBFiltersAndReadRecords(std::int32_t table, RecordList& records, QBSessionManager& session,
                                         const ReadFilters& filters, std::size_t part = 0) {
  return ApplyQBFiltersAndReadRecords(*FindTable(table == enCreditMemo ? enInvoices : table), ReadOf(table, part),
                                      records, session, filters, Vars());
}

}  // namespace twqb
