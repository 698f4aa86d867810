#include "adapters/storage/EndingTurn.h"

#ifdef __linux__
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>
#endif

namespace twqb::storage {

#ifdef __linux__

EndingTurn::EndingTurn(const std::string& file) {
  constexpr int kAttempts = 1'000;
  constexpr auto kPause = std::chrono::milliseconds(1);
  const auto folder = std::filesystem::path(file).parent_path().string();
  folder_ = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder_ < 0) return;
  for (int i = 0; i < kAttempts && ::flock(folder_, LOCK_EX | LOCK_NB) != 0; ++i) std::this_thread::sleep_for(kPause);
}

EndingTurn::~EndingTurn() {
  if (folder_ >= 0) ::close(folder_);
}

#else

// Nothing is written ahead there (TakesWriteAhead), and so nothing has to be ended.
EndingTurn::EndingTurn(const std::string& /*file*/) {}
EndingTurn::~EndingTurn() = default;

#endif

}  // namespace twqb::storage
