// Which fields of an activity go to QuickBooks, under which name, and in which shape.

#include <gtest/gtest.h>

#include "tests/lists/ActivitiesHouse.h"

namespace twqb {
namespace {

std::string Letters(std::size_t count) { return std::string(count, 'x'); }
std::string Account(const std::string& element, const std::string& by, const std::string& value) {
  return "<" + element + "><" + by + ">" + value + "</" + by + "></" + element + ">";
}

// --- Adding ----------------------------------------------------------------------------------------------------------

constexpr std::string_view kFullColumns =
    "ActivityDescription, AC_CostRate, AC_BillRate, IsInActive, QBAccountID1, QBAccountID2";

TEST(ActivityFields, A_full_activity_is_added_as_an_item_with_both_sides) {
  ActivitiesHouse house;
  const auto expense = house.Account("Subcontractors");
  house.Activity("DESIGN:Plans", kFullColumns,
                 "'Drawing of plans', 60.5, 120.25, 0, '" + house.income + "', '" + expense + "'");
  house.Send();
  EXPECT_EQ(house.Sent("ItemServiceAddRq"),
            "<Name>DESIGN Plans</Name><IsActive>true</IsActive><SalesAndPurchase><SalesDesc>Drawing of "
            "plans</SalesDesc><SalesPrice>120.25</SalesPrice>" +
                Account("IncomeAccountRef", "ListID", house.income) + "<PurchaseCost>60.5</PurchaseCost>" +
                Account("ExpenseAccountRef", "ListID", expense) + "</SalesAndPurchase>");
  EXPECT_NE(house.ColumnOf("DESIGN:Plans", "QBLinkID"), "NULL");
}

TEST(ActivityFields, An_empty_activity_sends_an_empty_description_and_the_default_accounts) {
  for (const std::string_view empty : {"NULL", "''"}) {
    ActivitiesHouse house;
    house.Activity("DESIGN:", kFullColumns,
                   std::string(empty) + ", NULL, NULL, NULL, " + std::string(empty) + ", " + std::string(empty));
    house.Send();
    EXPECT_EQ(house.Sent("ItemServiceAddRq"), "<Name>DESIGN </Name><SalesAndPurchase><SalesDesc></SalesDesc>" +
                                                  Account("IncomeAccountRef", "FullName", "Other Income") +
                                                  Account("ExpenseAccountRef", "FullName", "Other Income") +
                                                  "</SalesAndPurchase>");
    EXPECT_NE(house.ColumnOf("DESIGN:", "QBLinkID"), "NULL");
  }
}

TEST(ActivityFields, The_default_accounts_are_those_of_the_settings) {
  for (const bool inTable : {false, true}) {
    ActivitiesHouse house;
    house.Account("Fees");
    house.Account("Wages");
    if (inTable) {
      Vars().g_UseTWSTable = true;
      house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_AC_INCOME_ACCOUNT', 'Fees')");
      house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('GENERAL_AC_EXPENSE_ACCOUNT', 'Wages')");
    } else {
      house.Setting("GENERAL", "AC_INCOME_ACCOUNT", "Fees");
      house.Setting("GENERAL", "AC_EXPENSE_ACCOUNT", "Wages");
    }
    house.Activity("DESIGN:");
    house.Send();
    const auto sent = house.Sent("ItemServiceAddRq");
    EXPECT_NE(sent.find(Account("IncomeAccountRef", "FullName", "Fees")), std::string::npos);
    EXPECT_NE(sent.find(Account("ExpenseAccountRef", "FullName", "Wages")), std::string::npos);
  }
}

TEST(ActivityFields, Rates_go_with_five_decimals_at_most_and_a_rate_of_nothing_goes_too) {
  ActivitiesHouse house;
  house.Activity("DESIGN:", "AC_CostRate, AC_BillRate", "0, 33.333336");
  house.Send();
  const auto sent = house.Sent("ItemServiceAddRq");
  EXPECT_EQ(house.TextOf(sent, "PurchaseCost"), "0");
  EXPECT_EQ(house.TextOf(sent, "SalesPrice"), "33.33334");
}

struct Naming {
  std::string key;
  std::string sent;
};

class ActivityNames : public testing::TestWithParam<Naming> {};

TEST_P(ActivityNames, Are_the_key_with_blanks_for_its_colons_cut_to_what_QuickBooks_takes) {
  ActivitiesHouse house;
  house.Activity(GetParam().key);
  house.Send();
  EXPECT_EQ(house.TextOf(house.Sent("ItemServiceAddRq"), "Name"), GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(ActivitySend, ActivityNames,
                         testing::Values(Naming{"GEN:COMP", "GEN COMP"}, Naming{"GEN:", "GEN "}, Naming{"GEN", "GEN"},
                                         Naming{"A:B:C", "A B C"}, Naming{":B", " B"}, Naming{"Größe:Süd", "Größe Süd"},
                                         Naming{Letters(28) + ":abc", Letters(28) + " ab"},
                                         Naming{Letters(31) + ":abc", Letters(31)}));

// --- Active or not ---------------------------------------------------------------------------------------------------

struct Activeness {
  std::string inactive;  // the column
  std::string sent;
};

class ActivityActiveness : public testing::TestWithParam<Activeness> {};

TEST_P(ActivityActiveness, Is_the_reverse_of_the_column_on_an_Add_and_on_a_Mod) {
  ActivitiesHouse house;
  house.Activity("NEW:", "IsInActive", GetParam().inactive);
  house.Activity("OLD:", "IsInActive, QBLinkID", GetParam().inactive + ", '" + house.OneSided("OLD ") + "'");
  house.Send();
  EXPECT_EQ(house.TextOf(house.Sent("ItemServiceAddRq"), "IsActive"), GetParam().sent);
  EXPECT_EQ(house.TextOf(house.Sent("ItemServiceModRq"), "IsActive"), GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(ActivitySend, ActivityActiveness,
                         testing::Values(Activeness{"0", "true"}, Activeness{"-1", "false"}, Activeness{"1", "false"},
                                         Activeness{"NULL", "(none)"}));

// --- Countries -------------------------------------------------------------------------------------------------------

struct Place {
  std::string country;
  messages::Country file;
  bool taxed;
};

class ActivityCountries : public testing::TestWithParam<Place> {};

TEST_P(ActivityCountries, Decide_whether_a_new_item_has_a_tax_code) {
  ActivitiesHouse house({.company = {.country = GetParam().file}}, {}, GetParam().country);
  house.Activity("NEW:");
  house.Activity("OLD:", "QBLinkID", "'" + house.TwoSided("OLD ") + "'");
  house.Send();
  const auto sent = house.Sent("ItemServiceAddRq");
  EXPECT_EQ(sent.find("<TaxCodeForSaleRef><FullName>E</FullName></TaxCodeForSaleRef>") != std::string::npos,
            GetParam().taxed);
  EXPECT_EQ(sent.find("TaxCode") != std::string::npos, GetParam().taxed);
  EXPECT_EQ(house.Sent("ItemServiceModRq").find("TaxCode"), std::string::npos);
  EXPECT_NE(house.ColumnOf("NEW:", "QBLinkID"), "NULL");
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(ActivitySend, ActivityCountries,
                         testing::Values(Place{"US", messages::Country::US, false},
                                         Place{"CA", messages::Country::CA, true},
                                         Place{"UK", messages::Country::UK, true},
                                         Place{"AU", messages::Country::AU, false}),
                         [](const auto& test) { return test.param.country; });

// --- Modifying -------------------------------------------------------------------------------------------------------

TEST(ActivityFields, A_Mod_of_a_two_sided_item_has_both_rates_and_no_account) {
  ActivitiesHouse house;
  const auto id = house.TwoSided("Plans");
  const auto other = house.Account("Other");
  house.Activity("DESIGN:Plans", std::string(kFullColumns) + ", QBLinkID",
                 "'Drawing', 60.5, 120.25, -1, '" + other + "', '" + other + "', '" + id + "'");
  house.Send();
  EXPECT_EQ(house.Sent("ItemServiceModRq"),
            "<IsActive>false</IsActive><SalesAndPurchaseMod><SalesDesc>Drawing</SalesDesc>"
            "<SalesPrice>120.25</SalesPrice><PurchaseCost>60.5</PurchaseCost></SalesAndPurchaseMod>");
  EXPECT_EQ(house.ItemField(id, "SalesDesc"), "Drawing");
  EXPECT_EQ(house.ItemField(id, "SalesPrice"), "120.25");
  EXPECT_EQ(house.ItemField(id, "PurchaseCost"), "60.50");
  EXPECT_EQ(house.ItemField(id, "IsActive"), "false");
}

TEST(ActivityFields, A_Mod_of_a_one_sided_item_has_the_billing_rate_alone) {
  ActivitiesHouse house;
  const auto id = house.OneSided("Plans", "<Desc>Old</Desc><PricePercent>5</PricePercent>");
  house.Activity("DESIGN:Plans", std::string(kFullColumns) + ", QBLinkID",
                 "'Drawing', 60.5, 120.25, 0, NULL, NULL, '" + id + "'");
  house.Send();
  EXPECT_EQ(house.Sent("ItemServiceModRq"),
            "<IsActive>true</IsActive><SalesOrPurchaseMod><Desc>Drawing</Desc><Price>120.25</Price>"
            "</SalesOrPurchaseMod>");
  EXPECT_EQ(house.ItemField(id, "Price"), "120.25");
  EXPECT_EQ(house.ItemField(id, "PricePercent"), "(none)");
}

TEST(ActivityFields, A_Mod_of_an_empty_activity_has_an_empty_description_and_no_rate) {
  ActivitiesHouse house;
  house.Activity("A:One", "IsInActive, QBLinkID", "NULL, '" + house.OneSided("One") + "'");
  house.Activity("A:Two", "IsInActive, QBLinkID", "NULL, '" + house.TwoSided("Two") + "'");
  house.Send();
  const auto sent = house.Requests("ItemServiceModRq");
  ASSERT_EQ(sent.size(), 2U);
  EXPECT_NE(sent[0].find("</EditSequence><SalesOrPurchaseMod><Desc></Desc></SalesOrPurchaseMod></ItemServiceMod>"),
            std::string::npos);
  EXPECT_NE(sent[1].find(
                "</EditSequence><SalesAndPurchaseMod><SalesDesc></SalesDesc></SalesAndPurchaseMod></ItemServiceMod>"),
            std::string::npos);
}

struct Renaming {
  std::string key;
  std::string twin;
  std::string sent;  // "(none)": the item keeps its name
};

class ActivityRenaming : public testing::TestWithParam<Renaming> {};

TEST_P(ActivityRenaming, Happens_unless_the_item_has_the_name_already_or_the_sub_alone) {
  ActivitiesHouse house;
  house.Activity(GetParam().key, "QBLinkID", "'" + house.OneSided(GetParam().twin) + "'");
  house.Send();
  EXPECT_EQ(house.TextOf(house.Sent("ItemServiceModRq"), "Name"), GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(
    ActivitySend, ActivityRenaming,
    testing::Values(Renaming{"GEN:COMP", "GEN COMP", "(none)"}, Renaming{"GEN:COMP", "COMP", "(none)"},
                    Renaming{"GEN:COMP", "Comp", "GEN COMP"}, Renaming{"GEN:COMP", "Other", "GEN COMP"},
                    Renaming{"GEN:COMP:X", "COMP", "(none)"}, Renaming{"GEN:COMP:X", "X", "GEN COMP X"},
                    // Without a sub the item is always renamed, be it by the blank behind the code.
                    Renaming{"GEN:", "GEN", "GEN "}, Renaming{"GEN:", "GEN ", "(none)"},
                    Renaming{"GEN:", "Other", "GEN "}, Renaming{"GEN", "Other", "GEN"},
                    Renaming{"GEN", "GEN", "(none)"}, Renaming{Letters(31) + ":ab", "Other", Letters(31)},
                    // The whole name is longer than what QuickBooks has of it.
                    Renaming{Letters(28) + ":abc", Letters(28) + " ab", Letters(28) + " ab"}));

TEST(ActivityFields, A_twin_without_a_name_gets_one) {
  ActivitiesHouse house;
  house.Activity("GEN:COMP", "QBLinkID", "'80000001-1'");
  house.traffic.canned.push_back(
      "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><ItemServiceQueryRs requestID=\"1\" statusCode=\"0\" "
      "statusSeverity=\"Info\" statusMessage=\"Status OK\"><ItemServiceRet><ListID>80000001-1</ListID>"
      "<EditSequence>1</EditSequence><Name></Name></ItemServiceRet></ItemServiceQueryRs></QBXMLMsgsRs></QBXML>");
  house.traffic.canned.push_back(
      "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><ItemServiceModRs requestID=\"1\" statusCode=\"0\" "
      "statusSeverity=\"Info\" statusMessage=\"Status OK\"/></QBXMLMsgsRs></QBXML>");
  house.Send();
  EXPECT_EQ(house.TextOf(house.Sent("ItemServiceModRq"), "Name"), "GEN COMP");
}

}  // namespace
}  // namespace twqb
