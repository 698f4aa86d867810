// Deletions and changes of the subscription with every single call through the seams broken in turn: the result is what
// was done, a False has been told, and nothing is left open.

#include <functional>

#include "adapters/companyfile/CompanyFile.h"
#include "tests/bridge/DeletionHouse.h"

namespace twqb {
namespace {

bool HasSubscription(DeletionHouse& house) {
  company::CompanyFile file(house.Path("company.twq"), house.machine);
  return file.ProcessSubscription(
                 "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLSubscriptionMsgsRq><SubscriptionQueryRq>"
                 "<SubscriberID>{587B27F0-273E-46fd-BBDF-B5E79696FC3E}</SubscriberID></SubscriptionQueryRq>"
                 "</QBXMLSubscriptionMsgsRq></QBXML>")
             .find("statusCode=\"0\"") != std::string::npos;
}

struct Operation {
  std::string name;
  std::function<std::string(DeletionHouse&)> prepare;  // the identifier
  std::function<bool(DeletionHouse&, const std::string& id)> run;
  std::function<bool(DeletionHouse&, const std::string& id)> isDone;
};

std::ostream& operator<<(std::ostream& out, const Operation& operation) { return out << operation.name; }

std::string WithClient(DeletionHouse& house) {
  const auto id = house.AddRecord(TwinOf(enClients));
  house.AddRow("Client", "ClientID", "BETA", id);
  return id;
}

std::string WithClientWhileSubscribed(DeletionHouse& house) {
  EXPECT_TRUE(house.bridge->SubscribeToQBEvents(true));
  return WithClient(house);
}

const Operation kOperations[] = {
    {"DeleteTWRecord", WithClient,
     [](auto& house, const auto& id) { return house.bridge->DeleteTWRecord(enClients, id); },
     [](auto& house, const auto&) { return house.RowsOf("Client", "ClientID") == "NULL"; }},
    {"DeleteQBRecord", WithClient,
     [](auto& house, const auto& id) { return house.bridge->DeleteQBRecord(enClients, id); },
     [](auto& house, const auto& id) { return !house.HasRecord(TwinOf(enClients), id); }},
    {"DeleteQBRecord_WhileSubscribed", WithClientWhileSubscribed,
     [](auto& house, const auto& id) { return house.bridge->DeleteQBRecord(enClients, id); },
     [](auto& house, const auto& id) { return !house.HasRecord(TwinOf(enClients), id); }},
    {"SubscribeToQBEvents_True", WithClient,
     [](auto& house, const auto&) { return house.bridge->SubscribeToQBEvents(true); },
     [](auto& house, const auto&) { return HasSubscription(house); }},
    {"SubscribeToQBEvents_False", WithClientWhileSubscribed,
     [](auto& house, const auto&) { return house.bridge->SubscribeToQBEvents(false); },
     [](auto& house, const auto&) { return !HasSubscription(house); }},
};

class BrokenCalls : public testing::TestWithParam<Operation> {
 protected:
  struct Calls {
    std::vector<std::string_view> names;
    std::size_t before = 0;
    std::size_t boxesBefore = 0;
    std::vector<std::string> boxes;
    bool result = false;
    bool isDone = false;
    std::int16_t count = 0;
  };
  static Calls Run(std::optional<std::size_t> k, FaultTiming timing) {
    // A retry that is offered is not taken.
    DeletionHouse house({}, "default yes\ndefault cancel");
    const auto id = GetParam().prepare(house);
    Calls calls;
    calls.before = house.Faults().CallCount();
    calls.boxesBefore = house.BoxTexts().size();
    if (k) house.Faults().RaiseAt(*k, timing, error::kCannotOpen);
    calls.result = GetParam().run(house, id);
    calls.names = house.Faults().CallNames();
    calls.boxes = house.BoxTexts();
    calls.count = Vars().g_CnRefCount;
    calls.isDone = GetParam().isDone(house, id);
    return calls;
  }
};

TEST_P(BrokenCalls, Leave_a_result_that_is_true_and_nothing_open) {
  const auto clean = Run(std::nullopt, FaultTiming::Before);
  EXPECT_TRUE(clean.result);
  EXPECT_TRUE(clean.isDone);
  ASSERT_GT(clean.names.size(), clean.before);
  for (auto k = clean.before + 1; k <= clean.names.size(); ++k) {
    const auto name = clean.names[k - 1];
    for (const auto timing : {FaultTiming::Before, FaultTiming::After}) {
      SCOPED_TRACE(fmt::format("{} call {}: {}", timing == FaultTiming::Before ? "before" : "after", k, name));
      const auto broken = Run(k, timing);
      EXPECT_EQ(broken.count, 0);
      const bool isOfDatabase = name.starts_with("Connection.") || name.starts_with("Provider.");
      if (broken.result) {
        // Only what happens to a row of BillingDb is not noticed.
        EXPECT_TRUE(broken.isDone || (isOfDatabase && GetParam().name == "DeleteTWRecord"));
      } else {
        // Behind the question, and in the place of the word that it is done, stands what was wrong.
        ASSERT_GT(broken.boxes.size(), broken.boxesBefore);
        EXPECT_FALSE(broken.boxes.back().starts_with("Do you want to delete")) << broken.boxes.back();
        EXPECT_FALSE(broken.boxes.back().starts_with("Done!")) << broken.boxes.back();
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(DeletionsAndEvents, BrokenCalls, testing::ValuesIn(kOperations),
                         [](const auto& suite) { return suite.param.name; });

}  // namespace
}  // namespace twqb
