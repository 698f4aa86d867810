#include "bench/WholeRuns.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "bench/OwnProcess.h"
#include "bench/Report.h"
#include "tests/support/Process.h"

namespace twqb {

namespace {

constexpr double kGoalRatio = 1.3;
constexpr double kShort = 0.1;  // seconds; what takes less says more of the machine than of the library

struct Peak {
  std::size_t start = 0;  // bytes
  std::size_t all = 0;
};

Peak PeakOf(const WholeRun& run) {
  const TemporaryFolder folder;
  CopyBase(run.base, folder.Path());
  return InOwnProcess<Peak>([&] {
    const auto start = PeakMemory();
    TimeLibrary(folder.Path(), run.run);
    return Peak{.start = start, .all = PeakMemory()};
  });
}

std::optional<enTables> TableOf(const TableShare& share, Direction direction) {
  for (int number = 0; number < kTableCount; ++number) {
    if (GetTableName(direction, static_cast<enTables>(number)) == share.name) return static_cast<enTables>(number);
  }
  return std::nullopt;
}

std::string ThreeDecimals(double seconds) { return fmt::format("{:.3f}", seconds); }

}  // namespace

bool PrintWholeRuns(std::string_view title, const std::vector<WholeRun>& runs) {
  std::vector<Peak> peaks;
  for (const auto& run : runs) peaks.push_back(PeakOf(run));  // ahead of what makes this process large
  bool met = true;
  fmt::print("\n### {}\n\n", title);
  PrintHead({"all tables", "library, s", "floor, s", "ratio", "durable writes", "of the floor", "peak memory",
             "above the start"});
  for (std::size_t i = 0; i < runs.size(); ++i) {
    fmt::print(stderr, "{} ...\n", runs[i].name);
    const auto measured = Measure(runs[i].base, runs[i].run);
    met = met && (measured.library < kShort || measured.Ratio() <= kGoalRatio);
    PrintLine({std::string(runs[i].name), ThreeDecimals(measured.library), ThreeDecimals(measured.floor),
               fmt::format("{:.2f}", measured.Ratio()), Grouped(measured.libraryFiles.durable),
               Grouped(measured.floorFiles.durable), InMegabytes(peaks[i].all),
               InMegabytes(peaks[i].all - peaks[i].start)});
  }
  return met;
}

bool PrintShares(const WholeRun& run, const RecordsOf& records, const WholeRun* smaller,
                 const RecordsOf& smallerRecords) {
  const auto shares = SharesOf(run.base, run.run);
  const auto before = smaller == nullptr ? std::vector<TableShare>() : SharesOf(smaller->base, smaller->run);
  TableShare all{.name = "all"};
  for (const auto& share : shares) {
    all.whole += share.whole;
    all.database += share.database;
    all.quickBooks += share.quickBooks;
    all.settings += share.settings;
  }
  fmt::print("\n{}, by table:\n\n", run.name);
  PrintHead({"table", "records", "s", "of all", "BillingDb, s", "QuickBooks, s", "settings, s", "library, s",
             "µs a record", "library's", "growth"});
  constexpr double kGoalGrowth = 1.2;
  bool met = true;
  int sum = 0;
  const auto print = [&](const TableShare& share, int count, const std::string& growth) {
    const auto each = [count](double seconds) {
      return count == 0 ? std::string() : fmt::format("{:.1f}", seconds / count * 1e6);
    };
    PrintLine({share.name, Grouped(count), ThreeDecimals(share.whole),
               fmt::format("{:.0f} %", 100 * share.whole / all.whole), ThreeDecimals(share.database),
               ThreeDecimals(share.quickBooks), ThreeDecimals(share.settings), ThreeDecimals(share.Library()),
               each(share.whole), each(share.Library()), growth});
  };
  for (const auto& share : shares) {
    const auto table = TableOf(share, run.run.direction);
    const int count = table ? records(*table) : 0;
    if (count == 0) continue;
    sum += count;
    std::string growth;
    // What few records take is the run's own.
    constexpr int kEnough = 100;
    if (const auto found = std::ranges::find(before, share.name, &TableShare::name);
        found != before.end() && smallerRecords(*table) >= kEnough) {
      const double grown = share.whole / count / (found->whole / smallerRecords(*table));
      growth = fmt::format("{:.2f}", grown);
      if (grown > kGoalGrowth) met = false;
    }
    print(share, count, growth);
  }
  print(all, sum, "");
  return met;
}

}  // namespace twqb
