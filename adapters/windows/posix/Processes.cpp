// Processes, the console and its events, random bytes, folders of one's own.

// Its own headers lean on the system's first one.
// clang-format off
#include <windows.h>
#include <bcrypt.h>
// clang-format on

#include <io.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/random.h>
#include <sys/select.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>

#include "Failure.h"

using twqb::posix::Fail;
using twqb::posix::HandleOf;
using twqb::posix::Wide;

namespace {

constexpr std::size_t kSignals = 32;

std::array<std::atomic<void (*)(int)>, kSignals> handlers = {};
std::atomic<unsigned> signalsSoFar{0};

int SignalOf(DWORD event) {
  switch (event) {
    case CTRL_C_EVENT:
      return SIGINT;
    case CTRL_BREAK_EVENT:
      return SIGTERM;
    default:
      return SIGHUP;
  }
}

BOOL WINAPI OnConsoleEvent(DWORD event) {
  const int signal = SignalOf(event);
  const auto handler = handlers[static_cast<std::size_t>(signal)].load();
  if (handler == SIG_DFL) return FALSE;
  if (handler != SIG_IGN) {
    handler(signal);
    ++signalsSoFar;
    SetEvent(twqb::posix::SignalEvent());
  }
  if (signal == SIGHUP) {
    // The system ends the process once this returns; what is in work is given the time that there is.
    constexpr DWORD kLongest = 30'000;
    Sleep(kLongest);
  }
  return TRUE;
}

}  // namespace

namespace twqb::posix {

unsigned SignalsSoFar() { return signalsSoFar.load(); }

void* SignalEvent() {
  static const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  return event;
}

}  // namespace twqb::posix

int sigaction(int signal, const struct sigaction* action, struct sigaction* before) {
  if (signal <= 0 || static_cast<std::size_t>(signal) >= kSignals) return Fail(EINVAL);
  auto& handler = handlers[static_cast<std::size_t>(signal)];
  if (before != nullptr) *before = {.sa_handler = handler.load()};
  if (action != nullptr) {
    static const bool isInstalled = SetConsoleCtrlHandler(OnConsoleEvent, TRUE) != 0;
    static_cast<void>(isInstalled);
    handler.store(action->sa_handler);
  }
  return 0;
}

int kill(pid_t process, int /*signal*/) {
  const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(process));
  if (handle == nullptr) return Fail(GetLastError() == ERROR_ACCESS_DENIED ? EPERM : ESRCH);
  const bool isOver = WaitForSingleObject(handle, 0) == WAIT_OBJECT_0;
  CloseHandle(handle);
  return isOver ? Fail(ESRCH) : 0;
}

int pselect(int /*count*/, fd_set* readable, fd_set* /*writable*/, fd_set* /*failed*/, const timespec* /*timeout*/,
            const SignalSet* /*mask*/) {
  const HANDLE input = HandleOf(readable->descriptor);
  DWORD mode = 0;
  // What is no console always has input, or its end.
  if (input == INVALID_HANDLE_VALUE || GetConsoleMode(input, &mode) == 0) return 1;
  const std::array<HANDLE, 2> awaited = {twqb::posix::SignalEvent(), input};
  const auto came = WaitForMultipleObjects(static_cast<DWORD>(awaited.size()), awaited.data(), FALSE, INFINITE);
  return came == WAIT_OBJECT_0 ? Fail(EINTR) : 1;
}

int ioctl(int descriptor, int /*request*/, winsize* size) {
  const HANDLE output = HandleOf(descriptor);
  CONSOLE_SCREEN_BUFFER_INFO about = {};
  if (output == INVALID_HANDLE_VALUE || GetConsoleScreenBufferInfo(output, &about) == 0) return Fail(ENOTTY);
  size->ws_col = static_cast<unsigned short>(about.srWindow.Right - about.srWindow.Left + 1);
  size->ws_row = static_cast<unsigned short>(about.srWindow.Bottom - about.srWindow.Top + 1);
  return 0;
}

int gethostname(char* name, std::size_t size) {
  auto length = static_cast<DWORD>(size);
  return GetComputerNameExA(ComputerNameDnsHostname, name, &length) != 0 ? 0 : Fail();
}

ssize_t getrandom(void* bytes, std::size_t count, unsigned /*flags*/) {
  const auto status = BCryptGenRandom(nullptr, static_cast<unsigned char*>(bytes), static_cast<ULONG>(count),
                                      BCRYPT_USE_SYSTEM_PREFERRED_RNG);
  return status == 0 ? static_cast<ssize_t>(count) : Fail(EIO);
}

char* mkdtemp(char* pattern) {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz012345";
  constexpr std::size_t kPlaces = 6;
  constexpr int kAttempts = 100;
  char* const places = pattern + std::strlen(pattern) - kPlaces;
  for (int i = 0; i < kAttempts; ++i) {
    std::array<unsigned char, kPlaces> chosen = {};
    getrandom(chosen.data(), chosen.size(), 0);
    for (std::size_t at = 0; at < kPlaces; ++at) places[at] = kLetters[chosen[at] % kLetters.size()];
    if (CreateDirectoryW(Wide(pattern).c_str(), nullptr) != 0) return pattern;
    if (GetLastError() != ERROR_ALREADY_EXISTS) break;
  }
  Fail();
  return nullptr;
}
