// Accounts that arrive ahead of their parents: the parent is brought first, while the row in hand waits.

#include <gtest/gtest.h>

#include "bridge/modTWQBBridge.h"
#include "services/Database.h"
#include "tests/bridge/BridgeHouse.h"
#include "twqb/enTables.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

// Three accounts, each under the one before, the upper two with numbers; a get of one of them alone is narrowed by the
// names that were saved, as a host does it.
class ParentHouse : public BridgeHouse {
 public:
  explicit ParentHouse(HouseOptions options = {}, std::string_view faults = {})
      : BridgeHouse(std::move(options), faults) {
    Connect();
    travel = Add("Travel", {}, "<AccountNumber>6000</AccountNumber>");
    fares = Add("Fares", travel, "<AccountNumber>6010</AccountNumber>");
    rail = Add("Rail", fares);
    Add("Yard");
  }
  std::string Add(std::string_view name, std::string_view parent = {}, std::string_view behind = {}) {
    const auto under =
        parent.empty() ? std::string() : "<ParentRef><ListID>" + std::string(parent) + "</ListID></ParentRef>";
    return TextOf(Company("<AccountAddRq><AccountAdd><Name>" + std::string(name) + "</Name>" + under +
                          "<AccountType>Expense</AccountType>" + std::string(behind) + "</AccountAdd></AccountAddRq>"),
                  "ListID");
  }
  bool GetAlone(std::string_view name, const SavedFilters& flags = {}) {
    auto filters = flags;
    filters.Filter1a = filters.Filter1b = name;
    return GetTableFromQB(enAccounts, filters, ActiveOnly::False, false, nullptr);
  }
  std::string Column(std::string_view listId, std::string_view column) {
    return Scalar("SELECT " + std::string(column) + " FROM AccountList WHERE QBLinkID = '" + std::string(listId) + "'");
  }
  std::string Keys() {
    return Scalar("SELECT group_concat(AccountID, ',') FROM (SELECT AccountID FROM AccountList ORDER BY rowid)");
  }

  std::string travel;
  std::string fares;
  std::string rail;
};

void ExpectAllThree(ParentHouse& house) {
  EXPECT_EQ(house.Column(house.travel, "AccountName"), "Travel");
  EXPECT_EQ(house.Column(house.travel, "ParentAccountID"), "NULL");
  EXPECT_EQ(house.Column(house.fares, "AccountName"), "Fares");
  EXPECT_EQ(house.Column(house.fares, "ParentAccountID"), "6000");
  EXPECT_EQ(house.Column(house.rail, "AccountName"), "Rail");
  EXPECT_EQ(house.Column(house.rail, "ParentAccountID"), "6010");
}

TEST(AccountParent, That_is_missing_is_brought_with_all_above_it_and_the_waiting_rows_are_written_behind_it) {
  ParentHouse house;
  EXPECT_TRUE(house.GetAlone("Rail"));
  EXPECT_EQ(house.Keys(), "6000,6010," + house.rail);
  ExpectAllThree(house);
  EXPECT_EQ(house.Requests("AccountQueryRq").size(), 3U);
  EXPECT_EQ(house.Requests("AccountQueryRq")[1], "<ListID>" + house.fares + "</ListID>");
  EXPECT_EQ(house.Requests("AccountQueryRq")[2], "<ListID>" + house.travel + "</ListID>");
  EXPECT_EQ(Vars().g_TableOk, TableOk::True);
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(AccountParent, Is_sought_on_the_shared_connection_by_the_parents_link_before_and_after_the_pull) {
  ParentHouse house;
  house.traffic.statements.clear();
  EXPECT_TRUE(house.GetAlone("Fares"));
  const auto lookup = "SELECT AccountID FROM AccountList WHERE QBLinkID = '" + house.travel + "';";
  EXPECT_EQ(
      house.traffic.statements,
      (Texts{"SELECT * FROM AccountList;", "SELECT QBLinkID from AccountList WHERE QBLinkID = '" + house.fares + "';",
             lookup, "SELECT * FROM AccountList;",
             "SELECT QBLinkID from AccountList WHERE QBLinkID = '" + house.travel + "';", lookup}));
}

TEST(AccountParent, Of_a_row_that_is_known_is_brought_while_the_get_stands_on_that_row) {
  ParentHouse house;
  house.Sql("INSERT INTO AccountList (AccountID, AccountName) VALUES ('1', 'First')");
  house.Sql("INSERT INTO AccountList (AccountID, AccountName, QBLinkID) VALUES ('R', 'Old', '" + house.rail + "')");
  house.Sql("INSERT INTO AccountList (AccountID, AccountName) VALUES ('9', 'Last')");
  EXPECT_TRUE(house.GetAlone("Rail"));
  EXPECT_EQ(house.Keys(), "1,R,9,6000,6010");
  ExpectAllThree(house);
  EXPECT_EQ(house.Scalar("SELECT AccountName FROM AccountList WHERE AccountID = '1'"), "First");
  EXPECT_EQ(house.Scalar("SELECT AccountName FROM AccountList WHERE AccountID = '9'"), "Last");
}

TEST(AccountParent, Is_brought_only_once_for_two_children) {
  ParentHouse house;
  house.Add("Race", house.fares);
  SavedFilters filters;
  filters.Filter1a = "Race";
  filters.Filter1b = "Rail";
  EXPECT_TRUE(GetTableFromQB(enAccounts, filters, ActiveOnly::False, false, nullptr));
  EXPECT_EQ(house.Requests("AccountQueryRq").size(), 3U);
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM AccountList WHERE ParentAccountID = '6010'"), "2");
}

TEST(AccountParent, Comes_with_no_form_of_its_own) {
  ParentHouse house;
  EXPECT_TRUE(house.GetAlone("Rail"));
  std::size_t shown = 0;
  for (const auto& event : house.desk.FormEvents()) {
    EXPECT_NE(event.state.record, "Travel");
    EXPECT_NE(event.state.record, "Travel:Fares");
    if (event.kind == FormEventKind::Show && event.state.action == "Getting Accounts from QuickBooks...") ++shown;
  }
  EXPECT_EQ(shown, 1U);
}

TEST(AccountParent, Is_brought_though_it_is_inactive_and_active_accounts_alone_are_wanted) {
  ParentHouse house;
  house.Setting("QBGET_", "Accounts(QB)_chkActiveOnly", "1");
  const auto idle =
      SpiedHouse::TextOf(house.Company("<AccountAddRq><AccountAdd><Name>Idle</Name><IsActive>false</IsActive>"
                                       "<AccountType>Expense</AccountType></AccountAdd></AccountAddRq>"),
                         "ListID");
  const auto child = house.Add("Child", idle);
  SavedFilters filters;
  filters.Filter1a = filters.Filter1b = "Child";
  EXPECT_TRUE(GetTableFromQB(enAccounts, filters, ActiveOnly::LookUp, false, nullptr));
  EXPECT_EQ(house.Column(child, "ParentAccountID"), idle);
  EXPECT_EQ(house.Column(idle, "IsInActive"), "-1");
}

TEST(AccountParent, That_QuickBooks_does_not_give_leaves_the_account_without_one) {
  // Found nothing, and refused with a box.
  for (const bool told : {false, true}) {
    ParentHouse house({}, told ? "AccountQueryRq 2 status 3260 Error \"No.\"" : "AccountQueryRq 2 status 500 Warn");
    EXPECT_TRUE(house.GetAlone("Rail"));
    EXPECT_EQ(house.Keys(), house.rail);
    EXPECT_EQ(house.Column(house.rail, "ParentAccountID"), "NULL");
    EXPECT_EQ(house.BoxTexts().size(), told ? 1U : 0U);
    EXPECT_EQ(Vars().g_TableOk, TableOk::True);
  }
}

TEST(AccountParent, That_fails_asks_at_its_own_level_and_after_Yes_the_account_still_comes) {
  ParentHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" AccountList");
  EXPECT_TRUE(house.GetAlone("Fares"));
  EXPECT_EQ(house.Keys(), "6010");
  EXPECT_EQ(house.Column(house.fares, "ParentAccountID"), "NULL");
  EXPECT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(house.Log().back(), "Error in Accounts transfer to Tallywick. Account = Travel");
  // What the level below has left.
  EXPECT_EQ(Vars().g_TableOk, TableOk::GoOn);
}

TEST(AccountParent, That_fails_ends_the_run_of_the_caller_after_No) {
  ParentHouse house({.answers = "no"}, "row 1 raise 0x80040E2F \"Refused.\" AccountList");
  house.Add("Rally", house.fares);
  SavedFilters filters;
  filters.Filter1a = "Rail";
  filters.Filter1b = "Rally";
  EXPECT_FALSE(GetTableFromQB(enAccounts, filters, ActiveOnly::False, false, nullptr));
  // The record in hand is finished, with the parent that could be had.
  EXPECT_EQ(house.Keys(), "6010," + house.rail);
  EXPECT_EQ(house.BoxTexts().back(), "Operation cancelled!");
  EXPECT_EQ(Vars().g_TableOk, TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
}

TEST(AccountParent, Overwrites_nothing_where_the_parent_is_known_under_another_key) {
  ParentHouse house;
  house.Sql("INSERT INTO AccountList (AccountID, AccountName, QBLinkID) VALUES ('T', 'Ours', '" + house.travel + "')");
  EXPECT_TRUE(house.GetAlone("Fares"));
  EXPECT_EQ(house.Column(house.fares, "ParentAccountID"), "T");
  EXPECT_EQ(house.Column(house.travel, "AccountName"), "Ours");
  EXPECT_EQ(house.Requests("AccountQueryRq").size(), 1U);
}

// --- The dispatch ----------------------------------------------------------------------------------------------------

TEST(AccountTransfer, What_was_sent_comes_back_under_its_parents) {
  BridgeHouse house;
  house.Connect();
  house.Sql(
      "INSERT INTO AccountList (AccountID, AccountName, ParentAccountID, IsInActive) VALUES "
      "('1', 'Travel', NULL, 0), ('2', 'Fares', '1', 0), ('3', 'Rail', '2', -1)");
  const auto rows = [&house] {
    return house.Scalar(
        "SELECT group_concat(AccountID || AccountName || ifnull(ParentAccountID, '') || AccountTypeID || IsInActive) "
        "FROM AccountList");
  };
  EXPECT_TRUE(SendTableToQB(enAccounts, {.IgnoreLastSync = true}));
  house.Sql("DELETE FROM AccountList");
  EXPECT_TRUE(GetTableFromQB(enAccounts, {}, ActiveOnly::False, false, nullptr));
  // Without a type they went as other income.
  EXPECT_EQ(rows(), "1Travel150,2Fares1150,3Rail215-1");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(AccountTransfer, A_dependent_get_shows_no_progress_text) {
  ParentHouse house;
  SavedFilters filters;
  filters.Filter2a = house.rail;
  EXPECT_TRUE(GetTableFromQB(enAccounts, filters, ActiveOnly::LookUp, true, nullptr));
  ExpectAllThree(house);
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

}  // namespace
}  // namespace twqb
