#include "engine/LostAdditions.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>
#include <vector>

#include "engine/AddedRecords.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "quickbooks/Requests.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/RunObserver.h"
#include "services/Sql.h"

namespace twqb {

namespace {

// --- The names of rows -----------------------------------------------------------------------------------------------

// QuickBooks takes fifty characters, and nobody says which.
constexpr std::size_t kLongestName = 50;
constexpr char kByKey = ':';
constexpr char kByHash = '#';  // of a key that does not fit

bool IsPlain(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; }) && Trim(text) == text;
}

std::string HashedName(std::int32_t table, std::string_view key) {
  return fmt::format("{}{}{:016x}", table, kByHash, HashOf(key));
}

std::string NameOfRow(std::int32_t table, std::string_view key) {
  auto name = fmt::format("{}{}{}", table, kByKey, key);
  return name.size() <= kLongestName && IsPlain(key) ? name : HashedName(table, key);
}

struct RowName {
  std::int32_t table = -1;  // -1: it names no row
  bool isHashed = false;
  std::string key;  // or its hash
};

RowName ReadName(std::string_view name) {
  RowName row;
  const auto* const end = name.data() + name.size();
  std::int32_t table = 0;
  const auto [behind, problem] = std::from_chars(name.data(), end, table);
  if (problem != std::errc() || behind == end || (*behind != kByKey && *behind != kByHash)) return row;
  return {.table = table, .isHashed = *behind == kByHash, .key = std::string(behind + 1, end)};
}

// The key of that hash; "" where no row has it.
std::string KeyOfHash(const LostLink& link, std::int32_t number, std::string_view name, ado::Connection& connection) {
  for (const auto& keys : {link.keys, link.otherKeys}) {
    if (keys.table.empty()) continue;
    const auto rows = connection.OpenRecordset(Sql("SELECT {} FROM {};", Sql::Own(keys.column), Sql::Own(keys.table)),
                                               ado::CursorType::Static, ado::LockType::ReadOnly);
    for (; !rows->Eof(); rows->MoveNext()) {
      auto key = FirstField(*rows);
      if (HashedName(number, key) == name) return key;
    }
  }
  return {};
}

// Whether the row is there, though a send would not select it.
bool IsThere(const LostLink& link, std::string_view key, ado::Connection& connection) {
  for (const auto& keys : {link.keys, link.otherKeys}) {
    if (keys.table.empty()) continue;
    const auto found = connection.Execute(Sql("SELECT COUNT(*) FROM {} WHERE {} = '{}';", Sql::Own(keys.table),
                                              Sql::Own(keys.column), Doubled{FixQuote(key)}),
                                          nullptr);
    if (FirstField(*found) != "0") return true;
  }
  return false;
}

// --- What is told ----------------------------------------------------------------------------------------------------

void Tell(bool isFound, const std::string& text) {
  WriteLog(text);
  if (auto* observer = Vars().observer) observer->LostLinkTold({.isFound = isFound, .text = text});
}

// --- One addition ----------------------------------------------------------------------------------------------------

// What was added of the set, and for whom; nothing where nothing was.
struct Added {
  std::string row;
  std::string request;
  std::size_t attempt = 0;
  Record record = {};
  bool isCertain = true;
  std::string replaces = {};
};

// Stands ahead of the identifier of the twin that a request is about which adds nothing.
constexpr char kOfTwin = '=';

std::string TwinNamedBy(std::string_view name) {
  return name.starts_with(kOfTwin) ? std::string(name.substr(1)) : std::string();
}

bool IsAdd(const Response& response) { return response.RequestName().ends_with("Add"); }

std::optional<Added> AddedBy(const MsgSetResponse& outcome) {
  for (std::size_t i = outcome.Count(); i-- > 0;) {
    const auto& response = outcome.GetAt(i);
    if (!IsCarriedOut(response) || !IsAdd(response)) continue;
    Added added = {.row = response.RequestID(),
                   .request = response.RequestName(),
                   .attempt = i,
                   .replaces = TwinNamedBy(outcome.GetAt(0).RequestID())};
    // One that can't be read is looked for like one that is not told.
    IgnoreErrors([&] {
      if (response.DetailCount() > 0) added.record = response.Detail();
    });
    return added;
  }
  return std::nullopt;
}

// An outcome that nobody can make sense of stays with QuickBooks, and its row does not go: the next process tries
// again.
void LeaveOpen(const LostLink& names, const Added& added, std::string_view key, std::string_view why,
               QBSessionManager& session) {
  auto& recovery = session.Recovery();
  recovery.Hold(added.row);
  recovery.Settle();
  recovery.Leave();
  // Without an outcome that is kept the next process can't know.
  const std::string_view now =
      added.isCertain ? "It is not sent now, and until this is settled no other link that gets lost can be found again"
                      : "It is not sent in this session: look there before it is sent again";
  Tell(false, fmt::format("The {} {} may be in QuickBooks already, without a link: {}. {}. Link it by hand; or delete "
                          "what QuickBooks has of it and send it with the search for lost links off.",
                          names.row, key, why, now));
}

void TellTakenUp(const LostLink& names, std::string_view key, const Added& added, const TakenUp& taken,
                 QBSessionManager& session) {
  switch (taken.end) {
    case TakenUp::End::Linked:
      return Tell(true, fmt::format("Found again: {} {} is {} {}.", names.row, key, names.record, taken.identifier));
    case TakenUp::End::KnewIt:
    case TakenUp::End::NotAdded:
      return;
    case TakenUp::End::Other:
      return WriteLog(fmt::format("The {} {} has another link by now, {}; what was added for it is left alone.",
                                  names.row, key, taken.identifier));
    case TakenUp::End::RowGone:
      return WriteLog(fmt::format("The {} {} is no longer there; the {} that was added for it is left alone.",
                                  names.row, key, names.record));
    case TakenUp::End::Open:
      return LeaveOpen(names, added, key, taken.why, session);
  }
}

// What is told of the row in hand is none of this one's.
class AsideOfTheRow {
 public:
  AsideOfTheRow() : inHand_(std::exchange(Vars().inHand, nullptr)), newLink_(Vars().g_NewQBLinkID) {}
  ~AsideOfTheRow() {
    Vars().inHand = inHand_;
    Vars().g_NewQBLinkID = newLink_;
  }
  AsideOfTheRow(const AsideOfTheRow&) = delete;
  AsideOfTheRow& operator=(const AsideOfTheRow&) = delete;

 private:
  RecordInHand* inHand_;
  std::string newLink_;
};

TakenUp TakenUpBy(const Table& table, const Added& added, std::string& key, QBSessionManager& session) {
  const auto& link = table.lostLink;
  return WithGlobalConnection([&]() -> TakenUp {
    Vars().g_DbKind = DbKindOf(GlobalConnection().Provider());
    auto connection = Vars().platform.database->CreateConnection();
    OpenConnection(*connection, nullptr, "");
    if (ReadName(added.row).isHashed) {
      key = KeyOfHash(link, table.number, added.row, *connection);
      if (key.empty()) return {.end = TakenUp::End::RowGone};
    }
    auto taken = link.takeUp({.key = key,
                              .request = added.request,
                              .attempt = added.attempt,
                              .record = added.record,
                              .isCertain = added.isCertain,
                              .replaces = added.replaces,
                              .connection = *connection,
                              .session = session});
    if (taken.end == TakenUp::End::RowGone && IsThere(link, key, *connection)) {
      return {.why = "its row is none that is sent now"};
    }
    return taken;
  });
}

// Whether the row's record is in QuickBooks, and its row knows.
bool TakeUp(const Table& table, const Added& added, QBSessionManager& session) {
  const AsideOfTheRow aside;
  auto key = ReadName(added.row).key;
  TakenUp taken;
  if (const auto raised = CatchError([&] { taken = TakenUpBy(table, added, key, session); })) {
    taken = {.why = raised->description()};
  }
  auto& recovery = session.Recovery();
  const bool isLinked = taken.end == TakenUp::End::Linked || taken.end == TakenUp::End::KnewIt;
  if (taken.end != TakenUp::End::Open) recovery.Release(added.row);
  // One that knew it goes like any other: it may have been changed since.
  if (taken.end == TakenUp::End::Linked) recovery.NoteTakenUp(added.row);
  if (taken.end == TakenUp::End::NotAdded) {
    recovery.SettleNotRun();
  } else {
    recovery.Settle(taken.rest);
  }
  TellTakenUp(table.lostLink, key, added, taken, session);
  return isLinked;
}

// `row` names what was added where the answer does not, as far as that is known.
bool TakeUpOutcome(const MsgSetResponse& outcome, std::string_view row, const FindTableRoutine& findTable,
                   QBSessionManager& session) {
  auto added = AddedBy(outcome);
  if (!added) {
    session.Recovery().Settle();
    return false;
  }
  if (ReadName(added->row).table < 0) added->row = row;
  const auto* table = findTable(ReadName(added->row).table);
  if (table != nullptr && table->lostLink.takeUp != nullptr) return TakeUp(*table, *added, session);
  WriteLog(fmt::format("QuickBooks tells of an addition that no table here has made: \"{}\". It is left alone.",
                       added->row));
  session.Recovery().Settle();
  return false;
}

bool IsOfAnother(const MsgSetResponse& outcome, std::string_view row) {
  const auto added = AddedBy(outcome);
  return added && ReadName(added->row).table >= 0 && added->row != row;
}

// The addition that is open in this session. Whether its record is in QuickBooks, and its row knows.
bool SettleOpen(QBSessionManager& session) {
  auto& recovery = session.Recovery();
  const auto open = recovery.Open();
  const auto outcome = recovery.AskAgain(session);
  if (outcome.answer && IsOfAnother(*outcome.answer, open.row)) {
    // Another process has sent under the same identifier. What it left is the next transfer's to settle.
    recovery.Hold(open.row);
    recovery.Settle();
    recovery.Leave();
    return false;
  }
  if (outcome.answer) {
    return TakeUpOutcome(
        *outcome.answer, open.row, [&](std::int32_t /*number*/) { return open.table; }, session);
  }
  if (!outcome.mayHaveRun) {
    recovery.SettleNotRun();
    return false;
  }
  return TakeUp(*open.table,
                {.row = open.row,
                 .request = open.request,
                 .attempt = open.attempt,
                 .isCertain = false,
                 .replaces = TwinNamedBy(open.replaces)},
                session);
}

}  // namespace

RequestField AppendAddition(MsgSetRequest& set, std::string_view addRequest, const Table& table, std::string_view key) {
  const auto request = set.Append(addRequest);
  NameAddition(set, table, key);
  return request;
}

void NameAddition(MsgSetRequest& set, const Table& table, std::string_view key) {
  set.NameLast(NameOfRow(table.number, key));
}

void NameTwin(MsgSetRequest& set, std::string_view identifier) { set.NameLast(kOfTwin + std::string(identifier)); }

std::optional<MsgSetResponse> SendAddition(const Table& table, std::string_view key, QBSessionManager& session,
                                           const MsgSetRequest& set) {
  auto& recovery = session.Recovery();
  const auto row = NameOfRow(table.number, key);
  const bool isTheSame = recovery.IsOpen() && recovery.Open().row == row;
  const bool isThere = recovery.IsOpen() && SettleOpen(session);
  if (isTheSame && isThere) {
    NoteFate(Fate::LeftAsItWas, "it was found again in QuickBooks");
    return std::nullopt;
  }
  if (recovery.IsHeld(row)) {
    NoteFate(Fate::PassedOver, "it may be in QuickBooks already");
    return std::nullopt;
  }
  if (!recovery.IsOn()) return session.DoRequests(set);
  auto answer = recovery.Send(session, set,
                              {.table = &table,
                               .row = row,
                               .request = std::string(set.LastRequest()),
                               .attempt = set.Count() - 1,
                               .replaces = set.FirstName()});
  // What was refused has nothing to be written.
  if (!AddedBy(answer)) recovery.Settle();
  return answer;
}

bool IsAdditionOpen(QBSessionManager& session) { return session.Recovery().IsOpen(); }
bool FindsLostLinks(QBSessionManager& session) { return session.Recovery().HasBegun(); }
void CloseAddition(QBSessionManager& session, RestOfRow rest) {
  // Nothing is kept for a rest where nothing is kept at all.
  if (session.Recovery().IsOn()) session.Recovery().Settle(rest);
}

void TakeUpWhatWasLeft(QBSessionManager& session, const FindTableRoutine& findTable) {
  auto& recovery = session.Recovery();
  recovery.ForgetTakenUp();
  // One that this session could not settle, and of which QuickBooks may have no outcome that tells.
  std::string told;  // the row that stays open
  if (recovery.IsOn() && recovery.IsOpen()) {
    const auto row = recovery.Open().row;
    (void)SettleOpen(session);
    if (recovery.IsHeld(row)) told = row;
    recovery.Drop(session);
  }
  // Two are of two processes that sent at the same time. One whose row has a rest is kept for it, whichever it is.
  const auto kept = recovery.Ask(session);
  std::optional<std::size_t> withRest;
  for (const auto& stored : kept) {
    recovery.TakeInHand(stored.slot);
    if (!told.empty() && !IsOfAnother(stored.answer, told)) {
      recovery.Leave();
      continue;
    }
    (void)TakeUpOutcome(stored.answer, stored.row, findTable, session);
    if (recovery.RestFollows() && !withRest) {
      withRest = stored.slot;
    } else if (withRest || &stored != &kept.back()) {
      recovery.Drop(session);
    }
  }
  if (!withRest) return;
  recovery.TakeInHand(*withRest);
  recovery.Settle(RestOfRow::Follows);
}

void SettleOpenAddition(QBSessionManager& session) {
  if (!session.Recovery().IsOpen()) return;
  if (const auto raised = CatchError([&] { (void)SettleOpen(session); })) {
    WriteLog(fmt::format("What became of the last addition can't be told now: {}. The next send asks again.",
                         raised->description()));
  }
}

void DropWhatIsSettled(QBSessionManager& session) {
  IgnoreErrors([&] { session.Recovery().Drop(session); });
}

bool WasTakenUp(const Table& table, std::string_view key, QBSessionManager& session) {
  const auto& recovery = session.Recovery();
  return recovery.HasTakenUp() && recovery.WasTakenUp(NameOfRow(table.number, key));
}

void NoteTakenUp(const Table& table, std::string_view key, QBSessionManager& session) {
  session.Recovery().NoteTakenUp(NameOfRow(table.number, key));
}

}  // namespace twqb
