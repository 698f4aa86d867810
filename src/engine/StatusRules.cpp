#include "engine/StatusRules.h"

#include <fmt/format.h>

#include <array>

#include "messages/StatusCodes.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"

namespace twqb {

namespace {

constexpr std::array kCommonRules = {
    StatusRule{.status = status::kNameInUse, .on = OnRequest::Add, .then = Refusal::TryNextName},
    StatusRule{.on = OnRequest::Mod, .then = Refusal::AskInItsOwnBox},
    StatusRule{.then = Refusal::AskInTheBox},
};

bool IsAbout(OnRequest on, const RefusedRequest& refused) {
  switch (on) {
    case OnRequest::Any:
      return true;
    case OnRequest::Add:
      return refused.kind == RequestKind::Add;
    case OnRequest::Mod:
      return refused.kind == RequestKind::Mod;
    case OnRequest::AddNamesSpent:
      return refused.namesSpent;
  }
  return false;
}

bool IsAbout(const StatusRule& rule, const RefusedRequest& refused) {
  if (refused.namesSpent && rule.then == Refusal::TryNextName) return false;
  return (rule.status == kAnyStatus || rule.status == refused.response.StatusCode()) && IsAbout(rule.on, refused);
}

}  // namespace

const StatusRule& RuleFor(std::span<const StatusRule> rules, const RefusedRequest& refused) {
  for (const auto& rule : rules) {
    if (IsAbout(rule, refused)) return rule;
  }
  for (const auto& rule : kCommonRules) {
    if (IsAbout(rule, refused)) return rule;
  }
  return kCommonRules.back();
}

void NoteRefused(const Response& response) {
  NoteRefusal([&] { return RefusalAccount{.status = response.StatusCode(), .message = response.StatusMessage()}; });
}

Refusal ApplyRule(const StatusRule& rule, const RefusedRequest& refused, bool& wantsNoMore) {
  // What then may yet make something else of it.
  NoteRefused(refused.response);
  if (rule.log != nullptr) {
    for (const auto& line : rule.log(refused)) WriteLog(line);
  }
  if (rule.box != nullptr && TheDesk().ShowMessageBox(rule.box(refused)) == BoxAnswer::No) wantsNoMore = true;
  return rule.decide == nullptr ? rule.then : rule.decide(refused);
}

}  // namespace twqb
