#include <fmt/format.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "messages/ValueFormat.h"

namespace twqb::messages {
namespace {

constexpr EnumValue kColours[] = {{"Red", 0}, {"Green", 1}};

Element Of(Type type) {
  Element element = {.name = "X", .type = type};
  if (type == Type::Enum) {
    element.firstValue = kColours;
    element.valueCount = std::size(kColours);
  }
  return element;
}

struct Values {
  std::string name;
  Type type;
  std::vector<std::string_view> good;
  std::vector<std::string_view> bad;
};

class WellFormedness : public testing::TestWithParam<Values> {};

TEST_P(WellFormedness, A_value_is_told_from_what_is_none) {
  for (const auto text : GetParam().good) EXPECT_TRUE(IsWellFormed(Of(GetParam().type), text)) << text;
  for (const auto text : GetParam().bad) EXPECT_FALSE(IsWellFormed(Of(GetParam().type), text)) << text;
}

INSTANTIATE_TEST_SUITE_P(
    ValueFormat, WellFormedness,
    testing::Values(Values{"Text", Type::Str, {"", "x", " ", "ä"}, {}},
                    Values{"Identifier",
                           Type::Id,
                           {"80000001-1204731000", "1A-1204731000", "0-0"},
                           {"", "1A", "-1", "1A-", "1a-1204731000", "1G-1", "1A-1B", "1A-1-2", " 1A-1",
                            "1A-1111111111111111111111111111111111"}},
                    Values{"Truth", Type::Bool, {"true", "false", "1", "0"}, {"", "True", "TRUE", "yes", "2", " true"}},
                    Values{"WholeNumber",
                           Type::Int,
                           {"0", "12", "-12", "+3", "2147483647"},
                           {"", "-", "1.0", "1x", " 1", "1e3", "12345678901"}},
                    Values{"Amount",
                           Type::Amt,
                           {"0.00", "97.50", "-97.50", "+1.00", "1234567890123.99"},
                           {"", "97.5", "97", "97.500", ".50", "1,000.00", "$1.00", "12345678901234.00", "1.0x",
                            "--1.00", "1.-0"}},
                    Values{"Price",
                           Type::Price,
                           {"1", "1.5", "-1.12345", "0.00001", ".5", "5."},
                           {"", ".", "-", "1.123456", "1,5", "1e2", "x", "1.2.3"}},
                    Values{"Quantity", Type::Quan, {"1", "0.25", "-2"}, {"", "1.123456", "a"}},
                    Values{"Percent", Type::Percent, {"0", "7.75", "100"}, {"", "7%", "x"}},
                    Values{"Date",
                           Type::Date,
                           {"2008-03-05", "2008-02-29", "1901-01-01"},
                           {"", "2008-3-5", "2007-02-29", "2008-13-01", "2008-00-01", "3/5/2008", "2008-03-05T10:00:00",
                            "20080305", "2008-03-0x", "2008/03/05"}},
                    Values{"DateTime",
                           Type::DateTime,
                           {"2008-03-05T10:00:00", "2008-03-05T10:00:00-08:00", "2008-03-05T23:59:59+05:30",
                            "2008-03-05T10:00:00Z", "2008-03-05"},
                           {"", "2008-03-05T", "2008-03-05T10:00", "2008-03-05 10:00:00", "2008-03-05T10:00:00.5",
                            "2008-03-05T24:00:00", "2008-03-05T10:60:00", "2008-02-30T10:00:00",
                            "2008-03-05T10:00:00-8:00", "2008-03-05T10:00:00-0800", "2008-03-05T10:00:00-15:00",
                            "2008-03-05T10:00:00-08:60", "2008-03-05T10:00:00 08:00", "2008-03-05T1:00:00"}},
                    Values{"TimeInterval",
                           Type::TimeInterval,
                           {"PT1H", "PT30M", "PT0S", "PT1H30M", "PT1H30M15S", "PT100H59M"},
                           {"", "PT", "1H", "PT1", "PT30M1H", "PTH", "PT1.5H", "P1D", "pt1h", "PT1H30", "PT-1H"}},
                    Values{"Enumeration", Type::Enum, {"Red", "Green"}, {"", "red", "Blue", "0", "Red "}},
                    Values{"Guid",
                           Type::Guid,
                           {"{E69C9DD6-0E0F-4C2E-9F69-0123456789AB}", "{e69c9dd6-0e0f-4c2e-9f69-0123456789ab}", "0"},
                           {"", "E69C9DD6-0E0F-4C2E-9F69-0123456789AB", "{E69C9DD6-0E0F-4C2E-9F69-0123456789AG}",
                            "{E69C9DD60E0F-4C2E-9F69-0123456789ABCD}", "1", "{}"}}),
    [](const auto& test) { return test.param.name; });

TEST(ValueFormat, A_date_of_ten_characters_ends_with_its_day) {
  EXPECT_EQ(ParseDateText("2008-03-5 "), std::nullopt);
  EXPECT_EQ(ParseDateText("2008-03-5T"), std::nullopt);
}

TEST(ValueFormat, Truth_values_are_lower_case_words) {
  EXPECT_EQ(BoolText(true), "true");
  EXPECT_EQ(BoolText(false), "false");
  EXPECT_EQ(ParseBool("true"), true);
  EXPECT_EQ(ParseBool("1"), true);
  EXPECT_EQ(ParseBool("false"), false);
  EXPECT_EQ(ParseBool("0"), false);
  EXPECT_EQ(ParseBool("True"), std::nullopt);
}

struct NumberText {
  double number;
  std::string_view text;
};

TEST(ValueFormat, An_amount_has_two_decimals_with_halves_away_from_zero) {
  for (const auto& [number, text] : std::vector<NumberText>{{0, "0.00"},
                                                            {97.5, "97.50"},
                                                            {-97.5, "-97.50"},
                                                            {0.125, "0.13"},
                                                            {-0.125, "-0.13"},
                                                            {0.375, "0.38"},
                                                            {2.5, "2.50"},
                                                            {0.004, "0.00"},
                                                            {-0.004, "0.00"},
                                                            {1e6, "1000000.00"},
                                                            {1234567.89, "1234567.89"},
                                                            {0.1 + 0.2, "0.30"},
                                                            {99.999, "100.00"}}) {
    EXPECT_EQ(AmountText(number), text) << number;
  }
}

// A product of hours and a rate that reads 1.005 is a little less than that in binary; it is a half all the same.
TEST(ValueFormat, A_half_as_a_number_prints_is_a_half) {
  EXPECT_EQ(AmountText(1.005), "1.01");
  EXPECT_EQ(AmountText(2.675), "2.68");
  EXPECT_EQ(AmountText(-1.005), "-1.01");
  EXPECT_EQ(AmountText(1.00499), "1.00");
}

TEST(ValueFormat, Cents_that_a_number_holds_are_written_as_they_are) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 10'000; ++i) {
    const auto cents = static_cast<std::int64_t>(random() % 10'000'000'000'000U);
    const auto text = fmt::format("{}.{:02}", cents / 100, cents % 100);
    EXPECT_EQ(AmountText(static_cast<double>(cents) / 100), text);
    EXPECT_EQ(AmountText(-static_cast<double>(cents + 1) / 100),
              fmt::format("-{}.{:02}", (cents + 1) / 100, (cents + 1) % 100));
  }
}

TEST(ValueFormat, An_amount_of_more_digits_than_a_number_holds_is_written_whole) {
  EXPECT_EQ(AmountText(9'999'999'999'999.99), "9999999999999.99");
  EXPECT_EQ(AmountText(1e13), "10000000000000.00");
  EXPECT_EQ(AmountText(-1e17), "-100000000000000000.00");
  EXPECT_EQ(DecimalText(1e16), "10000000000000000");
}

TEST(ValueFormat, Money_is_written_from_its_digits) {
  for (const auto& [units, text] : std::vector<std::pair<std::int64_t, std::string_view>>{
           {0, "0.00"},
           {49, "0.00"},
           {50, "0.01"},
           {-49, "0.00"},
           {-50, "-0.01"},
           {-12'345, "-1.23"},
           {-12'350, "-1.24"},
           {1'000'000, "100.00"},
           {9'223'372'036'854'775'807, "922337203685477.58"},
           {-9'223'372'036'854'775'807 - 1, "-922337203685477.58"}}) {
    EXPECT_EQ(AmountText(Currency::FromTenThousandths(units)), text) << units;
  }
}

TEST(ValueFormat, A_price_or_quantity_has_at_most_five_decimals_without_trailing_zeros) {
  for (const auto& [number, text] : std::vector<NumberText>{{0, "0"},
                                                            {1, "1"},
                                                            {1.5, "1.5"},
                                                            {100, "100"},
                                                            {-2.25, "-2.25"},
                                                            {1.0 / 3, "0.33333"},
                                                            {2.0 / 3, "0.66667"},
                                                            {0.000001, "0"},
                                                            {-0.000001, "0"},
                                                            {1e6, "1000000"},
                                                            {0.1 + 0.2, "0.3"},
                                                            {1.000005, "1.00001"},
                                                            {-1.000005, "-1.00001"},
                                                            {97.123455, "97.12346"}}) {
    EXPECT_EQ(DecimalText(number), text) << number;
  }
}

TEST(ValueFormat, A_span_of_time_is_written_with_all_its_parts_and_read_with_any_of_them) {
  EXPECT_EQ(TimeIntervalText({.hours = 24}), "PT24H0M0S");
  EXPECT_EQ(TimeIntervalText({.hours = 0, .minutes = 5, .seconds = 59}), "PT0H5M59S");
  EXPECT_EQ(ParseTimeInterval("PT24H0M0S"), (TimeInterval{.hours = 24}));
  EXPECT_EQ(ParseTimeInterval("PT90M"), (TimeInterval{.minutes = 90}));
  EXPECT_EQ(ParseTimeInterval("PT999999999S"), (TimeInterval{.seconds = 999'999'999}));
  EXPECT_EQ(ParseTimeInterval("PT1000000000S"), std::nullopt);
  EXPECT_EQ(ParseTimeInterval("PT"), std::nullopt);
}

TEST(ValueFormat, An_amount_reads_as_money) {
  EXPECT_EQ(ParseAmount("97.53")->TenThousandths(), 975'300);
  EXPECT_EQ(ParseAmount("-0.50")->TenThousandths(), -5000);
  EXPECT_EQ(ParseAmount("+1.00")->TenThousandths(), 10'000);
  EXPECT_EQ(ParseAmount("9999999999999.99")->TenThousandths(), 99'999'999'999'999'900);
  EXPECT_EQ(ParseAmount("97.5"), std::nullopt);
}

TEST(ValueFormat, Dates_are_written_and_read_as_year_month_and_day) {
  const auto date = Date::FromCivil({.year = 2008, .month = 3, .day = 5, .hour = 10});
  EXPECT_EQ(DateText(date), "2008-03-05");
  EXPECT_EQ(ParseDateText("2008-03-05"), date.Midnight());
}

TEST(ValueFormat, Times_are_written_to_the_second_with_the_offset_there_is) {
  const auto date =
      Date::FromCivil({.year = 2008, .month = 3, .day = 5, .hour = 9, .minute = 8, .second = 7, .millisecond = 999});
  EXPECT_EQ(DateTimeText(date, std::nullopt), "2008-03-05T09:08:07");
  EXPECT_EQ(DateTimeText(date, -480), "2008-03-05T09:08:07-08:00");
  EXPECT_EQ(DateTimeText(date, 330), "2008-03-05T09:08:07+05:30");
  EXPECT_EQ(DateTimeText(date, -30), "2008-03-05T09:08:07-00:30");
  EXPECT_EQ(DateTimeText(date, 0), "2008-03-05T09:08:07+00:00");
}

TEST(ValueFormat, Times_are_read_as_written_with_the_offset_beside_them) {
  const auto local = Date::FromCivil({.year = 2008, .month = 3, .day = 5, .hour = 9, .minute = 8, .second = 7});
  struct Case {
    std::string_view text;
    std::optional<int> offset;
  };
  for (const auto& [text, offset] : std::vector<Case>{{"2008-03-05T09:08:07", std::nullopt},
                                                      {"2008-03-05T09:08:07-08:00", -480},
                                                      {"2008-03-05T09:08:07+05:30", 330},
                                                      {"2008-03-05T09:08:07-00:30", -30},
                                                      {"2008-03-05T09:08:07Z", 0}}) {
    const auto read = ParseDateTime(text);
    ASSERT_TRUE(read) << text;
    EXPECT_EQ(read->local, local) << text;
    EXPECT_EQ(read->offsetMinutes, offset) << text;
  }
  EXPECT_EQ(ParseDateTime("2008-03-05")->local, local.Midnight());
}

}  // namespace
}  // namespace twqb::messages
