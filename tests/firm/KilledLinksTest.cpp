// Links that are killed on their way: what the next run of them makes of it is what one run would have made, with all
// that goes with a link, which nobody looks for once the link is there.

#include <fmt/core.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/faults/Faults.h"
#include "platform/Forwarding.h"
#include "platform/Text.h"
#include "samples/firm/Dice.h"
#include "tests/firm/MadeLinks.h"
#include "tests/sweep/Child.h"

namespace twqb {
namespace {

// A statement, and the call of the run that it was made by, from 1 on.
struct MadeStatement {
  std::string text;
  std::size_t call = 0;
};

// Writes down what is executed by the connections that it makes.
class Statements final : public ado::Provider {
 public:
  // `faults` counts the calls. Both must outlive the object.
  explicit Statements(ado::Provider& inner) : inner_(inner) {}
  void CountBy(const FaultPlatform& faults) { faults_ = &faults; }
  [[nodiscard]] const std::vector<MadeStatement>& Made() const { return made_; }

  std::unique_ptr<ado::Connection> CreateConnection() override {
    return std::make_unique<Connection>(inner_.CreateConnection(), *this);
  }

 private:
  class Connection final : public ado::ForwardingConnection {
   public:
    Connection(std::unique_ptr<ado::Connection> inner, Statements& all)
        : ForwardingConnection(std::move(inner)), all_(all) {}
    std::unique_ptr<ado::Recordset> Execute(std::string_view statement, std::int64_t* rowsAffected) override {
      all_.made_.push_back({std::string(statement), all_.faults_->CallCount()});
      return ForwardingConnection::Execute(statement, rowsAffected);
    }

   private:
    Statements& all_;
  };

  ado::Provider& inner_;
  const FaultPlatform* faults_ = nullptr;
  std::vector<MadeStatement> made_;
};

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

// The calls behind which a link stands in BillingDb without one that goes with it: a bill's without that of its lines,
// a row of a payment without the other one.
std::vector<std::size_t> CallsBetweenLinks(const std::vector<MadeStatement>& statements) {
  std::vector<std::size_t> between;
  std::vector<std::size_t> since;  // the first link of the transaction in hand
  bool isWithin = false;
  for (const auto& [text, call] : statements) {
    if (text.starts_with("BEGIN")) {
      isWithin = true;
      since.clear();
    } else if (text.starts_with("COMMIT") || text.starts_with("ROLLBACK")) {
      isWithin = false;
    } else if (isWithin) {
      const bool isLink = text.find(" SET QBLinkID = ") != std::string::npos;
      if (isLink) {
        between.insert(between.end(), since.begin(), since.end());
        since.clear();
      }
      if (isLink || !since.empty()) since.push_back(call);
    }
  }
  return between;
}

class KilledLinks : public AnyFirm {
 protected:
  int killedBetween_ = 0;  // firms whose run was killed between two links that go together
};

TEST_P(KilledLinks, Are_as_if_they_had_not_been_once_all_are_made) {
  ForEachFirm([this](const firm::FirmPlan& plan) {
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
    auto seams = unbroken.Seams();
    Statements statements(*seams.database);
    seams.database = &statements;
    const FaultPlatform counted(seams, {});
    statements.CountBy(counted);
    static_cast<void>(unbroken.LinkThrough(counted.Decorated(), confirms, kept));
    constexpr std::uint64_t kPurpose = 97;
    firm::Dice dice(plan.seed, kPurpose);
    const auto between = CallsBetweenLinks(statements.Made());
    if (!between.empty()) ++killedBetween_;
    const auto at = between.empty() ? dice.OneOf(statements.Made()).call : dice.OneOf(between);
    SCOPED_TRACE(fmt::format("killed behind call {} of {}", at, counted.CallCount()));
    const TemporaryFolder folder;
    CopyFiles(prepared.Path(), folder.Path());
    constexpr unsigned kSeconds = 60;
    const auto end = sweep::RunInChild(
        [&] {
          LinkingHouse house({.folder = folder.Path()});
          FaultPlatform faults(house.Seams(), {});
          faults.RunAt(at, FaultTiming::After, [] { ::kill(getpid(), SIGKILL); });
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
  EXPECT_GT(killedBetween_, 0);
}

INSTANTIATE_TEST_SUITE_P(Firms, KilledLinks, testing::Range(0U, kPartsOfFirms));

}  // namespace
}  // namespace twqb
