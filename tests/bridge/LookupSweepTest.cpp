// Lookups broken at every one of their calls through the seams: none lets an error out, each tells it, none keeps a
// connection open, and the next one works.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>

#include "services/Database.h"
#include "tests/bridge/LookupMembers.h"
#include "tests/support/GivenUp.h"

namespace twqb {
namespace {

enum class Store : std::uint8_t { File, Table };

// Whether the lookup succeeded: a list, True.
class SweptHouse;
using Run = std::function<bool(SweptHouse& house)>;

struct SweepCase {
  std::string name;
  std::string request;
  Run run;
  Store store;
  bool refused;  // QuickBooks says no, which puts the refusal's box among the calls
};

std::ostream& operator<<(std::ostream& out, const SweepCase& sweep) { return out << sweep.name; }

class SweptHouse : public BridgeHouse {
 public:
  explicit SweptHouse(const SweepCase& sweep)
      : BridgeHouse({.answers = "default cancel"},
                    sweep.refused ? sweep.request + " 1 status 3260 Error \"No.\"" : std::string()) {
    const auto acme = AddCustomer("<Name>Acme</Name>");
    job = AddJob("Barn", acme);
    Company(
        "<AccountAddRq><AccountAdd><Name>Costs</Name><AccountType>Expense</AccountType></AccountAdd></AccountAddRq>"
        "<ClassAddRq><ClassAdd><Name>East</Name></ClassAdd></ClassAddRq>");
    Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_FIRST_TIME', 'False')");
    Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_QBDBPath', '" + Path("company.twq") + "')");
    Setting("GENERAL", "QBDBPath", Path("company.twq"));
    bridge.emplace(*this);
    bridge->SetUseTWSTable(sweep.store == Store::Table);
  }
  ~SweptHouse() { bridge.reset(); }
  SweptHouse(const SweptHouse&) = delete;
  SweptHouse& operator=(const SweptHouse&) = delete;

  [[nodiscard]] std::size_t Told() const { return desk.Boxes().size(); }

  std::optional<Bridge> bridge;
  std::string job;
};

std::vector<SweepCase> SweepCases() {
  std::vector<SweepCase> cases;
  const auto put = [&](const std::string& name, const std::string& request, const Run& run) {
    for (const auto store : {Store::File, Store::Table}) {
      for (const bool refused : {false, true}) {
        cases.push_back({name + (store == Store::File ? "_File" : "_Table") + (refused ? "_Refused" : ""), request, run,
                         store, refused});
      }
    }
  };
  put("GetCustomers", "CustomerQueryRq",
      [](SweptHouse& house) { return !house.bridge->GetCustomers(true).IsNothing(); });
  put("GetClassItems", "ClassQueryRq", [](SweptHouse& house) { return !house.bridge->GetClassItems().IsNothing(); });
  put("GetQBAccounts", "AccountQueryRq", [](SweptHouse& house) {
    AccountArray accounts;
    return house.bridge->GetQBAccounts(accounts);
  });
  put("IsJob", "CustomerQueryRq", [](SweptHouse& house) { return house.bridge->IsJob(house.job); });
  return cases;
}

class LookupSweep : public testing::TestWithParam<SweepCase> {
 protected:
  struct Outcome {
    std::vector<std::string_view> calls;
    std::size_t before = 0;  // calls ahead of the lookup
    bool result = false;
    std::string unanswered;  // a question of a failed connection
    std::size_t told = 0;
    std::int16_t count = 0;
    bool worksAgain = false;
  };
  static Outcome Lookup(std::optional<std::size_t> k, FaultTiming timing) {
    const auto& sweep = GetParam();
    SweptHouse house(sweep);
    Outcome outcome{.before = house.Faults().CallCount()};
    if (k) house.Faults().RaiseAt(*k, timing, error::kCannotOpen);
    outcome.unanswered = GivenUpAt([&] { outcome.result = sweep.run(house); });
    outcome.calls = house.Faults().CallNames();
    outcome.told = house.Told();
    outcome.count = Vars().g_CnRefCount;
    (void)house.bridge->ConnectToQB(false);
    outcome.worksAgain = sweep.run(house) || (sweep.refused && sweep.run(house));
    return outcome;
  }
};

INSTANTIATE_TEST_SUITE_P(Lookups, LookupSweep, testing::ValuesIn(SweepCases()),
                         [](const auto& test) { return test.param.name; });

TEST_P(LookupSweep, An_error_at_any_call_stays_inside_and_leaves_everything_in_order) {
  const auto clean = Lookup(std::nullopt, FaultTiming::Before);
  EXPECT_EQ(clean.result, !GetParam().refused);
  EXPECT_EQ(clean.told, GetParam().refused && !GetParam().name.starts_with("GetQBAccounts") ? 1U : 0U);
  EXPECT_EQ(clean.count, 0);
  EXPECT_TRUE(clean.worksAgain);
  ASSERT_GT(clean.calls.size(), clean.before);
  std::size_t query = 0;
  for (std::size_t k = clean.before + 1; k <= clean.calls.size(); ++k) {
    if (clean.calls[k - 1] == "Transport.ProcessDocument") query = k;
  }
  ASSERT_GT(query, clean.before);
  for (auto k = clean.before + 1; k <= clean.calls.size(); ++k) {
    for (const auto timing : {FaultTiming::Before, FaultTiming::After}) {
      SCOPED_TRACE(
          fmt::format("{} call {}: {}", timing == FaultTiming::Before ? "before" : "after", k, clean.calls[k - 1]));
      const auto broken = Lookup(k, timing);
      SCOPED_TRACE(broken.unanswered);
      EXPECT_EQ(broken.count, 0);
      EXPECT_TRUE(broken.worksAgain);
      // The query's own call: its failure is told, and the result is the failure's.
      if (k == query) {
        EXPECT_FALSE(broken.result);
        EXPECT_EQ(broken.told, 1U);
      }
      EXPECT_TRUE(broken.result || GetParam().refused || !broken.unanswered.empty() || broken.told > 0);
    }
  }
}

}  // namespace
}  // namespace twqb
