// Which side of a pair wins across both changes of the clock: QuickBooks' time as it stands in an answer, the billing
// time as it stands in a row, the transfer in either season.

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "SpiedHouse.h"
#include "adapters/companyfile/CompanyClock.h"
#include "engine/ConflictRule.h"
#include "quickbooks/ResponseModel.h"
#include "services/Conversions.h"
#include "services/Database.h"

namespace twqb {
namespace {

Date Utc(int month, int day, int hour, int minute = 0) {
  return Date::FromCivil({.year = 2008, .month = month, .day = day, .hour = hour, .minute = minute});
}

// New York in 2008, in UTC.
const Date kForward = Utc(3, 9, 7);
const Date kBack = Utc(11, 2, 6);

class NewYork : public ForwardingMachine {
 public:
  NewYork(Machine& inner, TimeZoneState state) : ForwardingMachine(inner), state_(state) {}
  TimeZoneInformation GetTimeZoneInformation() override { return {.bias = 300, .daylightBias = -60, .state = state_}; }
  int DaylightMinutes(Date standardTime) override {
    const auto utc = standardTime.PlusMinutes(300);
    return kForward <= utc && utc < kBack ? 60 : 0;
  }

 private:
  TimeZoneState state_;
};

// What QuickBooks writes of a change at that moment, as the object layer reads it.
Date QuickBooksTime(Date utc, Machine& machine) {
  const auto text = company::TimeText(utc.UnixSeconds(), company::ReadClock(machine));
  const MsgSetResponse answer("<QBXML><QBXMLMsgsRs><CustomerQueryRs statusCode=\"0\"><CustomerRet><TimeModified>" +
                                  text + "</TimeModified></CustomerRet></CustomerQueryRs></QBXMLMsgsRs></QBXML>",
                              &machine);
  return answer.GetAt(0).Detail()["TimeModified"].GetDate();
}

bool Moves(Direction direction, TimeZoneState now, Date quickBooksTime, Date billingTime) {
  return RecordMoves({.direction = direction,
                      .rule = TwinRule::NewerWins,
                      .quickBooksTime = quickBooksTime,
                      .clock = now,
                      .billingTime = billingTime});
}

// Around both changes, and the middle of each season; the hour behind the change back, which the wall clock shows a
// second time, has a test of its own.
const std::vector<Date> kMoments = {Utc(1, 15, 12),        Utc(3, 9, 6),     Utc(3, 9, 6, 59),  kForward,
                                    Utc(3, 9, 7, 1),       Utc(3, 9, 8),     Utc(6, 25, 3, 53), Utc(11, 2, 4, 59),
                                    kBack.PlusMinutes(60), Utc(11, 2, 7, 1), Utc(12, 24, 12)};

TEST(ConflictAcrossSeasons, The_later_change_wins_whenever_the_changes_were_and_whenever_the_transfer_is) {
  SpiedHouse house;
  for (const auto now : {TimeZoneState::Standard, TimeZoneState::Daylight}) {
    NewYork machine(house.machine, now);
    Vars().platform.machine = &machine;
    for (const auto changedThere : kMoments) {
      const auto quickBooksTime = QuickBooksTime(changedThere, machine);
      for (const auto changedHere : kMoments) {
        const auto billingTime = UTCToLocal(changedHere);
        const auto what = IsoDate(changedThere) + " in QuickBooks, " + IsoDate(changedHere) + " in billing, read in " +
                          (now == TimeZoneState::Daylight ? "summer" : "winter");
        EXPECT_EQ(Moves(Direction::Send, now, quickBooksTime, billingTime), changedThere <= changedHere) << what;
        EXPECT_EQ(Moves(Direction::Get, now, quickBooksTime, billingTime), changedHere <= changedThere) << what;
      }
    }
  }
}

TEST(ConflictAcrossSeasons, Of_the_hour_that_the_clock_shows_twice_the_first_reads_as_the_second) {
  SpiedHouse house;
  NewYork machine(house.machine, TimeZoneState::Standard);
  Vars().platform.machine = &machine;
  const auto first = kBack.PlusMinutes(-30);
  const auto second = kBack.PlusMinutes(30);
  EXPECT_EQ(QuickBooksTime(first, machine), QuickBooksTime(second, machine));
  EXPECT_EQ(QuickBooksTime(second, machine), second.PlusMinutes(-300));
}

TEST(ConflictAcrossSeasons, A_row_without_a_time_of_change_is_compared_by_its_other_date_as_it_stands) {
  SpiedHouse house;
  NewYork machine(house.machine, TimeZoneState::Daylight);
  Vars().platform.machine = &machine;
  const auto day = Date::FromCivil({.year = 2008, .month = 6, .day = 25});
  const auto midnight = day.PlusMinutes(240);  // of that day's wall clock, in UTC
  const auto quickBooksTime = QuickBooksTime(midnight, machine);
  EXPECT_TRUE(Moves(Direction::Send, TimeZoneState::Daylight, quickBooksTime, day));
  EXPECT_TRUE(Moves(Direction::Get, TimeZoneState::Daylight, quickBooksTime, day));
}

}  // namespace
}  // namespace twqb
