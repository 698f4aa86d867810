// A small window with fixed controls: what both forms of the desk are made of.
//
// Controls have numbers, by which their texts are set and their presses come back. It pumps no messages.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>

namespace twqb::windows {

// In pixels, from the upper left corner of the window's inside.
struct Place {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

class Form {
 public:
  // Not shown yet. `onPress` is told the number of each button that is pressed, and `closing` when the window is to
  // close, which it does not do by itself.
  Form(std::string_view caption, int width, int height, int closing, std::function<void(int)> onPress);
  // Takes the window down.
  ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  HWND AddLabel(int number, std::string_view text, const Place& place);
  HWND AddButton(int number, std::string_view text, const Place& place);
  // Of a class of the system's, with its own style.
  HWND AddControl(int number, const wchar_t* kind, DWORD style, const Place& place);

  void SetCaption(std::string_view caption);
  void SetText(int number, std::string_view text);
  void Show();
  [[nodiscard]] HWND Window() const { return window_; }
  [[nodiscard]] HWND Control(int number) const { return GetDlgItem(window_, number); }

 private:
  static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM first, LPARAM second);

  std::function<void(int)> onPress_;
  int closing_;
  HWND window_ = nullptr;
};

}  // namespace twqb::windows
