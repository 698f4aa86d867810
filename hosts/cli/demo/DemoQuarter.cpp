#include "cli/demo/DemoQuarter.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <pugixml.hpp>
#include <sstream>

#include "adapters/companyfile/CompanyFile.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "cli/workplace/CompanyAnswer.h"
#include "cli/workplace/SampleTexts.h"
#include "messages/ValueFormat.h"
#include "platform/Value.h"

namespace twqb::cli {

namespace {

// When the firm's lists, as they stand ahead of the quarter, were last looked after.
constexpr std::string_view kBegins = "2007-12-01";
constexpr std::string_view kAhead = "2007-11-30 12:00:00";

// A table whose rows come with time, and the date of a row. What hangs on another row stands ahead of it.
struct DatedTable {
  std::string_view name;
  std::string_view date;
};
constexpr std::array kDated = {
    DatedTable{.name = "ManInvDetail",
               .date = "(SELECT InvoiceDate FROM LaterTransactionTable AS invoice WHERE invoice.TransactionID = "
                       "LaterManInvDetail.TransactionID)"},
    DatedTable{.name = "TransactionTable", .date = "COALESCE(InvoiceDate, TransactionDate)"},
    DatedTable{.name = "TimeEntry", .date = "TEDate"},
    DatedTable{.name = "ExpenseLog", .date = "ELDate"},
    DatedTable{.name = "VendorBill", .date = "BillDate"},
    DatedTable{.name = "Payment", .date = "PayDate"},
};

// A table whose rows are there from the beginning, and are changed now and then.
struct ListTableOfTheFirm {
  std::string_view name;
  std::string_view key;
};
constexpr std::array kLists = {
    ListTableOfTheFirm{.name = "Employee", .key = "EmployeeID"},
    ListTableOfTheFirm{.name = "Client", .key = "ClientID"},
    ListTableOfTheFirm{.name = "Project", .key = "ProjectID"},
    ListTableOfTheFirm{.name = "Activity", .key = "ActivityID"},
    ListTableOfTheFirm{.name = "Expense", .key = "ExpID"},
    ListTableOfTheFirm{.name = "AccountList", .key = "AccountID"},
};

constexpr std::string_view kMethods =
    "CASE PayMethod WHEN '1' THEN 'check' WHEN '2' THEN 'cash' WHEN '3' THEN 'a credit' WHEN '4' THEN 'written "
    "off' WHEN '5' THEN 'barter' WHEN '6' THEN 'a debit' WHEN '7' THEN 'credit card' WHEN '8' THEN 'bank transfer' "
    "WHEN "
    "'9' THEN 'money order' WHEN 'A' THEN 'out of the retainer' ELSE 'payment' END";

// The company behind the key of a row, or a person's name, or the key.
std::string WhoIs(std::string_view table, std::string_view keyColumn, std::string_view company, std::string_view key) {
  return fmt::format("COALESCE((SELECT NULLIF({}, '') FROM {} AS who WHERE who.{} = {}), {})", company, table,
                     keyColumn, key, key);
}

// A payment that goes to no invoice: SampleRetainerAtTheDesk stands for it.
bool IsRetainer(pugi::xml_node request) {
  const auto payment = request.child("ReceivePaymentAdd");
  return payment && !payment.child("AppliedToTxnAdd");
}

std::string Text(pugi::xml_node node) {
  std::ostringstream text;
  node.print(text, "", pugi::format_raw);
  return text.str();
}

// Of a field of BillingDb.
Currency MoneyOf(const std::string& text) { return Currency::FromDouble(text.empty() ? 0 : TextToNumber(text)); }

Currency AmountOf(const std::string& text) { return messages::ParseAmount(text).value_or(Currency()); }

// What a record of QuickBooks comes to, by whatever name.
Currency AmountOf(pugi::xml_node record) {
  if (const auto subtotal = record.child("Subtotal")) {
    return AmountOf(std::string(subtotal.child_value())) + AmountOf(std::string(record.child_value("SalesTaxTotal")));
  }
  for (const auto* name : {"TotalAmount", "AmountDue", "Amount"}) {
    if (const auto amount = record.child(name)) return AmountOf(std::string(amount.child_value()));
  }
  return {};
}

DemoPaper PaperOf(pugi::xml_node record) {
  const std::string name = record.name();
  DemoPaper paper{.kind = name.substr(0, name.size() - std::string_view("Ret").size()),
                  .number = record.child_value("RefNumber"),
                  .who = {},
                  .what = record.child_value("Memo"),
                  .amount = AmountOf(record)};
  for (const auto* payer : {"CustomerRef", "PayeeEntityRef", "VendorRef"}) {
    if (const auto found = record.child(payer)) paper.who = found.child_value("FullName");
  }
  return paper;
}

}  // namespace

DemoQuarter::DemoQuarter(const Workplace& place, Machine& machine)
    : billing_(SqliteProvider().CreateConnection()),
      company_(std::make_unique<company::CompanyFile>(place.company, machine)) {
  billing_->SetConnectionString(place.billing);
  billing_->Open();
  Run("BEGIN");
  for (const auto& table : kDated) {
    Run(fmt::format("CREATE TEMP TABLE Later{0} AS SELECT * FROM {0} ORDER BY rowid", table.name));
    Run(fmt::format("DELETE FROM {}", table.name));
  }
  for (const auto& list : kLists) {
    Run(
        fmt::format("CREATE TEMP TABLE Later{0} AS SELECT {1} AS Named, LastUpdated AS Changed FROM {0} "
                    "WHERE LastUpdated >= '{2}'",
                    list.name, list.key, kBegins));
    Run(fmt::format("UPDATE {} SET LastUpdated = '{}' WHERE LastUpdated >= '{}'", list.name, kAhead, kBegins));
  }
  Run("COMMIT");
  for (const auto text : {SampleTime(), SampleMoney(), SampleCosts(), SampleTaxedMoney()}) {
    pugi::xml_document document;
    document.load_buffer(text.data(), text.size());
    for (const auto& request : document.child("QBXML").child("QBXMLMsgsRq")) {
      if (request.type() != pugi::node_element || IsRetainer(request)) continue;
      requests_.push_back({.date = request.first_child().child_value("TxnDate"), .text = Text(request)});
    }
  }
}

DemoQuarter::~DemoQuarter() = default;

void DemoQuarter::Run(const std::string& statement) { billing_->Execute(statement, nullptr); }

std::vector<std::vector<std::string>> DemoQuarter::Rows(const std::string& statement) {
  std::vector<std::vector<std::string>> found;
  const auto rows = billing_->Execute(statement, nullptr);
  for (; !rows->Eof(); rows->MoveNext()) {
    auto& row = found.emplace_back();
    for (int i = 0; i < rows->FieldCount(); ++i) {
      const auto value = rows->FieldAt(i);
      row.push_back(IsNull(value) ? std::string() : ToText(value));
    }
  }
  return found;
}

void DemoQuarter::TellBilling(DemoArrivals& arrivals, std::string_view day) {
  const auto count = [](const std::string& text) { return TextToInteger(text.empty() ? "0" : text); };
  const auto hours =
      Rows(fmt::format("SELECT COUNT(*), SUM(TEHours) FROM LaterTimeEntry WHERE TEDate < '{}'", day)).front();
  arrivals.hourEntries = count(hours[0]);
  arrivals.hours = hours[1];
  const auto expenses =
      Rows(
          fmt::format("SELECT COUNT(*), SUM(ROUND(ELUnits * ELCost, 2)) FROM LaterExpenseLog WHERE ELDate < '{}'", day))
          .front();
  arrivals.expenses = count(expenses[0]);
  arrivals.spent = MoneyOf(expenses[1]);
  for (const auto& list : kLists) {
    arrivals.revised +=
        count(Rows(fmt::format("SELECT COUNT(*) FROM Later{} WHERE Changed < '{}'", list.name, day)).front().front());
  }
  const auto take = [&](std::vector<DemoPaper>& papers, const std::string& statement) {
    for (const auto& row : Rows(statement)) {
      papers.push_back({.kind = row[0], .number = row[1], .who = row[2], .what = row[3], .amount = MoneyOf(row[4])});
    }
  };
  const auto client = WhoIs("Client", "ClientID", "ClientCompany", "later.ClientID");
  take(arrivals.invoices,
       fmt::format("SELECT '', TransactionInvNum, {}, ProjectID, TransactionInvBillAmt FROM LaterTransactionTable AS "
                   "later WHERE PayID IS NULL AND InvoiceDate < '{}' ORDER BY InvoiceDate, TransactionInvNum",
                   client, day));
  take(arrivals.payments,
       fmt::format("SELECT CASE PayRetainer WHEN 0 THEN {} ELSE 'retainer' END, PayRef, {}, (SELECT "
                   "group_concat(TransactionInvNum, ', ') FROM LaterTransactionTable AS applied WHERE applied.PayID = "
                   "later.PayID AND later.PayRetainer = 0), PayAmt FROM LaterPayment AS later WHERE PayDate < '{}' "
                   "ORDER BY PayDate, rowid",
                   kMethods, client, day));
  take(
      arrivals.bills,
      fmt::format("SELECT '', BillNumber, {}, '', (SELECT SUM(ROUND(ELUnits * ELCost, 2)) FROM LaterExpenseLog AS line "
                  "WHERE line.VendorBillID = later.VendorBillID) FROM LaterVendorBill AS later WHERE BillDate < '{}' "
                  "ORDER BY BillDate, rowid",
                  WhoIs("Employee", "EmployeeID", "EmpCompany", "later.VendorID"), day));
}

void DemoQuarter::EnterInBilling(std::string_view day) {
  Run("BEGIN");
  for (const auto& table : kDated) {
    const auto come = fmt::format("FROM Later{} WHERE {} < '{}'", table.name, table.date, day);
    Run(fmt::format("INSERT INTO {} SELECT * {} ORDER BY rowid", table.name, come));
    Run(fmt::format("DELETE {}", come));
  }
  for (const auto& list : kLists) {
    Run(
        fmt::format("UPDATE {0} SET LastUpdated = (SELECT Changed FROM Later{0} WHERE Named = {0}.{1}) WHERE {1} IN "
                    "(SELECT Named FROM Later{0} WHERE Changed < '{2}')",
                    list.name, list.key, day));
    Run(fmt::format("DELETE FROM Later{} WHERE Changed < '{}'", list.name, day));
  }
  Run("COMMIT");
}

void DemoQuarter::EnterInQuickBooks(DemoArrivals& arrivals, std::string_view day) {
  const auto later = std::stable_partition(requests_.begin(), requests_.end(),
                                           [day](const Request& request) { return request.date < day; });
  std::string set;
  std::for_each(requests_.begin(), later, [&set](const Request& request) { set += request.text; });
  requests_.erase(requests_.begin(), later);
  if (set.empty()) return;
  const auto answer = company_->Process(
      fmt::format("<?xml version=\"1.0\" encoding=\"utf-8\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq "
                  "onError=\"stopOnError\">{}</QBXMLMsgsRq></QBXML>",
                  set));
  pugi::xml_document document;
  document.load_buffer(answer.data(), answer.size());
  for (const auto& response : document.child("QBXML").child("QBXMLMsgsRs")) {
    RequireTaken(response);
    const auto record = response.first_child();
    const std::string_view kind = record.name();
    if (kind == "PayrollItemWageRet") continue;
    if (kind == "TimeTrackingRet") {
      ++arrivals.bookedHours;
    } else {
      arrivals.booked.push_back(PaperOf(record));
    }
  }
}

DemoArrivals DemoQuarter::Until(std::string_view day) {
  DemoArrivals arrivals;
  TellBilling(arrivals, day);
  EnterInBilling(day);
  EnterInQuickBooks(arrivals, day);
  return arrivals;
}

}  // namespace twqb::cli
