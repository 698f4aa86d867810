#include "adapters/storage/EndingTurn.h"

#ifdef __linux__
#include <fmt/core.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <thread>
#endif

namespace twqb::storage {

#ifdef __linux__

EndingTurn::EndingTurn(const std::string& file) {
  constexpr auto kMoment = std::chrono::seconds(1);
  constexpr auto kPause = std::chrono::milliseconds(1);
  const auto began = std::chrono::steady_clock::now();
  struct stat status = {};
  if (::stat(file.c_str(), &status) != 0) return;
  // An address that begins with a zero is no file.
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  const auto named = fmt::format_to_n(address.sun_path + 1, sizeof address.sun_path - 1, "twqb-ending-{:x}-{:x}",
                                      status.st_dev, status.st_ino);
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + named.size);
  name_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (name_ < 0) return;
  while (::bind(name_, reinterpret_cast<const sockaddr*>(&address), size) != 0 && errno == EADDRINUSE) {
    if (std::chrono::steady_clock::now() - began >= kMoment) return;
    std::this_thread::sleep_for(kPause);
  }
}

EndingTurn::~EndingTurn() {
  if (name_ >= 0) ::close(name_);
}

#else

// Nothing is written ahead there (TakesWriteAhead), and so nothing has to be ended.
EndingTurn::EndingTurn(const std::string& /*file*/) {}
EndingTurn::~EndingTurn() = default;

#endif

}  // namespace twqb::storage
