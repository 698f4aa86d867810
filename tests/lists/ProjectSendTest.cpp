// The send of projects: what they hang under, the rows that lack their client, refusals, names in use.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/lists/ProjectsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const std::string kLacking =
    "There was a problem in transfering Project(s). Please make sure\r\n"
    "the associated data does exist in QuickBooks. Specifically, make\r\n"
    "sure all the associated Clients and Employees are tranfered to QuickBooks.\r\n";
const std::string kContinue = "\r\n\r\nDo you want to continue?";

// --- Adding ----------------------------------------------------------------------------------------------------------

TEST(ProjectSend, A_new_project_becomes_a_job_of_its_client_and_its_link_and_date_are_written_back) {
  ProjectsHouse house;
  house.Project("ABC:", "ProjectName", "'Main Street'");
  house.traffic.statements.clear();
  house.Send();
  const auto id = house.ListIdOf("Acme:ABC- Main Street");
  ASSERT_NE(id, "");
  EXPECT_EQ(house.CustomerField(id, "Sublevel"), "1");
  ASSERT_EQ(house.traffic.statements.size(), 3U);
  EXPECT_EQ(house.traffic.statements[1], "UPDATE Project SET QBLinkID = '" + id + "' WHERE ProjectID = 'ABC:';");
  EXPECT_EQ(house.traffic.statements[2],
            "UPDATE Project SET LastUpdated = '03/05/2008 15:00:00' WHERE ProjectID = 'ABC:';");
  EXPECT_EQ(house.ColumnOf("ABC:", "QBLinkID"), id);
  EXPECT_EQ(house.ColumnOf("ABC:", "LastUpdated"), "3/5/2008 3:00:00 PM");
  EXPECT_EQ(Vars().g_NewQBLinkID, id);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ProjectSend, A_new_project_that_has_a_date_keeps_it) {
  ProjectsHouse house;
  house.Project("ABC:", "LastUpdated", "'2008-01-02 03:04:05'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("ABC:", "LastUpdated"), "1/2/2008 3:04:05 AM");
}

TEST(ProjectSend, A_phase_goes_under_its_project_though_its_row_comes_first) {
  ProjectsHouse house;
  house.Project("ABC:1", "ProjectName, ProjectIsPhase, ParentProjectID", "'Roof', -1, 'ABC:'");
  house.Project("ABC:", "ProjectName, ProjectIsPhase", "'Main Street', 0");
  house.traffic.statements.clear();
  house.Send();
  EXPECT_NE(house.ListIdOf("Acme:ABC- Main Street:ABC-1 Roof"), "");
  EXPECT_EQ(std::ranges::count(house.traffic.statements, "SELECT QBLinkID FROM Project WHERE ProjectID = 'ABC:';"), 1);
}

TEST(ProjectSend, A_phase_whose_parent_has_no_link_goes_directly_under_the_customer) {
  for (const std::string_view parent : {"'GONE:'", "'OLD:'"}) {
    ProjectsHouse house;
    house.Row("ProjectID, ClientID, QBLinkID", "'OLD:', NULL, ''");
    house.Project("ABC:1", "ProjectName, ProjectIsPhase, ParentProjectID", "'Roof', -1, " + std::string(parent));
    house.Send();
    EXPECT_NE(house.ListIdOf("Acme:ABC-1 Roof"), "");
  }
}

TEST(ProjectSend, A_parent_counts_only_for_a_row_that_is_a_phase) {
  for (const std::string_view flag : {"0", "NULL"}) {
    ProjectsHouse house;
    house.Project("OLD:", "QBLinkID, LastUpdated", "'" + house.Job("Old", house.client) + "', '2000-01-01'");
    house.Project("ABC:1", "ProjectName, ProjectIsPhase, ParentProjectID", "'Roof', " + std::string(flag) + ", 'OLD:'");
    house.Send({.never = true});
    EXPECT_NE(house.ListIdOf("Acme:ABC-1 Roof"), "");
  }
}

TEST(ProjectSend, A_phase_without_the_key_of_its_parent_goes_directly_under_the_customer) {
  ProjectsHouse house;
  house.Project("ABC:1", "ProjectName, ProjectIsPhase", "'Roof', -1");
  house.Send();
  EXPECT_NE(house.ListIdOf("Acme:ABC-1 Roof"), "");
  EXPECT_TRUE(house.BoxTexts().empty());
}

// --- Rows that lack their client -------------------------------------------------------------------------------------

TEST(ProjectSend, A_project_whose_client_has_no_link_is_passed_over_before_anything_and_told_once_at_the_end) {
  ProjectsHouse house;
  house.Sql("INSERT INTO Client (ClientID) VALUES ('NEW')");
  house.Row("ProjectID, ClientID", "'N1:', 'NEW'");
  house.Row("ProjectID, ClientID", "'N2:', 'NEW'");
  house.Project("ABC:", "ProjectName", "'Main'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("N1:", "QBLinkID"), "NULL");
  EXPECT_NE(house.ColumnOf("ABC:", "QBLinkID"), "NULL");
  EXPECT_EQ(house.BoxTexts(), Texts{kLacking});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::Ok);
  EXPECT_EQ(house.Requests("CustomerAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ProjectSend, A_row_that_was_passed_over_is_not_counted_on_the_form) {
  ProjectsHouse house;
  house.Sql("INSERT INTO Client (ClientID) VALUES ('NEW')");
  house.Row("ProjectID, ClientID", "'N1:', 'NEW'");
  house.Project("ABC:");
  house.Send();
  for (const auto& event : house.desk.FormEvents()) EXPECT_NE(event.state.record, "N1:");
  EXPECT_EQ(house.FormTexts(), Texts{"Sending Projects to QuickBooks..."});
}

TEST(ProjectSend, The_lack_is_told_after_a_cancel_too) {
  ProjectsHouse house({.answers = "cancel after 1\nyes"});
  house.Sql("INSERT INTO Client (ClientID) VALUES ('NEW')");
  house.Row("ProjectID, ClientID", "'N1:', 'NEW'");
  house.Project("ABC:");
  house.Project("DEF:");
  house.Send();
  ASSERT_GE(house.BoxTexts().size(), 2U);
  EXPECT_EQ(house.BoxTexts().at(house.BoxTexts().size() - 2), "Operation cancelled!");
  EXPECT_EQ(house.BoxTexts().back(), kLacking);
  EXPECT_EQ(house.Requests("CustomerAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ProjectSend, The_lack_is_not_told_when_an_error_ends_the_run) {
  ProjectsHouse house({}, "sql 1 raise 0x80040E14 \"Broken.\" UPDATE Project");
  house.Sql("INSERT INTO Client (ClientID) VALUES ('NEW')");
  house.Row("ProjectID, ClientID", "'N1:', 'NEW'");
  house.Project("ABC:");
  house.Send();
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveProjectsToQB")));
}

// --- Twins -----------------------------------------------------------------------------------------------------------

TEST(ProjectSend, A_changed_project_is_modified_and_neither_renamed_nor_moved) {
  ProjectsHouse house;
  const auto other = house.Job("Other", house.client);
  const auto id = house.Job("ABC- Main", house.client, "<JobStatus>None</JobStatus>");
  house.Project("P:", "QBLinkID, LastUpdated", "'" + other + "', '2000-01-01'");
  house.Project("ABC:", "ProjectName, ProjectIsPhase, ParentProjectID, ProjectStatus, QBLinkID, LastUpdated",
                "'Renamed', -1, 'P:', 'Active', '" + id + "', '2008-03-05 16:00:00'");
  house.Send({.mostRecent = true});
  ASSERT_EQ(house.Requests("CustomerModRq").size(), 1U);
  EXPECT_EQ(house.CustomerField(id, "FullName"), "Acme:ABC- Main");
  EXPECT_EQ(house.CustomerField(id, "JobStatus"), "InProgress");
  EXPECT_EQ(house.ColumnOf("ABC:", "LastUpdated"), "3/5/2008 4:00:00 PM");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ProjectSend, The_start_date_stands_in_for_a_date_of_the_last_change) {
  for (const bool later : {false, true}) {
    ProjectsHouse house;
    const auto id = house.Job("ABC", house.client, "<JobStatus>None</JobStatus>");
    house.Project("ABC:", "ProjectStatus, QBLinkID, ProjectStartDate",
                  "'Active', '" + id + "', '" + (later ? "2008-03-05 10:00:00" : "2008-03-05 09:59:59") + "'");
    house.Send({.mostRecent = true});
    EXPECT_EQ(house.CustomerField(id, "JobStatus"), later ? "InProgress" : "None");
  }
}

TEST(ProjectSend, With_Never_a_linked_project_stays_and_a_new_one_goes) {
  ProjectsHouse house;
  const auto id = house.Job("ABC", house.client, "<JobStatus>None</JobStatus>");
  house.Project("ABC:", "ProjectStatus, QBLinkID", "'Active', '" + id + "'");
  house.Project("NEW:");
  house.Send({.never = true});
  EXPECT_EQ(house.CustomerField(id, "JobStatus"), "None");
  EXPECT_NE(house.ColumnOf("NEW:", "QBLinkID"), "NULL");
}

TEST(ProjectSend, A_project_that_QuickBooks_deleted_is_added_again_under_a_new_link) {
  ProjectsHouse house;
  house.Project("ABC:", "ProjectName, QBLinkID", "'Main', '80000FFF-1'");
  house.Send();
  EXPECT_EQ(house.ColumnOf("ABC:", "QBLinkID"), house.ListIdOf("Acme:ABC- Main"));
}

TEST(ProjectSend, A_project_that_is_linked_to_a_customer_is_left_alone) {
  ProjectsHouse house;
  const auto customer = house.AddCustomer("<Name>Other</Name>");
  house.Project("ABC:", "QBLinkID", "'" + customer + "'");
  house.Send();
  EXPECT_TRUE(house.Requests("CustomerModRq").empty());
  EXPECT_TRUE(house.Requests("CustomerAddRq").empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

// --- Refusals --------------------------------------------------------------------------------------------------------

std::string Line() { return "\r\n\r\n[Project ID = \"ABC:\" Project Name = \"Main Street\" Client ID = \"ACME\"]"; }

struct Refusal {
  int status;
  std::string text;
};

class ProjectRefusals : public testing::TestWithParam<std::tuple<Refusal, bool>> {};

TEST_P(ProjectRefusals, Of_an_Add_are_told_in_one_box_and_No_ends_the_table) {
  const auto& [refusal, goesOn] = GetParam();
  ProjectsHouse house({.answers = goesOn ? "yes" : "no"},
                      "CustomerAddRq 1 status " + std::to_string(refusal.status) + " Error \"No.\"");
  house.Project("ABC:", "ProjectName", "'Main:Street'");
  house.Project("NEXT:");
  house.Send();
  ASSERT_FALSE(house.BoxTexts().empty());
  EXPECT_EQ(house.BoxTexts()[0], refusal.text + kContinue);
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Question);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::YesNo);
  EXPECT_EQ(house.ColumnOf("ABC:", "QBLinkID"), "NULL");
  EXPECT_EQ(house.ColumnOf("NEXT:", "QBLinkID") != "NULL", goesOn);
  EXPECT_EQ(house.BoxTexts().size(), goesOn ? 1U : 2U);
  EXPECT_EQ(Outcome(), goesOn ? TableOk::True : TableOk::False);
  EXPECT_FALSE(Vars().g_Cancelled);
}

const Refusal kRefusals[] = {
    {3240,
     "The Customer to which you are trying to assign the project, \"Main Street\" does not exist in QuickBooks. Please "
     "ensure that all the Customers have been transferred, or contact your software vendor."},
    {3120,
     "The Customer or Parent Project for Project ID ABC: Main Street\" does not exist in QuickBooks or is incorrectly "
     "linked. Please ensure that the Customer and Parent Project have been transferred correctly."},
    {3130, RefusalText("No.", 3130, "Error") + Line()},
};

INSTANTIATE_TEST_SUITE_P(ProjectSend, ProjectRefusals, testing::Combine(testing::ValuesIn(kRefusals), testing::Bool()),
                         [](const auto& test) {
                           return "Status_" + std::to_string(std::get<0>(test.param).status) +
                                  (std::get<1>(test.param) ? "_Yes" : "_No");
                         });

TEST(ProjectSend, A_parent_that_QuickBooks_deleted_is_a_customer_that_does_not_exist) {
  ProjectsHouse house({.answers = "yes"});
  house.Company("<ListDelRq><ListDelType>Customer</ListDelType><ListID>" + house.client + "</ListID></ListDelRq>");
  house.Project("ABC:", "ProjectName", "'Main Street'");
  house.Send();
  EXPECT_EQ(house.BoxTexts(), Texts{kRefusals[0].text + kContinue});
}

TEST(ProjectSend, A_refused_Mod_has_the_common_box_and_question) {
  for (const int status : {3240, 3120, 3170}) {
    ProjectsHouse house({.answers = "no"}, "CustomerModRq 1 status " + std::to_string(status) + " Error \"No.\"");
    house.Project("ABC:", "ProjectName, QBLinkID", "'Main Street', '" + house.Job("ABC", house.client) + "'");
    house.Send();
    EXPECT_EQ(house.BoxTexts(), (Texts{RefusalText("No.", status, "Error") + Line(),
                                       "Do you want to transfer rest of the records?", "Operation cancelled!"}));
    EXPECT_EQ(Outcome(), TableOk::False);
  }
}

TEST(ProjectSend, An_error_ends_the_run_with_its_box_and_log_line) {
  ProjectsHouse house({}, "sql 1 raise 0x80040E14 \"Broken.\" UPDATE Project");
  house.Project("ABC:");
  house.Project("DEF:");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Error #: -2147217900(80040E14) -- \r\n\r\nBroken." + ErrorBoxEnd("MoveProjectsToQB")});
  EXPECT_EQ(house.Log(), Texts{"Error in transfering Project to QB. Project ID = ABC:"});
  EXPECT_EQ(house.Requests("CustomerAddRq").size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ProjectSend, The_error_that_passes_over_a_client_ends_the_run_of_projects) {
  ProjectsHouse house({}, "DoRequests 1 raise 0x80040307 \"Incomplete.\"");
  house.Project("ABC:");
  house.Project("DEF:");
  house.Send();
  EXPECT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_EQ(Outcome(), TableOk::False);
}

// --- Names in use ----------------------------------------------------------------------------------------------------

TEST(ProjectSend, A_name_in_use_counts_behind_the_projects_name_before_the_key_is_put_ahead_of_it) {
  ProjectsHouse house;
  house.Job("ABC- Main", house.client);
  house.Job("ABC- Main1", house.client);
  house.Project("ABC:", "ProjectName", "'Main'");
  house.Send();
  const auto id = house.ListIdOf("Acme:ABC- Main2");
  EXPECT_NE(id, "");
  EXPECT_EQ(house.ColumnOf("ABC:", "QBLinkID"), id);
  EXPECT_EQ(house.CustomerField(id, "JobDesc"), "Main2");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ProjectSend, A_name_in_use_that_leaves_no_room_for_a_counter_is_told_and_asked_about) {
  ProjectsHouse house({.answers = "yes"});
  const std::string name(36, 'x');  // the key ahead of it takes five of 41
  house.Job("ABC- " + name, house.client);
  house.Project("ABC:", "ProjectName", "'" + name + "'");
  house.Send();
  EXPECT_EQ(house.BoxTexts(),
            Texts{RefusalText("The name \"ABC- " + name + "\" of the list element is already in use.", 3100, "Error") +
                  "\r\n\r\n[Project ID = \"ABC:\" Project Name = \"" + name + "\" Client ID = \"ACME\"]" + kContinue});
  EXPECT_EQ(house.traffic.documents.size(), 1U);
}

}  // namespace
}  // namespace twqb
