// Shows the forms of the desk that a transfer of the sample firm does not bring up, and prints what came of them:
//   desk_host vendor        which vendor was chosen
//   desk_host progress      stands with a progress form until somebody closes it, or a minute is over

#include <windows.h>

#include <cstdio>
#include <string_view>

#include "adapters/windows/desk/WindowsDesk.h"

int main(int count, char** given) {
  twqb::windows::WindowsDesk desk;
  const std::string_view what = count > 1 ? given[1] : "";
  if (what == "vendor") {
    const auto picked = desk.PickVendor("Which vendor stands for the employee\r\n\"KLEIN, Anna\"?",
                                        {"Ahlberg Surveying", "Böhm & Söhne", "Cloutier"});
    std::printf("%s\n", picked ? picked->c_str() : "(none)");
    return 0;
  }
  bool isPressed = false;
  twqb::MsgFormState state;
  state.caption = " Tallywick";
  state.action = "Sending Clients to QuickBooks...";
  desk.ShowMsgForm(state, [&] { isPressed = true; });
  state.record = "Mühlenbau";
  state.percent = 50;
  state.position = {.done = 32, .total = 64, .timeLeft = std::chrono::seconds(7)};
  desk.UpdateMsgForm(state);
  constexpr int kMostPumps = 600;
  for (int i = 0; i < kMostPumps && !isPressed; ++i) {
    desk.PumpMessages();
    Sleep(100);
  }
  desk.UnloadMsgForm();
  std::printf("%s\n", isPressed ? "pressed" : "left alone");
  return 0;
}
