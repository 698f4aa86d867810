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

#include "quickbooks/ResponseModel.h"

namespace twqb {

class MsgSetRequest;
class QBSessionManager;

// Whether a row has more that goes with additions of their own: until they have gone, its last outcome is kept.
enum class RestOfRow : bool { None, Follows };

class Recovery {
 public:
  // The beginning of both identifiers, of whatever tells one sender from another: letters and digits alone, the same in
  // every process.
  [[nodiscard]] static std::string OwnerOf(std::string_view application, std::string_view workstation,
                                           std::string_view billing);

  // From here on additions carry identifiers of that owner. A second call changes nothing.
  void Begin(std::string_view owner);
  [[nodiscard]] bool HasBegun() const { return state_ != State::NotBegun; }
  [[nodiscard]] bool IsOn() const { return state_ == State::On; }
  // For the rest of the session additions go as they would without; what QuickBooks keeps stays there.
  void Leave() { state_ = State::Left; }

  // What an earlier process left; nothing where there is nothing, and at any but the first call of a session. Where
  // QuickBooks does not know identifiers, the log is told and it is left at that. Raises what other calls raise.
  [[nodiscard]] std::optional<MsgSetResponse> AskFirst(QBSessionManager& session);

  // Sends a set that adds; `row` is the name of the request that does. Without the identifiers where they turn out to
  // be of no use. Raises what the call raises, and where QuickBooks may have carried the set out but has no answer; the
  // addition is open then.
  [[nodiscard]] MsgSetResponse Send(QBSessionManager& session, const MsgSetRequest& set, std::string_view row);

  // Of the set sent last: whether its outcome is open still, what QuickBooks keeps of it (nothing: it does not know
  // it), and that it is settled.
  [[nodiscard]] bool IsOpen() const { return open_; }
  [[nodiscard]] const std::string& OpenRow() const { return row_; }
  [[nodiscard]] const std::string& OpenRequest() const { return request_; }
  [[nodiscard]] std::size_t OpenAttempt() const { return attempt_; }  // which request of its set it was
  // Whether it may have been carried out though QuickBooks keeps nothing of it, as it said itself.
  [[nodiscard]] bool MayHaveRun() const { return mayHaveRun_; }
  [[nodiscard]] std::optional<MsgSetResponse> AskAgain(QBSessionManager& session);
  void Settle(RestOfRow rest = RestOfRow::None) {
    open_ = false;
    restFollows_ = rest == RestOfRow::Follows;
  }
  [[nodiscard]] bool RestFollows() const { return restFollows_; }

  // Rows that may be in QuickBooks already, which nobody could settle: they must not go in this session.
  void Hold(std::string row) { held_.insert(std::move(row)); }
  [[nodiscard]] bool IsHeld(std::string_view row) const { return held_.contains(row); }

  // Rows that were found again in the send in hand.
  void NoteTakenUp(std::string row) { takenUp_.insert(std::move(row)); }
  [[nodiscard]] bool WasTakenUp(std::string_view row) const { return takenUp_.contains(row); }
  void ForgetTakenUp() { takenUp_.clear(); }

  // The orderly end: has QuickBooks drop what it keeps, if that is settled.
  void Drop(QBSessionManager& session);

 private:
  enum class State : std::uint8_t { NotBegun, Begun, On, Left };

  // What is stored under one of the two. Behind it the identifier can be used, or has the outcome that came back.
  [[nodiscard]] std::optional<MsgSetResponse> StatusOf(QBSessionManager& session, std::size_t slot);
  void Remove(QBSessionManager& session, std::size_t slot);
  [[nodiscard]] std::size_t Other(std::size_t slot) const { return 1 - slot; }

  State state_ = State::NotBegun;
  std::array<std::string, 2> ids_;
  std::size_t next_ = 0;    // the identifier of the next set
  std::size_t last_ = 0;    // of the last one
  bool kept_ = false;       // QuickBooks keeps an outcome under `last_`
  bool open_ = false;       // which is not settled
  bool restFollows_ = false;
  bool mayHaveRun_ = false;  // though QuickBooks keeps nothing of it
  std::string row_;
  std::string request_;
  std::size_t attempt_ = 0;
  std::set<std::string, std::less<>> held_;
  std::set<std::string, std::less<>> takenUp_;
};

}  // namespace twqb
