#include "cli/screen/TimeLimit.h"

#include <unistd.h>

#include <utility>

#include "cli/options/ExitStatus.h"
#include "cli/screen/Output.h"

namespace twqb::cli {

TimeLimit::TimeLimit(std::chrono::milliseconds limit, std::string message)
    : watch_([this, limit, message = std::move(message)] {
        std::unique_lock lock(mutex_);
        if (ended_.wait_for(lock, limit, [this] { return isOver_; })) return;
        Tell(message);
        _exit(static_cast<int>(ExitStatus::Failed));
      }) {}

TimeLimit::~TimeLimit() {
  {
    const std::lock_guard lock(mutex_);
    isOver_ = true;
  }
  ended_.notify_one();
  watch_.join();
}

}  // namespace twqb::cli
