#include "engine/DependentPull.h"

#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

GetTableRoutine getTable = nullptr;

}  // namespace

void HandDownGetTable(GetTableRoutine routine) { getTable = routine; }

bool PullRecordFromQB(std::int32_t table, std::string_view listID, ado::Connection* connection) {
  if (getTable == nullptr) throw PlatformError(error::kObjectNothing);
  SavedFilters filters;
  filters.Filter2a = listID;
  return getTable(table, filters, ActiveOnly::LookUp, true, connection);
}

void TransferCustomerOrJobFromQB(std::string_view listID, ado::Connection* connection, std::string_view kind) {
  const auto upper = UpperCase(kind);
  if (upper != "PROJECT") (void)PullRecordFromQB(enClients, listID, connection);
  if (upper != "CLIENT") (void)PullRecordFromQB(enProjects, listID, connection);
}

}  // namespace twqb
