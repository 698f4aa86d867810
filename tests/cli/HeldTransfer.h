// A transfer that stands still in the middle, for tests of what happens meanwhile.
//
// It records its run into a pipe that is read no further than to a given text; the pipe takes little beyond that.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Program.h"
#include "adapters/system/FileDescriptor.h"

namespace twqb::cli {

class HeldTransfer {
 public:
  // Runs the command in `folder` until its transcript has come to `text`. Raises when it ends before.
  HeldTransfer(const WorkFolder& folder, std::vector<std::string> command, std::string_view text);

  [[nodiscard]] RunningProcess& Process() { return *process_; }
  // Lets it go on to its end. What it recorded is in `Transcript`.
  ProcessResult Finish();
  [[nodiscard]] const std::string& Transcript() const { return read_; }

 private:
  // False at the end of the pipe.
  bool ReadMore();

  std::unique_ptr<RunningProcess> process_;
  FileDescriptor pipe_;
  std::string read_;
};

}  // namespace twqb::cli
