// A firm's year, both ways: everything sent for the first time and once more, and everything got into an empty
// BillingDb and once more, each against its floor in the same run.
//
// Prints tables for docs/performance.md: seconds, ratio to the floor, durable writes and peak memory, where the time
// goes, and how the time of a record grows from a tenth of the year. Exit status 1 when a ratio is above 1.3 or a
// growth above 1.2.

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <array>
#include <string>
#include <vector>

#include "bench/CommandLine.h"
#include "bench/OwnProcess.h"
#include "bench/Report.h"
#include "bench/Runs.h"
#include "bench/WholeRuns.h"
#include "bench/YearBase.h"
#include "tests/support/Process.h"

namespace twqb {
namespace {

constexpr int kInvoices = 200;
constexpr int kInvoicesOfAYear = 1'000;
constexpr int kLeastInvoices = 100;
constexpr int kMostInvoices = 100'000;
constexpr int kTenth = 10;
constexpr TimedRun kSendAll = {.table = enAll, .direction = Direction::Send};
constexpr TimedRun kGetAll = {.table = enAll, .direction = Direction::Get};

// The four runs of a year, each on files of its own.
class YearRuns {
 public:
  explicit YearRuns(const Year& year) {
    (void)InOwnProcess<int>([&] {
      MakeYear(folders_[0].Path(), year);
      CopyBase(folders_[0].Path(), folders_[1].Path());
      TimeLibrary(folders_[1].Path(), kSendAll);
      CheckYear(folders_[1].Path(), year);
      MakeYearToGet(folders_[2].Path(), folders_[1].Path(), year);
      CopyBase(folders_[2].Path(), folders_[3].Path());
      TimeLibrary(folders_[3].Path(), kGetAll);
      CheckYear(folders_[3].Path(), year);
      return 0;
    });
  }

  [[nodiscard]] std::vector<WholeRun> All() const {
    return {{.name = "first send", .base = folders_[0].Path(), .run = kSendAll},
            {.name = "second send", .base = folders_[1].Path(), .run = kSendAll},
            {.name = "first get", .base = folders_[2].Path(), .run = kGetAll},
            {.name = "second get", .base = folders_[3].Path(), .run = kGetAll}};
  }

 private:
  std::array<TemporaryFolder, 4> folders_;
};

Goals Main(const Year& year) {
  fmt::print(stderr, "a year of {} invoices, and a tenth of it: making them, and peak memory ...\n",
             Grouped(year.invoices));
  const Year tenth{.invoices = year.invoices / kTenth};
  const YearRuns whole(year);
  const YearRuns part(tenth);
  const auto runs = whole.All();
  const auto smaller = part.All();
  bool met = PrintWholeRuns(
      fmt::format("a firm's year: {} invoices, {} hours, {} expenses, {} payments", Grouped(year.invoices),
                  Grouped(year.Records(enTimeEntries)), Grouped(year.Expenses()), Grouped(year.Records(enPayments))),
      runs);
  const auto records = [&year](enTables table) { return year.Records(table); };
  const auto ofTenth = [&tenth](enTables table) { return tenth.Records(table); };
  // The second ones look at what the first ones did.
  for (const std::size_t i : {std::size_t{0}, std::size_t{2}}) {
    met = PrintShares(runs[i], records, &smaller[i], ofTenth) && met;
  }
  return met ? Goals::Met : Goals::Missed;
}

}  // namespace
}  // namespace twqb

int main(int argc, char** argv) {
  using namespace twqb;
  CLI::App app("Measures a firm's year, sent and got, against its floor.");
  Year year{.invoices = kInvoices};
  auto* invoices =
      app.add_option("--invoices", year.invoices,
                     "invoices of the year: for each 20 hours, four expenses and a payment; for each four of "
                     "them a vendor's bill of four expenses, for each 20 an estimate in QuickBooks; clients, "
                     "projects and the other lists as long as a firm of that size has them")
          ->capture_default_str()
          ->check(CLI::Range(kLeastInvoices, kMostInvoices));
  app.add_flag_callback(
         "--all", [&year] { year.invoices = kInvoicesOfAYear; },
         fmt::format("the whole year, of {} invoices", Grouped(kInvoicesOfAYear)))
      ->excludes(invoices);
  return RunBench(app, argc, argv, [&] { return Main(year); });
}
