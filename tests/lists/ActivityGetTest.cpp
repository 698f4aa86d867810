// The get of service items: their keys, the columns of both forms, the rows that they meet, and errors.

#include <gtest/gtest.h>

#include "tests/lists/ActivitiesHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

std::string Letters(std::size_t count, char letter) { return std::string(count, letter); }

// --- New rows --------------------------------------------------------------------------------------------------------

TEST(ActivityGet, A_new_item_becomes_a_row_with_its_start_values) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans");
  house.Get();
  EXPECT_EQ(house.Keys(), "Plans:");
  EXPECT_EQ(house.ColumnOf("Plans:", "ActivityCode"), "Plans");
  EXPECT_EQ(house.ColumnOf("Plans:", "ActivitySub"), "");
  EXPECT_EQ(house.ColumnOf("Plans:", "QBLinkID"), id);
  EXPECT_EQ(house.ColumnOf("Plans:", "LastUpdated"), "3/5/2008 3:00:00 PM");
  for (const std::string_view column : {"Tax1_Rate", "Tax2_Rate", "Tax3_Rate", "AC_MinHours"}) {
    EXPECT_EQ(house.ColumnOf("Plans:", column), "0") << column;
  }
  EXPECT_EQ(house.ColumnOf("Plans:", "ActivityBillable"), "-1");
  EXPECT_EQ(house.ColumnOf("Plans:", "IsInActive"), "0");
  EXPECT_EQ(house.ColumnOf("Plans:", "AC_CostRate"), "NULL");
  EXPECT_EQ(house.ColumnOf("Plans:", "AC_BillRate"), "NULL");
  EXPECT_EQ(house.ColumnOf("Plans:", "QBAccountID2"), "NULL");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ActivityGet, Items_below_items_have_code_and_sub_and_deeper_levels_are_dropped) {
  ActivitiesHouse house;
  const auto a = house.OneSided("A");
  const auto b = house.SubItem("B", a);
  const auto c = house.SubItem("C", b);
  house.Get();
  EXPECT_EQ(house.Keys(), "A:,A:B,A:B1");
  EXPECT_EQ(house.ColumnOf("A:B", "QBLinkID"), b);
  EXPECT_EQ(house.ColumnOf("A:B", "ActivityCode"), "A");
  EXPECT_EQ(house.ColumnOf("A:B", "ActivitySub"), "B");
  EXPECT_EQ(house.ColumnOf("A:B1", "QBLinkID"), c);
  EXPECT_EQ(house.ColumnOf("A:B1", "ActivitySub"), "B1");
}

struct Splitting {
  std::string what;
  std::string parent;  // empty: at the top
  std::string name;
  std::string code;
  std::string sub;
};

class ActivityKeys : public testing::TestWithParam<Splitting> {};

TEST_P(ActivityKeys, Are_the_first_two_parts_of_the_full_name) {
  ActivitiesHouse house;
  const auto& names = GetParam();
  const auto id =
      names.parent.empty() ? house.OneSided(names.name) : house.SubItem(names.name, house.OneSided(names.parent));
  house.Get();
  const auto key = house.Scalar("SELECT ActivityID FROM Activity WHERE QBLinkID = '" + id + "'");
  EXPECT_EQ(key, names.code + ":" + names.sub);
  EXPECT_EQ(house.ColumnOf(key, "ActivityCode"), names.code);
  EXPECT_EQ(house.ColumnOf(key, "ActivitySub"), names.sub);
}

INSTANTIATE_TEST_SUITE_P(ActivityGet, ActivityKeys,
                         testing::Values(Splitting{"Top", "", "Plans", "Plans", ""},
                                         Splitting{"Below", "Design", "Plans", "Design", "Plans"},
                                         Splitting{"TopJunk", "", "O'Neil, #1;", "O Neil   1 ", ""},
                                         Splitting{"BelowJunk", "R&amp;D, #1", "Bob's; own", "R&D   1", "Bob s  own"},
                                         Splitting{"Longest", Letters(31, 'c'), Letters(31, 's'), Letters(31, 'c'),
                                                   Letters(31, 's')}),
                         [](const auto& test) { return test.param.what; });

TEST(ActivityGet, Code_and_sub_are_cut_to_their_columns) {
  ActivitiesHouse house;
  house.Sql("DROP TABLE Activity");
  house.Sql(
      "CREATE TABLE Activity (ActivityID VARCHAR(65), ActivityCode VARCHAR(4), ActivitySub VARCHAR(3), "
      "ActivityDescription VARCHAR(5), AC_CostRate DOUBLE, AC_BillRate DOUBLE, AC_MinHours DOUBLE, "
      "ActivityBillable SMALLINT, Tax1_Rate DOUBLE, Tax2_Rate DOUBLE, Tax3_Rate DOUBLE, IsInActive SMALLINT, "
      "QBAccountID1 VARCHAR(40), QBAccountID2 VARCHAR(40), QBLinkID VARCHAR(40), LastUpdated DATETIME)");
  house.SubItem("Plans", house.OneSided("Design", "<Desc>Drawing</Desc>"));
  house.Get();
  EXPECT_EQ(house.Keys(), "Desi:,Desi:Pla");
  EXPECT_EQ(house.ColumnOf("Desi:", "ActivityDescription"), "Drawi");
}

struct Uniqueness {
  std::string what;
  std::string taken;  // keys, joined by commas
  std::string parent;
  std::string name;
  std::string key;
};

class UniqueActivities : public testing::TestWithParam<Uniqueness> {};

TEST_P(UniqueActivities, Count_in_the_last_two_places_of_the_sub_or_behind_a_shorter_one) {
  ActivitiesHouse house;
  for (const auto& key : Split(GetParam().taken, ',')) house.Activity(key);
  const auto parent = GetParam().parent.empty() ? std::string() : house.OneSided(GetParam().parent);
  if (!parent.empty()) house.Activity("LINKED:", "QBLinkID", "'" + parent + "'");
  const auto id = parent.empty() ? house.OneSided(GetParam().name) : house.SubItem(GetParam().name, parent);
  house.Get({.never = true});
  const auto& key = GetParam().key;
  EXPECT_EQ(house.Scalar("SELECT ActivityID FROM Activity WHERE QBLinkID = '" + id + "'"), key);
  EXPECT_EQ(house.ColumnOf(key, "ActivityCode"), key.substr(0, key.find(':')));
  EXPECT_EQ(house.ColumnOf(key, "ActivitySub"), key.substr(key.find(':') + 1));
}

INSTANTIATE_TEST_SUITE_P(ActivityGet, UniqueActivities,
                         testing::Values(Uniqueness{"CodeAlone", "Plans:", "", "Plans", "Plans:1"},
                                         Uniqueness{"CodeAloneAgain", "PLANS:,plans:1", "", "Plans", "Plans:2"},
                                         Uniqueness{"OneLetter", "A:B,A:B1", "A", "B", "A:B2"},
                                         Uniqueness{"TwoLetters", "A:BC", "A", "BC", "A:BC1"},
                                         Uniqueness{"ThreeLetters", "A:BCD", "A", "BCD", "A:B1"},
                                         Uniqueness{"ThreeLettersAgain", "A:BCD,A:B1", "A", "BCD", "A:B2"},
                                         Uniqueness{"TenTimes",
                                                    "A:Tile,A:Ti1,A:Ti2,A:Ti3,A:Ti4,A:Ti5,A:Ti6,A:Ti7,A:Ti8,A:Ti9", "A",
                                                    "Tile", "A:Ti10"},
                                         Uniqueness{"Umlauts", "A:Größe", "A", "Größe", "A:Grö1"}),
                         [](const auto& test) { return test.param.what; });

TEST(ActivityGet, A_sub_that_its_counter_makes_too_long_is_cut_in_its_column_and_whole_in_the_key) {
  ActivitiesHouse house;
  const auto sub = Letters(31, 's');
  house.Activity("A:" + sub);
  for (int i = 1; i <= 99; ++i) house.Activity("A:" + Letters(29, 's') + std::to_string(i));
  const auto parent = house.OneSided("A");
  house.SubItem(sub, parent);
  house.Get();
  EXPECT_EQ(house.ColumnOf("A:" + Letters(29, 's') + "100", "ActivitySub"), Letters(29, 's') + "10");
}

// --- Columns ---------------------------------------------------------------------------------------------------------

TEST(ActivityGet, A_two_sided_item_brings_both_rates_and_both_accounts) {
  ActivitiesHouse house;
  const auto expense = house.Account("Subcontractors");
  const auto id = house.Item(
      "<Name>Plans</Name><IsActive>false</IsActive><SalesAndPurchase><SalesDesc>Drawing</SalesDesc>"
      "<SalesPrice>120.25</SalesPrice><IncomeAccountRef><ListID>" +
      house.income +
      "</ListID></IncomeAccountRef><PurchaseDesc>Bought</PurchaseDesc><PurchaseCost>12345678.12345</PurchaseCost>"
      "<ExpenseAccountRef><ListID>" +
      expense + "</ListID></ExpenseAccountRef></SalesAndPurchase>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Plans:", "ActivityDescription"), "Drawing");
  EXPECT_EQ(house.ColumnOf("Plans:", "QBAccountID1"), house.income);
  EXPECT_EQ(house.ColumnOf("Plans:", "QBAccountID2"), expense);
  EXPECT_EQ(house.ColumnOf("Plans:", "AC_CostRate"), "12345678.12345");
  EXPECT_EQ(house.ColumnOf("Plans:", "AC_BillRate"), "120.25");
  EXPECT_EQ(house.ColumnOf("Plans:", "IsInActive"), "-1");
}

TEST(ActivityGet, A_one_sided_item_brings_its_price_and_account_and_the_expense_account_and_the_cost_stay) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans", "<Desc>Drawing</Desc><Price>120.25</Price>");
  house.Activity(
      "OLD:", "QBLinkID, ActivityDescription, QBAccountID1, QBAccountID2, AC_CostRate, AC_BillRate, IsInActive",
      "'" + id + "', 'Old', 'ONE', 'TWO', 60.5, 100, -1");
  house.Get();
  EXPECT_EQ(house.ColumnOf("OLD:", "ActivityDescription"), "Drawing");
  EXPECT_EQ(house.ColumnOf("OLD:", "QBAccountID1"), house.income);
  EXPECT_EQ(house.ColumnOf("OLD:", "QBAccountID2"), "TWO");
  EXPECT_EQ(house.ColumnOf("OLD:", "AC_CostRate"), "60.5");
  EXPECT_EQ(house.ColumnOf("OLD:", "AC_BillRate"), "120.25");
  EXPECT_EQ(house.ColumnOf("OLD:", "IsInActive"), "0");
}

TEST(ActivityGet, A_price_in_percent_is_no_rate) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans", "<PricePercent>5</PricePercent>");
  house.Activity("OLD:", "QBLinkID, AC_BillRate", "'" + id + "', 100");
  house.Get();
  EXPECT_EQ(house.ColumnOf("OLD:", "AC_BillRate"), "100");
}

TEST(ActivityGet, An_item_without_description_or_rates_blanks_the_description_and_leaves_the_rates) {
  for (const bool twoSided : {true, false}) {
    ActivitiesHouse house;
    const auto id = twoSided ? house.TwoSided("Plans") : house.OneSided("Plans");
    house.Activity("OLD:", "QBLinkID, ActivityDescription, AC_CostRate, AC_BillRate", "'" + id + "', 'Old', 60.5, 100");
    house.Get();
    EXPECT_EQ(house.ColumnOf("OLD:", "ActivityDescription"), "");
    EXPECT_EQ(house.ColumnOf("OLD:", "AC_CostRate"), "60.5");
    EXPECT_EQ(house.ColumnOf("OLD:", "AC_BillRate"), "100");
  }
}

TEST(ActivityGet, A_known_item_updates_its_row_whatever_the_key_and_leaves_start_values_alone) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans");
  house.Activity("OLD:Sub", "ActivityCode, ActivitySub, QBLinkID, Tax1_Rate, AC_MinHours, ActivityBillable",
                 "'OLD', 'Sub', '" + id + "', 7, 0.25, 0");
  house.Get();
  EXPECT_EQ(house.Keys(), "OLD:Sub");
  EXPECT_EQ(house.ColumnOf("OLD:Sub", "ActivityCode"), "OLD");
  EXPECT_EQ(house.ColumnOf("OLD:Sub", "ActivitySub"), "Sub");
  EXPECT_EQ(house.ColumnOf("OLD:Sub", "Tax1_Rate"), "7");
  EXPECT_EQ(house.ColumnOf("OLD:Sub", "AC_MinHours"), "0.25");
  EXPECT_EQ(house.ColumnOf("OLD:Sub", "ActivityBillable"), "0");
  EXPECT_EQ(house.ColumnOf("OLD:Sub", "LastUpdated"), "3/5/2008 3:00:00 PM");
}

// --- Pairs -----------------------------------------------------------------------------------------------------------

struct Meeting {
  std::string what;
  std::string lastUpdated;
  bool gets;
};

class ActivityGetMeetings : public testing::TestWithParam<Meeting> {};

// QuickBooks changed the item at three o'clock UTC.
TEST_P(ActivityGetMeetings, Go_to_the_later_side_and_a_row_without_a_date_loses) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans", "<Desc>New</Desc>");
  house.Activity("OLD:", "QBLinkID, ActivityDescription, LastUpdated",
                 "'" + id + "', 'Old', " + GetParam().lastUpdated);
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.ColumnOf("OLD:", "ActivityDescription"), GetParam().gets ? "New" : "Old");
  EXPECT_EQ(Outcome(), TableOk::True);
}

INSTANTIATE_TEST_SUITE_P(ActivityGet, ActivityGetMeetings,
                         testing::Values(Meeting{"Tie", "'2008-03-05 15:00:00'", true},
                                         Meeting{"BillingLater", "'2008-03-05 15:00:01'", false},
                                         Meeting{"BillingEarlier", "'2008-03-05 14:59:59'", true},
                                         Meeting{"NoDate", "NULL", true}),
                         [](const auto& test) { return test.param.what; });

TEST(ActivityGet, With_Never_a_known_item_stays_and_a_new_one_comes) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans", "<Desc>New</Desc>");
  house.OneSided("Visits");
  house.Activity("OLD:", "QBLinkID, ActivityDescription", "'" + id + "', 'Old'");
  house.Get({.never = true});
  EXPECT_EQ(house.ColumnOf("OLD:", "ActivityDescription"), "Old");
  EXPECT_EQ(house.Keys(), "OLD:,Visits:");
}

TEST(ActivityGet, Two_items_show_the_form_and_one_alone_does_not) {
  ActivitiesHouse house;
  house.OneSided("A");
  house.Get();
  EXPECT_TRUE(house.FormTexts().empty());
  house.OneSided("B");
  house.Get();
  EXPECT_EQ(house.FormTexts(), Texts{"Getting Activities from QuickBooks..."});
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(ActivityGet, Yes_after_an_error_goes_on_with_the_next_item) {
  ActivitiesHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" Activity");
  house.SubItem("Plans", house.OneSided("Design"));
  house.Get();
  EXPECT_EQ(house.BoxTexts(),
            (Texts{"Error #: -2147217873(80040E2F) -- \r\n\r\nRefused." + ErrorBoxEnd("MoveActivitiesToTW"),
                   "Do you want to continue transfering rest of the records?"}));
  EXPECT_EQ(house.Log(), Texts{"Error in Activity transfer to Tallywick. Activity = Design"});
  EXPECT_EQ(house.Keys(), "Design:Plans");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ActivityGet, No_after_an_error_cancels_the_operation) {
  ActivitiesHouse house({.answers = "no"}, "row 1 raise 0x80040E2F \"Refused.\" Activity");
  house.OneSided("Plans");
  house.OneSided("Visits");
  house.Get();
  EXPECT_EQ(house.BoxTexts().back(), "Operation cancelled!");
  EXPECT_EQ(house.Keys(), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

}  // namespace
}  // namespace twqb
