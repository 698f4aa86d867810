// The request that is about the company file itself: the host record.
#pragma once

#include "adapters/companyfile/CompanyOptions.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/Response.h"
#include "messages/Schema.h"

namespace twqb::company {

// Writes its whole answer. The request has passed the checks of its rows.
void QueryHost(CompanyStore& store, FileMode mode, const messages::Form& form, const Request& request,
               Response& response);

}  // namespace twqb::company
