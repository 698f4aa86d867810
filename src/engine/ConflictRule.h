// Which side of a linked pair wins. Pure: everything that the decision hangs on is an argument.
#pragma once

#include <cstdint>

#include "platform/Date.h"
#include "platform/machine.h"
#include "services/Direction.h"

namespace twqb {

// What the two saved flags of a table make of a record that has a twin.
enum class TwinRule : std::uint8_t {
  LeaveAlone,  // it never moves
  NewerWins,   // it moves if its side is not the older one
  Overwrite,   // it always moves
};
// Never is tested first and wins.
[[nodiscard]] TwinRule TwinRuleOf(bool never, bool newerWins);

struct ConflictCase {
  Direction direction = Direction::Send;
  TwinRule rule = TwinRule::NewerWins;
  Date quickBooksTime;                            // TimeModified, as standard time
  TimeZoneState clock = TimeZoneState::Standard;  // of the machine at the moment of the transfer
  Date billingTime;                               // local time, as GetTWDateOfUpdation gives it
};

// QuickBooks' time as the clock of that moment shows it, on which the billing time is, too.
[[nodiscard]] Date OnTheClock(Date quickBooksTime, TimeZoneState clock);

// By how many milliseconds BillingDb's side is the later one; below nothing where QuickBooks' side is. Regards nothing
// but the times and the clock.
[[nodiscard]] std::int64_t BillingAhead(const ConflictCase& conflict);

// Whether the record goes. The later side wins, and a tie goes, in whichever direction the transfer runs.
[[nodiscard]] bool RecordMoves(const ConflictCase& conflict);

}  // namespace twqb
