// Runs a program and waits for it, for tests of the command line.
#pragma once

#include <string>
#include <vector>

namespace twqb {

struct ProcessResult {
  int exitStatus = -1;  // -1: it could not be started, or ended by a signal
  std::string output;   // standard output
  std::string errors;   // standard error
};

// `arguments[0]` is the program's path. `folder`, when not empty, is the folder it starts in. `input` is its standard
// input.
[[nodiscard]] ProcessResult RunProcess(const std::vector<std::string>& arguments, const std::string& folder = {},
                                       const std::string& input = {});

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
