#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <string>

#include "platform/PlatformError.h"
#include "platform/Value.h"

namespace twqb {
namespace {

const Date kDate = Date::FromCivil({.year = 2008, .month = 3, .day = 5, .hour = 13});

// The number of the error that `action` raises; 0 when it raises none.
ErrorNumber Raised(const std::function<void()>& action) {
  try {
    action();
  } catch (const PlatformError& failure) {
    return failure.number();
  }
  return 0;
}

TEST(Value, The_text_of_a_value_is_its_en_US_form) {
  EXPECT_EQ(ToText(Value(Null())), "");
  EXPECT_EQ(ToText(Value(true)), "True");
  EXPECT_EQ(ToText(Value(false)), "False");
  EXPECT_EQ(ToText(Value(std::int64_t{-42})), "-42");
  EXPECT_EQ(ToText(Value(7.25)), "7.25");
  EXPECT_EQ(ToText(Value(Currency::FromDouble(12.5))), "12.5");
  EXPECT_EQ(ToText(Value(kDate)), "3/5/2008 1:00:00 PM");
  EXPECT_EQ(ToText(Value(kDate.Midnight())), "3/5/2008");
  EXPECT_EQ(ToText(Value(std::string(" x "))), " x ");
}

TEST(Value, Only_NULL_is_NULL) {
  EXPECT_TRUE(IsNull(Value()));
  EXPECT_TRUE(IsNull(Value(Null())));
  EXPECT_FALSE(IsNull(Value(std::string())));
  EXPECT_FALSE(IsNull(Value(false)));
}

TEST(Value, The_leading_number_of_a_text_is_what_stands_in_front_and_0_without_one) {
  EXPECT_EQ(LeadingNumber("1"), 1);
  EXPECT_EQ(LeadingNumber(" +2.5 "), 2.5);
  EXPECT_EQ(LeadingNumber("-3 and more"), -3);
  for (const std::string_view none : {"", " ", "True", "+-1", "x1", "1e999", "inf", "nan"}) {
    EXPECT_EQ(LeadingNumber(none), 0) << none;
  }
}

struct NumberText {
  double number;
  std::string_view text;
};

class NumberPrinting : public testing::TestWithParam<NumberText> {};

TEST_P(NumberPrinting, A_number_prints_without_trailing_zeros) {
  EXPECT_EQ(NumberToText(GetParam().number), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Value, NumberPrinting,
                         testing::Values(NumberText{0, "0"}, NumberText{-0.0, "0"}, NumberText{1, "1"},
                                         NumberText{-1.5, "-1.5"}, NumberText{100, "100"}, NumberText{0.1, "0.1"},
                                         NumberText{0.1 + 0.2, "0.3"}, NumberText{97.53, "97.53"},
                                         NumberText{1234567.891, "1234567.891"}, NumberText{0.0001, "0.0001"},
                                         NumberText{1e14, "100000000000000"},
                                         NumberText{123456789012345, "123456789012345"}, NumberText{1e15, "1E+15"},
                                         NumberText{-1.5e20, "-1.5E+20"}, NumberText{1e-16, "1E-16"},
                                         NumberText{200.0 / 3, "66.6666666666667"}));

TEST(NumberToText, Fifteen_significant_digits_print_below_1_too) {
  EXPECT_EQ(NumberToText(1.0 / 3), "0.333333333333333");
  EXPECT_EQ(NumberToText(-2.0 / 3), "-0.666666666666667");
  EXPECT_EQ(NumberToText(1.5e-14), "0.000000000000015");
  EXPECT_EQ(NumberToText(-1e-15), "-0.000000000000001");
}

TEST(NumberToText, Any_number_prints_as_the_C_library_prints_fifteen_digits) {
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> magnitude(-4, 14.9);
  for (int i = 0; i < 20'000; ++i) {
    const double any = std::pow(10, magnitude(random));
    // All of its digits, and so many decimals as people write.
    for (const double number : {any, std::round(any * 100) / 100, std::round(any * 1e5) / 1e5, std::round(any)}) {
      std::array<char, 64> text{};
      std::snprintf(text.data(), text.size(), "%.15g", number);
      EXPECT_EQ(NumberToText(number), text.data());
      EXPECT_EQ(NumberToText(-number), number == 0 ? "0" : std::string("-") + text.data());
    }
  }
}

TEST(NumberToText, What_rounds_up_to_1E15_prints_with_an_exponent) {
  EXPECT_EQ(NumberToText(999999999999999.9), "1E+15");
  EXPECT_EQ(NumberToText(999999999999999), "999999999999999");
}

TEST(Value, True_False_and_numbers_read_as_truth_values) {
  for (const auto* text : {"True", "true", "TRUE", " True ", "1", "-1", "0.5", " 2 "}) {
    EXPECT_TRUE(TextToBoolean(text)) << text;
  }
  for (const auto* text : {"False", "false", "FALSE", "0", "0.0", "-0", " 0 "})
    EXPECT_FALSE(TextToBoolean(text)) << text;
}

TEST(Value, Any_other_text_is_no_truth_value_and_raises_13) {
  for (const auto* text : {"", " ", "yes", "T", "Truee", "1x", "on"}) {
    EXPECT_EQ(Raised([text] { static_cast<void>(TextToBoolean(text)); }), error::kConversion) << text;
  }
}

TEST(Value, Whole_numbers_round_halves_to_even) {
  struct Case {
    std::string_view text;
    std::int64_t number;
  };
  for (const auto& [text, number] : {Case{"0.5", 0}, Case{"1.5", 2}, Case{"2.5", 2}, Case{"3.5", 4}, Case{"-0.5", 0},
                                     Case{"-1.5", -2}, Case{"-2.5", -2}, Case{"2.4999", 2}, Case{"2.5001", 3},
                                     Case{" 7 ", 7}, Case{"+7", 7}, Case{"1e3", 1000}, Case{"7.", 7}, Case{".5", 0}}) {
    EXPECT_EQ(TextToInteger(text), number) << text;
  }
}

TEST(Value, A_text_that_is_no_number_raises_13) {
  for (const auto* text :
       {"", " ", "abc", "1x", "1 2", ".", "-", "+", "--1", "0x10", "nan", "inf", "-infinity", "1e400"}) {
    EXPECT_EQ(Raised([text] { static_cast<void>(TextToNumber(text)); }), error::kConversion) << text;
    EXPECT_EQ(Raised([text] { static_cast<void>(TextToInteger(text)); }), error::kConversion) << text;
  }
  EXPECT_EQ(Raised([] { static_cast<void>(TextToInteger("1e19")); }), error::kConversion);
}

TEST(Value, A_number_has_one_sign_at_most) {
  EXPECT_EQ(Raised([] { static_cast<void>(TextToNumber("+-5")); }), error::kConversion);
}

TEST(Value, Texts_read_as_numbers_with_a_decimal_point) {
  EXPECT_EQ(TextToNumber("97.53"), 97.53);
  EXPECT_EQ(TextToNumber(" -0.25 "), -0.25);
  EXPECT_EQ(TextToNumber("+1"), 1);
  EXPECT_EQ(TextToNumber("1E-2"), 0.01);
}

TEST(Value, A_date_comes_from_a_date_or_from_a_text_that_reads_as_one) {
  EXPECT_EQ(ToDate(Value(kDate)), kDate);
  EXPECT_EQ(ToDate(Value(std::string("3/5/2008 1:00 PM"))), kDate);
  EXPECT_EQ(ToDate(Value(std::string("2008-03-05T13:00:00"))), kDate);
}

TEST(Value, No_date_comes_from_NULL_or_from_another_text_or_a_truth_value) {
  EXPECT_EQ(Raised([] { static_cast<void>(ToDate(Value(Null()))); }), error::kInvalidNull);
  EXPECT_EQ(Raised([] { static_cast<void>(ToDate(Value(std::string("soon")))); }), error::kConversion);
  EXPECT_EQ(Raised([] { static_cast<void>(ToDate(Value(std::string()))); }), error::kConversion);
  EXPECT_EQ(Raised([] { static_cast<void>(ToDate(Value(true))); }), error::kConversion);
}

}  // namespace
}  // namespace twqb
