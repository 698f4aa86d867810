// Times across both changes of the clock.

#include "CompanyTest.h"
#include "adapters/companyfile/CompanyClock.h"

namespace twqb::company {

namespace {

Date At(int month, int day, int hour, int minute = 0, int second = 0) {
  return Date::FromCivil({.year = 2008, .month = month, .day = day, .hour = hour, .minute = minute, .second = second});
}

// In New York: forward on 9 March at 2:00, back on 2 November at 1:00 standard time, when the wall shows 2:00.
class CompanyTimes : public CompanyTest {
 protected:
  void SetUp() override {
    CompanyTest::SetUp();
    machine_.summer = {At(3, 9, 2), At(11, 2, 1)};
  }
  // Makes a customer when the wall clock shows `wall`.
  std::string Made(const std::string& name, Date wall, TimeZoneState state) {
    machine_.now = wall;
    machine_.zone.state = state;
    return AddNamed(name).Value("TimeModified");
  }
  std::string TimeOf(const std::string& name) { return ByName(name).Value("TimeModified"); }
};

constexpr auto kWinter = TimeZoneState::Standard;
constexpr auto kSummer = TimeZoneState::Daylight;

TEST_F(CompanyTimes, A_time_is_the_wall_clock_of_its_own_season_with_the_standard_offset_whenever_it_is_read) {
  EXPECT_EQ(Made("Winter", At(2, 26, 10), kWinter), "2008-02-26T10:00:00-05:00");
  EXPECT_EQ(Made("Summer", At(6, 24, 23, 53, 54), kSummer), "2008-06-24T23:53:54-05:00");
  EXPECT_EQ(TimeOf("Winter"), "2008-02-26T10:00:00-05:00") << "read in summer";
  machine_.now = At(12, 24, 12);
  machine_.zone.state = kWinter;
  EXPECT_EQ(TimeOf("Summer"), "2008-06-24T23:53:54-05:00") << "read in winter";
}

TEST_F(CompanyTimes, An_edit_sequence_is_the_moment_and_not_what_the_clock_shows) {
  Made("Summer", At(6, 24, 23, 53, 54), kSummer);
  EXPECT_EQ(ByName("Summer").Value("EditSequence"), "1214366034");
}

TEST_F(CompanyTimes, The_clock_springs_forward_and_falls_back) {
  EXPECT_EQ(Made("A", At(3, 9, 1, 59, 59), kWinter), "2008-03-09T01:59:59-05:00");
  EXPECT_EQ(Made("B", At(3, 9, 3), kSummer), "2008-03-09T03:00:00-05:00");
  EXPECT_EQ(Made("C", At(11, 2, 1, 59, 59), kSummer), "2008-11-02T01:59:59-05:00");
  EXPECT_EQ(Made("D", At(11, 2, 1), kWinter), "2008-11-02T01:00:00-05:00");
  EXPECT_EQ(Made("E", At(11, 2, 2), kWinter), "2008-11-02T02:00:00-05:00");
}

TEST_F(CompanyTimes, Bounds_are_wall_clock_times_of_the_season_that_they_lie_in) {
  Made("Winter", At(2, 26, 10), kWinter);
  Made("Summer", At(6, 24, 10), kSummer);
  const auto from = [&](const std::string& time) {
    const auto answer = Query("<FromModifiedDate>" + time + "</FromModifiedDate>");
    return answer.code == 0 ? answer.All("Name").size() : 0U;
  };
  const auto to = [&](const std::string& time) {
    const auto answer = Query("<ToModifiedDate>" + time + "</ToModifiedDate>");
    return answer.code == 0 ? answer.All("Name").size() : 0U;
  };
  for (const auto season : {kWinter, kSummer}) {
    machine_.zone.state = season;
    EXPECT_EQ(from("2008-02-26T10:00:00"), 2U);
    EXPECT_EQ(from("2008-02-26T10:00:01"), 1U);
    EXPECT_EQ(from("2008-06-24T10:00:00-05:00"), 1U);
    EXPECT_EQ(from("2008-06-24T10:00:01-05:00"), 0U);
    EXPECT_EQ(to("2008-02-26T09:59:59"), 0U);
    EXPECT_EQ(to("2008-02-26T10:00:00"), 1U);
    EXPECT_EQ(to("2008-06-24T09:59:59"), 1U);
    EXPECT_EQ(to("2008-06-24T10:00:00"), 2U);
  }
}

TEST_F(CompanyTimes, The_hour_that_comes_twice_lies_within_bounds_both_times) {
  Made("First", At(11, 2, 1, 30), kSummer);
  Made("Second", At(11, 2, 1, 30), kWinter);
  EXPECT_EQ(Query("<FromModifiedDate>2008-11-02T01:30:00</FromModifiedDate><ToModifiedDate>2008-11-02T01:30:00"
                  "</ToModifiedDate>")
                .All("Name"),
            (std::vector<std::string>{"First", "Second"}));
}

TEST_F(CompanyTimes, A_bound_in_the_hour_that_is_passed_over_lies_between_what_was_before_and_behind_it) {
  Made("Before", At(3, 9, 1, 45), kWinter);
  Made("At the end", At(3, 9, 1, 59, 59), kWinter);
  Made("Behind", At(3, 9, 3), kSummer);
  for (const auto* time : {"2008-03-09T02:00:00", "2008-03-09T02:30:00", "2008-03-09T02:59:59"}) {
    EXPECT_EQ(Query(std::string("<FromModifiedDate>") + time + "</FromModifiedDate>").All("Name"),
              std::vector<std::string>{"Behind"})
        << time;
    EXPECT_EQ(Query(std::string("<ToModifiedDate>") + time + "</ToModifiedDate>").All("Name"),
              (std::vector<std::string>{"At the end", "Before"}))
        << time;
  }
  EXPECT_EQ(Query("<FromModifiedDate>2008-03-09T03:00:00</FromModifiedDate>").All("Name"),
            std::vector<std::string>{"Behind"});
  EXPECT_EQ(Query("<ToModifiedDate>2008-03-09T01:59:58</ToModifiedDate>").All("Name"),
            std::vector<std::string>{"Before"});
}

TEST_F(CompanyTimes, A_day_that_begins_with_the_hour_that_is_passed_over_begins_behind_it) {
  machine_.summer = {At(10, 19, 0), At(11, 30, 23)};
  Made("Eve", At(10, 18, 23, 30), kWinter);
  Made("Day", At(10, 19, 1), kSummer);
  EXPECT_EQ(Query("<FromModifiedDate>2008-10-19</FromModifiedDate>").All("Name"), std::vector<std::string>{"Day"});
  EXPECT_EQ(Query("<ToModifiedDate>2008-10-18</ToModifiedDate>").All("Name"), std::vector<std::string>{"Eve"});
}

TEST_F(CompanyTimes, A_wall_clock_time_leads_back_to_its_moment) {
  const auto clock = ReadClock(machine_);
  const auto wall = [&](Date standard) { return standard.PlusMinutes(machine_.DaylightMinutes(standard)); };
  for (auto standard = At(2, 26, 0); standard < At(12, 1, 0); standard = standard.PlusMinutes(20)) {
    if (At(11, 2, 0) <= standard && standard < At(11, 2, 2)) continue;  // shown twice
    for (const auto occurrence : {Occurrence::First, Occurrence::Last}) {
      EXPECT_EQ(FromWallClock(wall(standard), occurrence, clock), standard.PlusMinutes(300).UnixSeconds())
          << IsoDate(standard);
    }
  }
  EXPECT_EQ(FromWallClock(At(11, 2, 1, 30), Occurrence::First, clock), At(11, 2, 5, 30).UnixSeconds());
  EXPECT_EQ(FromWallClock(At(11, 2, 1, 30), Occurrence::Last, clock), At(11, 2, 6, 30).UnixSeconds());
}

}  // namespace

}  // namespace twqb::company
