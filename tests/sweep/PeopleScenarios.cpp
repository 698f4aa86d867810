// Employees and vendors in both directions. Their names are one word: a counter stands at the end of them then, where
// the checks look for it.

#include <fmt/core.h>

#include <stdexcept>

#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kPeople = {
    {.name = "Employee", .keyColumn = "EmployeeID", .stampColumn = "LastUpdated", .countedField = "FirstName"}};

// What the two kinds have otherwise.
struct Kind {
  std::string_view name;
  int isSub;
  std::string_view nameField;  // what stands ahead of a first name on an Add
  std::string_view fields;     // what an Add of the link sets and a Mod does not
};
constexpr Kind kEmployee = {
    .name = "Employee",
    .isSub = 0,
    .nameField = "",
    .fields =
        "<EmployeePayrollInfo><IsUsingTimeDataToCreatePaychecks>true</IsUsingTimeDataToCreatePaychecks>"
        "</EmployeePayrollInfo>"};
constexpr Kind kVendor = {.name = "Vendor", .isSub = -1, .nameField = "Name", .fields = ""};

struct Added {
  std::string listId;
  std::string editSequence;
};

std::string TextOf(const std::string& answer, std::string_view element) {
  const auto open = fmt::format("<{}>", element);
  const auto at = answer.find(open);
  if (at == std::string::npos) throw std::runtime_error(answer);
  const auto from = at + open.size();
  return answer.substr(from, answer.find('<', from) - from);
}

Added Add(TestHouse& house, const Kind& kind, std::string_view first) {
  const auto name = kind.nameField.empty() ? "" : fmt::format("<{0}>{1}</{0}>", kind.nameField, first);
  const auto answer = house.Company(fmt::format(
      "<{0}AddRq><{0}Add>{1}<FirstName>{2}</FirstName>{3}</{0}Add></{0}AddRq>", kind.name, name, first, kind.fields));
  return {.listId = TextOf(answer, "ListID"), .editSequence = TextOf(answer, "EditSequence")};
}

void Change(TestHouse& house, const Kind& kind, const Added& added, std::string_view fields) {
  (void)TextOf(house.Company(fmt::format("<{0}ModRq><{0}Mod><ListID>{1}</ListID><EditSequence>{2}</EditSequence>{3}"
                                         "</{0}Mod></{0}ModRq>",
                                         kind.name, added.listId, added.editSequence, fields)),
               "ListID");
}

void Insert(TestHouse& house, const Kind& kind, std::string_view first, std::string_view link, std::string_view date) {
  house.Sql(
      fmt::format("INSERT INTO Employee (EmployeeID, IsSub, EmpFName, EmpHPhone, QBLinkID, LastUpdated) VALUES "
                  "('{}', {}, '{}', '603 555 0101', {}, {})",
                  first, kind.isSub, first, link, date));
}

// One is new, one was changed here after its twin. One has no date of its last change and never goes; for its sake
// every send has a row to look at.
template <const Kind& kind>
void PrepareSend(TestHouse& house, const Scenario& /*scenario*/) {
  Insert(house, kind, "Ann", "NULL", "NULL");
  const auto bob = Add(house, kind, "Bob");
  Insert(house, kind, "Bob", "'" + bob.listId + "'", "'2008-03-05 15:30:00'");
  const auto eve = Add(house, kind, "Eve");
  Insert(house, kind, "Eve", "'" + eve.listId + "'", "NULL");
}

// One was changed in QuickBooks after its row and one not. There is no new one: that its rates are written with errors
// ignored is told elsewhere.
template <const Kind& kind>
void PrepareGet(TestHouse& house, const Scenario& /*scenario*/) {
  const auto cy = Add(house, kind, "Cy");
  Insert(house, kind, "Cy", "'" + cy.listId + "'", "'2008-03-05 15:30:00'");
  const auto dee = Add(house, kind, "Dee");
  Insert(house, kind, "Dee", "'" + dee.listId + "'", "'2008-03-05 15:05:00'");
  house.machine.Advance(20 * Date::kMinute);
  Change(house, kind, dee, "<Phone>603 555 0199</Phone>");
}

}  // namespace

std::vector<Scenario> PeopleScenarios() {
  return {
      {.name = "send_employees",
       .tables = kPeople,
       .prepare = PrepareSend<kEmployee>,
       .transfers = {{.direction = Direction::Send, .table = enEmployees}}},
      {.name = "get_employees",
       .tables = kPeople,
       .prepare = PrepareGet<kEmployee>,
       .transfers = {{.direction = Direction::Get, .table = enEmployees}}},
      {.name = "send_vendors",
       .tables = kPeople,
       .prepare = PrepareSend<kVendor>,
       .transfers = {{.direction = Direction::Send, .table = enVendors}}},
      {.name = "get_vendors",
       .tables = kPeople,
       .prepare = PrepareGet<kVendor>,
       .transfers = {{.direction = Direction::Get, .table = enVendors}}},
  };
}

}  // namespace twqb::sweep
