// A firm that was sent, and the empty BillingDb that it came back into: what each column of each row came back as.
//
// The exceptions are the rules of the link, seen from a row. They stand in a file for lists, one for work and one for
// money; Returned.h says what a column's exception is.
#pragma once

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/firm/Returned.h"

namespace twqb {

// The day on which transfers of these tests are made.
inline constexpr const char* kDayOfTheRun = "3/5/2008";

class Return {
 public:
  Return(FirmHouse& house, FirmHouse& empty, Exceptions& exceptions);
  void Compare();

 private:
  using Keys = std::map<std::string, std::string>;

  // Which key came back for a key.
  void ReadKeys(const std::string& table, const std::string& key);
  [[nodiscard]] std::string Back(const std::string& table, const std::string& key) {
    return key.empty() ? "" : keys_[table][key];
  }
  [[nodiscard]] std::string NameOf(const Pair& pair) { return names_[pair.Link()]; }
  // As names of QuickBooks become keys.
  [[nodiscard]] static std::string WithoutJunk(std::string text);
  // When a row came.
  void CompareStamp(const Pair& pair) const { pair["LastUpdated"].Unless(true, stamp_, "is when it came").IsBack(); }

  template <typename CompareRow>
  void Each(const std::string& shown, const std::string& table, const std::string& condition, CompareRow compare) {
    std::map<std::string, Fields> back;
    for (auto& row : empty_.RowsOf("SELECT * FROM " + table)) back.emplace(row["QBLinkID"].value_or(""), row);
    for (const auto& row : house_.RowsOf("SELECT * FROM " + table + " WHERE QBLinkID <> ''" +
                                         (condition.empty() ? "" : " AND " + condition))) {
      const auto found = back.find(row.at("QBLinkID").value());
      if (found == back.end()) {
        ADD_FAILURE() << shown << " " << row.at("QBLinkID").value() << " did not come back";
        continue;
      }
      const Pair pair(shown, row, found->second, exceptions_);
      compare(pair);
      CompareStamp(pair);
      pair.ExpectThatAllWasAskedFor();
    }
  }

  // --- ReturnLists.cpp ---
  void CompareLists();
  void CompareName(const Pair& pair, const std::string& column, const std::string& wanted, std::size_t longest);
  void CompareClient(const Pair& pair);
  struct JobParts {
    std::string code;
    std::string phase;
  };
  [[nodiscard]] JobParts PartsOfJob(const Pair& pair);
  void CompareProject(const Pair& pair);
  void ComparePerson(const Pair& pair);
  void CompareFirstName(const Pair& pair, Column column);
  void CompareEmployee(const Pair& pair);
  void CompareVendor(const Pair& pair);
  void CompareItemKey(const Pair& pair, const std::string& key, const std::string& code, const std::string& sub);
  void CompareActivity(const Pair& pair);
  void CompareExpenseCode(const Pair& pair);
  void CompareAccount(const Pair& pair);

  // --- ReturnWork.cpp ---
  void ReadBills();
  void CompareWork();
  void CompareJob(const Pair& pair, const std::string& code);
  [[nodiscard]] Column PersonOf(const Pair& pair);
  void CompareHours(const Pair& pair);
  void CompareBilledHours(const Pair& pair);
  void CompareExpense(const Pair& pair);
  static void CompareCharge(const Pair& pair);
  void CompareBilledExpense(const Pair& pair);
  void CompareNamedExpense(const Pair& pair);
  [[nodiscard]] bool IsMadeUp(const std::string& number) const;
  void CompareBill(const Pair& pair);

  // --- ReturnMoney.cpp ---
  void CompareMoney();
  void CompareInvoice(const Pair& pair);
  void ComparePart(const Fields& payment, const Fields& row);
  void CompareRetainer(const Fields& payment, const Fields& row);

  FirmHouse& house_;
  FirmHouse& empty_;
  Exceptions& exceptions_;
  std::string stamp_;                         // when rows came
  std::map<std::string, std::string> names_;  // by ListID
  std::set<std::string> inUse_;
  std::map<std::string, Keys> keys_;  // by table
  std::map<std::string, Fields> activities_;
  std::map<std::string, Fields> codes_;
  std::map<std::string, Fields> projects_;
  std::map<std::string, std::string> created_;       // by TxnID the moment at which QuickBooks got an invoice
  std::map<std::string, std::string> fullNames_;     // by ListID
  std::map<std::string, std::string> projectLinks_;  // by keys in upper case
  std::string account_;                              // of items that have none of their own
  std::map<std::string, std::string> lastLines_;     // of each line of a bill that bill's last one, by TxnLineID
  std::map<std::string, std::string> bills_;         // by TxnLineID the bill's TxnID
};

}  // namespace twqb
