// Local time and UTC, and dates in SQL.

#include <gtest/gtest.h>

#include <random>

#include "services/Conversions.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

struct ZoneCase {
  std::string_view name;
  TimeZoneInformation zone;
  int minutesToUTC;
};

std::ostream& operator<<(std::ostream& out, const ZoneCase& zone) { return out << zone.name; }

class Zones : public testing::TestWithParam<ZoneCase> {};

TEST_P(Zones, Add_the_present_offset_to_every_date_and_take_it_away_again) {
  TestHouse house({.zone = GetParam().zone});
  house.Enter();
  for (const auto* text : {"2008-01-15T12:00:00", "2008-07-15T12:00:00", "1899-12-30", "1899-12-29T18:00:00",
                           "2008-03-09T02:30:00", "2008-12-31T23:59:59.999", "0101-01-02", "9998-12-31"}) {
    const auto local = TextToDate(text);
    EXPECT_EQ(LocalToUTC(local), local.PlusMinutes(GetParam().minutesToUTC)) << text;
    EXPECT_EQ(UTCToLocal(local), local.PlusMinutes(-GetParam().minutesToUTC)) << text;
  }
}

TEST_P(Zones, Return_a_date_unchanged_after_both_ways) {
  TestHouse house({.zone = GetParam().zone});
  house.Enter();
  std::mt19937_64 random(3);
  for (int round = 0; round < 1000; ++round) {
    const auto date = Date::FromMilliseconds(static_cast<std::int64_t>(random() % 5'000'000'000'000) - 500'000'000'000);
    EXPECT_EQ(LocalToUTC(UTCToLocal(date)), date);
    EXPECT_EQ(UTCToLocal(LocalToUTC(date)), date);
  }
}

TEST_P(Zones, Tell_daylight_time_by_their_state_alone) {
  TestHouse house({.zone = GetParam().zone});
  house.Enter();
  EXPECT_EQ(IsDaylightTime(), GetParam().zone.state == TimeZoneState::Daylight);
}

constexpr auto kStandard = TimeZoneState::Standard;
constexpr auto kDaylight = TimeZoneState::Daylight;
constexpr auto kUnknown = TimeZoneState::Unknown;

INSTANTIATE_TEST_SUITE_P(TimeZones, Zones,
                         testing::Values(ZoneCase{"NewYorkWinter", {300, -60, kStandard}, 300},
                                         ZoneCase{"NewYorkSummer", {300, -60, kDaylight}, 240},
                                         ZoneCase{"NewYorkUnknown", {300, -60, kUnknown}, 300},
                                         ZoneCase{"LondonWinter", {0, -60, kStandard}, 0},
                                         ZoneCase{"LondonSummer", {0, -60, kDaylight}, -60},
                                         ZoneCase{"SydneyWinter", {-600, -60, kStandard}, -600},
                                         ZoneCase{"SydneySummer", {-600, -60, kDaylight}, -660},
                                         ZoneCase{"Kolkata", {-330, 0, kUnknown}, -330},
                                         ZoneCase{"StJohnsSummer", {210, -60, kDaylight}, 150},
                                         ZoneCase{"LordHoweSummer", {-630, -30, kDaylight}, -660}),
                         [](const auto& zone) { return std::string(zone.param.name); });

TEST(LocalToUTC, Of_a_July_date_done_in_January_uses_the_winter_offset) {
  TestHouse house({.now = TextToDate("2008-01-15"), .zone = {.bias = 300, .daylightBias = -60, .state = kStandard}});
  house.Enter();
  EXPECT_EQ(IsoDate(LocalToUTC(TextToDate("2008-07-15T12:00:00"))), "2008-07-15T17:00:00");
}

TEST(IsDaylightTime, Is_False_when_the_zone_cannot_be_asked) {
  NotingHouse house;
  house.Faults().RaiseAt(house.Faults().CallCount() + 1, FaultTiming::Before, 5);
  EXPECT_FALSE(IsDaylightTime());
  EXPECT_TRUE(house.notes.empty());
}

struct SqlDate {
  std::string_view date;
  std::string_view withTime;
  std::string_view dateOnly;
};

class SqlDates : public testing::TestWithParam<SqlDate> {};
TEST_P(SqlDates, Have_two_digits_everywhere_and_24_hours) {
  EXPECT_EQ(FormatSQLDate(TextToDate(GetParam().date), DateForm::WithTime), GetParam().withTime);
  EXPECT_EQ(FormatSQLDate(TextToDate(GetParam().date), DateForm::DateOnly), GetParam().dateOnly);
}
INSTANTIATE_TEST_SUITE_P(FormatSQLDate, SqlDates,
                         testing::Values(SqlDate{"2008-01-31T10:15:00", "01/31/2008 10:15:00", "01/31/2008"},
                                         SqlDate{"2008-12-01", "12/01/2008 00:00:00", "12/01/2008"},
                                         SqlDate{"2008-12-01T23:59:59", "12/01/2008 23:59:59", "12/01/2008"},
                                         SqlDate{"2008-12-01T00:05:09", "12/01/2008 00:05:09", "12/01/2008"},
                                         SqlDate{"1901-01-01", "01/01/1901 00:00:00", "01/01/1901"},
                                         SqlDate{"1899-12-30", "12/30/1899 00:00:00", "12/30/1899"}));

}  // namespace
}  // namespace twqb
