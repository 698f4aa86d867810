// The pull of one QuickBooks record for the sake of another table's record: a transaction whose customer or job is not
// in BillingDb, say.
//
// Pulling means running a whole other table, which is the dispatch's work, and the dispatch stands above this layer: it
// hands its routine down when the library is composed. Any table module may pull through here.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/ado.h"

namespace twqb {

// Pulls the one record of that identifier on the caller's connection: no filters, no regard to what the saved flags say
// of pairs, no form, and a Cancel is left to the caller. False when it failed, which has been told. Raises 91 when no
// dispatch stands above.
bool PullRecordFromQB(std::int32_t table, std::string_view listID, ado::Connection* connection);

// The pull of a missing customer or job for a transaction's sake. `kind`, in any case: "CLIENT", "PROJECT", or anything
// else for both in that order. What goes wrong has been told.
void TransferCustomerOrJobFromQB(std::string_view listID, ado::Connection* connection, std::string_view kind);

}  // namespace twqb
