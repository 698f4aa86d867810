// A run over all tables, and the call-back object that a transfer holds still.

#include <gtest/gtest.h>

#include "adapters/system/Callbacks.h"
#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

using Events = std::vector<CallbackEvent>;
using Texts = std::vector<std::string>;

TEST(AllTables, A_send_passes_over_what_is_not_built_and_remembers_each_table) {
  BridgeHouse house;
  house.Client("ClientID", "'ACME'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enAll));
  EXPECT_NE(house.ListIdOf("ACME"), "");
  EXPECT_EQ(house.LastSend(), "3/5/2008 10:00:00 AM");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_FALSE(Vars().g_AllTablesRun);
  EXPECT_FALSE(house.desk.Form());
}

TEST(AllTables, A_get_passes_over_what_is_not_built_and_remembers_each_table) {
  BridgeHouse house;
  house.AddCustomer("<Name>Acme</Name>");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.GetDataFromQB(enAll));
  EXPECT_EQ(house.Keys(), "Acme");
  EXPECT_EQ(house.LastGet(), "3/5/2008 10:00:00 AM");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_FALSE(Vars().g_AllTablesRun);
  EXPECT_FALSE(house.desk.Form());
}

TEST(AllTables, The_form_is_left_open_at_the_end_of_a_send_on_demand_and_never_of_a_get) {
  BridgeHouse house;
  house.Client("ClientID", "'ACME'");
  Bridge bridge(house);
  bridge.SetLeaveMsgBoxOpen(true);
  EXPECT_TRUE(bridge.SendDataToQB(enAll));
  EXPECT_TRUE(house.desk.Form());
  EXPECT_TRUE(bridge.GetDataFromQB(enAll));
  EXPECT_FALSE(house.desk.Form());
}

TEST(AllTables, A_skipped_table_does_not_skip_the_next) {
  BridgeHouse house;
  house.Client("ClientID", "'ACME'");
  house.Setting("QBSEND_", "Clients_ChkSkip", "True");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enAll));
  EXPECT_EQ(house.ListIdOf("ACME"), "");
  EXPECT_EQ(house.LastSend(), "(none)");
  EXPECT_EQ(house.SettingOf("QBSEND_", "Estimates_LastSendAt"), "3/5/2008 10:00:00 AM");
}

TEST(AllTables, A_table_that_fails_ends_the_run_with_the_call_back_still_held) {
  BridgeHouse house({.answers = "no"}, std::string(kSubscribed) + "CustomerAddRq 1 status 3180 Error \"No.\"");
  house.Client("ClientID", "'ACME'");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enAll));
  EXPECT_FALSE(Vars().g_AllTablesRun);
  EXPECT_FALSE(house.desk.Form());
  EXPECT_EQ(house.callback.Events(), Events{3});
  EXPECT_TRUE(Vars().g_CallbackHeld);
  EXPECT_EQ(house.SettingOf("QBSEND_", "Estimates_LastSendAt"), "(none)");
}

TEST(AllTables, A_table_that_fails_in_a_get_ends_the_run_likewise_and_its_form_goes) {
  BridgeHouse house({.answers = "no"}, std::string(kSubscribed) + "row 1 raise 0x80040E2F \"Refused.\" Client");
  house.AddCustomer("<Name>A</Name>");
  house.AddCustomer("<Name>B</Name>");
  Bridge bridge(house);
  bridge.SetLeaveMsgBoxOpen(true);
  EXPECT_FALSE(bridge.GetDataFromQB(enAll));
  EXPECT_FALSE(Vars().g_AllTablesRun);
  EXPECT_FALSE(house.desk.Form());
  EXPECT_EQ(house.callback.Events(), Events{3});
  EXPECT_TRUE(Vars().g_CallbackHeld);
}

TEST(AllTables, Saved_filters_that_cannot_be_read_end_the_run_and_leave_flag_and_form) {
  BridgeHouse house({}, kSubscribed);
  house.Client("ClientID", "'ACME'");
  house.Setting("QBSEND_", "Estimates_ChkSkip", "perhaps");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enAll));
  EXPECT_TRUE(Vars().g_AllTablesRun);
  EXPECT_TRUE(house.desk.Form());
  EXPECT_EQ(house.callback.Events(), (Events{3, 0}));
}

TEST(AllTables, A_time_that_cannot_be_written_ends_a_send_with_the_call_back_released) {
  BridgeHouse house({}, std::string(kSubscribed) + "settings 1 raise 75 \"Full.\" write Clients_LastSendAt");
  house.Client("ClientID", "'ACME'");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enAll));
  EXPECT_FALSE(Vars().g_AllTablesRun);
  EXPECT_FALSE(house.desk.Form());
  EXPECT_EQ(house.callback.Events(), (Events{3, 0}));
  EXPECT_FALSE(Vars().g_CallbackHeld);
  EXPECT_EQ(house.SettingOf("QBSEND_", "Estimates_LastSendAt"), "(none)");
}

TEST(AllTables, A_time_that_cannot_be_written_ends_a_get_at_once_with_the_call_back_held) {
  BridgeHouse house({}, std::string(kSubscribed) + "settings 1 raise 75 \"Full.\" write Customers_LastSendAt");
  house.AddCustomer("<Name>A</Name>");
  Bridge bridge(house);
  bridge.SetLeaveMsgBoxOpen(true);
  EXPECT_FALSE(bridge.GetDataFromQB(enAll));
  EXPECT_FALSE(Vars().g_AllTablesRun);
  EXPECT_TRUE(house.desk.Form()) << "as it was asked for";
  EXPECT_EQ(house.callback.Events(), Events{3});
  EXPECT_TRUE(Vars().g_CallbackHeld);
}

// --- The call-back object in a single table --------------------------------------------------------------------------

TEST(HeldCallback, Is_in_mode_3_for_the_whole_transfer_and_hears_of_no_record) {
  for (const bool sends : {true, false}) {
    BridgeHouse house({}, kSubscribed);
    house.Client("ClientID", "'ACME'");
    house.AddCustomer("<Name>Baker</Name>");
    Bridge bridge(house);
    EXPECT_TRUE(sends ? bridge.SendDataToQB(enClients) : bridge.GetDataFromQB(enClients));
    EXPECT_EQ(house.callback.Events(), (Events{3, 0}));
    EXPECT_FALSE(Vars().g_CallbackHeld);
    EXPECT_TRUE(Vars().g_QBCallback);
  }
}

TEST(HeldCallback, Gets_the_mode_back_that_it_had) {
  BridgeHouse house({}, kSubscribed);
  Vars().g_QBCallback = house.callback.CreateCallback();
  Vars().g_QBCallback->SetMode(7);
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.callback.Events(), (Events{7, 3, 7}));
}

TEST(HeldCallback, Is_released_after_a_skip_and_after_a_send_that_failed) {
  BridgeHouse skipped({}, kSubscribed);
  skipped.Setting("QBSEND_", "Clients_ChkSkip", "True");
  {
    Bridge bridge(skipped);
    EXPECT_TRUE(bridge.SendDataToQB(enClients));
  }
  EXPECT_EQ(skipped.callback.Events(), (Events{3, 0}));
  BridgeHouse failed({.answers = "no"}, std::string(kSubscribed) + "CustomerAddRq 1 status 3180 Error \"No.\"");
  failed.Client("ClientID", "'ACME'");
  Bridge bridge(failed);
  EXPECT_FALSE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(failed.callback.Events(), (Events{3, 0}));
}

TEST(HeldCallback, Stays_held_after_a_get_that_failed_until_the_next_transfer_overwrites_it) {
  BridgeHouse house({},
                    "SubscriptionQueryRq 1 status 0 Info \"Status OK\"\n"
                    "SubscriptionQueryRq 2 status 0 Info \"Status OK\"\n"
                    "CustomerQueryRq 1 status 3000 Error \"Bad.\"");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.GetDataFromQB(enClients));
  EXPECT_TRUE(Vars().g_CallbackHeld);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.callback.Events(), (Events{3, 3, 3}));
  EXPECT_FALSE(Vars().g_CallbackHeld);
}

TEST(HeldCallback, Stays_held_after_a_get_whose_time_could_not_be_written) {
  BridgeHouse house({}, std::string(kSubscribed) + "settings 1 raise 75 write Customers_LastSendAt");
  house.AddCustomer("<Name>A</Name>");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.callback.Events(), Events{3});
}

TEST(HeldCallback, Is_not_made_without_a_subscription) {
  BridgeHouse house;
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_TRUE(house.callback.Events().empty());
  EXPECT_FALSE(Vars().g_QBCallback);
}

TEST(HeldCallback, Is_not_asked_for_before_message_version_3) {
  BridgeHouse house({.company = {.hostVersion = 12}}, kSubscribed);
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(Vars().g_QBMajorVer, 2);
  EXPECT_FALSE(Vars().g_IsSubscribed);
  EXPECT_TRUE(house.callback.Events().empty());
}

TEST(HeldCallback, A_class_that_is_not_there_fails_the_transfer) {
  BridgeHouse house({}, kSubscribed);
  NoCallbackFactory none;
  Vars().platform.callback = &none;
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enClients));
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("SendDataToQB")));
}

TEST(HeldCallback, An_error_while_it_is_released_is_ignored) {
  BridgeHouse house({}, std::string(kSubscribed) + "callback 3 raise 91 mode");  // read, set to 3, set back
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_FALSE(Vars().g_CallbackHeld);
  EXPECT_TRUE(house.BoxTexts().empty());
}

}  // namespace
}  // namespace twqb
