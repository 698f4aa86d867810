// Every read from QuickBooks in a transfer: one query, one answer, the records as a keyed list in memory. No paging.
#pragma once

#include <cstdint>
#include <string>

#include "engine/SavedFilters.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// The transactions that the expense log is read from, each by a read of its own.
enum ExpenseLogKinds : std::int16_t { enChecks = 0, enCreditCardCharges, enBills };

// Every pair: one of the two alone is ignored. What a table's query has no place for is not used.
struct ReadFilters {
  std::string strID;        // not empty: this one record, and no other filter applies
  std::string strFromDate;  // modified-date range
  std::string strToDate;
  std::string strNameFrom;  // name range; of transactions: range of reference numbers, or two entities
  std::string strNameTo;
  bool IsDependent = false;  // of projects: takes a customer too, and does no form work
  std::int16_t ExpenseLogKind = enChecks;
  ActiveOnly activeOnly = ActiveOnly::False;
  std::string strTxnFrom;  // transaction date range; only where no modified date is given
  std::string strTxnTo;
};

// `activeOnly`, with LookUp replaced by what the table's saved setting says. Raises what the settings raise.
[[nodiscard]] ActiveOnly LookUpActiveOnly(std::int32_t tableKind, ActiveOnly activeOnly);

// Reads the records of a table (a value of enTables) into `records`, each under its identifier; those of expense codes
// are added to what is in `records`. True also when the table keeps none of the records that came. False: QuickBooks
// found nothing (`g_NoQBRecords`), or did not know the one record, or refused (told already), or a call failed (told
// already), or the table has no query.
bool ApplyQBFiltersAndReadRecords(std::int32_t tableKind, RecordList& records, QBSessionManager& session,
                                  const ReadFilters& filters);

}  // namespace twqb
