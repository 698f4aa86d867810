#include "adapters/windows/desk/Form.h"

#include <utility>

#include "adapters/windows/late/Owned.h"

namespace twqb::windows {

namespace {

constexpr const wchar_t* kClass = L"TWQBClient90Form";

HINSTANCE Module() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, kClass,
                     &module);
  return module;
}

}  // namespace

Form::Form(std::string_view caption, int width, int height, int closing, std::function<void(int)> onPress)
    : onPress_(std::move(onPress)), closing_(closing) {
  WNDCLASSW kind = {};
  kind.lpfnWndProc = Handle;
  kind.hInstance = Module();
  kind.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
  kind.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  kind.lpszClassName = kClass;
  RegisterClassW(&kind);  // fails where it is known already, and that is as well
  constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
  RECT frame = {.left = 0, .top = 0, .right = width, .bottom = height};
  AdjustWindowRectEx(&frame, kStyle, FALSE, WS_EX_DLGMODALFRAME);
  const int outerWidth = static_cast<int>(frame.right - frame.left);
  const int outerHeight = static_cast<int>(frame.bottom - frame.top);
  window_ = CreateWindowExW(WS_EX_DLGMODALFRAME, kClass, Wide(caption).c_str(), kStyle,
                            (GetSystemMetrics(SM_CXSCREEN) - outerWidth) / 2,
                            (GetSystemMetrics(SM_CYSCREEN) - outerHeight) / 2, outerWidth, outerHeight,
                            GetActiveWindow(), nullptr, Module(), nullptr);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Form::~Form() {
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  DestroyWindow(window_);
  // Fails while another form stands. The window's routine goes with the library.
  UnregisterClassW(kClass, Module());
}

HWND Form::AddControl(int number, const wchar_t* kind, DWORD style, const Place& place) {
  const HWND control =
      CreateWindowExW(0, kind, L"", WS_CHILD | WS_VISIBLE | style, place.left, place.top, place.width, place.height,
                      window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(number)), Module(), nullptr);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), TRUE);
  return control;
}

HWND Form::AddLabel(int number, std::string_view text, const Place& place) {
  const HWND label = AddControl(number, L"STATIC", SS_NOPREFIX, place);
  SetWindowTextW(label, Wide(text).c_str());
  return label;
}

HWND Form::AddButton(int number, std::string_view text, const Place& place) {
  const HWND button = AddControl(number, L"BUTTON", WS_TABSTOP, place);
  SetWindowTextW(button, Wide(text).c_str());
  return button;
}

void Form::SetCaption(std::string_view caption) { SetWindowTextW(window_, Wide(caption).c_str()); }
void Form::SetText(int number, std::string_view text) { SetWindowTextW(Control(number), Wide(text).c_str()); }

void Form::Show() {
  ShowWindow(window_, SW_SHOW);
  UpdateWindow(window_);
}

LRESULT CALLBACK Form::Handle(HWND window, UINT message, WPARAM first, LPARAM second) {
  auto* const form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (form != nullptr && message == WM_CLOSE) {
    form->onPress_(form->closing_);
    return 0;
  }
  if (form != nullptr && message == WM_COMMAND && HIWORD(first) == BN_CLICKED && second != 0) {
    form->onPress_(LOWORD(first));
    return 0;
  }
  return DefWindowProcW(window, message, first, second);
}

}  // namespace twqb::windows
