// The get of jobs: which records come, under which keys, the rows above them, and errors.

#include <gtest/gtest.h>

#include "tests/lists/ProjectsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

const std::string kLacking =
    "There was a problem in transfering Project(s). Please make sure\r\n"
    "the associated data does exist in Tallywick. Specifically, make\r\n"
    "sure all the associated Clients and Employees are tranfered to Tallywick.\r\n";
const std::string kQuestion = "Do you want to continue transfering rest of the records?";

// --- Keys ------------------------------------------------------------------------------------------------------------

TEST(ProjectGet, A_job_directly_under_a_customer_becomes_a_project_whose_key_ends_in_a_colon) {
  ProjectsHouse house;
  const auto id = house.Job("Roof", house.client);
  house.Get();
  EXPECT_EQ(house.Keys(), "Roof:");
  EXPECT_EQ(house.ColumnOf("Roof:", "ProjectCode"), "Roof");
  EXPECT_EQ(house.ColumnOf("Roof:", "ProjectPhase"), "");
  EXPECT_EQ(house.ColumnOf("Roof:", "ClientID"), "ACME");
  EXPECT_EQ(house.ColumnOf("Roof:", "QBLinkID"), id);
  EXPECT_EQ(house.ColumnOf("Roof:", "LastUpdated"), "3/5/2008 3:00:00 PM");
  EXPECT_EQ(house.ColumnOf("Roof:", "ProjectIsPhase"), "0");
  EXPECT_EQ(house.ColumnOf("Roof:", "ParentProjectID"), "NULL");
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ProjectGet, A_job_under_a_job_becomes_a_phase_of_its_project) {
  ProjectsHouse house;
  const auto roof = house.Job("Roof", house.client);
  house.Job("Tiles", roof);
  house.Get();
  EXPECT_EQ(house.Keys(), "Roof:,Roof:Tiles");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ProjectCode"), "Roof");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ProjectPhase"), "Tiles");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ClientID"), "ACME");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ProjectIsPhase"), "-1");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ParentProjectID"), "Roof:");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "PhaseDescription"), "Phase of Roof:");
}

TEST(ProjectGet, Two_deep_jobs_with_equal_first_three_parts_meet_in_the_unique_key_loop) {
  ProjectsHouse house;
  const auto tiles = house.Job("Tiles", house.Job("Roof", house.client));
  house.Job("Blue", tiles);
  house.Job("Red", tiles);
  house.Get();
  EXPECT_EQ(house.Keys(), "Roof:,Roof:Tiles,Roof:Til1,Roof:Til2");
  EXPECT_EQ(house.ColumnOf("Roof:Til1", "ProjectName"), "Blue");
  EXPECT_EQ(house.ColumnOf("Roof:Til2", "ProjectName"), "Red");
  EXPECT_EQ(house.ColumnOf("Roof:Til2", "ProjectPhase"), "Til2");
  EXPECT_EQ(house.ColumnOf("Roof:Til2", "ParentProjectID"), "Roof:Tiles");
}

TEST(ProjectGet, A_job_of_the_fourth_level_is_a_phase_of_a_phase) {
  ProjectsHouse house;
  const auto blue = house.Job("Blue", house.Job("Tiles", house.Job("Roof", house.client)));
  house.Job("Dark", blue);
  house.Get();
  EXPECT_EQ(house.Keys(), "Roof:,Roof:Tiles,Roof:Til1,Roof:Til2");
  EXPECT_EQ(house.ColumnOf("Roof:Til2", "ParentProjectID"), "Roof:Til1");
}

struct Uniqueness {
  std::string taken;  // keys, joined by commas
  std::string phase;  // of the job under Roof; empty: Roof itself
  std::string key;
};

class UniquePhases : public testing::TestWithParam<Uniqueness> {};

TEST_P(UniquePhases, Count_in_the_last_two_places) {
  ProjectsHouse house;
  for (const auto& key : Split(GetParam().taken, ',')) house.Project(key);
  const auto roof = house.Job("Roof", house.client);
  const auto id = GetParam().phase.empty() ? roof : house.Job(GetParam().phase, roof);
  if (id != roof) house.Project("LINKED:", "QBLinkID", "'" + roof + "'");
  house.Get({.never = true});
  EXPECT_EQ(house.Scalar("SELECT ProjectID FROM Project WHERE QBLinkID = '" + id + "'"), GetParam().key);
  EXPECT_EQ(house.ColumnOf(GetParam().key, "ProjectCode"), "Roof");
  EXPECT_EQ(house.ColumnOf(GetParam().key, "ProjectPhase"), GetParam().key.substr(5));
}

INSTANTIATE_TEST_SUITE_P(ProjectGet, UniquePhases,
                         testing::Values(Uniqueness{"Other:", "", "Roof:"}, Uniqueness{"Roof:", "", "Roof:1"},
                                         Uniqueness{"ROOF:,roof:1", "", "Roof:2"}, Uniqueness{"Roof:A", "A", "Roof:1"},
                                         Uniqueness{"Roof:AB,Roof:1", "AB", "Roof:2"},
                                         Uniqueness{"Roof:ABC", "ABC", "Roof:A1"},
                                         Uniqueness{"Roof:Tile,Roof:Ti1,Roof:Ti2,Roof:Ti3,Roof:Ti4,Roof:Ti5,Roof:Ti6,"
                                                    "Roof:Ti7,Roof:Ti8,Roof:Ti9",
                                                    "Tile", "Roof:Ti10"},
                                         Uniqueness{"Roof:Größe", "Größe", "Roof:Grö1"}));

// --- The parts of a full name ----------------------------------------------------------------------------------------

struct Splitting {
  std::string fullName;
  std::string client;
  std::string code;
  std::string phase;
};

class FullNames : public testing::TestWithParam<Splitting> {};

TEST_P(FullNames, Are_split_at_their_colons) {
  ProjectsHouse house;
  std::unique_ptr<ado::Recordset> rows;
  OpenConnection(house.Own(), &rows, "Project");
  const auto names = SplitJobFullName(*rows, GetParam().fullName);
  EXPECT_EQ(names.clientID, GetParam().client);
  EXPECT_EQ(names.projectCode, GetParam().code);
  EXPECT_EQ(names.projectPhase, GetParam().phase);
  EXPECT_EQ(names.projectID, GetParam().code + ":" + GetParam().phase);
}

INSTANTIATE_TEST_SUITE_P(
    ProjectGet, FullNames,
    testing::Values(Splitting{"", "Missing", "Missing", "Missing"}, Splitting{"Acme", "Acme", "Missing", "Missing"},
                    Splitting{"Acme:Roof", "Acme", "Roof", ""}, Splitting{"Acme:Roof:Tiles", "Acme", "Roof", "Tiles"},
                    Splitting{"Acme:Roof:Tiles:Blue:Dark", "Acme", "Roof", "Tiles"},
                    Splitting{"O'Neil, Sons;#1:R,f:T'", "O Neil  Sons  1", "R f", "T "},
                    Splitting{std::string(70, 'c') + ":" + std::string(70, 'd') + ":" + std::string(40, 'e'),
                              std::string(65, 'c'), std::string(65, 'd'), std::string(30, 'e')}));

// --- Which records come ----------------------------------------------------------------------------------------------

TEST(ProjectGet, A_customer_among_the_records_is_passed_over_with_its_progress_alone) {
  ProjectsHouse house;
  house.Job("Roof", house.client);
  RecordList records;
  records.Add(house.RecordOf(house.client), "customer");
  records.Add(house.RecordOf(house.ListIdOf("Acme:Roof")), "job");
  house.Take(records);
  EXPECT_EQ(house.Keys(), "Roof:");
  ASSERT_GE(house.desk.FormEvents().size(), 2U);
  EXPECT_EQ(house.FormTexts(), Texts{"Getting Projects from QuickBooks..."});
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ProjectGet, Jobs_whose_client_is_not_here_are_passed_over_and_told_once_at_the_end) {
  ProjectsHouse house;
  const auto other = house.AddCustomer("<Name>Other</Name>");
  house.Job("Shed", house.Job("Yard", other));
  house.Job("Roof", house.client);
  house.Get();
  EXPECT_EQ(house.Keys(), "Roof:");
  EXPECT_EQ(house.BoxTexts(), Texts{kLacking});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "Error");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Information);
  EXPECT_EQ(house.desk.Boxes()[0].box.buttons, BoxButtons::Ok);
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ProjectGet, A_known_project_of_a_client_that_is_gone_is_passed_over_too) {
  ProjectsHouse house;
  const auto id = house.Job("Roof", house.client);
  house.Project("OLD:", "QBLinkID, ProjectName", "'" + id + "', 'Old'");
  house.Sql("DELETE FROM Client");
  house.Get();
  EXPECT_EQ(house.ColumnOf("OLD:", "ProjectName"), "Old");
  EXPECT_EQ(house.BoxTexts(), Texts{kLacking});
}

TEST(ProjectGet, The_client_of_a_phase_is_the_one_of_its_project) {
  ProjectsHouse house;
  const auto roof = house.Job("Roof", house.client);
  house.Sql("INSERT INTO Project (ProjectID, ClientID, QBLinkID, LastUpdated) VALUES ('R:', 'BOSS', '" + roof +
            "', '2030-01-01')");
  house.Job("Tiles", roof);
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ClientID"), "BOSS");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ParentProjectID"), "R:");
}

// --- Pairs -----------------------------------------------------------------------------------------------------------

TEST(ProjectGet, A_known_job_updates_its_row_whatever_the_key_and_asks_for_no_manager) {
  ProjectsHouse house;
  const auto id = house.Job("Roof", house.client, "<AltContact>Nobody</AltContact>");
  house.Project("OLD:", "QBLinkID, EmployeeID, ProjectConType", "'" + id + "', 'ALICE', 'Fixed'");
  house.Get();
  EXPECT_EQ(house.Keys(), "OLD:");
  EXPECT_EQ(house.ColumnOf("OLD:", "ProjectName"), "Roof");
  EXPECT_EQ(house.ColumnOf("OLD:", "EmployeeID"), "ALICE");
  EXPECT_EQ(house.ColumnOf("OLD:", "ProjectConType"), "Fixed");
  EXPECT_EQ(house.ColumnOf("OLD:", "LastUpdated"), "3/5/2008 3:00:00 PM");
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM Employee"), "0");
}

struct Meeting {
  std::string what;
  std::string lastUpdated;
  std::string startDate;
  bool gets;
};

class ProjectMeetings : public testing::TestWithParam<Meeting> {};

// QuickBooks changed the job at three o'clock UTC, ten by the wall clock.
TEST_P(ProjectMeetings, Go_to_the_later_side_by_the_start_date_where_no_other_date_is) {
  ProjectsHouse house;
  const auto id = house.Job("Roof", house.client);
  house.Project("OLD:", "QBLinkID, ProjectName, LastUpdated, ProjectStartDate",
                "'" + id + "', 'Old', " + GetParam().lastUpdated + ", " + GetParam().startDate);
  house.Get({.mostRecent = true});
  EXPECT_EQ(house.ColumnOf("OLD:", "ProjectName"), GetParam().gets ? "Roof" : "Old");
}

INSTANTIATE_TEST_SUITE_P(ProjectGet, ProjectMeetings,
                         testing::Values(Meeting{"Tie", "'2008-03-05 15:00:00'", "NULL", true},
                                         Meeting{"BillingLater", "'2008-03-05 15:00:01'", "NULL", false},
                                         Meeting{"StartTie", "NULL", "'2008-03-05 10:00:00'", true},
                                         Meeting{"StartLater", "NULL", "'2008-03-05 10:00:01'", false},
                                         Meeting{"NeitherDate", "NULL", "NULL", true}),
                         [](const auto& test) { return test.param.what; });

TEST(ProjectGet, With_Never_a_known_job_stays_and_a_new_one_comes) {
  ProjectsHouse house;
  const auto id = house.Job("Roof", house.client);
  house.Job("Yard", house.client);
  house.Project("OLD:", "QBLinkID, ProjectName", "'" + id + "', 'Old'");
  house.Get({.never = true});
  EXPECT_EQ(house.ColumnOf("OLD:", "ProjectName"), "Old");
  EXPECT_EQ(house.Keys(), "OLD:,Yard:");
}

// --- The shared connection -------------------------------------------------------------------------------------------

TEST(ProjectGet, Each_project_written_opens_the_shared_connection_anew) {
  // The house itself has opened it once, and each connection of a run's own counts too.
  ProjectsHouse house({}, "connect 4 raise 0x80004005 \"Too many.\"");
  house.Job("Roof", house.client);
  house.Job("Yard", house.client);
  house.Get();
  EXPECT_EQ(house.Keys(), "Roof:,Yard:");
  ASSERT_FALSE(house.BoxTexts().empty());
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("gp_cnGlobal80")));
}

TEST(ProjectGet, The_shared_connection_is_open_and_counted_once_after_a_get) {
  ProjectsHouse house;
  house.Job("Roof", house.client);
  house.Job("Yard", house.client);
  house.Get();
  EXPECT_EQ(Vars().g_CnRefCount, 1);
  EXPECT_EQ(GlobalConnection().State(), ado::ObjectState::Open);
}

// --- Errors ----------------------------------------------------------------------------------------------------------

TEST(ProjectGet, Yes_after_an_error_goes_on_with_the_next_record) {
  ProjectsHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" Project");
  house.Job("Roof", house.client);
  house.Job("Yard", house.client);
  house.Get();
  EXPECT_EQ(house.BoxTexts(),
            (Texts{"Error #: -2147217873(80040E2F) -- \r\n\r\nRefused." + ErrorBoxEnd("MoveProjectsToTW"), kQuestion}));
  EXPECT_EQ(house.Log(), Texts{"Error transfering Project to Tallywick. Project = Roof"});
  EXPECT_EQ(house.Keys(), "Yard:");
  EXPECT_EQ(Outcome(), TableOk::True);
}

TEST(ProjectGet, No_after_an_error_cancels_the_operation) {
  ProjectsHouse house({.answers = "no"}, "row 1 raise 0x80040E2F \"Refused.\" Project");
  house.Job("Roof", house.client);
  house.Job("Yard", house.client);
  house.Get();
  EXPECT_EQ(house.BoxTexts().back(), "Operation cancelled!");
  EXPECT_EQ(house.Keys(), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

TEST(ProjectGet, A_broken_lookup_of_the_key_passes_over_its_record_alone) {
  ProjectsHouse house({.answers = "yes"}, "sql 1 raise 0x80040E14 \"Broken.\" SELECT ProjectID from Project");
  house.Job("Roof", house.client);
  house.Job("Yard", house.client);
  house.Get();
  EXPECT_EQ(house.Keys(), "Yard:");
}

TEST(ProjectGet, A_dependent_call_without_a_connection_shows_its_box) {
  ProjectsHouse house;
  house.Job("Roof", house.client);
  Vars().g_TableOk = TableOk::False;
  house.Take(house.Read(), Dependent::Yes);
  EXPECT_EQ(house.BoxTexts(), Texts{"MoveProjectsToTW - Connection object is required!"});
  EXPECT_EQ(house.Keys(), "NULL");
  EXPECT_EQ(Outcome(), TableOk::False);
}

}  // namespace
}  // namespace twqb
