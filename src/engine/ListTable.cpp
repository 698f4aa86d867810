#include "engine/ListTable.h"

#include "services/Database.h"

namespace twqb {

Filling FillRequest(const ListSend& send, const RequestField& request, const ado::Recordset& row, RequestKind kind,
                    const SendRecord& record) {
  if (send.assign != nullptr) return send.assign(request, row, kind, record);
  SendFields(request, row, send.fields);
  if (kind == RequestKind::Add) SetCut(request["Name"], record.countedName);
  if (send.fillMore != nullptr) send.fillMore(request, row, kind, record);
  return Filling::Filled;
}

void WriteColumns(const ListGet& get, ado::Recordset& row, const Record& record) {
  if (get.writeFirst != nullptr) get.writeFirst(row, record);
  BlankColumns(row, get.blankedColumns);
  GetFields(row, record, get.fields);
  if (get.writeLast != nullptr) get.writeLast(row, record);
}

std::optional<Date> RowDate(const ListTable& list, const ado::Recordset& row) {
  return GetTWDateOfUpdation(row, "LastUpdated", list.fallbackDateColumn);
}

}  // namespace twqb
