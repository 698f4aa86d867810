// Transfers without saved filters: one record by PassedID, and what is remembered of such a run.

#include <gtest/gtest.h>

#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

const std::string kNow = "3/5/2008 10:00:00 AM";

class OneRecordHouse : public BridgeHouse {
 public:
  OneRecordHouse() {
    Client("ClientID", "'A'");
    Client("ClientID", "'B'");
  }
};

TEST(PassedRecord, Counts_as_a_full_run_for_no_saved_filter_was_read) {
  OneRecordHouse house;
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID("B");
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.LastSend(), kNow);
}

TEST(PassedRecord, Is_not_remembered_while_the_filters_of_an_earlier_run_still_count) {
  OneRecordHouse house;
  house.Setting("QBSEND_", "Clients_OptFilter1b", "True");
  house.Setting("QBSEND_", "Clients_cmbFilter1a", "A");
  house.Setting("QBSEND_", "Clients_cmbFilter1b", "A");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID("B");
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_NE(house.ListIdOf("B"), "");
  EXPECT_EQ(house.LastSend(), "(none)");
}

TEST(PassedRecord, Left_empty_lets_every_record_go_in_both_directions) {
  OneRecordHouse house;
  house.AddCustomer("<Name>C</Name>");
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_NE(house.ListIdOf("A"), "");
  EXPECT_NE(house.ListIdOf("B"), "");
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.Keys(), "A,B,C");
}

TEST(PassedRecord, Overwrites_its_twin_for_no_saved_flag_was_read_either) {
  BridgeHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Quinn</FirstName>");
  house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Bill', '" + id + "', '2001-01-01'");
  house.Setting("QBSEND_", "Clients_OptNever", "True");
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID("ACME");
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.CustomerField(id, "FirstName"), "Bill");
}

TEST(PassedRecord, Loses_to_a_newer_twin_in_a_sync) {
  BridgeHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Quinn</FirstName>");
  house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Bill', '" + id + "', '2001-01-01'");
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  bridge.SetIsSync(true);
  bridge.SetPassedID("ACME");
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.CustomerField(id, "FirstName"), "Quinn");
}

TEST(PassedRecord, Stays_as_the_host_set_it_and_the_new_link_is_told) {
  OneRecordHouse house;
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID("B");
  bridge.SetNewQBLinkID("of an earlier record");
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(bridge.PassedID(), "B");
  EXPECT_EQ(bridge.NewQBLinkID(), house.ListIdOf("B"));
  // A Mod tells no new one.
  bridge.SetNewQBLinkID("");
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(bridge.NewQBLinkID(), "");
}

TEST(Sync, Lets_the_newer_record_win_in_a_run_over_all_tables_too) {
  for (const bool sync : {false, true}) {
    BridgeHouse house;
    const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Quinn</FirstName>");
    house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Bill', '" + id + "', '2001-01-01'");
    house.Setting("QBSEND_", "Clients_OptMostRecent", "False");
    Bridge bridge(house);
    bridge.SetIsSync(sync);
    EXPECT_TRUE(bridge.SendDataToQB(enAll));
    EXPECT_EQ(house.CustomerField(id, "FirstName"), sync ? "Quinn" : "Bill");
  }
}

}  // namespace
}  // namespace twqb
