#include "Program.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "platform/Text.h"
#include "tests/support/TerminalSession.h"

namespace twqb::cli {

namespace fs = std::filesystem;

namespace {

constexpr int kNoAnswer = 3;

std::vector<std::string> Command(const std::vector<std::string>& arguments) {
  std::vector<std::string> words = {TWQB_PROGRAM};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return words;
}

}  // namespace

Ended WorkFolder::Twqb(const std::vector<std::string>& arguments, const RunOptions& options) const {
  auto result =
      RunProcess(Command(arguments), {.folder = folder_.Path(), .input = options.input, .output = options.out});
  if (result.exitStatus == kNoAnswer && options.unanswered == Unanswered::Failure) ADD_FAILURE() << result.errors;
  return {.status = result.exitStatus, .out = std::move(result.output), .err = std::move(result.errors)};
}

Ended WorkFolder::Shell(const std::string& line) const {
  auto result = RunProcess({"/bin/sh", "-c", line, TWQB_PROGRAM}, {.folder = folder_.Path()});
  return {.status = result.exitStatus, .out = std::move(result.output), .err = std::move(result.errors)};
}

std::string WorkFolder::OnTerminal(const std::vector<std::string>& arguments, const TerminalKind& kind) const {
  auto words = Command(arguments);
  TerminalSession session(
      [&] {
        if (::chdir(folder_.Path().c_str()) != 0) return 127;
        for (const auto* name : {"COLUMNS", "NO_COLOR"}) ::unsetenv(name);
        ::setenv("TERM", "xterm", 1);
        for (const auto& entry : kind.environment) {
          const auto sign = entry.find('=');
          ::setenv(entry.substr(0, sign).c_str(), entry.substr(sign + 1).c_str(), 1);
        }
        std::vector<char*> pointers;
        for (auto& word : words) pointers.push_back(word.data());
        pointers.push_back(nullptr);
        ::execv(pointers.front(), pointers.data());
        return 127;
      },
      kind.columns);
  EXPECT_EQ(session.ExitStatus(), 0) << session.All();
  return ReplaceAll(session.All(), kCrLf, "\n");
}

std::unique_ptr<RunningProcess> WorkFolder::Start(const std::vector<std::string>& arguments) const {
  return std::make_unique<RunningProcess>(Command(arguments), ProcessOptions{.folder = folder_.Path()});
}

std::string WorkFolder::Done(const std::vector<std::string>& arguments, const RunOptions& options) const {
  const auto ended = Twqb(arguments, options);
  EXPECT_EQ(ended.status, 0) << ended.err;
  return ended.out;
}

void WorkFolder::Write(std::string_view name, std::string_view text) const {
  WriteWholeFile(folder_ / std::string(name), std::string(text));
}

std::string WorkFolder::Read(std::string_view name) const {
  if (!fs::exists(Path() / name)) throw std::runtime_error("no file " + std::string(name));
  return ReadWholeFile(folder_ / std::string(name));
}

std::vector<std::string> WorkFolder::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(Path())) names.push_back(entry.path().filename().string());
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
