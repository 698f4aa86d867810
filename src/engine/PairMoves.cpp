#include "engine/PairMoves.h"

#include <fmt/format.h>

#include "services/Conversions.h"
#include "services/Database.h"

namespace twqb {

bool PairMoves(Direction direction, TwinRule rule, const Record& twin,
               const std::function<std::optional<Date>()>& readRowDate) {
  if (rule != TwinRule::NewerWins) return rule == TwinRule::Overwrite;
  const auto quickBooksTime = twin["TimeModified"].GetDate();
  const auto clock = IsDaylightTime() ? TimeZoneState::Daylight : TimeZoneState::Standard;
  const auto billingTime = readRowDate();
  return billingTime && RecordMoves({.direction = direction,
                                     .rule = rule,
                                     .quickBooksTime = quickBooksTime,
                                     .clock = clock,
                                     .billingTime = *billingTime});
}

bool FindRowToChange(ado::Recordset& rows, std::string_view link, TwinRule rule, const Record& twin,
                     std::string_view fallbackDateColumn) {
  rows.MoveFirst();
  rows.Find(fmt::format("QBLinkID = '{}'", link));
  return PairMoves(Direction::Get, rule, twin,
                   [&] { return GetTWDateOfUpdation(rows, "LastUpdated", fallbackDateColumn); });
}

}  // namespace twqb
