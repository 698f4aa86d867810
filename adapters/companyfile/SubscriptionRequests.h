// The requests about who is told of events in a company file: to add a subscription of each type, to delete one, and to
// ask whether there is any. The file keeps them and tells of them; it delivers no events.
#pragma once

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/Response.h"

namespace twqb::company {

// Writes its whole answer to a message of the subscription set. The request has passed the checks of its rows.
//
// Add: 3180 when the subscriber has one of the type already. Delete: 3120 when there is none. Query: 0 when there is
// one of any type, else 1.
void CarrySubscription(CompanyStore& store, const ClockReading& clock, const Request& request, Response& response);

}  // namespace twqb::company
