// The progress form on a terminal: one line, rewritten in place. Where output is no terminal, a plain line an action,
// and another one every few seconds while it lasts.
//
// The painter decides when to draw: not more often than the eye follows, never the same text twice. The desk tells it
// what the form shows and when the line has to make way for a box.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/terminal/Console.h"
#include "platform/desk.h"

namespace twqb {

// `Sending Clients to QuickBooks...  [#########-----------]  45%  12/64 --> 00:00:03  ACME1`, at most `width` columns:
// the bar shrinks first, then the end is cut, with an ellipsis. Empty parts are left out. Where there is room beside a
// whole bar, the position stands behind its label.
[[nodiscard]] std::string FormatProgressLine(const MsgFormState& state, std::size_t width);

// The texts of the form that never change.
inline constexpr std::string_view kFormHeading = "Tallywick QuickBooks data Transfer";
inline constexpr std::string_view kPositionLabel = "Records Processed: ";

enum class ProgressStyle : std::uint8_t { Rewritten, Plain };

class ProgressPainter {
 public:
  // `console` is borrowed for the painter's life. `plainEvery`: how long an action lasts in the plain style before a
  // line tells how far it is; 0: none does.
  ProgressPainter(Console& console, ProgressStyle style, std::chrono::milliseconds plainEvery = {})
      : console_(console), style_(style), plainEvery_(plainEvery) {}

  // Whether there is an action, which is as long as the form is loaded.
  [[nodiscard]] bool HasAction() const { return state_.has_value(); }
  // A new action: drawn at once. The line of an action that counted records stays above it.
  void Begin(const MsgFormState& state);
  // Drawn when due, at 100 per cent at once. Nothing happens without an action.
  void Update(const MsgFormState& state);
  // Draws what Update has put off, if it is due by now.
  void PaintIfDue();
  // Takes the line off the screen, so that a box can be printed; Redraw puts it back.
  void Clear();
  void Redraw();
  // Ends the action: its last state stays on the screen when records were counted.
  void End();

 private:
  void Paint();
  void SayHowFar();
  void FinishLine();

  Console& console_;
  ProgressStyle style_;
  std::chrono::milliseconds plainEvery_;
  std::optional<MsgFormState> state_;
  std::optional<std::chrono::milliseconds> timeLeft_;  // as last estimated
  std::string drawn_;                                  // on the screen now
  std::chrono::steady_clock::time_point paintedAt_;
};

}  // namespace twqb
