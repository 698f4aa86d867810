#include "bench/Bases.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "adapters/companyfile/CompanyFile.h"
#include "bench/CostBases.h"
#include "tests/support/BillingSchema.h"
#include "tests/support/Process.h"

namespace twqb {

namespace {

constexpr std::int64_t kCreated = 1204700000;  // of the base's records, in Unix seconds

}  // namespace

std::string ListId(int number) { return fmt::format("{:X}-{}", 0x80000000U + static_cast<unsigned>(number), kCreated); }
std::string TxnId(int number) { return fmt::format("{:X}-{}", number, kCreated); }

namespace {

void Sql(ado::Connection& cn, const std::string& statement) { cn.Execute(statement, nullptr); }

// Of the n-th transaction, where each has so many lines, behind so many identifiers of others.
std::string TxnId(int number, int lines, int others = 0) {
  return twqb::TxnId(others + (number - 1) * (lines + 1) + 1);
}

// --- Employees and vendors -------------------------------------------------------------------------------------------

std::string Employee(int number) {
  return fmt::format(
      "<EmployeeAddRq><EmployeeAdd><FirstName>First{0}</FirstName><LastName>Last{0}</LastName><EmployeeAddress>"
      "<Addr1>{0} Main Street</Addr1><City>Springfield</City><State>IL</State><PostalCode>12345</PostalCode>"
      "</EmployeeAddress><Phone>(207)-555-0100</Phone><Email>e{0}@example.com</Email>"
      "<HiredDate>2007-06-01</HiredDate></EmployeeAdd></EmployeeAddRq>",
      number);
}

std::string Vendor(int number) {
  return fmt::format(
      "<VendorAddRq><VendorAdd><Name>Sub{0} Last{0}</Name><CompanyName>Sub {0}</CompanyName>"
      "<FirstName>Sub{0}</FirstName><LastName>Last{0}</LastName><VendorAddress><Addr1>Sub {0}</Addr1>"
      "<Addr2>{0} Main Street</Addr2><City>Springfield</City><State>IL</State><PostalCode>12345</PostalCode>"
      "</VendorAddress><Phone>(207)-555-0100</Phone><Email>v{0}@example.com</Email></VendorAdd></VendorAddRq>",
      number);
}

enum class Person : bool { Employee, Vendor };

template <Person person>
std::string PersonRow(int number, std::string_view link, std::string_view lastUpdated) {
  constexpr bool isVendor = person == Person::Vendor;
  return fmt::format(
      "INSERT INTO Employee (EmployeeID, IsSub, EmpFName, EmpLName, EmpCompany, EmpStreet, EmpCity, EmpState, EmpZip, "
      "EmpHPhone, EmpEmail, EmpDateHired, Status, QBLinkID, LastUpdated) VALUES ('{1}{0:06}', {2}, '{3}{0}', "
      "'Last{0}', {4}, '{0} Main Street', 'Springfield', 'IL', '12345', '207 555 0100', '{1}{0}@example.com', "
      "'2007-06-01 00:00:00', 'Active', {5}, {6})",
      number, isVendor ? "V" : "E", isVendor ? -1 : 0, isVendor ? "Sub" : "First",
      isVendor ? fmt::format("'Sub {}'", number) : "NULL", link, lastUpdated);
}

// --- Clients ---------------------------------------------------------------------------------------------------------

std::string Customer(int number) {
  return fmt::format(
      "<CustomerAddRq><CustomerAdd><Name>Company {0} (C{0:06})</Name><CompanyName>Company {0}</CompanyName>"
      "<FirstName>First{0}</FirstName><LastName>Last{0}</LastName><BillAddress><Addr1>Company {0}</Addr1>"
      "<Addr2>{0} Main Street</Addr2><City>Springfield</City><PostalCode>12345</PostalCode></BillAddress>"
      "<Phone>(207)-555-0100</Phone><Email>c{0}@example.com</Email></CustomerAdd></CustomerAddRq>",
      number);
}

std::string ClientRow(int number, std::string_view link, std::string_view lastUpdated) {
  return fmt::format(
      "INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientLName, ClientStreet, ClientCity, "
      "ClientZip, ClientPhone, ClientEmail, QBLinkID, LastUpdated) VALUES ('C{0:06}', 'Company {0}', "
      "'First{0}', 'Last{0}', '{0} Main Street', 'Springfield', '12345', '207 555 0100', "
      "'c{0}@example.com', {1}, {2})",
      number, link, lastUpdated);
}

// --- Projects --------------------------------------------------------------------------------------------------------

constexpr int kPhases = 9;
int ProjectOf(int number) { return number - (number - 1) % (kPhases + 1); }

std::string ProjectsCustomer() { return "<CustomerAddRq><CustomerAdd><Name>Acme</Name></CustomerAdd></CustomerAddRq>"; }
void ProjectsClient(ado::Connection& cn) {
  Sql(cn, fmt::format("INSERT INTO Client (ClientID, QBLinkID) VALUES ('ACME', '{}')", ListId(1)));
  Sql(cn, "INSERT INTO Employee (EmployeeID) VALUES ('MHALE')");
}

std::string Job(int number) {
  const int project = ProjectOf(number);
  const bool isPhase = project != number;
  const auto name =
      isPhase ? fmt::format("P{:06}-{} Phase {}", project, number, number) : fmt::format("P{:06}", number);
  return fmt::format(
      "<CustomerAddRq><CustomerAdd><Name>{}</Name><ParentRef><ListID>{}</ListID></ParentRef>"
      "<ShipAddress><Addr1>{} Main Street</Addr1><City>Springfield</City><PostalCode>12345</PostalCode></ShipAddress>"
      "<AltContact>MHALE</AltContact><JobStatus>InProgress</JobStatus><JobStartDate>2007-06-01</JobStartDate>"
      "</CustomerAdd></CustomerAddRq>",
      name, isPhase ? ListId(project + 1) : ListId(1), number);
}

std::string ProjectRow(int number, std::string_view link, std::string_view lastUpdated) {
  return ProjectRowOf(number, "ACME", "MHALE", link, lastUpdated);
}

// --- Activities and expense codes: items of the name "A000001 STD" ---------------------------------------------------

constexpr int kItemAccounts = 2;

std::string ItemAccountRequests() {
  return "<AccountAddRq><AccountAdd><Name>Other Income</Name><AccountType>OtherIncome</AccountType></AccountAdd>"
         "</AccountAddRq><AccountAddRq><AccountAdd><Name>Job "
         "Costs</Name><AccountType>Expense</AccountType></AccountAdd>"
         "</AccountAddRq>";
}

std::string Item(std::string_view kind, char letter, int number, std::string_view cost, std::string_view price) {
  return fmt::format(
      "<Item{0}AddRq><Item{0}Add><Name>{1}{2:06} STD</Name><SalesAndPurchase><SalesDesc>Work of kind {2}</SalesDesc>"
      "<SalesPrice>{4}</SalesPrice><IncomeAccountRef><ListID>{5}</ListID></IncomeAccountRef><PurchaseCost>{3}"
      "</PurchaseCost><ExpenseAccountRef><ListID>{6}</ListID></ExpenseAccountRef></SalesAndPurchase></Item{0}Add>"
      "</Item{0}AddRq>",
      kind, letter, number, cost, price, ListId(1), ListId(2));
}

std::string ServiceItem(int number) { return Item("Service", 'A', number, "40.00", "85.50"); }

std::string ActivityRow(int number, std::string_view link, std::string_view lastUpdated) {
  return fmt::format(
      "INSERT INTO Activity (ActivityID, ActivityCode, ActivitySub, ActivityDescription, AC_CostRate, AC_BillRate, "
      "IsInActive, QBAccountID1, QBAccountID2, QBLinkID, LastUpdated) VALUES ('A{0:06}:STD', 'A{0:06}', 'STD', "
      "'Work of kind {0}', 40, 85.5, 0, '{1}', '{2}', {3}, {4})",
      number, ListId(1), ListId(2), link, lastUpdated);
}

std::string OtherChargeItem(int number) { return Item("OtherCharge", 'X', number, "12.00", "15.00"); }

std::string ExpenseRow(int number, std::string_view link, std::string_view lastUpdated) {
  return fmt::format(
      "INSERT INTO Expense (ExpID, ExpCode, ExpSub, ExpDescription, ExpCost, ExpMarkup, IsInActive, QBAccountID1, "
      "QBAccountID2, QBLinkID, LastUpdated) VALUES ('X{0:06}:STD', 'X{0:06}', 'STD', 'Work of kind {0}', 12, 25, 0, "
      "'{1}', '{2}', {3}, {4})",
      number, ListId(1), ListId(2), link, lastUpdated);
}

// --- Accounts: none has a parent -------------------------------------------------------------------------------------

constexpr int kOtherCurrentAsset = 12;

std::string Account(int number) {
  return fmt::format(
      "<AccountAddRq><AccountAdd><Name>Account {0}</Name><AccountType>OtherCurrentAsset</AccountType>"
      "<AccountNumber>{0:06}</AccountNumber><Desc>Asset of kind {0}</Desc></AccountAdd></AccountAddRq>",
      number);
}

std::string AccountRow(int number, std::string_view link, std::string_view lastUpdated) {
  return fmt::format(
      "INSERT INTO AccountList (AccountID, AccountName, AccountTypeID, AccountDesc, OpenBalance, IsInActive, QBLinkID, "
      "LastUpdated) VALUES ('{0:06}', 'Account {0}', {1}, 'Asset of kind {0}', 0, 0, {2}, {3})",
      number, kOtherCurrentAsset, link, lastUpdated);
}

// --- Time entries: of one employee, on one job, of one item ----------------------------------------------------------

// What they refer to: an account for the item and one for wage items, employee, customer, job, item.
constexpr int kTimeRecords = 6;
constexpr int kTimeEmployee = 3;
constexpr int kTimeJob = 5;
constexpr int kTimeItem = 6;

std::string TimeRequests() {
  return fmt::format(
      "<AccountAddRq><AccountAdd><Name>Other Income</Name><AccountType>OtherIncome</AccountType></AccountAdd>"
      "</AccountAddRq><AccountAddRq><AccountAdd><Name>Payroll Expenses</Name><AccountType>Expense</AccountType>"
      "</AccountAdd></AccountAddRq><EmployeeAddRq><EmployeeAdd><FirstName>Ann</FirstName><LastName>Lee</LastName>"
      "<EmployeePayrollInfo><UseTimeDataToCreatePaychecks>UseTimeData</UseTimeDataToCreatePaychecks>"
      "</EmployeePayrollInfo></EmployeeAdd></EmployeeAddRq><CustomerAddRq><CustomerAdd><Name>Acme</Name></CustomerAdd>"
      "</CustomerAddRq><CustomerAddRq><CustomerAdd><Name>Yard</Name><ParentRef><FullName>Acme</FullName></ParentRef>"
      "</CustomerAdd></CustomerAddRq><ItemServiceAddRq><ItemServiceAdd><Name>Drafting</Name><SalesOrPurchase>"
      "<AccountRef><ListID>{}</ListID></AccountRef></SalesOrPurchase></ItemServiceAdd></ItemServiceAddRq>",
      ListId(1));
}

void TimeRows(ado::Connection& cn) {
  Sql(cn, fmt::format("INSERT INTO Employee (EmployeeID, IsSub, EmpBillRate, EmpCostRate, QBLinkID) VALUES ('ALEE', 0, "
                      "90, 36, '{}')",
                      ListId(kTimeEmployee)));
  Sql(cn, fmt::format("INSERT INTO Project (ProjectID, ProjectName, QBLinkID) VALUES ('YARD:', 'Yard', '{}')",
                      ListId(kTimeJob)));
  Sql(cn, fmt::format("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('DRAFT:', '{}')", ListId(kTimeItem)));
}

std::string TimeEntry(int number) {
  return fmt::format(
      "<TimeTrackingAddRq><TimeTrackingAdd><TxnDate>2008-03-04</TxnDate><EntityRef><ListID>{}</ListID></EntityRef>"
      "<CustomerRef><ListID>{}</ListID></CustomerRef><ItemServiceRef><ListID>{}</ListID></ItemServiceRef>"
      "<Duration>PT7H45M0S</Duration><Notes>Work of day {}</Notes><IsBillable>true</IsBillable></TimeTrackingAdd>"
      "</TimeTrackingAddRq>",
      ListId(kTimeEmployee), ListId(kTimeJob), ListId(kTimeItem), number);
}

std::string TimeEntryRow(int number, std::string_view link, std::string_view lastUpdated) {
  return fmt::format(
      "INSERT INTO TimeEntry (TEID, TEDate, EmployeeID, ProjectID, ProjectName, ActivityID, TEHours, aHours, "
      "TEDescription, TEBill, TEBillRate, TEPosted, QBLinkID, LastUpdated) VALUES "
      "('{{00000000-0000-0000-0000-{0:012}}}', '2008-03-04 00:00:00', 'ALEE', 'YARD:', 'Yard', 'DRAFT:', 7.75, 7.75, "
      "'Work of day {0}', -1, 90, -1, {1}, {2})",
      number, link, lastUpdated);
}

// --- Invoices: of one job, over hours of one activity and expenses of one code ---------------------------------------

// What they refer to: the account that their items book to, customer, job, and an item for either kind of line.
constexpr int kInvoiceRecords = 5;
constexpr int kInvoiceClient = 2;
constexpr int kInvoiceJob = 3;
constexpr int kInvoiceActivity = 4;
constexpr int kInvoiceExpense = 5;

constexpr int kHourPrice = 180;  // two hours at 90
constexpr int kCharge = 20;

std::string InvoiceRequests() {
  return fmt::format(
      "<AccountAddRq><AccountAdd><Name>Other Income</Name><AccountType>OtherIncome</AccountType></AccountAdd>"
      "</AccountAddRq><CustomerAddRq><CustomerAdd><Name>Acme</Name></CustomerAdd></CustomerAddRq><CustomerAddRq>"
      "<CustomerAdd><Name>Roof</Name><ParentRef><FullName>Acme</FullName></ParentRef></CustomerAdd></CustomerAddRq>"
      "<ItemServiceAddRq><ItemServiceAdd><Name>Design</Name><SalesOrPurchase><AccountRef><ListID>{0}</ListID>"
      "</AccountRef></SalesOrPurchase></ItemServiceAdd></ItemServiceAddRq><ItemOtherChargeAddRq><ItemOtherChargeAdd>"
      "<Name>Travel</Name><SalesOrPurchase><AccountRef><ListID>{0}</ListID></AccountRef></SalesOrPurchase>"
      "</ItemOtherChargeAdd></ItemOtherChargeAddRq>",
      ListId(1));
}

void InvoiceRowsAhead(ado::Connection& cn) {
  Sql(cn, fmt::format("INSERT INTO Client (ClientID, ClientCompany, ClientStreet, ClientCity, ClientState, ClientZip, "
                      "QBLinkID) VALUES ('ACME', 'Acme', '1 Main Street', 'Springfield', 'IL', '12345', '{}')",
                      ListId(kInvoiceClient)));
  Sql(cn, fmt::format("INSERT INTO Project (ProjectID, ClientID, ProjectConType, QBLinkID) VALUES ('ROOF:', 'ACME', "
                      "'Hourly', '{}')",
                      ListId(kInvoiceJob)));
  Sql(cn,
      fmt::format("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('DESIGN:', '{}')", ListId(kInvoiceActivity)));
  Sql(cn, fmt::format("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('TRAVEL:', '{}')", ListId(kInvoiceExpense)));
}

// Invoices over so many hours and expenses.
template <int hours, int expenses>
struct Invoices {
  static std::string Record(int number) {
    auto request = fmt::format(
        "<InvoiceAddRq><InvoiceAdd><CustomerRef><ListID>{}</ListID></CustomerRef><TxnDate>2008-03-04</TxnDate>"
        "<RefNumber>{}</RefNumber>",
        ListId(kInvoiceJob), number);
    for (int i = 1; i <= hours; ++i) {
      request += fmt::format(
          "<InvoiceLineAdd><ItemRef><ListID>{}</ListID></ItemRef><Desc>Work of day {}</Desc><Quantity>2</Quantity>"
          "<Rate>90</Rate></InvoiceLineAdd>",
          ListId(kInvoiceActivity), i);
    }
    for (int i = 1; i <= expenses; ++i) {
      request += fmt::format(
          "<InvoiceLineAdd><ItemRef><ListID>{}</ListID></ItemRef><Desc>Trip {}</Desc><Quantity>1</Quantity>"
          "<Amount>{}.00</Amount></InvoiceLineAdd>",
          ListId(kInvoiceExpense), i, kCharge);
    }
    return request + "</InvoiceAdd></InvoiceAddRq>";
  }

  static std::string Row(int number, std::string_view link, std::string_view lastUpdated) {
    constexpr int kServices = hours * kHourPrice;
    constexpr int kExpenses = expenses * kCharge;
    return fmt::format(
        "INSERT INTO TransactionTable (TransactionID, TransactionInvNum, ClientID, ProjectID, InvoiceDate, ServiceAmt, "
        "ExpAmt, TransactionInvBillAmt, QBLinkID, LastUpdated) VALUES ('{{I{0}}}', '{0}', 'ACME', 'ROOF:', "
        "'2008-03-04 00:00:00', {1}, {2}, {3}, {4}, {5})",
        number, kServices, kExpenses, kServices + kExpenses, link, lastUpdated);
  }

  static std::vector<std::string> RowsOfLines(int number, std::string_view /*link*/) {
    std::vector<std::string> rows;
    for (int i = 1; i <= hours; ++i) {
      rows.push_back(
          fmt::format("INSERT INTO TimeEntry (TEID, TransactionID, ActivityID, TEHours, TEBillRate, TEBill, "
                      "TEDescription) VALUES ('{{{0}-{1}}}', '{{I{0}}}', 'DESIGN:', 2, 90, -1, 'Work of day {1}')",
                      number, i));
    }
    for (int i = 1; i <= expenses; ++i) {
      rows.push_back(
          fmt::format("INSERT INTO ExpenseLog (ELID, TransactionID, ExpID, ELUnits, ELCost, ELBillable, "
                      "ELDescription) VALUES ('{{{0}-{1}}}', '{{I{0}}}', 'TRAVEL:', 1, {2}, -1, 'Trip {1}')",
                      number, i, kCharge));
    }
    return rows;
  }
};

// A send makes sure of the items of invoices, which this company file gets in the run.
template <int hours, int expenses>
constexpr BenchTable InvoiceTable(std::string_view name) {
  using Made = Invoices<hours, expenses>;
  return {.table = enInvoices,
          .name = name,
          .sends = Sends::NewRecordsAlone,
          .recordsAhead = {.count = kInvoiceRecords, .text = InvoiceRequests},
          .identifiers = Identifiers::Transactions,
          .lines = hours + expenses,
          .rowsAhead = InvoiceRowsAhead,
          .record = Made::Record,
          .row = Made::Row,
          .rowsOfLines = Made::RowsOfLines};
}

// --- Payments: by check, each of an invoice of its own that it settles -----------------------------------------------

using PaidInvoices = Invoices<1, 0>;

std::string ReceivedPayment(int number) {
  return fmt::format(
      "<ReceivePaymentAddRq><ReceivePaymentAdd><CustomerRef><ListID>{}</ListID></CustomerRef><TxnDate>2008-03-05"
      "</TxnDate><RefNumber>{}</RefNumber><TotalAmount>{}.00</TotalAmount><AppliedToTxnAdd><TxnID>{}</TxnID>"
      "<PaymentAmount>{}.00</PaymentAmount></AppliedToTxnAdd></ReceivePaymentAdd></ReceivePaymentAddRq>",
      ListId(kInvoiceJob), number, kHourPrice, TxnId(number, 1), kHourPrice);
}

std::string PaymentRow(int number, std::string_view link, std::string_view lastUpdated) {
  return fmt::format(
      "INSERT INTO Payment (PayID, ClientID, PayDate, PayAmt, PayMethod, PayRef, QBLinkID, LastUpdated) VALUES "
      "('{{P{0}}}', 'ACME', '2008-03-05 00:00:00', {1}, '1', '{0}', {2}, {3})",
      number, kHourPrice, link, lastUpdated);
}

std::vector<std::string> RowsOfPayment(int number, std::string_view link) {
  return {
      fmt::format("INSERT INTO TransactionTable (TransactionID, PayID, TransactionInvNum, ClientID, ProjectID, "
                  "TransactionDate, TransactionPayAmtApplied, QBLinkID) VALUES ('{{A{0}}}', '{{P{0}}}', '{0}', "
                  "'ACME', 'ROOF:', '2008-03-05 00:00:00', {1}, {2})",
                  number, kHourPrice, link)};
}

constexpr RecordsAhead kItemAccountsAhead = {.count = kItemAccounts, .text = ItemAccountRequests};

const std::array kTables = {
    BenchTable{.table = enEmployees, .name = "employees", .record = Employee, .row = PersonRow<Person::Employee>},
    BenchTable{.table = enVendors, .name = "vendors", .record = Vendor, .row = PersonRow<Person::Vendor>},
    BenchTable{.table = enClients, .name = "clients", .record = Customer, .row = ClientRow},
    BenchTable{.table = enProjects,
               .name = "projects",
               .recordsAhead = {.count = 1, .text = ProjectsCustomer},
               .rowsAhead = ProjectsClient,
               .record = Job,
               .row = ProjectRow},
    BenchTable{.table = enActivities,
               .name = "activities",
               .recordsAhead = kItemAccountsAhead,
               .record = ServiceItem,
               .row = ActivityRow},
    BenchTable{.table = enExpenseCodes,
               .name = "expense codes",
               .recordsAhead = kItemAccountsAhead,
               .record = OtherChargeItem,
               .row = ExpenseRow},
    BenchTable{
        .table = enAccounts, .name = "accounts", .sends = Sends::NewRecordsAlone, .record = Account, .row = AccountRow},
    BenchTable{.table = enTimeEntries,
               .name = "time entries",
               .sends = Sends::UnlinkedRowsAlone,
               .recordsAhead = {.count = kTimeRecords, .text = TimeRequests},
               .identifiers = Identifiers::Transactions,
               .rowsAhead = TimeRows,
               .record = TimeEntry,
               .row = TimeEntryRow},
    InvoiceTable<1, 0>("invoices of 1 line"),
    InvoiceTable<30, 10>("invoices of 40 lines"),
    BenchTable{.table = enPayments,
               .name = "payments",
               .sends = Sends::NewRecordsAlone,
               .recordsAhead = {.count = kInvoiceRecords, .text = InvoiceRequests},
               .identifiers = Identifiers::Transactions,
               .rowsAhead = InvoiceRowsAhead,
               .twinsAhead = {.lines = 1, .record = PaidInvoices::Record, .row = PaidInvoices::Row},
               .record = ReceivedPayment,
               .row = PaymentRow,
               .rowsOfLines = RowsOfPayment},
    ExpensesToMeasure(),
    VendorBillsToMeasure(),
    EstimatesToMeasure(),
};

}  // namespace

const std::span<const BenchTable> kBenchTables = kTables;

const BenchTable& BenchTableOf(enTables table) { return *std::ranges::find(kTables, table, &BenchTable::table); }

RecordsAhead ItemAccounts() { return kItemAccountsAhead; }

std::string ProjectRowOf(int number, std::string_view client, std::string_view manager, std::string_view link,
                         std::string_view lastUpdated) {
  const int project = ProjectOf(number);
  const bool isPhase = project != number;
  const auto phase = isPhase ? std::to_string(number) : std::string();
  const auto parent = isPhase ? fmt::format("'P{:06}:'", project) : std::string("NULL");
  return fmt::format(
      "INSERT INTO Project (ProjectID, ProjectCode, ProjectPhase, ProjectName, ClientID, EmployeeID, ProjectIsPhase, "
      "ParentProjectID, ProjectStatus, ProjectStartDate, ProjectStreet, ProjectCity, ProjectZip, QBLinkID, "
      "LastUpdated) "
      "VALUES ('P{0:06}:{1}', 'P{0:06}', '{1}', '{2}', '{8}', '{9}', {3}, {4}, 'Active', '2007-06-01 00:00:00', "
      "'{5} Main Street', 'Springfield', '12345', {6}, {7})",
      project, phase, isPhase ? fmt::format("Phase {}", number) : fmt::format("P{:06}", number), isPhase ? -1 : 0,
      parent, number, link, lastUpdated, client, manager);
}

int ProjectIndex(int number) { return (number - 1) / (kPhases + 1); }

std::unique_ptr<ado::Connection> OpenBilling(Seams& seams) {
  auto cn = seams.database.CreateConnection();
  cn->SetConnectionString(seams.connectString);
  cn->Open();
  return cn;
}

void MakeBase(const std::string& folder, const BenchTable& table, const Base& base) {
  constexpr int kRequests = 1'000;  // of a document, so that none is too large for the memory
  std::vector<std::string> requests;
  if (table.recordsAhead.text != nullptr) requests.push_back(table.recordsAhead.text());
  const auto request = [&](int count, std::string (*record)(int number)) {
    for (int i = 1; i <= count; ++i) {
      if (i % kRequests == 1) requests.emplace_back();
      requests.back() += record(i);
    }
  };
  const auto& ahead = table.twinsAhead;
  const int twinsAhead = ahead.record == nullptr ? 0 : std::max(base.rows, base.records);
  request(twinsAhead, ahead.record);
  request(base.records, table.record);
  MakeBase(folder, requests, [&](ado::Connection& cn) {
    if (table.rowsAhead != nullptr) table.rowsAhead(cn);
    for (int i = 1; i <= twinsAhead; ++i) {
      Sql(cn, ahead.row(i, fmt::format("'{}'", TxnId(i, ahead.lines)), fmt::format("'{}'", kEarlier)));
    }
    for (int i = 1; i <= base.rows; ++i) {
      const auto twin = table.identifiers == Identifiers::Transactions
                            ? TxnId(i, table.lines, twinsAhead * (ahead.lines + 1))
                            : ListId(table.recordsAhead.count + i);
      const auto link = i <= base.linked ? fmt::format("'{}'", twin) : "NULL";
      Sql(cn, table.row(i, link, fmt::format("'{}'", i <= base.stamped ? kEarlier : base.lastUpdated)));
      if (table.rowsOfLines == nullptr) continue;
      for (const auto& row : table.rowsOfLines(i, link)) Sql(cn, row);
    }
  });
}

void MakeBase(const std::string& folder, const std::vector<std::string>& requests,
              const std::function<void(ado::Connection& cn)>& addRows) {
  Seams seams(folder);
  CreateSqliteDatabase(folder + "/billing.db");
  seams.machine.SetNow(Date::FromUnixSeconds(kCreated).PlusMinutes(-300));
  company::CreateCompanyFile(folder + "/company.twq", {}, seams.machine);
  for (const auto& document : requests) RunRequests(folder, seams.machine, document);
  const auto cn = OpenBilling(seams);
  MakeBillingSchema(*cn);
  Sql(*cn, "BEGIN");
  addRows(*cn);
  Sql(*cn, "COMMIT");
  WriteWholeFile(seams.settings, std::string(kBaseSettings));
}

void RunRequests(const std::string& folder, Machine& machine, const std::string& requests) {
  const auto answer =
      company::CompanyFile(folder + "/company.twq", machine)
          .Process("<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\">" +
                   requests + "</QBXMLMsgsRq></QBXML>");
  const auto refused = answer.find("statusSeverity=\"Error\"");
  if (refused != std::string::npos) throw std::runtime_error(answer.substr(refused, 200));
}

}  // namespace twqb
