// The pull of a missing customer for a transaction's sake.

#include <gtest/gtest.h>

#include "engine/DependentPull.h"
#include "services/Database.h"
#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

class PullHouse : public BridgeHouse {
 public:
  explicit PullHouse(HouseOptions options = {}, std::string_view faults = {})
      : BridgeHouse(std::move(options), faults), connection(Vars().platform.database->CreateConnection()) {
    Connect();
    OpenConnection(*connection, nullptr, "");
    customer = AddCustomer("<Name>Acme</Name><FirstName>Ann</FirstName>");
    AddCustomer("<Name>Other</Name>");
  }

  std::unique_ptr<ado::Connection> connection;
  std::string customer;
};

TEST(DependentPull, Of_a_client_in_any_case_brings_this_one_customer) {
  for (const std::string_view kind : {"CLIENT", "client"}) {
    PullHouse house;
    TransferCustomerOrJobFromQB(house.customer, house.connection.get(), kind);
    EXPECT_EQ(house.Keys(), "Acme");
    EXPECT_EQ(house.Requests("CustomerQueryRq"), Texts{"<ListID>" + house.customer + "</ListID>"});
    EXPECT_TRUE(house.BoxTexts().empty());
    EXPECT_TRUE(house.desk.FormEvents().empty());
    EXPECT_EQ(house.connection->State(), ado::ObjectState::Open);
    EXPECT_EQ(Vars().g_TableOk, TableOk::True);
  }
}

TEST(DependentPull, Of_a_project_does_not_touch_the_clients) {
  PullHouse house;
  TransferCustomerOrJobFromQB(house.customer, house.connection.get(), "project");
  EXPECT_EQ(house.Keys(), "NULL");
}

TEST(DependentPull, Of_a_project_does_not_bring_a_customer_with_an_apostrophe_which_a_box_tells) {
  PullHouse house({.answers = "default yes\n"});
  const auto customer = house.AddCustomer("<Name>O'Dowd</Name>");
  TransferCustomerOrJobFromQB(customer, house.connection.get(), "project");
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM Project"), "0");
  ASSERT_FALSE(house.BoxTexts().empty());
  EXPECT_NE(house.BoxTexts()[0].find("The value \"O'Dowd:\" can't stand in a statement"), std::string::npos);
}

TEST(DependentPull, Of_any_other_kind_begins_with_the_client) {
  PullHouse house;
  TransferCustomerOrJobFromQB(house.customer, house.connection.get(), "");
  EXPECT_EQ(house.Keys(), "Acme");
}

TEST(DependentPull, Overwrites_a_known_row_whatever_the_saved_flags_say) {
  PullHouse house;
  house.Setting("QBGET_", "Customers_OptNever", "True");
  house.Client("ClientID, QBLinkID, LastUpdated", "'OLD', '" + house.customer + "', '2030-01-01'");
  TransferCustomerOrJobFromQB(house.customer, house.connection.get(), "CLIENT");
  EXPECT_EQ(house.ColumnOf("OLD", "ClientFName"), "Ann");
}

TEST(DependentPull, Finds_an_inactive_customer_though_active_ones_alone_are_wanted) {
  PullHouse house;
  house.Setting("QBGET_", "Customers_chkActiveOnly", "1");
  const auto idle = house.AddCustomer("<Name>Idle</Name><IsActive>false</IsActive>");
  TransferCustomerOrJobFromQB(idle, house.connection.get(), "CLIENT");
  EXPECT_EQ(house.ColumnOf("Idle", "Status"), "InActive");
}

TEST(DependentPull, Looks_the_active_setting_up_and_tells_what_does_not_convert) {
  PullHouse house;
  house.Setting("QBGET_", "Customers_chkActiveOnly", "perhaps");
  TransferCustomerOrJobFromQB(house.customer, house.connection.get(), "CLIENT");
  ASSERT_FALSE(house.BoxTexts().empty());
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("GetTableFromQB")));
  EXPECT_EQ(house.Keys(), "NULL");
}

TEST(DependentPull, Without_a_connection_shows_its_box_and_brings_nothing) {
  PullHouse house;
  TransferCustomerOrJobFromQB(house.customer, nullptr, "CLIENT");
  EXPECT_EQ(house.BoxTexts(), Texts{"MoveClientsToTW - Connection Object is required!"});
  EXPECT_EQ(house.Keys(), "NULL");
  EXPECT_EQ(Vars().g_TableOk, TableOk::False);
}

TEST(DependentPull, Leaves_a_cancel_for_the_callers_loop) {
  PullHouse house;
  Vars().g_Cancelled = true;
  TransferCustomerOrJobFromQB(house.customer, house.connection.get(), "CLIENT");
  EXPECT_EQ(house.Keys(), "Acme");
  EXPECT_TRUE(Vars().g_Cancelled);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(DependentPull, Of_a_customer_that_is_gone_is_silent) {
  PullHouse house;
  TransferCustomerOrJobFromQB("80000001-1", house.connection.get(), "CLIENT");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.Keys(), "NULL");
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

}  // namespace
}  // namespace twqb
