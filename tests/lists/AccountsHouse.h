// A house in which the account routines are called as the dispatcher calls them, and whose pauses take no time.
#pragma once

#include <vector>

#include "lists/modAccounts.h"
#include "platform/Forwarding.h"
#include "services/Database.h"
#include "tests/lists/ListHouse.h"

namespace twqb {

inline constexpr TestedTable kAccountTable = {.table = enAccounts,
                                              .name = "AccountList",
                                              .keyColumn = "AccountID",
                                              .toQB = MoveAccountsToQB,
                                              .toTW = MoveAccountsToTW};

// A pause, and how many statements stood ahead of it.
struct Pause {
  std::int64_t milliseconds;
  std::size_t statements;
};

class PausingMachine : public ForwardingMachine {
 public:
  PausingMachine(Machine& inner, const Traffic& traffic) : ForwardingMachine(inner), traffic_(traffic) {}
  void Sleep(std::int64_t milliseconds) override { pauses.push_back({milliseconds, traffic_.statements.size()}); }

  std::vector<Pause> pauses;

 private:
  const Traffic& traffic_;
};

class AccountsHouse : public ListHouse {
 public:
  explicit AccountsHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : ListHouse(kAccountTable, std::move(options), faults, country), clock(machine, traffic) {
    auto platform = Spied();
    platform.machine = &clock;
    Enter(platform);
    Connect(country);
    // The dispatcher holds the shared connection as long as a table runs.
    gp_cnGlobal80(true);
  }

  // Columns beside key, name and type (an expense), as "AccountDesc, ..." and their SQL expressions.
  void Account(std::string_view key, std::string_view name, std::string_view columns = {},
               std::string_view values = {}) {
    Row("AccountID, AccountName, AccountTypeID" + (columns.empty() ? std::string() : ", " + std::string(columns)),
        "'" + std::string(key) + "', '" + std::string(name) + "', 6" +
            (values.empty() ? std::string() : ", " + std::string(values)));
  }
  // An account in QuickBooks, of its fields between name and type, the type, and what is behind it; its ListID.
  std::string AddAccount(std::string_view name, std::string_view before = {}, std::string_view type = "Expense",
                         std::string_view behind = {}) {
    return TextOf(Company("<AccountAddRq><AccountAdd><Name>" + std::string(name) + "</Name>" + std::string(before) +
                              "<AccountType>" + std::string(type) + "</AccountType>" + std::string(behind) +
                              "</AccountAdd></AccountAddRq>",
                          Tag()),
                  "ListID");
  }
  std::string AddSubAccount(std::string_view name, std::string_view parent) {
    return AddAccount(name, "<ParentRef><ListID>" + std::string(parent) + "</ListID></ParentRef>");
  }
  void DeleteAccount(std::string_view listId) {
    Company("<ListDelRq><ListDelType>Account</ListDelType><ListID>" + std::string(listId) + "</ListID></ListDelRq>",
            Tag());
  }
  // The value of an element of the account with that identifier; "(none)" when it has none.
  std::string AccountField(std::string_view listId, std::string_view element) {
    return TextOf(Company("<AccountQueryRq><ListID>" + std::string(listId) + "</ListID></AccountQueryRq>", Tag()),
                  element);
  }
  std::string LinkOf(std::string_view key) { return ColumnOf(key, "QBLinkID"); }
  // What QuickBooks has for the row of that key.
  std::string Sent(std::string_view key, std::string_view element) { return AccountField(LinkOf(key), element); }

  PausingMachine clock;
};

}  // namespace twqb
