#include "adapters/windows/desk/VendorForm.h"

#include "adapters/windows/desk/Form.h"
#include "adapters/windows/late/Owned.h"

namespace twqb::windows {

namespace {

enum Controls : int { lblMsg = 201, cmbVendor, cmdOk, cmdSkip };

constexpr int kWidth = 400;
constexpr int kHeight = 170;
constexpr int kMargin = 14;

// What lies below a modal form takes no input while it stands.
class OthersHeld {
 public:
  explicit OthersHeld(HWND form) : owner_(GetWindow(form, GW_OWNER)) {
    if (owner_ != nullptr) EnableWindow(owner_, FALSE);
  }
  ~OthersHeld() {
    if (owner_ != nullptr) EnableWindow(owner_, TRUE);
  }
  OthersHeld(const OthersHeld&) = delete;
  OthersHeld& operator=(const OthersHeld&) = delete;

 private:
  HWND owner_;
};

}  // namespace

std::optional<std::string> AskForVendor(const std::string& message, const std::vector<std::string>& choices) {
  int pressed = 0;
  Form form("Vendor", kWidth, kHeight, cmdSkip, [&](int number) { pressed = number; });
  form.AddLabel(lblMsg, message, {.left = kMargin, .top = 12, .width = kWidth - 2 * kMargin, .height = 64});
  const HWND list = form.AddControl(cmbVendor, L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP,
                                    {.left = kMargin, .top = 82, .width = kWidth - 2 * kMargin, .height = 200});
  for (const auto& choice : choices) {
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(choice).c_str()));
  }
  form.AddButton(cmdOk, "&OK", {.left = kWidth - 200, .top = 126, .width = 86, .height = 28});
  form.AddButton(cmdSkip, "&Skip", {.left = kWidth - 104, .top = 126, .width = 86, .height = 28});
  const OthersHeld held(form.Window());
  form.Show();

  for (;;) {
    MSG next = {};
    const auto got = GetMessageW(&next, nullptr, 0, 0);
    if (got <= 0) {
      // The wish that the thread ends is the host's to hear.
      if (got == 0) PostQuitMessage(static_cast<int>(next.wParam));
      return std::nullopt;
    }
    if (IsDialogMessageW(form.Window(), &next) == 0) {
      TranslateMessage(&next);
      DispatchMessageW(&next);
    }
    if (pressed == cmdSkip) return std::nullopt;
    if (pressed == cmdOk) {
      const auto at = SendMessageW(list, CB_GETCURSEL, 0, 0);
      if (at >= 0 && static_cast<std::size_t>(at) < choices.size()) return choices[static_cast<std::size_t>(at)];
      pressed = 0;  // nothing is chosen yet
    }
  }
}

}  // namespace twqb::windows
