// Every read from QuickBooks in a transfer: one query, one answer, the records as a keyed list in memory. No paging.
#pragma once

#include <cstdint>
#include <string>

#include "engine/SavedFilters.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

struct ReadFilters {
  std::string strID;        // not empty: this one record, and no other filter applies
  std::string strFromDate;  // modified-date range; one of the two alone is ignored
  std::string strToDate;
  std::string strNameFrom;  // name range; likewise
  std::string strNameTo;
  bool IsDependent = false;
  std::int16_t ExpenseLogKind = 0;
  bool IsVendor = false;
  ActiveOnly activeOnly = ActiveOnly::False;
  std::string strTxnFrom;  // transaction date range
  std::string strTxnTo;
};

// `activeOnly`, with LookUp replaced by what the table's saved setting says. Raises what the settings raise.
[[nodiscard]] ActiveOnly LookUpActiveOnly(std::int32_t tableKind, ActiveOnly activeOnly);

// Reads the records of a table (a value of enTables) into `records`, each under its identifier. False: QuickBooks found
// nothing (`g_NoQBRecords`), or did not know the one record, or refused (told already), or a call failed (told
// already).
bool ApplyQBFiltersAndReadRecords(std::int32_t tableKind, RecordList& records, QBSessionManager& session,
                                  const ReadFilters& filters);

}  // namespace twqb
