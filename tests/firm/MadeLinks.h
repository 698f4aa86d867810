// A house whose links are wiped and made anew by name, and what its rows and records are linked by.
//
// For the properties of links that were made without a send. What a firm is stands in FirmHouse.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "bridge/Linking.h"
#include "tests/firm/FirmHouse.h"

namespace twqb {

// A table of BillingDb whose rows are linked, and its key.
struct LinkedRows {
  const char* table;
  const char* key;
};
inline constexpr std::array kLinkedRows = {LinkedRows{"Employee", "EmployeeID"},
                                           LinkedRows{"Client", "ClientID"},
                                           LinkedRows{"Project", "ProjectID"},
                                           LinkedRows{"Activity", "ActivityID"},
                                           LinkedRows{"Expense", "ExpID"},
                                           LinkedRows{"AccountList", "AccountID"},
                                           LinkedRows{"TimeEntry", "TEID"},
                                           LinkedRows{"ExpenseLog", "ELID"},
                                           LinkedRows{"TransactionTable", "TransactionID"},
                                           LinkedRows{"VendorBill", "VendorBillID"},
                                           LinkedRows{"Payment", "PayID"}};

using Links = std::map<std::string, std::string>;  // by table and key: "Client ABBOTT"

class LinkingHouse : public FirmHouse {
 public:
  using FirmHouse::FirmHouse;
  using Confirms = std::function<bool(const LikelyPair& pair)>;

  // What items are booked on, and what hours are paid by, under names that no row has.
  void AddAccounts();
  [[nodiscard]] Links LinksOf();
  [[nodiscard]] std::set<std::string> LinksOfRetainers();
  // Whether it went under a counted name, for its own was in use.
  [[nodiscard]] bool IsUnderCountedName(const std::string& listId);
  void Wipe();
  // Of all tables, a minute later; the pairs that were linked.
  std::vector<LikelyPair> Link(const Confirms& confirms, Newer newer = Newer::AsDated);
  // The same through those seams.
  std::vector<LikelyPair> LinkThrough(const Platform& seams, const Confirms& confirms, Newer newer);
};

}  // namespace twqb
