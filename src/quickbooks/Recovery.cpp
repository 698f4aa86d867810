#include "quickbooks/Recovery.h"

#include <fmt/core.h>

#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Requests.h"
#include "services/Errors.h"

namespace twqb {

namespace {

// Of a set with identifiers. 600 and 9002 both answer for one that QuickBooks does not know.
constexpr int kInOrder = 0;
constexpr int kOtherContent = 9001;
constexpr int kNoStoredAnswer = 9002;
constexpr int kIdTooLong = 9004;

bool IsRun(const MsgSetResponse& answer) {
  return answer.MessageSetStatusCode().value_or(kInOrder) == kInOrder && answer.Count() > 0;
}

}  // namespace

std::string Recovery::OwnerOf(std::string_view application, std::string_view workstation, std::string_view billing) {
  // Sixteen digits, so that there is room for what tells the two apart in the 23 that QuickBooks takes.
  return fmt::format("TW{:016X}", HashOf(fmt::format("{}\n{}\n{}", application, workstation, billing)));
}

void Recovery::Begin(std::string_view owner) {
  if (state_ != State::NotBegun) return;
  ids_ = {fmt::format("{}A", owner), fmt::format("{}B", owner)};
  state_ = State::Begun;
}

std::optional<MsgSetResponse> Recovery::StatusOf(QBSessionManager& session, std::size_t slot) {
  const auto& id = ids_[slot];
  auto answer = session.DoRequests(RequireMsgSetRequest(session), {.newId = id, .oldId = id});
  if (IsRun(answer)) return answer;
  // To ask for an identifier may take it, so that no set can come under it any more.
  if (answer.MessageSetStatusCode() == kNoStoredAnswer) Remove(session, slot);
  return std::nullopt;
}

void Recovery::Remove(QBSessionManager& session, std::size_t slot) {
  static_cast<void>(session.DoRequests(RequireMsgSetRequest(session), {.newId = {}, .oldId = ids_[slot]}));
}

std::optional<MsgSetResponse> Recovery::AskFirst(QBSessionManager& session) {
  if (state_ != State::Begun) return std::nullopt;
  try {
    for (std::size_t slot = 0; slot < ids_.size(); ++slot) {
      auto stored = StatusOf(session, slot);
      if (!stored) continue;
      state_ = State::On;
      last_ = slot;
      next_ = Other(slot);
      kept_ = true;
      return stored;
    }
  } catch (const PlatformError& raised) {
    if (raised.number() != error::kParse) throw;
    WriteLog("QuickBooks keeps no outcomes of message sets in this version: a link that gets lost is not found again.");
    Leave();
    return std::nullopt;
  }
  state_ = State::On;
  return std::nullopt;
}

MsgSetResponse Recovery::Send(QBSessionManager& session, const MsgSetRequest& set, std::string_view row) {
  last_ = next_;
  row_ = row;
  request_ = set.LastRequest();
  attempt_ = set.Count() - 1;
  kept_ = true;
  open_ = true;
  mayHaveRun_ = false;
  auto answer = session.DoRequests(set, {.newId = ids_[next_], .oldId = ids_[Other(next_)]});
  const auto code = answer.MessageSetStatusCode().value_or(kInOrder);
  if (code == kOtherContent || code == kIdTooLong) {
    // Nothing was carried out: another process sends under the same identifiers, or QuickBooks does not take them.
    WriteLog(fmt::format("QuickBooks does not take the identifier {} of a message set (code {}): links that get lost "
                         "in this session are not found again.",
                         ids_[next_], code));
    kept_ = false;
    open_ = false;
    Leave();
    return session.DoRequests(set);
  }
  if (!IsRun(answer)) {
    mayHaveRun_ = true;
    throw PlatformError(error::kParse, fmt::format("QuickBooks may have carried a request out, but has no answer to it "
                                                   "(code {} of the message set).",
                                                   code));
  }
  next_ = Other(next_);
  return answer;
}

std::optional<MsgSetResponse> Recovery::AskAgain(QBSessionManager& session) {
  auto stored = StatusOf(session, last_);
  kept_ = stored.has_value();
  next_ = kept_ ? Other(last_) : last_;
  return stored;
}

void Recovery::Drop(QBSessionManager& session) {
  if (!IsOn() || !kept_ || open_ || restFollows_) return;
  Remove(session, last_);
  kept_ = false;
}

}  // namespace twqb
