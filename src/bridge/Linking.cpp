#include "bridge/Linking.h"

#include <fmt/core.h>

#include <algorithm>
#include <set>
#include <utility>

#include "bridge/Tables.h"
#include "engine/ConflictRule.h"
#include "engine/WriteBack.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/Sql.h"
#include "transactions/BillsOut.h"

namespace twqb {

namespace {

// The date, in UTC, with which a row loses or wins against its record by the conflict rule, in winter and summer.
Date DateFor(Newer newer, const Record& record) {
  constexpr std::int64_t kLeast = Date::kSecond;  // a tie goes both ways
  auto& machine = TheMachine();
  const auto theirs = OnTheClock(record["TimeModified"].GetDate(),
                                 IsDaylightTime() ? TimeZoneState::Daylight : TimeZoneState::Standard);
  const auto by = [&](std::int64_t span) { return Date::FromMilliseconds(theirs.Milliseconds() + span); };
  if (newer == Newer::QuickBooks) return LocalToUTC(by(-kLeast));
  // A send asks what changed since the last one, so that it is the present moment, unless the record is of the future.
  return LocalToUTC(std::max(machine.Now(), by(kLeast)));
}

void WriteDates(const Table& table, const LikelyPair& pair, Date utc, ado::Connection& connection) {
  const auto& link = table.lostLink;
  for (const auto& place : {link.keys, link.otherKeys}) {
    if (place.table.empty() || place.adds != pair.request) continue;
    WriteStamp(connection, {.table = place.table, .condition = KeyCondition(place.column, pair.key)}, utc);
  }
  if (link.lines.empty()) return;
  for (const auto& line : LinesOfBill(pair.record)) {
    if (line.empty()) continue;
    for (const auto& place : link.lines) {
      WriteStamp(connection, {.table = place.table, .condition = Sql("QBLinkID = '{}'", line)}, utc);
    }
  }
}

std::string WhyNot(const TakenUp& taken) {
  switch (taken.end) {
    case TakenUp::End::Linked:
    case TakenUp::End::KnewIt:
      return {};
    case TakenUp::End::Other:
      return fmt::format("it has another link by now, {}", taken.identifier);
    case TakenUp::End::RowGone:
      return "its row is none that is sent";
    case TakenUp::End::NotAdded:
      return "QuickBooks has no such record any more";
    case TakenUp::End::Open:
      break;
  }
  return taken.why;
}

// "" when the row has its link; else why it has none.
std::string LinkPair(const Table& table, const LikelyPair& pair, Newer newer, QBSessionManager& session) {
  std::string why;
  const auto raised = CatchError([&] {
    WithGlobalConnection([&] {
      Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
      // A link is found no more, so that what goes with it must not be missing: lines, second rows, the date. What
      // reads by the shared connection meanwhile sees what was written by it.
      auto& connection = GlobalConnection();
      WholeOrNot whole(connection);
      why = WhyNot(table.lostLink.takeUp({.key = pair.key,
                                          .request = pair.request,
                                          .record = pair.record,
                                          .replaces = {},
                                          .connection = connection,
                                          .session = session}));
      if (!why.empty()) return;
      if (newer != Newer::AsDated) WriteDates(table, pair, DateFor(newer, pair.record), connection);
      whole.Commit();
    });
  });
  if (raised) why = raised->description();
  const auto& names = table.lostLink;
  if (why.empty()) {
    WriteLog(fmt::format("Linked: {} {} is {} {}, {}.", names.row, pair.key, names.record, pair.identifier,
                         pair.recordName));
  }
  return why;
}

class Linking {
 public:
  Linking(TablePairs& told, Newer newer, QBSessionManager& session,
          const std::function<bool(const LikelyPair& pair)>& confirms)
      : told_(told), table_(*told.table), newer_(newer), session_(session), confirms_(confirms) {}

  // In rounds: a phase is found below its project once that is linked. At last those whose project has no link. False
  // when it was cancelled.
  bool Run() {
    const bool isList = !table_.reads.front().transaction;
    while (!IsCancelled() && TakeRound(AtTop::Stays) && isList) {
    }
    if (!IsCancelled() && told_.staying > 0 && isList) static_cast<void>(TakeRound(AtTop::IsLooked));
    return !IsCancelled();
  }

 private:
  // A question that waits when the wish comes is answered by nobody, which is no word on its pair.
  [[nodiscard]] static bool IsCancelled() {
    TheDesk().PumpMessages();
    return Vars().g_Cancelled;
  }

  // Whether a link was written.
  bool TakeRound(AtTop atTop) {
    auto found = FindLikelyPairs(table_, Tables(), session_, {.atTop = atTop});
    if (isFirst_) told_.unlinked = found.unlinked;
    isFirst_ = false;
    told_.staying = found.staying;
    told_.unreadable = found.unreadable;
    bool any = false;
    std::set<std::string> rows;
    std::set<std::string> records;
    for (auto& pair : found.pairs) {
      if (rows.contains(pair.key) || records.contains(pair.identifier)) continue;
      if (!settled_.insert({pair.key, pair.identifier}).second) continue;
      const auto told = Settle(std::move(pair));
      if (told.end != PairEnd::Linked) continue;
      any = true;
      rows.insert(told.pair.key);
      records.insert(told.pair.identifier);
    }
    return any;
  }

  PairTold Settle(LikelyPair pair) {
    PairTold told = {.pair = std::move(pair)};
    if (IsCancelled()) {
      // It stays shown.
    } else if (!told.pair.likeness.isExact && !confirms_(told.pair)) {
      if (!IsCancelled()) told.end = PairEnd::Declined;
    } else {
      told.why = LinkPair(table_, told.pair, newer_, session_);
      told.end = told.why.empty() ? PairEnd::Linked : PairEnd::Failed;
    }
    told_.pairs.push_back(told);
    return told;
  }

  TablePairs& told_;
  const Table& table_;
  const Newer newer_;
  QBSessionManager& session_;
  const std::function<bool(const LikelyPair& pair)>& confirms_;
  bool isFirst_ = true;
  std::set<std::pair<std::string, std::string>> settled_;  // that were linked, or not
};

}  // namespace

void ShowPairs(TablePairs& told, QBSessionManager& session) {
  auto found = FindLikelyPairs(*told.table, Tables(), session);
  told.unlinked = found.unlinked;
  told.staying = found.staying;
  told.unreadable = found.unreadable;
  for (auto& pair : found.pairs) told.pairs.push_back({.pair = std::move(pair)});
}

bool LinkPairs(TablePairs& told, Newer newer, QBSessionManager& session,
               const std::function<bool(const LikelyPair& pair)>& confirms) {
  return WithGlobalConnection([&] { return Linking(told, newer, session, confirms).Run(); });
}

}  // namespace twqb
