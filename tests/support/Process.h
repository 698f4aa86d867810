// Runs a program and waits for it, or lets it run beside the test; for tests of the command line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace twqb {

struct ProcessResult {
  int exitStatus = -1;  // -1: it could not be started, or ended by a signal
  std::string output;   // standard output
  std::string errors;   // standard error
  int signal = 0;       // that it ended by
};

enum class StandardOutput : std::uint8_t { Captured, Closed, FullDisk };

struct ProcessOptions {
  std::string folder = {};  // that the program starts in; empty: this one's
  std::string input = {};
  StandardOutput output = StandardOutput::Captured;
};

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

// A program that is running.
class RunningProcess {
 public:
  // Starts the program whose path is `arguments[0]`, without a terminal; signals do with it what they usually do.
  explicit RunningProcess(const std::vector<std::string>& arguments, const ProcessOptions& options = {});
  // Kills it, unless its end has been waited for.
  ~RunningProcess();
  RunningProcess(const RunningProcess&) = delete;
  RunningProcess& operator=(const RunningProcess&) = delete;

  [[nodiscard]] int Id() const { return child_; }
  void Signal(int signal) const;
  // What it has written to standard error so far.
  [[nodiscard]] std::string Errors() const;
  ProcessResult Wait();

 private:
  TemporaryFolder streams_;  // through files: no pipe can fill up and stop the program
  int child_ = -1;
};

// Runs the program whose path is `arguments[0]`, without a terminal, to its end.
[[nodiscard]] ProcessResult RunProcess(const std::vector<std::string>& arguments, const ProcessOptions& options = {});

[[nodiscard]] std::string ReadWholeFile(const std::string& path);
void WriteWholeFile(const std::string& path, const std::string& text);

}  // namespace twqb
