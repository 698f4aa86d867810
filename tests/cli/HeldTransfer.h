// Transfers that stand still in the middle, for tests of what happens meanwhile.
//
// A transfer records its run into a pipe that is read no further than to a given text; the pipe takes little beyond
// that.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Program.h"
#include "adapters/system/FileDescriptor.h"

namespace twqb::cli {

// A pipe in a folder, for a transcript.
class RecordPipe {
 public:
  explicit RecordPipe(const WorkFolder& folder);

  [[nodiscard]] const std::string& Path() const { return path_; }
  // Waits for somebody who writes, and reads up to `text`. False when it ends before.
  [[nodiscard]] bool ReadTo(std::string_view text);
  void ReadToTheEnd();
  [[nodiscard]] const std::string& Read() const { return read_; }

 private:
  // False at the end of the pipe.
  bool ReadMore();

  std::string path_;
  FileDescriptor pipe_;
  std::string read_;
};

class HeldTransfer {
 public:
  // Runs the command in `folder` until its transcript has come to `text`. Raises when it ends before.
  HeldTransfer(const WorkFolder& folder, std::vector<std::string> command, std::string_view text);

  [[nodiscard]] RunningProcess& Process() { return *process_; }
  // Lets it go on to its end. What it recorded is in `Transcript`.
  ProcessResult Finish();
  [[nodiscard]] const std::string& Transcript() const { return record_.Read(); }

 private:
  RecordPipe record_;
  std::unique_ptr<RunningProcess> process_;
};

}  // namespace twqb::cli
