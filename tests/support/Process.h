// Runs a program and waits for it, for tests of the command line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace twqb {

struct ProcessResult {
  int exitStatus = -1;  // -1: it could not be started, or ended by a signal
  std::string output;   // standard output
  std::string errors;   // standard error
};

enum class StandardOutput : std::uint8_t { Captured, Closed, FullDisk };

struct ProcessOptions {
  std::string folder = {};  // that the program starts in; empty: this one's
  std::string input = {};
  StandardOutput output = StandardOutput::Captured;
};

// Runs the program whose path is `arguments[0]`, without a terminal.
[[nodiscard]] ProcessResult RunProcess(const std::vector<std::string>& arguments, const ProcessOptions& options = {});

// A new folder under the system's temporary folder, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

[[nodiscard]] std::string ReadWholeFile(const std::string& path);
void WriteWholeFile(const std::string& path, const std::string& text);

}  // namespace twqb
