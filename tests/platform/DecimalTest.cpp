// Decimal numbers: what a double prints as, products that are exact, and halves that go away from zero.

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "platform/Decimal.h"
#include "platform/PlatformError.h"

namespace twqb {
namespace {

Decimal D(double value) { return Decimal::FromDouble(value); }
std::string Cents(Decimal value) { return ToText(value.ToCents()); }

TEST(Decimal, Rounds_halves_of_a_cent_away_from_zero_as_they_print) {
  EXPECT_EQ(Cents(D(1.005)), "1.01");
  EXPECT_EQ(Cents(D(-1.005)), "-1.01");
  EXPECT_EQ(Cents(D(2.675)), "2.68");
  EXPECT_EQ(Cents(D(1.0049999)), "1");
  EXPECT_EQ(Cents(D(0.004)), "0");
  EXPECT_EQ(Cents(D(-0.004)), "0");
}

TEST(Decimal, Multiplies_without_binary_noise) {
  EXPECT_EQ(Cents(D(1.15) * D(0.9)), "1.04");     // 1.035
  EXPECT_EQ(Cents(D(3) * D(1.115)), "3.35");      // 3.345
  EXPECT_EQ(Cents(D(10.1) * D(1.025)), "10.35");  // 10.3525
  EXPECT_EQ(Cents(D(0.285) * D(100)), "28.5");    //
  EXPECT_EQ(Cents(D(12345.67) * D(0.333333)), "4115.22");
}

TEST(Decimal, Keeps_the_first_eighteen_digits_of_a_longer_product) {
  EXPECT_EQ(Cents(D(0.123456789012345) * D(123456789.012345)), "15241578.75");
  EXPECT_EQ(Cents(D(0.333333333333333) * D(33.3333333333333) * D(1.33333333333333)), "14.81");
}

TEST(Decimal, Divides_to_eighteen_digits) {
  EXPECT_EQ(Cents(D(100) / D(4)), "25");
  EXPECT_EQ(Cents(D(1) / D(8) * D(100)), "12.5");
  EXPECT_EQ(ToText((D(100) / D(3)).ToCurrency()), "33.3333");
  EXPECT_EQ(ToText((D(-200) / D(3)).ToCurrency()), "-66.6667");
  EXPECT_EQ(Cents(D(1) / D(3) * D(3)), "1");
  EXPECT_EQ(Cents(D(1) / D(1e-9) * D(1e-9)), "1");
  EXPECT_EQ(Cents(D(0.00000000123456) / D(123456789012345) * D(123456789012345) * D(1e9)), "1.23");
  EXPECT_TRUE((Decimal() / D(7)).IsZero());
  EXPECT_THROW(static_cast<void>(D(1) / Decimal()), PlatformError);
}

TEST(Decimal, Is_the_double_that_prints_so) {
  for (const double value : {0.0, 0.1, 1.005, -2.675, 7.75, 1e15, 1234567.891, 1e-7})
    EXPECT_EQ(D(value).ToDouble(), value);
}

TEST(Decimal, Adds_and_takes_off_exactly) {
  Decimal sum;
  for (int i = 0; i < 10; ++i) sum = sum + D(0.1);
  EXPECT_TRUE((sum + Decimal(-1)).IsZero());
  EXPECT_EQ(Cents(D(100) + Decimal(-1) * D(99.99)), "0.01");
  EXPECT_EQ(Cents(D(1e14) + D(0.01)), "100000000000000.01");
  EXPECT_EQ(Cents(D(1e14) + D(1e-30)), "100000000000000");
}

TEST(Decimal, Adds_what_begins_near_though_it_ends_far_behind) {
  EXPECT_EQ(Cents(D(0.00999999999999999) * D(0.999999999999999) + Decimal(5)), "5.01");
  EXPECT_EQ(Cents(Decimal(5) + D(0.00999999999999999) * D(0.999999999999999)), "5.01");
  EXPECT_EQ(Cents(D(123456789012345) + D(0.123456789012345) * D(0.1)), "123456789012345.01");
}

TEST(Decimal, Takes_a_hundredth_part) {
  EXPECT_EQ(ToText(D(12.5).PerCent().ToCurrency()), "0.125");
  EXPECT_TRUE(Decimal().PerCent().IsZero());
}

TEST(Decimal, Knows_its_sign) {
  EXPECT_TRUE(D(-0.01).IsNegative());
  EXPECT_FALSE(D(0).IsNegative());
  EXPECT_FALSE(D(-0.0).IsNegative());
  EXPECT_TRUE(D(-0.0).IsZero());
}

TEST(Decimal, Takes_amounts_as_they_are_to_the_last_digit) {
  const auto amount = Currency::FromTenThousandths(922337203685477580);
  EXPECT_EQ(Decimal::FromCurrency(amount).ToCurrency(), amount);
  EXPECT_EQ(Decimal::FromCurrency(Currency::FromTenThousandths(-1)).ToCurrency().TenThousandths(), -1);
}

TEST(Decimal, Takes_what_a_column_holds) {
  EXPECT_EQ(Cents(ToDecimal(Value(true))), "-1");
  EXPECT_EQ(Cents(ToDecimal(Value(std::int64_t{7}))), "7");
  EXPECT_EQ(Cents(ToDecimal(Value(std::string("1.005")))), "1.01");
  EXPECT_EQ(Cents(ToDecimal(Value(Currency::FromDouble(2.5)))), "2.5");
  EXPECT_THROW(static_cast<void>(ToDecimal(Value(Null()))), PlatformError);
  EXPECT_THROW(static_cast<void>(ToDecimal(Value(std::string("six")))), PlatformError);
}

TEST(Decimal, Refuses_what_is_no_number_and_what_no_amount_can_hold) {
  EXPECT_THROW(D(std::numeric_limits<double>::infinity()), PlatformError);
  EXPECT_THROW(D(std::numeric_limits<double>::quiet_NaN()), PlatformError);
  EXPECT_THROW(static_cast<void>(D(1e17).ToCents()), PlatformError);
  EXPECT_THROW(static_cast<void>(D(1e300).ToCents()), PlatformError);
  EXPECT_TRUE(D(1e-300).IsZero());
}

// Products of whole numbers of cents, worked out in whole numbers.
TEST(Decimal, Agrees_with_whole_numbers_for_random_products) {
  std::mt19937 random(20080305);  // NOLINT: the same numbers in every run
  std::uniform_int_distribution<std::int64_t> cents(-9'999'999, 9'999'999);
  for (int i = 0; i < 20'000; ++i) {
    const auto a = cents(random);
    const auto b = cents(random);
    const auto exact = a * b;  // ten-thousandths
    const auto expected = (exact + (exact < 0 ? -50 : 50)) / 100 * 100;
    const auto product = D(static_cast<double>(a) / 100) * D(static_cast<double>(b) / 100);
    ASSERT_EQ(product.ToCents().TenThousandths(), expected) << a << " * " << b;
  }
}

}  // namespace
}  // namespace twqb
