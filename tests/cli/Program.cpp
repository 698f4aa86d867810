#include "Program.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>  // mkdtemp
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace twqb::cli {

namespace fs = std::filesystem;

namespace {

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("no file " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const fs::path& path, std::string_view text) { std::ofstream(path, std::ios::binary) << text; }

fs::path NewFolder() {
  auto pattern = (fs::temp_directory_path() / "twqb-test-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  return fs::canonical(pattern);
}

// In the child, between fork and exec.
void Redirect(int descriptor, const char* path, int flags) {
  constexpr mode_t kMode = 0600;
  const int opened = ::open(path, flags, kMode);
  if (opened < 0 || ::dup2(opened, descriptor) < 0) ::_exit(127);
  ::close(opened);
}

}  // namespace

WorkFolder::WorkFolder() : path_(NewFolder()) {}

WorkFolder::~WorkFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

Ended WorkFolder::Twqb(const std::vector<std::string>& arguments, const RunOptions& options) const {
  const auto streams = NewFolder();
  const auto in = (streams / "in").string();
  const auto out = (streams / "out").string();
  const auto err = (streams / "err").string();
  WriteFile(in, options.input);
  WriteFile(out, "");

  std::vector<std::string> words = {TWQB_PROGRAM};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (auto& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  const pid_t child = ::fork();
  if (child == 0) {
    constexpr int kForWriting = O_WRONLY | O_CREAT | O_TRUNC;
    if (::chdir(path_.c_str()) != 0) ::_exit(127);
    Redirect(STDIN_FILENO, in.c_str(), O_RDONLY);
    Redirect(STDERR_FILENO, err.c_str(), kForWriting);
    Redirect(STDOUT_FILENO, options.out == Stdout::FullDisk ? "/dev/full" : out.c_str(), kForWriting);
    if (options.out == Stdout::Closed) ::close(STDOUT_FILENO);
    ::execv(argv.front(), argv.data());
    ::_exit(127);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  Ended ended{.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1, .out = ReadFile(out), .err = ReadFile(err)};
  fs::remove_all(streams);
  return ended;
}

std::string WorkFolder::Done(const std::vector<std::string>& arguments, const RunOptions& options) const {
  const auto ended = Twqb(arguments, options);
  EXPECT_EQ(ended.status, 0) << ended.err;
  return ended.out;
}

void WorkFolder::Write(std::string_view name, std::string_view text) const { WriteFile(path_ / name, text); }
std::string WorkFolder::Read(std::string_view name) const { return ReadFile(path_ / name); }

std::vector<std::string> WorkFolder::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(path_)) names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

std::string WorkFolder::Scalar(const std::string& statement) const {
  std::istringstream lines(Done({"billing", "run", "-e", statement}));
  std::string line;
  std::getline(lines, line);  // the header
  std::getline(lines, line);
  return line;
}

}  // namespace twqb::cli
