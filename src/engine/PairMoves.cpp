#include "engine/PairMoves.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

#include "services/Conversions.h"
#include "services/Database.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"

namespace twqb {

namespace {

// "3 d 4 h", "2 h 5 min", "12 s": the two largest units. Below a second there are none.
std::string Span(std::int64_t milliseconds) {
  struct Unit {
    std::int64_t length;
    std::string_view name;
  };
  constexpr std::int64_t kSecond = 1000;
  constexpr std::array kUnits = {Unit{Date::kDay, "d"}, Unit{3600 * kSecond, "h"}, Unit{60 * kSecond, "min"},
                                 Unit{kSecond, "s"}};
  constexpr int kShown = 2;
  std::string text;
  int shown = 0;
  for (const auto& unit : kUnits) {
    const auto count = milliseconds / unit.length;
    milliseconds %= unit.length;
    if (shown > 0 || count > 0) ++shown;
    if (count == 0 || shown > kShown) continue;
    text.append(text.empty() ? "" : " ").append(std::to_string(count)).append(" ").append(unit.name);
  }
  return text.empty() ? "less than a second" : text;
}

std::string WhoIsNewer(const ConflictCase& conflict) {
  if (conflict.billingTime == NeverUpdated()) return "its row has no date";
  const auto ahead = BillingAhead(conflict);
  if (ahead == 0) return "both sides are of the same time";
  constexpr std::size_t kRoom = 48;  // for the whole of it
  std::string text;
  text.reserve(kRoom);
  text.append(ahead > 0 ? "BillingDb" : "QuickBooks").append(" is newer by ").append(Span(std::abs(ahead)));
  return text;
}

// Tells what the rule decided, and answers it.
template <typename Why>
bool Decided(bool moves, Why&& why) {
  NoteWhy(std::forward<Why>(why));
  if (!moves) NoteFate(Fate::LeftAsItWas);
  return moves;
}

}  // namespace

bool PairMoves(Direction direction, TwinRule rule, const Record& twin,
               const std::function<std::optional<Date>()>& readRowDate) {
  if (rule == TwinRule::LeaveAlone) return Decided(false, [] { return kNeverChanged; });
  if (rule == TwinRule::Overwrite) return Decided(true, [] { return "it goes, whichever side is newer"; });
  const auto quickBooksTime = twin["TimeModified"].GetDate();
  const auto clock = IsDaylightTime() ? TimeZoneState::Daylight : TimeZoneState::Standard;
  const auto billingTime = readRowDate();
  if (!billingTime) return Decided(false, [] { return "its date here can't be read"; });
  const ConflictCase conflict = {.direction = direction,
                                 .rule = rule,
                                 .quickBooksTime = quickBooksTime,
                                 .clock = clock,
                                 .billingTime = *billingTime};
  return Decided(RecordMoves(conflict), [&] { return WhoIsNewer(conflict); });
}

bool FindRowToChange(ado::Recordset& rows, std::string_view link, TwinRule rule, const Record& twin,
                     std::string_view fallbackDateColumn) {
  rows.MoveFirst();
  rows.Find(Sql("QBLinkID = '{}'", link));
  return PairMoves(Direction::Get, rule, twin,
                   [&] { return GetTWDateOfUpdation(rows, "LastUpdated", fallbackDateColumn); });
}

}  // namespace twqb
