#include "cli/demo/DemoContents.h"

#include <fmt/core.h>

#include <array>
#include <sstream>

#include "adapters/sqlite/SqliteProvider.h"
#include "cli/workplace/CompanyAnswer.h"
#include "platform/Value.h"

namespace twqb::cli {

namespace {

constexpr std::array<std::string_view, 16> kTables = {"Employee",   "Client",         "Project",          "Activity",
                                                      "Expense",    "AccountList",    "TimeEntry",        "ExpenseLog",
                                                      "VendorBill", "ManInvDetail",   "TransactionTable", "Payment",
                                                      "Budget",     "BudgetActivity", "BudgetExpense",    "QBPayroll"};

struct Kind {
  std::string_view name;
  std::string_view query;
  const char* identifier;
};
constexpr std::string_view kAll = "<ActiveStatus>All</ActiveStatus>";
constexpr std::string_view kLines = "<IncludeLineItems>true</IncludeLineItems>";
constexpr std::array kKinds = {
    Kind{"Employee", kAll, "ListID"},
    Kind{"Vendor", kAll, "ListID"},
    Kind{"Customer", kAll, "ListID"},
    Kind{"ItemService", kAll, "ListID"},
    Kind{"ItemOtherCharge", kAll, "ListID"},
    Kind{"ItemInventory", kAll, "ListID"},
    Kind{"ItemNonInventory", kAll, "ListID"},
    Kind{"Account", kAll, "ListID"},
    Kind{"PayrollItemWage", kAll, "ListID"},
    Kind{"PaymentMethod", kAll, "ListID"},
    Kind{"TimeTracking", "", "TxnID"},
    Kind{"Invoice", kLines, "TxnID"},
    Kind{"CreditMemo", kLines, "TxnID"},
    Kind{"ReceivePayment", kLines, "TxnID"},
    Kind{"Bill", kLines, "TxnID"},
    Kind{"Check", kLines, "TxnID"},
    Kind{"CreditCardCharge", kLines, "TxnID"},
    Kind{"Estimate", kLines, "TxnID"},
};

// When a row was changed; and what tells that a record was.
bool IsDate(std::string_view column) { return column == "LastUpdated" || column == "PayLastModifiedOn"; }
constexpr std::array kMarks = {"TimeModified", "EditSequence"};

void AddTable(DemoContents& contents, ado::Connection& billing, std::string_view table) {
  const auto rows = billing.Execute(fmt::format("SELECT * FROM {}", table), nullptr);
  for (; !rows->Eof(); rows->MoveNext()) {
    std::string text;
    for (int i = 0; i < rows->FieldCount(); ++i) {
      if (IsDate(rows->FieldName(i))) continue;
      const auto value = rows->FieldAt(i);
      text += (IsNull(value) ? "NULL" : ToText(value)) + '\n';
    }
    // The key is the first column; of payroll items the first two.
    auto name = fmt::format("{} {}", table, ToText(rows->FieldAt(0)));
    if (table == "QBPayroll") name += " " + ToText(rows->FieldAt(1));
    contents.emplace(std::move(name), std::move(text));
  }
}

void AddKind(DemoContents& contents, const Workplace& place, Machine& machine, const Kind& kind) {
  const CompanyAnswer answer(place.company, machine,
                             fmt::format("<{0}QueryRq>{1}</{0}QueryRq>", kind.name, kind.query));
  for (auto record : answer.Response().children()) {
    for (const auto* mark : kMarks) record.remove_child(mark);
    std::ostringstream text;
    record.print(text);
    contents.emplace(fmt::format("{} {}", kind.name, record.child_value(kind.identifier)), text.str());
  }
}

}  // namespace

DemoContents ContentsOf(const Workplace& place, Machine& machine) {
  DemoContents contents;
  const auto billing = SqliteProvider().CreateConnection();
  billing->SetConnectionString(place.billing + ";Mode=Read");
  billing->Open();
  for (const auto table : kTables) AddTable(contents, *billing, table);
  billing->Close();
  DemoContents there;
  for (const auto& kind : kKinds) AddKind(there, place, machine, kind);
  for (auto& [name, text] : there) contents.emplace("QuickBooks' " + name, std::move(text));
  return contents;
}

std::vector<std::string> Differing(const DemoContents& before, const DemoContents& after) {
  std::vector<std::string> names;
  for (const auto& [name, text] : before) {
    const auto found = after.find(name);
    if (found == after.end() || found->second != text) names.push_back(name);
  }
  for (const auto& [name, text] : after) {
    if (!before.contains(name)) names.push_back(name);
  }
  return names;
}

}  // namespace twqb::cli
