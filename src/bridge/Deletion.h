// Deletion of a record's twin: when a record went on one side, the host can let its twin go on the other.
//
// Stands beside the dispatch; CTWQBBridge forwards to it. Deletes single records by their identifier in QuickBooks, one
// a call and never without asking; it does not look whether the record on the other side is really gone.
#pragma once

#include <cstdint>
#include <string_view>

namespace twqb {

// Deletes the row of BillingDb whose link is that identifier. False when the user says No, when there is no session,
// and after ErrorHandler; True otherwise, also when the statement failed or found nothing, for a table whose rows are
// never deleted, and for invoices, which the user is told to reverse.
bool DeleteTWRecord(std::int32_t table, std::string_view strListOrTxnID, bool isQBSingleMode);

// Deletes the record of that identifier in QuickBooks. False when the user says No, when there is no session, when
// QuickBooks refuses, which is told, and after ErrorHandler. An invoice that is gone already counts as deleted.
bool DeleteQBRecord(std::int32_t table, std::string_view strQBLinkID, bool isQBSingleMode);

}  // namespace twqb
