// The get of customers: links, rows, errors and their question, cancel, progress, and the pull for another table's
// sake.

#include <gtest/gtest.h>

#include "platform/MsgFormTexts.h"
#include "services/Database.h"
#include "tests/lists/ClientsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const std::string kQuestion = "Do you want to continue transfering rest of the records?";
std::string LogLine(std::string_view name) {
  return "Error transfering Client to Tallywick. Client = " + std::string(name);
}

void ThreeCustomers(ClientsHouse& house) {
  for (const std::string_view name : {"A", "B", "C"}) house.AddCustomer("<Name>" + std::string(name) + "</Name>");
}

TEST(ClientGet, An_empty_list_is_a_good_end) {
  ClientsHouse house;
  house.Take({});
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.traffic.statements.empty());
}

TEST(ClientGet, Jobs_in_the_list_are_passed_over) {
  ClientsHouse house;
  const auto parent = house.AddCustomer("<Name>Acme</Name>");
  house.AddJob("Roof", parent);
  auto set = SpiedHouse::Session().CreateMsgSetRequest("US", 3, 0);
  (void)set.Append("CustomerQueryRq");
  const auto answer = SpiedHouse::Session().DoRequests(set);
  RecordList records;
  for (const auto& record : answer.GetAt(0).Details()) records.Add(record, record["ListID"].GetValue());
  ASSERT_EQ(records.Count(), 2U);
  house.Take(records);
  EXPECT_EQ(house.Keys(), "Acme");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientGet, A_known_customer_updates_its_row_whatever_the_key) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Ann</FirstName>");
  house.Client("ClientID", "'Acme'");
  house.Client("ClientID, QBLinkID", "'OTHER', '" + id + "'");
  house.traffic.statements.clear();
  house.Get();
  EXPECT_EQ(house.traffic.statements,
            (Texts{"SELECT * FROM Client;", "SELECT QBLinkID from Client WHERE QBLinkID = '" + id + "';"}));
  EXPECT_EQ(house.ColumnOf("OTHER", "ClientFName"), "Ann");
  EXPECT_EQ(house.ColumnOf("OTHER", "LastUpdated"), "3/5/2008 3:00:00 PM");
  EXPECT_EQ(house.ColumnOf("Acme", "ClientFName"), "NULL");
  EXPECT_EQ(house.Keys(), "Acme,OTHER");
}

TEST(ClientGet, With_Never_a_known_customer_stays_and_a_new_one_comes) {
  for (const bool mostRecent : {false, true}) {
    ClientsHouse house;
    const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Ann</FirstName>");
    house.AddCustomer("<Name>New</Name>");
    house.Client("ClientID, QBLinkID", "'ACME', '" + id + "'");
    house.Get({.never = true, .mostRecent = mostRecent});
    EXPECT_EQ(house.ColumnOf("ACME", "ClientFName"), "NULL");
    EXPECT_EQ(house.ColumnOf("ACME", "LastUpdated"), "NULL");
    EXPECT_NE(house.ColumnOf("New", "QBLinkID"), "(no row)");
    EXPECT_EQ(Outcome(), TableOk::True);
  }
}

TEST(ClientGet, A_get_that_skips_everything_ends_well) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client("ClientID, QBLinkID", "'ACME', '" + id + "'");
  house.Get({.never = true});
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientGet, Neither_Mod_nor_Add_goes_to_QuickBooks) {
  ClientsHouse house;
  ThreeCustomers(house);
  house.Get();
  EXPECT_EQ(house.traffic.documents.size(), 1U);
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(ClientGet, Yes_after_an_error_goes_on_and_a_good_record_behind_it_ends_the_table_well) {
  ClientsHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" Client");
  ThreeCustomers(house);
  house.Get();
  ASSERT_EQ(house.desk.Boxes().size(), 2U);
  EXPECT_EQ(house.BoxTexts()[0], "Error #: -2147217873(80040E2F) -- \r\n\r\nRefused." + ErrorBoxEnd("MoveClientsToTW"));
  EXPECT_EQ(house.BoxTexts()[1], kQuestion);
  EXPECT_EQ(house.desk.Boxes()[1].box.title, "Question");
  EXPECT_EQ(house.desk.Boxes()[1].box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(house.Keys(), "B,C");
  EXPECT_EQ(house.Log(), Texts{LogLine("A")});
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientGet, Yes_after_an_error_at_the_last_record_leaves_the_third_outcome) {
  ClientsHouse house({.answers = "yes"}, "row 3 raise 0x80040E2F \"Refused.\" Client");
  ThreeCustomers(house);
  house.Get();
  EXPECT_EQ(house.Keys(), "A,B");
  EXPECT_EQ(Outcome(), TableOk::GoOn);
  EXPECT_FALSE(Vars().g_Cancelled);
}

TEST(ClientGet, Yes_after_an_error_forgets_a_cancel) {
  ClientsHouse house({.answers = "cancel after 1\nyes\nyes"}, "row 1 raise 0x80040E2F \"Refused.\" Client");
  ThreeCustomers(house);
  house.Get();
  EXPECT_EQ(house.Keys(), "B,C");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientGet, No_after_an_error_cancels_the_operation) {
  ClientsHouse house({.answers = "no"}, "row 2 raise 0x80040E2F \"Refused.\" Client");
  ThreeCustomers(house);
  house.Get();
  EXPECT_EQ(house.BoxTexts().size(), 3U);
  EXPECT_EQ(house.BoxTexts().back(), "Operation cancelled!");
  EXPECT_EQ(house.Keys(), "A");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
}

TEST(ClientGet, An_error_in_a_lookup_passes_over_its_record_alone) {
  ClientsHouse house({.answers = "yes"}, "sql 2 raise 0x80040E14 \"Broken.\" SELECT ClientID from Client");
  ThreeCustomers(house);
  house.Get();
  EXPECT_EQ(house.Keys(), "A,C");
  EXPECT_EQ(house.Log(), Texts{LogLine("B")});
}

TEST(ClientGet, A_table_that_does_not_open_is_told_first_and_then_record_by_record) {
  ClientsHouse house({.answers = "default yes"}, "sql 1 raise 0x80040E37 \"No table.\" SELECT * FROM Client;");
  house.AddCustomer("<Name>A</Name>");
  house.AddCustomer("<Name>B</Name>");
  house.Get();
  const auto texts = house.BoxTexts();
  ASSERT_EQ(texts.size(), 5U);
  EXPECT_TRUE(texts[0].ends_with(ErrorBoxEnd("OpenConnection")));
  EXPECT_TRUE(texts[1].starts_with("Error #: 91(5B) -- "));
  EXPECT_EQ(texts[2], kQuestion);
  EXPECT_TRUE(texts[3].starts_with("Error #: 91(5B) -- "));
  EXPECT_EQ(house.Log(), (Texts{LogLine("A"), LogLine("B")}));
  EXPECT_EQ(Outcome(), TableOk::GoOn);
}

TEST(ClientGet, An_error_ahead_of_the_records_is_told_under_the_routines_name_and_ends_the_get) {
  ClientsHouse house({}, "form 1 raise 91 \"No form.\" show");
  ThreeCustomers(house);
  house.Get();
  EXPECT_EQ(house.BoxTexts(), Texts{"Error #: 91(5B) -- \r\n\r\nNo form." + ErrorBoxEnd("MoveClientsToTW")});
  EXPECT_EQ(house.Log(), Texts{LogLine("")});
  EXPECT_EQ(house.Keys(), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ClientGet, A_customer_without_a_time_of_change_is_an_error_only_where_times_are_compared) {
  const std::string answer =
      "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><CustomerQueryRs requestID=\"1\" statusCode=\"0\" "
      "statusSeverity=\"Info\" statusMessage=\"Status OK\"><CustomerRet><ListID>1-1</ListID><Name>Acme</Name>"
      "<IsActive>true</IsActive><Sublevel>0</Sublevel></CustomerRet></CustomerQueryRs></QBXMLMsgsRs></QBXML>";
  ClientsHouse house({.answers = "yes"});
  house.traffic.canned = {answer, answer, answer};
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.Keys(), "Acme");
  EXPECT_EQ(house.ColumnOf("Acme", "ClientSince"), "NULL");
  house.Get();
  EXPECT_TRUE(house.BoxTexts().empty());
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(Outcome(), TableOk::GoOn);
}

// --- Progress and cancel ---------------------------------------------------------------------------------------------

TEST(ClientGet, From_two_records_on_the_form_shows_the_full_names_and_stays_for_the_dispatcher) {
  ClientsHouse house;
  house.AddCustomer("<Name>A</Name>");
  house.AddCustomer("<Name>B</Name>");
  house.Get();
  EXPECT_EQ(house.FormTexts(), Texts{"Getting Clients from QuickBooks..."});
  ASSERT_TRUE(house.desk.Form());
  EXPECT_EQ(house.desk.Form()->record, "B");
  EXPECT_EQ(CountText(house.desk.Form()->position.value()), "2/2");
}

TEST(ClientGet, One_record_alone_or_no_progress_bar_shows_no_form) {
  ClientsHouse one;
  one.AddCustomer("<Name>A</Name>");
  one.Get();
  EXPECT_TRUE(one.desk.FormEvents().empty());
  ClientsHouse none;
  ThreeCustomers(none);
  Vars().g_NoProgressBar = true;
  none.Get();
  EXPECT_TRUE(none.desk.FormEvents().empty());
  EXPECT_EQ(none.Keys(), "A,B,C");
}

TEST(ClientGet, A_cancel_finishes_the_record_in_hand_first) {
  ClientsHouse house({.answers = "cancel after 2\nyes"});
  ThreeCustomers(house);
  house.Get();
  EXPECT_EQ(house.BoxTexts(), (Texts{"Are you sure you want to Cancel?", "Operation cancelled!"}));
  EXPECT_EQ(house.Keys(), "A,B");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
}

TEST(ClientGet, A_cancel_is_read_behind_a_record_that_was_skipped_too) {
  ClientsHouse house({.answers = "cancel after 1\nyes"});
  const auto id = house.AddCustomer("<Name>A</Name>");
  house.AddCustomer("<Name>B</Name>");
  house.Client("ClientID, QBLinkID", "'OLD', '" + id + "'");
  house.Get({.never = true});
  EXPECT_EQ(house.Keys(), "OLD");
  EXPECT_EQ(Outcome(), TableOk::False);
}

// --- The pull for another table's sake -------------------------------------------------------------------------------

class PullHouse : public ClientsHouse {
 public:
  explicit PullHouse(HouseOptions options = {}, std::string_view faults = {})
      : ClientsHouse(std::move(options), faults), connection(Vars().platform.database->CreateConnection()) {
    OpenConnection(*connection, nullptr, "");
  }
  void Pull(ado::Connection* on) {
    RecordList records;
    for (const auto& id : ids) {
      RecordList one;
      ASSERT_TRUE(ApplyQBFiltersAndReadRecords(enClients, one, Session(), {.strID = id}));
      records.Add(one.At(0), id);
    }
    Vars().g_TableOk = TableOk::False;
    Take(records, Dependent::Yes, on);
  }

  Texts ids;
  std::unique_ptr<ado::Connection> connection;
};

TEST(ClientPull, Needs_the_callers_connection) {
  PullHouse house;
  house.ids = {house.AddCustomer("<Name>A</Name>")};
  house.Pull(nullptr);
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_EQ(house.BoxTexts()[0], "MoveClientsToTW - Connection Object is required!");
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "");
  EXPECT_EQ(house.Keys(), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ClientPull, Works_on_the_callers_connection_and_leaves_it_open_without_a_form) {
  PullHouse house;
  house.ids = {house.AddCustomer("<Name>A</Name>"), house.AddCustomer("<Name>B</Name>")};
  house.Pull(house.connection.get());
  EXPECT_EQ(house.Keys(), "A,B");
  EXPECT_EQ(house.connection->State(), ado::ObjectState::Open);
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientPull, Keeps_a_cancel_for_its_caller) {
  PullHouse house;
  house.ids = {house.AddCustomer("<Name>A</Name>"), house.AddCustomer("<Name>B</Name>")};
  Vars().g_Cancelled = true;
  house.Pull(house.connection.get());
  EXPECT_EQ(house.Keys(), "A,B");
  EXPECT_TRUE(Vars().g_Cancelled);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ClientPull, No_after_an_error_is_kept_for_its_caller_and_the_rest_still_comes) {
  PullHouse house({.answers = "no"}, "row 1 raise 0x80040E2F \"Refused.\" Client");
  house.ids = {house.AddCustomer("<Name>A</Name>"), house.AddCustomer("<Name>B</Name>")};
  house.Pull(house.connection.get());
  EXPECT_EQ(house.Keys(), "B");
  EXPECT_TRUE(Vars().g_Cancelled);
  EXPECT_EQ(house.BoxTexts().size(), 2U);
}

TEST(ClientPull, Meets_nothing_to_do_before_it_asks_for_a_connection) {
  PullHouse house;
  house.Pull(nullptr);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

}  // namespace
}  // namespace twqb
