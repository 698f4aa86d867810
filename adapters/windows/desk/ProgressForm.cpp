// commctrl.h leans on the system's first header.
// clang-format off
#include "adapters/windows/desk/ProgressForm.h"
#include <commctrl.h>
// clang-format on

#include <utility>

#include "platform/MsgFormTexts.h"

namespace twqb::windows {

namespace {

enum Controls : int { Label1 = 101, Text1, lblItem, pbconv, Text2, txtProg, cmdCancel };

constexpr int kWidth = 420;
constexpr int kHeight = 190;
constexpr int kMargin = 14;
constexpr int kLine = 18;

Place Line(int top, int height = kLine) {
  return {.left = kMargin, .top = top, .width = kWidth - 2 * kMargin, .height = height};
}

}  // namespace

ProgressForm::ProgressForm()
    : form_(" Tallywick", kWidth, kHeight, cmdCancel, [this](int number) {
        if (number == cmdCancel) isPressed_ = true;
      }) {
  const INITCOMMONCONTROLSEX controls = {.dwSize = sizeof controls, .dwICC = ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&controls);
  form_.AddLabel(Label1, "Tallywick QuickBooks data Transfer", Line(12));
  form_.AddLabel(lblItem, "", Line(38));
  form_.AddLabel(Text1, "", Line(60));
  form_.AddControl(pbconv, PROGRESS_CLASSW, 0, Line(86, 20));
  form_.AddLabel(Text2, "Records Processed: ", {.left = kMargin, .top = 116, .width = 130, .height = kLine});
  form_.AddLabel(txtProg, "", {.left = 150, .top = 116, .width = 250, .height = kLine});
  form_.AddButton(cmdCancel, "&Cancel", {.left = kWidth - kMargin - 90, .top = 148, .width = 90, .height = 28});
}

void ProgressForm::Begin(const MsgFormState& state, std::function<void()> onCancel) {
  onCancel_ = std::move(onCancel);
  isPressed_ = false;
  Tell(state);
  form_.Show();
}

void ProgressForm::Update(const MsgFormState& state) { Tell(state); }

std::function<void()> ProgressForm::TakePress() {
  return std::exchange(isPressed_, false) ? onCancel_ : std::function<void()>();
}

void ProgressForm::Tell(const MsgFormState& state) {
  const auto texts = TextsOf(state);
  form_.SetCaption(state.caption);
  form_.SetText(lblItem, texts.lblItem);
  form_.SetText(Text1, texts.Text1);
  form_.SetText(txtProg, texts.txtProg);
  SendMessageW(form_.Control(pbconv), PBM_SETPOS, static_cast<WPARAM>(texts.pbconv), 0);
  UpdateWindow(form_.Window());
}

}  // namespace twqb::windows
