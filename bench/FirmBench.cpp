// All lists in a row for a whole firm: the first send, and two second ones of an unchanged firm, each against its floor
// in the same run. What a firm books in a year is YearBench's.
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
#include "bench/WholeRuns.h"
#include "tests/support/Process.h"

namespace twqb {
namespace {

constexpr int kClients = 500;
constexpr int kAllClients = 2'000;
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

Goals Main(const Firm& firm) {
  // The first is sent as it is. What stands in the second folder has been sent; the third is the same, and told to look
  // at every row again.
  const std::array<TemporaryFolder, 3> folders;
  const std::vector<WholeRun> sends = {{.name = "first send", .base = folders[0].Path(), .run = kSendAll},
                                       {.name = "second send", .base = folders[1].Path(), .run = kSendAll},
                                       {.name = "second send of all rows", .base = folders[2].Path(), .run = kSendAll}};
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
  const bool met = PrintWholeRuns(fmt::format("the lists of a firm, {} rows", Grouped(firm.AllRows())), sends);
  const auto records = [&firm](enTables table) { return firm.Rows(table); };
  // Nothing smaller, and so no growth.
  (void)PrintShares(sends[0], records);
  (void)PrintShares(sends[2], records);
  return met ? Goals::Met : Goals::Missed;
}

}  // namespace
}  // namespace twqb

int main(int argc, char** argv) {
  using namespace twqb;
  CLI::App app("Measures `send all` for the lists of a whole firm against its floor.");
  Firm firm;
  auto* clients =
      app.add_option("--clients", firm.clients,
                     "clients of the firm: for each three projects and phases, and for each hundred of them ten "
                     "employees, five vendors, 25 activities, 25 expense codes and three accounts")
          ->capture_default_str()
          ->check(CLI::Range(kLeastClients, kMostClients));
  app.add_flag_callback(
         "--all", [&firm] { firm.clients = kAllClients; }, fmt::format("a firm of {} clients", Grouped(kAllClients)))
      ->excludes(clients);
  return RunBench(app, argc, argv, [&] { return Main(firm); });
}
