// The send of clients: links, twins, refusals and their questions, names in use, errors, cancel, progress.

#include <gtest/gtest.h>

#include "tests/lists/ClientsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const std::string kGoOnQuestion = "Do you want to transfer rest of the records?";
std::string Line(std::string_view key) { return "\r\n\r\n[Client ID = \"" + std::string(key) + "\"]"; }
std::string LogLine(std::string_view key) { return "Error tranfering Client to QB. Client ID = " + std::string(key); }

// --- Adding ----------------------------------------------------------------------------------------------------------

TEST(ClientSend, A_selection_without_rows_is_a_good_end_without_a_word) {
  ClientsHouse house;
  house.Send();
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.traffic.documents.empty());
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(ClientSend, A_new_client_is_added_and_its_link_and_odd_date_written_back) {
  ClientsHouse house;
  house.Client("ClientID", "'ACME'");
  house.Send();
  const auto id = house.ListIdOf("ACME");
  ASSERT_EQ(house.traffic.statements.size(), 3U);
  EXPECT_EQ(house.traffic.statements[1], "UPDATE Client SET QBLinkID = '" + id + "' WHERE ClientID = 'ACME';");
  EXPECT_EQ(house.traffic.statements[2],
            "UPDATE Client SET LastUpdate = '3/5/2008 3:00:00 PM' WHERE ClientID = 'ACME';");
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), id);
  EXPECT_EQ(house.ColumnOf("ACME", "LastUpdate"), "3/5/2008 3:00:00 PM");
  EXPECT_EQ(house.ColumnOf("ACME", "LastUpdated"), "NULL");
  EXPECT_EQ(Vars().g_NewQBLinkID, id);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSend, The_odd_date_at_midnight_UTC_is_printed_without_its_time) {
  ClientsHouse house({.now = TextToDate("2008-03-05T19:00:00")});
  house.Client("ClientID", "'ACME'");
  house.Send();
  EXPECT_EQ(house.traffic.statements.at(2), "UPDATE Client SET LastUpdate = '3/6/2008' WHERE ClientID = 'ACME';");
}

TEST(ClientSend, A_new_client_that_has_a_date_keeps_it) {
  ClientsHouse house;
  house.Client("ClientID, LastUpdated", "'ACME', '2008-01-02 03:04:05'");
  house.Send();
  EXPECT_EQ(house.traffic.statements.size(), 2U);
  EXPECT_EQ(house.ColumnOf("ACME", "LastUpdated"), "1/2/2008 3:04:05 AM");
  EXPECT_EQ(house.ColumnOf("ACME", "LastUpdate"), "NULL");
}

TEST(ClientSend, Every_record_is_a_document_of_its_own) {
  ClientsHouse house;
  for (const std::string_view key : {"'A'", "'B'", "'C'"}) house.Client("ClientID", key);
  house.Send();
  EXPECT_EQ(house.traffic.documents.size(), 3U);
}

// --- Twins -----------------------------------------------------------------------------------------------------------

TEST(ClientSend, A_linked_client_modifies_its_twin_and_nothing_is_written_back) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Ann', '" + id + "', '2001-01-01'");
  const auto sequence = house.CustomerField(id, "EditSequence");
  house.Send();
  EXPECT_EQ(house.Requests("CustomerQueryRq"), Texts{"<ListID>" + id + "</ListID>"});
  const auto mods = house.Requests("CustomerModRq");
  ASSERT_EQ(mods.size(), 1U);
  EXPECT_TRUE(mods[0].starts_with("<CustomerMod><ListID>" + id + "</ListID><EditSequence>" + sequence +
                                  "</EditSequence><CompanyName>"));
  EXPECT_EQ(house.CustomerField(id, "FirstName"), "Ann");
  EXPECT_EQ(house.CustomerField(id, "Name"), "Acme");
  EXPECT_EQ(house.ColumnOf("ACME", "LastUpdated"), "1/1/2001");
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), id);
  EXPECT_EQ(house.traffic.statements.size(), 1U);
  EXPECT_EQ(Vars().g_NewQBLinkID, "");
}

TEST(ClientSend, A_client_whose_twin_is_gone_is_added_again_under_a_new_link) {
  ClientsHouse house;
  house.Client("ClientID, QBLinkID", "'ACME', '80000001-1'");
  house.Send();
  const auto id = house.ListIdOf("ACME");
  EXPECT_NE(id, "");
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), id);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Requests("CustomerModRq").empty());
}

TEST(ClientSend, A_twin_that_cannot_be_read_is_told_and_the_client_added) {
  ClientsHouse house({}, "CustomerQueryRq 1 status 3000 Error \"Bad.\"");
  house.Client("ClientID, QBLinkID", "'ACME', 'what?'");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{RefusalText("Bad.", 3000, "Error")});
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), house.ListIdOf("ACME"));
}

TEST(ClientSend, A_twin_whose_read_fails_is_told_and_the_client_added) {
  ClientsHouse house({}, "DoRequests 1 raise 0x80040408");
  house.Client("ClientID, QBLinkID", "'ACME', '80000001-1'");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("ApplyQBFiltersAndReadRecords")));
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), house.ListIdOf("ACME"));
}

TEST(ClientSend, A_client_that_is_linked_to_a_job_is_skipped) {
  ClientsHouse house;
  const auto job = house.AddJob("Roof", house.AddCustomer("<Name>Acme</Name>"));
  house.Client("ClientID, QBLinkID", "'ACME', '" + job + "'");
  house.Send();
  EXPECT_TRUE(house.Requests("CustomerModRq").empty());
  EXPECT_TRUE(house.Requests("CustomerAddRq").empty());
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), job);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSend, With_Never_a_linked_client_stays_and_a_new_one_goes) {
  for (const bool mostRecent : {false, true}) {
    ClientsHouse house;
    const auto id = house.AddCustomer("<Name>Acme</Name>");
    house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Ann', '" + id + "', '2030-01-01'");
    house.Client("ClientID", "'NEW'");
    house.Send({.never = true, .mostRecent = mostRecent});
    EXPECT_TRUE(house.Requests("CustomerModRq").empty());
    EXPECT_EQ(house.CustomerField(id, "FirstName"), "(none)");
    EXPECT_NE(house.ListIdOf("NEW"), "");
    EXPECT_EQ(Outcome(), TableOk::True);
  }
}

// --- Refusals --------------------------------------------------------------------------------------------------------

TEST(ClientSend, A_refused_Mod_shows_two_boxes_and_Yes_goes_on) {
  ClientsHouse house({.answers = "yes"}, "CustomerModRq 1 status 3175 Error \"Locked.\"");
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client("ClientID, QBLinkID", "'ACME', '" + id + "'");
  house.Client("ClientID", "'NEW'");
  house.Send();
  ASSERT_EQ(house.desk.Boxes().size(), 2U);
  const auto& refusal = house.desk.Boxes()[0].box;
  EXPECT_EQ(refusal.text, RefusalText("Locked.", 3175, "Error") + Line("ACME"));
  EXPECT_EQ(refusal.title, "Error");
  EXPECT_EQ(refusal.icon, BoxIcon::Information);
  EXPECT_EQ(refusal.buttons, BoxButtons::Ok);
  const auto& question = house.desk.Boxes()[1].box;
  EXPECT_EQ(question.text, kGoOnQuestion);
  EXPECT_EQ(question.title, "");
  EXPECT_EQ(question.buttons, BoxButtons::YesNo);
  EXPECT_NE(house.ListIdOf("NEW"), "");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSend, No_after_a_refused_Mod_cancels_the_operation) {
  ClientsHouse house({.answers = "no"}, "CustomerModRq 1 status 3175 Error \"Locked.\"");
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client("ClientID, QBLinkID", "'ACME', '" + id + "'");
  house.Client("ClientID", "'NEW'");
  house.desk.SetPointer(Pointer::Wait);
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            (Texts{RefusalText("Locked.", 3175, "Error") + Line("ACME"), kGoOnQuestion, "Operation cancelled!"}));
  EXPECT_EQ(house.desk.ShownPointer(), Pointer::Default);
  EXPECT_EQ(house.ListIdOf("NEW"), "");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_FALSE(house.desk.Form());
  EXPECT_TRUE(house.Log().empty());
}

TEST(ClientSend, A_Mod_of_a_name_in_use_is_a_refusal_and_not_tried_again) {
  ClientsHouse house({.answers = "yes"}, "CustomerModRq 1 status 3100 Error \"In use.\"");
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client("ClientID, QBLinkID", "'ACME', '" + id + "'");
  house.Send();
  EXPECT_EQ(house.Requests("CustomerModRq").size(), 1U);
  EXPECT_EQ(house.BoxTexts().size(), 2U);
}

TEST(ClientSend, A_refused_Add_shows_one_box_with_its_question) {
  ClientsHouse house({.answers = "yes"}, "CustomerAddRq 1 status 3180 Warn \"No.\"");
  house.Client("ClientID", "'ACME'");
  house.Client("ClientID", "'NEW'");
  house.Send();
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text, RefusalText("No.", 3180, "Warn") + Line("ACME") + "\r\n\r\nDo you want to continue?");
  EXPECT_EQ(box.title, "Error");
  EXPECT_EQ(box.icon, BoxIcon::Question);
  EXPECT_EQ(box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), "NULL");
  EXPECT_NE(house.ColumnOf("NEW", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSend, No_after_a_refused_Add_cancels_the_operation) {
  ClientsHouse house({.answers = "no"}, "CustomerAddRq 1 status 3180 Error \"No.\"");
  house.Client("ClientID", "'ACME'");
  house.Client("ClientID", "'NEW'");
  house.Send();
  EXPECT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(house.BoxTexts().back(), "Operation cancelled!");
  EXPECT_EQ(house.ColumnOf("NEW", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

// --- Names in use ----------------------------------------------------------------------------------------------------

TEST(ClientSend, A_name_in_use_gets_a_counter_and_every_round_sends_the_earlier_Adds_again) {
  ClientsHouse house;
  house.AddCustomer("<Name>ACME</Name>");
  house.AddCustomer("<Name>ACME1</Name>");
  house.Client("ClientID", "'ACME'");
  house.Send();
  ASSERT_EQ(house.traffic.documents.size(), 3U);
  const Texts rounds[] = {{"ACME"}, {"ACME", "ACME1"}, {"ACME", "ACME1", "ACME2"}};
  for (std::size_t round = 0; round < 3; ++round) {
    Texts names;
    for (const auto& add : house.RequestsOf(house.traffic.documents[round], "CustomerAddRq")) {
      names.push_back(house.TextOf(add, "Name"));
    }
    EXPECT_EQ(names, rounds[round]);
  }
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), house.ListIdOf("ACME2"));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ClientSend, The_counter_begins_anew_with_every_client) {
  ClientsHouse house;
  house.AddCustomer("<Name>A</Name>");
  house.AddCustomer("<Name>B</Name>");
  house.Client("ClientID", "'A'");
  house.Client("ClientID", "'B'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("A", "QBLinkID"), house.ListIdOf("A1"));
  EXPECT_EQ(house.ColumnOf("B", "QBLinkID"), house.ListIdOf("B1"));
}

TEST(ClientSend, A_name_of_40_characters_has_room_for_nine_counters) {
  const std::string name(40, 'x');
  ClientsHouse house({.answers = "yes"});
  house.AddCustomer("<Name>" + name + "</Name>");
  for (int i = 1; i <= 8; ++i) house.AddCustomer("<Name>" + name + std::to_string(i) + "</Name>");
  house.Client("ClientID", "'" + name + "'");
  house.Send();
  EXPECT_EQ(house.ColumnOf(name, "QBLinkID"), house.ListIdOf(name + "9"));
  EXPECT_TRUE(house.BoxTexts().empty());
  // Ten is cut back to one, which was tried.
  house.Sql("UPDATE Client SET QBLinkID = NULL");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{RefusalText("The name \"" + name + "9\" of the list element is already in use.", 3100, "Error") +
                  Line(name) + "\r\n\r\nDo you want to continue?"});
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSend, A_name_of_full_length_in_use_is_told_after_the_first_round) {
  for (const std::size_t length : {41U, 50U}) {
    const std::string key(length, 'x');
    const auto name = key.substr(0, 41);
    ClientsHouse house({.answers = "no"});
    house.AddCustomer("<Name>" + name + "</Name>");
    house.Client("ClientID", "'" + key + "'");
    house.Send();
    EXPECT_EQ(house.traffic.documents.size(), 1U);
    EXPECT_EQ(house.BoxTexts(),
              (Texts{RefusalText("The name \"" + name + "\" of the list element is already in use.", 3100, "Error") +
                         Line(key) + "\r\n\r\nDo you want to continue?",
                     "Operation cancelled!"}));
    EXPECT_EQ(Outcome(), TableOk::False);
  }
}

TEST(ClientSend, A_refusal_of_a_retry_is_told_like_any_other) {
  ClientsHouse house({.answers = "yes"}, "CustomerAddRq 3 status 3180 Error \"No.\"");
  house.AddCustomer("<Name>ACME</Name>");
  house.Client("ClientID", "'ACME'");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{RefusalText("No.", 3180, "Error") + Line("ACME") + "\r\n\r\nDo you want to continue?"});
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(ClientSend, An_incomplete_request_goes_on_with_the_next_client_without_a_log_line) {
  ClientsHouse house({}, "DoRequests 1 raise 0x80040307 \"Incomplete.\"");
  house.Client("ClientID", "'ACME'");
  house.Client("ClientID", "'NEW'");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Error #: -2147220729(80040307) -- \r\n\r\nIncomplete." + ErrorBoxEnd("MoveClientsToQB")});
  EXPECT_TRUE(house.Log().empty());
  EXPECT_NE(house.ListIdOf("NEW"), "");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSend, Any_other_error_ends_the_run_with_its_box_and_log_line) {
  ClientsHouse house({}, "DoRequests 2 raise 0x80040408 \"Gone.\"");
  for (const std::string_view key : {"'A'", "'B'", "'C'"}) house.Client("ClientID", key);
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Error #: -2147220472(80040408) -- \r\n\r\nGone." + ErrorBoxEnd("MoveClientsToQB")});
  EXPECT_EQ(house.Log(), Texts{LogLine("B")});
  EXPECT_NE(house.ColumnOf("A", "QBLinkID"), "NULL");
  EXPECT_EQ(house.traffic.documents.size(), 2U);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

TEST(ClientSend, What_XML_can_not_carry_stays_off_the_wire_and_is_logged_once_with_row_and_column) {
  ClientsHouse house;
  house.Client("ClientID, ClientCompany, ClientCity", "'BELL', 'Bell' || char(7) || 's', 'Dover' || char(27)");
  house.Client("ClientID, ClientCompany, ClientCity", "'CAFE', CAST(X'436166E9' AS TEXT), 'Rye'");
  house.Client("ClientID", "'PLAIN'");
  house.Send();
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.Log(), (Texts{"MoveClientsToQB: characters that can't go to QuickBooks were left out or read as "
                                "Windows-1252: ClientCompany, ClientCity: BELL",
                                "MoveClientsToQB: characters that can't go to QuickBooks were left out or read as "
                                "Windows-1252: ClientCompany: CAFE"}));
  EXPECT_NE(house.ListIdOf("Bells (BELL)"), "");
  EXPECT_NE(house.ListIdOf("Café (CAFE)"), "");
  EXPECT_NE(house.ListIdOf("PLAIN"), "") << "the rows behind it go as ever";
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientSend, An_empty_text_in_a_date_column_is_no_date) {
  ClientsHouse house;
  house.Client("ClientID, LastUpdated, ClientSince", "'ACME', '', ''");
  house.Send();
  EXPECT_TRUE(house.BoxTexts().empty());
  const auto link = house.ColumnOf("ACME", "QBLinkID");
  house.Send();
  EXPECT_TRUE(house.BoxTexts().empty()) << "beside a twin too";
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), link);
}

TEST(ClientSend, An_apostrophe_in_a_key_fails_the_link_statement_and_ends_the_run) {
  ClientsHouse house;
  house.Client("ClientID", "'O''Neil'");
  house.Client("ClientID", "'NEW'");
  house.Send();
  const auto id = house.ListIdOf("O'Neil");
  EXPECT_NE(id, "");  // QuickBooks has it already
  for (const auto& statement : house.traffic.statements) EXPECT_FALSE(statement.starts_with("UPDATE")) << statement;
  EXPECT_EQ(house.Log(), Texts{LogLine("O'Neil")});
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].starts_with("Error #: -2147217900(80040E14) -- "));
  EXPECT_EQ(house.ListIdOf("NEW"), "");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_EQ(Vars().g_NewQBLinkID, "");
}

TEST(ClientSend, A_database_without_the_odd_column_ends_the_run_behind_the_link) {
  ClientsHouse house;
  house.Sql("ALTER TABLE Client DROP COLUMN LastUpdate");
  house.Client("ClientID", "'ACME'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("ACME", "QBLinkID"), house.ListIdOf("ACME"));
  EXPECT_EQ(Vars().g_NewQBLinkID, house.ListIdOf("ACME"));
  EXPECT_EQ(house.Log(), Texts{LogLine("ACME")});
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ClientSend, A_selection_that_fails_is_told_and_logged_without_a_key) {
  ClientsHouse house;
  house.SendSelection("SELECT nothing FROM Client;");
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveClientsToQB")));
  EXPECT_EQ(house.Log(), Texts{LogLine("")});
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ClientSend, A_database_that_does_not_open_is_told_by_OpenConnection_first) {
  ClientsHouse house({}, "connect 1 raise 0x80004005 \"Locked away.\"");
  house.Client("ClientID", "'ACME'");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("OpenConnection")));
  EXPECT_TRUE(house.BoxTexts()[1].ends_with(ErrorBoxEnd("MoveClientsToQB")));
  EXPECT_EQ(Outcome(), TableOk::False);
}

}  // namespace
}  // namespace twqb
