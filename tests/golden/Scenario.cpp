#include "tests/golden/Scenario.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <span>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/system/SystemMachine.h"
#include "events/SubscriptionSets.h"
#include "platform/desk.h"
#include "tests/golden/DescribedSettings.h"
#include "tests/golden/Expectation.h"
#include "tests/golden/HostTransfer.h"
#include "tests/golden/LibraryHost.h"
#include "tests/support/PlainVendors.h"
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

// Separated by blanks; a word in double quotes may hold some, or be empty.
std::vector<std::string> Words(const std::string& text) {
  std::vector<std::string> words;
  std::istringstream stream(text);
  while (stream >> std::ws && stream.good()) {
    std::string word;
    if (stream.peek() == '"') {
      stream.get();
      std::getline(stream, word, '"');
    } else {
      stream >> word;
    }
    words.push_back(word);
  }
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
  explicit ScenarioRun(const ScenarioOptions& options) : options_(options) {}

  std::string Run(const std::string& folder) {
    shared_ = fs::path(folder).parent_path();
    StepsOf(folder + "/scenario");
    while (host_) EndObject();
    return record_;
  }

 private:
  struct StepRow {
    std::string_view word;
    void (ScenarioRun::*run)(const std::string& rest, const std::string& line);
  };
  static const StepRow kSteps[];

  void StepsOf(const std::string& file) {
    const auto steps = Lines(ReadWholeFile(file));
    if (steps.empty()) throw std::runtime_error("no steps in " + file);
    for (const auto& step : steps) Step(step);
  }
  void Step(const std::string& line) {
    if (line.empty() || line.starts_with('#')) return;
    const auto blank = line.find(' ');
    const auto word = line.substr(0, blank);
    const auto rest = blank == std::string::npos ? std::string() : line.substr(blank + 1);
    const auto* const row = FindStep(word);
    if (row == nullptr) throw std::runtime_error("unknown step: " + line);
    if (!initialised_ && word != "init" && word != "program" && word != "keep" && word != "take") Init("", line);
    (this->*row->run)(rest, line);
  }

  static const StepRow* FindStep(const std::string& word);

  void Take(const std::string& rest, const std::string& /*line*/) { StepsOf(shared_ / rest); }

  // --- What the run finds.

  void Program(const std::string& rest, const std::string& line) {
    if (rest != "two-tables") throw std::runtime_error("unknown program: " + line);
    program_ = TWQB_TWO_TABLES_PROGRAM;
    tables_ = TwoTables();
  }
  void Init(const std::string& rest, const std::string& line) {
    initialised_ = true;
    auto arguments = Words(rest);
    arguments.insert(arguments.begin(), "init");
    Require(Twqb(arguments), line);
  }
  void Keep(const std::string& rest, const std::string& line) {
    for (const auto& word : Words(rest)) {
      const auto subject = SubjectNamed(word);
      if (!subject) throw std::runtime_error("unknown subject: " + line);
      kept_.insert(*subject);
    }
  }
  void First(const std::string& /*rest*/, const std::string& /*line*/) { firstRun_ = true; }
  void Clock(const std::string& rest, const std::string& /*line*/) {
    const auto words = Words(rest);
    clock_ = words.at(0);
    daylight_ = words.size() > 1;
  }
  void Sql(const std::string& rest, const std::string& line) { Require(Twqb({"billing", "run", "-e", rest}), line); }
  void QuickBooks(const std::string& rest, const std::string& line) {
    const auto answer = Require(RunRequests(rest), line);
    if (answer.find("statusSeverity=\"Error\"") != std::string::npos) throw std::runtime_error(line + "\n" + answer);
  }
  void Subscribed(const std::string& /*rest*/, const std::string& line) {
    Require(RunSet("QBXMLSubscriptionMsgsRq",
                   "<UIEventSubscriptionAddRq><UIEventSubscriptionAdd><SubscriberID>" + std::string(kSubscriberId) +
                       "</SubscriberID><COMCallbackInfo><AppName>Events</AppName><ProgID>TWQBCallback90.CMain</ProgID>"
                       "</COMCallbackInfo><DeliveryPolicy>DeliverAlways</DeliveryPolicy>"
                       "<CompanyFileEventSubscription><CompanyFileEventOperation>Open</CompanyFileEventOperation>"
                       "</CompanyFileEventSubscription></UIEventSubscriptionAdd></UIEventSubscriptionAddRq>"),
            line);
  }
  void Answer(const std::string& rest, const std::string& /*line*/) { answers_ += InFolder(rest) + "\n"; }
  void Fault(const std::string& rest, const std::string& /*line*/) { faults_ += InFolder(rest) + "\n"; }
  void Nobody(const std::string& /*rest*/, const std::string& /*line*/) { unanswered_ = true; }
  void Company(const std::string& rest, const std::string& line) {
    const auto words = Words(rest);
    Require(Twqb({"company", "set", words.at(0), words.at(1)}), line);
  }
  void Setting(const std::string& rest, const std::string& line) { Require(Twqb(SetCommand(rest)), line); }
  void Registry(const std::string& rest, const std::string& line) {
    // The same kind of file, so the same command writes it.
    auto command = SetCommand(rest);
    command.insert(command.end(), {"--settings", "registry.ini"});
    Require(Twqb(command), line);
  }
  void Copy(const std::string& rest, const std::string& /*line*/) {
    const auto files = Words(rest);
    fs::copy_file(folder_ / files.at(0), folder_ / files.at(1));
  }
  void Move(const std::string& rest, const std::string& /*line*/) {
    const auto files = Words(rest);
    fs::rename(folder_ / files.at(0), folder_ / files.at(1));
  }
  void Remove(const std::string& rest, const std::string& line) {
    if (!fs::remove(folder_ / rest)) throw std::runtime_error("nothing to remove: " + line);
  }
  void Folder(const std::string& rest, const std::string& /*line*/) { fs::create_directory(folder_ / rest); }
  void Hold(const std::string& rest, const std::string& /*line*/) {
    const auto mode = rest == "single-user" ? OpenMode::SingleUser : OpenMode::DoNotCare;
    if (options_.hold) {
      holder_ = options_.hold({.folder = folder_.Path(), .now = TextToDate(clock_), .zone = Zone()}, mode);
      return;
    }
    const std::shared_ptr<Transport> session =
        company::CompanyTransportFactory(folder_ / "company.twq", holdersMachine_).CreateTransport();
    session->OpenConnection("HOLDER", "Another program");
    session->BeginSession("", mode);
    holder_ = session;
  }
  void LetGo(const std::string& /*rest*/, const std::string& line) {
    if (!holder_) throw std::runtime_error("nothing is held: " + line);
    holder_.reset();
  }
  void Before(const std::string& rest, const std::string& /*line*/) {
    const auto blank = rest.find(' ');
    beforeAnswers_.emplace(std::stoi(rest.substr(0, blank)), rest.substr(blank + 1));
  }

  // --- What is run.

  void AnswerFirstRun(const std::string& line) {
    if (firstRun_) return;
    Require(Twqb({"settings", "set", "GENERAL", "FIRST_TIME", "False"}), line);
    firstRun_ = true;
  }
  void Recovery(const std::string& /*rest*/, const std::string& /*line*/) { lostLinks_ = LostLinks::FindAgain; }
  void Object(const std::string& /*rest*/, const std::string& line) {
    Record({{"kind", "step"}, {"line", line}, {"clock", clock_}});
    if (!host_) {
      AnswerFirstRun(line);
      host_ = MakeHost(OptionsOfHost());
    }
    host_->BeginObject();
    TakeHostsRecord();
  }
  void Call(const std::string& rest, const std::string& line) {
    if (!host_) throw std::runtime_error("no object to call: " + line);
    const auto words = Words(InFolder(rest));
    try {
      host_->Call({.words = words});
    } catch (const DeskGaveUp& unanswered) {
      throw std::runtime_error(line + "\n" + unanswered.question());
    }
    // The routines of the settings themselves are called with any key.
    RecordRun(host_->TakeRecord(), words.at(0).starts_with("gf_") ? KeysOf::TheStep : KeysOf::TheLibrary);
  }
  void Release(const std::string& /*rest*/, const std::string& line) {
    if (!host_) throw std::runtime_error("no object to release: " + line);
    EndObject();
  }
  void EndObject() {
    host_->EndObject();
    TakeHostsRecord();
    if (!host_->HasObjects()) host_.reset();
  }
  void BeforeAnswer(int n) {
    TakeHostsRecord();
    const auto [first, last] = beforeAnswers_.equal_range(n);
    for (auto step = first; step != last; ++step) Step(step->second);
  }
  HostOptions OptionsOfHost() {
    return {.folder = folder_.Path(),
            .now = TextToDate(clock_),
            .zone = Zone(),
            .answers = std::exchange(answers_, {}),
            .faults = std::exchange(faults_, {}),
            .tables = tables_,
            .lostLinks = lostLinks_,
            .beforeAnswer = [this](int n) { BeforeAnswer(n); }};
  }
  std::unique_ptr<ScenarioHost> MakeHost(const HostOptions& options) const {
    return options_.makeHost ? options_.makeHost(options) : std::make_unique<LibraryHost>(options);
  }
  // A host of its own does what the command line would.
  void TransferByHost(const std::string& line) {
    const auto transfer = HostTransferOf(Words(InFolder(line)));
    auto options = OptionsOfHost();
    options.beforeAnswer = {};
    if (!transfer.billing.empty()) options.connect = transfer.billing;
    if (!transfer.company.empty()) options.company = folder_ / transfer.company;
    Record({{"kind", "step"}, {"line", line}, {"clock", clock_}});
    const auto host = MakeHost(options);
    host->BeginObject();
    for (const auto& setting : transfer.settings) host->Set(setting);
    try {
      host->Call(transfer.call);
    } catch (const DeskGaveUp& unanswered) {
      throw std::runtime_error(line + "\n" + unanswered.question());
    }
    host->EndObject();
    RecordRun(host->TakeRecord());
  }
  void TakeHostsRecord() { RecordRun(host_->TakeRecord()); }

  void Transfer(const std::string& /*rest*/, const std::string& line) {
    AnswerFirstRun(line);
    if (options_.makeHost) return TransferByHost(line);
    auto arguments = Words(InFolder(line));
    const auto transcript = folder_ / "transcript.jsonl";
    arguments.insert(arguments.end(), {"--transcript", transcript});
    if (lostLinks_ == LostLinks::Leave) arguments.emplace_back("--no-recovery");
    if (!std::exchange(unanswered_, false)) {
      WriteWholeFile(folder_ / "answers", answers_);
      arguments.insert(arguments.end(), {"--answers", folder_ / "answers"});
    }
    if (!faults_.empty()) {
      WriteWholeFile(folder_ / "faults", faults_);
      arguments.insert(arguments.end(), {"--faults", folder_ / "faults"});
    }
    answers_.clear();
    faults_.clear();
    const auto result = Twqb(arguments);
    // A False is an end to record; a question without an answer, and what can't be run at all, are faults of the steps.
    constexpr int kFailed = 1;
    if (result.exitStatus < 0 || result.exitStatus > kFailed) throw std::runtime_error(line + "\n" + result.errors);
    screen_ = result.errors;
    Record({{"kind", "step"}, {"line", line}, {"clock", clock_}, {"exit", result.exitStatus}});
    RecordRun(ReadWholeFile(transcript));
    WriteWholeFile(transcript, "");
  }

  // --- What is recorded of what the run left.

  void Show(const std::string& rest, const std::string& line) {
    Json rows = Json::array();
    for (const auto& row : Lines(Require(Twqb({"billing", "run", "--json", "-e", rest}), line))) {
      rows.push_back(Json::parse(row));
    }
    Record({{"kind", "show"}, {"statement", rest}, {"rows", rows}});
  }
  void Ask(const std::string& rest, const std::string& line) {
    Record({{"kind", "ask"}, {"answer", Require(RunRequests(rest), line)}});
  }
  void Screen(const std::string& /*rest*/, const std::string& /*line*/) {
    if (!options_.makeHost) Record({{"kind", "screen"}, {"lines", Lines(screen_)}});
  }
  void Files(const std::string& rest, const std::string& /*line*/) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.Path())) {
      const auto name = entry.path().filename().string();
      if (name.starts_with(rest)) names.push_back(name);
    }
    std::ranges::sort(names);
    Record({{"kind", "files"}, {"beginning", rest}, {"names", names}});
  }
  void Stored(const std::string& entry, const std::string& /*line*/) {
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
    return {"settings",
            "set",
            "--force",
            entry.substr(0, key - 1),
            entry.substr(key, value - key - 1),
            InFolder(entry.substr(value))};
  }

  [[nodiscard]] std::string InFolder(const std::string& text) const {
    return Replace(Replace(text, "<folder>", folder_.Path()), "<FOLDER>", UpperPath());
  }
  [[nodiscard]] std::string OutOfFolder(const std::string& text) const {
    auto shown = Replace(Replace(text, folder_.Path(), "<folder>"), UpperPath(), "<FOLDER>");
    // Identifiers of sets are made of the workstation and the folder.
    constexpr std::string_view kAttribute = "MessageSetID=\\\"";
    constexpr std::size_t kOwner = 18;
    for (auto at = shown.find(kAttribute); at != std::string::npos; at = shown.find(kAttribute, at + 1)) {
      const auto begin = at + kAttribute.size();
      if (shown.compare(begin, 2, "TW") == 0) shown.replace(begin, kOwner, "<owner>");
    }
    return shown;
  }
  [[nodiscard]] std::string UpperPath() const {
    auto upper = folder_.Path();
    std::ranges::transform(upper, upper.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return upper;
  }

  ProcessResult RunRequests(const std::string& requests) {
    return RunSet("QBXMLMsgsRq", requests, " onError=\"continueOnError\"");
  }
  ProcessResult RunSet(const std::string& set, const std::string& requests, const std::string& attribute = {}) {
    WriteWholeFile(folder_ / "requests.xml", "<?xml version=\"1.0\" encoding=\"utf-8\"?><?qbxml version=\"" + tag_ +
                                                 "\"?><QBXML><" + set + attribute + ">" + requests + "</" + set +
                                                 "></QBXML>");
    return Twqb({"company", "run", folder_ / "requests.xml"});
  }

  ProcessResult Twqb(const std::vector<std::string>& command) {
    std::vector<std::string> arguments = {
        program_, "-C", folder_.Path(), "--clock", clock_, "--bias", std::to_string(kBias), "--seed", "1"};
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
  // Who chose the keys of settings that were read.
  enum class KeysOf { TheLibrary, TheStep };
  // Of what a run recorded of itself.
  void RecordRun(const std::string& events, KeysOf keys = KeysOf::TheLibrary) {
    for (const auto& event : Lines(events)) {
      const auto subject = SubjectOf(event);
      const auto undescribed = UndescribedSetting(event);
      if (undescribed && keys == KeysOf::TheLibrary) {
        throw std::runtime_error("a setting that the list of settings does not describe: " + *undescribed);
      }
      if (!subject || kept_.contains(*subject)) record_ += OutOfFolder(event) + "\n";
    }
  }

  [[nodiscard]] TimeZoneInformation Zone() const {
    return {.bias = kBias,
            .daylightBias = kDaylightBias,
            .state = daylight_ ? TimeZoneState::Daylight : TimeZoneState::Standard};
  }

  static constexpr int kBias = 300;  // minutes
  static constexpr int kDaylightBias = -60;

  ScenarioOptions options_;
  fs::path shared_;  // where scenarios find what they take
  TemporaryFolder folder_;
  std::string program_ = TWQB_PROGRAM;
  std::span<const Table* const> tables_;  // those of the program that twqb does not have
  std::string clock_ = "2008-03-05T10:00:00";
  bool daylight_ = false;
  std::string tag_ = "3.0";
  bool initialised_ = false;
  bool firstRun_ = false;
  std::string answers_;
  std::string faults_;
  bool unanswered_ = false;
  std::string screen_;  // of the last transfer
  std::set<Subject> kept_;
  LostLinks lostLinks_ = LostLinks::Leave;
  std::string record_;
  SystemMachine holdersMachine_{{}};
  std::shared_ptr<void> holder_;
  std::multimap<int, std::string> beforeAnswers_;
  std::unique_ptr<ScenarioHost> host_;  // ends first
};

const ScenarioRun::StepRow ScenarioRun::kSteps[] = {
    {"init", &ScenarioRun::Init},
    {"keep", &ScenarioRun::Keep},
    {"first", &ScenarioRun::First},
    {"recovery", &ScenarioRun::Recovery},
    {"clock", &ScenarioRun::Clock},
    {"sql", &ScenarioRun::Sql},
    {"qb", &ScenarioRun::QuickBooks},
    {"answer", &ScenarioRun::Answer},
    {"fault", &ScenarioRun::Fault},
    {"company", &ScenarioRun::Company},
    {"setting", &ScenarioRun::Setting},
    {"registry", &ScenarioRun::Registry},
    {"copy", &ScenarioRun::Copy},
    {"move", &ScenarioRun::Move},
    {"remove", &ScenarioRun::Remove},
    {"folder", &ScenarioRun::Folder},
    {"hold", &ScenarioRun::Hold},
    {"let", &ScenarioRun::LetGo},
    {"before", &ScenarioRun::Before},
    {"send", &ScenarioRun::Transfer},
    {"get", &ScenarioRun::Transfer},
    {"object", &ScenarioRun::Object},
    {"call", &ScenarioRun::Call},
    {"release", &ScenarioRun::Release},
    {"stored", &ScenarioRun::Stored},
    {"files", &ScenarioRun::Files},
    {"show", &ScenarioRun::Show},
    {"ask", &ScenarioRun::Ask},
    {"screen", &ScenarioRun::Screen},
    {"nobody", &ScenarioRun::Nobody},
    {"program", &ScenarioRun::Program},
    {"take", &ScenarioRun::Take},
    {"subscribed", &ScenarioRun::Subscribed},
    // Lookups and deletions run as transfers do.
    {"list", &ScenarioRun::Transfer},
    {"accounts", &ScenarioRun::Transfer},
    {"is-job", &ScenarioRun::Transfer},
    {"events", &ScenarioRun::Transfer},
    {"delete-billing", &ScenarioRun::Transfer},
    {"delete-quickbooks", &ScenarioRun::Transfer},
};

const ScenarioRun::StepRow* ScenarioRun::FindStep(const std::string& word) {
  const auto* const row = std::ranges::find(kSteps, word, &StepRow::word);
  return row == std::end(kSteps) ? nullptr : row;
}

}  // namespace

std::string RunScenario(const std::string& folder, const ScenarioOptions& options) {
  return ScenarioRun(options).Run(folder);
}

}  // namespace twqb
