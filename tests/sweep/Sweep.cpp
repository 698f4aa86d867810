#include "Sweep.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <stdexcept>

#include "adapters/faults/Faults.h"
#include "bridge/modTWQBBridge.h"
#include "platform/Text.h"
#include "services/ModuleVariables.h"
#include "tests/support/WatchedFiles.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::sweep {

namespace {

namespace fs = std::filesystem;

constexpr ErrorNumber kNumber = error::kCannotOpen;
constexpr unsigned kLongestRun = 60;  // seconds; a run takes a hundredth of one
constexpr std::string_view kLogBegins = "TWQBLog";
constexpr std::int64_t kUntilCleanRun = 5 * Date::kMinute;

// Questions are answered so that a run goes on; a problem with the session is not retried. Whose expenses no vendor's
// are is billed by that vendor.
constexpr std::string_view kAnswers = "default yes\ndefault cancel\ndefault vendor TAYLOR\ndefault skip\n";

void CopyFiles(const std::string& from, const std::string& to) {
  fs::remove_all(to);
  fs::copy(from, to);
}

void Append(Problems& problems, std::string_view when, Problems more) {
  for (const auto& problem : more) problems.push_back(fmt::format("{}: {}", when, problem));
}

// The keys that a host names: "'{A}','{B}'"; "" for none.
std::string QuotedList(TestHouse& house, std::string_view statement) {
  const auto keys = house.Scalar(fmt::format("SELECT group_concat(Named, ''',''') FROM ({}) AS Rows", statement));
  return keys == "NULL" ? std::string() : fmt::format("'{}'", keys);
}

// Boxes that the clean run does not show.
std::vector<std::string> Told(const TestHouse& house, std::vector<std::string> cleanBoxes) {
  std::vector<std::string> told;
  for (auto& text : house.BoxTexts()) {
    if (const auto shown = std::ranges::find(cleanBoxes, text); shown != cleanBoxes.end()) {
      cleanBoxes.erase(shown);
    } else {
      told.push_back(std::move(text));
    }
  }
  return told;
}

Problems CheckBalance(const TestHouse& house) {
  Problems problems;
  if (Vars().g_CnRefCount != 0) problems.push_back(fmt::format("g_CnRefCount is {}.", Vars().g_CnRefCount));
  if (Vars().g_Cancelled) problems.emplace_back("g_Cancelled is set.");
  if (Vars().g_QBSession) problems.emplace_back("A session is left.");
  if (Vars().msgForm) problems.emplace_back("The progress form is left loaded.");
  if (house.desk.Form()) problems.emplace_back("The progress form is left on the screen.");
  return problems;
}

// Keys that this process makes are none of the dead one's.
void MakeKeysOfTheDead(TestHouse& house) {
  constexpr int kKeysOfTheDead = 100;
  for (int i = 0; i < kKeysOfTheDead; ++i) (void)house.machine.CreateGuid();
}

std::string Signal(int signal) {
  if (signal == SIGALRM) return "The run did not come to an end.";
  return fmt::format("The run crashed: {}.", strsignal(signal));
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) { return out << scenario.name; }

bool RunTransfers(TestHouse& house, const Scenario& scenario) {
  CTWQBBridge bridge;
  bridge.SetConnectString(house.ConnectString());
  bridge.SetTWSettingsPath(house.Path("twqb.ini"));
  bridge.SetUseTWSTable(scenario.settings == SettingsStore::Table);
  return std::ranges::all_of(scenario.transfers, [&](const Transfer& transfer) {
    bridge.SetUsePreferencesTW(transfer.named.empty());
    if (!transfer.named.empty()) bridge.SetPassedID(QuotedList(house, transfer.named));
    return transfer.direction == Direction::Send ? bridge.SendDataToQB(transfer.table)
                                                 : bridge.GetDataFromQB(transfer.table);
  });
}

Sweep::Sweep(const Scenario& scenario) : scenario_(scenario) {
  KeepReadings(root_ / "readings");
  fs::create_directory(House());
  {
    auto options = Options();
    options.now = options.now.PlusHours(-1);
    TestHouse house(std::move(options));
    SetTables(house);
    WriteWholeFile(house.Path("registry.ini"), fmt::format("[TW80]\r\nDatabase={}\r\n", house.Path("billing.db")));
    scenario_.prepare(house, scenario_);
  }
  CopyFiles(House(), Prepared());
  Rehearse();
}

HouseOptions Sweep::Options() const {
  return {.answers = std::string(kAnswers),
          .now = TextToDate("2008-03-05T11:00:00"),
          .findsLostLinks = true,
          .folder = House()};
}

void Sweep::SetTables(TestHouse& house) const {
  house.tables = scenario_.ownTables;
  house.pull = GetTableFromQB;
}

void Sweep::Restore() const { CopyFiles(Prepared(), House()); }

void Sweep::Rehearse() {
  TestHouse house(Options());
  SetTables(house);
  expected_ = {.tables = scenario_.tables, .before = TakeSnapshot(House(), scenario_.tables), .after = {}};
  FaultPlatform* counted = nullptr;
  const Witness witness(house.Seams(), [&] { return counted->CallCount(); });
  FaultPlatform faults(witness.Watched(), {});
  counted = &faults;
  house.Enter(faults.Decorated());
  if (!RunTransfers(house, scenario_)) {
    throw std::runtime_error(fmt::format("The clean run failed: {}", Join(house.BoxTexts(), "\n")));
  }
  trace_ = {.names = {faults.CallNames().begin(), faults.CallNames().end()},
            .deeds = witness.Deeds(),
            .display = scenario_.display};
  boxes_ = house.BoxTexts();
  expected_.after = TakeSnapshot(House(), scenario_.tables);
  house.Enter();  // lets go of the counted seams
}

Problems Sweep::FoundBroken(const Snapshot& now, Leaves leaves) const {
  return scenario_.judge ? scenario_.judge(now, expected_, Moment::Broken) : CheckBroken(now, expected_, leaves);
}

Problems Sweep::FoundInStep(const Snapshot& now, Leaves leaves) const {
  return scenario_.judge ? scenario_.judge(now, expected_, Moment::CleanRunBehind)
                         : CheckInStep(now, expected_, leaves);
}

Leaves Sweep::LeftBy(std::size_t k, FaultTiming timing, Break how) const {
  // What a get has not taken over the next one does.
  const bool sends = std::ranges::any_of(
      scenario_.transfers, [](const Transfer& transfer) { return transfer.direction == Direction::Send; });
  return sends ? WhatIsLeft(trace_, k, timing, how, scenario_.nameInUse) : WhatIsLeftOfAGet(trace_, k, timing, how);
}

Problems Sweep::RaiseAt(std::size_t k, FaultTiming timing) {
  Restore();
  auto end = RunInChild([&] { return RunRaising(k, timing); }, kLongestRun);
  if (end.signal != 0) end.problems.push_back(Signal(end.signal));
  return end.problems;
}

Problems Sweep::RunRaising(std::size_t k, FaultTiming timing) const {
  TestHouse house(Options());
  SetTables(house);
  FaultPlatform faults(house.Seams(), {});
  faults.RaiseAt(k, timing, kNumber);
  house.Enter(faults.Decorated());
  const bool result = RunTransfers(house, scenario_);
  auto problems = CheckAfterRaise(house, result, k, timing);
  house.machine.Advance(kUntilCleanRun);
  Append(problems, "Clean run", RunCleanly(house));
  Append(problems, "Clean run", FoundInStep(TakeSnapshot(House(), scenario_.tables), LeftBy(k, timing, Break::Raise)));
  house.Enter();
  return problems;
}

Problems Sweep::CheckAfterRaise(TestHouse& house, bool result, std::size_t k, FaultTiming timing) const {
  Problems problems;
  const auto leaves = LeftBy(k, timing, Break::Raise);
  const auto now = TakeSnapshot(House(), scenario_.tables);
  const auto why = WhyIgnored(trace_, k, timing);
  const auto told = Told(house, boxes_);
  if (why.empty() && told.empty()) {
    problems.push_back(fmt::format("The user was not told; the result is {}.", result));
  }
  if (told.empty() && !result) problems.emplace_back("The result is False without a word.");
  Append(problems, "Broken run", FoundBroken(now, leaves));
  if (!why.empty()) {
    if (!result) problems.push_back(fmt::format("The result is False, although {}.", why));
    if (!PassesOverSilently(trace_, k)) {
      Append(problems, fmt::format("Although {}", why), FoundInStep(now, leaves));
    }
  }
  if (Vars().g_CnRefCount != 0) {
    problems.push_back(fmt::format("Broken run: g_CnRefCount is {}.", Vars().g_CnRefCount));
  }
  return problems;
}

Problems Sweep::RunCleanly(TestHouse& house) const {
  Problems problems;
  const auto boxes = house.BoxTexts().size();
  if (!RunTransfers(house, scenario_)) {
    auto texts = house.BoxTexts();
    texts.erase(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(boxes));
    problems.push_back(fmt::format("The result is False: {}", Join(texts, "\n")));
  }
  std::ranges::move(CheckBalance(house), std::back_inserter(problems));
  return problems;
}

Problems Sweep::KillAt(std::size_t k, FaultTiming timing) {
  Restore();
  return AfterKill(RunInChild([&] { return RunKilled(k, timing); }, kLongestRun), {LeftBy(k, timing, Break::Kill)},
                   KillMoment::AtACall);
}

std::vector<std::size_t> Sweep::FileCalls() {
  Restore();
  std::vector<std::size_t> calls;
  RunWatched([&](std::size_t k) { calls.push_back(k); });
  return calls;
}

Problems Sweep::KillInFiles(std::size_t n, std::size_t k) {
  Restore();
  auto end = RunInChild(
      [&] {
        std::size_t calls = 0;
        RunWatched([&](std::size_t) {
          if (++calls == n) std::raise(SIGKILL);
        });
        return Problems{};
      },
      kLongestRun);
  // In the middle of the k-th call, which may have taken effect by then or not.
  const auto call = std::clamp<std::size_t>(k, 1, trace_.names.size());
  return AfterKill(std::move(end),
                   {LeftBy(call, FaultTiming::Before, Break::Kill), LeftBy(call, FaultTiming::After, Break::Kill)},
                   KillMoment::WithinACall);
}

void Sweep::RunWatched(const std::function<void(std::size_t k)>& watch) const {
  FaultPlatform* counted = nullptr;
  std::size_t last = 0;
  const WatchedFiles files([&](FileCall call, std::string_view) {
    constexpr std::array kChanges = {FileCall::Write, FileCall::Sync, FileCall::Truncate, FileCall::Delete};
    if (counted != nullptr) last = counted->CallCount();
    if (last > 0 && std::ranges::find(kChanges, call) != kChanges.end()) watch(last);
    return 0;
  });
  TestHouse house(Options());
  SetTables(house);
  FaultPlatform faults(house.Seams(), {});
  counted = &faults;
  house.Enter(faults.Decorated());
  RunTransfers(house, scenario_);
  house.Enter();  // lets go of the counted seams; the house closes its own connection behind them
  counted = nullptr;
}

Problems Sweep::AfterKill(ChildEnd end, const std::vector<Leaves>& possible, KillMoment moment) {
  if (end.signal != SIGKILL) {
    end.problems.push_back(end.signal == 0 ? "The run came to its end unharmed." : Signal(end.signal));
    return end.problems;
  }
  auto after = RunInChild([&] { return CheckAfterKill(possible, moment); }, kLongestRun);
  if (after.signal != 0) after.problems.push_back(Signal(after.signal));
  return after.problems;
}

// The log of what came before is none of theirs.
void Sweep::RestoreWithoutLog() const {
  Restore();
  for (const auto& entry : fs::directory_iterator(House())) {
    if (entry.path().filename().string().starts_with(kLogBegins)) fs::remove(entry.path());
  }
}

Length Sweep::Measure() {
  RestoreWithoutLog();
  // Once for each of the two that are measured.
  return MeasureInChild([&] {
    RestoreWithoutLog();
    TestHouse house(Options());
    SetTables(house);
    house.Enter();
    RunTransfers(house, scenario_);
  });
}

std::optional<Problems> Sweep::KillAnywhere(const KillPlan& plan, LostLinks lostLinks) {
  RestoreWithoutLog();
  const auto optionsOf = [&](std::int64_t later) {
    auto options = Options();
    options.now = options.now.PlusMilliseconds(later);
    options.findsLostLinks = lostLinks == LostLinks::FindAgain;
    return options;
  };
  const bool killed = KillInChild(
      [&] {
        TestHouse house(optionsOf(0));
        SetTables(house);
        house.Enter();
        RunTransfers(house, scenario_);
      },
      plan);
  if (!killed) return std::nullopt;
  auto after = RunInChild(
      [&] {
        Problems problems;
        TestHouse house(optionsOf(kUntilCleanRun));
        SetTables(house);
        MakeKeysOfTheDead(house);
        house.Enter();
        Append(problems, "Clean run", RunCleanly(house));
        house.Enter();
        Append(problems, "Clean run", FoundInStep(TakeSnapshot(House(), scenario_.tables), Leaves::Nothing));
        return problems;
      },
      kLongestRun);
  if (after.signal != 0) after.problems.push_back(Signal(after.signal));
  return after.problems;
}

std::size_t Sweep::FoundAgain() const {
  std::size_t found = 0;
  for (const auto& entry : fs::directory_iterator(House())) {
    if (!entry.path().filename().string().starts_with(kLogBegins)) continue;
    const auto log = ReadWholeFile(entry.path());
    constexpr std::string_view kFound = "Found again: ";
    for (auto at = log.find(kFound); at != std::string::npos; at = log.find(kFound, at + 1)) ++found;
  }
  return found;
}

Problems Sweep::RunKilled(std::size_t k, FaultTiming timing) const {
  TestHouse house(Options());
  SetTables(house);
  FaultPlatform faults(house.Seams(), {});
  faults.RunAt(k, timing, [] { std::raise(SIGKILL); });
  house.Enter(faults.Decorated());
  RunTransfers(house, scenario_);
  return {};
}

Problems Sweep::CheckAfterKill(const std::vector<Leaves>& possible, KillMoment moment) const {
  Problems problems;
  // What the dead process left is looked at in a copy: the first to open the files themselves is the next run.
  CopyFiles(House(), Found());
  auto killed = TakeSnapshot(Found(), scenario_.tables);
  // One that was not begun in earnest stays until the next write, and says nothing.
  if (moment == KillMoment::WithinACall) std::erase_if(killed.damage, TellsOfJournal);
  auto options = Options();
  options.now = options.now.PlusMilliseconds(kUntilCleanRun);
  TestHouse house(std::move(options));
  SetTables(house);
  MakeKeysOfTheDead(house);
  const auto remembered = house.machine.GetPrivateProfileString("GENERAL", "QBDBPath", "", 255, house.Path("twqb.ini"));
  if (!remembered.empty() && remembered != house.Path("company.twq")) {
    problems.push_back(fmt::format("The settings remember the company file {}.", remembered));
  }
  house.Enter();
  {
    // Alone in the file: nothing that the dead process held is in the way.
    CTWQBBridge alone;
    alone.SetConnectString(house.ConnectString());
    alone.SetTWSettingsPath(house.Path("twqb.ini"));
    alone.SetUseTWSTable(scenario_.settings == SettingsStore::Table);
    alone.SetIsQBSingleMode(true);
    if (!alone.ConnectToQB(true)) problems.emplace_back("The company file is still held.");
  }
  Append(problems, "Clean run", RunCleanly(house));
  const auto behind = TakeSnapshot(House(), scenario_.tables);
  std::vector<Problems> found;
  for (const auto leaves : possible) {
    Append(found.emplace_back(), "Killed run", FoundBroken(killed, leaves));
    Append(found.back(), "Clean run", FoundInStep(behind, leaves));
  }
  std::ranges::move(*std::ranges::min_element(found, {}, &Problems::size), std::back_inserter(problems));
  return problems;
}

}  // namespace twqb::sweep
