#include "adapters/faults/FaultGate.h"

#include <string>
#include <utility>

#include "platform/Text.h"

namespace twqb::faults {

namespace {

// The text with each run of white space as one blank, none at the ends, and without case.
std::string Folded(std::string_view text) {
  std::string folded;
  bool blank = false;
  for (const char c : text) {
    if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
      blank = true;
      continue;
    }
    if (blank && !folded.empty()) folded.push_back(' ');
    blank = false;
    folded.push_back(c);
  }
  return FoldCase(folded);
}

// Points whose WHAT tells how a text begins; at the others it is a name.
bool ComparesBeginnings(FaultPoint point) {
  return point == FaultPoint::Sql || point == FaultPoint::Log || point == FaultPoint::Box;
}

bool Concerns(const RaiseFault& fault, const SeamCall& call) {
  if (fault.point != *call.point) return false;
  if (!fault.access.empty() && !SameName(fault.access, call.access)) return false;
  if (fault.what.empty()) return true;
  return ComparesBeginnings(fault.point) ? Folded(call.what).starts_with(Folded(fault.what))
                                         : SameName(fault.what, call.what);
}

}  // namespace

FaultGate::FaultGate(std::vector<RaiseFault> raises) {
  lines_.reserve(raises.size());
  for (auto& fault : raises) lines_.push_back({.fault = std::move(fault)});
}

void FaultGate::RunAt(std::size_t k, FaultTiming timing, std::function<void()> action) {
  sweep_ = Sweep{.k = k, .timing = timing, .action = std::move(action)};
}

std::function<void()> FaultGate::Enter(const SeamCall& call) {
  names_.push_back(call.name);
  std::function<void()> before;
  std::function<void()> after;
  const auto due = [&](FaultTiming timing, std::function<void()> action) {
    auto& slot = timing == FaultTiming::Before ? before : after;
    if (!slot) slot = std::move(action);
  };
  // Every line counts the call, those too whose fault another line's comes before.
  if (call.point) {
    for (auto& line : lines_) {
      if (Concerns(line.fault, call) && ++line.seen == line.fault.nth) {
        due(line.fault.timing,
            [error = PlatformError(line.fault.number, line.fault.description)] { throw PlatformError(error); });
      }
    }
  }
  if (sweep_ && sweep_->k == names_.size()) due(sweep_->timing, sweep_->action);
  if (before) before();
  return after;
}

}  // namespace twqb::faults
