#include "quickbooks/Recovery.h"

#include <fmt/core.h>

#include <utility>

#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Requests.h"
#include "services/Errors.h"

namespace twqb {

namespace {

// Of a set with identifiers.
constexpr int kInOrder = 0;
constexpr int kNotKnown = 600;
constexpr int kOtherContent = 9001;
constexpr int kNoStoredAnswer = 9002;
constexpr int kIdTooLong = 9004;

int CodeOf(const MsgSetResponse& answer) { return answer.MessageSetStatusCode().value_or(kInOrder); }

bool HasAnswers(const MsgSetResponse& answer) { return CodeOf(answer) == kInOrder && answer.Count() > 0; }

}  // namespace

std::string Recovery::OwnerOf(std::string_view application, std::string_view workstation, std::string_view billing) {
  // Eighteen characters, so that there is room for what tells the two apart in the 23 that QuickBooks takes.
  return fmt::format("TW{:016X}", HashOf(fmt::format("{}\n{}\n{}", application, workstation, billing)));
}

void Recovery::Begin(std::string_view owner, Date now) {
  if (state_ != State::NotBegun) return;
  ids_ = {fmt::format("{}A", owner), fmt::format("{}B", owner)};
  begunAt_ = now;
  state_ = State::Left;
}

std::string Recovery::StatusDocument(QBSessionManager& session, std::size_t slot) const {
  const MessageSetIds ids = {.newId = ids_[slot], .oldId = ids_[slot]};
  return session.DocumentOf(RequireMsgSetRequest(session), &ids);
}

KeptOutcome Recovery::StatusOf(QBSessionManager& session, std::size_t slot, MsgSetResponse answer) {
  if (HasAnswers(answer)) return {.answer = std::move(answer)};
  const auto code = CodeOf(answer);
  // To ask for an identifier may take it, so that no set can come under it any more.
  if (code != kNotKnown) Remove(session, slot);
  if (code != kNotKnown && code != kInOrder && code != kNoStoredAnswer) {
    WriteLog(fmt::format("QuickBooks answers {} where it is asked for the message set {}.", code, ids_[slot]));
  }
  // One that never came is told so; every other code may hide work that was done.
  return {.answer = std::nullopt, .mayHaveRun = code != kNotKnown};
}

void Recovery::Remove(QBSessionManager& session, std::size_t slot) {
  rows_[slot].clear();
  static_cast<void>(session.DoRequests(RequireMsgSetRequest(session), {.newId = {}, .oldId = ids_[slot]}));
}

std::vector<StoredOutcome> Recovery::Ask(QBSessionManager& session) {
  std::vector<StoredOutcome> stored;
  if (state_ == State::NotBegun || state_ == State::NotKnown) return stored;
  state_ = State::Left;
  for (std::size_t slot = 0; slot < ids_.size(); ++slot) {
    const auto document = StatusDocument(session, slot);
    std::string text;
    try {
      text = session.AnswerTo(document);
    } catch (const PlatformError& raised) {
      if (raised.number() != error::kParse || slot > 0) throw;
      WriteLog(
          "QuickBooks keeps no outcomes of message sets in this version: a link that gets lost is not found again.");
      state_ = State::NotKnown;
      return stored;
    }
    auto outcome = StatusOf(session, slot, session.Read(std::move(text)));
    if (outcome.answer) {
      stored.push_back({.slot = slot, .row = rows_[slot], .answer = std::move(*outcome.answer)});
    } else {
      rows_[slot].clear();
    }
  }
  state_ = State::On;
  kept_ = false;
  keptBefore_ = false;
  restFollowed_ = false;
  Settle();
  return stored;
}

void Recovery::TakeInHand(std::size_t slot) {
  last_ = slot;
  next_ = Other(slot);
  kept_ = true;
}

MsgSetResponse Recovery::Send(QBSessionManager& session, const MsgSetRequest& set, OpenAddition addition) {
  const MessageSetIds ids = {.newId = ids_[next_], .oldId = ids_[Other(next_)]};
  // What can't be written raises ahead of the call, and nothing has gone.
  const auto document = session.DocumentOf(set, &ids);
  keptBefore_ = kept_;
  restFollowed_ = restFollows_;
  last_ = next_;
  kept_ = true;
  isOpen_ = true;
  restFollows_ = false;
  mayHaveRun_ = false;
  rows_[last_] = addition.row;
  open_ = std::move(addition);
  auto answer = session.DoDocument(document);
  const auto code = CodeOf(answer);
  if (code == kOtherContent || code == kIdTooLong) {
    // Nothing was carried out: another process sends under the same identifiers, or QuickBooks does not take them.
    WriteLog(
        fmt::format("QuickBooks does not take the identifier {} of a message set (code {}): links that get lost "
                    "in this transfer are not found again.",
                    ids.newId, code));
    rows_[last_].clear();
    kept_ = false;
    isOpen_ = false;
    Leave();
    return session.DoRequests(set);
  }
  if (!HasAnswers(answer)) {
    mayHaveRun_ = true;
    throw PlatformError(error::kParse, fmt::format("QuickBooks may have carried a request out, but has no answer to it "
                                                   "(code {} of the message set).",
                                                   code));
  }
  next_ = Other(next_);
  rows_[next_].clear();
  return answer;
}

KeptOutcome Recovery::AskAgain(QBSessionManager& session) {
  auto answer = session.DoDocument(StatusDocument(session, last_));
  // Ahead of all that can fail now: it is not told a second time.
  mayHaveRun_ = mayHaveRun_ || (!HasAnswers(answer) && CodeOf(answer) != kNotKnown);
  auto stored = StatusOf(session, last_, std::move(answer));
  kept_ = stored.answer.has_value();
  next_ = kept_ ? Other(last_) : last_;
  if (!kept_ && std::exchange(keptBefore_, false)) {
    // A set that did not arrive has dropped nothing.
    last_ = Other(last_);
    kept_ = true;
  }
  stored.mayHaveRun = stored.mayHaveRun || mayHaveRun_;
  return stored;
}

void Recovery::Drop(QBSessionManager& session) {
  if (!IsOn() || !kept_ || isOpen_ || restFollows_) return;
  Remove(session, last_);
  kept_ = false;
}

}  // namespace twqb
