// Projects in both directions.

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kProjectTable = {
    {.name = "Project", .keyColumn = "ProjectID", .stampColumn = "LastUpdated"}};

// A client that is a customer already.
void PrepareClient(TestHouse& house) {
  AddRecord(house, "Customer", "<Name>Acme</Name>");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID) VALUES ('ACME', '" + house.ListIdOf("Acme") + "')");
}

// One without a date, a phase under a job that is there already, and one whose name is in use and whose date sends it
// every time.
void PrepareFirstSend(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareClient(house);
  AddRecord(house, "Customer", "<Name>P2- Yard</Name><ParentRef><FullName>Acme</FullName></ParentRef>");
  AddRecord(house, "Customer", "<Name>P0</Name><ParentRef><FullName>Acme</FullName></ParentRef>");
  // Of no client, and so not sent itself.
  house.Sql("INSERT INTO Project (ProjectID, QBLinkID) VALUES ('P0:', '" + house.ListIdOf("Acme:P0") + "')");
  house.Sql(
      "INSERT INTO Project (ProjectID, ClientID, ProjectName, ProjectStatus, ProjectStreet, ProjectStartDate) "
      "VALUES ('P1:', 'ACME', 'Main Street', 'Active', '1 Main Street', '2007-06-01 00:00:00')");
  house.Sql(
      "INSERT INTO Project (ProjectID, ClientID, ProjectName, ProjectIsPhase, ParentProjectID, LastUpdated) "
      "VALUES ('P0:A', 'ACME', 'Cellar', -1, 'P0:', '2008-02-01 09:00:00')");
  house.Sql(
      "INSERT INTO Project (ProjectID, ClientID, ProjectName, QBLinkID, LastUpdated) "
      "VALUES ('P2:', 'ACME', 'Yard', '', '2030-01-01 09:00:00')");
}

// A project and its phase, whose managers are unknown.
void PrepareFirstGet(TestHouse& house, const Scenario& /*scenario*/) {
  PrepareClient(house);
  house.Sql("INSERT INTO Employee (EmployeeID) VALUES ('From QuickBooks')");
  AddRecord(house, "Customer",
            "<Name>Main</Name><ParentRef><FullName>Acme</FullName></ParentRef>"
            "<ShipAddress><Addr1>1 Main Street</Addr1></ShipAddress><JobStatus>InProgress</JobStatus>");
  AddRecord(house, "Customer", "<Name>Cellar</Name><ParentRef><FullName>Acme:Main</FullName></ParentRef>");
}

// One job was changed in QuickBooks, one project here and later than its twin.
void PrepareSecondGet(TestHouse& house, const Scenario& scenario) {
  PrepareFirstGet(house, scenario);
  TransferNow(house, scenario);
  house.machine.Advance(20 * Date::kMinute);
  ChangeRecord(house, "Customer", "Acme:Main", "<JobStatus>Pending</JobStatus>");
  ChangeRecord(house, "Customer", "Acme:Main:Cellar", "<JobStatus>Pending</JobStatus>");
  house.Sql(
      "UPDATE Project SET ProjectStatus = 'Hold', LastUpdated = '2008-03-05 15:40:00' WHERE ProjectID = 'Main:Cellar'");
}

constexpr Transfer kSendProjects = {.direction = Direction::Send, .table = enProjects};
constexpr Transfer kGetProjects = {.direction = Direction::Get, .table = enProjects};

}  // namespace

std::vector<Scenario> ProjectScenarios() {
  return {
      {.name = "first_send", .tables = kProjectTable, .prepare = PrepareFirstSend, .transfers = {kSendProjects}},
      {.name = "first_get", .tables = kProjectTable, .prepare = PrepareFirstGet, .transfers = {kGetProjects}},
      {.name = "second_get", .tables = kProjectTable, .prepare = PrepareSecondGet, .transfers = {kGetProjects}},
  };
}

}  // namespace twqb::sweep
