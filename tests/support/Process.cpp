#include "tests/support/Process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

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

ProcessResult RunProcess(const std::vector<std::string>& arguments, const ProcessOptions& options) {
  // Streams go through files: no pipe can fill up and stop the program.
  const TemporaryFolder streams;
  const auto in = streams / "in";
  const auto out = streams / "out";
  const auto err = streams / "err";
  WriteWholeFile(in, options.input);
  WriteWholeFile(out, "");
  std::vector<char*> argv;
  for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);

  const pid_t child = fork();
  if (child == 0) {
    constexpr int kForWriting = O_WRONLY | O_CREAT | O_TRUNC;
    if (!options.folder.empty() && chdir(options.folder.c_str()) != 0) _exit(kCannotStart);
    Redirect(STDIN_FILENO, in, O_RDONLY);
    Redirect(STDERR_FILENO, err, kForWriting);
    Redirect(STDOUT_FILENO, options.output == StandardOutput::FullDisk ? "/dev/full" : out, kForWriting);
    if (options.output == StandardOutput::Closed) close(STDOUT_FILENO);
    execv(argv[0], argv.data());
    _exit(kCannotStart);
  }
  ProcessResult result;
  int status = 0;
  if (child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
  result.output = ReadWholeFile(out);
  result.errors = ReadWholeFile(err);
  return result;
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
