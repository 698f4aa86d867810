#include "services/msgForm.h"

#include <chrono>
#include <cmath>

#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

void Refresh() { TheDesk().UpdateMsgForm(Vars().msgForm->state); }
void Pump() { TheDesk().PumpMessages(); }

void cmdCancel_Click() {
  RunAs("msgForm_cmdCancel_Click", [] {
    TheDesk().PumpMessages();
    const auto answer = TheDesk().ShowMessageBox(
        {.text = "Are you sure you want to Cancel?", .title = "Cancel Confirmation", .buttons = BoxButtons::YesNo});
    Vars().g_Cancelled = answer == BoxAnswer::Yes;
    if (Vars().msgForm) Refresh();  // back in front
  });
}

// Until an action tells its own, the form shows what it is drawn with.
void Load() {
  Vars().msgForm = MsgForm{
      .state = {.caption = " Tallywick", .record = "Label1", .position = ProgressPosition{.done = 1, .total = 1}},
      .startTime = TheMachine().Now()};
}

std::chrono::milliseconds SinceLoaded() {
  return std::chrono::milliseconds(TheMachine().Now().Milliseconds() - Vars().msgForm->startTime.Milliseconds());
}

}  // namespace

void ShowMsgForm(std::string_view strText) {
  if (!Vars().msgForm) Load();
  auto& state = Vars().msgForm->state;
  state.action = strText;
  state.percent = 0;
  TheDesk().ShowMsgForm(state, cmdCancel_Click);
  TheDesk().PumpMessages();
}

void UpdateProgressBar(std::int64_t lngTotal, std::int64_t lngCurrent) {
  if (lngCurrent > lngTotal) return;
  // Each step goes on after an error of the one before.
  IgnoreErrors([] {
    if (!Vars().msgForm) Load();
  });
  if (!Vars().msgForm) return;
  if (lngTotal == 0) {
    IgnoreErrors(Refresh);
    return;
  }
  auto& state = Vars().msgForm->state;
  state.percent = static_cast<int>(std::llrint(static_cast<double>(lngCurrent) / static_cast<double>(lngTotal) * 100));
  auto& position = state.position.emplace(ProgressPosition{.done = lngCurrent, .total = lngTotal});
  IgnoreErrors(Refresh);
  IgnoreErrors(Pump);
  IgnoreErrors([&] {
    if (lngCurrent == 0) return;  // before the first record there is nothing to estimate from
    position.timeLeft = SinceLoaded() * (lngTotal - lngCurrent) / lngCurrent;
    Refresh();
  });
  IgnoreErrors(Pump);
}

void SetProgressText(std::string_view strText) {
  if (!Vars().msgForm) return;
  Vars().msgForm->state.record = strText;
  Refresh();
}

std::string MyCaption() {
  if (!Vars().msgForm) Load();
  return Vars().msgForm->state.caption;
}

void SetMyCaption(std::string_view strCaption) {
  if (!Vars().msgForm) Load();
  Vars().msgForm->state.caption = strCaption;
  Refresh();
}

void UnloadMsgForm() {
  if (!Vars().msgForm) return;
  // Forgotten once it is gone: one that could not be taken down is met again by the next run.
  TheDesk().UnloadMsgForm();
  Vars().msgForm.reset();
}

}  // namespace twqb
