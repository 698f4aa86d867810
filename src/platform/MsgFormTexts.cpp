#include "platform/MsgFormTexts.h"

#include <fmt/core.h>

#include <cmath>

namespace twqb {

namespace {

// "hh:mm:ss"
std::string TimeText(std::chrono::milliseconds time) {
  const auto seconds = std::llround(std::abs(std::chrono::duration<double>(time).count()));
  return fmt::format("{:02}:{:02}:{:02}", seconds / 3600 % 24, seconds / 60 % 60, seconds % 60);
}

}  // namespace

MsgFormTexts TextsOf(const MsgFormState& state) {
  return {.lblItem = state.action,
          .Text1 = state.record,
          .pbconv = state.percent,
          .txtProg = state.position ? PositionText(*state.position) : std::string()};
}

std::string CountText(const ProgressPosition& position) { return fmt::format("{}/{}", position.done, position.total); }

std::string PositionText(const ProgressPosition& position) {
  return position.timeLeft ? fmt::format("{} --> {}", CountText(position), TimeText(*position.timeLeft))
                           : CountText(position);
}

}  // namespace twqb
