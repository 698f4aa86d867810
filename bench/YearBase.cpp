#include "bench/YearBase.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "adapters/companyfile/CompanyFile.h"
#include "bench/Bases.h"
#include "tests/support/BillingSchema.h"
#include "tests/support/Process.h"

namespace twqb {

namespace {

constexpr int kHours = 20;           // entries on an invoice
constexpr int kExpenses = 4;         // on an invoice, and on a bill
constexpr int kInvoicesOfABill = 4;  // one bill comes in the time of so many
constexpr int kInvoicesOfAnEstimate = 20;
constexpr int kLinesOfAnEstimate = 10;
constexpr int kPhases = 10;                            // one in ten is a project, the others are its phases
constexpr int kTotal = kHours * 171 + kExpenses * 20;  // two hours at 85.50, an expense of 20

// Round a list of so many, counted from 1.
int Round(int number, int length) { return (number - 1) % length + 1; }

std::string DayOf(int number) {
  constexpr int kMonths = 12;
  constexpr int kDays = 28;
  return fmt::format("2007-{:02}-{:02} 00:00:00", number % kMonths + 1, number % kDays + 1);
}

// Each row is a value list of one statement, so that a year is made in seconds.
class RowsOfTable {
 public:
  RowsOfTable(ado::Connection& cn, std::string head) : cn_(cn), head_(std::move(head)) {}
  ~RowsOfTable() = default;
  RowsOfTable(const RowsOfTable&) = delete;
  RowsOfTable& operator=(const RowsOfTable&) = delete;

  void Add(const std::string& values) {
    constexpr std::size_t kLongest = 100'000;  // characters
    text_ += (text_.empty() ? "(" : ", (") + values + ")";
    if (text_.size() > kLongest) Flush();
  }
  void Flush() {
    if (!text_.empty()) cn_.Execute(fmt::format("INSERT INTO {} VALUES {}", head_, text_), nullptr);
    text_.clear();
  }

 private:
  ado::Connection& cn_;
  std::string head_;
  std::string text_;
};

void MakeLists(ado::Connection& cn, const Year& year) {
  const auto date = fmt::format("'{}'", kEarlier);
  for (const auto& table : kBenchTables) {
    if (table.table > enAccounts) continue;
    for (int i = 1; i <= year.Records(table.table); ++i) {
      if (table.table == enProjects) {
        const auto client = fmt::format("C{:06}", Round(ProjectIndex(i) + 1, year.Records(enClients)));
        const auto manager = fmt::format("E{:06}", Round(ProjectIndex(i) + 1, year.Records(enEmployees)));
        cn.Execute(ProjectRowOf(i, client, manager, "NULL", date), nullptr);
      } else {
        cn.Execute(table.row(i, "NULL", date), nullptr);
      }
    }
  }
  cn.Execute("UPDATE Project SET ProjectConType = 'Hourly'", nullptr);
}

// The project and the client of an invoice.
struct Payer {
  std::string project;
  std::string client;
};
Payer PayerOf(int invoice, const Year& year) {
  const int index = Round(invoice, year.Records(enProjects) / kPhases) - 1;
  return {.project = fmt::format("P{:06}:", index * kPhases + 1),
          .client = fmt::format("C{:06}", Round(index + 1, year.Records(enClients)))};
}

std::string Activity(int number, const Year& year) {
  return fmt::format("A{:06}:STD", Round(number, year.Records(enActivities)));
}
std::string Code(int number, const Year& year) {
  return fmt::format("X{:06}:STD", Round(number, year.Records(enExpenseCodes)));
}

void MakeInvoices(ado::Connection& cn, const Year& year) {
  RowsOfTable hours(
      cn,
      "TimeEntry (TEID, TEDate, EmployeeID, isSub, ProjectID, ActivityID, TEHours, aHours, TEDescription, TEBill, "
      "TEBillRate, TEPosted, TransactionID)");
  RowsOfTable expenses(cn,
                       "ExpenseLog (ELID, ELDate, EmployeeID, isSub, ProjectID, ExpID, ELDescription, ELUnits, ELCost, "
                       "ELBillable, ELPosted, TransactionID)");
  RowsOfTable invoices(
      cn,
      "TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, ServiceAmt, "
      "ExpAmt, TransactionInvBillAmt)");
  RowsOfTable payments(cn, "Payment (PayID, ClientID, PayDate, PayAmt, PayMethod, PayRetainer, PayRef)");
  RowsOfTable applied(
      cn,
      "TransactionTable (TransactionID, PayID, TransactionInvNum, ClientID, ProjectID, TransactionDate, "
      "TransactionPayAmtApplied)");
  for (int i = 1; i <= year.invoices; ++i) {
    const auto payer = PayerOf(i, year);
    const auto day = DayOf(i);
    for (int line = 1; line <= kHours; ++line) {
      const int number = (i - 1) * kHours + line;
      hours.Add(fmt::format("'{{H{}}}', '{}', 'E{:06}', 0, '{}', '{}', 2, 2, 'Work of day {}', -1, 85.5, -1, '{{I{}}}'",
                            number, day, Round(number, year.Records(enEmployees)), payer.project,
                            Activity(number, year), line, i));
    }
    for (int line = 1; line <= kExpenses; ++line) {
      const int number = (i - 1) * kExpenses + line;
      expenses.Add(fmt::format("'{{X{}}}', '{}', 'E{:06}', 0, '{}', '{}', 'Trip {}', 1, 20, -1, -1, '{{I{}}}'", number,
                               day, Round(number, year.Records(enEmployees)), payer.project, Code(number, year), line,
                               i));
    }
    invoices.Add(fmt::format("'{{I{0}}}', '{0}', '{1}', '{2}', '{3}', {4}, {5}, {6}", i, payer.client, payer.project,
                             day, kTotal - kExpenses * 20, kExpenses * 20, kTotal));
    payments.Add(fmt::format("'{{P{0}}}', '{1}', '{2}', {3}, '1', 0, '{0}'", i, payer.client, day, kTotal));
    applied.Add(fmt::format("'{{A{0}}}', '{{P{0}}}', '{0}', '{1}', '{2}', '{3}', {4}", i, payer.client, payer.project,
                            day, kTotal));
  }
  for (auto* rows : {&hours, &expenses, &invoices, &payments, &applied}) rows->Flush();
}

void MakeBills(ado::Connection& cn, const Year& year) {
  RowsOfTable bills(cn, "VendorBill (VendorBillID, VendorID, BillNumber, BillDate, BillDueDate)");
  RowsOfTable lines(
      cn,
      "ExpenseLog (ELID, ELDate, EmployeeID, isSub, ProjectID, ExpID, ELDescription, ELUnits, ELCost, ELBillable, "
      "ELPosted, VendorBillID)");
  for (int i = 1; i <= year.Records(enVendorBill); ++i) {
    const auto vendor = fmt::format("V{:06}", Round(i, year.Records(enVendors)));
    const auto day = DayOf(i);
    bills.Add(fmt::format("'{{V{0}}}', '{1}', 'B{0}', '{2}', '{2}'", i, vendor, day));
    for (int line = 1; line <= kExpenses; ++line) {
      const int number = (i - 1) * kExpenses + line;
      lines.Add(fmt::format("'{{B{}}}', '{}', '{}', -1, '{}', '{}', 'Part {}', 2, 12.5, -1, -1, '{{V{}}}'", number, day,
                            vendor, PayerOf(i, year).project, Code(number, year), line, i));
    }
  }
  bills.Flush();
  lines.Flush();
}

int LinkedRows(ado::Connection& cn, std::string_view table, std::string_view condition) {
  const auto rows =
      cn.Execute(fmt::format("SELECT COUNT(*) FROM {} WHERE QBLinkID <> '' AND {}", table, condition), nullptr);
  return std::stoi(ToText(rows->FieldAt(0)));
}

std::vector<std::string> Links(ado::Connection& cn, const std::string& statement) {
  std::vector<std::string> links;
  const auto rows = cn.Execute(statement, nullptr);
  for (; !rows->Eof(); rows->MoveNext()) links.push_back(ToText(rows->FieldAt(0)));
  if (links.empty()) throw std::runtime_error("nothing of the year was sent");
  return links;
}

std::string EstimateAdd(int number, const std::string& job, const std::vector<std::string>& items) {
  auto request = fmt::format(
      "<EstimateAddRq><EstimateAdd><CustomerRef><ListID>{}</ListID></CustomerRef><TxnDate>2007-06-01</TxnDate>"
      "<RefNumber>E{}</RefNumber>",
      job, number);
  for (int line = 1; line <= kLinesOfAnEstimate; ++line) {
    request += fmt::format(
        "<EstimateLineAdd><ItemRef><ListID>{}</ListID></ItemRef><Desc>Part {}</Desc><Quantity>2</Quantity><Rate>12.50"
        "</Rate></EstimateLineAdd>",
        items[static_cast<std::size_t>(line) % items.size()], line);
  }
  return request + "</EstimateAdd></EstimateAddRq>";
}

}  // namespace

int Year::Records(enTables table) const {
  switch (table) {
    case enEmployees:
    case enVendors:
      return std::max(5, invoices / 50);
    case enClients:
      return std::max(10, invoices / 5);
    case enProjects:
      return 3 * Records(enClients) / kPhases * kPhases;
    case enActivities:
    case enExpenseCodes:
    case enAccounts:
      return std::max(5, invoices / 25);
    case enTimeEntries:
      return kHours * invoices;
    case enInvoices:
    case enPayments:
      return invoices;
    case enVendorBill:
      return invoices / kInvoicesOfABill;
    case enEstimates:
      return invoices / kInvoicesOfAnEstimate;
    default:
      return 0;
  }
}

int Year::Expenses() const { return kExpenses * (invoices + Records(enVendorBill)); }

void MakeYear(const std::string& folder, const Year& year) {
  const std::string payroll =
      "<AccountAddRq><AccountAdd><Name>Payroll Expenses</Name><AccountType>Expense</AccountType></AccountAdd>"
      "</AccountAddRq>";
  MakeBase(folder, {ItemAccounts().text() + payroll}, [&](ado::Connection& cn) {
    MakeLists(cn, year);
    MakeInvoices(cn, year);
    MakeBills(cn, year);
  });
}

void CheckYear(const std::string& folder, const Year& year) {
  Seams seams(folder);
  const auto cn = OpenBilling(seams);
  // A send makes sure of items and accounts of its own, which come in with the lists.
  enum class Rows : bool { Exactly, AtLeast };
  const auto expect = [&](Rows rows, int expected, std::string_view table, std::string_view condition = "1 = 1") {
    const int found = LinkedRows(*cn, table, condition);
    if (found == expected || (rows == Rows::AtLeast && found > expected)) return;
    throw std::runtime_error(fmt::format("{} rows of {} are linked, not {}", found, table, expected));
  };
  expect(Rows::Exactly, year.Records(enTimeEntries), "TimeEntry");
  expect(Rows::Exactly, year.Records(enInvoices), "TransactionTable", "PayID IS NULL");
  expect(Rows::Exactly, year.Records(enPayments), "Payment");
  expect(Rows::Exactly, year.Records(enVendorBill), "VendorBill");
  expect(Rows::Exactly, year.Records(enEmployees), "Employee", "IsSub = 0");
  expect(Rows::Exactly, year.Records(enVendors), "Employee", "IsSub <> 0");
  expect(Rows::Exactly, year.Records(enClients), "Client");
  expect(Rows::AtLeast, year.Records(enProjects), "Project");
  expect(Rows::AtLeast, year.Records(enActivities), "Activity");
  expect(Rows::AtLeast, year.Records(enExpenseCodes), "Expense");
  expect(Rows::AtLeast, year.Records(enAccounts), "AccountList");
}

void MakeYearToGet(const std::string& folder, const std::string& sent, const Year& year) {
  std::filesystem::copy_file(sent + "/company.twq", folder + "/company.twq");
  Seams before(sent);
  const auto there = OpenBilling(before);
  const auto jobs = Links(*there, "SELECT QBLinkID FROM Project WHERE ProjectIsPhase = 0 ORDER BY ProjectID");
  const auto items = Links(*there, "SELECT QBLinkID FROM Activity ORDER BY ActivityID");
  std::string requests;
  for (int i = 1; i <= year.Records(enEstimates); ++i) {
    requests += EstimateAdd(i, jobs[static_cast<std::size_t>(i) % jobs.size()], items);
  }
  Seams seams(folder);
  RunRequests(folder, seams.machine, requests);
  CreateSqliteDatabase(folder + "/billing.db");
  MakeBillingSchema(*OpenBilling(seams));
  WriteWholeFile(seams.settings, std::string(kBaseSettings));
}

}  // namespace twqb
