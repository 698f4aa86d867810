// Links that are killed on their way: what the next run of them makes of it is what one run would have made, with all
// that goes with a link, which nobody looks for once the link is there.

#include <fmt/core.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <set>
#include <string>

#include "adapters/faults/Faults.h"
#include "platform/Text.h"
#include "samples/firm/Dice.h"
#include "tests/firm/MadeLinks.h"
#include "tests/sweep/Child.h"

namespace twqb {
namespace {

class KilledLinks : public AnyFirm {};

// The links and dates of all rows.
std::set<std::string> RowsOfAll(LinkingHouse& house) {
  std::set<std::string> rows;
  for (const auto& [table, key] : kLinkedRows) {
    for (const auto& row :
         house.RowsOf(fmt::format("SELECT {} AS RowKey, QBLinkID, LastUpdated FROM {}", key, table))) {
      rows.insert(fmt::format("{} {}: {} of {}", table, row.at("RowKey").value_or(""),
                              row.at("QBLinkID").value_or("none"), row.at("LastUpdated").value_or("no date")));
    }
  }
  return rows;
}

// A statement that writes, of those that a run makes by its connections.
bool Writes(const std::string& call) { return call == "Connection.Execute"; }

TEST_P(KilledLinks, Are_as_if_they_had_not_been_once_all_are_made) {
  ForEachFirm([](const firm::FirmPlan& plan) {
    const TemporaryFolder prepared;
    std::set<std::string> before;
    {
      LinkingHouse house(plan, {.folder = prepared.Path()}, FirmHouse::Books::BillingAlone);
      house.AddAccounts();
      house.Send();
      for (const auto& [row, link] : house.LinksOf()) before.insert(link);
      house.Wipe();
    }
    const auto confirms = [&](const LikelyPair& pair) { return before.contains(pair.identifier); };
    const auto kept = Newer::QuickBooks;
    const TemporaryFolder whole;
    CopyFiles(prepared.Path(), whole.Path());
    LinkingHouse unbroken({.folder = whole.Path()});
    const FaultPlatform counted(unbroken.Seams(), {});
    static_cast<void>(unbroken.LinkThrough(counted.Decorated(), confirms, kept));
    const std::vector<std::string> calls(counted.CallNames().begin(), counted.CallNames().end());

    constexpr std::uint64_t kPurpose = 97;
    firm::Dice dice(plan.seed, kPurpose);
    std::size_t at = dice.Place(calls.size());
    while (!Writes(calls[at])) at = (at + 1) % calls.size();
    SCOPED_TRACE(fmt::format("killed behind call {} of {}", at + 1, calls.size()));
    const TemporaryFolder folder;
    CopyFiles(prepared.Path(), folder.Path());
    constexpr unsigned kSeconds = 60;
    const auto end = sweep::RunInChild(
        [&] {
          LinkingHouse house({.folder = folder.Path()});
          FaultPlatform faults(house.Seams(), {});
          faults.RunAt(at + 1, FaultTiming::After, [] { ::kill(getpid(), SIGKILL); });
          static_cast<void>(house.LinkThrough(faults.Decorated(), confirms, kept));
          return sweep::Problems{"The run came to its end."};
        },
        kSeconds);
    EXPECT_EQ(end.signal, SIGKILL) << (end.problems.empty() ? "" : end.problems.front());
    LinkingHouse house({.folder = folder.Path()});
    static_cast<void>(house.Link(confirms, kept));
    const auto rows = RowsOfAll(house);
    const auto expected = RowsOfAll(unbroken);
    for (const auto& row : expected) EXPECT_TRUE(rows.contains(row)) << row;
    EXPECT_EQ(rows.size(), expected.size());
  });
}

INSTANTIATE_TEST_SUITE_P(Firms, KilledLinks, testing::Range(0U, kPartsOfFirms));

}  // namespace
}  // namespace twqb
