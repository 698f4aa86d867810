// Clients through the public class, in both directions.

#include <gtest/gtest.h>

#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

TEST(ClientTransfer, The_first_run_asks_about_a_backup_and_then_sends) {
  TestHouse house({.answers = "no"});
  house.Sql("INSERT INTO Client (ClientID, ClientCompany, ClientFName) VALUES ('ACME1', 'Acme Tools', 'Ann')");
  house.Enter();
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Backup QB Data file?");
  const auto listId = house.ListIdOf("Acme Tools (ACME1)");
  EXPECT_NE(listId, "");
  EXPECT_EQ(house.Scalar("SELECT QBLinkID FROM Client"), listId);
  EXPECT_EQ(bridge.NewQBLinkID(), listId);
}

TEST(ClientTransfer, A_customer_becomes_a_client) {
  BridgeHouse house;
  house.AddCustomer("<Name>Baker, Lee</Name><CompanyName>Baker</CompanyName><Contact>Mary Ann Smith</Contact>");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.Scalar("SELECT ClientFName || '/' || ClientLName FROM Client WHERE ClientID = 'Baker  Lee'"),
            "MaryAnn/Smith");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ClientTransfer, A_client_that_was_sent_comes_back_to_its_own_row) {
  BridgeHouse house;
  house.Client("ClientID, ClientCompany, ClientPhone", "'ACME1', 'Acme Tools', '617 555 0123'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.Keys(), "ACME1");
  EXPECT_EQ(house.ColumnOf("ACME1", "ClientPhone"), "6175550123");
  EXPECT_EQ(house.ColumnOf("ACME1", "LastUpdated"), "3/5/2008 3:00:00 PM");
}

TEST(ClientTransfer, A_Canadian_company_gets_its_provinces) {
  BridgeHouse house({.company = {.country = messages::Country::CA}});
  house.Client("ClientID, ClientState", "'ACME', 'ON'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(bridge.QBCountry(), "CA");
  EXPECT_EQ(house.CustomerField(house.ColumnOf("ACME", "QBLinkID"), "Province", "CA3.0"), "ON");
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.ColumnOf("ACME", "ClientState"), "ON");
}

TEST(ClientTransfer, An_Australian_company_talks_in_the_US_form) {
  BridgeHouse house({.company = {.country = messages::Country::AU}});
  house.Client("ClientID, ClientState", "'ACME', 'NSW'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(bridge.QBCountry(), "AU");
  EXPECT_NE(house.traffic.documents.back().find("<?qbxml version=\"3.0\"?>"), std::string::npos);
  EXPECT_EQ(house.TextOf(house.Requests("CustomerAddRq").at(0), "State"), "NSW");
}

}  // namespace
}  // namespace twqb
