// The desk of a run that a signal may end: SIGINT, SIGTERM and SIGHUP become the library's Cancel.
//
// It stands around the desk of the person, or of the answers. Without EndSignals no signal comes here. The library ends
// the record in hand and leaves the rest; how the process ends then is the program's business.
#pragma once

#include <functional>

#include "platform/Forwarding.h"

namespace twqb::cli {

// Whether a person can be asked if Ctrl-C was meant.
enum class Confirms : std::uint8_t { Yes, No };

class EndingDesk : public ForwardingDesk {
 public:
  EndingDesk(Desk& inner, Confirms confirms) : ForwardingDesk(inner), confirms_(confirms) {}

  void ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) override;
  void UnloadMsgForm() override;
  // Once a signal has come, wants no more records; of Ctrl-C at a terminal, while the form is shown, only after asking
  // as its Cancel button does.
  void PumpMessages() override;

 private:
  [[nodiscard]] bool IsMeant(int signal);

  Confirms confirms_;
  std::function<void()> onCancel_;
  bool asking_ = false;  // the button's routine pumps messages itself
  bool told_ = false;
};

}  // namespace twqb::cli
