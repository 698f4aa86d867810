// Rows of BillingDb into a send: whatever stands in a row, the send ends, and no two rows of a list come to share a
// link.
//
// Of the input, the first byte chooses the table; behind it comes, for each column that is set, a byte for the column,
// a byte for the length of its text, and the text. A text goes in as it is, whatever the column's type.

#include <fmt/core.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzedFirm.h"
#include "platform/PlatformError.h"

namespace {

using namespace twqb;
using fuzz::Require;
using fuzz::Scalar;
using fuzz::SharedLinks;

struct FuzzedTable {
  enTables table;
  std::string_view rows;
  std::string_view condition = "1 = 1";
  bool ownLinks = true;  // no two rows have one link by rule
};
constexpr std::array kTables = {
    FuzzedTable{enEmployees, "Employee", "IsSub = 0"},
    FuzzedTable{enVendors, "Employee", "IsSub = -1"},
    FuzzedTable{enClients, "Client"},
    FuzzedTable{enProjects, "Project", "1 = 1", false},
    FuzzedTable{enActivities, "Activity"},
    FuzzedTable{enExpenseCodes, "Expense"},
    FuzzedTable{enAccounts, "AccountList"},
    FuzzedTable{enTimeEntries, "TimeEntry"},
    FuzzedTable{enInvoices, "TransactionTable", "PayID IS NULL", false},
    FuzzedTable{enPayments, "Payment", "1 = 1", false},
    FuzzedTable{enVendorBill, "VendorBill"},
};

std::vector<std::string> ColumnsOf(ado::Connection& connection, std::string_view table) {
  const auto rows = connection.OpenRecordset(fmt::format("SELECT * FROM {} WHERE 1 = 0", table),
                                             ado::CursorType::Static, ado::LockType::ReadOnly);
  std::vector<std::string> columns;
  for (int i = 0; i < rows->FieldCount(); ++i) columns.push_back(rows->FieldName(i));
  return columns;
}

std::string Hexadecimal(std::string_view text) {
  std::string hexadecimal;
  for (const char c : text) hexadecimal += fmt::format("{:02X}", static_cast<unsigned char>(c));
  return hexadecimal;
}

// One row, unlinked, with the texts of the input in it. A text that the table refuses (a key that another row has) is
// none.
void SetRow(ado::Connection& connection, const FuzzedTable& table, std::string_view input) {
  const auto row = fmt::format("rowid = (SELECT MIN(rowid) FROM {} WHERE {})", table.rows, table.condition);
  const auto set = [&](std::string_view column, const std::string& value) {
    try {
      connection.Execute(fmt::format("UPDATE {} SET {} = {} WHERE {}", table.rows, column, value, row), nullptr);
    } catch (const PlatformError&) {
    }
  };
  const auto columns = ColumnsOf(connection, table.rows);
  set("QBLinkID", "NULL");
  while (input.size() > 2) {
    const auto& column = columns[static_cast<unsigned char>(input[0]) % columns.size()];
    const auto length = static_cast<unsigned char>(input[1]);
    const auto text = input.substr(2, length);
    set(column, fmt::format("CAST(X'{}' AS TEXT)", Hexadecimal(text)));
    input.remove_prefix(2 + text.size());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static fuzz::FuzzedFirm firm;
  const auto& table = firm.Begin(kTables, data[0]);
  const auto billing = firm.Billing();
  SetRow(*billing, table, {reinterpret_cast<const char*>(data) + 1, size - 1});
  const auto count = fmt::format("SELECT COUNT(*) FROM {}", table.rows);
  const auto rowsBefore = Scalar(*billing, count);
  const auto sharedBefore = SharedLinks(*billing, table.rows);
  firm.Transfer([&](CTWQBBridge& bridge) { (void)bridge.SendDataToQB(table.table); });
  Require(Scalar(*billing, count) == rowsBefore);
  Require(!table.ownLinks || SharedLinks(*billing, table.rows) == sharedBefore);
  return 0;
}
