// What QuickBooks keeps of the sets that add: it stores the outcome of a set that carries an identifier, until a later
// set names that as the old one, so that a process can learn what became of a set whose answer never reached it.
//
// Two identifiers alternate. They are made of what a later process knows by itself, so that nothing has to be written
// down. One outcome is kept at a time: it must be settled (its row written, or known not to have gone) ahead of the
// next set, which drops it. What a kept outcome means for a row is engine/LostAdditions' affair.
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
  // For the rest of the session additions go as they would without; what QuickBooks keeps stays there.
  void Leave() { state_ = State::Left; }

  // What an earlier process left, of both identifiers; nothing at any but the first call of a session. Where QuickBooks
  // does not know identifiers, the log is told and it is left at that. Raises what other calls raise.
  [[nodiscard]] std::vector<MsgSetResponse> AskFirst(QBSessionManager& session);
  // Once that is settled.
  void DropOldest(QBSessionManager& session);

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

  // Rows that may be in QuickBooks already, which nobody could settle: they must not go in this session.
  void Hold(std::string row) { held_.insert(std::move(row)); }
  [[nodiscard]] bool IsHeld(std::string_view row) const { return held_.contains(row); }
  // Rows that were found again in the send in hand.
  void NoteTakenUp(std::string row) { takenUp_.insert(std::move(row)); }
  [[nodiscard]] bool HasTakenUp() const { return !takenUp_.empty(); }
  [[nodiscard]] bool WasTakenUp(std::string_view row) const { return takenUp_.contains(row); }
  void ForgetTakenUp() { takenUp_.clear(); }

  // The orderly end of the session: has QuickBooks drop what it keeps, if that is settled.
  void Drop(QBSessionManager& session);

 private:
  enum class State : std::uint8_t { NotBegun, Begun, On, Left };
  using Names = std::set<std::string, std::less<>>;

  // What is stored under one of the two. Behind it the identifier can be used, or has the outcome that came back.
  [[nodiscard]] KeptOutcome StatusOf(QBSessionManager& session, std::size_t slot);
  void Remove(QBSessionManager& session, std::size_t slot);
  [[nodiscard]] static std::size_t Other(std::size_t slot) { return 1 - slot; }

  State state_ = State::NotBegun;
  Date begunAt_;
  std::array<std::string, 2> ids_;
  std::size_t next_ = 0;     // the identifier of the next set
  std::size_t last_ = 0;     // of the last one
  bool kept_ = false;        // QuickBooks keeps an outcome under `last_`
  bool bothKept_ = false;    // and one under the other, which an earlier process left
  bool isOpen_ = false;      // the last one is not settled
  bool mayHaveRun_ = false;  // though QuickBooks has no answer, as it said itself
  bool restFollows_ = false;
  bool keptBefore_ = false;    // an outcome was, ahead of the last set
  bool restFollowed_ = false;  //
  OpenAddition open_;
  Names held_;
  Names takenUp_;
};

}  // namespace twqb
