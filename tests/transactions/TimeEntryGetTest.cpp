// The get of time entries: what comes, what is passed over, columns, rates, errors.

#include <gtest/gtest.h>

#include "tests/transactions/TimeEntriesHouse.h"

namespace twqb {
namespace {

// A house to which the records that QuickBooks returns are known.
class KnownHouse : public TimeEntriesHouse {
 public:
  explicit KnownHouse(HouseOptions options = {}, std::string_view faults = {})
      : TimeEntriesHouse(std::move(options), faults) {
    LinkAll();
  }
};

std::string Count(TimeEntriesHouse& house) { return house.Scalar("SELECT COUNT(*) FROM TimeEntry"); }

// --- Columns ---------------------------------------------------------------------------------------------------------

TEST(TimeEntryGet, A_record_becomes_a_row_with_every_column) {
  KnownHouse house;
  house.Sql("UPDATE Employee SET EmpBillRate = 95.5, EmpCostRate = 40.25");
  house.GetReturned({{.behind = "<Notes>Plans</Notes><IsBillable>false</IsBillable><IsBilled>true</IsBilled>"}});
  const std::pair<std::string_view, std::string_view> columns[] = {{"TEDate", "3/4/2008"},
                                                                   {"ProjectID", "ROOF:"},
                                                                   {"ProjectName", "The roof"},
                                                                   {"EmployeeID", "AL"},
                                                                   {"ActivityID", "DESIGN:"},
                                                                   {"TEHours", "2.5"},
                                                                   {"aHours", "2.5"},
                                                                   {"TEDescription", "Plans"},
                                                                   {"TEMemo", "Plans"},
                                                                   {"TEMemoExists", "-1"},
                                                                   {"TEBill", "0"},
                                                                   {"TEBillStatus", "B"},
                                                                   {"TEBillRate", "95.5"},
                                                                   {"TECostRate", "40.25"},
                                                                   {"TEPosted", "-1"},
                                                                   {"TETax1", "0"},
                                                                   {"TETax2", "0"},
                                                                   {"TETax3", "0"},
                                                                   {"LastUpdated", "3/5/2008 3:00:00 PM"}};
  for (const auto& [column, value] : columns) EXPECT_EQ(house.Got(column), value) << column;
  const auto key = house.Got("TEID");
  EXPECT_EQ(key.size(), 38U);
  EXPECT_TRUE(key.starts_with('{') && key.ends_with('}')) << key;
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
}

TEST(TimeEntryGet, Every_row_has_a_key_of_its_own) {
  KnownHouse house;
  house.GetReturned({{.txnId = "1-1"}, {.txnId = "2-1"}});
  EXPECT_NE(house.Got("TEID", "1-1"), house.Got("TEID", "2-1"));
}

class Hours : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(Hours, Are_hours_and_minutes_and_seconds_are_dropped) {
  KnownHouse house;
  house.GetReturned({{.duration = GetParam().first}});
  EXPECT_EQ(house.Got("TEHours"), GetParam().second);
  EXPECT_EQ(house.Got("aHours"), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(TimeEntryGet, Hours,
                         testing::Values(std::pair{"PT2H30M59S", "2.5"}, std::pair{"PT7H45M0S", "7.75"},
                                         std::pair{"PT24H0M0S", "24"}, std::pair{"PT0H0M59S", "0"},
                                         std::pair{"PT0H1M0S", "0.0166666666666667"}, std::pair{"PT8H", "8"},
                                         std::pair{"PT45M", "0.75"}, std::pair{"", "0"}),
                         [](const auto& test) { return "Case" + std::to_string(test.index); });

struct Billing {
  std::string name;
  std::string behind;
  std::string billable;
  std::string status;
};

class BillingOfARecord : public testing::TestWithParam<Billing> {};

TEST_P(BillingOfARecord, Is_billable_and_not_billed_unless_the_record_says_otherwise) {
  KnownHouse house;
  house.GetReturned({{.behind = GetParam().behind}});
  EXPECT_EQ(house.Got("TEBill"), GetParam().billable);
  EXPECT_EQ(house.Got("TEBillStatus"), GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(
    TimeEntryGet, BillingOfARecord,
    testing::Values(Billing{"Neither", "", "-1", "N"}, Billing{"Billable", "<IsBillable>true</IsBillable>", "-1", "N"},
                    Billing{"NotBillable", "<IsBillable>false</IsBillable>", "0", "N"},
                    Billing{"Billed", "<IsBilled>true</IsBilled>", "-1", "B"},
                    Billing{"NotBilled", "<IsBillable>true</IsBillable><IsBilled>false</IsBilled>", "-1", "N"}),
    [](const auto& test) { return test.param.name; });

TEST(TimeEntryGet, A_long_note_is_whole_in_the_memo_and_cut_in_the_description) {
  KnownHouse house;
  const std::string note(300, 'n');
  house.GetReturned({{.behind = "<Notes>" + note + "</Notes>"}});
  EXPECT_EQ(house.Got("TEDescription"), note.substr(0, 255));
  EXPECT_EQ(house.Got("TEMemo"), note);
  EXPECT_EQ(house.Got("TEMemoExists"), "-1");
}

TEST(TimeEntryGet, Without_notes_the_name_of_the_item_is_the_description_and_there_is_no_memo) {
  KnownHouse house;
  const std::string name(300, 'i');
  house.GetReturned({{.item = "<ListID>A-1</ListID><FullName>" + name + "</FullName>"}});
  EXPECT_EQ(house.Got("TEDescription"), name.substr(0, 255));
  EXPECT_EQ(house.Got("TEMemo"), "NULL");
  EXPECT_EQ(house.Got("TEMemoExists"), "0");
}

TEST(TimeEntryGet, The_rate_and_wage_item_of_a_record_are_not_read) {
  KnownHouse house;
  house.Sql("UPDATE Employee SET EmpBillRate = 95.5, EmpCostRate = 40.25");
  house.GetReturned({{.behind = "<PayrollItemWageRef><FullName>Other</FullName></PayrollItemWageRef>"}});
  EXPECT_EQ(house.Got("TEBillRate"), "95.5");
  EXPECT_TRUE(house.Statements("SELECT PayrollItem").empty());
}

// --- Rates -----------------------------------------------------------------------------------------------------------

struct Rates {
  std::string name;
  std::string employee;  // as SQL expressions; "raise" where the look-up fails
  std::string activity;
  std::string stored;
};

class RatesOfARow : public testing::TestWithParam<std::tuple<Rates, bool>> {};

TEST_P(RatesOfARow, Are_the_employees_unless_these_are_0_or_1_and_the_activity_has_others) {
  const auto& [rates, isBill] = GetParam();
  const std::string ofEmployee = isBill ? "EmpBillRate" : "EmpCostRate";
  const std::string ofActivity = isBill ? "AC_BillRate" : "AC_CostRate";
  const auto broken = [](const std::string& rate, const std::string& column) {
    return rate == "raise" ? Breaks("SELECT " + column) : std::string();
  };
  KnownHouse house({}, broken(rates.employee, ofEmployee) + broken(rates.activity, ofActivity));
  const auto value = [](const std::string& rate) { return rate == "raise" ? "70" : rate; };
  house.Sql("UPDATE Employee SET EmpBillRate = 11, EmpCostRate = 12");
  house.Sql("UPDATE Activity SET AC_BillRate = 13, AC_CostRate = 14");
  house.Sql("UPDATE Employee SET " + ofEmployee + " = " + value(rates.employee));
  house.Sql("UPDATE Activity SET " + ofActivity + " = " + value(rates.activity));
  house.GetReturned({Returned{}});
  EXPECT_EQ(house.Got(isBill ? "TEBillRate" : "TECostRate"), rates.stored);
  EXPECT_EQ(house.Got(isBill ? "TECostRate" : "TEBillRate"), isBill ? "12" : "11");
  const bool asksActivity = rates.employee != "95.5" && rates.employee != "-1" && rates.employee != "0.5";
  EXPECT_TRUE(house.Asked("SELECT " + ofEmployee + " FROM Employee WHERE QBLINKID = 'E-1';"));
  EXPECT_EQ(house.Asked("SELECT " + ofActivity + " FROM Activity WHERE ActivityID = 'DESIGN:';"), asksActivity);
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(
    TimeEntryGet, RatesOfARow,
    testing::Combine(testing::Values(Rates{"True", "95.5", "80", "95.5"}, Rates{"BelowOne", "0.5", "80", "0.5"},
                                     Rates{"Negative", "-1", "80", "-1"}, Rates{"Zero", "0", "80", "80"},
                                     Rates{"ZeroAndZero", "0", "0", "0"}, Rates{"ZeroAndNull", "0", "NULL", "0"},
                                     Rates{"One", "1", "80", "80"}, Rates{"OneAndZero", "1", "0", "1"},
                                     Rates{"OneAndNull", "1", "NULL", "1"}, Rates{"OneAndOne", "1", "1", "1"},
                                     Rates{"ZeroAndOne", "0", "1", "1"}, Rates{"Null", "NULL", "80", "80"},
                                     Rates{"NullAndZero", "NULL", "0", "1"}, Rates{"NullAndNull", "NULL", "NULL", "1"},
                                     Rates{"Broken", "raise", "80", "80"}, Rates{"BrokenAndZero", "raise", "0", "1"},
                                     Rates{"ZeroAndBroken", "0", "raise", "0"},
                                     Rates{"BrokenAndBroken", "raise", "raise", "1"}),
                     testing::Bool()),
    [](const auto& test) { return std::get<0>(test.param).name + (std::get<1>(test.param) ? "_Bill" : "_Cost"); });

// Keys stand in the statements as they are.
TEST(TimeEntryGet, The_rates_of_an_activity_with_an_apostrophe_in_the_key_can_not_be_looked_up) {
  KnownHouse house;
  house.Sql("UPDATE Activity SET ActivityID = 'ANN''S:', AC_BillRate = 80, AC_CostRate = 70");
  house.Sql("UPDATE Employee SET EmpBillRate = 0, EmpCostRate = 1");
  house.GetReturned({Returned{}});
  EXPECT_EQ(house.Got("ActivityID"), "ANN'S:");
  EXPECT_EQ(house.Got("TEBillRate"), "0");
  EXPECT_EQ(house.Got("TECostRate"), "1");
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- What is here already, or is not known here ----------------------------------------------------------------------

TEST(TimeEntryGet, An_entry_that_is_here_is_left_as_it_is) {
  KnownHouse house;
  house.Row("TEID, QBLinkID, TEHours, TEBillStatus, LastUpdated", "'T1', '1-1', 9, 'N', '2000-01-01'");
  house.GetReturned({{.behind = "<IsBilled>true</IsBilled>"}});
  EXPECT_EQ(Count(house), "1");
  EXPECT_EQ(house.Got("TEHours"), "9");
  EXPECT_EQ(house.Got("TEBillStatus"), "N");
  EXPECT_EQ(house.Got("LastUpdated"), "1/1/2000");
  EXPECT_TRUE(house.Asked("SELECT QBLinkID from TimeEntry WHERE QBLinkID = '1-1';"));
  EXPECT_TRUE(house.Statements("SELECT ProjectID, ProjectName").empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

const std::string kProjectLook = "SELECT ProjectID, ProjectName FROM Project WHERE QBLINKID = 'P-1';";
const std::string kActivityLook = "SELECT ActivityID FROM Activity WHERE QBLINKID = 'A-1';";
const std::string kEmployeeLook = "SELECT EmployeeID FROM Employee WHERE QBLINKID = 'E-1';";

Texts Looks(const TimeEntriesHouse& house) {
  Texts looks;
  for (const auto& statement : house.traffic.statements) {
    if (statement == kProjectLook || statement == kActivityLook || statement == kEmployeeLook) {
      looks.push_back(statement);
    }
  }
  return looks;
}

struct Unknown {
  std::string table;
  std::string key;
  bool fails;  // the look-up, where the row is there
  Texts looks;
};

class UnknownHere : public testing::TestWithParam<Unknown> {};

TEST_P(UnknownHere, A_record_is_passed_over_without_a_word) {
  const auto& unknown = GetParam();
  const auto select = "SELECT " + unknown.table + "ID" + (unknown.table == "Project" ? ", ProjectName" : "") + " FROM ";
  KnownHouse house({}, unknown.fails ? Breaks(select) : "");
  if (!unknown.fails) house.LinkTo(unknown.table, unknown.key, "OTHER");
  house.GetReturned({{.txnId = "1-1"}});
  EXPECT_EQ(Looks(house), unknown.looks);
  EXPECT_EQ(Count(house), "0");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
  // It is no obstacle to the next one.
  house.LinkAll();
  house.GetReturned({{.txnId = "2-1"}});
  EXPECT_EQ(house.Got("ProjectID", "2-1"), "ROOF:");
}

INSTANTIATE_TEST_SUITE_P(TimeEntryGet, UnknownHere,
                         testing::Values(Unknown{"Project", "ROOF:", false, {kProjectLook}},
                                         Unknown{"Project", "ROOF:", true, {kProjectLook}},
                                         Unknown{"Activity", "DESIGN:", false, {kProjectLook, kActivityLook}},
                                         Unknown{"Activity", "DESIGN:", true, {kProjectLook, kActivityLook}},
                                         Unknown{"Employee", "AL", false, {kProjectLook, kActivityLook, kEmployeeLook}},
                                         Unknown{"Employee", "AL", true, {kProjectLook, kActivityLook, kEmployeeLook}}),
                         [](const auto& test) {
                           return test.param.table + (test.param.fails ? "_Broken" : "_Missing");
                         });

TEST(TimeEntryGet, A_record_without_a_customer_or_without_an_employee_is_passed_over_without_a_word) {
  KnownHouse house;
  house.GetReturned({{.txnId = "1-1", .customer = ""}, {.txnId = "2-1", .entity = ""}, {.txnId = "3-1"}});
  EXPECT_EQ(house.Got("TEID", "1-1"), "(no row)");
  EXPECT_EQ(house.Got("TEID", "2-1"), "(no row)");
  EXPECT_EQ(house.Got("EmployeeID", "3-1"), "AL");
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(TimeEntryGet, A_record_without_an_item_looks_no_activity_up_and_comes_without_one) {
  KnownHouse house;
  house.GetReturned({{.item = ""}});
  EXPECT_EQ(Looks(house), (Texts{kProjectLook, kEmployeeLook}));
  EXPECT_EQ(house.Got("EmployeeID"), "AL");
  EXPECT_EQ(house.Got("ActivityID"), "");
  EXPECT_EQ(house.Got("TEDescription"), "");
}

// --- Customers that are pulled first ---------------------------------------------------------------------------------

TEST(TimeEntryGet, Time_on_a_customer_pulls_it_as_client_and_then_as_project) {
  TimeEntriesHouse house;
  const auto txn = house.Track(house.client);
  house.Get();
  EXPECT_EQ(house.Requests("CustomerQueryRq"),
            (Texts{"<ListID>" + house.client + "</ListID>", "<ListID>" + house.client + "</ListID>"}));
  EXPECT_EQ(house.Scalar("SELECT ClientID FROM Client WHERE QBLinkID = '" + house.client + "'"), "Acme");
  const auto project = house.Scalar("SELECT ProjectID FROM Project WHERE QBLinkID = '" + house.client + "'");
  EXPECT_NE(project, "(no row)");
  EXPECT_EQ(house.Got("ProjectID", txn), project);
  std::size_t client = 0;
  std::size_t projects = 0;
  for (std::size_t i = 0; i < house.traffic.statements.size(); ++i) {
    if (client == 0 && house.traffic.statements[i].starts_with("SELECT * FROM Client")) client = i;
    if (projects == 0 && house.traffic.statements[i].starts_with("SELECT * FROM Project")) projects = i;
  }
  EXPECT_LT(client, projects);
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(TimeEntryGet, Time_on_a_job_pulls_nothing) {
  TimeEntriesHouse house;
  const auto txn = house.Track(house.job);
  house.Get();
  EXPECT_TRUE(house.Requests("CustomerQueryRq").empty());
  EXPECT_EQ(house.Got("ProjectID", txn), "ROOF:");
}

TEST(TimeEntryGet, A_customer_is_pulled_for_an_entry_that_is_here_as_well) {
  TimeEntriesHouse house;
  const auto txn = house.Track(house.client);
  house.Row("TEID, QBLinkID, TEHours", "'T1', '" + txn + "', 9");
  house.Get();
  EXPECT_EQ(house.Requests("CustomerQueryRq").size(), 2U);
  EXPECT_EQ(house.Got("TEHours", txn), "9");
}

TEST(TimeEntryGet, What_was_sent_is_not_brought_back) {
  TimeEntriesHouse house;
  house.Entry("T1");
  house.Send();
  house.Get();
  EXPECT_EQ(Count(house), "1");
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- On the way ------------------------------------------------------------------------------------------------------

TEST(TimeEntryGet, No_records_are_a_good_end_that_shows_nothing) {
  TimeEntriesHouse house;
  Vars().g_TableOk = TableOk::False;
  house.Take({});
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_TRUE(house.Statements("SELECT * FROM TimeEntry").empty());
}

TEST(TimeEntryGet, The_form_shows_the_name_of_each_entity_and_keeps_it_over_a_record_without_one) {
  KnownHouse house;
  house.GetReturned({{.txnId = "1-1", .entity = ""},
                     {.txnId = "2-1"},
                     {.txnId = "3-1", .entity = ""},
                     {.txnId = "4-1", .entity = "<ListID>E-2</ListID><FullName>Bob Ray</FullName>"}});
  EXPECT_EQ(house.FormTexts(), Texts{"Getting Time Entries from QuickBooks..."});
  Texts shown;
  for (const auto& event : house.desk.FormEvents()) {
    if (shown.empty() || shown.back() != event.state.record) shown.push_back(event.state.record);
  }
  EXPECT_EQ(shown, (Texts{"Label1", "Ann Lee", "Bob Ray"}));
}

TEST(TimeEntryGet, Without_a_bar_nothing_is_shown) {
  KnownHouse house;
  Vars().g_NoProgressBar = true;
  house.GetReturned({Returned{}});
  EXPECT_EQ(house.Got("TEHours"), "2.5");
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(TimeEntryGet, Cancel_ends_the_run_behind_the_record_in_hand) {
  KnownHouse house({.answers = "cancel after 1\nyes"});
  house.GetReturned({{.txnId = "1-1"}, {.txnId = "2-1"}});
  EXPECT_EQ(house.Got("TEHours", "1-1"), "2.5");
  EXPECT_EQ(house.Got("TEHours", "2-1"), "(no row)");
  EXPECT_EQ(house.BoxTexts(), (Texts{kSureToCancel, kOperationCancelled}));
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(TimeEntryGet, The_codes_of_time_off_are_read_ahead_of_it) {
  KnownHouse house;
  house.Sql("INSERT INTO TWSTable (ParamName, ParamValue) VALUES ('ACTIVITY_SICK', 'ILL:')");
  house.GetReturned({Returned{}});
  EXPECT_EQ(Vars().g_ActivitySick, "ILL:");
}

// --- Errors ----------------------------------------------------------------------------------------------------------

const std::string kQuestion = "Do you want to continue transfering rest of the records?";
const std::string kRefusedRow =
    "Error #: -2147217873(80040E2F) -- \r\n\r\nRefused." + ErrorBoxEnd("MoveTimeEntriesToTW");

TEST(TimeEntryGet, Yes_after_an_error_goes_on_with_the_next_record) {
  KnownHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" TimeEntry");
  house.GetReturned({{.txnId = "1-1"}, {.txnId = "2-1"}});
  EXPECT_EQ(house.BoxTexts(), (Texts{kRefusedRow, kQuestion}));
  EXPECT_EQ(house.desk.Boxes()[1].box.title, "Question");
  EXPECT_EQ(house.desk.Boxes()[1].box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(house.Log(), Texts{"Error transfering Time Entries to Tallywick. Customer = Acme:Roof"});
  EXPECT_EQ(house.Got("TEHours", "1-1"), "(no row)");
  EXPECT_EQ(house.Got("TEHours", "2-1"), "2.5");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(TimeEntryGet, Yes_after_an_error_in_the_last_record_leaves_the_outcome_that_tells_of_it) {
  KnownHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" TimeEntry");
  house.GetReturned({Returned{}});
  EXPECT_EQ(Outcome(), TableOk::GoOn);
  EXPECT_FALSE(Vars().g_Cancelled);
}

TEST(TimeEntryGet, No_after_an_error_ends_the_run) {
  KnownHouse house({.answers = "no"}, "row 1 raise 0x80040E2F \"Refused.\" TimeEntry");
  house.GetReturned({{.txnId = "1-1"}, {.txnId = "2-1"}});
  EXPECT_EQ(house.BoxTexts(), (Texts{kRefusedRow, kQuestion, kOperationCancelled}));
  EXPECT_EQ(Count(house), "0");
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
}

TEST(TimeEntryGet, A_look_for_the_entry_itself_that_fails_is_an_error) {
  KnownHouse house({.answers = "yes"}, Breaks("SELECT QBLinkID from TimeEntry"));
  house.GetReturned({{.txnId = "1-1"}, {.txnId = "2-1"}});
  EXPECT_EQ(house.BoxTexts(), (Texts{BrokenBox("MoveTimeEntriesToTW"), kQuestion}));
  EXPECT_EQ(Count(house), "1");
}

// --- Countries -------------------------------------------------------------------------------------------------------

class RecordsOfACountry : public testing::TestWithParam<std::string> {};

TEST_P(RecordsOfACountry, Come) {
  TimeEntriesHouse house({}, {}, GetParam());
  const auto txn = house.Track(house.job);
  house.Get();
  EXPECT_EQ(house.Got("ProjectID", txn), "ROOF:");
  EXPECT_EQ(house.Got("EmployeeID", txn), "AL");
  EXPECT_EQ(house.Got("ActivityID", txn), "DESIGN:");
  EXPECT_EQ(house.Got("TEHours", txn), "1");
  EXPECT_TRUE(house.BoxTexts().empty());
}

INSTANTIATE_TEST_SUITE_P(TimeEntryGet, RecordsOfACountry, testing::Values("US", "CA", "UK"),
                         [](const auto& test) { return test.param; });

}  // namespace
}  // namespace twqb
