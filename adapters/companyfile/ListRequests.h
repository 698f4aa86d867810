// Add, Mod, Query and deletion of list records, the same for every kind: what differs is in the kind's description and
// in the rows of its messages.
//
// A request that is refused has changed nothing: every check comes before the first change.
#pragma once

#include <span>
#include <string_view>

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/Response.h"
#include "messages/Schema.h"

namespace twqb::company {

// What a request is carried out against.
struct ListContext {
  CompanyStore& store;
  const ListKind& kind;
  const messages::Form& form;
  const ClockReading& clock;
};

// The same of a query for several kinds at once, none of which is of one edition alone or holds personal data.
struct JointContext {
  CompanyStore& store;
  const JointList& list;
  const messages::Form& form;
  const ClockReading& clock;
};

// Each writes its whole answer. The request has passed the checks of its rows.
void AddRecord(const ListContext& context, const Request& request, Response& response);
void ModifyRecord(const ListContext& context, const Request& request, Response& response);
void QueryRecords(const ListContext& context, const Request& request, Response& response);
void QueryRecords(const JointContext& context, const Request& request, Response& response);
// ListDel, whose list stands in the request.
void DeleteRecord(CompanyStore& store, const ClockReading& clock, const Request& request, Response& response);

// Throws Refused when the file is of an edition that does not keep the list.
void RequireEdition(const ListContext& context);
// Where personal data are withheld, the fields of the kind that hold them; otherwise none.
[[nodiscard]] std::span<const std::string_view> WithheldFields(const ListContext& context);

}  // namespace twqb::company
