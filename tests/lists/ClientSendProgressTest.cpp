// What the person at the desk and the call-back object see of a send of clients.

#include <gtest/gtest.h>

#include "platform/MsgFormTexts.h"
#include "tests/lists/ClientsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

void ThreeClients(ClientsHouse& house) {
  for (const std::string_view key : {"'A'", "'B'", "'C'"}) house.Client("ClientID", key);
}

TEST(ClientSendProgress, The_form_shows_the_action_the_position_and_the_key_and_goes_at_the_end) {
  ClientsHouse house;
  ThreeClients(house);
  house.Send();
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Clients to QuickBooks..."});
  Texts seen;
  for (const auto& event : house.desk.FormEvents()) {
    auto text = CountText(event.state.position.value()) + " " + event.state.record;
    if (event.kind == FormEventKind::Update && (seen.empty() || seen.back() != text)) seen.push_back(text);
  }
  EXPECT_EQ(seen, (Texts{"1/3 Label1", "1/3 A", "2/3 A", "2/3 B", "3/3 B", "3/3 C"}));
  EXPECT_EQ(house.desk.FormEvents().back().kind, FormEventKind::Unload);
}

TEST(ClientSendProgress, One_client_alone_shows_the_form_too) {
  ClientsHouse house;
  house.Client("ClientID", "'A'");
  house.Send();
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Clients to QuickBooks..."});
}

TEST(ClientSendProgress, Without_progress_bar_there_is_no_form_but_boxes_stay) {
  ClientsHouse house({.answers = "yes"}, "CustomerAddRq 1 status 3180 Error \"No.\"");
  ThreeClients(house);
  Vars().g_NoProgressBar = true;
  house.Send();
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSendProgress, The_form_stays_open_on_demand_and_in_a_run_over_all_tables) {
  for (const bool allTables : {false, true}) {
    ClientsHouse house;
    ThreeClients(house);
    (allTables ? Vars().g_AllTablesRun : Vars().g_LeaveMsgBoxOpen) = true;
    house.Send();
    EXPECT_TRUE(house.desk.Form());
  }
}

TEST(ClientSendProgress, A_cancel_finishes_the_client_in_hand_first) {
  ClientsHouse house({.answers = "cancel after 2\nyes"});
  ThreeClients(house);
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{"Are you sure you want to Cancel?", "Operation cancelled!"}));
  EXPECT_NE(house.ColumnOf("B", "QBLinkID"), "NULL");
  EXPECT_EQ(house.ColumnOf("C", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_FALSE(house.desk.Form());
}

TEST(ClientSendProgress, No_to_the_cancel_question_goes_on_to_the_end) {
  ClientsHouse house({.answers = "cancel after 2\nno"});
  ThreeClients(house);
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{"Are you sure you want to Cancel?"});
  EXPECT_NE(house.ColumnOf("C", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSendProgress, A_cancel_at_the_last_client_still_cancels_the_table) {
  ClientsHouse house({.answers = "cancel after 3\nyes"});
  ThreeClients(house);
  house.Send();
  EXPECT_NE(house.ColumnOf("C", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ClientSendProgress, Yes_to_a_refusal_keeps_a_cancel_that_was_pressed) {
  ClientsHouse house({.answers = "cancel after 1\nyes\nyes"}, "CustomerAddRq 1 status 3180 Error \"No.\"");
  ThreeClients(house);
  house.Send();
  EXPECT_EQ(house.BoxTexts().back(), "Operation cancelled!");
  EXPECT_EQ(house.traffic.documents.size(), 1U);
}

// --- The call-back object --------------------------------------------------------------------------------------------

using Events = std::vector<CallbackEvent>;

TEST(ClientSendCallback, Hears_of_each_record_while_subscribed) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client("ClientID, QBLinkID", "'ACME', '" + id + "'");
  house.Client("ClientID", "'NEW'");
  Vars().g_IsSubscribed = true;
  house.Send();
  EXPECT_EQ(house.callback.Events(), (Events{1, "", id, 1, "", "NEW"}));
}

TEST(ClientSendCallback, Hears_nothing_while_held_unsubscribed_or_before_version_3) {
  struct Case {
    bool subscribed;
    bool held;
    std::int16_t version;
  };
  for (const auto& c : {Case{false, false, 3}, Case{true, true, 3}, Case{true, false, 2}}) {
    ClientsHouse house;
    house.Client("ClientID", "'NEW'");
    Vars().g_IsSubscribed = c.subscribed;
    Vars().g_CallbackHeld = c.held;
    Vars().g_QBMajorVer = c.version;
    house.traffic.canned.emplace_back(
        "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><CustomerAddRs requestID=\"1\" statusCode=\"0\" "
        "statusSeverity=\"Info\" statusMessage=\"Status OK\"><CustomerRet><ListID>1-1</ListID></CustomerRet>"
        "</CustomerAddRs></QBXMLMsgsRs></QBXML>");
    house.Send();
    EXPECT_EQ(house.ColumnOf("NEW", "QBLinkID"), "1-1");
    EXPECT_TRUE(house.callback.Events().empty());
  }
}

TEST(ClientSendCallback, Hears_of_a_client_that_Never_leaves_alone_only_that_it_starts) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client("ClientID, QBLinkID", "'ACME', '" + id + "'");
  Vars().g_IsSubscribed = true;
  house.Send({.never = true});
  EXPECT_EQ(house.callback.Events(), (Events{1, ""}));
}

}  // namespace
}  // namespace twqb
