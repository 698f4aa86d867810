// What a run on copies has changed: the copies it worked on, held against those that stayed as they were.
//
// No mapping of fields is here: both sides are read whole, by their own names of columns and elements.
#pragma once

#include <string>
#include <vector>

#include "adapters/preview/ScratchFiles.h"
#include "adapters/preview/TouchedRecords.h"
#include "cli/preview/Preview.h"
#include "platform/machine.h"

namespace twqb::cli {

// Of every table of BillingDb, table by table. `connection` is the connection string to the file itself. Raises
// PlatformError.
[[nodiscard]] std::vector<RecordChange> BillingChanges(const std::string& connection,
                                                       const preview::ScratchFile& billing);

// Of the records that the run has touched, in their order, and of accounts that QuickBooks made itself for them. What
// QuickBooks alone gives (times, numbers of edits, the identifiers of lines) counts for nothing.
[[nodiscard]] std::vector<RecordChange> QuickBooksChanges(const preview::ScratchFile& company,
                                                          const preview::TouchedRecords& touched, Machine& machine);

// Marks the payments in `preview` that go to any of these invoices: what a transfer makes of them hangs on what the
// invoice comes to. `connection` and `billing` as above.
void MarkPaymentsOf(const std::vector<std::string>& unknownInvoices, const std::string& connection,
                    const preview::ScratchFile& billing, Preview& preview);

[[nodiscard]] std::vector<SettingChange> SettingChanges(const preview::ScratchFile& settings);

}  // namespace twqb::cli
