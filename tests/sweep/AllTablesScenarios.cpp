// Runs over all tables: vendors, the tests' own table, and clients behind them.

#include "Books.h"
#include "Scenarios.h"
#include "tests/support/PlainVendors.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kBothTables = {
    {.name = "Employee", .keyColumn = "EmployeeID", .stampColumn = "LastUpdated"},
    {.name = "Client", .keyColumn = "ClientID", .stampColumn = "LastUpdate"}};

constexpr Transfer kSendAll = {.direction = Direction::Send, .table = enAll};
constexpr Transfer kGetAll = {.direction = Direction::Get, .table = enAll};

Scenario OfAllTables(std::string name, void (*prepare)(TestHouse&, const Scenario&), Transfer transfer) {
  return {.name = std::move(name),
          .tables = kBothTables,
          .ownTables = TwoTables(),
          .prepare = prepare,
          .transfers = {transfer}};
}

// Of each table a linked row that changed here; a vendor without a date of its last change and a client whose name is
// in use are new.
void PrepareSend(TestHouse& house, const Scenario& scenario) {
  house.Sql("INSERT INTO Employee (EmployeeID, IsSub, EmpCompany) VALUES ('VOLT', -1, 'Volt Electric')");
  house.Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('ACME', 'Acme Tools')");
  TransferNow(house, scenario);
  house.Sql("UPDATE Employee SET EmpHPhone = '603 555 0110', LastUpdated = '2008-03-05 15:30:00'");
  house.Sql("UPDATE Client SET ClientStreet = '2 Oak Street', LastUpdated = '2008-03-05 15:30:00'");
  house.Sql("INSERT INTO Employee (EmployeeID, IsSub, EmpCompany) VALUES ('WELLS', -1, 'Wells Drilling')");
  house.Sql("INSERT INTO Client (ClientID, ClientLName, LastUpdated) VALUES ('CEDAR', 'Pratt', '2008-03-05 15:00:00')");
  AddRecord(house, "Customer", "<Name>CEDAR</Name><CompanyName>Cedar Point</CompanyName>");
}

// Of each table a linked record that changed in QuickBooks and a new one; a client changed here later than its twin.
void PrepareGet(TestHouse& house, const Scenario& scenario) {
  AddRecord(house, "Vendor", "<Name>Volt</Name><CompanyName>Volt Electric</CompanyName>");
  AddRecord(house, "Customer", "<Name>Easton</Name><CompanyName>Town of Easton</CompanyName>");
  AddRecord(house, "Customer", "<Name>Farrow</Name><FirstName>Neil</FirstName>");
  TransferNow(house, scenario);
  house.machine.Advance(20 * Date::kMinute);
  ChangeRecord(house, "Vendor", "Volt", "<Phone>508.555.0110</Phone>");
  ChangeRecord(house, "Customer", "Easton", "<Phone>508.555.0199</Phone>");
  ChangeRecord(house, "Customer", "Farrow", "<FirstName>Nils</FirstName>");
  AddRecord(house, "Vendor", "<Name>Wells</Name><CompanyName>Wells Drilling</CompanyName>");
  AddRecord(house, "Customer", "<Name>Granite</Name><CompanyName>Granite State</CompanyName>");
  house.Sql("UPDATE Client SET ClientFName = 'Neal', LastUpdated = '2008-03-05 15:40:00' WHERE ClientID = 'Farrow'");
}

}  // namespace

std::vector<Scenario> AllTablesScenarios() {
  return {OfAllTables("send", PrepareSend, kSendAll), OfAllTables("get", PrepareGet, kGetAll)};
}

}  // namespace twqb::sweep
