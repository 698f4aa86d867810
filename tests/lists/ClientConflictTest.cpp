// The conflict rule through real transfers: times of the company file against times of BillingDb.

#include <gtest/gtest.h>

#include "tests/lists/ClientsHouse.h"

namespace twqb {
namespace {

constexpr TimeZoneInformation kWinter = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard};
constexpr TimeZoneInformation kSummer = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Daylight};
constexpr TimeZoneInformation kEast = {.bias = -120, .daylightBias = -60, .state = TimeZoneState::Standard};
constexpr TimeZoneInformation kEastSummer = {.bias = -120, .daylightBias = -60, .state = TimeZoneState::Daylight};

// The customer changes at ten o'clock by the wall clock, which is the time told here as UTC.
struct Meeting {
  std::string what;
  TimeZoneInformation zone;
  std::string lastUpdated;  // as SQL
  std::string clientSince;
  bool sends;
  bool gets;
};

const Meeting kMeetings[] = {
    {"winter, tie", kWinter, "'2008-03-05 15:00:00'", "NULL", true, true},
    {"winter, billing later", kWinter, "'2008-03-05 15:00:01'", "NULL", true, false},
    {"winter, billing later by a millisecond", kWinter, "'2008-03-05 15:00:00.001'", "NULL", true, false},
    {"winter, billing earlier", kWinter, "'2008-03-05 14:59:59'", "NULL", false, true},
    {"summer, tie", kSummer, "'2008-03-05 14:00:00'", "NULL", true, true},
    {"summer, billing later", kSummer, "'2008-03-05 14:00:01'", "NULL", true, false},
    {"summer, billing earlier", kSummer, "'2008-03-05 13:59:59'", "NULL", false, true},
    {"east, tie", kEast, "'2008-03-05 08:00:00'", "NULL", true, true},
    {"east, billing earlier", kEast, "'2008-03-05 07:59:59'", "NULL", false, true},
    {"east in summer, tie", kEastSummer, "'2008-03-05 07:00:00'", "NULL", true, true},
    {"fallback, tie", kWinter, "NULL", "'2008-03-05 10:00:00'", true, true},
    {"fallback, earlier", kSummer, "NULL", "'2008-03-05 09:59:59'", false, true},
    {"neither date", kWinter, "NULL", "NULL", false, true},
};

TEST(ClientConflict, The_later_side_wins_and_a_tie_moves_in_both_directions) {
  for (const auto& meeting : kMeetings) {
    SCOPED_TRACE(meeting.what);
    const auto furnish = [&meeting](ClientsHouse& house) {
      const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Quinn</FirstName>");
      house.Client("ClientID, ClientFName, QBLinkID, LastUpdated, ClientSince",
                   "'ACME', 'Bill', '" + id + "', " + meeting.lastUpdated + ", " + meeting.clientSince);
      return id;
    };
    ClientsHouse sending({.zone = meeting.zone});
    const auto id = furnish(sending);
    sending.Send({.mostRecent = true});
    EXPECT_EQ(sending.CustomerField(id, "FirstName"), meeting.sends ? "Bill" : "Quinn");
    EXPECT_EQ(Outcome(), TableOk::True);
    EXPECT_TRUE(sending.BoxTexts().empty());

    ClientsHouse getting({.zone = meeting.zone});
    furnish(getting);
    getting.Get({.mostRecent = true});
    EXPECT_EQ(getting.ColumnOf("ACME", "ClientFName"), meeting.gets ? "Quinn" : "Bill");
    EXPECT_EQ(Outcome(), TableOk::True);
    EXPECT_TRUE(getting.BoxTexts().empty());
  }
}

TEST(ClientConflict, Without_the_rule_each_direction_overwrites_the_newer_side) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Quinn</FirstName>");
  house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Bill', '" + id + "', '2030-01-01'");
  house.Get();
  EXPECT_EQ(house.ColumnOf("ACME", "ClientFName"), "Quinn");
  house.Sql("UPDATE Client SET ClientFName = 'Bill', LastUpdated = '1990-01-01'");
  house.Send();
  EXPECT_EQ(house.CustomerField(id, "FirstName"), "Bill");
}

TEST(ClientConflict, After_a_Mod_the_next_get_sees_QuickBooks_as_the_later_side) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name>");
  house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Bill', '" + id + "', '2008-03-05 15:00:00'");
  house.machine.Advance(Date::kMinute);
  house.Send({.mostRecent = true});
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.ColumnOf("ACME", "LastUpdated"), "3/5/2008 3:01:00 PM");
}

TEST(ClientConflict, After_a_get_neither_direction_finds_an_older_side) {
  ClientsHouse house({.zone = kSummer});
  house.AddCustomer("<Name>Acme</Name>");
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.ColumnOf("Acme", "LastUpdated"), "3/5/2008 2:00:00 PM");
  house.Send({.mostRecent = true});
  EXPECT_EQ(house.Requests("CustomerModRq").size(), 1U);  // the tie goes
}

TEST(ClientConflict, A_date_that_cannot_be_read_is_told_and_neither_side_is_overwritten) {
  ClientsHouse house;
  const auto id = house.AddCustomer("<Name>Acme</Name><FirstName>Quinn</FirstName>");
  house.Client("ClientID, ClientFName, QBLinkID, LastUpdated", "'ACME', 'Bill', '" + id + "', 'soon'");
  house.Send({.mostRecent = true});
  EXPECT_EQ(house.CustomerField(id, "FirstName"), "Quinn");
  EXPECT_EQ(Outcome(), TableOk::True);
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.ColumnOf("ACME", "ClientFName"), "Bill");
  EXPECT_EQ(Outcome(), TableOk::True);
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  for (const auto& text : house.BoxTexts()) EXPECT_TRUE(text.ends_with(ErrorBoxEnd("GetTWDateOfUpdation")));
}

}  // namespace
}  // namespace twqb
