#include "adapters/companyfile/ListRequests.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/XmlText.h"

namespace twqb::company {

namespace {

FoundRecord FindDoomed(CompanyStore& store, const Request& request) {
  const auto listId = ChildText(request.node, "ListID");
  const auto type = ChildText(request.node, "ListDelType");
  auto found = store.FindById(listId);
  if (!found || (found->kind->name != type && found->kind->alsoDeletedAs != type)) {
    Refuse(status::ObjectNotFound(listId));
  }
  if (store.HasChildren(listId)) Refuse(status::CannotDelete(listId, "The list element has elements below it."));
  if (store.IsUsed(listId)) Refuse(status::CannotDelete(listId, "The list element is in use."));
  return *found;
}

}  // namespace

void DeleteRecord(CompanyStore& store, const ClockReading& clock, const Request& request, Response& response) {
  try {
    const auto doomed = FindDoomed(store, request);
    store.Remove(*doomed.kind, doomed.record, clock.now);
    response.Begin({});
    auto& out = response.Content();
    AppendLeaf(out, "ListDelType", ChildText(request.node, "ListDelType"));
    AppendLeaf(out, "ListID", doomed.record.listId);
    AppendLeaf(out, "TimeDeleted", TimeText(clock.now, clock));
    AppendLeaf(out, "FullName", doomed.record.fullName);
    response.End();
  } catch (const Refused& refused) {
    response.Answer(refused.status);
  }
}

}  // namespace twqb::company
