#include "bench/CostBases.h"

#include <fmt/format.h>

namespace twqb {

namespace {

constexpr int kLines = 10;
constexpr int kHours = 5;  // so many of them on the activity, the others on the expense code

// What they refer to: an account, vendor, customer, job, and an item for either kind of line.
constexpr int kRecordsAhead = 6;
constexpr int kAccount = 1;
constexpr int kVendor = 2;
constexpr int kJob = 4;
constexpr int kActivityItem = 5;
constexpr int kExpenseItem = 6;

std::string RecordsAheadText() {
  const auto item = [](std::string_view kind, std::string_view name) {
    return fmt::format(
        "<Item{0}AddRq><Item{0}Add><Name>{1}</Name><SalesOrPurchase><AccountRef><ListID>{2}</ListID></AccountRef>"
        "</SalesOrPurchase></Item{0}Add></Item{0}AddRq>",
        kind, name, ListId(kAccount));
  };
  return "<AccountAddRq><AccountAdd><Name>Costs</Name><AccountType>Expense</AccountType></AccountAdd></AccountAddRq>"
         "<VendorAddRq><VendorAdd><Name>Smith</Name></VendorAdd></VendorAddRq>"
         "<CustomerAddRq><CustomerAdd><Name>Acme</Name></CustomerAdd></CustomerAddRq>"
         "<CustomerAddRq><CustomerAdd><Name>Roof</Name><ParentRef><FullName>Acme</FullName></ParentRef></CustomerAdd>"
         "</CustomerAddRq>" +
         item("Service", "Design") + item("OtherCharge", "Travel");
}

void RowsAhead(ado::Connection& cn) {
  const auto sql = [&](const std::string& statement) { cn.Execute(statement, nullptr); };
  sql(fmt::format("INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('SMITH', -1, '{}')", ListId(kVendor)));
  sql(
      fmt::format("INSERT INTO Project (ProjectID, ProjectName, EmployeeID, QBLinkID) VALUES ('ROOF:', 'Roof', "
                  "'SMITH', '{}')",
                  ListId(kJob)));
  sql(fmt::format("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('DESIGN:', '{}')", ListId(kActivityItem)));
  sql(fmt::format("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('TRAVEL:', '{}')", ListId(kExpenseItem)));
}

std::string Guid(int number) { return fmt::format("{{00000000-0000-0000-0000-{:012}}}", number); }
// Of a line of a record, both counted from 1.
int LineNumber(int number, int line) { return (number - 1) * kLines + line; }
std::string LineId(int number, int line) { return TxnId((number - 1) * (kLines + 1) + 1 + line); }

std::string BillLine(int item, int line) {
  return fmt::format(
      "<ItemLineAdd><ItemRef><ListID>{}</ListID></ItemRef><Desc>Trip {}</Desc><Quantity>2</Quantity><Cost>12.50</Cost>"
      "<CustomerRef><ListID>{}</ListID></CustomerRef><BillableStatus>Billable</BillableStatus></ItemLineAdd>",
      ListId(item), line, ListId(kJob));
}

// `hours` of its lines are on the activity.
template <int hours>
std::string Bill(int number) {
  auto request = fmt::format(
      "<BillAddRq><BillAdd><VendorRef><ListID>{}</ListID></VendorRef><TxnDate>2008-03-04</TxnDate><DueDate>2008-04-03"
      "</DueDate><RefNumber>{}</RefNumber>",
      ListId(kVendor), number);
  for (int line = 1; line <= kLines; ++line) request += BillLine(line <= hours ? kActivityItem : kExpenseItem, line);
  return request + "</BillAdd></BillAddRq>";
}

// --- Expenses --------------------------------------------------------------------------------------------------------

std::string PersonOf(int number) { return fmt::format("S{:06}", number); }

std::string ExpenseRows(int number, std::string_view link, std::string_view lastUpdated) {
  std::string rows;
  for (int line = 1; line <= kLines; ++line) {
    rows += fmt::format(
        "{}('{}', '2008-03-04 00:00:00', '{}', 'ROOF:', 'TRAVEL:', 'Trip {}', 2, 12.5, 0, -1, 'N', -1, "
        "-1, {}, {})",
        line == 1 ? "" : ", ", Guid(LineNumber(number, line)), PersonOf(number), line,
        link == "NULL" ? "NULL" : "'" + LineId(number, line) + "'", lastUpdated);
  }
  return "INSERT INTO ExpenseLog (ELID, ELDate, EmployeeID, ProjectID, ExpID, ELDescription, ELUnits, ELCost, "
         "ELMarkup, "
         "ELBillable, ELBilled, ELPosted, isSub, QBLinkID, LastUpdated) VALUES " +
         rows;
}

// Of those whose rows have gone nobody asks any more: a link that all of them share would be looked up with each bill.
std::vector<std::string> PersonRow(int number, std::string_view link) {
  return {fmt::format("INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('{}', -1, {})", PersonOf(number),
                      link == "NULL" ? "'" + ListId(kVendor) + "'" : "NULL")};
}

std::string ExpenseKeys(int number) {
  std::string keys;
  for (int line = 1; line <= kLines; ++line) {
    keys += fmt::format("{}'{}'", line == 1 ? "" : ",", Guid(LineNumber(number, line)));
  }
  return keys;
}

// --- Vendor bills ----------------------------------------------------------------------------------------------------

std::string VendorBillRow(int number, std::string_view link, std::string_view lastUpdated) {
  return fmt::format(
      "INSERT INTO VendorBill (VendorBillID, VendorID, BillNumber, BillDate, BillDueDate, QBLinkID, LastUpdated) "
      "VALUES "
      "('{}', 'SMITH', '{}', '2008-03-04 00:00:00', '2008-04-03 00:00:00', {}, {})",
      Guid(number), number, link, lastUpdated);
}

std::vector<std::string> LinesOfVendorBill(int number, std::string_view /*link*/) {
  std::vector<std::string> rows;
  for (int line = 1; line <= kLines; ++line) {
    const auto key = Guid(LineNumber(number, line));
    rows.push_back(line <= kHours
                       ? fmt::format("INSERT INTO TimeEntry (TEID, VendorBillID, TEDate, EmployeeID, ProjectID, "
                                     "ActivityID, TEHours, TECostRate, TEBill, TEDescription) VALUES ('{}', '{}', "
                                     "'2008-03-04 00:00:00', 'SMITH', 'ROOF:', 'DESIGN:', 2, 12.5, -1, 'Trip {}')",
                                     key, Guid(number), line)
                       : fmt::format("INSERT INTO ExpenseLog (ELID, VendorBillID, ELDate, EmployeeID, ProjectID, "
                                     "ExpID, ELUnits, ELCost, ELBillable, ELDescription) VALUES ('{}', '{}', "
                                     "'2008-03-04 00:00:00', 'SMITH', 'ROOF:', 'TRAVEL:', 2, 12.5, -1, 'Trip {}')",
                                     key, Guid(number), line));
  }
  return rows;
}

// --- Estimates -------------------------------------------------------------------------------------------------------

std::string Estimate(int number) {
  auto request = fmt::format(
      "<EstimateAddRq><EstimateAdd><CustomerRef><ListID>{}</ListID></CustomerRef><TxnDate>2008-03-04</TxnDate>"
      "<RefNumber>E{}</RefNumber>",
      ListId(kJob), number);
  for (int line = 1; line <= kLines; ++line) {
    request += fmt::format(
        "<EstimateLineAdd><ItemRef><ListID>{}</ListID></ItemRef><Desc>Part {}</Desc><Quantity>2</Quantity><Rate>12.50"
        "</Rate></EstimateLineAdd>",
        ListId(line <= kHours ? kActivityItem : kExpenseItem), line);
  }
  return request + "</EstimateAdd></EstimateAddRq>";
}

std::string BudgetRow(int number, std::string_view link, std::string_view lastUpdated) {
  return fmt::format(
      "INSERT INTO Budget (BudgetID, BudgetGroupDesc, IsEstimate, QBLinkID, LastUpdated) VALUES ('E{}', 'From "
      "QuickBooks', -1, {}, {})",
      number, link, lastUpdated);
}

// A budget is never the later side, so that its lines are compared one by one.
std::vector<std::string> LinesOfBudget(int number, std::string_view /*link*/) {
  std::vector<std::string> rows;
  for (int line = 1; line <= kLines; ++line) {
    const auto key = Guid(LineNumber(number, line));
    const auto link = LineId(number, line);
    rows.push_back(
        line <= kHours
            ? fmt::format("INSERT INTO BudgetActivity (BAID, BudgetID, ActivityID, BARate, BAHours, QBLinkID, "
                          "LastUpdated) VALUES ('{}', 'E{}', 'DESIGN:', 12.5, 2, '{}', '{}')",
                          key, number, link, kLater)
            : fmt::format("INSERT INTO BudgetExpense (BEID, BudgetID, ExpID, BEAmt, BEUnits, QBLinkID, LastUpdated) "
                          "VALUES ('{}', 'E{}', 'TRAVEL:', 12.5, 2, '{}', '{}')",
                          key, number, link, kLater));
  }
  return rows;
}

BenchTable OfCosts(enTables table, std::string_view name) {
  return {.table = table,
          .name = name,
          .sends = Sends::NewRecordsAlone,
          .recordsAhead = {.count = kRecordsAhead, .text = RecordsAheadText},
          .identifiers = Identifiers::Transactions,
          .lines = kLines,
          .counted = Counted::Lines,
          .rowsAhead = RowsAhead};
}

}  // namespace

BenchTable ExpensesToMeasure() {
  auto table = OfCosts(enExpenseLog, "expense log");
  table.sends = Sends::UnlinkedRowsAlone;
  table.record = Bill<0>;
  table.row = ExpenseRows;
  table.rowsOfLines = PersonRow;
  table.named = ExpenseKeys;
  return table;
}

BenchTable VendorBillsToMeasure() {
  auto table = OfCosts(enVendorBill, "vendor bills");
  table.record = Bill<kHours>;
  table.row = VendorBillRow;
  table.rowsOfLines = LinesOfVendorBill;
  return table;
}

BenchTable EstimatesToMeasure() {
  auto table = OfCosts(enEstimates, "estimates");
  table.sends = Sends::Nothing;
  table.record = Estimate;
  table.row = BudgetRow;
  table.rowsOfLines = LinesOfBudget;
  return table;
}

}  // namespace twqb
