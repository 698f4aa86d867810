// The count of open requests to BillingDb is back at 0 after each public operation, whatever call to the database fails
// in it, and whatever the user says to the questions that follow.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "services/Database.h"
#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

enum class Store : std::uint8_t { File, Table };

// The files of a house with something to add, to modify, to insert and to update: made once, for hundreds of runs that
// each begin with them.
class PreparedFiles {
 public:
  PreparedFiles() {
    std::filesystem::create_directory(House());
    {
      BridgeHouse house({.folder = House()});
      const auto addAccount = [&](const std::string& fields) {
        return BridgeHouse::TextOf(house.Company("<AccountAddRq><AccountAdd>" + fields +
                                                 "<AccountType>Expense</AccountType></AccountAdd></AccountAddRq>"),
                                   "ListID");
      };
      const auto id = house.AddCustomer("<Name>Acme</Name>");
      house.AddCustomer("<Name>Baker</Name>");
      house.Client("ClientID, QBLinkID, LastUpdated", "'ACME', '" + id + "', '2008-03-05 15:00:00'");
      house.Client("ClientID", "'NEW'");
      addAccount("<Name>Travel</Name>");
      subAccount_ = addAccount("<Name>Fares</Name><ParentRef><FullName>Travel</FullName></ParentRef>");
      house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_FIRST_TIME', 'False')");
      house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_AC_EXPENSE_ACCOUNT', 'Old')");
    }
    std::filesystem::copy(House(), root_ / "prepared");
  }

  // The folder in which they stand anew.
  [[nodiscard]] std::string Restored() const {
    std::filesystem::remove_all(House());
    std::filesystem::copy(root_ / "prepared", House());
    return House();
  }
  [[nodiscard]] const std::string& SubAccount() const { return subAccount_; }  // its parent is not in BillingDb

 private:
  [[nodiscard]] std::string House() const { return root_ / "house"; }

  TemporaryFolder root_;
  std::string subAccount_;
};

// A house with these files, and an object to it.
class CountedHouse : public BridgeHouse {
 public:
  CountedHouse(const PreparedFiles& files, std::string_view answer, Store store)
      : BridgeHouse({.answers = "default " + std::string(answer), .folder = files.Restored()}),
        subAccount(files.SubAccount()),
        store_(store) {}
  ~CountedHouse() { bridge.reset(); }
  CountedHouse(const CountedHouse&) = delete;
  CountedHouse& operator=(const CountedHouse&) = delete;

  void Open() {
    bridge.emplace(*this);
    bridge->SetUseTWSTable(store_ == Store::Table);
    bridge->SetNewQBLinkID("");
  }

  std::optional<Bridge> bridge;
  std::string subAccount;

 private:
  Store store_;
};

struct Operation {
  std::string name;
  bool reachesDatabase;  // with the settings in the table
  std::function<void(CountedHouse&)> run;
  std::function<void(CountedHouse&)> before = [](CountedHouse& house) { house.Open(); };
};

std::ostream& operator<<(std::ostream& out, const Operation& operation) { return out << operation.name; }

void OpenAndConnect(CountedHouse& house) {
  house.Open();
  (void)house.bridge->ConnectToQB(true);
}

const Operation kOperations[] = {
    {"Constructor", false, [](CountedHouse& house) { house.Open(); }, [](CountedHouse&) {}},
    {"Destructor", false, [](CountedHouse& house) { house.bridge.reset(); }, OpenAndConnect},
    {"ConnectToQB_True", true, [](CountedHouse& house) { (void)house.bridge->ConnectToQB(true); }},
    {"ConnectToQB_False", false, [](CountedHouse& house) { (void)house.bridge->ConnectToQB(false); }, OpenAndConnect},
    {"SendDataToQB_Clients", true, [](CountedHouse& house) { (void)house.bridge->SendDataToQB(enClients); },
     OpenAndConnect},
    {"GetDataFromQB_Clients", true, [](CountedHouse& house) { (void)house.bridge->GetDataFromQB(enClients); },
     OpenAndConnect},
    {"SendDataToQB_All", true, [](CountedHouse& house) { (void)house.bridge->SendDataToQB(enAll); }, OpenAndConnect},
    {"GetDataFromQB_All", true, [](CountedHouse& house) { (void)house.bridge->GetDataFromQB(enAll); }, OpenAndConnect},
    {"SendDataToQB_PassedID", true,
     [](CountedHouse& house) {
       house.bridge->SetUsePreferencesTW(false);
       house.bridge->SetPassedID("NEW");
       (void)house.bridge->SendDataToQB(enClients);
     },
     OpenAndConnect},
    {"GetDataFromQB_AccountAndItsParent", true,
     [](CountedHouse& house) {
       house.bridge->SetUsePreferencesTW(false);
       house.bridge->SetPassedID(house.subAccount);
       (void)house.bridge->GetDataFromQB(enAccounts);
     },
     OpenAndConnect},
    {"SendDataToQB_Estimates", true, [](CountedHouse& house) { (void)house.bridge->SendDataToQB(enEstimates); },
     OpenAndConnect},
    {"Properties", true,
     [](CountedHouse& house) {
       (void)house.bridge->QBDB();
       (void)house.bridge->IsSubscribedToQBEvents();
       (void)house.bridge->QBHostVer();
       (void)house.bridge->QBCountry();
       house.bridge->SetConnectString(house.bridge->ConnectString());
       house.bridge->SetTWSettingsPath(house.bridge->TWSettingsPath());
       house.bridge->SetLeaveMsgBoxOpen(house.bridge->LeaveMsgBoxOpen());
       house.bridge->SetUseTWSTable(house.bridge->UseTWSTable());
     }},
    {"DeleteTWRecord_Clients", true, [](CountedHouse& house) { (void)house.bridge->DeleteTWRecord(enClients, "1-1"); },
     OpenAndConnect},
    {"DeleteTWRecord_Payments", true,
     [](CountedHouse& house) { (void)house.bridge->DeleteTWRecord(enPayments, "1-1"); }, OpenAndConnect},
    {"DeleteTWRecord_WithoutSession", true,
     [](CountedHouse& house) { (void)house.bridge->DeleteTWRecord(enInvoices, "1-1"); }},
    {"DeleteQBRecord_WithoutSession", true,
     [](CountedHouse& house) { (void)house.bridge->DeleteQBRecord(enClients, "1-1"); }},
    {"SubscribeToQBEvents_True", true, [](CountedHouse& house) { (void)house.bridge->SubscribeToQBEvents(true); }},
    {"SubscribeToQBEvents_False", true, [](CountedHouse& house) { (void)house.bridge->SubscribeToQBEvents(false); }},
    {"CloseProgressScreen", false, [](CountedHouse& house) { house.bridge->CloseProgressScreen(); }},
    {"DisplaySettings", false, [](CountedHouse& house) { house.bridge->DisplaySettings(); }},
    {"GetEmployees", true, [](CountedHouse& house) { (void)house.bridge->GetEmployees(); }},
    {"GetClassItems", true, [](CountedHouse& house) { (void)house.bridge->GetClassItems(); }},
    {"GetQBAccounts", true,
     [](CountedHouse& house) {
       AccountArray accounts;
       (void)house.bridge->GetQBAccounts(accounts);
     }},
    {"IsJob", true, [](CountedHouse& house) { (void)house.bridge->IsJob("80000001-1111111111"); }},
    {"SaveSettings", true,
     [](CountedHouse& house) { (void)house.bridge->SaveSettings("Fees", "Costs", "", "Expenses"); }},
};

struct CountCase {
  Operation operation;
  Store store;
  std::string answer;  // to every question that follows an error
};

std::ostream& operator<<(std::ostream& out, const CountCase& count) { return out << count.operation; }

// The answer matters where a table's routine asks whether to go on. A run over all tables reads the settings of each as
// the run of one does.
std::vector<CountCase> CountCases() {
  std::vector<CountCase> cases;
  for (const auto& operation : kOperations) {
    cases.push_back({operation, Store::File, "yes"});
    if (!operation.name.ends_with("_All")) cases.push_back({operation, Store::Table, "yes"});
    if (operation.name.ends_with("_Clients")) cases.push_back({operation, Store::File, "no"});
  }
  return cases;
}

class ConnectionCount : public testing::TestWithParam<CountCase> {
 protected:
  // Runs the operation in a new house with an order for the k-th call, or without one. Answers the names of all calls
  // until its end and how many were made ahead of it.
  struct Calls {
    std::vector<std::string_view> names;
    std::size_t before = 0;
    std::int16_t count = 0;  // behind it
    bool heals = false;      // the next use of the connection works and closes it, whatever the broken one left
  };
  [[nodiscard]] Calls Run(std::optional<std::size_t> k, FaultTiming timing) const {
    const auto& [operation, store, answer] = GetParam();
    CountedHouse house(files_, answer, store);
    operation.before(house);
    Calls calls;
    calls.before = house.Faults().CallCount();
    if (k) house.Faults().RaiseAt(*k, timing, error::kCannotOpen);
    operation.run(house);
    calls.names = house.Faults().CallNames();
    calls.count = Vars().g_CnRefCount;
    calls.heals = GetScalarFromSQL("SELECT 1") == "1" && Vars().g_CnRefCount == 0 &&
                  Vars().g_cnGlobal->State() == ado::ObjectState::Closed;
    return calls;
  }
  static bool IsOfDatabase(std::string_view name) {
    return name.starts_with("Connection.") || name.starts_with("Recordset.");
  }

 private:
  PreparedFiles files_;
};

TEST_P(ConnectionCount, Is_0_whatever_call_to_the_database_fails_and_the_next_use_works) {
  const auto clean = Run(std::nullopt, FaultTiming::Before);
  EXPECT_EQ(clean.count, 0);
  EXPECT_TRUE(clean.heals);
  bool reachesDatabase = false;
  for (auto k = clean.before + 1; k <= clean.names.size(); ++k) {
    if (!IsOfDatabase(clean.names[k - 1])) continue;
    reachesDatabase = true;
    for (const auto timing : {FaultTiming::Before, FaultTiming::After}) {
      SCOPED_TRACE(
          fmt::format("{} call {}: {}", timing == FaultTiming::Before ? "before" : "after", k, clean.names[k - 1]));
      const auto broken = Run(k, timing);
      EXPECT_EQ(broken.count, 0);
      EXPECT_TRUE(broken.heals);
    }
  }
  const auto& [operation, store, answer] = GetParam();
  EXPECT_TRUE(store == Store::File || reachesDatabase == operation.reachesDatabase);
}

INSTANTIATE_TEST_SUITE_P(AfterEachOperation, ConnectionCount, testing::ValuesIn(CountCases()), [](const auto& test) {
  return test.param.operation.name + (test.param.store == Store::File ? "_File_" : "_Table_") + test.param.answer;
});

}  // namespace
}  // namespace twqb
