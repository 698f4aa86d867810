// The statement that selects the clients to send, in every time zone: its text byte for byte, and that a real database
// takes it. And what holds for the statements of all tables.

#include "tests/engine/SelectionBases.h"
#include "tests/engine/SelectionHouse.h"

namespace twqb {
namespace {

constexpr auto& kBase = kClientBase;

struct Corner {
  std::string what;
  TimeZoneInformation zone;
  std::string provider;
  std::string lastSendAt;  // empty: never
  SavedFilters filters;
  std::string clauses;  // behind the base text
};

const Corner kCorners[] = {
    {"first run in Greenwich selects all", kGreenwich, "SQLITE", "", {}, ";"},
    {"first run elsewhere has the moved date",
     kNewYork,
     "SQLITE",
     "",
     {},
     " WHERE ((LastUpdated > '01/01/1900 05:00:00')  OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS NULL) ;"},
    {"first run in summer",
     kNewYorkSummer,
     "JETLITE",
     "",
     {},
     " WHERE ((LastUpdated > #01/01/1900 04:00:00#)  OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS NULL) ;"},
    {"first run in the east",
     kHelsinki,
     "JETLITE",
     "",
     {},
     " WHERE ((LastUpdated > #12/31/1899 22:00:00#)  OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS NULL) ;"},
    {"first run half an hour off",
     kDelhi,
     "SQLITE",
     "",
     {},
     " WHERE ((LastUpdated > '12/31/1899 18:30:00')  OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS NULL) ;"},
    {"a last send that comes out at exactly 1900", kNewYork, "SQLITE", "12/31/1899 7:00:00 PM", {}, ";"},
    {"last send, afternoon, over midnight",
     kNewYork,
     "SQLITE",
     "3/4/2008 9:05:06 PM",
     {},
     " WHERE ((LastUpdated > '03/05/2008 02:05:06')  OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS NULL) ;"},
    {"ignored last send", kNewYork, "SQLITE", "3/4/2008 9:05:06 PM", {.IgnoreLastSync = true}, ";"},
    {"range, one day past the second date",
     kNewYork,
     "SQLITE",
     "3/4/2008",
     {.Date1a = "2/28/2008 5:00:00 AM", .Date1b = "2/28/2008 5:00:00 AM"},
     " WHERE (LastUpdated BETWEEN '02/28/2008 05:00:00' AND '02/29/2008 05:00:00');"},
    {"range with number signs",
     kNewYork,
     "JETLITE",
     "3/4/2008",
     {.Date1a = "1/2/2008", .Date1b = "12/31/2008"},
     " WHERE (LastUpdated BETWEEN #01/02/2008 00:00:00# AND #01/01/2009 00:00:00#);"},
    {"one date alone leaves the last send",
     kGreenwich,
     "JETLITE",
     "3/4/2008",
     {.Date1a = "1/2/2008"},
     " WHERE ((LastUpdated > #03/04/2008 00:00:00#)  OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS NULL) ;"},
    {"the other date alone too",
     kGreenwich,
     "SQLITE",
     "3/4/2008",
     {.Date1b = "1/2/2008"},
     " WHERE ((LastUpdated > '03/04/2008 00:00:00')  OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS NULL) ;"},
    {"range wins over ignored last send",
     kGreenwich,
     "SQLITE",
     "3/4/2008",
     {.Date1a = "1/2/2008", .Date1b = "1/2/2008", .IgnoreLastSync = true},
     " WHERE (LastUpdated BETWEEN '01/02/2008 00:00:00' AND '01/03/2008 00:00:00');"},
    {"keys", kGreenwich, "JETLITE", "", {.Filter1a = "A", .Filter1b = "M"}, " WHERE ClientID BETWEEN 'A' AND 'M' ;"},
    {"half a pair of keys", kGreenwich, "SQLITE", "", {.Filter1a = "A"}, ";"},
    {"groups",
     kGreenwich,
     "SQLITE",
     "",
     {.Filter2a = "G1", .Filter2b = "G2"},
     " WHERE (ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN 'G1' AND 'G2')) ;"},
    {"the third pair and the second dates have no clause",
     kGreenwich,
     "SQLITE",
     "",
     {.Filter3a = "a", .Filter3b = "b", .From = "1/1/2008", .To = "1/2/2008"},
     ";"},
    {"everything",
     kNewYork,
     "SQLITE",
     "3/4/2008",
     {.Filter1a = "A", .Filter2a = "G1", .Filter1b = "M", .Filter2b = "G2", .ActiveOnly = true},
     " WHERE ((LastUpdated > '03/04/2008 05:00:00')  OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS NULL) "
     " AND ClientID BETWEEN 'A' AND 'M' "
     " AND (ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN 'G1' AND 'G2')) "
     " AND (Client.Status IS NULL OR Client.Status = 'Active') ;"},
    {"range and the rest",
     kGreenwich,
     "JETLITE",
     "",
     {.Date1a = "1/2/2008", .Date1b = "1/2/2008", .Filter1a = "A", .Filter1b = "M", .ActiveOnly = true},
     " WHERE (LastUpdated BETWEEN #01/02/2008 00:00:00# AND #01/03/2008 00:00:00#)"
     " AND ClientID BETWEEN 'A' AND 'M' "
     " AND (Client.Status IS NULL OR Client.Status = 'Active') ;"},
};

TEST(ClientSelection, The_text_is_exactly_this_and_the_database_takes_it) {
  for (const auto& c : kCorners) {
    SCOPED_TRACE(c.what);
    SelectionHouse house(c.zone, c.provider);
    if (!c.lastSendAt.empty()) house.Setting("QBSEND_", "Clients_LastSendAt", c.lastSendAt);
    const auto sql = BuildSelectSQL(enClients, c.filters);
    EXPECT_EQ(sql, kBase + c.clauses);
    EXPECT_NO_THROW(house.Run(sql));
  }
}

class BothDialects : public testing::TestWithParam<std::string> {};

TEST_P(BothDialects, Select_what_changed_was_never_linked_or_has_no_date) {
  SelectionHouse house(kNewYork, GetParam());
  house.Setting("QBSEND_", "Clients_LastSendAt", "3/4/2008 10:00:00 AM");  // 15:00 UTC
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('LATER', '1-1', '2008-03-04 15:00:01')");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('SAME', '1-2', '2008-03-04 15:00:00')");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('NULLLINK', NULL, '2008-01-01')");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('NOLINK', '', '2008-01-01')");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('NODATE', '1-3', NULL)");
  EXPECT_EQ(house.Keys(BuildSelectSQL(enClients, {}), "ClientID"), "LATER NULLLINK NOLINK NODATE ");
}

TEST_P(BothDialects, Select_up_to_one_day_past_the_second_date) {
  SelectionHouse house(kGreenwich, GetParam());
  house.Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('BEFORE', '2008-03-03 23:59:59')");
  house.Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('FIRST', '2008-03-04 00:00:00')");
  house.Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('LAST', '2008-03-06 00:00:00')");
  house.Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('BEHIND', '2008-03-06 00:00:01')");
  EXPECT_EQ(house.Keys(BuildSelectSQL(enClients, {.Date1a = "3/4/2008", .Date1b = "3/5/2008"}), "ClientID"),
            "FIRST LAST ");
}

TEST_P(BothDialects, Select_by_key_group_and_status) {
  SelectionHouse house(kGreenwich, GetParam());
  for (const std::string_view row :
       {"'A', 'Active'", "'B', NULL", "'C', 'InActive'", "'D', 'Active'", "'Z', 'Active'"}) {
    house.Sql("INSERT INTO Client (ClientID, Status) VALUES (" + std::string(row) + ")");
  }
  for (const std::string_view row : {"'G1', 'A'", "'G2', 'B'", "'G2', 'C'", "'G3', 'D'", "'G1', 'Z'"}) {
    house.Sql("INSERT INTO ClientGroupDetail (CGID, ClientID) VALUES (" + std::string(row) + ")");
  }
  SavedFilters filters{.Filter1a = "A", .Filter2a = "G1", .Filter1b = "M", .Filter2b = "G2"};
  EXPECT_EQ(house.Keys(BuildSelectSQL(enClients, filters), "ClientID"), "A B C ");
  filters.ActiveOnly = true;
  EXPECT_EQ(house.Keys(BuildSelectSQL(enClients, filters), "ClientID"), "A B ");
}
INSTANTIATE_TEST_SUITE_P(Selections, BothDialects, testing::Values("SQLITE", "JETLITE"),
                         [](const auto& provider) { return provider.param; });

TEST(ClientSelection, A_quote_in_a_filter_is_not_protected_and_breaks_the_statement) {
  SelectionHouse house;
  for (const std::string_view value : {"O'A", "A' OR '1'='1"}) {
    const auto sql = BuildSelectSQL(*FindTable(enClients), {.Filter1a = std::string(value), .Filter1b = "P"});
    EXPECT_EQ(sql.Text(), fmt::format("{} WHERE ClientID BETWEEN '{}' AND 'P' ;", kBase, value));
    EXPECT_THROW(house.Run(std::string(std::string_view(sql))), PlatformError);
  }
}

TEST(ClientSelection, Braces_in_a_filter_stay_as_they_are) {
  SelectionHouse house;
  EXPECT_EQ(BuildSelectSQL(enClients, {.Filter1a = "{a}", .Filter1b = "{K}"}),
            kBase + " WHERE ClientID BETWEEN '{a}' AND '{K}' ;");
}

TEST(ClientSelection, The_passed_record_is_selected_alone) {
  SelectionHouse house(kGreenwich);
  house.Sql("INSERT INTO Client (ClientID) VALUES ('A')");
  house.Sql("INSERT INTO Client (ClientID) VALUES ('B')");
  EXPECT_EQ(house.Keys(BuildSelectSQL(enClients, {.Filter1a = "B", .Filter1b = "B"}), "ClientID"), "B ");
}

TEST(ClientSelection, The_last_send_is_read_from_the_settings_table_when_that_is_in_use) {
  SelectionHouse house;
  house.Setting("QBSEND_", "Clients_LastSendAt", "1/1/2001");
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('QBSEND__Clients_LastSendAt', '2/2/2002')");
  Vars().g_UseTWSTable = true;
  EXPECT_NE(BuildSelectSQL(enClients, {}).find("'02/02/2002 00:00:00'"), std::string::npos);
}

TEST(ClientSelection, A_last_send_that_is_no_date_raises_a_conversion_error) {
  SelectionHouse house;
  house.Setting("QBSEND_", "Clients_LastSendAt", "yesterday");
  try {
    (void)BuildSelectSQL(enClients, {});
    FAIL() << "nothing was raised";
  } catch (const PlatformError& raised) {
    EXPECT_EQ(raised.number(), error::kConversion);
  }
}

TEST(Selection, Estimates_have_no_statement) {
  SelectionHouse house(kNewYork);
  EXPECT_EQ(BuildSelectSQL(enEstimates, {.Filter1a = "A", .Filter1b = "M", .ActiveOnly = true}), "");
}

}  // namespace
}  // namespace twqb
