// The statement that selects the clients to send: its text byte for byte, and that a real database takes it.

#include <gtest/gtest.h>

#include "engine/SelectionQueries.h"
#include "services/Database.h"
#include "tests/engine/SpiedHouse.h"
#include "twqb/enTables.h"

namespace twqb {
namespace {

const std::string kBase =
    "SELECT ClientID, ClientFName, ClientLName, ClientMI, ClientCompany, ClientStreet, ClientStreet2, ClientCity, "
    "ClientState, ClientZip,ClientPhone, ClientMainPhone, ClientFax, ClientEmail, QBLinkID, LastUpdated, ClientSince, "
    "ClientMainSalt FROM Client ";

constexpr TimeZoneInformation kGreenwich = {.bias = 0, .daylightBias = -60, .state = TimeZoneState::Standard};
constexpr TimeZoneInformation kNewYork = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard};
constexpr TimeZoneInformation kNewYorkSummer = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Daylight};
constexpr TimeZoneInformation kHelsinki = {.bias = -120, .daylightBias = -60, .state = TimeZoneState::Standard};
constexpr TimeZoneInformation kDelhi = {.bias = -330, .daylightBias = 0, .state = TimeZoneState::Unknown};

// A house in a zone, composed for one dialect.
class SelectionHouse : public SpiedHouse {
 public:
  explicit SelectionHouse(const TimeZoneInformation& zone = kGreenwich, std::string provider = "SQLITE")
      : SpiedHouse({.provider = provider, .zone = zone}) {
    Vars().g_DbKind = DbKindOf(provider);
  }
  // The keys that a statement selects, joined; raises when the database does not take it.
  std::string Run(const std::string& sql) {
    const auto connection = database.CreateConnection();
    OpenConnection(*connection, nullptr, "");
    const auto rows = connection->OpenRecordset(sql, ado::CursorType::Static, ado::LockType::ReadOnly);
    std::string keys;
    for (; !rows->Eof(); rows->MoveNext()) keys += ToText(rows->Field("ClientID")) + " ";
    return keys;
  }
};

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

struct Part {
  std::string a;
  std::string b;
};
constexpr int kPairStates = 3;  // none, the first value alone, both
Part PairOf(int state, std::string_view a, std::string_view b) {
  return {.a = state > 0 ? std::string(a) : "", .b = state > 1 ? std::string(b) : ""};
}

// One combination, told apart from the code: clauses in order, the first behind WHERE.
std::string Expected(char d, bool everSent, int dates, bool ignore, int keys, int groups, bool active) {
  const auto literal = [d](std::string_view date) { return d + std::string(date) + d; };
  std::vector<std::string> clauses;
  if (dates == 2) {
    clauses.push_back("(LastUpdated BETWEEN " + literal("01/02/2008 00:00:00") + " AND " +
                      literal("02/04/2008 00:00:00") + ")");
  } else if (everSent && !ignore) {
    clauses.push_back("((LastUpdated > " + literal("03/04/2008 12:30:00") +
                      ")  OR QBLinkID IS NULL OR QBLinkID = '' OR LastUpdated IS NULL) ");
  }
  if (keys == 2) clauses.emplace_back("ClientID BETWEEN 'A' AND 'M' ");
  if (groups == 2) {
    clauses.emplace_back("(ClientID IN(SELECT ClientID FROM ClientGroupDetail  WHERE CGID BETWEEN 'G' AND 'H')) ");
  }
  auto text = kBase;
  for (std::size_t i = 0; i < clauses.size(); ++i) text += (i == 0 ? " WHERE " : " AND ") + clauses[i];
  if (active) text += " AND (Client.Status IS NULL OR Client.Status = 'Active') ";
  return text + ";";
}

class AllCombinations : public testing::TestWithParam<std::string> {};

TEST_P(AllCombinations, Give_the_expected_text_and_all_but_ActiveOnly_alone_run) {
  SelectionHouse house(kGreenwich, GetParam());
  const char d = GetParam() == "SQLITE" ? '\'' : '#';
  for (const bool everSent : {false, true}) {
    house.Setting("QBSEND_", "Clients_LastSendAt", everSent ? "3/4/2008 12:30:00 PM" : "01/01/1900");
    for (int dates = 0; dates < kPairStates; ++dates) {
      for (int keys = 0; keys < kPairStates; ++keys) {
        for (int groups = 0; groups < kPairStates; ++groups) {
          for (int flags = 0; flags < 4; ++flags) {
            const bool ignore = (flags & 1) != 0;
            const bool active = (flags & 2) != 0;
            const auto date = PairOf(dates, "1/2/2008", "2/3/2008");
            const auto key = PairOf(keys, "A", "M");
            const auto group = PairOf(groups, "G", "H");
            const auto sql = BuildSelectSQL(enClients, {.Date1a = date.a,
                                                        .Date1b = date.b,
                                                        .Filter1a = key.a,
                                                        .Filter2a = group.a,
                                                        .Filter1b = key.b,
                                                        .Filter2b = group.b,
                                                        .IgnoreLastSync = ignore,
                                                        .ActiveOnly = active});
            ASSERT_EQ(sql, Expected(d, everSent, dates, ignore, keys, groups, active));
            const bool hasWhere =
                sql.find(" WHERE (") != std::string::npos || sql.find(" WHERE ClientID") != std::string::npos;
            if (active && !hasWhere) {
              EXPECT_THROW(house.Run(sql), PlatformError) << sql;
            } else {
              EXPECT_NO_THROW(house.Run(sql)) << sql;
            }
          }
        }
      }
    }
  }
}
INSTANTIATE_TEST_SUITE_P(BothDialects, AllCombinations, testing::Values("SQLITE", "JETLITE"),
                         [](const auto& provider) { return provider.param; });

class BothDialects : public testing::TestWithParam<std::string> {};

TEST_P(BothDialects, Select_what_changed_was_never_linked_or_has_no_date) {
  SelectionHouse house(kNewYork, GetParam());
  house.Setting("QBSEND_", "Clients_LastSendAt", "3/4/2008 10:00:00 AM");  // 15:00 UTC
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('LATER', '1-1', '2008-03-04 15:00:01')");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('SAME', '1-2', '2008-03-04 15:00:00')");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('NULLLINK', NULL, '2008-01-01')");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('NOLINK', '', '2008-01-01')");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID, LastUpdated) VALUES ('NODATE', '1-3', NULL)");
  EXPECT_EQ(house.Run(BuildSelectSQL(enClients, {})), "LATER NULLLINK NOLINK NODATE ");
}

TEST_P(BothDialects, Select_up_to_one_day_past_the_second_date) {
  SelectionHouse house(kGreenwich, GetParam());
  house.Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('BEFORE', '2008-03-03 23:59:59')");
  house.Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('FIRST', '2008-03-04 00:00:00')");
  house.Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('LAST', '2008-03-06 00:00:00')");
  house.Sql("INSERT INTO Client (ClientID, LastUpdated) VALUES ('BEHIND', '2008-03-06 00:00:01')");
  EXPECT_EQ(house.Run(BuildSelectSQL(enClients, {.Date1a = "3/4/2008", .Date1b = "3/5/2008"})), "FIRST LAST ");
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
  EXPECT_EQ(house.Run(BuildSelectSQL(enClients, filters)), "A B C ");
  filters.ActiveOnly = true;
  EXPECT_EQ(house.Run(BuildSelectSQL(enClients, filters)), "A B ");
}
INSTANTIATE_TEST_SUITE_P(Selections, BothDialects, testing::Values("SQLITE", "JETLITE"),
                         [](const auto& provider) { return provider.param; });

TEST(ClientSelection, A_quote_in_a_filter_is_not_protected_and_breaks_the_statement) {
  SelectionHouse house;
  const auto sql = BuildSelectSQL(enClients, {.Filter1a = "O'A", .Filter1b = "P"});
  EXPECT_EQ(sql, kBase + " WHERE ClientID BETWEEN 'O'A' AND 'P' ;");
  EXPECT_THROW(house.Run(sql), PlatformError);
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
  EXPECT_EQ(house.Run(BuildSelectSQL(enClients, {.Filter1a = "B", .Filter1b = "B"})), "B ");
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

TEST(Selection, Estimates_and_what_lies_behind_them_have_no_statement) {
  SelectionHouse house(kNewYork);
  for (const auto table : {enEstimates, enAll, enCreditMemo})
    EXPECT_EQ(BuildSelectSQL(table, {.ActiveOnly = true}), "");
}

}  // namespace
}  // namespace twqb
