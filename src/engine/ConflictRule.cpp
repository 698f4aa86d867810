#include "engine/ConflictRule.h"

namespace twqb {

TwinRule TwinRuleOf(bool never, bool newerWins) {
  if (never) return TwinRule::LeaveAlone;
  return newerWins ? TwinRule::NewerWins : TwinRule::Overwrite;
}

Date OnTheClock(Date quickBooksTime, TimeZoneState clock) {
  // QuickBooks' time is standard time all year, and the billing time is on the clock of now, summer and winter: the
  // shift hangs on that clock and not on the record's own date.
  return clock == TimeZoneState::Daylight ? quickBooksTime.PlusHours(1) : quickBooksTime;
}

std::int64_t BillingAhead(const ConflictCase& conflict) {
  return conflict.billingTime.Milliseconds() - OnTheClock(conflict.quickBooksTime, conflict.clock).Milliseconds();
}

bool RecordMoves(const ConflictCase& conflict) {
  if (conflict.rule == TwinRule::LeaveAlone) return false;
  if (conflict.rule == TwinRule::Overwrite) return true;
  const auto ahead = BillingAhead(conflict);
  return conflict.direction == Direction::Send ? ahead >= 0 : ahead <= 0;
}

}  // namespace twqb
