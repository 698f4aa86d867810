// The get of accounts: keys, fields, pairs, known parents, errors. Parents that have to be brought are tested where
// they can be, with the dispatch.

#include <gtest/gtest.h>

#include "tests/lists/AccountsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const std::string kQuestion = "Do you want to continue transfering rest of the records?";

// An account as QuickBooks could answer it, with what is beside its names.
std::string Answer(std::string_view fullName, std::string_view fields) {
  const auto name = fullName.substr(fullName.rfind(':') + 1);
  return "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><AccountQueryRs requestID=\"1\" statusCode=\"0\" "
         "statusSeverity=\"Info\" statusMessage=\"Status OK\"><AccountRet><ListID>1-1</ListID>"
         "<TimeCreated>2007-04-05T06:07:08</TimeCreated><TimeModified>2008-03-05T10:00:00</TimeModified>"
         "<EditSequence>1</EditSequence><Name>" +
         std::string(name) + "</Name><FullName>" + std::string(fullName) + "</FullName>" + std::string(fields) +
         "</AccountRet></AccountQueryRs></QBXMLMsgsRs></QBXML>";
}

class AnswerHouse : public AccountsHouse {
 public:
  using AccountsHouse::AccountsHouse;
  void GetAccount(std::string_view fields, std::string_view fullName = "Travel") {
    traffic.canned.emplace_back(Answer(fullName, fields));
    Get();
  }
  std::string Got(std::string_view column) {
    return Scalar("SELECT " + std::string(column) + " FROM AccountList WHERE QBLinkID = '1-1'");
  }
};

// --- Keys ------------------------------------------------------------------------------------------------------------

TEST(AccountGet, A_new_account_gets_its_number_as_key) {
  AccountsHouse house;
  const auto id = house.AddAccount("Travel", "<IsActive>false</IsActive>", "Bank",
                                   "<AccountNumber>1010</AccountNumber><Desc>Day to day</Desc>");
  house.Get();
  EXPECT_EQ(house.Keys(), "1010");
  EXPECT_EQ(house.ColumnOf("1010", "AccountName"), "Travel");
  EXPECT_EQ(house.ColumnOf("1010", "AccountTypeID"), "2");
  EXPECT_EQ(house.ColumnOf("1010", "ParentAccountID"), "NULL");
  EXPECT_EQ(house.ColumnOf("1010", "AccountDesc"), "Day to day");
  EXPECT_EQ(house.ColumnOf("1010", "IsInActive"), "-1");
  EXPECT_EQ(house.ColumnOf("1010", "OpenBalance"), "NULL");
  EXPECT_EQ(house.ColumnOf("1010", "OpenBalanceDate"), "NULL");
  EXPECT_EQ(house.LinkOf("1010"), id);
  EXPECT_EQ(house.ColumnOf("1010", "LastUpdated"), "3/5/2008 3:00:00 PM");
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(AccountGet, An_account_without_a_number_gets_its_ListID_as_key) {
  AccountsHouse house;
  const auto id = house.AddAccount("Travel");
  house.Get();
  EXPECT_EQ(house.Keys(), id);
  EXPECT_EQ(house.LinkOf(id), id);
}

TEST(AccountGet, An_empty_number_is_none) {
  AnswerHouse house;
  house.GetAccount("<AccountNumber></AccountNumber>");
  EXPECT_EQ(house.Keys(), "1-1");
}

TEST(AccountGet, A_number_that_is_a_key_already_fails_its_record_alone) {
  AccountsHouse house({.answers = "yes"});
  house.Account("6000", "Ours");
  house.AddAccount("Fares", {}, "Expense", "<AccountNumber>6000</AccountNumber>");
  house.AddAccount("Tolls", {}, "Expense", "<AccountNumber>6100</AccountNumber>");
  house.Get();
  EXPECT_EQ(house.Keys(), "6000,6100");
  EXPECT_EQ(house.LinkOf("6000"), "NULL");
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveActivitiesToTW")));
  EXPECT_EQ(house.Log(), Texts{"Error in Accounts transfer to Tallywick. Account = Fares"});
}

// --- Fields ----------------------------------------------------------------------------------------------------------

TEST(AccountGet, Junk_in_a_name_becomes_blanks) {
  AnswerHouse house;
  house.GetAccount("", "O'Neil, #1; x");
  EXPECT_EQ(house.Got("AccountName"), "O Neil   1  x");
}

TEST(AccountGet, What_QuickBooks_left_out_keeps_its_column) {
  AnswerHouse house;
  house.Row("AccountID, AccountTypeID, AccountDesc, IsInActive, ParentAccountID, OpenBalance, QBLinkID",
            "'OLD', 9, 'Old', -1, 'P', 5, '1-1'");
  house.GetAccount("");
  EXPECT_EQ(house.Got("AccountID || AccountTypeID || AccountDesc || IsInActive || ParentAccountID || OpenBalance"),
            "OLD9Old-1P5");
  EXPECT_EQ(house.Got("AccountName"), "Travel");
}

struct Range {
  std::string wire;
  std::string stored;
};

class AccountTypeRange : public testing::TestWithParam<Range> {};

TEST_P(AccountTypeRange, Ends_at_0_and_15_and_what_is_outside_is_0) {
  AnswerHouse house;
  house.GetAccount("<AccountType>" + GetParam().wire + "</AccountType>");
  EXPECT_EQ(house.Got("AccountTypeID"), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(AccountGet, AccountTypeRange,
                         testing::Values(Range{"AccountsPayable", "0"}, Range{"OtherIncome", "15"}, Range{"0", "0"},
                                         Range{"15", "15"}, Range{"16", "0"}, Range{"-1", "0"}));

class AccountsActive : public testing::TestWithParam<std::tuple<bool, bool>> {};

TEST_P(AccountsActive, Turn_into_the_reverse_in_new_rows_and_old_ones) {
  const auto& [active, known] = GetParam();
  AnswerHouse house;
  if (known) house.Row("AccountID, IsInActive, QBLinkID", active ? "'OLD', -1, '1-1'" : "'OLD', 0, '1-1'");
  house.GetAccount(active ? "<IsActive>true</IsActive>" : "<IsActive>false</IsActive>");
  EXPECT_EQ(house.Got("IsInActive"), active ? "0" : "-1");
}

INSTANTIATE_TEST_SUITE_P(AccountGet, AccountsActive, testing::Combine(testing::Bool(), testing::Bool()));

TEST(AccountGet, Every_text_is_cut_to_its_column) {
  AccountsHouse house;
  house.Sql("DROP TABLE AccountList");
  house.Sql(
      "CREATE TABLE AccountList (AccountID VARCHAR(3) PRIMARY KEY, AccountName VARCHAR(4), AccountTypeID SMALLINT, "
      "ParentAccountID VARCHAR(2), AccountDesc VARCHAR(5), IsInActive SMALLINT, QBLinkID VARCHAR(40), LastUpdated "
      "DATETIME)");
  const auto parent = house.AddAccount("Travel", {}, "Expense", "<AccountNumber>6000</AccountNumber>");
  house.AddAccount("Größe", "<ParentRef><ListID>" + parent + "</ListID></ParentRef>", "Expense",
                   "<AccountNumber>7010</AccountNumber><Desc>Description</Desc>");
  house.Get();
  EXPECT_EQ(house.Keys(), "600,701");
  EXPECT_EQ(house.ColumnOf("701", "AccountName"), "Größ");
  EXPECT_EQ(house.ColumnOf("701", "AccountDesc"), "Descr");
  EXPECT_EQ(house.ColumnOf("701", "ParentAccountID"), "60");
}

// --- Parents that are here -------------------------------------------------------------------------------------------

TEST(AccountGet, A_sub_account_is_named_by_its_own_name_and_hangs_under_its_parents_key) {
  AccountsHouse house;
  const auto travel = house.AddAccount("Travel", {}, "Expense", "<AccountNumber>6000</AccountNumber>");
  const auto fares = house.AddSubAccount("Fares", travel);
  const auto rail = house.AddSubAccount("Rail", fares);
  house.Get();
  EXPECT_EQ(house.Keys(), "6000," + fares + "," + rail);
  EXPECT_EQ(house.ColumnOf(fares, "AccountName"), "Fares");
  EXPECT_EQ(house.ColumnOf(fares, "ParentAccountID"), "6000");
  EXPECT_EQ(house.ColumnOf(rail, "AccountName"), "Rail");
  EXPECT_EQ(house.ColumnOf(rail, "ParentAccountID"), fares);
  // All came with the one query.
  EXPECT_EQ(house.Requests("AccountQueryRq").size(), 1U);
}

TEST(AccountGet, The_parent_of_a_known_row_is_written_anew) {
  AccountsHouse house;
  const auto travel = house.AddAccount("Travel");
  const auto fares = house.AddSubAccount("Fares", travel);
  house.Account("6000", "Travel", "QBLinkID", "'" + travel + "'");
  house.Account("6010", "Fares", "QBLinkID, ParentAccountID", "'" + fares + "', 'WRONG'");
  house.Get();
  EXPECT_EQ(house.ColumnOf("6010", "ParentAccountID"), "6000");
}

TEST(AccountGet, A_broken_look_for_the_parent_fails_its_record_alone) {
  AccountsHouse house({.answers = "yes"}, "sql 1 raise 0x80040E14 \"Broken.\" SELECT AccountID");
  const auto travel = house.AddAccount("Travel");
  house.AddSubAccount("Fares", travel);
  const auto yard = house.AddAccount("Yard");
  house.Get();
  EXPECT_EQ(house.Keys(), travel + "," + yard);
  EXPECT_EQ(house.Log(), Texts{"Error in Accounts transfer to Tallywick. Account = Travel:Fares"});
  EXPECT_EQ(Vars().g_CnRefCount, 1);
}

// --- Pairs -----------------------------------------------------------------------------------------------------------

TEST(AccountGet, A_known_account_updates_its_row_whatever_the_key) {
  AccountsHouse house;
  const auto id = house.AddAccount("Travel", {}, "Expense", "<AccountNumber>6000</AccountNumber>");
  house.Account("OLD", "Journeys", "QBLinkID, LastUpdated, OpenBalance", "'" + id + "', '2030-01-01', 7");
  house.Get();
  EXPECT_EQ(house.Keys(), "OLD");
  EXPECT_EQ(house.ColumnOf("OLD", "AccountName"), "Travel");
  EXPECT_EQ(house.ColumnOf("OLD", "OpenBalance"), "7");
  EXPECT_EQ(house.ColumnOf("OLD", "LastUpdated"), "3/5/2008 3:00:00 PM");
}

struct Meeting {
  std::string what;
  std::string lastUpdated;
  bool gets;
};

class AccountMeetings : public testing::TestWithParam<Meeting> {};

// QuickBooks changed the account at three o'clock UTC, ten by the wall clock.
TEST_P(AccountMeetings, Go_to_the_later_side_and_without_a_date_to_QuickBooks) {
  AccountsHouse house;
  const auto id = house.AddAccount("Travel");
  house.Account("6000", "Journeys", "QBLinkID, LastUpdated", "'" + id + "', " + GetParam().lastUpdated);
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.ColumnOf("6000", "AccountName"), GetParam().gets ? "Travel" : "Journeys");
  EXPECT_EQ(Outcome(), TableOk::True);
}

INSTANTIATE_TEST_SUITE_P(AccountGet, AccountMeetings,
                         testing::Values(Meeting{"Tie", "'2008-03-05 15:00:00'", true},
                                         Meeting{"BillingLater", "'2008-03-05 15:00:01'", false},
                                         Meeting{"QuickBooksLater", "'2008-03-05 14:59:59'", true},
                                         Meeting{"NoDate", "NULL", true}),
                         [](const auto& test) { return test.param.what; });

TEST(AccountGet, With_Never_a_known_account_stays_and_a_new_one_comes) {
  AccountsHouse house;
  const auto id = house.AddAccount("Travel");
  const auto yard = house.AddAccount("Yard");
  house.Account("6000", "Journeys", "QBLinkID", "'" + id + "'");
  house.Get({.never = true, .mostRecent = true});
  EXPECT_EQ(house.ColumnOf("6000", "AccountName"), "Journeys");
  EXPECT_EQ(house.Keys(), "6000," + yard);
}

// --- The form --------------------------------------------------------------------------------------------------------

TEST(AccountGet, One_account_alone_shows_the_form_with_its_full_name) {
  AccountsHouse house;
  house.AddAccount("Travel");
  house.Get();
  EXPECT_EQ(house.FormTexts(), Texts{"Getting Accounts from QuickBooks..."});
  EXPECT_EQ(house.desk.FormEvents().back().state.record, "Travel");
}

TEST(AccountGet, A_dependent_run_shows_no_form_and_takes_no_notice_of_a_cancel) {
  AccountsHouse house;
  const auto travel = house.AddAccount("Travel");
  const auto yard = house.AddAccount("Yard");
  Vars().g_Cancelled = true;
  house.Take(house.Read(), Dependent::Yes);
  EXPECT_EQ(house.Keys(), travel + "," + yard);
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(Vars().g_Cancelled);
}

TEST(AccountGet, Without_progress_bar_there_is_no_form) {
  AccountsHouse house;
  house.AddAccount("Travel");
  Vars().g_NoProgressBar = true;
  house.Get();
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(AccountGet, Nothing_to_take_over_is_a_good_end) {
  AccountsHouse house;
  house.Take({});
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

// --- The shared connection -------------------------------------------------------------------------------------------

TEST(AccountGet, Each_account_written_opens_the_shared_connection_anew) {
  // The house has opened it once, and the connection of the run's own counts too.
  AccountsHouse house({}, "connect 3 raise 0x80004005 \"Too many.\"");
  house.AddAccount("Travel");
  house.Get();
  ASSERT_FALSE(house.BoxTexts().empty());
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("gp_cnGlobal80")));
}

TEST(AccountGet, The_shared_connection_is_open_and_counted_once_after_a_get) {
  AccountsHouse house;
  house.AddAccount("Travel");
  house.AddAccount("Yard");
  house.Get();
  EXPECT_EQ(Vars().g_CnRefCount, 1);
  EXPECT_EQ(GlobalConnection().State(), ado::ObjectState::Open);
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(AccountGet, Yes_after_an_error_goes_on_with_the_next_record) {
  AccountsHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" AccountList");
  house.AddAccount("Travel");
  const auto yard = house.AddAccount("Yard");
  house.Get();
  EXPECT_EQ(
      house.BoxTexts(),
      (Texts{"Error #: -2147217873(80040E2F) -- \r\n\r\nRefused." + ErrorBoxEnd("MoveActivitiesToTW"), kQuestion}));
  EXPECT_EQ(house.desk.Boxes()[1].box.title, "Question");
  EXPECT_EQ(house.Log(), Texts{"Error in Accounts transfer to Tallywick. Account = Travel"});
  EXPECT_EQ(house.Keys(), yard);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(AccountGet, Yes_after_an_error_in_the_last_record_says_so_in_the_outcome) {
  AccountsHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" AccountList");
  house.AddAccount("Travel");
  house.Get();
  EXPECT_EQ(Outcome(), TableOk::GoOn);
}

TEST(AccountGet, No_after_an_error_cancels_the_operation) {
  AccountsHouse house({.answers = "no"}, "row 1 raise 0x80040E2F \"Refused.\" AccountList");
  house.AddAccount("Travel");
  house.AddAccount("Yard");
  house.Get();
  EXPECT_EQ(house.BoxTexts().back(), "Operation cancelled!");
  EXPECT_EQ(house.Keys(), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

}  // namespace
}  // namespace twqb
