#include "tests/golden/ComHost.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "platform/Text.h"
#include "platform/desk.h"
#include "tests/support/Process.h"

namespace twqb {

namespace {

struct Closer {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using Stream = std::unique_ptr<std::FILE, Closer>;
using Pipe = std::array<int, 2>;

constexpr std::string_view kEndedWell = "status 0";

Pipe MakePipe() {
  Pipe ends = {};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  return ends;
}

// The variables by which the other program's seams are told what they stand on.
std::vector<std::pair<std::string, std::string>> EnvironmentOf(const HostOptions& options, const std::string& notes) {
  WriteWholeFile(notes + "/answers", options.answers);
  WriteWholeFile(notes + "/faults", options.faults);
  const auto clock = IsoDate(options.now) + " " + std::to_string(options.zone.bias) +
                     (options.zone.state == TimeZoneState::Daylight ? " daylight" : "");
  return {{"TWQB_DOUBLE_COMPANY", options.company},
          {"TWQB_DOUBLE_CLOCK", clock},
          {"TWQB_DOUBLE_DRIVE", "Z:"},
          {"TWQB_GOLDEN_FOLDER", options.folder},
          {"TWQB_GOLDEN_NOTES", notes},
          {"TWQB_GOLDEN_TABLES", options.tables.empty() ? "" : "two"},
          {"TWQB_GOLDEN_LOST_LINKS", options.lostLinks == LostLinks::FindAgain ? "find" : ""}};
}

}  // namespace

struct ComHost::Parts {
  Parts(const HostOptions& given, const std::vector<std::string>& command) : options(given) {
    std::signal(SIGPIPE, SIG_IGN);  // an order to a host that has died is told as the answer that does not come
    // A host under wine was once seen to end with status 1 as soon as it had begun; why is not known. Ahead of its
    // first line nothing of the library has been tried.
    if (Start(command)) return;
    std::printf("The host of the other side ended ahead of its first line, with %s; it is started once more.\n",
                End().c_str());
    if (!Start(command)) throw std::runtime_error("the host of the other side does not start: " + End());
  }
  ~Parts() {
    if (child < 0) return;
    orders.reset();
    // To its very end: it may have something to say still, and may fail while it lets go of all.
    while (std::fgetc(answers.get()) != EOF) {
    }
    if (const auto end = End(); end != kEndedWell) {
      ADD_FAILURE() << "the host of the other side has ended with " << end << ", behind: " << order;
    }
  }
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;

  void Tell(const std::string& line) {
    order = line;
    std::fprintf(orders.get(), "%s\n", line.c_str());
    std::fflush(orders.get());
  }
  [[nodiscard]] std::string Hear() {
    auto line = ReadLine();
    if (!line) throw std::runtime_error("the host of the other side has ended (" + End() + ") behind: " + order);
    return std::move(*line);
  }
  // It ends when there are no more orders; how it did.
  std::string End() {
    orders.reset();
    int status = 0;
    if (child < 0 || waitpid(std::exchange(child, -1), &status, 0) < 0) return "unknown";
    return WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                               : "status " + std::to_string(WEXITSTATUS(status));
  }

  HostOptions options;
  TemporaryFolder notes;
  pid_t child = -1;
  Stream orders;
  Stream answers;
  std::string order;  // the last one
  int objects = 0;
  std::size_t taken = 0;  // of the record

 private:
  // Whether it has told that its own code runs.
  [[nodiscard]] bool Start(const std::vector<std::string>& command) {
    const auto environment = EnvironmentOf(options, notes.Path());
    std::vector<char*> argv;
    for (const auto& word : command) argv.push_back(const_cast<char*>(word.c_str()));
    argv.push_back(nullptr);
    const auto in = MakePipe();
    const auto out = MakePipe();
    child = fork();
    if (child == 0) {
      // Of paths without the letter of a drive the folder tells it.
      if (chdir(options.folder.c_str()) != 0) _exit(1);
      for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
      dup2(in[0], STDIN_FILENO);
      dup2(out[1], STDOUT_FILENO);
      execvp(argv[0], argv.data());
      _exit(1);
    }
    close(in[0]);
    close(out[1]);
    orders.reset(fdopen(in[1], "w"));
    answers.reset(fdopen(out[0], "r"));
    return ReadLine() == "ready";
  }
  // Nothing where it has ended.
  [[nodiscard]] std::optional<std::string> ReadLine() {
    std::string line;
    for (int c = std::fgetc(answers.get()); c != '\n'; c = std::fgetc(answers.get())) {
      if (c == EOF) return std::nullopt;
      if (c != '\r') line += static_cast<char>(c);
    }
    return line;
  }
};

ComHost::ComHost(const HostOptions& options, const std::vector<std::string>& command)
    : parts_(std::make_unique<Parts>(options, command)) {}
ComHost::~ComHost() = default;

void ComHost::Order(const HostWords& words) {
  parts_->Tell(Join(words, "\t"));
  for (;;) {
    const auto answer = Split(parts_->Hear(), '\t');
    if (answer.at(0) == "done") return;
    if (answer[0] == "question") {
      if (parts_->options.beforeAnswer) parts_->options.beforeAnswer(std::stoi(answer.at(1)));
      parts_->Tell("go");
    } else if (answer[0] == "gave-up") {
      throw DeskGaveUp(answer.at(1));
    } else {
      throw std::runtime_error("the host of the other side: " + Join(answer, " "));
    }
  }
}

void ComHost::BeginObject() {
  const bool isFirst = parts_->objects++ == 0;
  Order({"object"});
  Set({"SetUsePreferencesTW", "True"});
  if (!isFirst) return;  // the rest belongs to the process
  Set({"SetConnectString", parts_->options.connect});
  Set({"SetTWSettingsPath", parts_->options.folder + "/twqb.ini"});
}

void ComHost::EndObject() {
  --parts_->objects;
  Order({"release"});
}

bool ComHost::HasObjects() const { return parts_->objects > 0; }

void ComHost::Call(const HostCall& call) {
  for (const auto& words : call.first) {
    HostWords order = {"first"};
    order.insert(order.end(), words.begin(), words.end());
    Order(order);
  }
  HostWords order = {"call", call.recordedAs.empty() ? call.words.at(0) : call.recordedAs};
  order.insert(order.end(), call.words.begin(), call.words.end());
  Order(order);
}

void ComHost::Set(const HostWords& words) {
  HostWords order = {"set"};
  order.insert(order.end(), words.begin(), words.end());
  Order(order);
}

void ComHost::Hold(OpenMode mode) { Order({"hold", std::to_string(static_cast<int>(mode))}); }

std::string ComHost::TakeRecord() {
  const auto record = ReadWholeFile(parts_->notes / "record");
  const auto rest = record.substr(parts_->taken);
  parts_->taken = record.size();
  // A path that the other system has filled up, in a text of JSON.
  const auto& folder = parts_->options.folder;
  return ReplaceAll(rest, "Z:" + ReplaceAll(folder + "/", "/", R"(\\)"), folder + "/");
}

std::string ComHost::WhyNot(const std::string& steps) {
  // Routines that no operation shows alone, and what the command line alone has.
  static constexpr std::array kInside = {"call SendTableToQB",
                                         "call GetTableFromQB",
                                         "call TransferCustomerOrJobFromQB",
                                         "call IsCustomer ",
                                         "call gf_",
                                         "call GenerateGUID",
                                         "call GetQBLinkIDOf",
                                         "call LoadActivityCodes"};
  std::istringstream lines(steps);
  for (std::string line; std::getline(lines, line);) {
    for (const auto* step : kInside) {
      if (line.starts_with(step)) return "it calls a routine inside: " + line;
    }
    if (line.starts_with("nobody there")) return "the command line alone has that: " + line;
  }
  return {};
}

}  // namespace twqb
