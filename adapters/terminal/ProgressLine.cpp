#include "adapters/terminal/ProgressLine.h"

#include <fmt/core.h>

#include <algorithm>

#include "adapters/terminal/TextLayout.h"
#include "platform/MsgFormTexts.h"

namespace twqb {

namespace {

constexpr std::chrono::milliseconds kBetweenPaints{50};
constexpr std::string_view kClearToEnd = "\x1b[K";
constexpr std::string_view kGap = "  ";

constexpr std::size_t kLongestBar = 20;
constexpr std::size_t kShortestBar = 5;
// Kept free beside action and bar: brackets, per cent, position with estimate, the start of the record, gaps. It does
// not follow the texts in hand, or the bar would jump with each record.
constexpr std::size_t kBesideBar = 2 + 4 + 18 + 12 + 4 * kGap.size();

std::string Bar(std::size_t cells, int percent) {
  const auto done = cells * static_cast<std::size_t>(percent) / 100;
  return fmt::format("[{:#<{}}{:-<{}}] {:>3}%", "", done, "", cells - done, percent);
}

std::size_t BarCells(std::size_t room) { return std::clamp(room, kShortestBar, kLongestBar); }

}  // namespace

std::string FormatProgressLine(const MsgFormState& state, std::size_t width) {
  auto line = OneLine(state.action);
  const auto taken = ColumnCount(line) + kBesideBar;
  const auto room = width > taken ? width - taken : 0;
  const bool hasLabel = room >= kLongestBar + kPositionLabel.size();
  const auto add = [&line](std::string_view part) {
    if (!line.empty() && !part.empty()) line += kGap;
    line += part;
  };
  add(Bar(BarCells(room), std::clamp(state.percent, 0, 100)));
  if (state.position) add(fmt::format("{}{}", hasLabel ? kPositionLabel : "", PositionText(*state.position)));
  add(OneLine(state.record));
  return CutToColumns(line, width);
}

void ProgressPainter::Begin(const MsgFormState& state) {
  const bool sameAction = state_ && state_->action == state.action;
  if (style_ == ProgressStyle::Plain) {
    if (!sameAction && !state.action.empty()) console_.Write(OneLine(state.action) + '\n');
    if (!sameAction) paintedAt_ = std::chrono::steady_clock::now();
  } else if (!sameAction) {
    FinishLine();
  }
  state_ = state;
  timeLeft_.reset();
  Paint();
}

void ProgressPainter::Update(const MsgFormState& state) {
  if (!state_) return;
  state_ = state;
  // The position is shown a moment before its estimate: keep the last one meanwhile, or the line would flicker.
  if (auto& position = state_->position) {
    if (!position->timeLeft) position->timeLeft = timeLeft_;
    timeLeft_ = position->timeLeft;
  }
  if (state.percent >= 100) {
    Paint();
  } else {
    PaintIfDue();
  }
}

void ProgressPainter::PaintIfDue() {
  if (style_ == ProgressStyle::Plain) {
    SayHowFar();
    return;
  }
  if (std::chrono::steady_clock::now() - paintedAt_ >= kBetweenPaints) Paint();
}

void ProgressPainter::Clear() {
  if (drawn_.empty()) return;
  console_.Write(fmt::format("\r{}", kClearToEnd));
  drawn_.clear();
}

void ProgressPainter::Redraw() { Paint(); }

void ProgressPainter::End() {
  if (!state_) return;
  if (style_ == ProgressStyle::Rewritten) {
    FinishLine();
  } else if (const auto& position = state_->position) {
    console_.Write(fmt::format("{}{}\n", kPositionLabel, CountText(*position)));
  }
  state_.reset();
}

void ProgressPainter::Paint() {
  if (style_ == ProgressStyle::Plain || !state_) return;
  paintedAt_ = std::chrono::steady_clock::now();
  auto text = FormatProgressLine(*state_, console_.Width() - 1);  // in the last column a terminal may wrap
  if (text == drawn_) return;
  console_.Write(fmt::format("\r{}{}", text, kClearToEnd));
  drawn_ = std::move(text);
}

void ProgressPainter::SayHowFar() {
  if (!state_ || plainEvery_.count() == 0) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - paintedAt_ < plainEvery_) return;
  paintedAt_ = now;
  const auto far = state_->position ? PositionText(*state_->position) : fmt::format("{}%", state_->percent);
  console_.Write(fmt::format("{}{}{}\n", OneLine(state_->action), kGap, far));
}

void ProgressPainter::FinishLine() {
  if (!state_) return;
  if (!state_->position) {
    Clear();
    return;
  }
  Paint();
  console_.Write("\n");
  drawn_.clear();
}

}  // namespace twqb
