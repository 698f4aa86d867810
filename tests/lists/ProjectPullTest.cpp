// Projects that come for another record's sake: the parents of phases, customers that serve as projects, and managers.

#include <gtest/gtest.h>

#include "tests/lists/ProjectsHouse.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

// --- Parents ---------------------------------------------------------------------------------------------------------

class PhaseHouse : public ProjectsHouse {
 public:
  explicit PhaseHouse(HouseOptions options = {}, std::string_view faults = {})
      : ProjectsHouse(std::move(options), faults),
        roof(Job("Roof", client)),
        tiles(Job("Tiles", roof)),
        blue(Job("Blue", tiles)) {}
  // The get of the one job, as when a filter leaves the others out.
  void GetOnly(const std::string& listId) { Take(Read({.strID = listId})); }
  std::string KeyOf(const std::string& listId) {
    return Scalar("SELECT ProjectID FROM Project WHERE QBLinkID = '" + listId + "'");
  }
  // The parents that QuickBooks was asked for, in order.
  Texts Asked() {
    Texts names;
    for (const auto& query : Requests("CustomerQueryRq")) {
      if (const auto name = TextOf(query, "FullName"); name != "(none)") names.push_back(name);
    }
    return names;
  }

  std::string roof;
  std::string tiles;
  std::string blue;
};

TEST(ParentProject, A_phase_alone_brings_its_project_with_it) {
  PhaseHouse house;
  house.Sql("INSERT INTO Project (ProjectID, ClientID, QBLinkID) VALUES ('OLD:', 'ACME', '80000FFF-1')");
  house.Sql("UPDATE Client SET QBLinkID = '" + house.roof + "'");
  house.GetOnly(house.tiles);
  EXPECT_EQ(house.Asked(), Texts{"Acme:Roof"});
  // The project is taken as a pull takes it: under its full name, with the client of its own link.
  EXPECT_EQ(house.KeyOf(house.roof), "Acme:Roof:");
  EXPECT_EQ(house.ColumnOf("Acme:Roof:", "ClientID"), "ACME");
  EXPECT_EQ(house.ColumnOf("Acme:Roof:", "ProjectPhase"), "");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ParentProjectID"), "Acme:Roof:");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "PhaseDescription"), "Phase of Acme:Roof:");
}

TEST(ParentProject, Unknown_parents_three_levels_deep_are_climbed_to_the_top) {
  PhaseHouse house;
  const auto dark = house.Job("Dark", house.blue);
  // The client of a job below a job is asked of the job's own parent.
  house.Sql("UPDATE Client SET QBLinkID = '" + house.blue + "'");
  house.GetOnly(dark);
  EXPECT_EQ(house.Asked(), (Texts{"Acme:Roof:Tiles:Blue", "Acme:Roof:Tiles", "Acme:Roof"}));
  EXPECT_EQ(house.KeyOf(house.roof), "Acme:Roof:");
  EXPECT_EQ(house.KeyOf(house.tiles), "Acme:Roof:Tiles:");
  EXPECT_EQ(house.KeyOf(house.blue), "Acme:Roof:Tiles:Blue:");
  EXPECT_EQ(house.KeyOf(dark), "Roof:Tiles");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ParentProjectID"), "Acme:Roof:Tiles:Blue:");
  EXPECT_EQ(house.ColumnOf("Acme:Roof:Tiles:Blue:", "ParentProjectID"), "Acme:Roof:Tiles:");
  EXPECT_EQ(house.ColumnOf("Acme:Roof:Tiles:", "ParentProjectID"), "Acme:Roof:");
  EXPECT_EQ(house.ColumnOf("Acme:Roof:", "ParentProjectID"), "NULL");
  EXPECT_EQ(house.ColumnOf("Acme:Roof:Tiles:", "ProjectIsPhase"), "-1");
  EXPECT_EQ(Outcome(), TableOk::True);
  EXPECT_TRUE(house.BoxTexts().empty());
  EXPECT_TRUE(house.desk.FormEvents().empty());
}

TEST(ParentProject, A_known_one_is_named_without_a_pull) {
  PhaseHouse house;
  house.Project("R:", "QBLinkID", "'" + house.roof + "'");
  std::string parent;
  EXPECT_TRUE(GetParentProjectForTW(parent, "Acme:Roof:Tiles", house.Own()));
  EXPECT_EQ(parent, "R:");
  EXPECT_EQ(house.Keys(), "R:");
}

TEST(ParentProject, There_is_none_where_QuickBooks_has_no_record_of_that_name) {
  PhaseHouse house;
  std::string parent;
  EXPECT_FALSE(GetParentProjectForTW(parent, "Acme:Gone:Tiles", house.Own()));
  EXPECT_FALSE(GetParentProjectForTW(parent, "Acme:Roof", house.Own()));
  EXPECT_FALSE(GetParentProjectForTW(parent, "", house.Own()));
  EXPECT_FALSE(GetParentProjectForTW(parent, "Acme:Roof:Tiles:Blue:Dark:Navy", house.Own()));
  EXPECT_EQ(parent, "");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ParentProject, A_phase_without_one_is_no_phase) {
  PhaseHouse house({}, "CustomerQueryRq 2 status 3260 Error \"No.\"");
  house.Sql("UPDATE Client SET QBLinkID = '" + house.roof + "'");
  house.GetOnly(house.tiles);
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ProjectIsPhase"), "0");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ParentProjectID"), "NULL");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "PhaseDescription"), "NULL");
}

TEST(ParentProject, An_error_on_the_way_up_asks_at_its_level_and_the_phase_still_comes) {
  PhaseHouse house({.answers = "yes"}, "row 1 raise 0x80040E2F \"Refused.\" Project");
  house.Sql("UPDATE Client SET QBLinkID = '" + house.roof + "'");
  house.GetOnly(house.tiles);
  EXPECT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(house.Keys(), "Roof:Tiles");
  EXPECT_EQ(house.ColumnOf("Roof:Tiles", "ParentProjectID"), "");
  // The level above has left its outcome.
  EXPECT_EQ(Outcome(), TableOk::GoOn);
}

// --- Pulls -----------------------------------------------------------------------------------------------------------

TEST(ProjectPull, A_customer_makes_a_project_whose_code_is_its_name) {
  ProjectsHouse house;
  house.Pull(house.client);
  EXPECT_EQ(house.Keys(), "Acme:");
  EXPECT_EQ(house.ColumnOf("Acme:", "ProjectCode"), "Acme");
  EXPECT_EQ(house.ColumnOf("Acme:", "ProjectPhase"), "");
  EXPECT_EQ(house.ColumnOf("Acme:", "ClientID"), "ACME");
  EXPECT_EQ(house.ColumnOf("Acme:", "QBLinkID"), house.client);
  EXPECT_EQ(house.ColumnOf("Acme:", "ProjectName"), "Acme");
  EXPECT_TRUE(house.desk.FormEvents().empty());
  EXPECT_EQ(house.Own().State(), ado::ObjectState::Open);
}

TEST(ProjectPull, A_record_whose_client_is_not_here_comes_without_one_and_without_a_box) {
  ProjectsHouse house;
  house.Pull(house.AddCustomer("<Name>Other</Name>"));
  house.Pull(house.Job("Roof", house.client));
  EXPECT_EQ(house.Keys(), "Other:,Acme:Roof:");
  EXPECT_EQ(house.ColumnOf("Other:", "ClientID"), "");
  EXPECT_EQ(house.ColumnOf("Acme:Roof:", "ClientID"), "");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ProjectPull, A_broken_lookup_of_the_client_is_ignored) {
  ProjectsHouse house({}, "sql 1 raise 0x80040E14 \"Broken.\" SELECT ClientID FROM Client");
  house.Pull(house.client);
  EXPECT_EQ(house.ColumnOf("Acme:", "ClientID"), "");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ProjectPull, The_name_keeps_its_junk_and_a_quote_in_it_ends_in_the_question) {
  ProjectsHouse house({.answers = "yes"});
  house.Pull(house.AddCustomer("<Name>Hash # Co, Ltd</Name>"));
  EXPECT_EQ(house.Keys(), "Hash # Co, Ltd:");
  house.Pull(house.AddCustomer("<Name>O'Neil</Name>"));
  EXPECT_EQ(house.Keys(), "Hash # Co, Ltd:");
  EXPECT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_EQ(Outcome(), TableOk::GoOn);
}

TEST(ProjectPull, A_cancel_is_left_for_the_callers_loop) {
  ProjectsHouse house;
  Vars().g_Cancelled = true;
  house.Pull(house.client);
  EXPECT_EQ(house.Keys(), "Acme:");
  EXPECT_TRUE(Vars().g_Cancelled);
}

// --- Managers --------------------------------------------------------------------------------------------------------

class ManagerHouse : public ProjectsHouse {
 public:
  explicit ManagerHouse(std::string_view contact, std::string_view faults = {}) : ProjectsHouse({}, faults) {
    job = Job("Roof", client, contact.empty() ? "" : "<AltContact>" + std::string(contact) + "</AltContact>");
  }
  std::string Manager() { return GetProjectManagerForTW(RecordOf(job), Own()); }

  std::string job;
};

TEST(ManagerOfProject, Is_the_contact_where_that_is_an_employee) {
  ManagerHouse house("ALICE");
  house.Sql("INSERT INTO Employee (EmployeeID) VALUES ('ALICE')");
  EXPECT_EQ(house.Manager(), "ALICE");
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM Employee"), "1");
}

TEST(ManagerOfProject, Is_looked_for_by_fifteen_characters_without_junk) {
  ManagerHouse house("O'Brien, Alice and Bob");
  house.Sql("INSERT INTO Employee (EmployeeID) VALUES ('O Brien  Alice ')");
  EXPECT_EQ(house.Manager(), "O Brien  Alice ");
}

TEST(ManagerOfProject, Is_made_where_the_contact_is_unknown_or_missing_and_made_once) {
  for (const std::string_view contact : {"Nobody", ""}) {
    ManagerHouse house(contact);
    EXPECT_EQ(house.Manager(), "From QuickBooks");
    EXPECT_EQ(house.Manager(), "From QuickBooks");
    EXPECT_EQ(house.Scalar("SELECT count(*) FROM Employee"), "1");
    EXPECT_EQ(house.Scalar("SELECT EmpFName FROM Employee WHERE EmployeeID = 'From QuickBooks'"), "From");
    EXPECT_EQ(house.Scalar("SELECT EmpLName FROM Employee WHERE EmployeeID = 'From QuickBooks'"), "QuickBooks");
    EXPECT_TRUE(house.BoxTexts().empty());
  }
}

TEST(ManagerOfProject, Errors_are_ignored_throughout) {
  ManagerHouse house("ALICE",
                     "sql 1 raise 0x80040E14 \"Broken.\" SELECT EmployeeID\nsql 1 raise 0x80040E14 \"Broken.\" Insert");
  house.Sql("INSERT INTO Employee (EmployeeID) VALUES ('ALICE')");
  EXPECT_EQ(house.Manager(), "From QuickBooks");
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM Employee"), "1");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(ManagerOfProject, Goes_into_the_row_of_a_new_project) {
  ManagerHouse house("Nobody");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Roof:", "EmployeeID"), "From QuickBooks");
}

}  // namespace
}  // namespace twqb
