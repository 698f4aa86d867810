// Houses in which the sends of expenses and of vendor bills are called as the dispatcher calls them, with a vendor, a
// project, an activity and an expense code that are in QuickBooks, and an employee who is no vendor.
#pragma once

#include "tests/transactions/TransactionsHouse.h"
#include "transactions/ExpenseLogOut.h"
#include "transactions/VendorBillsOut.h"

namespace twqb {

inline constexpr TestedTable kTestedExpenses = {
    .table = enExpenseLog, .name = "ExpenseLog", .keyColumn = "ELID", .toQB = MoveExpenseLogToQB, .toTW = nullptr};
inline constexpr TestedTable kTestedVendorBills = {.table = enVendorBill,
                                                   .name = "VendorBill",
                                                   .keyColumn = "VendorBillID",
                                                   .toQB = MoveVendorBillToQB,
                                                   .toTW = nullptr};

class BillsHouse : public TransactionsHouse {
 public:
  BillsHouse(const TestedTable& table, HouseOptions options, std::string_view faults, std::string_view country)
      : TransactionsHouse(table, std::move(options), faults, country) {
    Add("Account", "<Name>Costs</Name><AccountType>Expense</AccountType>");
    const auto client = AddCustomer("<Name>Acme</Name>", Tag());
    job = AddCustomer("<Name>Roof</Name><ParentRef><ListID>" + client + "</ListID></ParentRef>", Tag());
    activity = AddItem("Service", "Design", "Costs");
    expense = AddItem("OtherCharge", "Travel", "Costs");
    vendor = Add("Vendor", "<Name>Smith Ltd</Name>");
    Insert("Client", {{"ClientID", "'ACME'"}, {"QBLinkID", "'" + client + "'"}});
    Insert("Project", {{"ProjectID", "'ROOF:'"}, {"ClientID", "'ACME'"}, {"QBLinkID", "'" + job + "'"}});
    Insert("Activity", {{"ActivityID", "'DESIGN:'"}, {"QBLinkID", "'" + activity + "'"}});
    Insert("Expense", {{"ExpID", "'TRAVEL:'"}, {"QBLinkID", "'" + expense + "'"}});
    Insert("Employee", {{"EmployeeID", "'SMITH'"}, {"IsSub", "-1"}, {"QBLinkID", "'" + vendor + "'"}});
    Insert("Employee", {{"EmployeeID", "'AL'"}, {"IsSub", "0"}});
    Clear();
  }

  // A vendor on both sides.
  std::string Vendor(std::string_view key, std::string_view name) {
    auto id = Add("Vendor", "<Name>" + std::string(name) + "</Name>");
    Insert("Employee", {{"EmployeeID", "'" + std::string(key) + "'"}, {"IsSub", "-1"}, {"QBLinkID", "'" + id + "'"}});
    return id;
  }
  // A posted expense of the vendor's: two units at 10; `changed` says what is otherwise.
  void Expense(std::string_view key, const Columns& changed = {}) {
    Columns columns = {{"ELDate", "'2008-02-10'"}, {"EmployeeID", "'SMITH'"}, {"isSub", "-1"},
                       {"ProjectID", "'ROOF:'"},   {"ExpID", "'TRAVEL:'"},    {"ELUnits", "2"},
                       {"ELCost", "10"},           {"ELBillable", "-1"},      {"ELPosted", "-1"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns["ELID"] = "'" + std::string(key) + "'";
    keys += (keys.empty() ? "" : ",") + columns["ELID"];
    Insert("ExpenseLog", columns);
  }
  [[nodiscard]] std::string Row(std::string_view table, std::string_view keyColumn, std::string_view key,
                                std::string_view column) {
    return Scalar(fmt::format("SELECT {} FROM {} WHERE {} = '{}'", column, table, keyColumn, key));
  }

  // What the n-th bill that went over the wire says ahead of its lines.
  [[nodiscard]] std::string Header(std::size_t nth = 0) const {
    const std::string_view open = "<BillAdd>";
    const auto body = Requests("BillAddRq").at(nth);
    const auto lines = body.find("<ItemLineAdd>");
    return body.substr(open.size(), (lines == std::string::npos ? body.find("</BillAdd>") : lines) - open.size());
  }
  [[nodiscard]] Texts Lines(std::size_t nth = 0) const {
    const std::string open = "<ItemLineAdd>";
    const auto body = Requests("BillAddRq").at(nth);
    Texts lines;
    for (auto at = body.find(open); at != std::string::npos; at = body.find(open, at + 1)) {
      const auto from = at + open.size();
      lines.push_back(body.substr(from, body.find("</ItemLineAdd>", from) - from));
    }
    return lines;
  }
  // The TxnLineIDs of a bill, as QuickBooks has them.
  [[nodiscard]] Texts LineIds(std::string_view txnId) {
    const auto bill = Company(
        fmt::format("<BillQueryRq><TxnID>{}</TxnID><IncludeLineItems>1</IncludeLineItems></BillQueryRq>", txnId),
        Tag());
    Texts ids;
    for (auto at = bill.find("<TxnLineID>"); at != std::string::npos; at = bill.find("<TxnLineID>", at + 1)) {
      ids.push_back(TextOf(std::string_view(bill).substr(at), "TxnLineID"));
    }
    return ids;
  }

  std::string keys;      // of the expenses, quoted
  std::string job;       // ListIDs
  std::string activity;  //
  std::string expense;   //
  std::string vendor;    //
};

class ExpensesHouse : public BillsHouse {
 public:
  explicit ExpensesHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : BillsHouse(kTestedExpenses, std::move(options), faults, country) {}
  // All of them, named one by one as a host does.
  void SendAll() { SendSelection(BuildSelectSQL(enExpenseLog, {.Filter1a = keys.empty() ? "''" : keys})); }
};

class VendorBillsHouse : public BillsHouse {
 public:
  explicit VendorBillsHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : BillsHouse(kTestedVendorBills, std::move(options), faults, country) {
    Vars().g_DbKind = "SQL";
  }
  void Bill(std::string_view key, const Columns& changed = {}) {
    Columns columns = {{"VendorID", "'SMITH'"},
                       {"BillNumber", "'" + std::string(key) + "'"},
                       {"BillDate", "'2008-02-10'"},
                       {"BillDueDate", "'2008-02-20'"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns["VendorBillID"] = "'" + std::string(key) + "'";
    Insert("VendorBill", columns);
  }
  // An hour and a half of the bill's at 40.
  void Hours(std::string_view key, std::string_view bill, const Columns& changed = {}) {
    Columns columns = {
        {"TEDate", "'2008-02-09'"}, {"EmployeeID", "'SMITH'"}, {"ProjectID", "'ROOF:'"}, {"ActivityID", "'DESIGN:'"},
        {"TEHours", "1.5"},         {"TECostRate", "40"},      {"TEBill", "-1"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    columns["TEID"] = "'" + std::string(key) + "'";
    columns["VendorBillID"] = "'" + std::string(bill) + "'";
    Insert("TimeEntry", columns);
  }
};

inline std::string ProblemBox(std::string_view what = "Vendors, Expense Codes and Projects") {
  return fmt::format(
      "There was a problem in transfering Bill(s). Please make sure\r\nthe associated data does exist in QuickBooks. "
      "Specifically, make\r\nsure all the associated {} are tranfered to QuickBooks.\r\n",
      what);
}
inline const std::string kInvalidBillAccount =
    "QuickBooks has reported the following error: -\r\nNo.\r\n(Error Code = 3140\r\nSeverity: Error)\r\n\r\nIf this "
    "table "
    "needs an account, please choose a valid account from the\r\nSync Settings Form.";

}  // namespace twqb
