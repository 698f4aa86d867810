// Items on their way to the expense codes: keys, columns by kind and form, pairs, errors.

#include <gtest/gtest.h>

#include "tests/lists/ExpenseCodesHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const std::string kQuestion = "Do you want to continue transfering rest of the records?";

std::string Letters(char letter, std::size_t count) { return std::string(count, letter); }

std::string ParentRef(std::string_view fullName) {
  return fmt::format("<ParentRef><FullName>{}</FullName></ParentRef>", fullName);
}

// --- Keys ------------------------------------------------------------------------------------------------------------

struct Keyed {
  std::string name;
  std::string code;
  std::string sub;         // "NULL": not written
  std::string tail = sub;  // of the key
};

class ItemKeys : public testing::TestWithParam<Keyed> {};

TEST_P(ItemKeys, Are_made_of_the_name) {
  ExpenseCodesHouse house;
  house.SoldOrBought(kOtherChargeItem, GetParam().name);
  house.Get();
  const auto key = GetParam().code + ":" + (GetParam().tail == "NULL" ? "" : GetParam().tail);
  EXPECT_EQ(house.Keys(), key);
  EXPECT_EQ(house.ColumnOf(key, "ExpCode"), GetParam().code);
  EXPECT_EQ(house.ColumnOf(key, "ExpSub"), GetParam().sub);
}

INSTANTIATE_TEST_SUITE_P(ExpenseCodeGet, ItemKeys,
                         testing::Values(Keyed{"Solo", "Solo", "NULL"}, Keyed{"Parent | Child", "Parent", "Child"},
                                         Keyed{"A | B | C", "A", "B"}, Keyed{"A|B", "A|B", "NULL"},
                                         Keyed{"Fares, all; #1", "Fares  all   1", "NULL"},
                                         Keyed{"Fares, | Air;", "Fares ", "Air "}, Keyed{"A |  ", "A", "NULL", " "},
                                         Keyed{" | B", "", "B"}, Keyed{Letters('x', 31), Letters('x', 31), "NULL"}));

TEST(ExpenseCodeGet, The_name_of_a_sub_item_makes_both_parts_and_a_third_level_is_dropped) {
  ExpenseCodesHouse house;
  house.SoldOrBought(kOtherChargeItem, "Parent");
  house.SoldOrBought(kOtherChargeItem, "Child", {}, ParentRef("Parent"));
  house.SoldOrBought(kOtherChargeItem, "Grandchild", {}, ParentRef("Parent:Child"));
  house.Get();
  EXPECT_EQ(house.Keys(), "Parent:Child,Parent1:Child1,Parent:");
}

TEST(ExpenseCodeGet, A_key_in_use_counts_behind_code_and_sub) {
  ExpenseCodesHouse house;
  house.Code("A:B");
  house.Code("A1:B1");
  house.Code("Solo:");
  house.SoldOrBought(kOtherChargeItem, "A | B");
  house.SoldOrBought(kOtherChargeItem, "Solo");
  house.Get();
  EXPECT_EQ(house.Keys(), "A:B,A1:B1,Solo:,A2:B2,Solo1:");
  EXPECT_EQ(house.ColumnOf("A2:B2", "ExpCode"), "A2");
  EXPECT_EQ(house.ColumnOf("A2:B2", "ExpSub"), "B2");
  EXPECT_EQ(house.ColumnOf("Solo1:", "ExpSub"), "NULL");
}

TEST(ExpenseCodeGet, A_counter_that_finds_no_room_behind_the_code_counts_behind_the_sub_alone) {
  ExpenseCodesHouse house;
  const auto parent = Letters('x', 31);
  house.SoldOrBought(kOtherChargeItem, parent);
  house.SoldOrBought(kOtherChargeItem, "B", {}, ParentRef(parent));
  house.Code(parent + ":B");
  house.Get();
  EXPECT_EQ(house.Keys(), fmt::format("{0}:B,{0}:B1,{0}:", parent));
}

TEST(ExpenseCodeGet, A_key_in_use_that_leaves_no_room_for_a_counter_is_an_error_of_its_record) {
  ExpenseCodesHouse house({.answers = "yes"});
  const auto code = Letters('x', 31);
  house.Code(code + ":");
  house.SoldOrBought(kOtherChargeItem, code);
  house.SoldOrBought(kOtherChargeItem, "Next");
  house.Get();
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(house.BoxTexts()[0],
            fmt::format("Error #: 457(1C9) -- \r\n\r\nEvery ExpID that can be made of the name \"{}\" is taken. Rename "
                        "the record in QuickBooks or the rows in Expense.",
                        code) +
                ErrorBoxEnd("MoveExpenseCodesToTW"));
  EXPECT_EQ(house.BoxTexts()[1], kQuestion);
  EXPECT_EQ(house.Keys(), code + ":,Next:");
}

// --- Columns ---------------------------------------------------------------------------------------------------------

// The values of a row, but for key, link and date, with a bar behind each.
std::string Columns(ExpenseCodesHouse& house, std::string_view key) {
  std::string values;
  for (const std::string_view column :
       {"ExpDescription", "Exp_Memo", "ExpCost", "ExpMarkup", "QBAccountID1", "QBAccountID2", "IsInActive", "IsProduct",
        "ExpBillable", "Reimbursable", "Tax1_Rate", "Tax2_Rate", "Tax3_Rate"}) {
    values += house.ColumnOf(key, column) + "|";
  }
  return values;
}
const std::string kNewRow = "-1|0|0|0|0|";  // of every row: billable, not to be reimbursed, no taxes

TEST(ExpenseCodeGet, An_other_charge_that_is_sold_and_bought_brings_texts_accounts_cost_and_markup) {
  ExpenseCodesHouse house;
  const auto id =
      house.SoldAndBought(kOtherChargeItem, "A | B", "<SalesDesc>Air fares</SalesDesc><SalesPrice>57.6</SalesPrice>",
                          "<PurchaseDesc>bought</PurchaseDesc><PurchaseCost>48</PurchaseCost>");
  house.Get();
  EXPECT_EQ(Columns(house, "A:B"), fmt::format("Air fares|NULL|48|20|{}|{}|0|0|{}", house.fees, house.costs, kNewRow));
  EXPECT_EQ(house.ColumnOf("A:B", "QBLinkID"), id);
  EXPECT_EQ(house.ColumnOf("A:B", "LastUpdated"), "3/5/2008 3:00:00 PM");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ExpenseCodeGet, A_non_inventory_item_is_a_product_as_well) {
  ExpenseCodesHouse house;
  house.AddAnOtherCharge();
  house.SoldAndBought(kNonInventoryItem, "A | B", "<SalesDesc>Paper</SalesDesc><SalesPrice>9</SalesPrice>",
                      "<PurchaseCost>6</PurchaseCost>");
  house.Get();
  EXPECT_EQ(Columns(house, "A:B"), fmt::format("Paper|NULL|6|50|{}|{}|0|-1|{}", house.fees, house.costs, kNewRow));
  EXPECT_EQ(house.ColumnOf("Solo:", "IsProduct"), "0");
}

TEST(ExpenseCodeGet, An_item_that_is_sold_or_bought_brings_its_text_and_neither_accounts_nor_cost) {
  for (const auto kind : {kOtherChargeItem, kNonInventoryItem}) {
    ExpenseCodesHouse house;
    house.AddAnOtherCharge();
    house.SoldOrBought(kind, "A | B", "<Desc>Fares</Desc><Price>12</Price>");
    house.Get();
    EXPECT_EQ(Columns(house, "A:B"),
              fmt::format("Fares|NULL|0|0|NULL|NULL|0|{}|{}", kind == kNonInventoryItem ? "-1" : "0", kNewRow));
  }
}

TEST(ExpenseCodeGet, An_inventory_item_is_described_by_its_name_and_its_text_is_the_memo) {
  ExpenseCodesHouse house;
  house.AddAnOtherCharge();
  house.Inventory("A | B", "<SalesDesc>Iron rods</SalesDesc><SalesPrice>3</SalesPrice>",
                  "<PurchaseCost>2</PurchaseCost>");
  house.Inventory("Same", "<SalesDesc>Same</SalesDesc>");
  house.Inventory("Silent");
  house.Get();
  EXPECT_EQ(Columns(house, "A:B"), fmt::format("A | B|Iron rods|2|50|{}|{}|0|-1|{}", house.fees, house.goods, kNewRow));
  EXPECT_EQ(house.ColumnOf("Same:", "Exp_Memo"), "NULL");
  EXPECT_EQ(house.ColumnOf("Silent:", "ExpDescription"), "Silent");
  EXPECT_EQ(house.ColumnOf("Silent:", "Exp_Memo"), "NULL");
}

TEST(ExpenseCodeGet, A_text_that_the_description_can_not_hold_is_kept_whole_in_the_memo) {
  constexpr std::size_t kDescription = 255;
  ExpenseCodesHouse house;
  const auto text = Letters('t', kDescription);
  house.SoldAndBought(kOtherChargeItem, "Fits", "<SalesDesc>" + text + "</SalesDesc>");
  house.SoldAndBought(kOtherChargeItem, "Both", "<SalesDesc>" + text + "!</SalesDesc>");
  house.SoldOrBought(kOtherChargeItem, "Either", "<Desc>" + text + "!</Desc>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Fits:", "ExpDescription"), text);
  EXPECT_EQ(house.ColumnOf("Fits:", "Exp_Memo"), "NULL");
  for (const std::string_view key : {"Both:", "Either:"}) {
    EXPECT_EQ(house.ColumnOf(key, "ExpDescription"), text);
    EXPECT_EQ(house.ColumnOf(key, "Exp_Memo"), text + "!");
  }
}

TEST(ExpenseCodeGet, An_item_without_a_text_is_described_by_its_name) {
  ExpenseCodesHouse house;
  house.SoldAndBought(kOtherChargeItem, "A | B");
  house.SoldOrBought(kOtherChargeItem, "Solo");
  house.Get();
  EXPECT_EQ(house.ColumnOf("A:B", "ExpDescription"), "A | B");
  EXPECT_EQ(house.ColumnOf("Solo:", "ExpDescription"), "Solo");
}

TEST(ExpenseCodeGet, A_sub_item_is_described_by_its_own_name_alone) {
  ExpenseCodesHouse house;
  house.SoldOrBought(kOtherChargeItem, "Parent");
  house.SoldOrBought(kOtherChargeItem, "Child", {}, ParentRef("Parent"));
  house.Get();
  EXPECT_EQ(house.ColumnOf("Parent:Child", "ExpDescription"), "Child");
}

TEST(ExpenseCodeGet, An_inactive_item_is_an_inactive_code) {
  ExpenseCodesHouse house;
  house.SoldOrBought(kOtherChargeItem, "Old", {}, "<IsActive>false</IsActive>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Old:", "IsInActive"), "-1");
}

struct Marked {
  std::string cost;
  std::string price;
  std::string markup;
};

class Markups : public testing::TestWithParam<Marked> {
 protected:
  static std::string Element(std::string_view name, const std::string& value) {
    return value.empty() ? "" : fmt::format("<{0}>{1}</{0}>", name, value);
  }
};

TEST_P(Markups, Are_what_the_price_is_above_the_cost_in_percent) {
  ExpenseCodesHouse house;
  const auto sale = Element("SalesPrice", GetParam().price);
  const auto purchase = Element("PurchaseCost", GetParam().cost);
  house.SoldAndBought(kOtherChargeItem, "O", sale, purchase);
  house.SoldAndBought(kNonInventoryItem, "N", sale, purchase);
  house.Inventory("I", sale, purchase);
  house.Get();
  for (const std::string_view key : {"O:", "N:", "I:"}) EXPECT_EQ(house.ColumnOf(key, "ExpMarkup"), GetParam().markup);
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(ExpenseCodeGet, Markups,
                         testing::Values(Marked{"10", "8", "0"}, Marked{"10", "10", "0"}, Marked{"10", "12.5", "25"},
                                         Marked{"0", "0", "0"}, Marked{"10", "", "0"}, Marked{"", "", "0"},
                                         Marked{"3", "4", "33.3333333333333"},
                                         // Money has four decimals.
                                         Marked{"1", "1.00004", "0"}, Marked{"1", "1.00006", "0.01"}));

// --- Pairs -----------------------------------------------------------------------------------------------------------

TEST(ExpenseCodeGet, A_known_item_updates_its_row_whatever_the_key) {
  ExpenseCodesHouse house;
  const auto id = house.SoldOrBought(kOtherChargeItem, "A | B", "<Desc>New</Desc>");
  house.Linked("OLD:", id,
               "ExpCode, ExpDescription, Exp_Memo, ExpCost, ExpMarkup, QBAccountID1, IsProduct, QBClassID, Tax1_Rate",
               "'OLD', 'Old', 'memo', 5, 6, 'x', -1, 'class', 7");
  house.Get();
  EXPECT_EQ(house.Keys(), "OLD:");
  EXPECT_EQ(Columns(house, "OLD:"), "New|memo|0|0|x|NULL|0|-1|" + kNewRow);
  EXPECT_EQ(house.ColumnOf("OLD:", "ExpCode"), "OLD");
  EXPECT_EQ(house.ColumnOf("OLD:", "QBClassID"), "class");
  EXPECT_EQ(house.ColumnOf("OLD:", "LastUpdated"), "3/5/2008 3:00:00 PM");
}

struct Meeting {
  std::string what;
  std::string lastUpdated;
  bool comes;
};

class ItemMeetings : public testing::TestWithParam<Meeting> {};

// QuickBooks changed the item at three o'clock UTC.
TEST_P(ItemMeetings, Go_to_the_later_side) {
  ExpenseCodesHouse house;
  const auto id = house.SoldOrBought(kOtherChargeItem, "New");
  house.Linked("OLD:", id, "ExpDescription, LastUpdated", "'Old', " + GetParam().lastUpdated);
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.ColumnOf("OLD:", "ExpDescription"), GetParam().comes ? "New" : "Old");
}

INSTANTIATE_TEST_SUITE_P(ExpenseCodeGet, ItemMeetings,
                         testing::Values(Meeting{"Tie", "'2008-03-05 15:00:00'", true},
                                         Meeting{"BillingLater", "'2008-03-05 15:00:01'", false},
                                         Meeting{"NoDate", "NULL", true}),
                         [](const auto& test) { return test.param.what; });

TEST(ExpenseCodeGet, With_Never_a_known_item_stays_and_a_new_one_comes) {
  ExpenseCodesHouse house;
  house.Linked("OLD:", house.SoldOrBought(kOtherChargeItem, "New"), "ExpDescription", "'Old'");
  house.SoldOrBought(kOtherChargeItem, "Other");
  house.Get({.never = true});
  EXPECT_EQ(house.ColumnOf("OLD:", "ExpDescription"), "Old");
  EXPECT_EQ(house.Keys(), "OLD:,Other:");
}

TEST(ExpenseCodeGet, A_code_that_was_sent_comes_back_to_its_row) {
  ExpenseCodesHouse house;
  house.Code("TRAVEL:AIR", "ExpDescription, ExpCost, ExpMarkup", "'Fares', 10, 0");
  house.Send();
  house.Get();
  EXPECT_EQ(house.Keys(), "TRAVEL:AIR");
  EXPECT_EQ(house.ColumnOf("TRAVEL:AIR", "ExpDescription"), "Fares");
  EXPECT_EQ(house.ColumnOf("TRAVEL:AIR", "ExpMarkup"), "0");
  EXPECT_EQ(house.ColumnOf("TRAVEL:AIR", "QBAccountID2"), house.otherIncome);
}

// --- Progress --------------------------------------------------------------------------------------------------------

TEST(ExpenseCodeGet, The_form_shows_the_full_name) {
  ExpenseCodesHouse house;
  house.SoldOrBought(kOtherChargeItem, "Parent");
  house.SoldOrBought(kOtherChargeItem, "Sub-item", {}, ParentRef("Parent"));
  house.Get();
  EXPECT_EQ(house.FormTexts(), Texts{"Getting Expense Items from QuickBooks..."});
  ASSERT_FALSE(house.desk.FormEvents().empty());
  EXPECT_EQ(house.desk.FormEvents().back().state.record, "Parent:Sub-item");
}

// --- Errors ----------------------------------------------------------------------------------------------------------

class PricesOfNothing : public testing::TestWithParam<std::string_view> {};

TEST_P(PricesOfNothing, Are_an_error_of_their_record) {
  for (const bool goesOn : {true, false}) {
    SCOPED_TRACE(goesOn);
    ExpenseCodesHouse house({.answers = goesOn ? "yes" : "no"});
    house.SoldAndBought(kOtherChargeItem, "Gift", "<SalesPrice>5</SalesPrice>", GetParam());
    house.SoldOrBought(kOtherChargeItem, "Next");
    house.Get();
    Texts expected = {"Error #: 11(B) -- \r\n\r\nDivision by zero" + ErrorBoxEnd("MoveExpenseCodesToTW"), kQuestion};
    if (!goesOn) expected.emplace_back("Operation cancelled!");
    EXPECT_EQ(house.BoxTexts(), expected);
    EXPECT_EQ(house.desk.Boxes()[1].box.title, "Question");
    EXPECT_EQ(house.Log(), Texts{"Error transfering Expense Codes to Tallywick. Expense = Gift"});
    EXPECT_EQ(house.Keys(), goesOn ? "Next:" : "NULL");
    EXPECT_EQ(Outcome(), goesOn ? TableOk::True : TableOk::False);
  }
}

INSTANTIATE_TEST_SUITE_P(ExpenseCodeGet, PricesOfNothing,
                         testing::Values("", "<PurchaseCost>0</PurchaseCost>", "<PurchaseCost>0.00004</PurchaseCost>"));

TEST(ExpenseCodeGet, Such_a_price_leaves_a_known_row_as_it_was) {
  ExpenseCodesHouse house({.answers = "yes"});
  house.Linked("OLD:", house.SoldAndBought(kOtherChargeItem, "Gift", "<SalesPrice>5</SalesPrice>"),
               "ExpDescription, ExpCost", "'Old', 7");
  house.Get();
  EXPECT_EQ(house.ColumnOf("OLD:", "ExpDescription"), "Old");
  EXPECT_EQ(house.ColumnOf("OLD:", "ExpCost"), "7");
  EXPECT_EQ(house.Log(), Texts{"Error transfering Expense Codes to Tallywick. Expense = Gift"});
}

}  // namespace
}  // namespace twqb
