// An end to work that can't be interrupted: when it takes too long the process says so and ends.
//
// For commands that only read: nothing is taken down in order.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace twqb::cli {

class TimeLimit {
 public:
  // After `limit` tells `message` on standard error and ends the process with `Failed`, unless this object is gone.
  TimeLimit(std::chrono::milliseconds limit, std::string message);
  ~TimeLimit();
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

 private:
  std::mutex mutex_;
  std::condition_variable ended_;
  bool isOver_ = false;
  std::thread watch_;
};

}  // namespace twqb::cli
