// All tables in a row for a whole firm: the first send, and two second ones of an unchanged firm, each against its
// floor in the same run.
//
// Prints tables for docs/performance.md: seconds, ratio to the floor, durable writes and peak memory of each send, and
// where its time goes, by table and seam. Exit status 1 when a ratio is above 1.3.

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "bench/Bases.h"
#include "bench/CommandLine.h"
#include "bench/OwnProcess.h"
#include "bench/Report.h"
#include "bench/Runs.h"
#include "tests/support/Process.h"

namespace twqb {
namespace {

constexpr double kGoalRatio = 1.3;
constexpr int kClients = 2'000;
constexpr int kLeastClients = 100;
constexpr int kMostClients = 100'000;
constexpr TimedRun kSendAll = {.table = enAll, .direction = Direction::Send};

// How many rows the firm has of each table, which all go by the number of its clients.
struct Firm {
  int clients = kClients;

  [[nodiscard]] int Rows(enTables table) const {
    switch (table) {
      case enEmployees:
        return clients / 10;
      case enVendors:
        return clients / 20;
      case enClients:
        return clients;
      case enProjects:
        return clients * 3;
      case enActivities:
      case enExpenseCodes:
        return clients / 4;
      case enAccounts:
        return clients / 33;
      default:
        return 0;
    }
  }
  [[nodiscard]] int AllRows() const {
    int rows = 0;
    for (const auto& table : kBenchTables) rows += Rows(table.table);
    return rows;
  }
};

// A firm that was never sent; QuickBooks has the accounts of its items and nothing else.
void MakeFirm(const std::string& folder, const Firm& firm) {
  MakeBase(folder, {ItemAccounts().text()}, [&](ado::Connection& cn) {
    const auto date = fmt::format("'{}'", kEarlier);
    for (const auto& table : kBenchTables) {
      for (int i = 1; i <= firm.Rows(table.table); ++i) {
        if (table.table == enProjects) {
          const auto client = fmt::format("C{:06}", ProjectIndex(i) % firm.clients + 1);
          const auto manager = fmt::format("E{:06}", ProjectIndex(i) % firm.Rows(enEmployees) + 1);
          cn.Execute(ProjectRowOf(i, client, manager, "NULL", date), nullptr);
        } else {
          cn.Execute(table.row(i, "NULL", date), nullptr);
        }
      }
    }
  });
}

// Raises where a row has not been sent.
void CheckAllLinked(const std::string& folder) {
  Seams seams(folder);
  const auto cn = OpenBilling(seams);
  for (const auto* table : {"Employee", "Client", "Project", "Activity", "Expense", "AccountList"}) {
    const auto unsent = cn->Execute(fmt::format("SELECT COUNT(*) FROM {} WHERE QBLinkID IS NULL", table), nullptr);
    if (ToText(unsent->FieldAt(0)) != "0") throw std::runtime_error(fmt::format("rows of {} were not sent", table));
  }
}

struct Peak {
  std::size_t start = 0;  // bytes
  std::size_t all = 0;
};

Peak PeakOf(const std::string& base) {
  const TemporaryFolder folder;
  CopyBase(base, folder.Path());
  return InOwnProcess<Peak>([&] {
    const auto start = PeakMemory();
    TimeLibrary(folder.Path(), kSendAll);
    return Peak{.start = start, .all = PeakMemory()};
  });
}

struct Send {
  std::string_view name;
  std::string base;
  Peak peak;
};

void PrintShares(const Send& send, const Firm& firm) {
  const auto shares = SharesOf(send.base, kSendAll);
  TableShare all{.name = "all"};
  for (const auto& share : shares) {
    all.whole += share.whole;
    all.database += share.database;
    all.quickBooks += share.quickBooks;
    all.settings += share.settings;
  }
  fmt::print("\n### {}, by table\n\n", send.name);
  PrintHead({"table", "rows", "s", "of all", "BillingDb, s", "QuickBooks, s", "settings, s", "library, s",
             "library, µs a row"});
  const auto print = [&](const TableShare& share, int rows) {
    const double library = share.Library();
    PrintLine({share.name, Grouped(rows), fmt::format("{:.3f}", share.whole),
               fmt::format("{:.0f} %", 100 * share.whole / all.whole), fmt::format("{:.3f}", share.database),
               fmt::format("{:.3f}", share.quickBooks), fmt::format("{:.3f}", share.settings),
               fmt::format("{:.3f}", library), rows == 0 ? "" : fmt::format("{:.1f}", library / rows * 1e6)});
  };
  for (const auto& share : shares) {
    const auto table = std::ranges::find(
        kBenchTables, share.name, [](const BenchTable& made) { return GetTableName(Direction::Send, made.table); });
    if (table != kBenchTables.end()) print(share, firm.Rows(table->table));
  }
  print(all, firm.AllRows());
}

Goals Main(const Firm& firm) {
  // The first is sent as it is. What stands in the second folder has been sent; the third is the same, and told to look
  // at every row again.
  const std::array<TemporaryFolder, 3> folders;
  std::array<Send, 3> sends = {Send{.name = "first send", .base = folders[0].Path()},
                               Send{.name = "second send", .base = folders[1].Path()},
                               Send{.name = "second send of all rows", .base = folders[2].Path()}};
  fmt::print(stderr, "a firm of {} rows: making it, and peak memory ...\n", Grouped(firm.AllRows()));
  (void)InOwnProcess<int>([&] {
    MakeFirm(sends[0].base, firm);
    CopyBase(sends[0].base, sends[1].base);
    TimeLibrary(sends[1].base, kSendAll);
    CheckAllLinked(sends[1].base);
    CopyBase(sends[1].base, sends[2].base);
    Seams again(sends[2].base);
    for (const auto& table : kBenchTables) {
      again.machine.WritePrivateProfileString(
          "QBSEND_", fmt::format("{}_chkIgnoreLastSync", GetTableName(Direction::Send, table.table)), "1",
          again.settings);
    }
    return 0;
  });
  for (auto& send : sends) send.peak = PeakOf(send.base);

  bool met = true;
  fmt::print("### all tables, {} rows\n\n", Grouped(firm.AllRows()));
  PrintHead({"send all", "library, s", "floor, s", "ratio", "durable writes", "of the floor", "peak memory",
             "above the start"});
  for (const auto& send : sends) {
    fmt::print(stderr, "{} ...\n", send.name);
    const auto measured = Measure(send.base, kSendAll);
    met = met && measured.Ratio() <= kGoalRatio;
    PrintLine({std::string(send.name), fmt::format("{:.3f}", measured.library), fmt::format("{:.3f}", measured.floor),
               fmt::format("{:.2f}", measured.Ratio()), Grouped(measured.libraryFiles.durable),
               Grouped(measured.floorFiles.durable), InMegabytes(send.peak.all),
               InMegabytes(send.peak.all - send.peak.start)});
  }
  PrintShares(sends[0], firm);
  PrintShares(sends[2], firm);
  return met ? Goals::Met : Goals::Missed;
}

}  // namespace
}  // namespace twqb

int main(int argc, char** argv) {
  using namespace twqb;
  CLI::App app("Measures `send all` for a whole firm against its floor.");
  Firm firm;
  app.add_option("--clients", firm.clients,
                 "clients of the firm: for each three projects and phases, and for each hundred of them ten employees, "
                 "five vendors, 25 activities, 25 expense codes and three accounts")
      ->capture_default_str()
      ->check(CLI::Range(kLeastClients, kMostClients));
  return RunBench(app, argc, argv, [&] { return Main(firm); });
}
