// Each table at 1,000 and at 10,000 records, each transfer against its floor in the same run.
//
// Prints a table: seconds, cost per record, ratio to the floor, and the cost per record at the larger size against the
// smaller. Then the time and memory of reading 100,000 customers. Exit status 1 when a goal is missed: ratio at most 2,
// growth at most 1.2, peak memory below five times the answer.

#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "bench/Bases.h"
#include "bench/Floor.h"
#include "bench/Timing.h"
#include "engine/RecordReader.h"
#include "platform/Forwarding.h"
#include "services/ModuleVariables.h"
#include "tests/support/Process.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {
namespace {

constexpr double kGoalRatio = 2;
constexpr double kGoalGrowth = 1.2;
constexpr double kGoalMemory = 5;
constexpr int kReadRecords = 100'000;
constexpr int kTimedRecords = 500;  // of the transfers whose cost is a write per record
constexpr int kRepetitions = 3;     // the median counts

enum class Way { Send, Get };

struct Measurement {
  double library = 0;  // seconds
  double floor = 0;
};

void Prepare(CTWQBBridge& bridge, Seams& seams) {
  bridge.SetConnectString(seams.connectString);
  bridge.SetTWSettingsPath(seams.settings);
  bridge.SetUsePreferencesTW(true);
  if (!bridge.ConnectToQB(true)) throw std::runtime_error("no session");
}

void Transfer(CTWQBBridge& bridge, enTables table, Way way) {
  if (!(way == Way::Send ? bridge.SendDataToQB(table) : bridge.GetDataFromQB(table))) {
    throw std::runtime_error("the transfer failed");
  }
}

class Case {
 public:
  Case(const BenchTable& table, const Base& base, std::string settings, Way way)
      : table_(table), settings_(std::move(settings)), way_(way) {
    MakeBase(base_.Path(), table, base);
  }

  Measurement Run() const {
    std::vector<double> library;
    std::vector<double> floor;
    for (int i = 0; i < kRepetitions; ++i) {
      library.push_back(TimeLibrary());
      floor.push_back(TimeFloor());
    }
    return {.library = Median(library), .floor = Median(floor)};
  }

 private:
  void CopyTo(const std::string& folder) const {
    for (const auto* name : {"/billing.db", "/company.twq"})
      std::filesystem::copy_file(base_.Path() + name, folder + name);
    WriteWholeFile(folder + "/twqb.ini", "[GENERAL]\r\nFIRST_TIME=False\r\n" + settings_);
  }

  double TimeLibrary() const {
    const TemporaryFolder folder;
    CopyTo(folder.Path());
    Seams seams(folder.Path());
    Compose(seams.All());
    double seconds = 0;
    {
      CTWQBBridge bridge;
      Prepare(bridge, seams);
      seconds = Seconds([&] { Transfer(bridge, table_.table, way_); });
    }
    Compose({});
    return seconds;
  }

  double TimeFloor() const {
    const TemporaryFolder recorded;
    const TemporaryFolder folder;
    CopyTo(recorded.Path());
    CopyTo(folder.Path());
    Seams recordedSeams(recorded.Path());
    FloorRecorder recorder(recordedSeams.All());
    Compose(recorder.Decorated());
    std::size_t begin = 0;
    std::size_t end = 0;
    {
      CTWQBBridge bridge;
      Prepare(bridge, recordedSeams);
      begin = recorder.Calls().size();
      Transfer(bridge, table_.table, way_);
      end = recorder.Calls().size();
    }
    Compose({});

    Seams seams(folder.Path());
    FloorState state;
    state.transport = seams.quickbooks.CreateTransport();
    state.transport->OpenConnection("FLOOR", "Floor");
    state.transport->BeginSession("", OpenMode::DoNotCare);
    for (std::size_t i = 0; i < recorder.Connections(); ++i) {
      state.connections.push_back(seams.database.CreateConnection());
      state.connections.back()->SetConnectionString(seams.connectString);
    }
    const auto first = recorder.Calls().begin();
    const std::vector<FloorCall> calls(first + static_cast<std::ptrdiff_t>(begin),
                                       first + static_cast<std::ptrdiff_t>(end));
    return Seconds([&] { ReplayFloor(calls, state); });
  }

  const BenchTable& table_;
  TemporaryFolder base_;
  std::string settings_;
  Way way_;
};

struct Row {
  std::string name;
  int records = 0;  // timed
  Measurement measured;
  [[nodiscard]] double PerRecord() const { return measured.library / records; }
  [[nodiscard]] double Ratio() const { return measured.library / measured.floor; }
};

// The present of the base's twins, and times after it.
constexpr std::string_view kLater = "2008-03-05 16:30:00";
constexpr std::string_view kAllSelected = "_chkIgnoreLastSync=1";
constexpr std::string_view kSentBefore = "_LastSendAt=3/5/2008 11:00:00 AM";

std::vector<Row> MeasureAll(const BenchTable& table, int size) {
  const int old = size - kTimedRecords;
  std::vector<Row> rows;
  const auto add = [&](std::string_view what, int records, const Base& base, std::string_view setting, Way way) {
    auto name = fmt::format("{}, {}", table.name, what);
    fmt::print(stderr, "{} records: {} ...\n", size, name);
    const auto settings =
        setting.empty() ? std::string() : fmt::format("[QBSEND_]\r\n{}{}\r\n", table.sendName, setting);
    rows.push_back({.name = std::move(name), .records = records, .measured = Case(table, base, settings, way).Run()});
  };
  const std::string later(kLater);
  add("first send", kTimedRecords, {.rows = size, .records = old, .linked = old, .lastUpdated = later, .stamped = old},
      kSentBefore, Way::Send);
  add("unchanged second send", size,
      {.rows = size, .records = size, .linked = size, .lastUpdated = later, .stamped = size}, kAllSelected, Way::Send);
  add("all changed", kTimedRecords,
      {.rows = size, .records = size, .linked = size, .lastUpdated = later, .stamped = old}, kSentBefore, Way::Send);
  add("first get", size, {.rows = 0, .records = size}, "", Way::Get);
  add("second get", size, {.rows = size, .records = size, .linked = size, .lastUpdated = later, .stamped = 0}, "",
      Way::Get);
  return rows;
}

// The most memory that this process has held, in bytes.
std::size_t PeakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

// Counts the characters of the answers that pass.
class CountingTransport : public ForwardingTransport {
 public:
  CountingTransport(std::unique_ptr<Transport> inner, std::size_t& longest)
      : ForwardingTransport(std::move(inner)), longest_(longest) {}
  std::string ProcessDocument(std::string_view document) override {
    auto answer = ForwardingTransport::ProcessDocument(document);
    longest_ = std::max(longest_, answer.size());
    return answer;
  }

 private:
  std::size_t& longest_;
};

// Reads that many customers in one answer, in a process of its own, and tells what that took.
int MeasureReading(int records) {
  const TemporaryFolder folder;
  MakeBase(folder.Path(), kBenchTables[0], {.records = records});
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    Seams seams(folder.Path());
    Compose(seams.All());
    std::size_t answer = 0;
    auto transport = seams.quickbooks.CreateTransport();
    transport->OpenConnection("BENCH", "Bench");
    transport->BeginSession("", OpenMode::DoNotCare);
    QBSessionManager session(std::make_unique<CountingTransport>(std::move(transport), answer));
    Vars().g_NoProgressBar = true;
    Vars().g_QBMajorVer = 3;
    const auto before = PeakMemory();
    RecordList list;
    const double seconds = Seconds(
        [&] { (void)ApplyQBFiltersAndReadRecords(enClients, list, session, {.activeOnly = ActiveOnly::False}); });
    const auto used = PeakMemory() - before;
    const double ratio = static_cast<double>(used) / static_cast<double>(answer);
    constexpr double kMega = 1024.0 * 1024.0;
    fmt::print(
        "reading {} customers: {:.2f} s, answer {:.1f} MB, peak {:.1f} MB above the start, {:.2f} times the answer\n",
        list.Count(), seconds, static_cast<double>(answer) / kMega, static_cast<double>(used) / kMega, ratio);
    std::fflush(stdout);
    _exit(ratio < kGoalMemory && list.Count() == static_cast<std::size_t>(records) ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 2;
}

int Main(const std::vector<int>& sizes) {
  std::map<std::string, double> smallest;
  bool missed = false;
  fmt::print("{:<34}{:>9}{:>8}{:>12}{:>12}{:>14}{:>8}{:>9}\n", "transfer", "base", "timed", "library s", "floor s",
             "us / record", "ratio", "growth");
  const auto measure = [&](const BenchTable& table, int size) {
    for (const auto& row : MeasureAll(table, size)) {
      const auto [first, isFirst] = smallest.try_emplace(row.name, row.PerRecord());
      const double growth = row.PerRecord() / first->second;
      missed = missed || row.Ratio() > kGoalRatio || growth > kGoalGrowth;
      fmt::print("{:<34}{:>9}{:>8}{:>12.3f}{:>12.3f}{:>14.1f}{:>8.2f}{:>9}\n", row.name, size, row.records,
                 row.measured.library, row.measured.floor, row.PerRecord() * 1e6, row.Ratio(),
                 isFirst ? std::string("-") : fmt::format("{:.2f}", growth));
      std::fflush(stdout);
    }
  };
  for (const auto& table : kBenchTables) {
    for (const int size : sizes) measure(table, size);
  }
  fmt::print("\n");
  return MeasureReading(kReadRecords) != 0 || missed ? 1 : 0;
}

}  // namespace
}  // namespace twqb

int main(int argc, char** argv) {
  std::vector<int> sizes;
  for (int i = 1; i < argc; ++i) sizes.push_back(std::atoi(argv[i]));
  if (sizes.empty()) sizes = {1000, 10000};
  try {
    return twqb::Main(sizes);
  } catch (const std::exception& failure) {
    fmt::print(stderr, "{}\n", failure.what());
    return 2;
  }
}
