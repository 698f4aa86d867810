#include "lists/modProjects.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <vector>

#include "engine/FreeKey.h"
#include "lists/modClients.h"
#include "platform/Text.h"
#include "quickbooks/IsCustomer.h"
#include "quickbooks/Requests.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "twqb/enTables.h"

namespace twqb {

namespace {

Admission AdmitProjectRow(const ado::Recordset& row);
void ReadProjectRow(const ado::Recordset& row, SendRecord& record);
std::string ProjectLine(const ado::Recordset& row, const SendRecord& record);
std::string RefusedAddText(std::int32_t statusCode, const SendRecord& record);
Admission AdmitJob(GetRecord& job);
void AddProjectRow(ado::Recordset& rows, GetRecord& job);
void WriteProjectFields(ado::Recordset& row, const Record& job);

// --- Description -----------------------------------------------------------------------------------------------------

constexpr TableDescription kProjects = {
    .table = enProjects,
    .tableName = "Project",
    .keyColumn = "ProjectID",
    .fallbackDateColumn = "ProjectStartDate",
    .selectedLinkColumn = "ProjectQBLInkID",
    .addRequest = "CustomerAddRq",
    .modRequest = "CustomerModRq",
    .sendRoutine = "MoveProjectsToQB",
    .getRoutine = "MoveProjectsToTW",
    .sendingText = "Sending Projects to QuickBooks...",
    .gettingText = "Getting Projects from QuickBooks...",
    .recordLabel = "Project ID",
    .sendLogText = "Error in transfering Project to QB. Project ID = ",
    .getLogText = "Error transfering Project to Tallywick. Project = ",
    .missingConnectionText = "MoveProjectsToTW - Connection object is required!",
    .sendLackingText =
        "There was a problem in transfering Project(s). Please make sure\r\n"
        "the associated data does exist in QuickBooks. Specifically, make\r\n"
        "sure all the associated Clients and Employees are tranfered to QuickBooks.\r\n",
    .getLackingText =
        "There was a problem in transfering Project(s). Please make sure\r\n"
        "the associated data does exist in Tallywick. Specifically, make\r\n"
        "sure all the associated Clients and Employees are tranfered to Tallywick.\r\n",
    .admitRow = AdmitProjectRow,
    .readRow = ReadProjectRow,
    .assign = Fill<AssignProjectFldValues>,
    .recordLine = ProjectLine,
    .refusedAddText = RefusedAddText,
    .admit = AdmitJob,
    .addRow = AddProjectRow,
    .writeFields = WriteProjectFields,
    .afterUpdate = ReopenGlobalConnection,
};

// --- Field mapping ---------------------------------------------------------------------------------------------------

using When = SendField::When;

constexpr std::array kSendManager = {SendField{.path = "AltContact", .column = "EmployeeID"}};
constexpr std::array kSendAddress = {
    SendField{.path = "Addr1", .column = "ProjectStreet", .when = When::NotEmpty},
    SendField{.path = "Addr2", .column = "ProjectStreet2", .when = When::NotEmpty},
    SendField{.path = "PostalCode", .column = "ProjectZip", .when = When::NotEmpty},
    SendField{.path = "City", .column = "ProjectCity", .when = When::NotEmpty},
};

constexpr std::array kGetCity = {GetField{.path = "City", .column = "ProjectCity"}};
// A third line takes the place of the second.
constexpr std::array kGetSite = {
    GetField{.path = "Addr1", .column = "ProjectStreet"},
    GetField{.path = "Addr2", .column = "ProjectStreet2"},
    GetField{.path = "Addr3", .column = "ProjectStreet2"},
    GetField{.path = "PostalCode", .column = "ProjectZip"},
};
// The first line of a billing address is the company.
constexpr std::array kGetBillingSite = {
    GetField{.path = "Addr2", .column = "ProjectStreet"},
    GetField{.path = "Addr3", .column = "ProjectStreet2"},
    GetField{.path = "PostalCode", .column = "ProjectZip"},
};

// The numbers of `JobStatus`. The way out and the way back do not match: a project sent as completed comes back as
// active. Both are as hosts have always known them.
constexpr int kSendCompleted = 1;
constexpr int kSendActive = 2;
constexpr int kSendOther = 3;
constexpr std::int64_t kGetCompleted = 4;
constexpr std::array<std::int64_t, 2> kMarketingStatuses = {4, 5};

constexpr std::array<std::string_view, 8> kContractTypes = {
    "FIXED",      "HOURLY",    "HOURLY NOT TO EXCEED", "MARKETING", "OVERHEAD",
    "PERCENTAGE", "RECURRING", "RECURRING WITH CAP"};

constexpr std::string_view kMissing = "Missing";
constexpr std::string_view kFromQuickBooks = "From QuickBooks";

// --- Hooks of the send -----------------------------------------------------------------------------------------------

// The client must be in QuickBooks first.
Admission AdmitProjectRow(const ado::Recordset& row) {
  return IsNull(row.Field("ClientQBLinkID")) ? Admission::Lacking : Admission::Admitted;
}

bool IsPhase(const ado::Recordset& row) {
  const auto value = row.Field("ProjectIsPhase");
  return !IsNull(value) && TextToBoolean(ToText(value)) && !IsNull(row.Field("ParentProjectID"));
}

void ReadProjectRow(const ado::Recordset& row, SendRecord& record) {
  record.qbName = ReplaceAll(ColumnText(row, "ProjectName"), ":", " ");
  // A phase whose parent has no link goes directly under the customer.
  record.parentLink = ColumnText(row, "ClientQBLinkID");
  if (!IsPhase(row)) return;
  const auto parent = RequireScalarFromSQL(
      fmt::format("SELECT QBLinkID FROM Project WHERE ProjectID = '{}';", ColumnText(row, "ParentProjectID")));
  if (!parent.empty()) record.parentLink = parent;
}

std::string ProjectLine(const ado::Recordset& row, const SendRecord& record) {
  return fmt::format("[Project ID = \"{}\" Project Name = \"{}\" Client ID = \"{}\"]", record.key, record.qbName,
                     ColumnText(row, "ProjClientID"));
}

constexpr std::int32_t kStatusReferenceGone = 3240;
constexpr std::int32_t kStatusNotFound = 3120;

std::string RefusedAddText(std::int32_t statusCode, const SendRecord& record) {
  if (statusCode == kStatusReferenceGone) {
    return fmt::format(
        "The Customer to which you are trying to assign the project, \"{}\" does not exist in QuickBooks. Please "
        "ensure that all the Customers have been transferred, or contact your software vendor.",
        record.qbName);
  }
  // The quotation mark behind the name has never had a partner; support knows the box by its text.
  if (statusCode == kStatusNotFound) {
    return fmt::format(
        "The Customer or Parent Project for Project ID {} {}\" does not exist in QuickBooks or is incorrectly linked. "
        "Please ensure that the Customer and Parent Project have been transferred correctly.",
        record.key, record.qbName);
  }
  return {};
}

// --- Hooks of the get ------------------------------------------------------------------------------------------------

Admission AdmitJob(GetRecord& job) {
  if (job.dependent == Dependent::Yes) {
    // A customer that must serve as a project: its client is the one of the same link.
    IgnoreErrors([&] {
      job.ownerKey = FirstField(*job.connection.Execute(
          fmt::format("SELECT ClientID FROM Client WHERE QBLinkID = '{}';", job.record["ListID"].GetValue()), nullptr));
    });
    return Admission::Admitted;
  }
  if (IsCustomer(job.record)) return Admission::PassedOver;
  return QBCustomerExistsInTW(job.record, job.ownerKey) ? Admission::Admitted : Admission::Lacking;
}

std::string ProjectKey(std::string_view code, std::string_view phase) { return fmt::format("{}:{}", code, phase); }

// The names of the row that a record is to have, before they are made unique.
JobFullName NamesOf(const ado::Recordset& row, const GetRecord& job) {
  const auto fullName = job.record["FullName"].GetValue();
  JobFullName names;
  if (job.dependent == Dependent::No) {
    names = SplitJobFullName(row, fullName);
  } else {
    names.projectCode = CutTo(row, "ProjectCode", fullName);
    names.projectID = ProjectKey(names.projectCode, "");
  }
  names.clientID = job.ownerKey;
  return names;
}

// Counts in the last two places of the phase until the key is free; a top project gets a phase by it.
void MakeUnique(const GetRecord& job, JobFullName& names) {
  constexpr std::size_t kPlaces = 2;
  const auto length = CharacterCount(names.projectPhase);
  const auto base = length > kPlaces ? Left(names.projectPhase, length - kPlaces) : std::string();
  names.projectID = FreeKey(job.connection, {.table = "Project", .column = "ProjectID"},
                            job.record["FullName"].GetValue(), [&](int counter) {
                              if (counter > 0) names.projectPhase = fmt::format("{}{}", base, counter);
                              return ProjectKey(names.projectCode, names.projectPhase);
                            });
}

void AddProjectRow(ado::Recordset& rows, GetRecord& job) {
  auto names = NamesOf(rows, job);
  rows.AddNew();
  MakeUnique(job, names);
  rows.SetField("ProjectID", names.projectID);
  WriteCut(rows, "ClientID", names.clientID);
  rows.SetField("QBLinkID", job.record["ListID"].GetValue());
  WriteCut(rows, "ProjectCode", names.projectCode);
  WriteCut(rows, "ProjectPhase", names.projectPhase);
  WriteCut(rows, "EmployeeID", GetProjectManagerForTW(job.record, job.connection));
  std::string parent;
  if (job.record["Sublevel"].GetInteger() >= 2 &&
      GetParentProjectForTW(parent, job.record["FullName"].GetValue(), job.connection)) {
    rows.SetField("ProjectIsPhase", true);
    WriteCut(rows, "ParentProjectID", parent);
    WriteCut(rows, "PhaseDescription", "Phase of " + parent);
  }
  WriteCut(rows, "ProjectConType", ContractTypeFromQB(job.record));
}

// A name that carries the key is written without it, unless the column has a longer one: QuickBooks may have cut it.
void WriteProjectName(ado::Recordset& row, const Record& job) {
  const auto name = CutTo(row, "ProjectName", job["Name"].GetValue());
  const auto key = ReplaceAll(ColumnText(row, "ProjectID"), ":", "-");
  if (!name.starts_with(key)) {
    row.SetField("ProjectName", name);
    return;
  }
  auto rest = CharacterWalk(std::string_view(name).substr(key.size()));
  const auto separator = rest.Next();
  const auto shortName = name.substr(key.size() + separator.size());
  if (!ColumnText(row, "ProjectName").starts_with(shortName)) row.SetField("ProjectName", shortName);
}

void WriteSite(ado::Recordset& row, const Record& address, std::span<const GetField> fields) {
  GetFields(row, address, kGetCity);
  GetFields(row, address, std::array{GetField{.path = StateFieldName(), .column = "ProjectState"}});
  GetFields(row, address, fields);
}

void WriteProjectFields(ado::Recordset& row, const Record& job) {
  WriteProjectName(row, job);
  if (const auto start = job["JobStartDate"]; !start.IsNothing()) {
    row.SetField("ProjectStartDate", start.GetDate());
  } else {
    row.SetField("ProjectStartDate", ShortDate(job["TimeCreated"].GetDate()));
  }
  if (const auto status = job["JobStatus"]; !status.IsNothing()) {
    WriteCut(row, "ProjectStatus", StatusFromQB(job));
    if (std::ranges::find(kMarketingStatuses, status.GetInteger()) != kMarketingStatuses.end()) {
      WriteCut(row, "ProjectConType", "Marketing");
    }
  }
  // An inactive record is inactive whatever its status.
  if (const auto active = job["IsActive"]; !active.IsNothing() && !active.GetBoolean()) {
    WriteCut(row, "ProjectStatus", "Inactive");
  }
  // Without either address the columns keep their values.
  if (const auto site = job["ShipAddress"]; !site.IsNothing()) {
    WriteSite(row, site, kGetSite);
  } else if (const auto billing = job["BillAddress"]; !billing.IsNothing()) {
    WriteSite(row, billing, kGetBillingSite);
  }
}

}  // namespace

// --- Public routines -------------------------------------------------------------------------------------------------

void MoveProjectsToQB(const std::string& strSQL, bool optNever, bool optMostRecent, QBSessionManager& session) {
  SendTable(kProjects, strSQL, optNever, optMostRecent, session);
}

void MoveProjectsToTW(const RecordList& records, bool optNever, bool optMostRecent, Dependent isDependent,
                      ado::Connection* connection) {
  GetTable(kProjects, records, optNever, optMostRecent, isDependent, connection);
}

std::string GetQBProjectName(std::string_view projectID, std::string_view name, int maxLength) {
  const auto prefix = ReplaceAll(projectID, ":", "-") + " ";
  // The key of a top project ends in its separator, which its name need not carry.
  const auto key = prefix.ends_with("- ") ? prefix.substr(0, prefix.size() - 2) : prefix;
  if (UpperCase(name).starts_with(UpperCase(key))) return std::string(name);
  const auto room = static_cast<std::int64_t>(maxLength) - static_cast<std::int64_t>(CharacterCount(prefix));
  if (room < 0) return std::string(name);
  return prefix + Left(name, static_cast<std::size_t>(room));
}

void AssignProjectFldValues(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                            const SendRecord& record) {
  if (kind == RequestKind::Add) {
    request["ParentRef"]["ListID"].SetValue(record.parentLink);
    SetCut(request["JobDesc"], record.qbName);
  }
  if (const auto status = row.Field("ProjectStatus"); !IsNull(status)) {
    request["JobStatus"].SetValue(StatusToQB(ToText(status)));
  }
  if (const auto start = row.Field("ProjectStartDate"); !IsNull(start)) {
    request["JobStartDate"].SetValue(ToDate(start));
  }
  if (kind == RequestKind::Add) {
    const auto target = request["Name"];
    SetCut(target, GetQBProjectName(record.key, record.qbName, target.GetMaxLength()));
  }
  SendFields(request, row, kSendManager);
  const auto address = request["ShipAddress"];
  SendFields(address, row, kSendAddress);
  SendFields(address, row,
             std::array{SendField{.path = StateFieldName(), .column = "ProjectState", .when = When::NotBlank}});
}

JobFullName SplitJobFullName(const ado::Recordset& row, std::string_view fullName) {
  const auto parts = fullName.empty() ? std::vector<std::string>() : Split(fullName, ':');
  const auto part = [&](std::size_t index, std::string_view column, std::string_view otherwise) {
    return CutTo(row, column, ReplaceJunkChars(index < parts.size() ? parts[index] : otherwise));
  };
  JobFullName names{.clientID = part(0, "ClientID", kMissing),
                    .projectCode = part(1, "ProjectCode", kMissing),
                    .projectPhase = part(2, "ProjectPhase", parts.size() == 2 ? "" : kMissing),
                    .projectID = {}};
  names.projectID = ProjectKey(names.projectCode, names.projectPhase);
  return names;
}

std::string GetProjectManagerForTW(const Record& customerRet, ado::Connection& connection) {
  constexpr std::size_t kLongestContact = 15;
  std::string found;
  IgnoreErrors([&] {
    const auto contact = customerRet["AltContact"];
    const auto candidate = ReplaceJunkChars(contact.IsNothing() ? std::string(kFromQuickBooks)
                                                                : Left(contact.GetValue(), kLongestContact));
    const auto rs =
        connection.OpenRecordset(fmt::format("SELECT EmployeeID FROM Employee WHERE EmployeeID = '{}';", candidate),
                                 ado::CursorType::Static, ado::LockType::ReadOnly);
    if (!rs->Eof()) found = candidate;
  });
  if (!found.empty()) return found;
  // The contact's name is dropped. Once the employee is there the statement fails against the key, and nobody minds.
  IgnoreErrors([&] {
    const auto blank = kFromQuickBooks.find(' ');
    connection.Execute(
        fmt::format("Insert INTO Employee(EmployeeID,EmpFName,EmpLName) VALUES('{}','{}','{}');", kFromQuickBooks,
                    kFromQuickBooks.substr(0, blank), kFromQuickBooks.substr(blank + 1)),
        nullptr);
  });
  return std::string(kFromQuickBooks);
}

bool GetParentProjectForTW(std::string& parentProjectID, std::string_view fullName, ado::Connection& connection) {
  // A name of fewer parts has no project above it, and QuickBooks has no levels for more.
  const auto parts = std::ranges::count(fullName, ':') + 1;
  const auto parent = parts >= 3 && parts <= 5 ? fullName.substr(0, fullName.rfind(':')) : std::string_view();
  auto& session = *Vars().g_QBSession;
  auto messageSet = RequireMsgSetRequest(session);
  messageSet.Append("CustomerQueryRq")["ORCustomerListQuery"]["FullNameList"].Add(parent);
  const auto answer = session.DoRequests(messageSet);
  const auto& response = answer.GetAt(0);
  if (response.StatusCode() != 0 || response.DetailCount() == 0) return false;
  const auto record = response.Detail();
  const auto listId = record["ListID"].GetValue();
  const auto lookup = fmt::format("SELECT ProjectID FROM Project WHERE QBLInkID = '{}';", listId);
  parentProjectID = GetScalarFromSQL(lookup);
  if (!parentProjectID.empty()) return true;
  RecordList records;
  records.Add(record, listId);
  MoveProjectsToTW(records, false, false, Dependent::Yes, &connection);
  parentProjectID = GetScalarFromSQL(lookup);
  return true;
}

std::string ContractTypeFromQB(const Record& customerRet) {
  const auto name = FieldAtPath(customerRet, "JobTypeRef.FullName").GetValueOrEmpty();
  return std::ranges::find(kContractTypes, UpperCase(name)) == kContractTypes.end() ? "Hourly" : name;
}

std::string StatusFromQB(const Record& customerRet) {
  return customerRet["JobStatus"].GetInteger() == kGetCompleted ? "Completed" : "Active";
}

int StatusToQB(std::string_view text) {
  const auto status = UpperCase(text);
  if (status == "ACTIVE") return kSendActive;
  return status == "COMPLETED" ? kSendCompleted : kSendOther;
}

}  // namespace twqb
