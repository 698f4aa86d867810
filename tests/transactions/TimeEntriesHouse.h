// A house in which the routines of time entries are called as the dispatcher calls them, with a project, an employee
// and an activity that are in QuickBooks, and the account that wage items pay from.
#pragma once

#include <algorithm>
#include <map>

#include "bridge/modTWQBBridge.h"
#include "services/Database.h"
#include "tests/lists/ListHouse.h"
#include "transactions/modTimeEntry.h"

namespace twqb {

inline constexpr TestedTable kTestedTimeEntries = {.table = enTimeEntries,
                                                   .name = "TimeEntry",
                                                   .keyColumn = "TEID",
                                                   .toQB = MoveTimeEntryToQB,
                                                   .toTW = MoveTimeEntriesToTW};

using Columns = std::map<std::string, std::string>;  // as SQL expressions
using Texts = std::vector<std::string>;

// A time-tracking record as QuickBooks returns it. An empty element is left out.
struct Returned {
  std::string txnId = "1-1";
  std::string entity = "<ListID>E-1</ListID><FullName>Ann Lee</FullName>";
  std::string customer = "<ListID>P-1</ListID><FullName>Acme:Roof</FullName>";
  std::string item = "<ListID>A-1</ListID><FullName>Design</FullName>";
  std::string duration = "PT2H30M0S";
  std::string behind = {};  // Notes, IsBillable, IsBilled

  [[nodiscard]] std::string Text() const {
    return "<TimeTrackingRet><TxnID>" + txnId + "</TxnID><TxnDate>2008-03-04</TxnDate>" + Element("EntityRef", entity) +
           Element("CustomerRef", customer) + Element("ItemServiceRef", item) + Element("Duration", duration) + behind +
           "</TimeTrackingRet>";
  }

 private:
  static std::string Element(const std::string& name, const std::string& inside) {
    return inside.empty() ? std::string() : "<" + name + ">" + inside + "</" + name + ">";
  }
};

class TimeEntriesHouse : public ListHouse {
 public:
  explicit TimeEntriesHouse(HouseOptions options = {}, std::string_view faults = {}, std::string_view country = "US")
      : ListHouse(kTestedTimeEntries, WithFile(std::move(options), country), faults, country) {
    pull = GetTableFromQB;
    EnterSpied();
    Connect(country);
    Add("Account", "<Name>Payroll Expenses</Name><AccountType>Expense</AccountType>");
    Add("Account", "<Name>Sales</Name><AccountType>Income</AccountType>");
    client = AddCustomer("<Name>Acme</Name>", Tag());
    job = AddCustomer("<Name>Roof</Name><ParentRef><ListID>" + client + "</ListID></ParentRef>", Tag());
    employee = Add("Employee",
                   "<FirstName>Ann</FirstName><LastName>Lee</LastName><EmployeePayrollInfo>"
                   "<IsUsingTimeDataToCreatePaychecks>true</IsUsingTimeDataToCreatePaychecks></EmployeePayrollInfo>");
    item = Add("ItemService",
               "<Name>Design</Name><SalesOrPurchase><AccountRef><FullName>Sales</FullName></AccountRef>"
               "</SalesOrPurchase>");
    Sql("INSERT INTO Project (ProjectID, ProjectName, QBLinkID) VALUES ('ROOF:', 'The roof', '" + job + "')");
    Sql("INSERT INTO Employee (EmployeeID, QBLinkID) VALUES ('AL', '" + employee + "')");
    Activity("DESIGN:", item);
    Clear();
  }

  void Activity(std::string_view key, std::string_view link) {
    Sql("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('" + std::string(key) + "', '" + std::string(link) + "')");
  }
  // A posted entry of an hour, which nothing is the matter with; `changed` says what is.
  void Entry(std::string_view key, const Columns& changed = {}) {
    Columns columns = {{"TEDate", "'2008-03-04'"}, {"ProjectID", "'ROOF:'"},      {"EmployeeID", "'AL'"},
                       {"TEHours", "1"},           {"ActivityID", "'DESIGN:'"},   {"TEPosted", "-1"},
                       {"TEBill", "-1"},           {"TEDescription", "'Drawing'"}};
    for (const auto& [name, value] : changed) columns[name] = value;
    std::string names = "TEID";
    std::string values = "'" + std::string(key) + "'";
    for (const auto& [name, value] : columns) {
      names += ", " + name;
      values += ", " + value;
    }
    Row(names, values);
  }
  [[nodiscard]] std::string LinkOf(std::string_view key) { return ColumnOf(key, "QBLinkID"); }
  // The links of the entries of those keys are there, or are not.
  [[nodiscard]] bool IsSent(std::string_view key) {
    const auto link = LinkOf(key);
    return link != "NULL" && !link.empty();
  }
  void Switch(std::string_view key, std::string_view value = "1") {
    Setting("QBSEND", "_Time Entries" + std::string(key), value);
  }
  void Choice(int entryType, std::string_view chosen) {
    Sql(fmt::format("INSERT INTO QBPayroll (EmployeeID, EntryType, PayrollItem) VALUES ('AL', {}, '{}')", entryType,
                    chosen));
  }

  // What goes on the wire for an entry, without asking QuickBooks; columns that are not given are NULL.
  std::string Fields(const Columns& columns) {
    auto set = NewSet();
    Assign(set.Append("TimeTrackingAddRq"), columns);
    const auto xml = set.ToXMLString();
    const std::string open = "<TimeTrackingAdd>";
    const auto from = xml.find(open);
    if (from == std::string::npos) return {};
    return xml.substr(from + open.size(), xml.find("</TimeTrackingAdd>") - from - open.size());
  }
  std::string Field(const Columns& columns, std::string_view element) { return TextOf(Fields(columns), element); }
  // The same of the request object: what the routine set, whether the wire knows it or not.
  std::string Assigned(const Columns& columns, std::string_view field) {
    auto set = NewSet();
    const auto request = set.Append("TimeTrackingAddRq");
    Assign(request, columns);
    return request[field].IsSet() ? request[field].GetValue() : "(none)";
  }
  // The payroll item for an entry.
  std::string ItemFor(const Columns& columns) {
    const auto fields = Fields(columns);
    return TextOf(fields.substr(fields.find("<PayrollItemWageRef>")), "FullName");
  }

  // Rows that returned records are linked to: P-1, A-1, E-1.
  void LinkTo(std::string_view table, std::string_view key, std::string_view link) {
    Sql(fmt::format("UPDATE {0} SET QBLinkID = '{2}' WHERE {0}ID = '{1}'", table, key, link));
  }
  void LinkAll() {
    LinkTo("Project", "ROOF:", "P-1");
    LinkTo("Employee", "AL", "E-1");
    LinkTo("Activity", "DESIGN:", "A-1");
  }
  // The get of records that QuickBooks is made to return.
  void GetReturned(const std::vector<Returned>& records) {
    std::string text;
    for (const auto& record : records) text += record.Text();
    traffic.canned.push_back(
        "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><TimeTrackingQueryRs requestID=\"1\" statusCode=\"0\" "
        "statusSeverity=\"Info\" statusMessage=\"Status OK\">" +
        text + "</TimeTrackingQueryRs></QBXMLMsgsRs></QBXML>");
    Get();
  }
  // A column of the row that a returned record became; "(no row)" without one.
  [[nodiscard]] std::string Got(std::string_view column, std::string_view txnId = "1-1") {
    return Scalar(fmt::format("SELECT {} FROM TimeEntry WHERE QBLinkID = '{}'", column, txnId));
  }
  // Adds a time-tracking transaction to the company file; its TxnID.
  std::string Track(std::string_view customerId) {
    const auto answer = Company(
        fmt::format("<TimeTrackingAddRq><TimeTrackingAdd><TxnDate>2008-03-04</TxnDate><EntityRef><ListID>{}</ListID>"
                    "</EntityRef><CustomerRef><ListID>{}</ListID></CustomerRef><ItemServiceRef><ListID>{}</ListID>"
                    "</ItemServiceRef><Duration>PT1H0M0S</Duration></TimeTrackingAdd></TimeTrackingAddRq>",
                    employee, customerId, item),
        Tag());
    EXPECT_NE(answer.find("statusCode=\"0\""), std::string::npos) << answer;
    return TextOf(answer, "TxnID");
  }

  [[nodiscard]] bool Asked(std::string_view statement) const {
    return std::ranges::find(traffic.statements, statement) != traffic.statements.end();
  }
  // The statements that begin so, in order.
  [[nodiscard]] Texts Statements(std::string_view beginning) const {
    Texts found;
    for (const auto& statement : traffic.statements) {
      if (statement.starts_with(beginning)) found.push_back(statement);
    }
    return found;
  }
  void Clear() {
    traffic.statements.clear();
    traffic.documents.clear();
  }

  std::string client;    // ListIDs
  std::string job;       //
  std::string employee;  //
  std::string item;      //

 private:
  static HouseOptions WithFile(HouseOptions options, std::string_view country) {
    if (country == "CA") options.company.country = messages::Country::CA;
    if (country == "UK") options.company.country = messages::Country::UK;
    return options;
  }
  static MsgSetRequest NewSet() {
    const auto& country = Vars().g_QBCountry;
    return Session().CreateMsgSetRequest(country == "CA" || country == "UK" ? country : "US", 3, 0);
  }
  static void Assign(const RequestField& request, const Columns& columns) {
    std::string sql;
    for (const std::string column :
         {"TEDate", "TEHours", "aHours", "TEBill", "TEBillRate", "TEDescription", "TEMemo", "TEOT", "TEFlag1",
          "TEFlag2", "TEFlag3", "ProjectID", "EmployeeID", "ActivityID"}) {
      const auto given = columns.find(column);
      sql += sql.empty() ? "SELECT " : ", ";
      sql += (given == columns.end() ? "NULL" : given->second) + " AS " + column;
    }
    const auto connection = Vars().platform.database->CreateConnection();
    OpenConnection(*connection, nullptr, "");
    const auto row = connection->OpenRecordset(sql, ado::CursorType::Static, ado::LockType::ReadOnly);
    const Texts links = {"P-1", "E-1", "A-1"};
    QBAssignTimeTrackingFldValues(request, *row, links);
  }
};

// Boxes and lines that several tests meet.
inline const std::string kSomeLeftBehind =
    "There was a problem in transfering some of the time records. Please\r\nmake sure the associated data does exist "
    "in "
    "QuickBooks. Specifically, make\r\nsure all the associated Employees, Projects and Activities are tranfered\r\nto "
    "QuickBooks.\r\n";
inline const std::string kSureToCancel = "Are you sure you want to Cancel?";
inline const std::string kOperationCancelled = "Operation cancelled!";

// QuickBooks refuses the request of that name which is the n-th of them.
inline std::string Refuses(std::string_view request, int nth, int status) {
  return fmt::format("{} {} status {} Error \"No.\"\n", request, nth, status);
}
// A statement fails; `nth` of those that begin so.
inline std::string Breaks(std::string_view statement, int nth = 1) {
  return fmt::format("sql {} raise 0x80040E14 \"Broken.\" {}\n", nth, statement);
}
inline std::string BrokenBox(std::string_view routine) {
  return "Error #: -2147217900(80040E14) -- \r\n\r\nBroken." + ErrorBoxEnd(routine);
}

}  // namespace twqb
