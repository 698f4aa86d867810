// The way of one table: which records go, when the run is remembered, what a failure leaves.

#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "bridge/Tables.h"
#include "bridge/modTWQBBridge.h"
#include "engine/Table.h"
#include "tests/bridge/BridgeHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;
const std::string kNow = "3/5/2008 10:00:00 AM";

// --- What is remembered ----------------------------------------------------------------------------------------------

TEST(Dispatch, A_full_run_that_went_well_is_remembered_in_each_direction) {
  BridgeHouse house;
  house.Client("ClientID", "'ACME'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.LastSend(), kNow);
  EXPECT_EQ(house.LastGet(), "(none)");
  house.machine.Advance(Date::kHour * 3);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.LastSend(), kNow);
  EXPECT_EQ(house.LastGet(), "3/5/2008 1:00:00 PM");
}

TEST(Dispatch, A_run_without_a_row_is_remembered_too) {
  BridgeHouse house;
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.LastSend(), kNow);
}

TEST(Dispatch, A_run_that_a_filter_narrowed_is_not_remembered) {
  struct Option {
    std::string option;
    std::string a;
    std::string b;
    std::string value;
  };
  const Option options[] = {{"_OptDate1b", "_cmbDate1a", "_cmbDate1b", "3/4/2008"},
                            {"_OptFilter1b", "_cmbFilter1a", "_cmbFilter1b", "ACME"},
                            {"_OptFilter2b", "_cmbFilter2a", "_cmbFilter2b", "G"},
                            {"_OptFilter3b", "_cmbFilter3a", "_cmbFilter3b", "x"},
                            {"_optFromDate", "_ssdtFrom", "_ssdtTo", "3/4/2008"}};
  for (const auto& option : options) {
    SCOPED_TRACE(option.option);
    BridgeHouse house;
    house.Setting("QBSEND_", "Clients_LastSendAt", "1/1/2008");
    house.Setting("QBSEND_", "Clients" + option.option, "True");
    house.Setting("QBSEND_", "Clients" + option.a, option.value);
    house.Setting("QBSEND_", "Clients" + option.b, option.value);
    Bridge bridge(house);
    EXPECT_TRUE(bridge.SendDataToQB(enClients));
    EXPECT_EQ(house.LastSend(), "1/1/2008");
  }
}

TEST(Dispatch, A_table_to_be_skipped_is_True_and_nothing_happens) {
  BridgeHouse house;
  house.Client("ClientID", "'ACME'");
  house.AddCustomer("<Name>Baker</Name>");
  house.Setting("QBSEND_", "Clients_ChkSkip", "True");
  house.Setting("QBGET_", "Customers_ChkSkip", "True");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.ListIdOf("ACME"), "");
  EXPECT_EQ(house.Keys(), "ACME");
  EXPECT_EQ(house.LastSend(), "(none)");
  EXPECT_EQ(house.LastGet(), "(none)");
  EXPECT_TRUE(house.traffic.statements.empty());
}

TEST(Dispatch, A_send_that_was_stopped_is_False_and_not_remembered) {
  BridgeHouse house({.answers = "no"}, "CustomerAddRq 1 status 3180 Error \"No.\"");
  house.Client("ClientID", "'ACME'");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.BoxTexts().back(), "Operation cancelled!");
  EXPECT_EQ(house.LastSend(), "(none)");
}

TEST(Dispatch, A_send_whose_call_failed_is_False) {
  BridgeHouse house({}, "sql 1 raise 0x80040E14 \"Broken.\" SELECT ClientID, ClientFName");
  house.Client("ClientID", "'ACME'");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.LastSend(), "(none)");
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(Dispatch, A_get_whose_last_record_failed_and_was_waved_on_counts_as_well) {
  BridgeHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" Client");
  house.AddCustomer("<Name>Baker</Name>");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(Vars().g_TableOk, TableOk::GoOn);
  EXPECT_EQ(house.LastGet(), kNow);
}

TEST(Dispatch, A_company_without_records_is_True_but_not_remembered) {
  BridgeHouse house;
  Bridge bridge(house);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.LastGet(), "(none)");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.traffic.statements.empty());
  EXPECT_FALSE(house.desk.Form());
}

TEST(Dispatch, A_refused_query_is_False) {
  BridgeHouse house({}, "CustomerQueryRq 1 status 3000 Error \"Bad.\"");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.BoxTexts(), Texts{RefusalText("Bad.", 3000, "Error")});
  EXPECT_FALSE(house.desk.Form());
}

TEST(Dispatch, A_time_that_cannot_be_written_makes_the_run_False) {
  BridgeHouse house({},
                    "settings 1 raise 75 \"Full.\" write Clients_LastSendAt\n"
                    "settings 1 raise 75 \"Full.\" write Customers_LastSendAt");
  house.AddCustomer("<Name>Baker</Name>");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enClients));
  EXPECT_FALSE(bridge.GetDataFromQB(enClients));
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  for (const auto& text : house.BoxTexts()) EXPECT_TRUE(text.ends_with(ErrorBoxEnd("gf_WriteSettings")));
  EXPECT_EQ(house.Keys(), "Baker");
}

TEST(Dispatch, The_time_goes_to_the_settings_table_when_that_is_in_use) {
  BridgeHouse house;
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_FIRST_TIME', 'False')");
  Bridge bridge(house);
  bridge.SetUseTWSTable(true);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.Scalar("SELECT ParamValue FROM TWSTable WHERE ParamName = 'QBSEND__Clients_LastSendAt'"), kNow);
  EXPECT_EQ(house.LastSend(), "(none)");
}

TEST(Dispatch, The_next_send_takes_what_changed_since) {
  BridgeHouse house;
  house.Client("ClientID, LastUpdated", "'OLD', '2008-03-01'");
  house.Client("ClientID, LastUpdated", "'NEW', '2008-03-01'");
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  house.Sql("UPDATE Client SET LastUpdated = '2008-03-05 15:00:01' WHERE ClientID = 'NEW'");
  house.traffic.documents.clear();
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.Requests("CustomerModRq").size(), 1U);
}

// --- What goes -------------------------------------------------------------------------------------------------------

TEST(Dispatch, A_sync_lets_the_newer_record_win_whatever_the_settings_say) {
  for (const bool sync : {false, true}) {
    BridgeHouse house;
    const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Quinn</FirstName>");
    house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Bill', '" + id + "', '2001-01-01'");
    house.Setting("QBSEND_", "Clients_OptMostRecent", "False");
    Bridge bridge(house);
    bridge.SetIsSync(sync);
    EXPECT_TRUE(bridge.SendDataToQB(enClients));
    EXPECT_EQ(house.CustomerField(id, "FirstName"), sync ? "Quinn" : "Bill");
  }
  for (const bool sync : {false, true}) {
    BridgeHouse house;
    const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Quinn</FirstName>");
    house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Bill', '" + id + "', '2030-01-01'");
    house.Setting("QBGET_", "Customers_OptMostRecent", "False");
    Bridge bridge(house);
    bridge.SetIsSync(sync);
    EXPECT_TRUE(bridge.GetDataFromQB(enClients));
    EXPECT_EQ(house.ColumnOf("ACME", "ClientFName"), sync ? "Bill" : "Quinn");
  }
}

TEST(Dispatch, Without_saved_filters_the_passed_client_goes_alone) {
  BridgeHouse house;
  for (const std::string_view key : {"'A'", "'B'", "'C'"}) house.Client("ClientID", key);
  house.Setting("QBSEND_", "Clients_ChkSkip", "True");  // not looked at
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID("B");
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_EQ(house.ListIdOf("A") + house.ListIdOf("C"), "");
  EXPECT_EQ(bridge.NewQBLinkID(), house.ListIdOf("B"));
  EXPECT_TRUE(house.traffic.statements.at(0).ends_with("AND ClientID BETWEEN 'B' AND 'B' ;"));
}

TEST(Dispatch, Without_saved_filters_the_passed_customer_comes_alone) {
  BridgeHouse house;
  house.AddCustomer("<Name>A</Name>");
  const auto id = house.AddCustomer("<Name>B</Name><IsActive>false</IsActive>");
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID(id);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.Keys(), "B");
  EXPECT_EQ(house.Requests("CustomerQueryRq"), Texts{"<ListID>" + id + "</ListID>"});
}

TEST(Dispatch, A_passed_customer_that_is_gone_is_False_without_a_box) {
  BridgeHouse house;
  Bridge bridge(house);
  bridge.SetUsePreferencesTW(false);
  bridge.SetPassedID("80000001-1");
  EXPECT_FALSE(bridge.GetDataFromQB(enClients));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(Dispatch, The_saved_filters_of_a_get_reach_the_wire) {
  BridgeHouse house;
  for (const auto& [key, value] :
       std::initializer_list<std::pair<std::string, std::string>>{{"_chkActiveOnly", "1"},
                                                                  {"_OptDate1b", "True"},
                                                                  {"_cmbDate1a", "3/4/2008"},
                                                                  {"_cmbDate1b", "3/5/2008 1:00:00 PM"},
                                                                  {"_OptFilter1b", "True"},
                                                                  {"_cmbFilter1a", "A"},
                                                                  {"_cmbFilter1b", "M"}}) {
    house.Setting("QBGET_", "Customers" + key, value);
  }
  Bridge bridge(house);
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.Requests("CustomerQueryRq"),
            Texts{"<ActiveStatus>ActiveOnly</ActiveStatus><FromModifiedDate>2008-03-04T05:00:00</FromModifiedDate>"
                  "<ToModifiedDate>2008-03-05T18:00:00</ToModifiedDate>"
                  "<NameRangeFilter><FromName>A</FromName><ToName>M</ToName></NameRangeFilter>"});
}

TEST(Dispatch, Active_only_alone_breaks_the_first_send_and_ends_in_its_error_box) {
  BridgeHouse house({.zone = {.bias = 0, .daylightBias = -60, .state = TimeZoneState::Standard}});
  house.Client("ClientID", "'ACME'");
  house.Setting("QBSEND_", "Clients_chkActiveOnly", "1");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enClients));
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveClientsToQB")));
}

TEST(Dispatch, The_dialect_follows_the_providers_name) {
  for (const std::string_view pair : {"SQLITE SQL '01/01/1900", "JETLITE JET #01/01/1900"}) {
    const auto parts = Split(pair, ' ');
    BridgeHouse house({.provider = parts[0]});
    house.Client("ClientID", "'ACME'");
    Bridge bridge(house);
    EXPECT_TRUE(bridge.SendDataToQB(enClients));
    EXPECT_TRUE(bridge.GetDataFromQB(enClients));
    EXPECT_EQ(Vars().g_DbKind, parts[1]);
    EXPECT_NE(house.traffic.statements.at(0).find(parts[2]), std::string::npos);
    EXPECT_EQ(Vars().g_CnRefCount, 0);
  }
}

TEST(Dispatch, Settings_that_do_not_convert_make_a_single_table_False) {
  BridgeHouse house;
  house.Setting("QBSEND_", "Clients_OptNever", "perhaps");
  house.Setting("QBGET_", "Customers_OptNever", "perhaps");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enClients));
  EXPECT_FALSE(bridge.GetDataFromQB(enClients));
  EXPECT_EQ(house.BoxTexts().size(), 2U);
}

TEST(Dispatch, A_last_send_that_is_no_date_is_told_by_the_dispatcher) {
  BridgeHouse house;
  house.Setting("QBSEND_", "Clients_LastSendAt", "yesterday");
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enClients));
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("SendTableToQB")));
}

TEST(Dispatch, Without_a_session_a_transfer_is_False_and_says_no_more) {
  BridgeHouse house({.answers = "cancel\ncancel"});
  std::filesystem::remove(house.Path("company.twq"));
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enClients));
  EXPECT_FALSE(bridge.GetDataFromQB(enClients));
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.desk.FileDialogs().size(), 2U);
  EXPECT_TRUE(house.traffic.statements.empty());
}

// --- The form --------------------------------------------------------------------------------------------------------

TEST(Dispatch, A_form_left_open_stays_after_a_send_and_goes_after_a_get) {
  BridgeHouse house;
  house.Client("ClientID", "'A'");
  house.Client("ClientID", "'B'");
  Bridge bridge(house);
  bridge.SetLeaveMsgBoxOpen(true);
  EXPECT_TRUE(bridge.SendDataToQB(enClients));
  EXPECT_TRUE(house.desk.Form());
  EXPECT_TRUE(bridge.GetDataFromQB(enClients));
  EXPECT_FALSE(house.desk.Form());
}

TEST(Dispatch, A_get_that_was_stopped_is_False_and_takes_its_form_down) {
  BridgeHouse house({.answers = "no"}, "row 1 raise 0x80040E2F \"Refused.\" Client");
  house.AddCustomer("<Name>A</Name>");
  house.AddCustomer("<Name>B</Name>");
  Bridge bridge(house);
  bridge.SetLeaveMsgBoxOpen(true);
  EXPECT_FALSE(bridge.GetDataFromQB(enClients));
  EXPECT_FALSE(house.desk.Form());
}

// --- Tables that are not there ---------------------------------------------------------------------------------------

TEST(Dispatch, A_table_without_routines_is_told_by_name_and_is_False) {
  BridgeHouse house;
  auto bills = *FindTable(enVendorBill);
  bills.send = nullptr;
  bills.get = nullptr;
  const std::array<const Table*, 1> tables = {&bills};
  house.tables = tables;
  house.EnterSpied();
  Bridge bridge(house);
  EXPECT_FALSE(bridge.SendDataToQB(enVendorBill));
  EXPECT_FALSE(bridge.GetDataFromQB(enVendorBill));
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_NE(house.BoxTexts()[0].find("\"Vendor Bill\""), std::string::npos);
  EXPECT_NE(house.BoxTexts()[1].find("\"Vendor Bill(QB)\""), std::string::npos);
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
}

TEST(Dispatch, Sending_estimates_is_True_and_nothing_happens) {
  BridgeHouse house;
  Bridge bridge(house);
  EXPECT_TRUE(bridge.SendDataToQB(enEstimates));
  EXPECT_TRUE(house.traffic.statements.empty());
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(Dispatch, The_dispatchers_take_no_run_over_all_tables) {
  BridgeHouse house;
  EXPECT_TRUE(SendTableToQB(enAll, {}));
  EXPECT_TRUE(GetTableFromQB(enAll, {}, ActiveOnly::False, false, nullptr));
  EXPECT_TRUE(house.traffic.statements.empty());
}

}  // namespace
}  // namespace twqb
