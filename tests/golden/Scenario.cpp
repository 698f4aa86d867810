#include "tests/golden/Scenario.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "tests/support/Process.h"

namespace twqb {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words;
  std::istringstream stream(text);
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

std::string Replace(std::string text, const std::string& what, const std::string& with) {
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
    text.replace(at, what.size(), with);
  }
  return text;
}

class ScenarioRun {
 public:
  std::string Run(const std::string& folder) {
    const auto steps = Lines(ReadWholeFile(folder + "/scenario"));
    if (steps.empty()) throw std::runtime_error("no scenario in " + folder);
    for (const auto& step : steps) Step(step);
    return record_;
  }

 private:
  void Step(const std::string& line) {
    if (line.empty() || line.starts_with('#')) return;
    const auto blank = line.find(' ');
    const auto word = line.substr(0, blank);
    const auto rest = blank == std::string::npos ? std::string() : line.substr(blank + 1);
    if (word == "program") {
      if (rest != "two-tables") throw std::runtime_error("unknown program: " + line);
      program_ = TWQB_TWO_TABLES_PROGRAM;
      return;
    }
    if (word == "init") {
      Init(Words(rest));
      return;
    }
    if (!initialised_) Init({});
    if (word == "first") {
      firstRun_ = true;
    } else if (word == "clock") {
      const auto words = Words(rest);
      clock_ = words.at(0);
      daylight_ = words.size() > 1;
    } else if (word == "sql") {
      Require(Twqb({"billing", "run", "-e", rest}), line);
    } else if (word == "qb") {
      const auto answer = Require(RunRequests(rest), line);
      if (answer.find("statusSeverity=\"Error\"") != std::string::npos) throw std::runtime_error(line + "\n" + answer);
    } else if (word == "answer") {
      answers_ += InFolder(rest) + "\n";
    } else if (word == "fault") {
      faults_ += InFolder(rest) + "\n";
    } else if (word == "company") {
      const auto words = Words(rest);
      Require(Twqb({"company", "set", words.at(0), words.at(1)}), line);
    } else if (word == "setting") {
      Require(Twqb(SetCommand(rest)), line);
    } else if (word == "registry") {
      // The same kind of file, so the same command writes it.
      auto command = SetCommand(rest);
      command.insert(command.end(), {"--settings", "registry.ini"});
      Require(Twqb(command), line);
    } else if (word == "copy") {
      const auto files = Words(rest);
      fs::copy_file(folder_ / files.at(0), folder_ / files.at(1));
    } else if (word == "move") {
      const auto files = Words(rest);
      fs::rename(folder_ / files.at(0), folder_ / files.at(1));
    } else if (word == "remove") {
      if (!fs::remove(folder_ / rest)) throw std::runtime_error("nothing to remove: " + line);
    } else if (word == "stored") {
      Stored(rest);
    } else if (word == "send" || word == "get") {
      Transfer(line);
    } else if (word == "show") {
      Json rows = Json::array();
      for (const auto& row : Lines(Require(Twqb({"billing", "run", "--json", "-e", rest}), line))) {
        rows.push_back(Json::parse(row));
      }
      Record({{"kind", "show"}, {"statement", rest}, {"rows", rows}});
    } else if (word == "ask") {
      Record({{"kind", "ask"}, {"answer", Require(RunRequests(rest), line)}});
    } else {
      throw std::runtime_error("unknown step: " + line);
    }
  }

  void Init(const std::vector<std::string>& words) {
    initialised_ = true;
    std::vector<std::string> arguments = {"init"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    Require(Twqb(arguments), "init");
  }

  void Transfer(const std::string& line) {
    if (!firstRun_) {
      Require(Twqb({"settings", "set", "GENERAL", "FIRST_TIME", "False"}), line);
      firstRun_ = true;
    }
    auto arguments = Words(InFolder(line));
    const auto transcript = folder_ / "transcript.jsonl";
    WriteWholeFile(folder_ / "answers", answers_);
    arguments.insert(arguments.end(), {"--transcript", transcript, "--answers", folder_ / "answers"});
    if (!faults_.empty()) {
      WriteWholeFile(folder_ / "faults", faults_);
      arguments.insert(arguments.end(), {"--faults", folder_ / "faults"});
    }
    answers_.clear();
    faults_.clear();
    const auto result = Twqb(arguments);
    Record({{"kind", "step"}, {"line", line}, {"clock", clock_}, {"exit", result.exitStatus}});
    for (const auto& event : Lines(ReadWholeFile(transcript))) record_ += OutOfFolder(event) + "\n";
    WriteWholeFile(transcript, "");
  }

  void Stored(const std::string& entry) {
    auto command = Words(entry);
    command.insert(command.begin(), {"settings", "get"});
    const auto result = Twqb(command);
    if (result.exitStatus > 1) throw std::runtime_error("stored " + entry + "\n" + result.errors);
    Json value;
    if (result.exitStatus == 0) value = result.output.substr(0, result.output.size() - 1);
    Record({{"kind", "stored"}, {"setting", entry}, {"value", value}});
  }

  // "SECTION KEY VALUE", the value with the blanks that it begins and ends with.
  [[nodiscard]] std::vector<std::string> SetCommand(const std::string& entry) const {
    const auto key = entry.find(' ') + 1;
    const auto value = entry.find(' ', key) + 1;
    if (key == 0 || value == 0) throw std::runtime_error("SECTION KEY VALUE is needed: " + entry);
    return {"settings", "set", entry.substr(0, key - 1), entry.substr(key, value - key - 1),
            InFolder(entry.substr(value))};
  }

  [[nodiscard]] std::string InFolder(const std::string& text) const {
    return Replace(Replace(text, "<folder>", folder_.Path()), "<FOLDER>", UpperPath());
  }
  [[nodiscard]] std::string OutOfFolder(const std::string& text) const {
    return Replace(Replace(text, folder_.Path(), "<folder>"), UpperPath(), "<FOLDER>");
  }
  [[nodiscard]] std::string UpperPath() const {
    auto upper = folder_.Path();
    std::ranges::transform(upper, upper.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return upper;
  }

  ProcessResult RunRequests(const std::string& requests) {
    WriteWholeFile(folder_ / "requests.xml", "<?xml version=\"1.0\" encoding=\"utf-8\"?><?qbxml version=\"" + tag_ +
                                                 "\"?><QBXML><QBXMLMsgsRq onError=\"continueOnError\">" + requests +
                                                 "</QBXMLMsgsRq></QBXML>");
    return Twqb({"company", "run", folder_ / "requests.xml"});
  }

  ProcessResult Twqb(const std::vector<std::string>& command) {
    std::vector<std::string> arguments = {program_, "-C",  folder_.Path(), "--clock", clock_,
                                          "--bias",     "300", "--seed",       "1"};
    if (daylight_) arguments.emplace_back("--daylight");
    for (std::size_t i = 0; i + 1 < command.size(); ++i) {
      if (command[i] == "--country" && command[i + 1] != "US" && command[i + 1] != "AU") tag_ = command[i + 1] + "3.0";
    }
    arguments.insert(arguments.end(), command.begin(), command.end());
    return RunProcess(arguments);
  }

  static std::string Require(const ProcessResult& result, const std::string& line) {
    if (result.exitStatus != 0) throw std::runtime_error(line + "\n" + result.output + result.errors);
    return result.output;
  }

  void Record(const Json& event) { record_ += OutOfFolder(event.dump()) + "\n"; }

  TemporaryFolder folder_;
  std::string program_ = TWQB_PROGRAM;
  std::string clock_ = "2008-03-05T10:00:00";
  bool daylight_ = false;
  std::string tag_ = "3.0";
  bool initialised_ = false;
  bool firstRun_ = false;
  std::string answers_;
  std::string faults_;
  std::string record_;
};

}  // namespace

std::string RunScenario(const std::string& folder) { return ScenarioRun().Run(folder); }

}  // namespace twqb
