#include "cli/runs/EndingDesk.h"

#include <fmt/core.h>

#include <csignal>
#include <utility>

#include "adapters/terminal/EndSignals.h"
#include "cli/screen/Output.h"
#include "platform/Flagged.h"
#include "services/ModuleVariables.h"

namespace twqb::cli {

void EndingDesk::ShowMsgForm(const MsgFormState& state, std::function<void()> onCancel) {
  onCancel_ = onCancel;
  ForwardingDesk::ShowMsgForm(state, std::move(onCancel));
}

void EndingDesk::UnloadMsgForm() {
  onCancel_ = nullptr;
  ForwardingDesk::UnloadMsgForm();
}

void EndingDesk::PumpMessages() {
  ForwardingDesk::PumpMessages();
  const int signal = EndSignals::Came();
  if (signal == 0 || asking_) return;
  if (!told_ && !IsMeant(signal)) {
    EndSignals::Forget();
    return;
  }
  // Here and not by the button alone: without a form there is none, and a question whether to go on takes it back.
  Vars().g_Cancelled = true;
  if (std::exchange(told_, true)) return;
  Tell(fmt::format("{}: the record in hand is finished, then the run ends. A second signal ends it at once.",
                   SignalName(signal)));
}

bool EndingDesk::IsMeant(int signal) {
  if (signal != SIGINT || confirms_ == Confirms::No || !onCancel_) return true;
  const Flagged inside(asking_);
  const EndSignals::Asking asking;
  const auto press = onCancel_;  // it may unload the form, and so itself
  press();
  return Vars().g_Cancelled;
}

}  // namespace twqb::cli
