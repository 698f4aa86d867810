// Every read from QuickBooks in a transfer: one query, one answer, the records as a keyed list in memory. No paging.
#pragma once

#include <cstdint>
#include <string>

#include "engine/SavedFilters.h"
#include "engine/Table.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// Every pair: one of the two alone is ignored. What a table's query has no place for is not used.
struct ReadFilters {
  std::string strID;        // not empty: this one record, and no other filter applies
  std::string strFromDate;  // modified-date range
  std::string strToDate;
  std::string strNameFrom;  // name range; of transactions: range of reference numbers, or two entities
  std::string strNameTo;
  bool IsDependent = false;  // of projects: takes a customer too, and does no form work
  ActiveOnly activeOnly = ActiveOnly::False;
  std::string strTxnFrom;  // transaction date range; only where no modified date is given
  std::string strTxnTo;
};

// `activeOnly`, with LookUp replaced by what the saved setting of that name of a get says. Raises what the settings
// raise.
[[nodiscard]] ActiveOnly LookUpActiveOnly(std::string_view getName, ActiveOnly activeOnly);

// Carries a read of the table out: its records go into `records`, each under its identifier; those of a read for
// several kinds are added to what is in `records`. True also when the read keeps none of the records that came. False:
// QuickBooks found nothing (`g_NoQBRecords`), or did not know the one record, or refused (told already), or a call
// failed (told already).
bool ApplyQBFiltersAndReadRecords(const Table& table, const QuickBooksRead& read, RecordList& records,
                                  QBSessionManager& session, const ReadFilters& filters, Run& run);

}  // namespace twqb
