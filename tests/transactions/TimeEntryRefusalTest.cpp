// What happens when QuickBooks refuses a time entry: what is told, and whether the others still go.

#include <gtest/gtest.h>

#include "tests/transactions/TimeEntriesHouse.h"

namespace twqb {
namespace {

const std::string kPayrollItems =
    "Please add the four items, \"Regular Pay\", \"Vacation Hourly\", \"Sick Hourly\", and \"Overtime Pay\" to\r\nthe "
    "Payroll Item List of QuickBooks manually.\r\n[Run QuickBooks and choose Employee|Payroll Item List from the main "
    "menu...]\r\n\r\nQuickBooks has reported the following error:No.\r\n(Error Code: 3140\r\nSeverity: Error)\r\nIf "
    "the "
    "problem persists, please contact your software vendor.";
const std::string kPermission =
    "Please transfer the employees again after giving this application the \r\npermission to access Sensitve data in "
    "the "
    "\"Integrated Applications\" \r\nsettings of QuickBooks. If you are unable to resolve this problem, \r\nplease "
    "contact your software vendor\r\n\r\nQuickBooks has reported the following error :\r\nNo.\r\nError Code: "
    "3180\r\nSeverity: Error";
const std::string kNotTransferred =
    "An employee or Job has not been transferred to QuickBooks \r\n\r\nEmployeeID = AL\r\nProjectID = "
    "ROOF:\r\nActivityID = DESIGN:\r\n\r\nQuickBooks has reported the following error: -\r\nNo.\r\nError Code: "
    "3240\r\nSeverity: Error\r\n\r\nPlease transfer this table first or contact your software vendor.\r\n\r\nDo you "
    "want "
    "to continue?";
const std::string kNotEnabled =
    "You have not Enabled the Time Tracking Feature in QuickBooks. Please Enable it in QuickBooks.";
const std::string kPaychecks =
    "Error: 3310\r\nFailed to save the Time Tracking transaction.\r\n\r\nThe employee whose time entry was being "
    "transferred has the\r\ncheckbox \xE2\x80\x9CUse time data to create paychecks\xE2\x80\x9D set to an Unknown "
    "state.\r\nPlease correct that in QuickBooks and then resend time entries\r\n\r\nEmployee ID = AL";

std::string AnyOther(int status) {
  return fmt::format(
      "QuickBooks has reported the following error:\r\n\r\nError Code: {}\r\nSeverity: Error\r\nStatus: "
      "No.\r\n\r\nPlease contact your software vendor.\r\n\r\nDo you want to continue?",
      status);
}

// --- Statuses that end the run ---------------------------------------------------------------------------------------

struct Ending {
  int status;
  std::string text;
  std::string title;
  BoxIcon icon;
};

class EndingStatus : public testing::TestWithParam<Ending> {};

TEST_P(EndingStatus, Is_told_in_its_own_box_and_no_further_entry_goes) {
  TimeEntriesHouse house({}, Refuses("TimeTrackingAddRq", 1, GetParam().status));
  house.Entry("T1");
  house.Entry("T2");
  house.Send();
  ASSERT_EQ(house.BoxTexts(), Texts{GetParam().text});
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.title, GetParam().title);
  EXPECT_EQ(box.icon, GetParam().icon);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 1U);
  EXPECT_FALSE(house.IsSent("T1") || house.IsSent("T2"));
  EXPECT_TRUE(house.Log().empty());
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

TEST_P(EndingStatus, Is_followed_by_the_entries_that_were_left_behind_ahead_of_it) {
  TimeEntriesHouse house({}, Refuses("TimeTrackingAddRq", 1, GetParam().status));
  house.Sql("INSERT INTO Employee (EmployeeID) VALUES ('BOB')");
  house.Entry("T1", {{"EmployeeID", "'BOB'"}});
  house.Entry("T2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{GetParam().text, kSomeLeftBehind}));
  EXPECT_EQ(Outcome(), TableOk::False);
}

INSTANTIATE_TEST_SUITE_P(TimeEntryRefusal, EndingStatus,
                         testing::Values(Ending{3140, kPayrollItems, "Error", BoxIcon::None},
                                         Ending{3180, kPermission, "Error", BoxIcon::Information},
                                         Ending{3250, kNotEnabled, "", BoxIcon::None},
                                         Ending{3310, kPaychecks, "Error", BoxIcon::Information}),
                         [](const auto& test) { return std::to_string(test.param.status); });

// --- Statuses that ask -----------------------------------------------------------------------------------------------

class AskingStatus : public testing::TestWithParam<std::pair<int, std::string>> {};

TEST_P(AskingStatus, And_Yes_go_on_with_the_next_entry) {
  const auto& [status, text] = GetParam();
  TimeEntriesHouse house({.answers = "yes"}, Refuses("TimeTrackingAddRq", 1, status));
  house.Entry("T1");
  house.Entry("T2");
  house.Send();
  ASSERT_EQ(house.BoxTexts(), Texts{text});
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.title, "Error");
  EXPECT_EQ(box.icon, BoxIcon::Question);
  EXPECT_EQ(box.buttons, BoxButtons::YesNo);
  EXPECT_FALSE(house.IsSent("T1"));
  EXPECT_EQ(house.ColumnOf("T1", "LastUpdated"), "NULL");
  EXPECT_TRUE(house.IsSent("T2"));
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.Log().empty());
}

TEST_P(AskingStatus, And_No_end_the_run_as_a_cancelled_one) {
  const auto& [status, text] = GetParam();
  TimeEntriesHouse house({.answers = "no"}, Refuses("TimeTrackingAddRq", 1, status));
  house.Entry("T1");
  house.Entry("T2");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), (Texts{text, kOperationCancelled}));
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 1U);
  EXPECT_FALSE(house.IsSent("T1") || house.IsSent("T2"));
  EXPECT_FALSE(Vars().g_Cancelled);
  EXPECT_EQ(Outcome(), TableOk::False);
  EXPECT_FALSE(house.desk.Form());
}

INSTANTIATE_TEST_SUITE_P(TimeEntryRefusal, AskingStatus,
                         testing::Values(std::pair{3240, kNotTransferred}, std::pair{3000, AnyOther(3000)},
                                         std::pair{3100, AnyOther(3100)}, std::pair{3170, AnyOther(3170)},
                                         std::pair{3171, AnyOther(3171)}, std::pair{500, AnyOther(500)},
                                         std::pair{1, AnyOther(1)}),
                         [](const auto& test) { return std::to_string(test.param.first); });

// --- The status that passes over -------------------------------------------------------------------------------------

TEST(TimeEntryRefusal, An_object_that_is_missing_in_QuickBooks_passes_the_entry_over_and_is_told_at_the_end) {
  TimeEntriesHouse house({}, Refuses("TimeTrackingAddRq", 1, 3120) + Refuses("TimeTrackingAddRq", 3, 3120));
  house.Entry("T1");
  house.Entry("T2");
  house.Entry("T3");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{kSomeLeftBehind});
  EXPECT_EQ(house.Requests("TimeTrackingAddRq").size(), 3U);
  EXPECT_FALSE(house.IsSent("T1") || house.IsSent("T3"));
  EXPECT_TRUE(house.IsSent("T2"));
  EXPECT_TRUE(house.Log().empty());
  EXPECT_EQ(Outcome(), TableOk::False);
}

// --- As QuickBooks does it -------------------------------------------------------------------------------------------

TEST(TimeEntryRefusal, A_wage_item_that_QuickBooks_lacks_ends_the_run_with_the_box_of_the_four_items) {
  TimeEntriesHouse house;
  house.Choice(1, "Nowhere");
  house.Entry("T1");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].starts_with("Please add the four items, ")) << house.BoxTexts()[0];
  EXPECT_NE(house.BoxTexts()[0].find("Nowhere"), std::string::npos);
}

TEST(TimeEntryRefusal, An_employee_of_whom_it_is_not_set_whether_time_makes_paychecks_ends_the_run) {
  TimeEntriesHouse house;
  const auto bob = house.Add("Employee", "<FirstName>Bob</FirstName><LastName>Ray</LastName>");
  house.Sql("INSERT INTO Employee (EmployeeID, QBLinkID) VALUES ('BOB', '" + bob + "')");
  house.Entry("T1", {{"EmployeeID", "'BOB'"}});
  house.Send();
  auto expected = kPaychecks;
  expected.replace(expected.size() - 2, 2, "BOB");
  EXPECT_EQ(house.BoxTexts(), Texts{expected});
}

TEST(TimeEntryRefusal, The_text_of_QuickBooks_goes_into_the_box_as_it_came) {
  TimeEntriesHouse house({.answers = "yes"}, "TimeTrackingAddRq 1 status 3070 Warn \"Too <long> {0} & more\"\n");
  house.Entry("T1");
  house.Send();
  EXPECT_EQ(
      house.BoxTexts(),
      Texts{"QuickBooks has reported the following error:\r\n\r\nError Code: 3070\r\nSeverity: Warn\r\nStatus: Too "
            "<long> {0} & more\r\n\r\nPlease contact your software vendor.\r\n\r\nDo you want to continue?"});
}

}  // namespace
}  // namespace twqb
