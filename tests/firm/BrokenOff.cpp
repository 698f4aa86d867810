// Runs that are killed, and what the next one makes of them.
#include <fmt/core.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

#include "adapters/faults/Faults.h"
#include "samples/firm/Dice.h"
#include "tests/firm/Properties.h"
#include "tests/support/Bridge.h"
#include "tests/sweep/Child.h"

namespace twqb {

namespace {

struct Kill {
  std::size_t call = 0;
  FaultTiming timing = FaultTiming::Before;
};

HouseOptions IfLinksAreFound(const std::string& folder) { return {.findsLostLinks = true, .folder = folder}; }

// A send of all, in a process of its own.
void SendKilled(const std::string& folder, const Kill& kill) {
  constexpr unsigned kSeconds = 60;
  const auto end = sweep::RunInChild(
      [&] {
        FirmHouse house(IfLinksAreFound(folder));
        house.machine.Advance(Date::kHour);
        FaultPlatform faults(house.Seams(), {});
        faults.RunAt(kill.call, kill.timing, [] { ::kill(getpid(), SIGKILL); });
        house.Enter(faults.Decorated());
        Bridge(house).SendDataToQB(enAll);
        return sweep::Problems{fmt::format("The run came to its end behind {} calls: {}", faults.CallCount(),
                                           Join(house.BoxTexts(), "\n"))};
      },
      kSeconds);
  EXPECT_EQ(end.signal, SIGKILL) << (end.problems.empty() ? "" : end.problems.front());
}

// Nothing happens behind a call that raises, so it is ahead of the next one.
Kill Behind(std::size_t call, std::size_t calls) {
  return call < calls ? Kill{.call = call + 1} : Kill{.call = call, .timing = FaultTiming::After};
}

// Half of them at any call, half with QuickBooks' answer in the hand: there a link gets lost.
Kill KillOf(firm::Dice& dice, const std::vector<std::string>& calls) {
  std::size_t at = dice.Place(calls.size());
  if (dice.OnceIn(2)) return dice.OnceIn(2) ? Kill{.call = at + 1} : Behind(at + 1, calls.size());
  while (calls[at] != "Transport.ProcessDocument") at = (at + 1) % calls.size();
  return Behind(at + 1, calls.size());
}

// No run has been stamped as done, so that all rows are looked at once more, and what was stamped as it went is later
// than its record. A change says some things otherwise than an addition, and is not what this is about.
void LeaveLinkedRecordsAlone(const FirmHouse& house) {
  std::ofstream settings(house.Path("twqb.ini"), std::ios::app);
  settings << "[QBSEND_]\r\n";
  for (const auto* table : {"Employees", "Vendors", "Clients", "Projects", "Activities", "Expense Codes", "Accounts"}) {
    settings << table << "_OptNever=True\r\n";
  }
}

}  // namespace

void ExpectThatBrokenRunsEndAlike(const firm::FirmPlan& plan, const std::string& prepared,
                                  const std::vector<std::string>& calls, const Books& all) {
  constexpr std::uint64_t kPurpose = 98;
  firm::Dice dice(plan.seed, kPurpose);
  const auto kill = KillOf(dice, calls);
  SCOPED_TRACE(fmt::format("killed {} call {} of {}", kill.timing == FaultTiming::Before ? "ahead of" : "behind",
                           kill.call, calls.size()));
  const TemporaryFolder folder;
  CopyFiles(prepared, folder.Path());
  SendKilled(folder.Path(), kill);
  FirmHouse house(IfLinksAreFound(folder.Path()));
  house.machine.Advance(Date::kHour);
  LeaveLinkedRecordsAlone(house);
  house.Send();
  const auto books = ReadBooks(house);
  SCOPED_TRACE(Join(house.BoxTexts(), "\n") + Join(house.Log(), "\n"));
  EXPECT_TRUE(books.records == all.records) << DifferenceOf(all.records, books.records);
  EXPECT_TRUE(books.rows == all.rows) << DifferenceOf(all.rows, books.rows);
}

}  // namespace twqb
