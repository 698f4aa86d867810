#include <gtest/gtest.h>

#include <limits>

#include "platform/Currency.h"
#include "platform/PlatformError.h"

namespace twqb {
namespace {

constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
constexpr auto kSmallest = std::numeric_limits<std::int64_t>::min();

TEST(Currency, Sums_are_exact) {
  auto total = Currency();
  for (int i = 0; i < 1000; ++i) total = total + Currency::FromDouble(0.1);
  EXPECT_EQ(total, Currency::FromDouble(100));
  EXPECT_EQ((Currency::FromDouble(0.3) - Currency::FromDouble(0.1)).TenThousandths(), 2000);
}

TEST(Currency, Halves_of_the_fourth_decimal_round_to_even) {
  // Sums of powers of two, so these are true halves.
  EXPECT_EQ(Currency::FromDouble(0.03125).TenThousandths(), 312);
  EXPECT_EQ(Currency::FromDouble(0.09375).TenThousandths(), 938);
  EXPECT_EQ(Currency::FromDouble(-0.03125).TenThousandths(), -312);
  EXPECT_EQ(Currency::FromDouble(-0.09375).TenThousandths(), -938);
}

TEST(Currency, A_value_outside_the_range_raises_13) {
  for (const double value :
       {1e15, -1e15, 1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    try {
      const auto amount = Currency::FromDouble(value);
      FAIL() << value << " became " << ToText(amount);
    } catch (const PlatformError& failure) {
      EXPECT_EQ(failure.number(), error::kConversion);
    }
  }
  EXPECT_EQ(Currency::FromDouble(9e14).TenThousandths(), 9'000'000'000'000'000'000);
}

TEST(Currency, The_text_has_at_most_four_decimals_and_no_trailing_zeros) {
  const auto text = [](std::int64_t units) { return ToText(Currency::FromTenThousandths(units)); };
  EXPECT_EQ(text(0), "0");
  EXPECT_EQ(text(125'000), "12.5");
  EXPECT_EQ(text(120'000), "12");
  EXPECT_EQ(text(1'000'000), "100");
  EXPECT_EQ(text(1), "0.0001");
  EXPECT_EQ(text(100), "0.01");
  EXPECT_EQ(text(-5000), "-0.5");
  EXPECT_EQ(text(-12'345), "-1.2345");
  EXPECT_EQ(text(kLargest), "922337203685477.5807");
  EXPECT_EQ(text(kSmallest), "-922337203685477.5808");
}

TEST(Currency, Amounts_are_ordered_and_convert_to_a_double) {
  EXPECT_LT(Currency::FromDouble(-1), Currency());
  EXPECT_LT(Currency::FromDouble(9.99), Currency::FromDouble(10));
  EXPECT_EQ(Currency::FromDouble(97.53).ToDouble(), 97.53);
}

}  // namespace
}  // namespace twqb
