// What is raised where a backup can't be made, read or put back: a sentence for the user, with the file that it is
// about. It says nothing of what to do; who asked for it knows that.
#pragma once

#include <fmt/core.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace twqb::backup {

class BackupError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A signal wants the run to end; nothing is to be told.
class BackupEnded : public std::exception {};

// What the system answered last, about a file: "backups/pieces can't be made: No space left on device."
[[noreturn]] inline void RaiseForFile(std::string_view file, std::string_view can, int reason = errno) {
  throw BackupError(fmt::format("{} can't be {}: {}.", file, can, std::generic_category().message(reason)));
}

}  // namespace twqb::backup
