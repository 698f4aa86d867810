// Which columns of an account go to QuickBooks, and in which shape.

#include <gtest/gtest.h>

#include "tests/lists/AccountsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

// The request as it goes on the wire for a row of these columns.
std::string Wire(AccountsHouse& house, std::string_view columns, std::string_view values) {
  house.Row(columns, values);
  house.Send();
  const auto requests = house.Requests("AccountAddRq");
  return requests.empty() ? "(none)" : requests.back();
}

struct Country {
  std::string name;
  messages::Country country;
};

class AccountCountries : public testing::TestWithParam<Country> {};

TEST_P(AccountCountries, Make_no_difference_to_a_full_account) {
  AccountsHouse house({.company = {.country = GetParam().country}}, {}, GetParam().name);
  const auto parent = house.AddAccount("Travel", {}, "Bank");
  house.Account("6000", "Travel", "QBLinkID", "'" + parent + "'");
  EXPECT_EQ(Wire(house,
                 "AccountID, AccountName, AccountTypeID, ParentAccountID, AccountDesc, OpenBalance, OpenBalanceDate, "
                 "IsInActive",
                 "'1010', 'Checking', 2, '6000', 'Day to day', 18250.456, '2008-01-31 12:30:00', -1"),
            "<AccountAdd><Name>Checking</Name><IsActive>false</IsActive><ParentRef><ListID>" + parent +
                "</ListID></ParentRef><AccountType>Bank</AccountType><AccountNumber>1010</AccountNumber>"
                "<Desc>Day to day</Desc><OpenBalance>18250.46</OpenBalance>"
                "<OpenBalanceDate>2008-01-31</OpenBalanceDate></AccountAdd>");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.Sent("1010", "FullName"), "Travel:Checking");
}

INSTANTIATE_TEST_SUITE_P(AccountSend, AccountCountries,
                         testing::Values(Country{"US", messages::Country::US}, Country{"CA", messages::Country::CA},
                                         Country{"UK", messages::Country::UK}),
                         [](const auto& test) { return test.param.name; });

TEST(AccountSendFields, A_bare_account_is_active_of_the_last_type_and_opens_today_with_nothing) {
  AccountsHouse house;
  EXPECT_EQ(Wire(house, "AccountID, AccountName, IsInActive", "'1', 'Bare', NULL"),
            "<AccountAdd><Name>Bare</Name><IsActive>true</IsActive><AccountType>OtherIncome</AccountType>"
            "<AccountNumber>1</AccountNumber><OpenBalance>0.00</OpenBalance>"
            "<OpenBalanceDate>2008-03-05</OpenBalanceDate></AccountAdd>");
}

TEST(AccountSendFields, Texts_are_cut_to_what_QuickBooks_takes) {
  AccountsHouse house;
  const auto wire =
      Wire(house, "AccountID, AccountName, AccountTypeID, AccountDesc",
           "'80000001-1204729200', '" + std::string(30, 'n') + "äö', 6, '" + std::string(28, 'd') + "éf'");
  EXPECT_EQ(house.TextOf(wire, "AccountNumber"), "8000000");
  EXPECT_EQ(house.TextOf(wire, "Name"), std::string(30, 'n') + "ä");
  EXPECT_EQ(house.TextOf(wire, "Desc"), std::string(28, 'd') + "é");
}

TEST(AccountSendFields, Texts_that_just_fit_go_whole) {
  AccountsHouse house;
  const auto wire = Wire(house, "AccountID, AccountName, AccountTypeID, AccountDesc",
                         "'1234567', '" + std::string(31, 'n') + "', 6, '" + std::string(29, 'd') + "'");
  EXPECT_EQ(house.TextOf(wire, "AccountNumber"), "1234567");
  EXPECT_EQ(house.TextOf(wire, "Name"), std::string(31, 'n'));
  EXPECT_EQ(house.TextOf(wire, "Desc"), std::string(29, 'd'));
}

TEST(AccountSendFields, An_empty_description_goes_and_a_missing_one_does_not) {
  for (const bool missing : {false, true}) {
    AccountsHouse house;
    const auto wire = Wire(house, "AccountID, AccountName, AccountDesc", missing ? "'1', 'A', NULL" : "'1', 'A', ''");
    EXPECT_EQ(house.TextOf(wire, "Desc"), missing ? "(none)" : "");
  }
}

constexpr std::string_view kTypes[] = {"AccountsPayable",
                                       "AccountsReceivable",
                                       "Bank",
                                       "CostOfGoodsSold",
                                       "CreditCard",
                                       "Equity",
                                       "Expense",
                                       "FixedAsset",
                                       "Income",
                                       "LongTermLiability",
                                       "NonPosting",
                                       "OtherAsset",
                                       "OtherCurrentAsset",
                                       "OtherCurrentLiability",
                                       "OtherExpense",
                                       "OtherIncome"};

class AccountTypes : public testing::TestWithParam<std::size_t> {};

TEST_P(AccountTypes, Pass_through_by_their_numbers_both_ways) {
  AccountsHouse house;
  house.Row("AccountID, AccountName, AccountTypeID", "'1', 'A', " + std::to_string(GetParam()));
  house.Send();
  EXPECT_EQ(house.Sent("1", "AccountType"), kTypes[GetParam()]);
  house.Sql("UPDATE AccountList SET AccountTypeID = NULL");
  house.Get();
  EXPECT_EQ(house.ColumnOf("1", "AccountTypeID"), std::to_string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Accounts, AccountTypes, testing::Range(std::size_t{0}, std::size_t{16}));

TEST(AccountSendFields, A_type_that_QuickBooks_does_not_have_ends_the_run) {
  AccountsHouse house;
  house.Row("AccountID, AccountName, AccountTypeID", "'1', 'A', 16");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveActivityToQB")));
  EXPECT_TRUE(house.Requests("AccountAddRq").empty());
  EXPECT_EQ(Outcome(), TableOk::False);
}

struct Activity {
  std::string inActive;  // as SQL
  std::string isActive;
};

class AccountActivity : public testing::TestWithParam<Activity> {};

TEST_P(AccountActivity, Is_sent_reversed_and_NULL_is_active) {
  AccountsHouse house;
  const auto wire = Wire(house, "AccountID, AccountName, IsInActive", "'1', 'A', " + GetParam().inActive);
  EXPECT_EQ(house.TextOf(wire, "IsActive"), GetParam().isActive);
}

INSTANTIATE_TEST_SUITE_P(AccountSend, AccountActivity,
                         testing::Values(Activity{"NULL", "true"}, Activity{"0", "true"}, Activity{"-1", "false"},
                                         Activity{"1", "false"}));

TEST(AccountSendFields, A_negative_balance_is_sent_as_it_is) {
  AccountsHouse house;
  const auto wire = Wire(house, "AccountID, AccountName, AccountTypeID, OpenBalance", "'1', 'A', 2, -0.5");
  EXPECT_EQ(house.TextOf(wire, "OpenBalance"), "-0.50");
}

TEST(AccountSendFields, An_account_without_a_name_is_refused_and_told) {
  AccountsHouse house({.answers = "yes"});
  house.Row("AccountID", "'1'");
  house.Send();
  EXPECT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(house.LinkOf("1"), "NULL");
}

}  // namespace
}  // namespace twqb
