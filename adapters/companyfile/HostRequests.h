// The requests that are about the company file itself: the host record, and who is subscribed to its events.
#pragma once

#include "adapters/companyfile/CompanyOptions.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/Response.h"
#include "messages/Schema.h"

namespace twqb::company {

// Each writes its whole answer. The request has passed the checks of its rows.
void QueryHost(CompanyStore& store, FileMode mode, const messages::Form& form, const Request& request,
               Response& response);
void QuerySubscription(CompanyStore& store, const Request& request, Response& response);

}  // namespace twqb::company
