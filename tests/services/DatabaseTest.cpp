// The shared connection and its count, connections of a routine's own, and the close helper.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "platform/PlatformError.h"
#include "services/Database.h"
#include "services/msgForm.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

bool IsOpen() { return Vars().g_cnGlobal && Vars().g_cnGlobal->State() == ado::ObjectState::Open; }

std::string ErrorBox(std::string_view number, std::string_view description, std::string_view procedure) {
  return fmt::format(
      "Error #: {} -- \r\n\r\n{} has occurred in the following procedure: {}. Please contact Technical Support for "
      "assistance.",
      number, description, procedure);
}

TEST(SharedConnection, Is_set_up_for_reading_and_writing_with_client_cursors_and_59_seconds) {
  NotingHouse house;
  gp_cnGlobal80(true);
  EXPECT_EQ(house.NotesOf("mode"), Notes{"mode 3"});
  EXPECT_EQ(house.NotesOf("cursor"), Notes{"cursor 3"});
  EXPECT_EQ(house.NotesOf("timeout"), Notes{"timeout 59"});
  EXPECT_EQ(Vars().g_cnGlobal->ConnectionString(), house.ConnectString());
  EXPECT_EQ(house.notes.back(), "pump");
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(Vars().g_CnRefCount, 1);
}

TEST(SharedConnection, Closes_only_at_the_last_of_its_releases) {
  NotingHouse house;
  gp_cnGlobal80(true);
  gp_cnGlobal80(true);
  EXPECT_EQ(Vars().g_CnRefCount, 2);
  EXPECT_EQ(house.NotesOf("open").size(), 1U);
  gp_cnGlobal80(false);
  EXPECT_EQ(Vars().g_CnRefCount, 1);
  EXPECT_TRUE(IsOpen());
  gp_cnGlobal80(false);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(house.NotesOf("close").size(), 1U);
  EXPECT_EQ(house.NotesOf("pump").size(), 4U);
}

TEST(SharedConnection, Takes_a_release_without_an_open_without_harm) {
  NotingHouse house;
  gp_cnGlobal80(false);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  gp_cnGlobal80(true);
  gp_cnGlobal80(false);
  gp_cnGlobal80(false);
  gp_cnGlobal80(false);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_EQ(house.NotesOf("close").size(), 1U);
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST(SharedConnection, Zeroes_a_count_that_is_left_over_when_it_is_closed) {
  TestHouse house;
  house.Enter();
  gp_cnGlobal80(true);
  Vars().g_cnGlobal->Close();
  Vars().g_CnRefCount = 5;
  gp_cnGlobal80(false);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(SharedConnection, Opens_again_after_it_was_closed_with_the_connection_string_of_then) {
  TestHouse house;
  house.Enter();
  gp_cnGlobal80(true);
  gp_cnGlobal80(false);
  Vars().g_ConnectString = "Provider=JETLITE;Data Source=" + house.Path("billing.db");
  gp_cnGlobal80(true);
  EXPECT_EQ(Vars().g_cnGlobal->Provider(), "JETLITE");
  gp_cnGlobal80(false);
}

TEST(SharedConnection, Tells_of_a_failed_open_and_leaves_the_count_as_it_was) {
  TestHouse house;
  house.Enter();
  Vars().g_ConnectString = "Provider=SQLITE;Data Source=" + house.Path("missing/billing.db");
  gp_cnGlobal80(true);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_FALSE(IsOpen());
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("-2147467259(80004005)"), std::string::npos);
  EXPECT_NE(house.BoxTexts()[0].find("procedure: gp_cnGlobal80. "), std::string::npos);
  gp_cnGlobal80(false);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_EQ(house.desk.Boxes().size(), 1U);
}

TEST(SharedConnection, Is_released_on_every_way_out_of_a_guarded_body) {
  TestHouse house;
  house.Enter();
  EXPECT_EQ(WithGlobalConnection([] { return Vars().g_CnRefCount; }), 1);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_THROW(WithGlobalConnection([] { throw PlatformError(13); }), PlatformError);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_THROW(WithGlobalConnection([]() -> int { throw PlatformError(13); }), PlatformError);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_FALSE(IsOpen());
}

TEST(SharedConnection, Keeps_its_count_in_balance_when_it_cannot_be_closed) {
  NotingHouse house;
  gp_cnGlobal80(true);
  const auto closing = house.Faults().CallCount() + 2;  // behind the question for the state
  house.Faults().RaiseAt(closing, FaultTiming::Before, error::kCannotOpen);
  gp_cnGlobal80(false);
  ASSERT_EQ(house.Faults().CallNames().at(closing - 1), "Connection.Close");
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("procedure: gp_cnGlobal80. "), std::string::npos);
  gp_cnGlobal80(true);
  gp_cnGlobal80(false);
  EXPECT_FALSE(IsOpen());
}

TEST(OwnConnection, Is_set_up_and_opened_with_the_default_timeout) {
  NotingHouse house;
  const auto cn = Vars().platform.database->CreateConnection();
  OpenConnection(*cn, nullptr, "");
  EXPECT_EQ(cn->State(), ado::ObjectState::Open);
  EXPECT_EQ(house.NotesOf("mode"), Notes{"mode 3"});
  EXPECT_EQ(house.NotesOf("cursor"), Notes{"cursor 3"});
  EXPECT_TRUE(house.NotesOf("timeout").empty());
  EXPECT_TRUE(house.NotesOf("recordset").empty());
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(OwnConnection, Opens_a_table_for_writing_where_a_recordset_is_given) {
  NotingHouse house;
  const auto cn = Vars().platform.database->CreateConnection();
  std::unique_ptr<ado::Recordset> rs;
  OpenConnection(*cn, &rs, "Client");
  ASSERT_TRUE(rs);
  EXPECT_EQ(house.NotesOf("recordset"), Notes{"recordset 3 3 SELECT * FROM Client;"});
  rs->AddNew();
  rs->SetField("ClientID", std::string("A"));
  rs->Update();
  rs->Close();
  EXPECT_EQ(house.Scalar("SELECT ClientID FROM Client"), "A");
}

TEST(OwnConnection, Is_left_alone_when_it_has_a_connection_string_already) {
  NotingHouse house;
  const auto cn = Vars().platform.database->CreateConnection();
  std::unique_ptr<ado::Recordset> rs;
  OpenConnection(*cn, &rs, "Client");
  rs->Close();
  OpenConnection(*cn, &rs, "Project");
  EXPECT_EQ(house.NotesOf("open").size(), 1U);
  EXPECT_EQ(house.NotesOf("recordset").back(), "recordset 3 3 SELECT * FROM Project;");
}

TEST(OwnConnection, Reports_a_failure_under_OpenConnection) {
  TestHouse house;
  house.Enter();
  const auto cn = Vars().platform.database->CreateConnection();
  std::unique_ptr<ado::Recordset> rs;
  OpenConnection(*cn, &rs, "NoSuchTable");
  EXPECT_FALSE(rs);
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("(80040E37)"), std::string::npos);
  EXPECT_NE(house.BoxTexts()[0].find("procedure: OpenConnection. "), std::string::npos);
}

struct ScalarCase {
  std::string_view statement;
  std::string_view result;
};

class Scalars : public testing::TestWithParam<ScalarCase> {};

TEST_P(Scalars, Are_the_first_field_of_the_first_row_and_empty_on_any_failure_without_a_message) {
  NotingHouse house;
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('A', 'first'), ('B', 'second'), ('C', NULL)");
  EXPECT_EQ(GetScalarFromSQL(Sql::Own(GetParam().statement)), GetParam().result);
  EXPECT_TRUE(house.desk.Boxes().empty());
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_FALSE(IsOpen());
}

INSTANTIATE_TEST_SUITE_P(
    GetScalarFromSQL, Scalars,
    testing::Values(ScalarCase{"SELECT ParamValue FROM TWSTable WHERE ParamName = 'A'", "first"},
                    ScalarCase{"SELECT ParamValue, ParamName FROM TWSTable ORDER BY ParamName", "first"},
                    ScalarCase{"SELECT ParamValue FROM TWSTable WHERE ParamName = 'C'", ""},
                    ScalarCase{"SELECT ParamValue FROM TWSTable WHERE ParamName = 'none'", ""},
                    ScalarCase{"SELECT COUNT(*) FROM TWSTable", "3"}, ScalarCase{"SELECT x FROM NoSuchTable", ""},
                    ScalarCase{"SELECT NoSuchColumn FROM TWSTable", ""}, ScalarCase{"nonsense", ""}, ScalarCase{"", ""},
                    ScalarCase{"DELETE FROM TWSTable WHERE ParamName = 'A'", ""}));

TEST(GetScalarFromSQL, Leaves_a_connection_open_that_a_caller_holds) {
  TestHouse house;
  house.Enter();
  gp_cnGlobal80(true);
  EXPECT_EQ(GetScalarFromSQL("SELECT 7"), "7");
  EXPECT_EQ(GetScalarFromSQL("nonsense"), "");
  EXPECT_EQ(Vars().g_CnRefCount, 1);
  EXPECT_TRUE(IsOpen());
  gp_cnGlobal80(false);
}

TEST(GetScalarFromSQL, Is_empty_after_the_box_of_the_failed_open) {
  NotingHouse house({}, "connect 1 raise 0x80004005 \"No server\"");
  EXPECT_EQ(GetScalarFromSQL("SELECT 7"), "");
  EXPECT_EQ(house.BoxTexts(), (std::vector{ErrorBox("-2147467259(80004005)", "No server", "gp_cnGlobal80")}));
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(GetScalarFromSQL, Is_empty_when_no_connection_can_be_made_at_all) {
  NotingHouse house;
  house.Faults().RaiseAt(house.Faults().CallCount() + 1, FaultTiming::Before, error::kCannotCreateObject);
  EXPECT_EQ(GetScalarFromSQL("SELECT 7"), "");
  EXPECT_EQ(house.BoxTexts(),
            (std::vector{ErrorBox("429(1AD)", "ActiveX component can't create object", "gp_cnGlobal80")}));
}

// Date of a client's last change with what its row holds; `local` is the answer as ISO.
struct ChangeCase {
  std::string_view lastUpdated;
  std::string_view since;
  TimeZoneInformation zone;
  std::string_view local;
};

class LastChanges : public testing::TestWithParam<ChangeCase> {};

TEST_P(LastChanges, Come_from_the_UTC_field_turned_to_local_time_or_else_from_the_other_as_it_stands) {
  TestHouse house({.zone = GetParam().zone});
  house.Sql(fmt::format("INSERT INTO Client (ClientID, LastUpdated, ClientSince) VALUES ('A', {}, {})",
                        GetParam().lastUpdated, GetParam().since));
  house.Enter();
  WithGlobalConnection([] {
    const auto rs =
        Vars().g_cnGlobal->OpenRecordset("SELECT * FROM Client", ado::CursorType::Static, ado::LockType::ReadOnly);
    const auto changed = GetTWDateOfUpdation(*rs, "LastUpdated", "ClientSince");
    ASSERT_TRUE(changed);
    EXPECT_EQ(IsoDate(*changed), GetParam().local);
  });
  EXPECT_TRUE(house.desk.Boxes().empty());
}

constexpr TimeZoneInformation kEastern = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard};
constexpr TimeZoneInformation kEasternSummer = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Daylight};
constexpr TimeZoneInformation kKolkata = {.bias = -330, .daylightBias = 0, .state = TimeZoneState::Unknown};

INSTANTIATE_TEST_SUITE_P(
    GetTWDateOfUpdation, LastChanges,
    testing::Values(ChangeCase{"'3/5/2008 3:00:00 PM'", "NULL", kEastern, "2008-03-05T10:00:00"},
                    ChangeCase{"'3/5/2008 3:00:00 PM'", "'1/1/2000'", kEastern, "2008-03-05T10:00:00"},
                    ChangeCase{"'2008-03-05T03:00:00'", "NULL", kEastern, "2008-03-04T22:00:00"},
                    ChangeCase{"'3/5/2008 3:00:00 PM'", "NULL", kEasternSummer, "2008-03-05T11:00:00"},
                    ChangeCase{"'3/5/2008'", "NULL", kKolkata, "2008-03-05T05:30:00"},
                    ChangeCase{"NULL", "'1/2/2000'", kEastern, "2000-01-02T00:00:00"},
                    ChangeCase{"NULL", "'1/2/2000 5:06:07 AM'", kKolkata, "2000-01-02T05:06:07"},
                    ChangeCase{"NULL", "NULL", kEastern, "1901-01-01T00:00:00"}));

TEST(GetTWDateOfUpdation, Reports_a_failure_under_its_name_and_gives_no_date) {
  TestHouse house;
  house.Sql("INSERT INTO Client (ClientID) VALUES ('A')");
  house.Enter();
  WithGlobalConnection([] {
    const auto rs =
        Vars().g_cnGlobal->OpenRecordset("SELECT * FROM Client", ado::CursorType::Static, ado::LockType::ReadOnly);
    EXPECT_FALSE(GetTWDateOfUpdation(*rs, "NoSuchField", "ClientSince"));
  });
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("procedure: GetTWDateOfUpdation. "), std::string::npos);
}

TEST(DbKind, Is_SQL_only_when_the_providers_name_begins_with_these_capitals) {
  for (const auto* name : {"SQL", "SQLOLEDB", "SQLOLEDB.1", "SQLNCLI", "SQLITE"}) EXPECT_EQ(DbKindOf(name), "SQL");
  for (const auto* name :
       {"", "SQ", "sqloledb", "Sqlite", "sQL", "MSDASQL", " SQL", "JETLITE", "Microsoft.Jet.OLEDB.4.0"}) {
    EXPECT_EQ(DbKindOf(name), "JET") << name;
  }
}

struct CloseCase {
  FormToo form;
  bool leaveMsgBoxOpen;
  bool allTablesRun;
  bool formStays;
};

class Closings : public testing::TestWithParam<CloseCase> {};

TEST_P(Closings, Unload_the_form_only_when_asked_and_when_nothing_keeps_it) {
  TestHouse house;
  house.Enter();
  ShowMsgForm("Sending");
  Vars().g_LeaveMsgBoxOpen = GetParam().leaveMsgBoxOpen;
  Vars().g_AllTablesRun = GetParam().allTablesRun;
  CloseObjects(Vars(), GetParam().form, nullptr, nullptr, nullptr);
  EXPECT_EQ(house.desk.Form().has_value(), GetParam().formStays);
  EXPECT_EQ(Vars().msgForm.has_value(), GetParam().formStays);
}

INSTANTIATE_TEST_SUITE_P(CloseObjects, Closings,
                         testing::Values(CloseCase{FormToo::Unload, false, false, false},
                                         CloseCase{FormToo::Unload, true, false, true},
                                         CloseCase{FormToo::Unload, false, true, true},
                                         CloseCase{FormToo::Unload, true, true, true},
                                         CloseCase{FormToo::Leave, false, false, true}));

TEST(CloseObjects, Closes_and_releases_what_is_open) {
  NotingHouse house;
  auto cn = Vars().platform.database->CreateConnection();
  std::unique_ptr<ado::Recordset> clients;
  std::unique_ptr<ado::Recordset> projects;
  OpenConnection(*cn, &clients, "Client");
  OpenConnection(*cn, &projects, "Project");
  projects->Close();
  CloseObjects(Vars(), FormToo::Unload, &clients, &projects, &cn);
  EXPECT_FALSE(clients);
  EXPECT_FALSE(projects);
  EXPECT_FALSE(cn);
  EXPECT_EQ(house.NotesOf("close").size(), 1U);
  CloseObjects(Vars(), FormToo::Unload, &clients, &projects, &cn);
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST(CloseObjects, Drops_a_pending_row_without_writing_it) {
  TestHouse house;
  house.Enter();
  auto cn = Vars().platform.database->CreateConnection();
  std::unique_ptr<ado::Recordset> clients;
  OpenConnection(*cn, &clients, "Client");
  clients->AddNew();
  clients->SetField("ClientID", std::string("A"));
  CloseObjects(Vars(), FormToo::Leave, &clients, nullptr, &cn);
  EXPECT_FALSE(clients);
  EXPECT_FALSE(cn);
  EXPECT_EQ(house.Scalar("SELECT COUNT(*) FROM Client"), "0");
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST(CloseObjects, Ignores_a_form_that_cannot_be_unloaded_and_leaves_it_for_the_next_time) {
  NotingHouse house({}, "form 1 raise 0x80004005 unload");
  ShowMsgForm("Sending");
  auto cn = Vars().platform.database->CreateConnection();
  OpenConnection(*cn, nullptr, "");
  EXPECT_NO_THROW(CloseObjects(Vars(), FormToo::Unload, nullptr, nullptr, &cn));
  EXPECT_FALSE(cn);
  EXPECT_TRUE(Vars().msgForm);
  EXPECT_TRUE(house.desk.Boxes().empty());
  CloseObjects(Vars(), FormToo::Unload, nullptr, nullptr, nullptr);
  EXPECT_FALSE(Vars().msgForm);
  EXPECT_FALSE(house.desk.Form());
}

}  // namespace
}  // namespace twqb
