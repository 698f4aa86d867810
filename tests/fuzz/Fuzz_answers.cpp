// Answers of QuickBooks into a get: whatever comes back for the records that were asked for, the get ends, and no
// record is taken in twice.
//
// Of the input, the first byte chooses the table; the rest is the whole answer. What the library asks besides (which
// QuickBooks this is, records that a record refers to) is answered by the company file.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "FuzzedFirm.h"

namespace {

using namespace twqb;
using fuzz::Require;
using fuzz::SharedLinks;

struct FuzzedTable {
  enTables table;
  std::string_view request;  // the answer of this one is the input's
  std::string_view rows;
  bool ownLinks = true;  // no two rows have one link by rule
};
constexpr std::array kTables = {
    FuzzedTable{enClients, "<CustomerQueryRq", "Client"},
    FuzzedTable{enProjects, "<CustomerQueryRq", "Project", false},
    FuzzedTable{enEmployees, "<EmployeeQueryRq", "Employee"},
    FuzzedTable{enVendors, "<VendorQueryRq", "Employee"},
    FuzzedTable{enActivities, "<ItemServiceQueryRq", "Activity"},
    FuzzedTable{enExpenseCodes, "<ItemNonInventoryQueryRq", "Expense"},
    FuzzedTable{enAccounts, "<AccountQueryRq", "AccountList"},
    FuzzedTable{enTimeEntries, "<TimeTrackingQueryRq", "TimeEntry"},
    FuzzedTable{enInvoices, "<InvoiceQueryRq", "TransactionTable", false},
    FuzzedTable{enPayments, "<ReceivePaymentQueryRq", "Payment", false},
    FuzzedTable{enExpenseLog, "<CheckQueryRq", "ExpenseLog"},
    FuzzedTable{enVendorBill, "<BillQueryRq", "VendorBill"},
    FuzzedTable{enEstimates, "<EstimateQueryRq", "Budget"},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static fuzz::FuzzedFirm firm;
  const auto& table = firm.Begin(kTables, data[0]);
  bool answered = false;
  firm.QuickBooks().answer = [&](std::string_view document, std::string& answer) {
    if (answered || document.find(table.request) == std::string_view::npos) return false;
    answered = true;
    answer.assign(reinterpret_cast<const char*>(data) + 1, size - 1);
    return true;
  };
  const auto billing = firm.Billing();
  const auto sharedBefore = SharedLinks(*billing, table.rows);
  firm.Transfer([&](CTWQBBridge& bridge) { (void)bridge.GetDataFromQB(table.table); });
  firm.QuickBooks().answer = nullptr;
  Require(answered);
  Require(!table.ownLinks || SharedLinks(*billing, table.rows) == sharedBefore);
  return 0;
}
