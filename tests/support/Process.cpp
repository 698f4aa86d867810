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

[[noreturn]] void StartProgram(const std::vector<std::string>& arguments, const std::string& folder, int in, int out,
                               int err) {
  dup2(in, STDIN_FILENO);
  dup2(out, STDOUT_FILENO);
  dup2(err, STDERR_FILENO);
  if (!folder.empty() && chdir(folder.c_str()) != 0) _exit(kCannotStart);
  std::vector<char*> argv;
  for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  execv(argv[0], argv.data());
  _exit(kCannotStart);
}

// Streams go through files: no pipe can fill up and stop the program.
int OpenStream(const std::string& path, int flags) { return open(path.c_str(), flags | O_CLOEXEC, 0600); }

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& arguments, const std::string& folder,
                         const std::string& input) {
  const TemporaryFolder streams;
  WriteWholeFile(streams / "in", input);
  const int in = OpenStream(streams / "in", O_RDONLY);
  const int out = OpenStream(streams / "out", O_WRONLY | O_CREAT);
  const int err = OpenStream(streams / "err", O_WRONLY | O_CREAT);
  const pid_t child = fork();
  if (child == 0) StartProgram(arguments, folder, in, out, err);
  for (const int stream : {in, out, err}) close(stream);
  ProcessResult result;
  int status = 0;
  if (child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status)) result.exitStatus = WEXITSTATUS(status);
  result.output = ReadWholeFile(streams / "out");
  result.errors = ReadWholeFile(streams / "err");
  return result;
}

TemporaryFolder::TemporaryFolder() {
  path_ = (std::filesystem::temp_directory_path() / "twqb-XXXXXX").string();
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
