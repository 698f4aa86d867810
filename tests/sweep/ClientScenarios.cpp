// Clients in both directions.

#include "Books.h"
#include "Scenarios.h"

namespace twqb::sweep {
namespace {

const std::vector<LinkedTable> kClientTable = {
    {.name = "Client", .keyColumn = "ClientID", .stampColumn = "LastUpdate"}};

// One without a date of its last change, one whose twin QuickBooks deleted, one whose name is in use.
void PrepareFirstSend(TestHouse& house, const Scenario& /*scenario*/) {
  AddRecord(house, "Customer", "<Name>CEDAR</Name><CompanyName>Cedar Point</CompanyName>");
  house.Sql(
      "INSERT INTO Client (ClientID, ClientCompany, ClientFName, ClientStreet, ClientPhone, ClientSince) "
      "VALUES ('ACME1', 'Acme Tools', 'Ann', '1 Elm Street', '(603) 555-0101', '2003-02-10 00:00:00')");
  house.Sql(
      "INSERT INTO Client (ClientID, ClientCompany, ClientCity, QBLinkID, LastUpdated) "
      "VALUES ('BIRCH', 'Birch & Sons', 'Keene', '80000FFF-1111111111', '2008-03-01 09:00:00')");
  house.Sql(
      "INSERT INTO Client (ClientID, ClientLName, QBLinkID, LastUpdated) "
      "VALUES ('CEDAR', 'Pratt', '', '2008-02-01 09:00:00')");
}

// Of three linked clients one was changed here, one in QuickBooks and one nowhere; one is new. UTC is five hours ahead.
void PrepareSecondSend(TestHouse& house, const Scenario& scenario) {
  PrepareFirstSend(house, scenario);
  TransferNow(house, scenario);
  house.Sql(
      "UPDATE Client SET ClientStreet = '2 Oak Street', LastUpdated = '2008-03-05 15:30:00' WHERE ClientID = 'ACME1'");
  house.Sql("UPDATE Client SET ClientMI = 'P', LastUpdated = '2008-03-05 15:20:00' WHERE ClientID = 'BIRCH'");
  house.Sql("INSERT INTO Client (ClientID, ClientCompany) VALUES ('DOGWOOD', 'Dogwood Homes')");
  house.machine.Advance(45 * Date::kMinute);
  ChangeRecord(house, "Customer", "Birch &amp; Sons (BIRCH)", "<Phone>603 555 0177</Phone>");
}

// Two customers and a job of the first.
void PrepareFirstGet(TestHouse& house, const Scenario& /*scenario*/) {
  AddRecord(house, "Customer",
            "<Name>Easton, Town of</Name><CompanyName>Town of Easton</CompanyName>"
            "<BillAddress><Addr1>Town Hall</Addr1><Addr2>136 Elm Street</Addr2></BillAddress>"
            "<Phone>508.555.0151</Phone><Contact>Mary Ann Doyle</Contact>");
  AddRecord(house, "Customer", "<Name>Farrow</Name><FirstName>Neil</FirstName>");
  AddRecord(house, "Customer", "<Name>Library</Name><ParentRef><FullName>Easton, Town of</FullName></ParentRef>");
}

// One customer was changed in QuickBooks, one client here and later than its twin; one customer is new.
void PrepareSecondGet(TestHouse& house, const Scenario& scenario) {
  PrepareFirstGet(house, scenario);
  TransferNow(house, scenario);
  house.machine.Advance(20 * Date::kMinute);
  ChangeRecord(house, "Customer", "Easton, Town of", "<Phone>508.555.0199</Phone>");
  ChangeRecord(house, "Customer", "Farrow", "<FirstName>Nils</FirstName>");
  AddRecord(house, "Customer", "<Name>Granite</Name><CompanyName>Granite State</CompanyName>");
  house.Sql("UPDATE Client SET ClientFName = 'Neal', LastUpdated = '2008-03-05 15:40:00' WHERE ClientID = 'Farrow'");
}

constexpr Transfer kSendClients = {.direction = Direction::Send, .table = enClients};
constexpr Transfer kGetClients = {.direction = Direction::Get, .table = enClients};

}  // namespace

std::vector<Scenario> ClientScenarios() {
  return {
      {.name = "first_send", .tables = kClientTable, .prepare = PrepareFirstSend, .transfers = {kSendClients}},
      {.name = "second_send", .tables = kClientTable, .prepare = PrepareSecondSend, .transfers = {kSendClients}},
      {.name = "first_get", .tables = kClientTable, .prepare = PrepareFirstGet, .transfers = {kGetClients}},
      {.name = "second_get", .tables = kClientTable, .prepare = PrepareSecondGet, .transfers = {kGetClients}},
      {.name = "first_send_with_settings_in_the_table",
       .tables = kClientTable,
       .settings = SettingsStore::Table,
       .prepare = PrepareFirstSend,
       .transfers = {kSendClients}},
      {.name = "second_get_with_settings_in_the_table",
       .tables = kClientTable,
       .settings = SettingsStore::Table,
       .prepare = PrepareSecondGet,
       .transfers = {kGetClients}},
  };
}

}  // namespace twqb::sweep
