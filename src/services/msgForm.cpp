#include "services/msgForm.h"

#include <fmt/core.h>

#include <cmath>
#include <cstdlib>

#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

namespace {

void Refresh() { TheDesk().UpdateMsgForm(Vars().msgForm->controls); }
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

// The texts that the controls are drawn with.
void Load() {
  Vars().msgForm =
      MsgForm{.controls = {.caption = " Tallywick", .lblItem = "", .Text1 = "Label1", .pbconv = 0, .txtProg = "1/1"},
              .startTime = TheMachine().Now()};
}

// "hh:mm:ss"; whole days fall away, and the sign that a clock put back would give.
std::string TimeLeft(std::int64_t milliseconds) {
  const auto seconds = std::llround(static_cast<double>(std::abs(milliseconds)) / static_cast<double>(Date::kSecond));
  return fmt::format("{:02}:{:02}:{:02}", seconds / 3600 % 24, seconds / 60 % 60, seconds % 60);
}

}  // namespace

void ShowMsgForm(std::string_view strText) {
  if (!Vars().msgForm) Load();
  auto& controls = Vars().msgForm->controls;
  controls.lblItem = strText;
  controls.pbconv = 0;
  TheDesk().ShowMsgForm(controls, cmdCancel_Click);
  TheDesk().PumpMessages();
}

void UpdateProgressBar(std::int64_t lngTotal, std::int64_t lngCurrent) {
  if (lngCurrent > lngTotal) return;
  // Each step goes on after an error of the one before.
  IgnoreErrors([] {
    if (!Vars().msgForm) Load();
  });
  if (!Vars().msgForm) return;
  auto& controls = Vars().msgForm->controls;
  if (lngTotal == 0) {
    IgnoreErrors(Refresh);
    return;
  }
  controls.pbconv =
      static_cast<int>(std::llrint(static_cast<double>(lngCurrent) / static_cast<double>(lngTotal) * 100));
  controls.txtProg = fmt::format("{}/{}", lngCurrent, lngTotal);
  IgnoreErrors(Refresh);
  IgnoreErrors(Pump);
  IgnoreErrors([&] {
    if (lngCurrent == 0) return;  // before the first record there is nothing to estimate from
    const auto elapsed = TheMachine().Now().Milliseconds() - Vars().msgForm->startTime.Milliseconds();
    controls.txtProg += " --> " + TimeLeft(elapsed * (lngTotal - lngCurrent) / lngCurrent);
    Refresh();
  });
  IgnoreErrors(Pump);
}

void SetProgressText(std::string_view strText) {
  if (!Vars().msgForm) return;
  Vars().msgForm->controls.Text1 = strText;
  Refresh();
}

std::string MyCaption() {
  if (!Vars().msgForm) Load();
  return Vars().msgForm->controls.caption;
}

void SetMyCaption(std::string_view strCaption) {
  if (!Vars().msgForm) Load();
  Vars().msgForm->controls.caption = strCaption;
  Refresh();
}

void UnloadMsgForm() {
  if (!Vars().msgForm) return;
  // Forgotten once it is gone: one that could not be taken down is met again by the next run.
  TheDesk().UnloadMsgForm();
  Vars().msgForm.reset();
}

}  // namespace twqb
