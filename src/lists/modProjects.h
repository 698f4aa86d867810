// Projects and QuickBooks jobs: a top project is a job under its client's customer, a phase a job under its project's
// job.
//
// One QuickBooks list holds customers, projects and phases; `Sublevel` (0, 1, deeper) tells them apart, and the key of
// a project is rebuilt from the names on the way down to it.
#pragma once

#include <string>
#include <string_view>

#include "engine/ListTable.h"

namespace twqb {

extern const Table kProjectsTable;

// Sends the projects of the call. Projects whose client has no link are passed over, which a box at the end tells.
void MoveProjectsToQB(const SendCall& call);

// Takes jobs over; customers among the records are passed over. A dependent call needs the caller's connection, and
// takes a customer as well, as a project of its own name.
void MoveProjectsToTW(const GetCall& call);

// The name under which a project goes to QuickBooks, before the cut to `maxLength` characters: its key and its name, or
// the name alone where it begins with the key.
[[nodiscard]] std::string GetQBProjectName(std::string_view projectID, std::string_view name, int maxLength);

// Fills an Add or a Mod from the row; `record` has key, name and parent link. A Mod neither renames nor moves the job.
void AssignProjectFldValues(const RequestField& request, const ado::Recordset& row, RequestKind kind,
                            const SendRecord& record);

// A full name of QuickBooks as keys of BillingDb, each cut to its column of `row`.
struct JobFullName {
  std::string clientID;
  std::string projectCode;
  std::string projectPhase;
  std::string projectID;
};
[[nodiscard]] JobFullName SplitJobFullName(const ado::Recordset& row, std::string_view fullName);

// The manager of a job: its alternate contact where that is an employee, else "From QuickBooks", who is made an
// employee when missing. Never raises.
[[nodiscard]] std::string GetProjectManagerForTW(const Record& customerRet, ado::Connection& connection);

// The project above a job of that full name; pulled from QuickBooks, with all above it, when BillingDb lacks it. False
// when QuickBooks has none.
[[nodiscard]] bool GetParentProjectForTW(std::string& parentProjectID, std::string_view fullName,
                                         ado::Connection& connection);

// The record's job type where it is a contract type, else "Hourly".
[[nodiscard]] std::string ContractTypeFromQB(const Record& customerRet);
// The status of the record's `JobStatus`, which it must have. Not the inverse of StatusToQB.
[[nodiscard]] std::string StatusFromQB(const Record& customerRet);
[[nodiscard]] int StatusToQB(std::string_view text);

}  // namespace twqb
