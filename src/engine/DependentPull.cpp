#include "engine/DependentPull.h"

#include "engine/SavedFilters.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "services/ModuleVariables.h"
#include "twqb/enTables.h"

namespace twqb {

bool PullRecordFromQB(std::int32_t table, std::string_view listID, ado::Connection* connection) {
  const auto pull = Vars().pull;
  if (pull == nullptr) throw PlatformError(error::kObjectNothing);
  return pull(table, SavedFilters::OneToGet(listID), ActiveOnly::LookUp, true, connection);
}

void TransferCustomerOrJobFromQB(std::string_view listID, ado::Connection* connection, std::string_view kind) {
  const auto upper = UpperCase(kind);
  if (upper != "PROJECT") (void)PullRecordFromQB(enClients, listID, connection);
  if (upper != "CLIENT") (void)PullRecordFromQB(enProjects, listID, connection);
}

}  // namespace twqb
