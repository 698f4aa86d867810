// The send of expense codes: new codes, pairs, names in use, refusals, errors.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/lists/ExpenseCodesHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const std::string kRest = "Do you want to transfer rest of the records?";

// --- Adding ----------------------------------------------------------------------------------------------------------

TEST(ExpenseCodeSend, A_new_code_becomes_an_other_charge_and_its_link_and_date_are_written_back) {
  ExpenseCodesHouse house;
  house.Code("TRAVEL:AIR", "ExpDescription", "'Air fares'");
  house.traffic.statements.clear();
  house.Send();
  const auto id = house.ColumnOf("TRAVEL:AIR", "QBLinkID");
  EXPECT_EQ(house.TextOf(house.Ask(kOtherChargeItem, id), "FullName"), "TRAVEL AIR");
  ASSERT_EQ(house.traffic.statements.size(), 3U);
  EXPECT_EQ(house.traffic.statements[1], "UPDATE Expense SET QBLinkID = '" + id + "' WHERE ExpID = 'TRAVEL:AIR';");
  EXPECT_EQ(house.traffic.statements[2],
            "UPDATE Expense SET LastUpdated = '03/05/2008 15:00:00' WHERE ExpID = 'TRAVEL:AIR';");
  EXPECT_EQ(Vars().g_NewQBLinkID, id);
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ExpenseCodeSend, A_new_code_that_has_a_date_keeps_it) {
  ExpenseCodesHouse house;
  house.Code("A:", "LastUpdated", "'2008-01-02 03:04:05'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("A:", "LastUpdated"), "1/2/2008 3:04:05 AM");
}

TEST(ExpenseCodeSend, The_code_of_unknown_items_is_passed_over_before_anything) {
  for (const std::string_view key : {"FROMQB:", "FromQB:"}) {
    ExpenseCodesHouse house;
    house.Code(key, "QBLinkID", "'80000001-1'");
    house.traffic.documents.clear();
    house.Send();
    EXPECT_TRUE(house.traffic.documents.empty());
    EXPECT_EQ(house.ColumnOf(key, "QBLinkID"), "80000001-1");
    EXPECT_EQ(Outcome(), TableOk::True);
  }
}

TEST(ExpenseCodeSend, A_code_that_only_begins_like_the_one_of_unknown_items_goes) {
  ExpenseCodesHouse house;
  house.Code("FROMQB:1");
  house.Code("FROMQB");
  house.Send();
  EXPECT_EQ(house.Adds().size(), 2U);
}

TEST(ExpenseCodeSend, The_form_shows_the_description) {
  ExpenseCodesHouse house;
  house.Code("TRAVEL:AIR", "ExpDescription", "'Air fares'");
  house.Send();
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Expense Items to QuickBooks..."});
  Texts shown;
  for (const auto& event : house.desk.FormEvents()) shown.push_back(event.state.Text1);
  EXPECT_NE(std::ranges::find(shown, "Air fares"), shown.end());
  EXPECT_EQ(std::ranges::find(shown, "TRAVEL:AIR"), shown.end());
}

}  // namespace
}  // namespace twqb
