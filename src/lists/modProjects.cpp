#include "lists/modProjects.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "engine/FreeKey.h"
#include "lists/SharedNames.h"
#include "lists/modClients.h"
#include "messages/StatusCodes.h"
#include "platform/Text.h"
#include "quickbooks/IsCustomer.h"
#include "quickbooks/Requests.h"
#include "quickbooks/Session.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"

namespace twqb {

namespace {

// --- Field mapping ---------------------------------------------------------------------------------------------------

using When = SendField::When;

constexpr std::array kSendManager = {SendField{.path = "AltContact", .column = "EmployeeID"}};
constexpr std::array kSendAddress = {
    SendField{.path = "Addr1", .column = "ProjectStreet", .when = When::NotEmpty},
    SendField{.path = "Addr2", .column = "ProjectStreet2", .when = When::NotEmpty},
    SendField{.path = "PostalCode", .column = "ProjectZip", .when = When::NotEmpty},
    SendField{.path = "City", .column = "ProjectCity", .when = When::NotEmpty},
    SendField{.path = "State|Province|County", .column = "ProjectState", .when = When::NotBlank},
};

// A third line takes the place of the second.
constexpr std::array kGetSite = {
    GetField{.path = "City", .column = "ProjectCity"},
    GetField{.path = "State|Province|County", .column = "ProjectState"},
    GetField{.path = "Addr1", .column = "ProjectStreet"},
    GetField{.path = "Addr2", .column = "ProjectStreet2"},
    GetField{.path = "Addr3", .column = "ProjectStreet2"},
    GetField{.path = "PostalCode", .column = "ProjectZip"},
};
// The first line of a billing address is the company.
constexpr std::array kGetBillingSite = {
    GetField{.path = "City", .column = "ProjectCity"},
    GetField{.path = "State|Province|County", .column = "ProjectState"},
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
  if (!IsNull(row.Field("ClientQBLinkID"))) return Admission::Admitted;
  NoteFate(Fate::PassedOver, "its client has no link");
  return Admission::Lacking;
}

bool IsPhase(const ado::Recordset& row) {
  const auto value = row.Field("ProjectIsPhase");
  return !IsNull(value) && TextToBoolean(ToText(value)) && !IsNull(row.Field("ParentProjectID"));
}

void ReadProjectRow(const ado::Recordset& row, SendRecord& record) {
  record.countedName = ReplaceAll(ColumnText(row, "ProjectName"), ":", " ");
  // A phase whose parent has no link goes directly under the customer.
  record.parentLink = ColumnText(row, "ClientQBLinkID");
  if (!IsPhase(row)) return;
  const auto parent = RequireScalarFromSQL(
      Sql("SELECT QBLinkID FROM Project WHERE ProjectID = '{}';", ColumnText(row, "ParentProjectID")));
  record.isAtTop = parent.empty();
  if (!parent.empty()) record.parentLink = parent;
}

std::string ProjectLine(const ado::Recordset& row, const SendRecord& record) {
  return fmt::format("[Project ID = \"{}\" Project Name = \"{}\" Client ID = \"{}\"]", record.key, record.countedName,
                     ColumnText(row, "ProjClientID"));
}

MessageBox AskToContinue(const std::string& text) {
  return {.text = text + "\r\n\r\nDo you want to continue?",
          .title = "Error",
          .icon = BoxIcon::Question,
          .buttons = BoxButtons::YesNo};
}

MessageBox CustomerGone(const RefusedRequest& refused) {
  return AskToContinue(
      fmt::format("The Customer to which you are trying to assign the project, \"{}\" does not exist in QuickBooks. "
                  "Please ensure that all the Customers have been transferred, or contact your software vendor.",
                  refused.record.countedName));
}

// The quotation mark behind the name has never had a partner; support knows the box by its text.
MessageBox ParentNotFound(const RefusedRequest& refused) {
  return AskToContinue(
      fmt::format("The Customer or Parent Project for Project ID {} {}\" does not exist in QuickBooks or is "
                  "incorrectly linked. Please ensure that the Customer and Parent Project have been transferred "
                  "correctly.",
                  refused.record.key, refused.record.countedName));
}

Filling Assign(const RequestField& request, const ado::Recordset& row, RequestKind kind, const SendRecord& record) {
  AssignProjectFldValues(request, row, kind, record);
  return Filling::Filled;
}

// --- Hooks of the get ------------------------------------------------------------------------------------------------

Admission AdmitJob(GetRecord& job) {
  if (job.dependent == Dependent::Yes) {
    // A customer that must serve as a project: its client is the one of the same link.
    IgnoreErrors([&] {
      job.ownerKey = FirstField(*job.connection.Execute(
          Sql("SELECT ClientID FROM Client WHERE QBLinkID = '{}';", job.record["ListID"].GetValue()), nullptr));
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
    GetFields(row, site, kGetSite);
  } else if (const auto billing = job["BillAddress"]; !billing.IsNothing()) {
    GetFields(row, billing, kGetBillingSite);
  }
}

// --- Description -----------------------------------------------------------------------------------------------------

// What is told of a parent that QuickBooks does not have, in place of QuickBooks' words.
constexpr std::array kRules = {
    StatusRule{.status = status::kReferenceGone, .on = OnRequest::Add, .box = CustomerGone},
    StatusRule{.status = status::kObjectNotFound, .on = OnRequest::Add, .box = ParentNotFound},
};

constexpr ListTable kProjects = {
    .tableName = "Project",
    .keyColumn = "ProjectID",
    .fallbackDateColumn = "ProjectStartDate",
    .send =
        {
            .texts = {.routine = "MoveProjectsToQB",
                      .shown = "Sending Projects to QuickBooks...",
                      .log = "Error in transfering Project to QB. Project ID = ",
                      .lacking = {.text = "There was a problem in transfering Project(s). Please make sure\r\n"
                                          "the associated data does exist in QuickBooks. Specifically, make\r\n"
                                          "sure all the associated Clients and Employees are tranfered to "
                                          "QuickBooks.\r\n"}},
            .addRequest = "CustomerAddRq",
            .modRequest = "CustomerModRq",
            .linkColumn = "ProjectQBLInkID",
            .rules = kRules,
            .admit = AdmitProjectRow,
            .readRow = ReadProjectRow,
            .assign = Assign,
            .recordLine = ProjectLine,
        },
    .get =
        {
            .texts = {.routine = "MoveProjectsToTW",
                      .shown = "Getting Projects from QuickBooks...",
                      .log = "Error transfering Project to Tallywick. Project = ",
                      .lacking = {.text = "There was a problem in transfering Project(s). Please make sure\r\n"
                                          "the associated data does exist in Tallywick. Specifically, make\r\n"
                                          "sure all the associated Clients and Employees are tranfered to "
                                          "Tallywick.\r\n"},
                      .missingConnection = "MoveProjectsToTW - Connection object is required!"},
            .admit = AdmitJob,
            .addRow = AddProjectRow,
            .writeLast = WriteProjectFields,
            .afterUpdate = ReopenGlobalConnection,
        },
};

constexpr std::array kClauses = {
    Clause{ClauseOn::LastSend, kChangedSinceLastSend},
    Clause{ClauseOn::Range, kChangedInRange},
    Clause{ClauseOn::Filter1, "{K}Project.ProjectID BETWEEN '{a}' AND '{b}' "},
    Clause{ClauseOn::Filter2,
           "{K}(Project.ProjectID IN(SELECT ProjectID FROM ProjectGroupDetail  WHERE PGID BETWEEN '{a}' AND '{b}')) "},
    Clause{ClauseOn::Filter3, "{K}Project.EmployeeID BETWEEN '{a}' AND '{b}' "},
};

constexpr std::array kReads = {QuickBooksRead{
    .filterRoutine = "ApplyQBProjectFilters",
    .copyRoutine = "GetQBProjectRecordsInCollectionObject",
    .requests = {"CustomerQueryRq"},
    .choice = "ORCustomerListQuery",
    .readingText = "Reading Projects from QuickBooks...",
    .keeps = Keeps::Jobs,
}};

constexpr std::array kParents = {RowParent{"ClientID", "Client", "ClientID", Orphan::IsPassedOver},
                                 RowParent{"ParentProjectID", "Project", "ProjectID"}};
// Below their client, or the project above them.
constexpr std::array<std::string_view, 2> kCalled = {"ProjectID", "ProjectName"};
constexpr std::array<std::string_view, 1> kJobCalled = {"Name"};

}  // namespace

constinit const Table kProjectsTable = {
    .number = enProjects,
    .name = "Projects",
    .names = {.send = "Projects", .get = "Jobs"},
    .rows = {.table = "Project"},
    .parents = kParents,
    .selection =
        {
            // A project that shares its client's link is the client's default job and is not sent. Parents come before
            // their phases.
            .base = "SELECT Client.QBLinkID AS ClientQBLinkID, Project.QBLinkID AS ProjectQBLInkID, "
                    "Project.LastUpdated, ProjectCity, Project.EmployeeID, ProjectID, ProjectName, ProjectStartDate, "
                    "ProjectState, ProjectStatus, ProjectStreet, ProjectStreet2, ProjectZip, ProjectMemo, "
                    "Project.ClientID AS ProjClientID, ProjectIsPhase, ParentProjectID FROM Project, Client WHERE "
                    "(Client.ClientID = Project.ClientID)  AND ((Client.QBLinkID <> Project.QBLinkID) OR "
                    "(Project.QBLinkID = '' OR Project.QBLinkID Is NULL)) ",
            .prefix = "Project.",
            .clauses = kClauses,
            .activeOnly = " AND (Project.ProjectStatus IS NULL OR Project.ProjectStatus = 'Active' OR "
                          "Project.ProjectStatus = 'Main') ",
            .tail = " ORDER BY Project.ProjectIsPhase DESC ",
        },
    .send = MoveProjectsToQB,
    .lostLink = {.row = "project",
                 .record = "job",
                 .keys = {.table = "Project", .column = "ProjectID", .adds = "CustomerAdd"},
                 .called = {.columns = kCalled, .elements = kJobCalled, .sharing = kListsOfPeople},
                 .takeUp = [](const LostAddition& lost) { return TakeUpListLink(kProjectsTable, kProjects, lost); }},
    .reads = kReads,
    .get = MoveProjectsToTW,
    .billingDeletion = {.rows = "Project"},
    .quickBooksDeletion = {.kind = QuickBooksKind::List, .type = 2},
};

// --- Public routines -------------------------------------------------------------------------------------------------

void MoveProjectsToQB(const SendCall& call) { SendList(kProjectsTable, kProjects, call); }

void MoveProjectsToTW(const GetCall& call) { GetList(kProjects, call); }

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
    SetCut(request["JobDesc"], record.countedName);
  }
  if (const auto status = row.Field("ProjectStatus"); !IsNull(status)) {
    request["JobStatus"].SetValue(StatusToQB(ToText(status)));
  }
  if (const auto start = row.Field("ProjectStartDate"); !IsNull(start)) {
    request["JobStartDate"].SetValue(ToDate(start));
  }
  if (kind == RequestKind::Add) {
    const auto target = request["Name"];
    const auto name = GetQBProjectName(record.key, record.countedName, target.GetMaxLength());
    NoteCut(target, GetQBProjectName(record.key, record.countedName, std::numeric_limits<int>::max()), name,
            static_cast<std::size_t>(target.GetMaxLength()));
    SetCut(target, name);
  }
  SendFields(request, row, kSendManager);
  SendFields(request["ShipAddress"], row, kSendAddress);
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
    const auto rs = connection.OpenRecordset(Sql("SELECT EmployeeID FROM Employee WHERE EmployeeID = '{}';", candidate),
                                             ado::CursorType::Static, ado::LockType::ReadOnly);
    if (!rs->Eof()) found = candidate;
  });
  if (!found.empty()) return found;
  // The contact's name is dropped. Once the employee is there the statement fails against the key, and nobody minds.
  IgnoreErrors([&] {
    const auto blank = kFromQuickBooks.find(' ');
    connection.Execute(Sql("Insert INTO Employee(EmployeeID,EmpFName,EmpLName) VALUES('{}','{}','{}');",
                           kFromQuickBooks, kFromQuickBooks.substr(0, blank), kFromQuickBooks.substr(blank + 1)),
                       nullptr);
  });
  return std::string(kFromQuickBooks);
}

bool GetParentProjectForTW(std::string& parentProjectID, std::string_view fullName, ado::Connection& connection) {
  // A name of fewer parts has no project above it, and QuickBooks has no levels for more.
  const auto parts = std::ranges::count(fullName, ':') + 1;
  const auto parent = parts >= 3 && parts <= 5 ? fullName.substr(0, fullName.rfind(':')) : std::string_view();
  const auto session = TheSession();
  auto messageSet = RequireMsgSetRequest(*session);
  messageSet.Append("CustomerQueryRq")["ORCustomerListQuery"]["FullNameList"].Add(parent);
  const auto answer = session->DoRequests(messageSet);
  const auto& response = answer.GetAt(0);
  if (response.StatusCode() != status::kOk || response.DetailCount() == 0) return false;
  const auto record = response.Detail();
  const auto listId = record["ListID"].GetValue();
  const auto lookup = Sql("SELECT ProjectID FROM Project WHERE QBLInkID = '{}';", listId);
  parentProjectID = GetScalarFromSQL(lookup);
  if (!parentProjectID.empty()) return true;
  RecordList records;
  records.Add(record, listId);
  MoveProjectsToTW({.records = records,
                    .rule = TwinRule::Overwrite,
                    .run = Vars(),
                    .dependent = Dependent::Yes,
                    .connection = &connection});
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
