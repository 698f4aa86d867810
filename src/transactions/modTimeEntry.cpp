#include "transactions/modTimeEntry.h"

#include <fmt/core.h>

#include <array>
#include <cmath>

#include "engine/Mapping.h"
#include "messages/StatusCodes.h"
#include "messages/ValueFormat.h"
#include "platform/Text.h"
#include "platform/Value.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Settings.h"
#include "services/Sql.h"
#include "transactions/PayrollItems.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

// --- Links -----------------------------------------------------------------------------------------------------------

constexpr TxnLink kProject = {.kind = "PROJECT",
                              .column = "ProjectID",
                              .reference = "CustomerRef",
                              .keySelect = "SELECT ProjectID, ProjectName FROM Project WHERE QBLINKID = '",
                              .values = 2};
constexpr TxnLink kEmployee = {.kind = "EMPLOYEE",
                               .column = "EmployeeID",
                               .reference = "EntityRef",
                               .keySelect = "SELECT EmployeeID FROM Employee WHERE QBLINKID = '"};
constexpr TxnLink kActivity = {.kind = "ACTIVITY",
                               .column = "ActivityID",
                               .reference = "ItemServiceRef",
                               .keySelect = "SELECT ActivityID FROM Activity WHERE QBLINKID = '",
                               .optional = true};

constexpr std::array kSendLinks = {kProject, kEmployee, kActivity};
constexpr std::array kGetLinks = {kProject, kActivity, kEmployee};
// What is done with them goes by their places.
static_assert(kGetLinks[0].values == 2 && kGetLinks[1].values == 1 && kGetLinks[2].values == 1);

// --- Hooks of the send -----------------------------------------------------------------------------------------------

// The host keeps these under a section without the underscore that other filters have.
bool IsChosen(std::string_view key) {
  const auto value = gf_ReadSettings("QBSEND", fmt::format("_Time Entries{}", key), Vars().g_TWSettingsPath, "0");
  return LeadingNumber(value) > 0;
}

// A double as it is: its text would round it, and an entry could lose a minute.
double NumberOf(const Value& value) {
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? -1 : 0;
  return TextToNumber(ToText(value));
}

bool Prepare(QBSessionManager& session) {
  // The first version has no payroll items.
  if (Vars().g_QBMajorVer >= 2 && !SecureWageItems(session)) return false;
  Vars().leavesCompTime = IsChosen("_chkCompTime");
  Vars().MapTENotes = IsChosen("_MapTENotes");
  return true;
}

bool IsSent(const ado::Recordset& row) {
  if (!IsTrueFlag(row, "TEPosted")) return false;
  if (!Vars().leavesCompTime) return true;
  const auto compTime = row.Field("TECompTime");
  return IsNull(compTime) || NumberOf(compTime) == 0;
}

std::string ShownOf(const ado::Recordset& row) {
  return fmt::format("{}, {}", ColumnText(row, "EmployeeID"), ColumnText(row, "TEDate"));
}

// "ProjectID,ActivityID,EmployeeID"; the commas alone where there is no row.
std::string DataOf(const ado::Recordset* row) {
  const auto text = [row](std::string_view column) { return row == nullptr ? "" : ColumnText(*row, column); };
  return fmt::format("{},{},{}", text("ProjectID"), text("ActivityID"), text("EmployeeID"));
}

bool Fill(const RequestField& request, const ado::Recordset& row, std::span<const std::string> links) {
  QBAssignTimeTrackingFldValues(request, row, links);
  const auto duration = request["Duration"];
  if (!duration.IsSet() || !duration.GetValue().empty()) return true;
  NoteFate(Fate::PassedOver, "QuickBooks does not support negative time");
  WriteLog("QuickBooks does not support negative time entry. Data = " + DataOf(&row));
  return false;
}

// The project's class wins.
void AssignClass(const RequestField& request, std::string_view projectLink, std::string_view activityLink) {
  IgnoreErrors([&] {
    auto classId = GetScalarFromSQL(Sql("SELECT QBClassID FROM Project WHERE QBLinkID = '{}';", projectLink));
    if (classId.empty()) {
      classId = GetScalarFromSQL(Sql("SELECT QBClassID FROM Activity WHERE QBLinkID = '{}';", activityLink));
    }
    if (!classId.empty()) request["ClassRef"]["ListID"].SetValue(classId);
  });
}

// Whole hours, minutes and seconds, never rounded. More than a day is a day.
messages::TimeInterval DurationOf(double hours) {
  constexpr double kLongest = 24;
  constexpr double kSixty = 60;
  if (hours > kLongest) return {.hours = static_cast<std::int64_t>(kLongest)};
  const double minutes = (hours - std::trunc(hours)) * kSixty;
  const double seconds = (minutes - std::trunc(minutes)) * kSixty;
  return {.hours = static_cast<std::int64_t>(hours),
          .minutes = static_cast<std::int64_t>(minutes),
          .seconds = static_cast<std::int64_t>(seconds)};
}

void AssignDuration(const RequestField& duration, const Value& hours) {
  if (IsNull(hours)) return;
  if (const auto number = NumberOf(hours); number < 0) {
    duration.SetValue("");
  } else {
    duration.SetValue(DurationOf(number));
  }
}

std::string PlainText(std::string_view note) { return StripRichText(note); }

using When = SendField::When;
constexpr std::array kSendMemo = {SendField{
    .path = "Notes", .column = "TEMemo", .when = When::NotNull, .convert = PlainText, .cut = SendField::Cut::Uncut}};
constexpr std::array kSendDescription = {
    SendField{.path = "Notes", .column = "TEDescription", .when = When::NotNull, .cut = SendField::Cut::Uncut}};

void AssignNotes(const RequestField& request, const ado::Recordset& row) {
  if (Vars().MapTENotes && SendFields(request, row, kSendMemo) > 0) return;
  SendFields(request, row, kSendDescription);
}

// --- What is told of a refusal ---------------------------------------------------------------------------------------

MessageBox MissingPayrollItem(const RefusedRequest& refused) {
  return {.text = fmt::format("Please add the four items, \"Regular Pay\", \"Vacation Hourly\", \"Sick Hourly\", and "
                              "\"Overtime Pay\" to\r\n"
                              "the Payroll Item List of QuickBooks manually.\r\n"
                              "[Run QuickBooks and choose Employee|Payroll Item List from the main menu...]\r\n"
                              "\r\n"
                              "QuickBooks has reported the following error:{}\r\n"
                              "(Error Code: {}\r\n"
                              "Severity: {})\r\n"
                              "If the problem persists, please contact your software vendor.",
                              refused.response.StatusMessage(), refused.response.StatusCode(),
                              refused.response.StatusSeverity()),
          .title = "Error"};
}

MessageBox MissingPermission(const RefusedRequest& refused) {
  return {.text = fmt::format("Please transfer the employees again after giving this application the \r\n"
                              "permission to access Sensitve data in the \"Integrated Applications\" \r\n"
                              "settings of QuickBooks. If you are unable to resolve this problem, \r\n"
                              "please contact your software vendor\r\n"
                              "\r\n"
                              "QuickBooks has reported the following error :\r\n"
                              "{}\r\n"
                              "Error Code: {}\r\n"
                              "Severity: {}",
                              refused.response.StatusMessage(), refused.response.StatusCode(),
                              refused.response.StatusSeverity()),
          .title = "Error",
          .icon = BoxIcon::Information};
}

MessageBox Asking(std::string text) {
  return {.text = std::move(text), .title = "Error", .icon = BoxIcon::Question, .buttons = BoxButtons::YesNo};
}

MessageBox NotTransferred(const RefusedRequest& refused) {
  return Asking(
      fmt::format("An employee or Job has not been transferred to QuickBooks \r\n"
                  "\r\n"
                  "EmployeeID = {}\r\n"
                  "ProjectID = {}\r\n"
                  "ActivityID = {}\r\n"
                  "\r\n"
                  "QuickBooks has reported the following error: -\r\n"
                  "{}\r\n"
                  "Error Code: {}\r\n"
                  "Severity: {}\r\n"
                  "\r\n"
                  "Please transfer this table first or contact your software vendor.\r\n"
                  "\r\n"
                  "Do you want to continue?",
                  ColumnText(refused.row, "EmployeeID"), ColumnText(refused.row, "ProjectID"),
                  ColumnText(refused.row, "ActivityID"), refused.response.StatusMessage(),
                  refused.response.StatusCode(), refused.response.StatusSeverity()));
}

MessageBox NotEnabled(const RefusedRequest& /*refused*/) {
  return {.text = "You have not Enabled the Time Tracking Feature in QuickBooks. Please Enable it in QuickBooks."};
}

// The quotation marks are typographic here, and straight in the other boxes.
MessageBox PaychecksUnknown(const RefusedRequest& refused) {
  return {.text = fmt::format("Error: 3310\r\n"
                              "Failed to save the Time Tracking transaction.\r\n"
                              "\r\n"
                              "The employee whose time entry was being transferred has the\r\n"
                              "checkbox “Use time data to create paychecks” set to an Unknown state.\r\n"
                              "Please correct that in QuickBooks and then resend time entries\r\n"
                              "\r\n"
                              "Employee ID = {}",
                              ColumnText(refused.row, "EmployeeID")),
          .title = "Error",
          .icon = BoxIcon::Information};
}

MessageBox AnyOther(const RefusedRequest& refused) {
  return Asking(
      fmt::format("QuickBooks has reported the following error:\r\n"
                  "\r\n"
                  "Error Code: {}\r\n"
                  "Severity: {}\r\n"
                  "Status: {}\r\n"
                  "\r\n"
                  "Please contact your software vendor.\r\n"
                  "\r\n"
                  "Do you want to continue?",
                  refused.response.StatusCode(), refused.response.StatusSeverity(), refused.response.StatusMessage()));
}

// --- Hooks of the get ------------------------------------------------------------------------------------------------

std::optional<std::string> EntityName(const Record& entry) {
  const auto name = FieldAtPath(entry, "EntityRef.FullName");
  return name.IsNothing() ? std::nullopt : std::optional(name.GetValue());
}

struct RateColumns {
  std::string_view ofEmployee;
  std::string_view ofActivity;
};

Currency RateBy(ado::Connection& connection, const Sql& statement, Currency failed) {
  auto rate = failed;
  IgnoreErrors([&] {
    const auto rows = connection.OpenRecordset(statement, ado::CursorType::Static, ado::LockType::ReadOnly);
    const auto value = rows->FieldAt(0);
    if (IsNull(value)) throw PlatformError(error::kInvalidNull);
    rate = Currency::FromDouble(NumberOf(value));
  });
  return rate;
}

// An employee's rate of 0 or 1 is one that nobody gave: the activity's counts, where there is one.
Currency RateOf(const Record& entry, std::string_view activityId, ado::Connection& connection,
                const RateColumns& columns) {
  const auto one = Currency::FromDouble(1);
  const auto employee = RateBy(connection,
                               Sql("SELECT {} FROM Employee WHERE QBLINKID = '{}';", columns.ofEmployee,
                                   entry["EntityRef"]["ListID"].GetValue()),
                               one);
  if (employee != Currency() && employee != one) return employee;
  const auto activity = RateBy(
      connection, Sql("SELECT {} FROM Activity WHERE ActivityID = '{}';", columns.ofActivity, activityId), Currency());
  return activity == Currency() ? employee : activity;
}

// Seconds are dropped.
double HoursOf(const Record& duration) {
  constexpr double kMinutes = 60;
  if (duration.IsNothing()) return 0;
  const auto span = duration.GetTimeInterval();
  return static_cast<double>(span.hours) + static_cast<double>(span.minutes) / kMinutes;
}

void WriteNotes(ado::Recordset& row, const Record& entry) {
  const auto notes = entry["Notes"];
  if (notes.IsNothing()) {
    WriteCut(row, "TEDescription", FieldAtPath(entry, "ItemServiceRef.FullName").GetValueOrEmpty());
    return;
  }
  WriteCut(row, "TEDescription", notes.GetValue());
  row.SetField("TEMemo", notes.GetValue());
  row.SetField("TEMemoExists", true);
}

void WriteRow(const TxnArrival& arrival) {
  auto& [entry, txnId, values, row, connection] = arrival;
  const auto& [projectId, projectName, activityId, employeeId] = std::tie(values[0], values[1], values[2], values[3]);
  row.AddNew();
  row.SetField("QBLinkID", txnId);
  row.SetField("TEDate", entry["TxnDate"].GetDate());
  row.SetField("ProjectID", projectId);
  row.SetField("ProjectName", projectName);
  row.SetField("EmployeeID", employeeId);
  row.SetField("ActivityID", activityId);
  const auto hours = HoursOf(entry["Duration"]);
  row.SetField("TEHours", hours);
  row.SetField("aHours", hours);
  WriteNotes(row, entry);
  const auto billable = entry["IsBillable"];
  row.SetField("TEBill", billable.IsNothing() || billable.GetBoolean());
  const auto billed = entry["IsBilled"];
  row.SetField("TEBillStatus", std::string(!billed.IsNothing() && billed.GetBoolean() ? "B" : "N"));
  row.SetField("TEBillRate",
               RateOf(entry, activityId, connection, {.ofEmployee = "EmpBillRate", .ofActivity = "AC_BillRate"}));
  row.SetField("TECostRate",
               RateOf(entry, activityId, connection, {.ofEmployee = "EmpCostRate", .ofActivity = "AC_CostRate"}));
  row.SetField("TEPosted", true);
  for (const std::string_view column : {"TETax1", "TETax2", "TETax3"}) row.SetField(column, 0.0);
  row.SetField("TEID", GenerateGUID());
  row.SetField("LastUpdated", LocalToUTC(TheMachine().Now()));
  row.Update();
}

// --- Description -----------------------------------------------------------------------------------------------------

constexpr std::array kRules = {
    StatusRule{.status = status::kObjectNotFound, .then = Refusal::PassOverLacking},
    StatusRule{.status = status::kInvalidReference, .then = Refusal::LeaveTable, .box = MissingPayrollItem},
    StatusRule{.status = status::kCannotSave, .then = Refusal::LeaveTable, .box = MissingPermission},
    StatusRule{.status = status::kReferenceGone, .box = NotTransferred},
    StatusRule{.status = status::kFeatureNotEnabled, .then = Refusal::LeaveTable, .box = NotEnabled},
    StatusRule{.status = status::kTimeForPaychecksUnknown, .then = Refusal::LeaveTable, .box = PaychecksUnknown},
    StatusRule{.box = AnyOther},
};

constexpr TxnTable kTimeEntries = {
    .tableName = "TimeEntry",
    .keyColumn = "TEID",
    .send =
        {
            .texts = {.routine = "MoveTimeEntryToQB",
                      .shown = "Sending Time Records to QuickBooks...",
                      .log = "Error transfering time entry. Data = ",
                      .lacking = {.text = "There was a problem in transfering some of the time records. Please\r\n"
                                          "make sure the associated data does exist in QuickBooks. Specifically, "
                                          "make\r\n"
                                          "sure all the associated Employees, Projects and Activities are "
                                          "tranfered\r\n"
                                          "to QuickBooks.\r\n",
                                  .title = "Message",
                                  .failsTheTable = true}},
            .addRequest = "TimeTrackingAddRq",
            .links = kSendLinks,
            .rules = kRules,
            .prepare = Prepare,
            .admit = IsSent,
            .stays = "it is not posted, or has comp time that stays here",
            .shown = ShownOf,
            .told = DataOf,
            .fill = Fill,
        },
    .get =
        {
            .texts = {.routine = "MoveTimeEntriesToTW",
                      .shown = "Getting Time Entries from QuickBooks...",
                      .log = "Error transfering Time Entries to Tallywick. Customer = "},
            .links = kGetLinks,
            // Time that was booked on a customer needs that customer as a project, too.
            .pull = CustomerPull::ClientAndProject,
            .shown = EntityName,
            .name = CustomerName,
            .write = WriteRow,
        },
};

constexpr std::array kClauses = {
    Clause{ClauseOn::FromTo, "{K}((TimeEntry.TEDate BETWEEN {a} AND {b})) "},
    Clause{ClauseOn::LastSend,
           "{K}(({P}LastUpdated > {a}) OR ({P}QBLinkID IS NULL) OR ({P}QBLinkID = '') OR ({P}LastUpdated IS NULL)) "},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}((TimeEntry.EmployeeID BETWEEN '{a}' AND '{b}')) "},
    Clause{ClauseOn::Filter2, "{K}(TimeEntry.ProjectID BETWEEN '{a}' AND '{b}') "},
    Clause{ClauseOn::Filter3, "{K}(TimeEntry.ActivityID BETWEEN '{a}' AND '{b}') "},
};

// PassedID is a list of identifiers without their braces. Linked entries are selected too.
Sql Passed(std::string_view base, const SavedFilters& /*filters*/) {
  Sql list;
  for (const auto& id : Split(Vars().g_PassedID, ',')) {
    if (!list.IsEmpty()) list += ",";
    list += Sql("'{{{}}}'", id);
  }
  return Sql("{} AND (TimeEntry.TEID IN ({})) ", Sql::Own(base), list);
}

// Time entries have no lines, and their query nothing to ask for them with.
constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBTimeEntryFilters",
    .copyRoutine = "GetQBTEInCollectionObject",
    .requests = {"TimeTrackingQueryRq"},
    .choice = "ORTimeTrackingTxnQuery",
    .transaction = TransactionQuery{.includesLineItems = false, .takesTransactionDates = true},
    .readingText = "Reading Time Records from QuickBooks ...",
    .readingFrom = 2,
}};

constexpr std::array kParents = {RowParent{"ProjectID", "Project", "ProjectID", Orphan::IsPassedOver},
                                 RowParent{"EmployeeID", "Employee", "EmployeeID", Orphan::IsPassedOver},
                                 RowParent{"ActivityID", "Activity", "ActivityID", Orphan::IsPassedOver}};

}  // namespace

constinit const Table kTimeEntriesTable = {
    .number = enTimeEntries,
    .name = "TimeEntries",
    .names = {.send = "Time Entries", .get = "Time Entries(QB)"},
    .rows = {.table = "TimeEntry", .madeKey = "TEID"},
    .parents = kParents,
    .selection =
        {
            // An entry goes to QuickBooks only once: a linked one is not selected again, even if it changed.
            .base = "SELECT TEID, TEDate, TEHours, aHours, TEBill, TEBillRate, TEDescription, TimeEntry.QBLinkID, "
                    "TECompTime, TimeEntry.ProjectID, TimeEntry.EmployeeID, TimeEntry.ActivityID, TEOT, TEPosted, "
                    "TimeEntry.LastUpdated, TEMemo, TimeEntry.TEFlag1, TimeEntry.TEFlag2, TimeEntry.TEFlag3 FROM "
                    "TimeEntry,Project, Employee,Activity WHERE (TimeEntry.ProjectID = Project.ProjectID) AND "
                    "(TimeEntry.EmployeeID =Employee.EmployeeID) AND (TimeEntry.ActivityID =Activity.ActivityID) ",
            .noteColumn = "TEMemo, ",
            .prefix = "TimeEntry.",
            .clauses = kClauses,
            .tail = " AND ((TimeEntry.QBLinkID IS NULL) OR (TimeEntry.QBLinkID = '')) ",
            .passed = Passed,
        },
    .send = MoveTimeEntryToQB,
    .secures = WageItemNames,
    .lostLink = {.row = "time entry",
                 .record = "time activity",
                 .keys = {.table = "TimeEntry", .column = "TEID", .adds = "TimeTrackingAdd"},
                 .takeUp =
                     [](const LostAddition& lost) {
                       LoadActivityCodes();
                       Vars().MapTENotes = IsChosen("_MapTENotes");
                       return TakeUpTransactionLink(kTimeEntriesTable, kTimeEntries, lost);
                     }},
    .reads = kReads,
    .get = MoveTimeEntriesToTW,
    .billingDeletion = {.rows = "TimeEntry"},
    .quickBooksDeletion = {.kind = QuickBooksKind::Transaction, .type = 21},
};

// --- Public routines -------------------------------------------------------------------------------------------------

void MoveTimeEntryToQB(const SendCall& call) {
  LoadActivityCodes();
  SendTransactions(kTimeEntriesTable, kTimeEntries, call);
}

void MoveTimeEntriesToTW(const GetCall& call) {
  LoadActivityCodes();
  GetTransactions(kTimeEntries, call);
}

void QBAssignTimeTrackingFldValues(const RequestField& request, const ado::Recordset& row,
                                   std::span<const std::string> links) {
  RunAs("QBAssignTimeTrackingFldValues", [&] {
    const auto hours = row.Field(IsChosen("_chkAhrs") ? "aHours" : "TEHours");
    if (const auto date = row.Field("TEDate"); !IsNull(date)) request["TxnDate"].SetValue(DateFloor(ToDate(date)));
    SetLinks(request, kSendLinks, links);
    AssignClass(request, links[0], links[2]);
    AssignDuration(request["Duration"], hours);
    if (!IsNull(row.Field("TEBill"))) request["IsBillable"].SetValue(ColumnText(row, "TEBill"));
    if (const auto rate = row.Field("TEBillRate"); !IsNull(rate) && Vars().g_QBMajorVer >= 3) {
      request["Rate"].SetValue(NumberOf(rate));
    }
    AssignNotes(request, row);
    IgnoreErrors([&] { request["PayrollItemWageRef"]["FullName"].SetValue(PayrollItemFor(row)); });
  });
}

}  // namespace twqb
