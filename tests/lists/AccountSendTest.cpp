// The send of accounts: what is added and what is left alone, parents, refusals, errors.

#include <gtest/gtest.h>

#include "tests/lists/AccountsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const std::string kRest = "Do you want to transfer rest of the records?";
constexpr std::string_view kNeverThere = "'80000FFF-1'";

std::string Line(std::string_view key) { return "\r\n\r\n[Account ID = \"" + std::string(key) + "\"]"; }

// --- Adding ----------------------------------------------------------------------------------------------------------

TEST(AccountSend, A_new_account_is_added_and_its_link_and_date_are_written_back) {
  AccountsHouse house;
  house.Account("6000", "Travel");
  house.traffic.statements.clear();
  house.Send();
  const auto id = house.LinkOf("6000");
  EXPECT_EQ(house.AccountField(id, "FullName"), "Travel");
  ASSERT_EQ(house.traffic.statements.size(), 3U);
  EXPECT_EQ(house.traffic.statements[1], "UPDATE AccountList SET QBLinkID = '" + id + "' WHERE AccountID = '6000';");
  EXPECT_EQ(house.traffic.statements[2],
            "UPDATE AccountList SET LastUpdated = '03/05/2008 15:00:00' WHERE AccountID = '6000';");
  EXPECT_EQ(house.ColumnOf("6000", "LastUpdated"), "3/5/2008 3:00:00 PM");
  EXPECT_EQ(Vars().g_NewQBLinkID, id);
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(AccountSend, A_new_account_that_has_a_date_keeps_it) {
  AccountsHouse house;
  house.Account("6000", "Travel", "LastUpdated", "'2008-01-02 03:04:05'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("6000", "LastUpdated"), "1/2/2008 3:04:05 AM");
}

TEST(AccountSend, Nothing_about_a_linked_account_is_ever_sent_whatever_the_flags_and_dates) {
  for (const bool never : {false, true}) {
    for (const bool mostRecent : {false, true}) {
      AccountsHouse house;
      const auto id = house.AddAccount("Travel");
      house.Account("6000", "Journeys", "QBLinkID, LastUpdated", "'" + id + "', '2030-01-01'");
      house.Account("6100", "Fuel");
      house.Send({.never = never, .mostRecent = mostRecent});
      EXPECT_EQ(house.AccountField(id, "Name"), "Travel");
      EXPECT_EQ(house.Requests("AccountAddRq").size(), 1U);
      EXPECT_EQ(house.Sent("6100", "Name"), "Fuel");
      EXPECT_EQ(house.LinkOf("6000"), id);
      EXPECT_EQ(Outcome(), TableOk::True);
    }
  }
}

TEST(AccountSend, A_linked_account_is_left_alone_in_a_QuickBooks_of_version_1_too) {
  AccountsHouse house;
  house.Account("6000", "Journeys", "QBLinkID", "'" + house.AddAccount("Travel") + "'");
  Vars().g_QBMajorVer = 1;
  Vars().g_QBMinorVer = 1;
  house.Send();
  EXPECT_TRUE(house.Requests("AccountAddRq").empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(AccountSend, An_account_that_QuickBooks_deleted_is_added_again_under_a_new_link) {
  AccountsHouse house;
  const auto id = house.AddAccount("Travel");
  house.Account("6000", "Travel", "QBLinkID, LastUpdated", "'" + id + "', '2008-01-02 03:04:05'");
  house.DeleteAccount(id);
  house.Send();
  EXPECT_NE(house.LinkOf("6000"), id);
  EXPECT_EQ(house.Sent("6000", "Name"), "Travel");
  EXPECT_EQ(house.ColumnOf("6000", "LastUpdated"), "1/2/2008 3:04:05 AM");
}

TEST(AccountSend, The_form_shows_the_names) {
  AccountsHouse house;
  house.Account("6000", "Travel");
  house.Send();
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Accounts to QuickBooks..."});
  ASSERT_GE(house.desk.FormEvents().size(), 2U);
  EXPECT_EQ(house.desk.FormEvents()[house.desk.FormEvents().size() - 2].state.record, "Travel");
}

// --- Parents ---------------------------------------------------------------------------------------------------------

TEST(AccountSend, A_parent_ahead_of_its_child_gets_a_linked_child) {
  AccountsHouse house;
  house.Account("6000", "Travel");
  house.Account("6010", "Fares", "ParentAccountID", "'6000'");
  house.Account("6011", "Rail", "ParentAccountID", "'6010'");
  house.Send();
  EXPECT_EQ(house.Sent("6010", "FullName"), "Travel:Fares");
  EXPECT_EQ(house.Sent("6011", "FullName"), "Travel:Fares:Rail");
}

TEST(AccountSend, A_child_ahead_of_its_parent_goes_to_the_top_level) {
  AccountsHouse house;
  house.Account("6010", "Fares", "ParentAccountID", "'6000'");
  house.Account("6000", "Travel");
  house.Send();
  EXPECT_EQ(house.Sent("6010", "FullName"), "Fares");
  EXPECT_EQ(house.Sent("6010", "Sublevel"), "0");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(AccountSend, An_account_whose_parent_is_not_there_goes_to_the_top_level) {
  for (const std::string_view parent : {"'GONE'", "''"}) {
    AccountsHouse house;
    house.Account("6010", "Fares", "ParentAccountID", parent);
    house.Send();
    EXPECT_EQ(house.Sent("6010", "FullName"), "Fares");
  }
}

TEST(AccountSend, Half_a_second_passes_ahead_of_each_look_for_a_parent_and_of_no_other) {
  AccountsHouse house;
  house.Account("6000", "Travel");
  house.Account("6010", "Fares", "ParentAccountID", "'6000'");
  house.Account("6020", "Fuel", "ParentAccountID", "'GONE'");
  house.Account("6030", "Tolls", "QBLinkID, ParentAccountID", "'" + house.AddAccount("Tolls") + "', '6000'");
  house.Send();
  ASSERT_EQ(house.clock.pauses.size(), 2U);
  for (const auto& [parent, pause] : {std::pair{"6000", house.clock.pauses[0]}, {"GONE", house.clock.pauses[1]}}) {
    EXPECT_EQ(pause.milliseconds, 500);
    EXPECT_EQ(house.traffic.statements.at(pause.statements),
              "SELECT QBLINKID FROM AccountList WHERE AccountID = '" + std::string(parent) + "';");
  }
}

TEST(AccountSend, An_account_whose_parent_could_not_be_looked_for_is_not_sent_at_all) {
  AccountsHouse house({}, "sql 1 raise 0x80040E14 \"Broken.\" SELECT QBLINKID");
  house.Account("6010", "Fares", "ParentAccountID", "'6000'");
  house.Send();
  EXPECT_TRUE(house.Requests("AccountAddRq").empty());
  EXPECT_EQ(house.Log(), Texts{"Error in Account transfer to QB. Account ID = 6010"});
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_EQ(Vars().g_CnRefCount, 1);
}

// --- Refusals --------------------------------------------------------------------------------------------------------

TEST(AccountSend, A_name_in_use_is_logged_and_the_next_run_tries_again) {
  AccountsHouse house;
  house.AddAccount("travel");
  house.Account("6000", "Travel");
  house.Account("6100", "Fuel");
  house.Send();
  EXPECT_EQ(house.Log(), Texts{"Adding Account : 'Travel' already exists in QB"});
  EXPECT_EQ(house.LinkOf("6000"), "NULL");
  EXPECT_EQ(house.ColumnOf("6000", "LastUpdated"), "NULL");
  EXPECT_NE(house.LinkOf("6100"), "NULL");
  EXPECT_EQ(house.Requests("AccountAddRq").size(), 2U);
  EXPECT_EQ(Outcome(), TableOk::True);
  house.Send();
  EXPECT_EQ(house.Log().size(), 2U);
  EXPECT_EQ(house.Requests("AccountAddRq").size(), 3U);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(AccountSend, A_name_in_use_is_logged_uncut) {
  AccountsHouse house;
  const std::string name(40, 'n');
  house.AddAccount(name.substr(0, 31));
  house.Account("6000", name);
  house.Send();
  EXPECT_EQ(house.Log(), Texts{"Adding Account : '" + name + "' already exists in QB"});
}

TEST(AccountSend, An_invalid_reference_is_told_and_leaves_the_rest_unsent) {
  AccountsHouse house({}, "AccountAddRq 1 status 3140 Error \"No such account.\"");
  house.Account("6000", "Travel");
  house.Account("6100", "Fuel");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Invalid Reference.\r\n\r\nQuickBooks has reported the following error: -\r\nNo such account.\r\n"
                  "(Error Code = 3140\r\nSeverity: Error)\r\n\r\nSuggestion: -\r\n"
                  "If this table needs an account, please choose a valid account in the\r\nSync Settings Form."});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::None);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::Ok);
  EXPECT_EQ(house.LinkOf("6000"), "NULL");
  EXPECT_EQ(house.Requests("AccountAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_FALSE(house.desk.Form());
  EXPECT_TRUE(house.Log().empty());
}

class AccountRefusals : public testing::TestWithParam<std::tuple<int, bool>> {};

TEST_P(AccountRefusals, Are_told_in_one_box_and_asked_about_in_another) {
  const auto& [status, goesOn] = GetParam();
  AccountsHouse house({.answers = goesOn ? "yes" : "no"},
                      "AccountAddRq 1 status " + std::to_string(status) + " Error \"No.\"");
  house.Account("6000", "Travel");
  house.Account("6100", "Fuel");
  house.Send();
  Texts boxes = {RefusalText("No.", status, "Error") + Line("6000"), kRest};
  if (!goesOn) boxes.emplace_back("Operation cancelled!");
  EXPECT_EQ(house.BoxTexts(), boxes);
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::Ok);
  EXPECT_EQ(house.desk.Boxes()[1].box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(house.LinkOf("6000"), "NULL");
  EXPECT_EQ(house.LinkOf("6100") != "NULL", goesOn);
  EXPECT_EQ(Outcome(), goesOn ? TableOk::True : TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
}

INSTANTIATE_TEST_SUITE_P(AccountSend, AccountRefusals,
                         testing::Combine(testing::Values(3120, 3180, 3240), testing::Bool()), [](const auto& test) {
                           return "Status_" + std::to_string(std::get<0>(test.param)) +
                                  (std::get<1>(test.param) ? "_Yes" : "_No");
                         });

TEST(AccountSend, A_parent_that_QuickBooks_deleted_or_never_had_is_a_refusal_like_another) {
  for (const bool deleted : {true, false}) {
    AccountsHouse house({.answers = "yes"});
    const auto id = house.AddAccount("Travel");
    if (deleted) house.DeleteAccount(id);
    house.Account("6010", "Fares", "ParentAccountID", "'6000'");
    house.Account("6000", "Travel", "QBLinkID", deleted ? "'" + id + "'" : std::string(kNeverThere));
    house.Send();
    ASSERT_EQ(house.BoxTexts().size(), 2U);
    EXPECT_NE(house.BoxTexts()[0].find(deleted ? "Error Code: 3240" : "Error Code: 3130"), std::string::npos)
        << house.BoxTexts()[0];
    EXPECT_EQ(house.LinkOf("6010"), "NULL");
  }
}

TEST(AccountSend, Two_accounts_with_one_number_in_QuickBooks_are_a_refusal_like_another) {
  AccountsHouse house({.answers = "yes"});
  house.AddAccount("Fares", {}, "Expense", "<AccountNumber>6000</AccountNumber>");
  house.Account("6000", "Travel");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_NE(house.BoxTexts()[0].find("Error Code: 3180"), std::string::npos);
  EXPECT_TRUE(house.Log().empty());
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(AccountSend, An_error_ends_the_run_under_the_name_of_the_activities_routine) {
  AccountsHouse house({}, "sql 1 raise 0x80040E14 \"Broken.\" UPDATE AccountList");
  house.Account("6000", "Travel");
  house.Account("6100", "Fuel");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Error #: -2147217900(80040E14) -- \r\n\r\nBroken." + ErrorBoxEnd("MoveActivityToQB")});
  EXPECT_EQ(house.Log(), Texts{"Error in Account transfer to QB. Account ID = 6000"});
  EXPECT_EQ(house.Requests("AccountAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

TEST(AccountSend, A_cancel_finishes_the_account_in_hand_first) {
  AccountsHouse house({.answers = "cancel after 1\nyes"});
  house.Account("6000", "Travel");
  house.Account("6100", "Fuel");
  house.Send();
  EXPECT_EQ(house.BoxTexts().back(), "Operation cancelled!");
  EXPECT_NE(house.LinkOf("6000"), "NULL");
  EXPECT_EQ(house.LinkOf("6100"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

}  // namespace
}  // namespace twqb
