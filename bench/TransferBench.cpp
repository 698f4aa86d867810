// Each table of master data, time entries, invoices, payments and costs, at a size or two, each transfer against its
// floor in the same run; if told so, ahead of them the time and memory of reading 100,000 customers.
//
// Prints tables for docs/performance.md: seconds, cost per record, ratio to the floor, the cost per record at a larger
// size against the smallest, and what each record asks of the files; if told so, the same work with a rollback journal.
// Exit status 1 when a goal is missed: ratio at most 1.3, growth at most 1.2, durable writes a record at most 2.1 for a
// first send and 1.1 for a first get where a record is one row, lock calls at most 6 for both, peak memory below five
// times the answer.

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "bench/Bases.h"
#include "bench/CommandLine.h"
#include "bench/OwnProcess.h"
#include "bench/Report.h"
#include "bench/Runs.h"
#include "bench/Timing.h"
#include "engine/RecordReader.h"
#include "lists/modClients.h"
#include "platform/Forwarding.h"
#include "services/ModuleVariables.h"
#include "tests/support/Process.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {
namespace {

constexpr double kGoalRatio = 1.3;
constexpr double kGoalGrowth = 1.2;
constexpr double kGoalMemory = 5;
constexpr double kGoalDurableSend = 2.1;
constexpr double kGoalDurableGet = 1.1;
constexpr double kGoalLocks = 6;
constexpr std::string_view kFirstSend = "first send";
constexpr std::string_view kAllChanged = "all changed";
constexpr std::string_view kFirstGet = "first get";
constexpr int kSmallest = 250;
constexpr int kSmall = 1'000;
constexpr int kLarge = 10'000;
constexpr int kLargest = 1'000'000;
constexpr int kReadRecords = 100'000;
constexpr int kTimedRecords = 500;  // of the transfers whose cost is a write per record, and at most half of the base

struct Row {
  std::string_view name;
  int records;  // that the transfer is about; 0 where it finds none, and all that it takes is the run itself
  Measurement measured;
  std::optional<MeasuredRun> rollback;  // at the smallest size, of what writes
  [[nodiscard]] double PerRecord() const { return measured.library / records; }
};

std::vector<std::string> PerRecord(const FileCounts& files, int records) {
  std::vector<std::string> cells;
  for (const long count : {files.durable, files.opens, files.locks}) {
    cells.push_back(fmt::format("{:.2f}", static_cast<double>(count) / records));
  }
  return cells;
}

// A record that is one row on each side becomes durable once on each side, and takes the right to write for it. Few
// records say nothing: a run has some writes of its own.
bool MeetsFileGoals(const BenchTable& table, const Row& row) {
  if (row.records < kTimedRecords || table.lines > 0 || table.twinsAhead.record != nullptr) return true;
  if (row.name != kFirstSend && row.name != kFirstGet) return true;
  const auto& files = row.measured.libraryFiles;
  const double durable = row.name == kFirstSend ? kGoalDurableSend : kGoalDurableGet;
  return static_cast<double>(files.durable) <= durable * row.records &&
         static_cast<double>(files.locks) <= kGoalLocks * row.records;
}

// Measures the transfers of a table at a size, and hands each over as soon as it is known.
enum class RollbackToo : bool { No, Yes };
template <typename Found>
void MeasureTable(const BenchTable& table, int size, RollbackToo rollbackToo, Found found) {
  enum class Selects : bool { Changed, All };
  const int counted = table.counted == Counted::Lines ? table.lines : 1;
  const int all = size / counted;
  const int timed = std::min(kTimedRecords, size / 2) / counted;
  const int old = all - timed;
  const auto add = [&](std::string_view what, int records, const Base& base, Direction direction, Selects selects) {
    fmt::print(stderr, "{}, {}: {} ...\n", table.name, Grouped(size), what);
    const TemporaryFolder folder;
    MakeBase(folder.Path(), table, base);
    const auto name = GetTableName(Direction::Send, table.table);
    Seams(folder.Path())
        .machine.WritePrivateProfileString(
            "QBSEND_", fmt::format("{}{}", name, selects == Selects::All ? "_chkIgnoreLastSync" : "_LastSendAt"),
            selects == Selects::All ? "1" : "3/5/2008 11:00:00 AM", folder / "twqb.ini");
    TimedRun run = {.table = table.table, .direction = direction};
    for (int i = base.linked + 1; table.named != nullptr && direction == Direction::Send && i <= base.rows; ++i) {
      run.named += (run.named.empty() ? "" : ",") + table.named(i);
    }
    Row row{.name = what, .records = records * counted, .measured = Measure(folder.Path(), run)};
    const bool writes = what == kFirstSend || what == kFirstGet || what == kAllChanged;
    if (writes && rollbackToo == RollbackToo::Yes) row.rollback = MeasureRollback(folder.Path(), run);
    found(row);
  };
  const std::string later(kLater);
  if (table.sends != Sends::Nothing) {
    add(kFirstSend, timed, {.rows = all, .records = old, .linked = old, .lastUpdated = later, .stamped = old},
        Direction::Send, Selects::Changed);
    add("unchanged second send", table.sends == Sends::UnlinkedRowsAlone ? 0 : all,
        {.rows = all, .records = all, .linked = all, .lastUpdated = later, .stamped = all}, Direction::Send,
        Selects::All);
  }
  if (table.sends == Sends::Changes) {
    add(kAllChanged, timed, {.rows = all, .records = all, .linked = all, .lastUpdated = later, .stamped = old},
        Direction::Send, Selects::Changed);
  }
  if (FindTable(table.table)->get == nullptr) return;
  add(kFirstGet, all, {.rows = 0, .records = all}, Direction::Get, Selects::All);
  add("second get", all, {.rows = all, .records = all, .linked = all, .lastUpdated = later, .stamped = 0},
      Direction::Get, Selects::All);
}

// The same work with the journal of before.
void PrintRollback(const std::vector<Row>& rows, int size) {
  fmt::print("\nWith a rollback journal:\n\n");
  PrintHead({"transfer", "base", "library, s", "written ahead, of its time", "durable writes a record", "opens",
             "lock calls"});
  for (const auto& row : rows) {
    const auto files = PerRecord(row.rollback->files, row.records);
    PrintLine({std::string(row.name), Grouped(size), fmt::format("{:.3f}", row.rollback->seconds),
               fmt::format("{:.2f}", row.measured.library / row.rollback->seconds), files[0], files[1], files[2]});
  }
}

// True when every goal was met.
bool ReportTable(const BenchTable& table, const std::vector<int>& sizes, RollbackToo rollback) {
  bool met = true;
  std::map<std::string_view, double> smallest;
  fmt::print("\n### {}\n\n", table.name);
  PrintHead({"transfer", "base", "records timed", "library, s", "floor, s", "µs a record", "ratio", "growth",
             "durable writes a record", "of the floor", "opens", "lock calls"});
  std::vector<Row> rolledBack;
  for (const int size : sizes) {
    const auto rollbackToo = size == sizes.front() ? rollback : RollbackToo::No;
    MeasureTable(table, size, rollbackToo, [&](const Row& row) {
      if (row.records == 0) {
        PrintLine({std::string(row.name), Grouped(size), "0", fmt::format("{:.3f}", row.measured.library),
                   fmt::format("{:.3f}", row.measured.floor), "", "", "", "", "", "", ""});
        return;
      }
      if (row.rollback) rolledBack.push_back(row);
      const auto files = PerRecord(row.measured.libraryFiles, row.records);
      const auto [first, isFirst] = smallest.try_emplace(row.name, row.PerRecord());
      const double growth = row.PerRecord() / first->second;
      met = met && row.measured.Ratio() <= kGoalRatio && growth <= kGoalGrowth && MeetsFileGoals(table, row);
      PrintLine({std::string(row.name), Grouped(size), Grouped(row.records),
                 fmt::format("{:.3f}", row.measured.library), fmt::format("{:.3f}", row.measured.floor),
                 Grouped(std::llround(row.PerRecord() * 1e6)), fmt::format("{:.2f}", row.measured.Ratio()),
                 isFirst ? "" : fmt::format("{:.2f}", growth), files[0],
                 PerRecord(row.measured.floorFiles, row.records)[0], files[1], files[2]});
    });
  }
  if (rollback == RollbackToo::Yes) PrintRollback(rolledBack, sizes.front());
  return met;
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

struct Reading {
  double seconds = 0;
  std::size_t records = 0;
  std::size_t answer = 0;  // bytes
  std::size_t used = 0;    // bytes of memory above the start
};

Reading ReadCustomers(const std::string& folder) {
  Seams seams(folder);
  Compose(seams.All());
  Reading reading;
  auto transport = seams.quickbooks.CreateTransport();
  transport->OpenConnection("BENCH", "Bench");
  transport->BeginSession("", OpenMode::DoNotCare);
  QBSessionManager session(std::make_unique<CountingTransport>(std::move(transport), reading.answer), TheMachine());
  Vars().g_NoProgressBar = true;
  Vars().g_QBMajorVer = 3;
  const auto before = PeakMemory();
  RecordList list;
  reading.seconds = Seconds([&] {
    (void)ApplyQBFiltersAndReadRecords(kClientsTable, kClientsTable.reads.front(), list, session,
                                       {.activeOnly = ActiveOnly::False}, Vars());
  });
  reading.used = PeakMemory() - before;
  reading.records = list.Count();
  return reading;
}

// Reads that many customers in one answer. To be called ahead of what makes this process large. True when the goal was
// met.
bool ReportReading(int records) {
  fmt::print(stderr, "reading {} customers ...\n", Grouped(records));
  const TemporaryFolder folder;
  (void)InOwnProcess<int>([&] {
    MakeBase(folder.Path(), BenchTableOf(enClients), {.records = records});
    return 0;
  });
  const auto reading = InOwnProcess<Reading>([&] { return ReadCustomers(folder.Path()); });
  const double ratio = static_cast<double>(reading.used) / static_cast<double>(reading.answer);
  fmt::print(
      "Reading {} customers in one answer: {:.2f} s; answer {}; peak {} above the start, {:.2f} times the answer\n",
      Grouped(static_cast<long long>(reading.records)), reading.seconds, InMegabytes(reading.answer),
      InMegabytes(reading.used), ratio);
  return ratio < kGoalMemory && reading.records == static_cast<std::size_t>(records);
}

struct Choice {
  std::vector<std::string> tables;
  std::vector<int> sizes;
  bool reading = false;
  bool rollback = false;
  bool all = false;
};

// The sizes of a table where none is told: in a run that says all, clients, projects, invoices, payments and lines of
// costs, which are many, show how the cost grows.
std::vector<int> SizesOf(const BenchTable& table, const Choice& choice) {
  if (!choice.sizes.empty()) return choice.sizes;
  if (!choice.all) return {kSmallest, kSmall};
  constexpr std::array kMany = {enClients, enProjects, enInvoices, enPayments};
  const bool isMany = std::ranges::find(kMany, table.table) != kMany.end();
  if (isMany || table.counted == Counted::Lines) return {kSmall, kLarge};
  return {kSmall};
}

Goals Main(const Choice& choice) {
  const bool everyTable = choice.tables.empty() && (!choice.reading || choice.all);
  bool met = true;
  if (choice.reading || choice.all) met = ReportReading(kReadRecords);
  const auto rollback = choice.rollback || choice.all ? RollbackToo::Yes : RollbackToo::No;
  for (const auto& table : kBenchTables) {
    if (!everyTable && std::ranges::find(choice.tables, table.name) == choice.tables.end()) continue;
    met = ReportTable(table, SizesOf(table, choice), rollback) && met;
  }
  return met ? Goals::Met : Goals::Missed;
}

}  // namespace
}  // namespace twqb

int main(int argc, char** argv) {
  using namespace twqb;
  CLI::App app("Measures transfers of each table, in each of its directions, against their floors.");
  Choice choice;
  std::vector<std::string> names;
  for (const auto& table : kBenchTables) names.emplace_back(table.name);
  app.add_option("-t,--table", choice.tables,
                 "a table to measure; may be given more than once. All where it is left out")
      ->allow_extra_args(false)
      ->transform(CLI::IsMember(names, CLI::ignore_case, CLI::ignore_space));
  app.add_option("SIZE", choice.sizes,
                 fmt::format("numbers of records, or of lines of costs; {} and {} where they are left out",
                             Grouped(kSmallest), Grouped(kSmall)))
      ->check(CLI::Range(2, kLargest));
  app.add_flag("--reading", choice.reading,
               fmt::format("measure time and memory of reading {} customers", Grouped(kReadRecords)));
  app.add_flag("--rollback", choice.rollback, "measure the same work with a rollback journal too");
  app.add_flag(
      "--all", choice.all,
      fmt::format("both of these; and where no sizes are told, {} records and, of clients, projects, invoices, "
                  "payments and costs, {}",
                  Grouped(kSmall), Grouped(kLarge)));
  return RunBench(app, argc, argv, [&] { return Main(choice); });
}
