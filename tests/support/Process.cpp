#include "tests/support/Process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace twqb {

namespace {

constexpr int kCannotStart = 127;

// In the child, between fork and exec.
void Redirect(int descriptor, const std::string& path, int flags) {
  const int opened = open(path.c_str(), flags, 0600);
  if (opened < 0 || dup2(opened, descriptor) < 0) _exit(kCannotStart);
  close(opened);
}

}  // namespace

RunningProcess::RunningProcess(const std::vector<std::string>& arguments, const ProcessOptions& options) {
  WriteWholeFile(streams_ / "in", options.input);
  WriteWholeFile(streams_ / "out", "");
  const auto in = streams_ / "in";
  const auto out = streams_ / "out";
  const auto err = streams_ / "err";
  std::vector<char*> argv;
  for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);

  child_ = fork();
  if (child_ == 0) {
    constexpr int kForWriting = O_WRONLY | O_CREAT | O_TRUNC;
    // Tests that run in the background of a shell have some ignored.
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, SIG_DFL);
    if (!options.folder.empty() && chdir(options.folder.c_str()) != 0) _exit(kCannotStart);
    Redirect(STDIN_FILENO, in, O_RDONLY);
    Redirect(STDERR_FILENO, err, kForWriting);
    Redirect(STDOUT_FILENO, options.output == StandardOutput::FullDisk ? "/dev/full" : out, kForWriting);
    if (options.output == StandardOutput::Closed) close(STDOUT_FILENO);
    execv(argv[0], argv.data());
    _exit(kCannotStart);
  }
}

RunningProcess::~RunningProcess() {
  if (child_ <= 0) return;
  kill(child_, SIGKILL);
  waitpid(child_, nullptr, 0);
}

void RunningProcess::Signal(int signal) const {
  if (child_ <= 0 || kill(child_, signal) != 0) throw std::runtime_error("no process to signal");
}

std::string RunningProcess::Errors() const { return ReadWholeFile(streams_ / "err"); }

ProcessResult RunningProcess::Wait() {
  ProcessResult result;
  int status = 0;
  if (child_ > 0 && waitpid(std::exchange(child_, -1), &status, 0) > 0) {
    if (WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  }
  result.output = ReadWholeFile(streams_ / "out");
  result.errors = Errors();
  return result;
}

ProcessResult RunProcess(const std::vector<std::string>& arguments, const ProcessOptions& options) {
  return RunningProcess(arguments, options).Wait();
}

TemporaryFolder::TemporaryFolder() {
  path_ = (std::filesystem::canonical(std::filesystem::temp_directory_path()) / "twqb-XXXXXX").string();
  if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string ReadWholeFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void WriteWholeFile(const std::string& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

}  // namespace twqb
