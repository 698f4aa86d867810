// Which fields of an expense code go to QuickBooks, in which place of which item, and in which shape.

#include <gtest/gtest.h>

#include "tests/lists/ExpenseCodesHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

constexpr std::string_view kIncome = "<IncomeAccountRef><FullName>Other Income</FullName></IncomeAccountRef>";
constexpr std::string_view kExpense = "<ExpenseAccountRef><FullName>Other Income</FullName></ExpenseAccountRef>";

std::string Letters(std::size_t count) { return std::string(count, 'x'); }

constexpr std::string_view kActive = "<IsActive>true</IsActive>";  // of a code that tells nothing else

// What an Add sends.
struct AddOf {
  std::string_view name = "A B";
  std::string_view active = kActive;
  std::string_view sale = {};  // ahead of the income account
  std::string_view income = kIncome;
  std::string_view purchase = {};
  std::string_view expense = kExpense;

  [[nodiscard]] std::string Text() const {
    return fmt::format(
        "<ItemOtherChargeAdd><Name>{}</Name>{}<SalesAndPurchase>{}{}{}{}</SalesAndPurchase></ItemOtherChargeAdd>", name,
        active, sale, income, purchase, expense);
  }
};

// --- Adding: names ---------------------------------------------------------------------------------------------------

struct Naming {
  std::string expID;
  std::string sent;
};

class AddedNames : public testing::TestWithParam<Naming> {};

TEST_P(AddedNames, Are_the_key_with_blanks_for_its_colons) {
  ExpenseCodesHouse house;
  house.Code(GetParam().expID);
  house.Send();
  EXPECT_EQ(house.Adds(), Texts{AddOf{.name = GetParam().sent}.Text()});
}

INSTANTIATE_TEST_SUITE_P(ExpenseCodeSend, AddedNames,
                         testing::Values(Naming{"TRAVEL:AIR", "TRAVEL AIR"}, Naming{"REPRO:", "REPRO "},
                                         Naming{"A:B:C", "A B C"}, Naming{"PLAIN", "PLAIN"},
                                         Naming{"Öl: schwer", "Öl  schwer"},
                                         Naming{Letters(30) + ":YZ", Letters(30) + " "},
                                         Naming{Letters(40) + ":", Letters(31)}));

TEST(ExpenseCodeNames, Are_converted_one_way_with_blanks_and_the_other_with_bars) {
  EXPECT_EQ(GetExpenseNameForQB("A:B:C"), "A B C");
  EXPECT_EQ(GetExpenseNameForQB(""), "");
  EXPECT_EQ(GetExpenseIDForTW("A | B | C"), "A:B:C");
  EXPECT_EQ(GetExpenseIDForTW("A B"), "A B");
  EXPECT_EQ(GetExpenseIDForTW("A|B"), "A|B");
  EXPECT_EQ(GetExpenseIDForTW("A:B"), "A:B");
}

// --- Adding: the other fields ----------------------------------------------------------------------------------------

// A selection of one code that no table holds.
std::string Selection(std::string_view description, std::string_view cost, std::string_view markup) {
  return fmt::format(
      "SELECT 'A:B' AS ExpID, {} AS ExpDescription, {} AS ExpCost, {} AS ExpMarkup, NULL AS LastUpdated, "
      "NULL AS QBLinkID, NULL AS IsInActive, NULL AS QBAccountID1, NULL AS QBAccountID2",
      description, cost, markup);
}

struct Added {
  std::string columns;
  std::string values;
  std::string active = std::string(kActive);
  std::string sale = {};
  std::string purchase = {};
};

class AddedFields : public testing::TestWithParam<Added> {};

TEST_P(AddedFields, Stand_where_an_other_charge_has_them) {
  ExpenseCodesHouse house;
  house.Code("A:B", GetParam().columns, GetParam().values);
  house.Send();
  const AddOf expected = {.active = GetParam().active, .sale = GetParam().sale, .purchase = GetParam().purchase};
  EXPECT_EQ(house.Adds(), Texts{expected.Text()});
  EXPECT_TRUE(house.BoxTexts().empty());
}

std::string Cost(std::string_view cost) { return fmt::format("<PurchaseCost>{}</PurchaseCost>", cost); }
std::string Price(std::string_view price) { return fmt::format("<SalesPrice>{}</SalesPrice>", price); }

const Added kAdded[] = {
    {"IsInActive", "NULL", ""},
    {"IsInActive", "0", "<IsActive>true</IsActive>"},
    {"IsInActive", "-1", "<IsActive>false</IsActive>"},
    {"IsInActive", "1", "<IsActive>false</IsActive>"},
    {.columns = "ExpDescription",
     .values = "'Fares & tolls'",
     .sale = "<SalesDesc>Fares &amp; tolls</SalesDesc>",
     .purchase = "<PurchaseDesc>Fares &amp; tolls</PurchaseDesc>"},
    {.columns = "ExpDescription",
     .values = "''",
     .sale = "<SalesDesc></SalesDesc>",
     .purchase = "<PurchaseDesc></PurchaseDesc>"},
    // Cost and markup. Without a cost there is no price either.
    {"ExpMarkup", "10"},
    {.columns = "ExpCost", .values = "10", .purchase = Cost("10")},
    {.columns = "ExpCost, ExpMarkup", .values = "10, 0", .sale = Price("10"), .purchase = Cost("10")},
    {.columns = "ExpCost, ExpMarkup", .values = "12.5, 15", .sale = Price("14.375"), .purchase = Cost("12.5")},
    {.columns = "ExpCost, ExpMarkup", .values = "0, 25", .sale = Price("0"), .purchase = Cost("0")},
    {.columns = "ExpCost, ExpMarkup", .values = "10, -20", .sale = Price("8"), .purchase = Cost("10")},
    {.columns = "ExpCost, ExpMarkup", .values = "1.2346, 3.3", .sale = Price("1.27534"), .purchase = Cost("1.2346")},
};

INSTANTIATE_TEST_SUITE_P(ExpenseCodeSend, AddedFields, testing::ValuesIn(kAdded));

TEST(ExpenseCodeFields, Descriptions_are_cut_to_what_QuickBooks_takes) {
  constexpr std::size_t kLongest = 4095;
  ExpenseCodesHouse house;
  // Longer than the table has it: other hosts have more room.
  house.SendSelection(Selection("'" + Letters(kLongest + 1) + "'", "NULL", "NULL"));
  const auto adds = house.Adds();
  ASSERT_EQ(adds.size(), 1U);
  EXPECT_EQ(house.TextOf(adds[0], "SalesDesc"), Letters(kLongest));
  EXPECT_EQ(house.TextOf(adds[0], "PurchaseDesc"), Letters(kLongest));
}

// --- Adding: countries -----------------------------------------------------------------------------------------------

struct Priced {
  std::string_view country;
  std::string cost;
  std::string markup;
  std::string sentCost;
  std::string sentPrice;
  const char* spelling = nullptr;  // of the country, where it is another
};

class Prices : public testing::TestWithParam<Priced> {};

TEST_P(Prices, Have_three_decimals_in_Britain_and_up_to_five_elsewhere) {
  ExpenseCodesHouse house({}, {}, GetParam().country);
  if (GetParam().spelling) Vars().g_QBCountry = GetParam().spelling;
  // Out of the table money has four decimals: other hosts keep more.
  house.SendSelection(Selection("NULL", GetParam().cost, GetParam().markup));
  const auto adds = house.Adds();
  ASSERT_EQ(adds.size(), 1U);
  EXPECT_EQ(house.TextOf(adds[0], "PurchaseCost"), GetParam().sentCost);
  EXPECT_EQ(house.TextOf(adds[0], "SalesPrice"), GetParam().sentPrice);
}

const Priced kPriced[] = {
    {"US", "1.23456", "0", "1.23456", "1.23456"},
    {"CA", "1.23456", "0", "1.23456", "1.23456"},
    {"UK", "1.23456", "0", "1.235", "1.235"},
    {"UK", "1.23456", "0", "1.235", "1.235", "uk"},
    {"UK", "1.234", "0", "1.234", "1.234"},
    {"UK", "2.5", "0", "2.5", "2.5"},
    {"UK", "75", "10", "75", "82.5"},
    // Halves go away from zero.
    {"UK", "1.2345", "0", "1.235", "1.235"},
    {"UK", "1.0005", "0", "1.001", "1.001"},
    {"UK", "-1.0005", "0", "-1.001", "-1.001"},
    {"UK", "1.23449", "0", "1.234", "1.234"},
    // The price is that of the whole cost.
    {"UK", "1.0004", "50", "1", "1.501"},
    {"UK", "1.2346", "NULL", "1.235", "(none)"},
    {"US", "1.234567", "0", "1.23457", "1.23457"},
};

INSTANTIATE_TEST_SUITE_P(ExpenseCodeSend, Prices, testing::ValuesIn(kPriced));

// The forms of these countries have no field of the name under which the tax code is set.
TEST(ExpenseCodeFields, No_tax_code_reaches_the_wire_in_any_country) {
  for (const std::string_view country : {"US", "CA", "UK"}) {
    SCOPED_TRACE(country);
    ExpenseCodesHouse house({}, {}, country);
    house.Code("A:B", "ExpCost", "10");
    house.Send();
    EXPECT_EQ(house.Adds(), Texts{AddOf{.purchase = Cost("10")}.Text()});
    EXPECT_NE(house.ColumnOf("A:B", "QBLinkID"), "NULL");
  }
}

// --- Adding: accounts ------------------------------------------------------------------------------------------------

TEST(ExpenseCodeFields, The_accounts_of_a_code_go_by_their_identifiers) {
  ExpenseCodesHouse house;
  house.Code("A:B", "QBAccountID1, QBAccountID2", "'" + house.fees + "', '" + house.costs + "'");
  house.Send();
  const auto ref = [](std::string_view field, const std::string& id) {
    return fmt::format("<{0}><ListID>{1}</ListID></{0}>", field, id);
  };
  const auto income = ref("IncomeAccountRef", house.fees);
  const auto expense = ref("ExpenseAccountRef", house.costs);
  EXPECT_EQ(house.Adds(), Texts{(AddOf{.income = income, .expense = expense}).Text()});
  EXPECT_NE(house.ColumnOf("A:B", "QBLinkID"), "NULL");
}

TEST(ExpenseCodeFields, A_code_without_accounts_goes_to_the_accounts_of_the_settings) {
  ExpenseCodesHouse house;
  house.Setting("GENERAL", "AC_INCOME_ACCOUNT", "Fees");
  house.Setting("GENERAL", "AC_EXPENSE_ACCOUNT", "Costs");
  house.Code("A:B", "QBAccountID1, QBAccountID2", "'', NULL");
  house.Send();
  const AddOf expected = {.income = "<IncomeAccountRef><FullName>Fees</FullName></IncomeAccountRef>",
                          .expense = "<ExpenseAccountRef><FullName>Costs</FullName></ExpenseAccountRef>"};
  EXPECT_EQ(house.Adds(), Texts{expected.Text()});
}

TEST(ExpenseCodeFields, Blanks_are_no_income_account_but_an_expense_account) {
  ExpenseCodesHouse house({.answers = "yes"});
  house.Code("A:B", "QBAccountID1, QBAccountID2", "'  ', '  '");
  house.Send();
  const AddOf expected = {.expense = "<ExpenseAccountRef><ListID>  </ListID></ExpenseAccountRef>"};
  EXPECT_EQ(house.Adds(), Texts{expected.Text()});
}

// --- Modifying -------------------------------------------------------------------------------------------------------

// Of an item that the tests have just made.
std::string ModOf(std::string_view kind, std::string_view listId, std::string_view fields) {
  return fmt::format("<{0}Mod><ListID>{1}</ListID><EditSequence>1204729200</EditSequence>{2}</{0}Mod>", kind, listId,
                     fields);
}

enum class Form : std::uint8_t { And, Or, Inventory };

struct Modified {
  std::string columns;
  std::string values;
  // Inside the form of an item that is sold and bought, in the form of one that is sold or bought, of inventory.
  std::string both;
  std::string either;
  std::string inventory;
};

class ModifiedFields : public testing::TestWithParam<Modified> {
 protected:
  static std::string Make(ExpenseCodesHouse& house, std::string_view kind, Form form) {
    // Each has the code's second part for a name, and so keeps it.
    if (form == Form::Inventory) return house.Inventory("B");
    return form == Form::And ? house.SoldAndBought(kind, "B") : house.SoldOrBought(kind, "B");
  }
  // The whole Mod of a twin of that kind.
  static void Check(std::string_view kind, Form form, const std::string& fields) {
    SCOPED_TRACE(kind);
    ExpenseCodesHouse house;
    const auto id = Make(house, kind, form);
    house.Linked("A:B", id, GetParam().columns, GetParam().values);
    house.Send();
    EXPECT_EQ(house.Requests(std::string(kind) + "ModRq"), Texts{ModOf(kind, id, fields)});
    EXPECT_TRUE(house.BoxTexts().empty());
    EXPECT_TRUE(house.Adds().empty());
  }
};

TEST_P(ModifiedFields, Stand_where_an_item_that_is_sold_and_bought_has_them) {
  const auto fields = "<SalesAndPurchaseMod>" + GetParam().both + "</SalesAndPurchaseMod>";
  Check(kOtherChargeItem, Form::And, fields);
  Check(kNonInventoryItem, Form::And, fields);
}

TEST_P(ModifiedFields, Stand_where_an_item_that_is_sold_or_bought_has_them) {
  const auto fields = "<SalesOrPurchaseMod>" + GetParam().either + "</SalesOrPurchaseMod>";
  Check(kOtherChargeItem, Form::Or, fields);
  Check(kNonInventoryItem, Form::Or, fields);
}

TEST_P(ModifiedFields, Stand_where_an_inventory_item_has_them) {
  Check(kInventoryItem, Form::Inventory, GetParam().inventory);
}

const Modified kModified[] = {
    {"ExpDescription, IsInActive", "'Fares', NULL", "<SalesDesc>Fares</SalesDesc>", "<Desc>Fares</Desc>",
     "<SalesDesc>Fares</SalesDesc>"},
    {"ExpDescription, IsInActive", "NULL, NULL", "<SalesDesc></SalesDesc>", "<Desc></Desc>", "<SalesDesc></SalesDesc>"},
    // Without a markup no price goes, and of an inventory item no cost either.
    {"ExpDescription, IsInActive, ExpCost", "'x', NULL, 10", "<SalesDesc>x</SalesDesc><PurchaseCost>10</PurchaseCost>",
     "<Desc>x</Desc>", "<SalesDesc>x</SalesDesc>"},
    {"ExpDescription, IsInActive, ExpMarkup", "'x', NULL, 10", "<SalesDesc>x</SalesDesc><SalesPrice>0</SalesPrice>",
     "<Desc>x</Desc><Price>0</Price>",
     "<SalesDesc>x</SalesDesc><SalesPrice>0</SalesPrice><PurchaseCost>0</PurchaseCost>"},
    {"ExpDescription, IsInActive, ExpCost, ExpMarkup", "'x', NULL, 10, 0",
     "<SalesDesc>x</SalesDesc><SalesPrice>10</SalesPrice><PurchaseCost>10</PurchaseCost>",
     "<Desc>x</Desc><Price>10</Price>",
     "<SalesDesc>x</SalesDesc><SalesPrice>10</SalesPrice><PurchaseCost>10</PurchaseCost>"},
    {"ExpDescription, IsInActive, ExpCost, ExpMarkup", "'x', NULL, 12.3456, 15.5",
     "<SalesDesc>x</SalesDesc><SalesPrice>14.25917</SalesPrice><PurchaseCost>12.3456</PurchaseCost>",
     "<Desc>x</Desc><Price>14.25917</Price>",
     "<SalesDesc>x</SalesDesc><SalesPrice>14.25917</SalesPrice><PurchaseCost>12.3456</PurchaseCost>"},
};

INSTANTIATE_TEST_SUITE_P(ExpenseCodeSend, ModifiedFields, testing::ValuesIn(kModified));

TEST(ExpenseCodeFields, A_Mod_tells_whether_the_code_is_active) {
  for (const bool active : {false, true}) {
    ExpenseCodesHouse house;
    const auto id = house.SoldOrBought(kOtherChargeItem, "B");
    house.Linked("A:B", id, "IsInActive", active ? "0" : "-1");
    house.Send();
    EXPECT_EQ(house.TextOf(house.Ask(kOtherChargeItem, id), "IsActive"), active ? "true" : "false");
  }
}

TEST(ExpenseCodeFields, A_Mod_does_not_round_in_Britain_and_changes_no_account) {
  ExpenseCodesHouse house({}, {}, "UK");
  const auto id = house.SoldAndBought(kOtherChargeItem, "B");
  house.Linked("A:B", id, "IsInActive, ExpCost, ExpMarkup, QBAccountID1, QBAccountID2",
               "NULL, 1.2346, 10, '" + house.otherIncome + "', '" + house.otherIncome + "'");
  house.Send();
  EXPECT_EQ(house.Requests("ItemOtherChargeModRq"),
            Texts{ModOf(kOtherChargeItem, id,
                        "<SalesAndPurchaseMod><SalesDesc></SalesDesc><SalesPrice>1.35806</SalesPrice>"
                        "<PurchaseCost>1.2346</PurchaseCost></SalesAndPurchaseMod>")});
  EXPECT_NE(house.Ask(kOtherChargeItem, id).find("<FullName>Fees</FullName>"), std::string::npos);
}

// --- Modifying: names ------------------------------------------------------------------------------------------------

struct Renaming {
  std::string expID;
  std::string quickBooks;
  std::string sent;  // "(none)": the name is left alone
};

class ModifiedNames : public testing::TestWithParam<Renaming> {
 protected:
  // QuickBooks itself has no item without a name, nor one without a form: the twin is made by hand.
  static void AnswerWith(ExpenseCodesHouse& house, const std::string& insides) {
    house.traffic.canned.push_back(
        "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><ItemOtherChargeQueryRs statusCode=\"0\" "
        "statusSeverity=\"Info\" statusMessage=\"\"><ItemOtherChargeRet><ListID>80000001-1204729200</ListID>"
        "<TimeModified>2008-03-05T10:00:00-05:00</TimeModified><EditSequence>1204729200</EditSequence>" +
        insides + "</ItemOtherChargeRet></ItemOtherChargeQueryRs></QBXMLMsgsRs></QBXML>");
    house.traffic.canned.emplace_back(
        "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><ItemOtherChargeModRs statusCode=\"0\" statusSeverity=\"Info\" "
        "statusMessage=\"\"></ItemOtherChargeModRs></QBXMLMsgsRs></QBXML>");
  }
};

TEST_P(ModifiedNames, Are_given_anew_unless_QuickBooks_has_the_codes_second_part) {
  ExpenseCodesHouse house;
  house.Linked(GetParam().expID, "80000001-1204729200");
  AnswerWith(house, "<Name>" + GetParam().quickBooks + "</Name><SalesOrPurchase><Desc>d</Desc></SalesOrPurchase>");
  house.Send();
  const auto mods = house.Requests("ItemOtherChargeModRq");
  ASSERT_EQ(mods.size(), 1U);
  EXPECT_EQ(house.TextOf(mods[0], "Name"), GetParam().sent);
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(
    ExpenseCodeSend, ModifiedNames,
    testing::Values(Renaming{"TRAVEL:AIR", "AIR", "(none)"}, Renaming{"TRAVEL:AIR", "TRAVEL AIR", "TRAVEL AIR"},
                    Renaming{"TRAVEL:AIR", "air", "TRAVEL AIR"}, Renaming{"TRAVEL:AIR", "Flights", "TRAVEL AIR"},
                    Renaming{"TRAVEL:AIR", "  ", "TRAVEL AIR"}, Renaming{"TRAVEL:", "TRAVEL", "TRAVEL "},
                    Renaming{"A:B:C", "B", "(none)"}, Renaming{"A:B:C", "C", "A B C"},
                    // Without a colon there is no second part to compare.
                    Renaming{"TRAVEL", "Flights", "(none)"}, Renaming{"TRAVEL", " ", "TRAVEL"},
                    Renaming{Letters(31) + ":Y", "Z", Letters(31)}));

TEST_F(ModifiedNames, Come_with_fields_for_sales_and_purchases_where_the_twin_tells_no_form) {
  ExpenseCodesHouse house;
  house.Linked("A:B", "80000001-1204729200", "IsInActive, ExpDescription", "NULL, 'Fares'");
  AnswerWith(house, "<Name>B</Name>");
  house.Send();
  EXPECT_EQ(house.Requests("ItemOtherChargeModRq"),
            Texts{ModOf(kOtherChargeItem, "80000001-1204729200",
                        "<SalesAndPurchaseMod><SalesDesc>Fares</SalesDesc></SalesAndPurchaseMod>")});
}

}  // namespace
}  // namespace twqb
