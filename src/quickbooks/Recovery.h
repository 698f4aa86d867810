// What QuickBooks keeps of the sets that add: it stores the outcome of a set that carries an identifier, until a later
// set names that as the old one, so that a process can learn what became of a set whose answer never reached it.
//
// Two identifiers alternate. They are made of what a later process knows by itself, so that nothing has to be written
// down. One outcome is kept at a time: it must be settled (its row written, or known not to have gone) ahead of the
// next set, which drops it. Each transfer asks at its beginning and has QuickBooks forget at its end, for between two
// of them others may send. What a kept outcome means for a row is engine/LostAdditions' affair.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Date.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

class MsgSetRequest;
class QBSessionManager;
struct Table;

// Whether a row has more that goes with additions of their own: until they have gone, its last outcome is kept.
enum class RestOfRow : bool { None, Follows };

// A set that was sent and whose outcome is not settled.
struct OpenAddition {
  const Table* table = nullptr;
  std::string row;          // the name of the request that adds
  std::string request;      // what it is: "CustomerAdd"
  std::size_t attempt = 0;  // its place in the set
  std::string replaces;     // the name of the first request, where that adds nothing
};

// What QuickBooks knows of a set.
struct KeptOutcome {
  std::optional<MsgSetResponse> answer;  // nothing: it keeps none
  bool mayHaveRun = false;               // without an answer
};

// What it keeps under one of the two identifiers.
struct StoredOutcome {
  std::size_t slot = 0;
  std::string row;  // whose addition this session sent under it; "" where another one did
  MsgSetResponse answer;
};

class Recovery {
 public:
  // The beginning of both identifiers, of whatever tells one sender from another: letters and digits alone, the same in
  // every process.
  [[nodiscard]] static std::string OwnerOf(std::string_view application, std::string_view workstation,
                                           std::string_view billing);

  // From here on additions carry identifiers of that owner. `now` is the present moment, in standard time. A second
  // call changes nothing.
  void Begin(std::string_view owner, Date now);
  [[nodiscard]] bool HasBegun() const { return state_ != State::NotBegun; }
  [[nodiscard]] bool IsOn() const { return state_ == State::On; }
  // When it began: nothing that this session adds is older.
  [[nodiscard]] Date BegunAt() const { return begunAt_; }
  // For the rest of the transfer additions go as they would without; what QuickBooks keeps stays there.
  void Leave() { state_ = State::Left; }

  // At the beginning of a transfer: what an earlier one left, of whatever process, under both identifiers. Where
  // QuickBooks does not know identifiers, the log is told once and it is left at that. Raises what other calls raise.
  [[nodiscard]] std::vector<StoredOutcome> Ask(QBSessionManager& session);
  // One of these is the one that is settled next, and dropped by the next set.
  void TakeInHand(std::size_t slot);

  // Sends a set that adds, without the identifiers where they turn out to be of no use. Raises what the call raises,
  // and where QuickBooks may have carried the set out but has no answer; the addition is open then.
  [[nodiscard]] MsgSetResponse Send(QBSessionManager& session, const MsgSetRequest& set, OpenAddition addition);

  // Of the set sent last, whether its outcome is open still, and what QuickBooks keeps of it.
  [[nodiscard]] bool IsOpen() const { return isOpen_; }
  [[nodiscard]] const OpenAddition& Open() const { return open_; }
  [[nodiscard]] KeptOutcome AskAgain(QBSessionManager& session);
  void Settle(RestOfRow rest = RestOfRow::None) {
    isOpen_ = false;
    restFollows_ = rest == RestOfRow::Follows;
  }
  // It is settled by not having been carried out: what was before it counts.
  void SettleNotRun() { Settle(restFollowed_ ? RestOfRow::Follows : RestOfRow::None); }
  [[nodiscard]] bool RestFollows() const { return restFollows_; }

  // Rows that may be in QuickBooks already, which nobody could settle: they must not go in this session, unless they
  // are settled after all.
  void Hold(std::string row) { held_.insert(std::move(row)); }
  void Release(const std::string& row) { held_.erase(row); }
  [[nodiscard]] bool IsHeld(std::string_view row) const { return held_.contains(row); }
  // Rows that were found again in the send in hand.
  void NoteTakenUp(std::string row) { takenUp_.insert(std::move(row)); }
  [[nodiscard]] bool HasTakenUp() const { return !takenUp_.empty(); }
  [[nodiscard]] bool WasTakenUp(std::string_view row) const { return takenUp_.contains(row); }
  void ForgetTakenUp() { takenUp_.clear(); }

  // The orderly end of a transfer: has QuickBooks drop what it keeps, if that is settled.
  void Drop(QBSessionManager& session);

 private:
  enum class State : std::uint8_t { NotBegun, Left, On, NotKnown };
  using Names = std::set<std::string, std::less<>>;

  // What is stored under one of the two, by the answer to the document that asks for it. Behind it the identifier can
  // be used, or has the outcome that came back.
  [[nodiscard]] std::string StatusDocument(QBSessionManager& session, std::size_t slot) const;
  [[nodiscard]] KeptOutcome StatusOf(QBSessionManager& session, std::size_t slot, MsgSetResponse answer);
  void Remove(QBSessionManager& session, std::size_t slot);
  [[nodiscard]] static std::size_t Other(std::size_t slot) { return 1 - slot; }

  State state_ = State::NotBegun;
  Date begunAt_;
  std::array<std::string, 2> ids_;
  std::array<std::string, 2> rows_;  // whose additions went under them in this session
  std::size_t next_ = 0;             // the identifier of the next set
  std::size_t last_ = 0;             // of the last one
  bool kept_ = false;                // QuickBooks keeps an outcome under `last_`
  bool isOpen_ = false;              // the last one is not settled
  bool mayHaveRun_ = false;          // though QuickBooks has no answer, as it said itself
  bool restFollows_ = false;
  bool keptBefore_ = false;    // an outcome was, ahead of the last set
  bool restFollowed_ = false;  //
  OpenAddition open_;
  Names held_;
  Names takenUp_;
};

}  // namespace twqb
