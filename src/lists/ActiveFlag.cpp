#include "lists/ActiveFlag.h"

#include "platform/Value.h"

namespace twqb {

void AssignActive(const RequestField& request, const ado::Recordset& row) {
  const auto inactive = row.Field("IsInActive");
  if (!IsNull(inactive)) request["IsActive"].SetValue(!TextToBoolean(ToText(inactive)));
}

void WriteInactive(ado::Recordset& row, const Record& record) {
  const auto active = record["IsActive"];
  if (!active.IsNothing()) row.SetField("IsInActive", !active.GetBoolean());
}

}  // namespace twqb
