// Clients through the public class, in both directions.

#include <gtest/gtest.h>

#include "tests/support/TestHouse.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {
namespace {

// A bridge that works with saved filters, after the question of the first run.
class Bridge : public CTWQBBridge {
 public:
  explicit Bridge(TestHouse& house) {
    SetConnectString(house.ConnectString());
    SetTWSettingsPath(house.Path("twqb.ini"));
    SetUsePreferencesTW(true);
  }
};

std::string Customer(std::string_view fields) {
  return "<CustomerAddRq><CustomerAdd>" + std::string(fields) + "</CustomerAdd></CustomerAddRq>";
}

TEST(ClientTransfer, A_new_client_is_added_and_its_link_written_back) {
  TestHouse house({.answers = "no"});
  house.Sql("INSERT INTO Client (ClientID, ClientCompany, ClientFName) VALUES ('ACME1', 'Acme Tools', 'Ann')");
  house.Enter();
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  for (const auto& t : house.BoxTexts()) std::cerr << t << "\n---\n";
  const auto listId = house.ListIdOf("Acme Tools (ACME1)");
  EXPECT_NE(listId, "");
  EXPECT_EQ(house.Scalar("SELECT QBLinkID FROM Client"), listId);
  EXPECT_EQ(bridge.NewQBLinkID(), listId);
}

TEST(ClientTransfer, A_customer_becomes_a_client) {
  TestHouse house({.answers = "no"});
  house.Company(Customer("<Name>Baker, Lee</Name><CompanyName>Baker</CompanyName><Contact>Mary Ann Smith</Contact>"));
  house.Enter();
  Bridge bridge(house);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  for (const auto& t : house.BoxTexts()) std::cerr << t << "\n---\n";
  EXPECT_EQ(house.Scalar("SELECT ClientFName || '/' || ClientLName FROM Client WHERE ClientID = 'Baker  Lee'"),
            "MaryAnn/Smith");
}

}  // namespace
}  // namespace twqb
