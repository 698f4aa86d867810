// Which side of a linked pair wins: the pure rule over its whole matrix, and with the billing time as a row gives it.

#include <gtest/gtest.h>

#include "engine/ConflictRule.h"
#include "services/Database.h"
#include "tests/engine/MachineInZone.h"
#include "tests/engine/SpiedHouse.h"

namespace twqb {
namespace {

const Date kNoon = TextToDate("2008-03-05T12:00:00");

bool Moves(Direction direction, TwinRule rule, TimeZoneState clock, std::int64_t quickBooksLaterBy) {
  return RecordMoves({.direction = direction,
                      .rule = rule,
                      .quickBooksTime = kNoon.PlusMilliseconds(quickBooksLaterBy),
                      .clock = clock,
                      .billingTime = kNoon});
}

TEST(TwinRule, Never_wins_over_the_newer_one) {
  EXPECT_EQ(TwinRuleOf(true, true), TwinRule::LeaveAlone);
  EXPECT_EQ(TwinRuleOf(true, false), TwinRule::LeaveAlone);
  EXPECT_EQ(TwinRuleOf(false, true), TwinRule::NewerWins);
  EXPECT_EQ(TwinRuleOf(false, false), TwinRule::Overwrite);
}

constexpr std::int64_t kDifferences[] = {
    -Date::kDay, -Date::kHour - 1, -Date::kHour, -Date::kHour + 1, -Date::kSecond, -1, 0,
    1,           Date::kSecond,    Date::kHour,  Date::kDay};

TEST(ConflictRule, A_record_that_is_to_be_left_alone_never_moves) {
  for (const auto direction : {Direction::Send, Direction::Get}) {
    for (const auto clock : {TimeZoneState::Unknown, TimeZoneState::Standard, TimeZoneState::Daylight}) {
      for (const auto difference : kDifferences) {
        EXPECT_FALSE(Moves(direction, TwinRule::LeaveAlone, clock, difference)) << difference;
      }
    }
  }
}

TEST(ConflictRule, Without_both_flags_a_record_always_moves) {
  for (const auto direction : {Direction::Send, Direction::Get}) {
    for (const auto clock : {TimeZoneState::Unknown, TimeZoneState::Standard, TimeZoneState::Daylight}) {
      for (const auto difference : kDifferences) {
        EXPECT_TRUE(Moves(direction, TwinRule::Overwrite, clock, difference)) << difference;
      }
    }
  }
}

struct NewerCase {
  std::int64_t quickBooksLaterBy;
  bool sends;
  bool gets;
};

TEST(ConflictRule, In_standard_time_the_later_side_wins_to_the_millisecond_and_a_tie_moves_both_ways) {
  constexpr NewerCase kCases[] = {{-Date::kDay, true, false},
                                  {-Date::kHour, true, false},
                                  {-Date::kSecond, true, false},
                                  {-1, true, false},
                                  {0, true, true},
                                  {1, false, true},
                                  {Date::kSecond, false, true},
                                  {Date::kHour, false, true},
                                  {Date::kDay, false, true}};
  for (const auto clock : {TimeZoneState::Unknown, TimeZoneState::Standard}) {
    for (const auto& c : kCases) {
      EXPECT_EQ(Moves(Direction::Send, TwinRule::NewerWins, clock, c.quickBooksLaterBy), c.sends)
          << c.quickBooksLaterBy;
      EXPECT_EQ(Moves(Direction::Get, TwinRule::NewerWins, clock, c.quickBooksLaterBy), c.gets) << c.quickBooksLaterBy;
    }
  }
}

TEST(ConflictRule, In_daylight_time_QuickBooks_time_counts_an_hour_later) {
  constexpr NewerCase kCases[] = {{-Date::kHour - Date::kSecond, true, false},
                                  {-Date::kHour - 1, true, false},
                                  {-Date::kHour, true, true},
                                  {-Date::kHour + 1, false, true},
                                  {-Date::kHour + Date::kSecond, false, true},
                                  {-1, false, true},
                                  {0, false, true},
                                  {1, false, true}};
  for (const auto& c : kCases) {
    EXPECT_EQ(Moves(Direction::Send, TwinRule::NewerWins, TimeZoneState::Daylight, c.quickBooksLaterBy), c.sends)
        << c.quickBooksLaterBy;
    EXPECT_EQ(Moves(Direction::Get, TwinRule::NewerWins, TimeZoneState::Daylight, c.quickBooksLaterBy), c.gets)
        << c.quickBooksLaterBy;
  }
}

// --- With the billing time of a row ----------------------------------------------------------------------------------

struct RowCase {
  std::string what;
  std::string lastUpdated;  // as SQL
  std::string clientSince;
  TimeZoneInformation zone;
  std::string quickBooksTime;  // as QuickBooks wrote it, without its offset
  bool sends;
  bool gets;
};

constexpr TimeZoneInformation kWestStandard = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Standard};
constexpr TimeZoneInformation kWestDaylight = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Daylight};
constexpr TimeZoneInformation kWestUnknown = {.bias = 300, .daylightBias = -60, .state = TimeZoneState::Unknown};
constexpr TimeZoneInformation kEastStandard = {.bias = -330, .daylightBias = -60, .state = TimeZoneState::Standard};
constexpr TimeZoneInformation kEastDaylight = {.bias = -330, .daylightBias = -60, .state = TimeZoneState::Daylight};

const RowCase kRowCases[] = {
    // 15:00 UTC is 10:00 in the west.
    {"west, tie", "'2008-03-05 15:00:00'", "NULL", kWestStandard, "2008-03-05T10:00:00", true, true},
    {"west, QuickBooks a second later", "'2008-03-05 15:00:00'", "NULL", kWestStandard, "2008-03-05T10:00:01", false,
     true},
    {"west, QuickBooks a second earlier", "'2008-03-05 15:00:00'", "NULL", kWestStandard, "2008-03-05T09:59:59", true,
     false},
    {"west, billing a millisecond later", "'2008-03-05 15:00:00.001'", "NULL", kWestStandard, "2008-03-05T10:00:00",
     true, false},
    {"west, billing a millisecond earlier", "'2008-03-05 14:59:59.999'", "NULL", kWestStandard, "2008-03-05T10:00:00",
     false, true},
    {"state unknown counts as standard", "'2008-03-05 15:00:00'", "NULL", kWestUnknown, "2008-03-05T10:00:00", true,
     true},
    // In daylight time it is 11:00, and QuickBooks, which stays on standard time, writes 10:00.
    {"west daylight, tie", "'2008-03-05 15:00:00'", "NULL", kWestDaylight, "2008-03-05T10:00:00", true, true},
    {"west daylight, QuickBooks later", "'2008-03-05 15:00:00'", "NULL", kWestDaylight, "2008-03-05T10:00:01", false,
     true},
    {"west daylight, QuickBooks earlier", "'2008-03-05 15:00:00'", "NULL", kWestDaylight, "2008-03-05T09:59:59", true,
     false},
    // 15:00 UTC is 20:30 in the east.
    {"east, tie", "'2008-03-05 15:00:00'", "NULL", kEastStandard, "2008-03-05T20:30:00", true, true},
    {"east, QuickBooks later", "'2008-03-05 15:00:00'", "NULL", kEastStandard, "2008-03-05T20:30:01", false, true},
    {"east, QuickBooks earlier", "'2008-03-05 15:00:00'", "NULL", kEastStandard, "2008-03-05T20:29:59", true, false},
    {"east over midnight", "'2008-03-05 19:00:00'", "NULL", kEastStandard, "2008-03-06T00:30:00", true, true},
    {"east daylight, tie", "'2008-03-05 15:00:00'", "NULL", kEastDaylight, "2008-03-05T20:30:00", true, true},
    {"east daylight, QuickBooks later", "'2008-03-05 15:00:00'", "NULL", kEastDaylight, "2008-03-05T20:30:01", false,
     true},
    // The fallback stands as it is.
    {"fallback, tie", "NULL", "'2008-03-05 00:00:00'", kWestStandard, "2008-03-05T00:00:00", true, true},
    {"fallback, QuickBooks later", "NULL", "'2008-03-05 00:00:00'", kWestStandard, "2008-03-05T00:00:01", false, true},
    {"fallback in the east is not converted", "NULL", "'2008-03-05 00:00:00'", kEastStandard, "2008-03-05T00:00:00",
     true, true},
    {"fallback in daylight time: QuickBooks alone shifts", "NULL", "'2008-03-05 00:00:00'", kWestDaylight,
     "2008-03-05T00:00:00", false, true},
    {"fallback in daylight time, tie", "NULL", "'2008-03-05 00:00:00'", kWestDaylight, "2008-03-04T23:00:00", true,
     true},
    {"LastUpdated wins over the fallback", "'2008-03-05 15:00:00'", "'2009-01-01 00:00:00'", kWestStandard,
     "2008-03-05T10:00:01", false, true},
    // Neither date: 1 January 1901.
    {"no date loses", "NULL", "NULL", kWestStandard, "2008-03-05T10:00:00", false, true},
    {"no date ties with 1 January 1901", "NULL", "NULL", kWestStandard, "1901-01-01T00:00:00", true, true},
    {"no date wins over what is older still", "NULL", "NULL", kEastStandard, "1900-12-31T23:59:59", true, false},
    {"a summer date in winter uses the winter offset", "'2007-07-05 15:00:00'", "NULL", kWestStandard,
     "2007-07-05T10:00:00", true, true},
};

TEST(ConflictRule, The_billing_time_of_a_row_is_local_and_falls_back_to_the_other_column) {
  SpiedHouse house;
  for (const auto& c : kRowCases) {
    SCOPED_TRACE(c.what);
    house.Sql("DELETE FROM Client");
    house.Sql("INSERT INTO Client (ClientID, LastUpdated, ClientSince) VALUES ('A', " + c.lastUpdated + ", " +
              c.clientSince + ")");
    MachineInZone machine(house.machine, c.zone);
    Vars().platform.machine = &machine;
    const auto connection = house.database.CreateConnection();
    std::unique_ptr<ado::Recordset> rows;
    OpenConnection(*connection, &rows, "Client");
    const auto billingTime = GetTWDateOfUpdation(*rows, "LastUpdated", "ClientSince");
    ASSERT_TRUE(billingTime);
    for (const auto direction : {Direction::Send, Direction::Get}) {
      EXPECT_EQ(RecordMoves({.direction = direction,
                             .rule = TwinRule::NewerWins,
                             .quickBooksTime = TextToDate(c.quickBooksTime),
                             .clock = c.zone.state,
                             .billingTime = *billingTime}),
                direction == Direction::Send ? c.sends : c.gets)
          << (direction == Direction::Send ? "send" : "get");
    }
    EXPECT_TRUE(house.BoxTexts().empty());
  }
}

}  // namespace
}  // namespace twqb
