#include "engine/Template.h"

#include <fmt/format.h>

#include "services/Conversions.h"
#include "services/Database.h"
#include "services/ModuleVariables.h"

namespace twqb {

bool PairMoves(const TableDescription& table, Direction direction, TwinRule rule, const Record& twin,
               const ado::Recordset& row) {
  if (rule != TwinRule::NewerWins) return rule == TwinRule::Overwrite;
  const auto quickBooksTime = twin["TimeModified"].GetDate();
  const auto clock = IsDaylightTime() ? TimeZoneState::Daylight : TimeZoneState::Standard;
  const auto billingTime = GetTWDateOfUpdation(row, "LastUpdated", table.fallbackDateColumn);
  return billingTime && RecordMoves({.direction = direction,
                                     .rule = rule,
                                     .quickBooksTime = quickBooksTime,
                                     .clock = clock,
                                     .billingTime = *billingTime});
}

void EndCancelled() {
  Vars().g_Cancelled = false;
  TheDesk().SetPointer(Pointer::Default);
  TheDesk().ShowMessageBox({.text = "Operation cancelled!"});
  Vars().g_TableOk = TableOk::False;
}

std::string RecordLine(const TableDescription& table, std::string_view key) {
  return fmt::format("[{} = \"{}\"]", table.recordLabel, key);
}

}  // namespace twqb
