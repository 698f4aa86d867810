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
  for (const auto& event : house.desk.FormEvents()) shown.push_back(event.state.record);
  EXPECT_NE(std::ranges::find(shown, "Air fares"), shown.end());
  EXPECT_EQ(std::ranges::find(shown, "TRAVEL:AIR"), shown.end());
}

// --- Twins -----------------------------------------------------------------------------------------------------------

const std::string kInMarch = "'2008-03-05 16:00:00'";  // an hour after the tests' items were made, in UTC

TEST(ExpenseCodeSend, A_changed_code_modifies_its_twin_by_the_request_of_its_kind) {
  for (const auto kind : {kOtherChargeItem, kInventoryItem, kNonInventoryItem}) {
    SCOPED_TRACE(kind);
    ExpenseCodesHouse house;
    const auto id = kind == kInventoryItem ? house.Inventory("Old") : house.SoldAndBought(kind, "Old");
    house.Linked("A:B", id, "ExpDescription, LastUpdated", "'New text', " + kInMarch);
    house.Send({.mostRecent = true});
    const auto item = house.Ask(kind, id);
    EXPECT_EQ(house.TextOf(item, "Name"), "A B");
    EXPECT_EQ(house.TextOf(item, "SalesDesc"), "New text");
    EXPECT_EQ(house.Requests(std::string(kind) + "ModRq").size(), 1U);
    EXPECT_TRUE(house.Adds().empty());
    EXPECT_EQ(house.ColumnOf("A:B", "QBLinkID"), id);
    EXPECT_EQ(house.ColumnOf("A:B", "LastUpdated"), "3/5/2008 4:00:00 PM");
  }
}

struct Meeting {
  std::string what;
  std::string lastUpdated;
  bool goes;
};

class ExpenseCodeMeetings : public testing::TestWithParam<Meeting> {};

// QuickBooks changed the item at three o'clock UTC. There is no other date to fall back to.
TEST_P(ExpenseCodeMeetings, Go_to_the_later_side_and_without_a_date_to_QuickBooks) {
  ExpenseCodesHouse house;
  house.Linked("A:B", house.SoldOrBought(kOtherChargeItem, "B"), "LastUpdated", GetParam().lastUpdated);
  house.Send({.mostRecent = true});
  EXPECT_EQ(house.Requests("ItemOtherChargeModRq").size(), GetParam().goes ? 1U : 0U);
  EXPECT_EQ(Outcome(), TableOk::True);
}

INSTANTIATE_TEST_SUITE_P(ExpenseCodeSend, ExpenseCodeMeetings,
                         testing::Values(Meeting{"Tie", "'2008-03-05 15:00:00'", true},
                                         Meeting{"QuickBooksLater", "'2008-03-05 14:59:59'", false},
                                         Meeting{"BillingLater", "'2008-03-05 15:00:01'", true},
                                         Meeting{"NoDate", "NULL", false}),
                         [](const auto& test) { return test.param.what; });

TEST(ExpenseCodeSend, With_Never_a_linked_code_stays_and_a_new_one_goes) {
  ExpenseCodesHouse house;
  house.Linked("A:B", house.SoldOrBought(kOtherChargeItem, "B"));
  house.Code("NEW:");
  house.Send({.never = true});
  EXPECT_TRUE(house.Requests("ItemOtherChargeModRq").empty());
  EXPECT_EQ(house.Adds().size(), 1U);
  EXPECT_NE(house.ColumnOf("NEW:", "QBLinkID"), "NULL");
}

TEST(ExpenseCodeSend, A_code_whose_item_QuickBooks_deleted_is_added_again_under_a_new_link) {
  ExpenseCodesHouse house;
  house.Linked("A:B", "80000FFF-1");
  house.Send();
  const auto id = house.ColumnOf("A:B", "QBLinkID");
  EXPECT_EQ(house.TextOf(house.Ask(kOtherChargeItem, id), "Name"), "A B");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ExpenseCodeSend, A_service_item_is_no_twin) {
  ExpenseCodesHouse house;
  const auto id = house.SoldOrBought("ItemService", "Hours");
  house.Linked("A:B", id);
  house.Send();
  EXPECT_EQ(house.Adds().size(), 1U);
  EXPECT_NE(house.ColumnOf("A:B", "QBLinkID"), id);
}

TEST(ExpenseCodeSend, QuickBooks_of_version_1_adds_codes_and_modifies_none) {
  ExpenseCodesHouse house;
  const auto id = house.SoldOrBought(kOtherChargeItem, "B");
  house.Linked("A:B", id);
  house.Linked("A:C", "80000FFF-1");
  house.Code("NEW:");
  Vars().g_QBMajorVer = 1;
  house.Send();
  EXPECT_TRUE(house.Requests("ItemOtherChargeModRq").empty());
  EXPECT_EQ(house.Adds().size(), 2U);
  EXPECT_EQ(house.ColumnOf("A:B", "QBLinkID"), id);
  EXPECT_NE(house.ColumnOf("A:C", "QBLinkID"), "80000FFF-1");
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- Refused Mods ----------------------------------------------------------------------------------------------------

TEST(ExpenseCodeSend, A_Mod_whose_name_is_in_use_is_logged_and_not_shown) {
  ExpenseCodesHouse house;
  house.SoldOrBought("ItemService", "A B");
  const auto id = house.SoldOrBought(kOtherChargeItem, "Old");
  house.Linked("A:B", id, "ExpDescription", "'Fares'");
  house.Code("NEW:");
  house.Send();
  EXPECT_EQ(house.Log(), Texts{"Modifying Activity : 'Fares' already exists in QB"});
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(house.TextOf(house.Ask(kOtherChargeItem, id), "Name"), "Old");
  EXPECT_NE(house.ColumnOf("NEW:", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ExpenseCodeSend, Any_other_refusal_of_a_Mod_is_told_without_its_record_and_asked_about) {
  for (const int status : {3140, 3200}) {
    for (const bool goesOn : {true, false}) {
      SCOPED_TRACE(status);
      ExpenseCodesHouse house({.answers = goesOn ? "yes" : "no"},
                              fmt::format("ItemOtherChargeModRq 1 status {} Error \"No.\"", status));
      house.Linked("A:B", house.SoldOrBought(kOtherChargeItem, "B"));
      house.Code("NEW:");
      house.Send();
      Texts expected = {RefusalText("No.", status, "Error"), kRest};
      if (!goesOn) expected.emplace_back("Operation cancelled!");
      EXPECT_EQ(house.BoxTexts(), expected);
      EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
      EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
      EXPECT_EQ(house.ColumnOf("NEW:", "QBLinkID") != "NULL", goesOn);
      EXPECT_EQ(Outcome(), goesOn ? TableOk::True : TableOk::False);
      EXPECT_TRUE(house.Log().empty());
    }
  }
}

// --- Refused Adds ----------------------------------------------------------------------------------------------------

TEST(ExpenseCodeSend, An_Add_whose_name_is_in_use_tries_the_key_with_a_counter_behind_it) {
  ExpenseCodesHouse house;
  house.SoldOrBought("ItemService", "A B");
  house.SoldOrBought(kNonInventoryItem, "a b1");
  house.Code("A:B", "ExpCost", "10");
  house.Send();
  EXPECT_EQ(house.TextOf(house.Ask(kOtherChargeItem, house.ColumnOf("A:B", "QBLinkID")), "Name"), "A B2");
  // The set grows: each round sends the earlier requests again.
  EXPECT_EQ(house.Adds().size(), 1U + 2U + 3U);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

std::string InUse(std::string_view name) {
  return RefusalText(fmt::format("The name \"{}\" of the list element is already in use.", name), 3100, "Error");
}

TEST(ExpenseCodeSend, A_name_in_use_that_leaves_no_room_for_a_counter_is_asked_about) {
  for (const bool goesOn : {true, false}) {
    ExpenseCodesHouse house({.answers = goesOn ? "yes" : "no"});
    const std::string key(31, 'x');
    house.SoldOrBought("ItemService", key);
    house.Code(key);
    house.Code("NEW:");
    house.Send();
    ASSERT_FALSE(house.BoxTexts().empty());
    EXPECT_EQ(house.BoxTexts()[0], InUse(key) + "\r\n\r\nDo you want to continue?");
    EXPECT_EQ(house.ColumnOf(key, "QBLinkID"), "NULL");
    EXPECT_EQ(house.ColumnOf("NEW:", "QBLinkID") != "NULL", goesOn);
    EXPECT_EQ(Outcome(), goesOn ? TableOk::True : TableOk::False);
  }
}

TEST(ExpenseCodeSend, An_account_that_QuickBooks_lacks_ends_the_table_behind_its_box) {
  ExpenseCodesHouse house;
  house.Setting("GENERAL", "AC_EXPENSE_ACCOUNT", "Missing");
  house.Code("A:B");
  house.Code("C:D");
  house.Send();
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text,
            "Invalid Reference.\r\n\r\nQuickBooks has reported the following error: -\r\nThere is an invalid reference "
            "to QuickBooks ExpenseAccount \"Missing\" in the ItemOtherCharge.  QuickBooks error message: Invalid "
            "argument.  The specified record does not exist in the list.\r\n(Error Code = 3140\r\nSeverity: "
            "Error)\r\n\r\nSuggestion: -\r\nIf this table needs an account, please choose a valid account from the\r\n"
            "Sync Settings in Tallywick.");
  EXPECT_EQ(box.title, "");
  EXPECT_EQ(box.icon, BoxIcon::None);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
  EXPECT_EQ(house.Adds().size(), 1U);
  EXPECT_EQ(house.ColumnOf("C:D", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
}

TEST(ExpenseCodeSend, Any_other_refusal_of_an_Add_is_told_without_its_record_in_one_box_with_its_question) {
  for (const bool goesOn : {true, false}) {
    ExpenseCodesHouse house({.answers = goesOn ? "yes" : "no"}, "ItemOtherChargeAddRq 1 status 3180 Error \"No.\"");
    house.Code("A:B");
    house.Code("NEW:");
    house.Send();
    Texts expected = {RefusalText("No.", 3180, "Error") + "\r\n\r\nDo you want to continue?"};
    if (!goesOn) expected.emplace_back("Operation cancelled!");
    EXPECT_EQ(house.BoxTexts(), expected);
    EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
    EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Question);
    EXPECT_EQ(house.ColumnOf("NEW:", "QBLinkID") != "NULL", goesOn);
    EXPECT_EQ(Outcome(), goesOn ? TableOk::True : TableOk::False);
  }
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(ExpenseCodeSend, A_cost_that_is_no_number_ends_the_table_of_an_Add_in_a_box_of_its_own) {
  ExpenseCodesHouse house;
  house.Code("A:B", "ExpCost", "'dear'");
  house.Code("NEW:");
  house.Send();
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_EQ(
      house.desk.Boxes()[0].box.text,
      fmt::format("Error in 'AssignExpenseCodeFldValues()' :- {}\r\nError No = 13", ErrorText(error::kConversion)));
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_TRUE(house.Adds().empty());
  EXPECT_EQ(house.ColumnOf("NEW:", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ExpenseCodeSend, A_cost_that_is_no_number_passes_over_the_Mod_of_its_code_alone) {
  ExpenseCodesHouse house;
  house.Linked("A:B", house.SoldAndBought(kOtherChargeItem, "B"), "ExpCost", "'dear'");
  house.Code("NEW:");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{fmt::format("Error #: 13(D) -- \r\n\r\n{}", ErrorText(error::kConversion)) +
                                    ErrorBoxEnd("QBAssignExpCodeFldValues")});
  EXPECT_TRUE(house.Requests("ItemOtherChargeModRq").empty());
  EXPECT_NE(house.ColumnOf("NEW:", "QBLinkID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ExpenseCodeSend, An_error_ends_the_run_with_a_box_of_its_own_and_no_line_in_the_log) {
  ExpenseCodesHouse house({}, "sql 1 raise 0x80040E14 \"Broken.\" UPDATE Expense");
  house.Code("A:B");
  house.Code("C:D");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{"Error in 'MoveExpenseCodesToQB()' :- Broken.\r\nError No = -2147217900"});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(house.Adds().size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
}

}  // namespace
}  // namespace twqb
