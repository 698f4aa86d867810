#include <gtest/gtest.h>

#include "platform/Date.h"
#include "platform/PlatformError.h"

namespace twqb {
namespace {

Date At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int millisecond = 0) {
  return Date::FromCivil({year, month, day, hour, minute, second, millisecond});
}

std::string Parsed(std::string_view text) {
  const auto date = ParseDate(text);
  return date ? IsoDate(*date) : "(no date)";
}

TEST(Date, Day_zero_is_30_December_1899) {
  EXPECT_EQ(Date().Milliseconds(), 0);
  EXPECT_EQ(IsoDate(Date()), "1899-12-30T00:00:00");
  EXPECT_EQ(At(1899, 12, 30), Date());
  EXPECT_EQ(At(1901, 1, 1).Serial(), 367);
  EXPECT_EQ(At(1970, 1, 1).Serial(), 25569);
}

TEST(Date, Fields_out_of_range_carry_over) {
  EXPECT_EQ(At(2008, 1, 1, 0, 90), At(2008, 1, 1, 1, 30));
  EXPECT_EQ(At(2008, 13, 1), At(2009, 1, 1));
  EXPECT_EQ(At(2008, 0, 1), At(2007, 12, 1));
  EXPECT_EQ(At(2008, -12, 1), At(2006, 12, 1));
  EXPECT_EQ(At(2008, 3, 0), At(2008, 2, 29));
  EXPECT_EQ(At(2008, 2, 30), At(2008, 3, 1));
  EXPECT_EQ(At(2008, 1, 1, 24), At(2008, 1, 2));
  EXPECT_EQ(At(2008, 1, 1, 0, 0, -1), At(2007, 12, 31, 23, 59, 59));
}

TEST(Date, Leap_days_follow_the_Gregorian_rule) {
  EXPECT_EQ(At(2000, 2, 29).PlusDays(1), At(2000, 3, 1));
  EXPECT_EQ(At(1900, 2, 28).PlusDays(1), At(1900, 3, 1));
  EXPECT_EQ(At(2008, 2, 28).PlusDays(2), At(2008, 3, 1));
  EXPECT_EQ(At(2100, 2, 28).PlusDays(1), At(2100, 3, 1));
}

TEST(Date, Civil_fields_come_back_from_before_and_after_day_zero) {
  for (const auto date : {At(1752, 9, 14, 23, 59, 59, 999), At(1899, 12, 29, 6), Date(), At(2008, 2, 29, 12, 34, 56, 7),
                          At(9999, 12, 31, 23, 59, 59)}) {
    EXPECT_EQ(Date::FromCivil(date.ToCivil()), date) << IsoDate(date);
  }
  const auto c = At(1899, 12, 29, 6).ToCivil();
  EXPECT_EQ(c.day, 29);
  EXPECT_EQ(c.hour, 6);
}

TEST(Date, The_fraction_of_a_negative_serial_counts_forward) {
  EXPECT_EQ(Date::FromSerial(-1.25), At(1899, 12, 29, 6));
  EXPECT_EQ(At(1899, 12, 29, 6).Serial(), -1.25);
  EXPECT_EQ(Date::FromSerial(-0.5), At(1899, 12, 30, 12));
  EXPECT_EQ(Date::FromSerial(-1), At(1899, 12, 29));
  EXPECT_EQ(Date::FromSerial(0.25), At(1899, 12, 30, 6));
}

TEST(Date, A_serial_and_back_gives_the_same_millisecond) {
  for (const auto date : {At(1850, 7, 4, 13, 14, 15, 167), At(1899, 12, 29, 23, 59, 59, 999), Date(),
                          At(2008, 3, 5, 10, 0, 1), At(2008, 3, 5, 23, 59, 59, 999), At(9999, 12, 31, 1, 2, 3, 4)}) {
    EXPECT_EQ(Date::FromSerial(date.Serial()), date) << IsoDate(date);
  }
  auto date = At(2008, 3, 5);
  for (int i = 0; i < 86'400; i += 7) {
    const auto second = date.PlusMilliseconds(i * Date::kSecond);
    ASSERT_EQ(Date::FromSerial(second.Serial()), second) << IsoDate(second);
  }
}

TEST(Date, Unix_seconds_round_down) {
  EXPECT_EQ(At(1970, 1, 1).UnixSeconds(), 0);
  EXPECT_EQ(At(1970, 1, 1, 0, 0, 0, 999).UnixSeconds(), 0);
  EXPECT_EQ(At(1969, 12, 31, 23, 59, 59, 999).UnixSeconds(), -1);
  EXPECT_EQ(At(2008, 3, 5, 15, 30).UnixSeconds(), 1204731000);
  EXPECT_EQ(Date::FromUnixSeconds(1204731000), At(2008, 3, 5, 15, 30));
}

TEST(Date, Midnight_begins_the_same_day_on_either_side_of_day_zero) {
  EXPECT_EQ(At(2008, 3, 5, 23, 59, 59, 999).Midnight(), At(2008, 3, 5));
  EXPECT_EQ(At(2008, 3, 5).Midnight(), At(2008, 3, 5));
  EXPECT_EQ(At(1899, 12, 29, 6).Midnight(), At(1899, 12, 29));
}

TEST(Date, Steps_are_exact_and_dates_are_ordered) {
  const auto date = At(2008, 3, 5, 10);
  EXPECT_EQ(date.PlusMinutes(-601), At(2008, 3, 4, 23, 59));
  EXPECT_EQ(date.PlusHours(14), At(2008, 3, 6));
  EXPECT_EQ(date.PlusDays(-5), At(2008, 2, 29, 10));
  EXPECT_LT(date, date.PlusMilliseconds(1));
  EXPECT_GT(date, At(1899, 12, 29));
}

struct Formats {
  Date date;
  std::string_view shortDate;
  std::string_view generalDate;
  std::string_view isoDate;
};

class DateFormats : public testing::TestWithParam<Formats> {};

TEST_P(DateFormats, Each_form_is_that_of_the_United_States) {
  EXPECT_EQ(ShortDate(GetParam().date), GetParam().shortDate);
  EXPECT_EQ(GeneralDate(GetParam().date), GetParam().generalDate);
  EXPECT_EQ(IsoDate(GetParam().date), GetParam().isoDate);
}

INSTANTIATE_TEST_SUITE_P(
    Date, DateFormats,
    testing::Values(
        Formats{At(2008, 3, 5, 10, 4, 9), "3/5/2008", "3/5/2008 10:04:09 AM", "2008-03-05T10:04:09"},
        Formats{At(2008, 12, 31), "12/31/2008", "12/31/2008", "2008-12-31T00:00:00"},
        Formats{At(2008, 3, 5, 0, 0, 1), "3/5/2008", "3/5/2008 12:00:01 AM", "2008-03-05T00:00:01"},
        Formats{At(2008, 3, 5, 12), "3/5/2008", "3/5/2008 12:00:00 PM", "2008-03-05T12:00:00"},
        Formats{At(2008, 3, 5, 11, 59, 59), "3/5/2008", "3/5/2008 11:59:59 AM", "2008-03-05T11:59:59"},
        Formats{At(2008, 3, 5, 13), "3/5/2008", "3/5/2008 1:00:00 PM", "2008-03-05T13:00:00"},
        Formats{At(2008, 3, 5, 23, 59, 59, 999), "3/5/2008", "3/5/2008 11:59:59 PM", "2008-03-05T23:59:59.999"},
        Formats{At(1899, 12, 30, 6), "12/30/1899", "6:00:00 AM", "1899-12-30T06:00:00"},
        Formats{Date(), "12/30/1899", "12:00:00 AM", "1899-12-30T00:00:00"},
        Formats{At(1899, 12, 29, 6), "12/29/1899", "12/29/1899 6:00:00 AM", "1899-12-29T06:00:00"},
        Formats{At(2000, 2, 29, 0, 0, 0, 7), "2/29/2000", "2/29/2000 12:00:00 AM", "2000-02-29T00:00:00.007"}));

struct Reading {
  std::string_view text;
  std::string_view date;  // in ISO form
};

class DateReading : public testing::TestWithParam<Reading> {};

TEST_P(DateReading, A_date_text_is_read) { EXPECT_EQ(Parsed(GetParam().text), GetParam().date) << GetParam().text; }

INSTANTIATE_TEST_SUITE_P(
    Date, DateReading,
    testing::Values(
        Reading{"3/5/2008", "2008-03-05T00:00:00"}, Reading{"03/05/2008", "2008-03-05T00:00:00"},
        Reading{"2008-03-05", "2008-03-05T00:00:00"}, Reading{"2008-3-5", "2008-03-05T00:00:00"},
        Reading{"  3/5/2008  ", "2008-03-05T00:00:00"}, Reading{"2/29/2008", "2008-02-29T00:00:00"},
        Reading{"2/29/2000", "2000-02-29T00:00:00"}, Reading{"1/1/100", "0100-01-01T00:00:00"},
        Reading{"12/31/9999 23:59:59", "9999-12-31T23:59:59"},
        // Years of one and two digits: 1930 to 2029.
        Reading{"3/5/08", "2008-03-05T00:00:00"}, Reading{"3/5/8", "2008-03-05T00:00:00"},
        Reading{"3/5/29", "2029-03-05T00:00:00"}, Reading{"3/5/30", "1930-03-05T00:00:00"},
        Reading{"3/5/00", "2000-03-05T00:00:00"}, Reading{"2/29/00", "2000-02-29T00:00:00"},
        // Twelve-hour times.
        Reading{"3/5/2008 12:00:00 AM", "2008-03-05T00:00:00"}, Reading{"3/5/2008 12:30 AM", "2008-03-05T00:30:00"},
        Reading{"3/5/2008 12:00 PM", "2008-03-05T12:00:00"}, Reading{"3/5/2008 1:02:03 PM", "2008-03-05T13:02:03"},
        Reading{"3/5/2008 11:59:59 pm", "2008-03-05T23:59:59"}, Reading{"3/5/2008   9:05am", "2008-03-05T09:05:00"},
        // Twenty-four-hour times.
        Reading{"3/5/2008 0:00", "2008-03-05T00:00:00"}, Reading{"3/5/2008 13:45", "2008-03-05T13:45:00"},
        Reading{"03/05/2008 23:59:59", "2008-03-05T23:59:59"}, Reading{"2008-03-05T10:04:09", "2008-03-05T10:04:09"},
        Reading{"2008-03-05 10:04:09", "2008-03-05T10:04:09"},
        Reading{"2008-03-05 10:04:09.5", "2008-03-05T10:04:09.500"},
        Reading{"2008-03-05 10:04:09.05", "2008-03-05T10:04:09.050"},
        Reading{"2008-03-05T10:04:09.123", "2008-03-05T10:04:09.123"},
        // Times alone stand on day zero.
        Reading{"6:00:00 AM", "1899-12-30T06:00:00"}, Reading{"12:00 AM", "1899-12-30T00:00:00"},
        Reading{"18:30", "1899-12-30T18:30:00"}));

class NoDate : public testing::TestWithParam<std::string_view> {};

TEST_P(NoDate, A_text_that_is_none_raises_13) {
  EXPECT_EQ(Parsed(GetParam()), "(no date)") << GetParam();
  try {
    const auto date = TextToDate(GetParam());
    FAIL() << GetParam() << " was read as " << IsoDate(date);
  } catch (const PlatformError& failure) {
    EXPECT_EQ(failure.number(), error::kConversion);
  }
}

INSTANTIATE_TEST_SUITE_P(Date, NoDate,
                         testing::Values("", " ", "abc", "2008", "3/5", "3/5/", "/3/5/2008", "2/30/2008", "2/29/2007",
                                         "2/29/1900", "13/1/2008", "0/1/2008", "1/0/2008", "1/32/2008", "3-5-2008",
                                         "3/5/2008x", "3/5/2008 x", "3/5/20080", "2008-13-01", "2008-00-01",
                                         "2008/3/5 1:00 XM", "3/5/2008 24:00", "3/5/2008 10:60", "3/5/2008 10:00:60",
                                         "3/5/2008 13:00 AM", "3/5/2008 13:00 PM", "3/5/2008 10",
                                         "3/5/2008 10:", "3/5/2008 10:00:", "3/5/2008 10:00:00.", "3/5/2008 10:00 AM x",
                                         "3/5/2008 10:00:00.1234", "10:00 3/5/2008", "-1:00", "1/1/099"));

TEST(Date, A_T_with_no_time_behind_it_is_no_date) {
  EXPECT_EQ(Parsed("3/5/2008T"), "(no date)");
  EXPECT_EQ(Parsed("2008-03-05T"), "(no date)");
}

TEST(Date, Every_general_date_reads_back_as_the_same_second) {
  for (auto date = At(1999, 12, 31, 22); date < At(2000, 1, 2, 2); date = date.PlusMilliseconds(617 * Date::kSecond)) {
    EXPECT_EQ(TextToDate(GeneralDate(date)), date) << GeneralDate(date);
    EXPECT_EQ(TextToDate(IsoDate(date)), date) << IsoDate(date);
    EXPECT_EQ(TextToDate(ShortDate(date)), date.Midnight()) << ShortDate(date);
  }
}

}  // namespace
}  // namespace twqb
