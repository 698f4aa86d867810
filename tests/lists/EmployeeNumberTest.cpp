// Social security, social insurance and national insurance numbers on their way to QuickBooks.

#include <gtest/gtest.h>

#include "lists/EmployeeNumbers.h"
#include "tests/lists/PeopleHouse.h"

namespace twqb {
namespace {

struct NumberCase {
  std::string_view name;
  std::string_view country;
  std::string_view hostCountry;
  std::string_view stored;
  std::string_view field;  // that is set; "" for none
  std::string_view number = {};
  std::string_view invalid = {};  // the text that is logged as no number
};

class EmployeeNumber : public testing::TestWithParam<NumberCase> {};

TEST_P(EmployeeNumber, Goes_in_the_shape_of_the_country_or_not_at_all) {
  const auto& c = GetParam();
  PeopleHouse house(IsVendor::No);
  Vars().g_QBCountry = c.country;
  Vars().g_HostCountry = c.hostCountry;
  auto set = SpiedHouse::Session().CreateMsgSetRequest("US", 3, 0);
  const auto request = set.Append("EmployeeAddRq");
  AssignEmployeeNumber(request, c.stored, "AHILL");
  for (const std::string_view field : {"SSN", "SIN", "NiNumber"}) {
    EXPECT_EQ(request[field].GetValue(), field == c.field ? c.number : "") << field;
    EXPECT_EQ(request[field].IsSet(), field == c.field) << field;
  }
  const auto line = fmt::format("\"{}\" is not a valid Social Insurance Number. EmployeeID = \"AHILL\"", c.invalid);
  EXPECT_EQ(house.Log(), c.invalid.empty() ? Texts{} : Texts{line});
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(
    UnitedStates, EmployeeNumber,
    testing::Values(NumberCase{"Nine_digits", "US", "US", "987654320", "SSN", "987-65-4320"},
                    NumberCase{"None_stored", "US", "US", "", ""},
                    NumberCase{"Placeholder_of_ones_is_none", "US", "US", "111111111", ""},
                    NumberCase{"Placeholder_of_threes_is_none", "US", "US", "333333333", ""},
                    NumberCase{"Other_repeated_digits_are_a_number", "US", "US", "222222222", "SSN", "222-22-2222"},
                    NumberCase{"With_dashes_is_too_long", "US", "US", "987-65-4320", ""},
                    NumberCase{"Eight_digits_are_too_short", "US", "US", "98765432", ""},
                    NumberCase{"Ten_digits_are_too_long", "US", "US", "9876543210", ""},
                    NumberCase{"Letters_count_as_well", "US", "US", "ABCDEFGHI", "SSN", "ABC-DE-FGHI"},
                    NumberCase{"In_Australia_the_same", "AU", "AU", "987654320", "SSN", "987-65-4320"}),
    [](const auto& test) { return std::string(test.param.name); });

// "046 454 286" is a right number. The third group takes the sixth character once more.
INSTANTIATE_TEST_SUITE_P(
    Canada, EmployeeNumber,
    testing::Values(NumberCase{"Nine_digits_make_twelve_characters", "CA", "CA", "046454286", "", "", "046 454 4286"},
                    NumberCase{"Eight_characters_can_be_a_number", "CA", "CA", "04645420", "", "", "046 454 420"},
                    NumberCase{"Eight_characters_with_a_right_check_digit", "CA", "CA", "04645419", "SIN",
                               "046 454 419"},
                    NumberCase{"Of_the_host_alone", "US", "CA", "046454286", "", "", "046 454 4286"},
                    NumberCase{"Of_the_file_alone", "ca", "US", "04645419", "SIN", "046 454 419"},
                    NumberCase{"None_stored", "CA", "CA", "", ""},
                    NumberCase{"Letters", "CA", "CA", "ABCDEFGH", "", "", "ABC DEF FGH"},
                    NumberCase{"Short", "CA", "CA", "12", "", "", "12  "}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Britain, EmployeeNumber,
    testing::Values(NumberCase{"Nine_characters", "UK", "UK", "AB123456C", "NiNumber", "AB 12 34 56 C"},
                    NumberCase{"Longer_ones_lose_the_rest", "UK", "UK", "AB123456CD", "NiNumber", "AB 12 34 56 C"},
                    NumberCase{"None_stored_is_the_mask", "UK", "UK", "", "NiNumber", "AA 00 00 00 A"},
                    NumberCase{"Short_is_the_mask", "UK", "UK", "AB12345", "NiNumber", "AA 00 00 00 A"},
                    NumberCase{"First_character_a_digit", "UK", "UK", "1B123456C", "NiNumber", "AA 00 00 00 A"},
                    NumberCase{"Second_character_a_digit", "UK", "UK", "A2123456C", "NiNumber", "AA 00 00 00 A"},
                    NumberCase{"Last_character_a_digit", "UK", "UK", "AB1234567", "NiNumber", "AA 00 00 00 A"},
                    NumberCase{"Pairs_are_not_looked_at", "UK", "UK", "ABxxyyzzC", "NiNumber", "AB xx yy zz C"},
                    NumberCase{"Of_the_host_alone", "US", "UK", "AB123456C", "NiNumber", "AB 12 34 56 C"},
                    NumberCase{"None_stored_under_another_edition", "US", "UK", "", ""}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(EmployeeNumbers, A_Mod_sends_none) {
  PeopleHouse house(IsVendor::No);
  EXPECT_EQ(house.Field({{"EmpSSN", "'987654320'"}}, "SSN", RequestKind::Mod), "(none)");
  EXPECT_EQ(house.Field({{"EmpSSN", "'987654320'"}}, "SSN", RequestKind::Add), "987-65-4320");
}

TEST(EmployeeNumbers, A_Canadian_number_that_is_none_is_logged_and_the_employee_goes_without) {
  PeopleHouse house(IsVendor::No, {}, {}, kCanadian);
  house.Person({{"EmployeeID", "'AHILL'"}, {"EmpFName", "'Ann'"}, {"EmpSSN", "'046454286'"}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.Log(), Texts{"\"046 454 4286\" is not a valid Social Insurance Number. EmployeeID = \"AHILL\""});
  EXPECT_EQ(house.FieldOf(house.IdOf("Ann"), "SIN"), "(none)");
  EXPECT_EQ(house.ColumnOf("AHILL", "QBLinkID"), house.IdOf("Ann"));
}

TEST(EmployeeNumbers, A_British_employee_without_one_has_the_mask) {
  PeopleHouse house(IsVendor::No, {}, {}, kBritish);
  house.Person({{"EmployeeID", "'AHILL'"}, {"EmpFName", "'Ann'"}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.FieldOf(house.IdOf("Ann"), "NiNumber"), "AA 00 00 00 A");
  EXPECT_EQ(house.FieldOf(house.IdOf("Ann"), "BirthDate"), "1990-01-01");
}

}  // namespace
}  // namespace twqb
