// Which fields of a project go to QuickBooks, under which name, and in which shape.

#include <gtest/gtest.h>

#include "tests/lists/ProjectsHouse.h"

namespace twqb {
namespace {

constexpr int kNameLength = 41;  // of a customer in QuickBooks

std::string Letters(std::size_t count) { return std::string(count, 'x'); }

// --- The name --------------------------------------------------------------------------------------------------------

struct Naming {
  std::string projectID;
  std::string name;
  std::string sent;
};

class ProjectNames : public testing::TestWithParam<Naming> {};

TEST_P(ProjectNames, Are_made_of_key_and_name) {
  EXPECT_EQ(GetQBProjectName(GetParam().projectID, GetParam().name, kNameLength), GetParam().sent);
}

const Naming kNamings[] = {
    // The dash stays though the phase is empty.
    {"ABC:", "Main Street", "ABC- Main Street"},
    {"ABC:01", "Roof", "ABC-01 Roof"},
    // A top project's name begins with its code: unchanged, in any case.
    {"ABC:", "ABC Main", "ABC Main"},
    {"abc:", "ABCDE", "ABCDE"},
    {"Öl:", "ÖL AG", "ÖL AG"},
    // A phase's has to go on with a blank behind its key.
    {"ABC:01", "ABC-01 Roof", "ABC-01 Roof"},
    {"ABC:01", "abc-01 Roof", "abc-01 Roof"},
    {"ABC:01", "ABC-01Roof", "ABC-01 ABC-01Roof"},
    {"ABC:01", "ABC-01", "ABC-01 ABC-01"},
    {"ABC:", "", "ABC- "},
    {"A:B:C", "D", "A-B-C D"},
    {":", "Anything", "Anything"},
    // Cut to the room behind the key; with a key that leaves none, the name alone, or the key alone.
    {"ABC:", Letters(40), "ABC- " + Letters(36)},
    {Letters(38) + ":", "yy", Letters(38) + "- y"},
    {Letters(39) + ":", "yy", Letters(39) + "- "},
    {Letters(40) + ":", "yy", "yy"},
    {Letters(38) + ":7", "yy", Letters(38) + "-7 "},
};

INSTANTIATE_TEST_SUITE_P(ProjectSend, ProjectNames, testing::ValuesIn(kNamings));

TEST(ProjectFields, A_name_that_keeps_its_length_is_cut_on_the_Add) {
  ProjectsHouse house;
  const auto name = "ABC" + Letters(40);
  house.Project("ABC:", "ProjectName", "'" + name + "'");
  house.Send();
  EXPECT_EQ(house.TextOf(house.Requests("CustomerAddRq").at(0), "Name"), name.substr(0, 41));
}

TEST(ProjectFields, Colons_of_a_name_go_as_blanks) {
  ProjectsHouse house;
  house.Project("ABC:", "ProjectName", "'Main: Street:'");
  house.Send();
  EXPECT_EQ(house.TextOf(house.Requests("CustomerAddRq").at(0), "Name"), "ABC- Main  Street ");
  EXPECT_EQ(house.TextOf(house.Requests("CustomerAddRq").at(0), "JobDesc"), "Main  Street ");
}

// --- The fields ------------------------------------------------------------------------------------------------------

constexpr std::string_view kFullColumns =
    "ProjectName, ProjectStatus, ProjectStartDate, EmployeeID, ProjectStreet, ProjectStreet2, ProjectZip, ProjectCity, "
    "ProjectState";
constexpr std::string_view kFullValues =
    "'Main Street', 'Active', '2007-06-01 00:00:00', 'ALICE', '1 Main', 'Rear', '02110', 'Boston', 'MA'";
const std::string kFullFields =
    "<ShipAddress><Addr1>1 Main</Addr1><Addr2>Rear</Addr2><City>Boston</City><State>MA</State>"
    "<PostalCode>02110</PostalCode></ShipAddress><AltContact>ALICE</AltContact><JobStatus>InProgress</JobStatus>"
    "<JobStartDate>2007-06-01</JobStartDate>";

TEST(ProjectFields, A_full_project_is_added_with_every_field_at_its_place) {
  ProjectsHouse house;
  house.Project("ABC:", kFullColumns, kFullValues);
  house.Send();
  EXPECT_EQ(house.Requests("CustomerAddRq").at(0), "<CustomerAdd><Name>ABC- Main Street</Name><ParentRef><ListID>" +
                                                       house.client + "</ListID></ParentRef>" + kFullFields +
                                                       "<JobDesc>Main Street</JobDesc></CustomerAdd>");
}

TEST(ProjectFields, A_Mod_has_neither_name_nor_parent_nor_description) {
  ProjectsHouse house;
  const auto id = house.Job("ABC", house.client);
  house.Project("ABC:", std::string(kFullColumns) + ", QBLinkID", std::string(kFullValues) + ", '" + id + "'");
  house.Send();
  EXPECT_EQ(house.Requests("CustomerModRq").at(0), "<CustomerMod><ListID>" + id +
                                                       "</ListID><EditSequence>1204729200</EditSequence>" +
                                                       kFullFields + "</CustomerMod>");
}

TEST(ProjectFields, An_empty_project_sends_its_key_an_empty_description_and_no_manager) {
  for (const std::string_view empty : {"NULL", "''"}) {
    ProjectsHouse house;
    std::string values = "''";
    for (int i = 0; i < 6; ++i) values += ", " + std::string(empty);
    house.Project(
        "ABC:", "ProjectName, EmployeeID, ProjectStreet, ProjectStreet2, ProjectZip, ProjectCity, ProjectState",
        values);
    house.Send();
    EXPECT_EQ(house.Requests("CustomerAddRq").at(0),
              "<CustomerAdd><Name>ABC- </Name><ParentRef><ListID>" + house.client +
                  "</ListID></ParentRef><AltContact></AltContact><JobDesc></JobDesc></CustomerAdd>");
  }
}

TEST(ProjectFields, A_blank_state_stays_behind_and_any_other_goes_untrimmed) {
  for (const bool blank : {true, false}) {
    ProjectsHouse house;
    house.Project("ABC:", "ProjectState, ProjectCity", blank ? "'  ', ' '" : "' MA ', ' '");
    house.Send();
    EXPECT_EQ(house.TextOf(house.Requests("CustomerAddRq").at(0), "State"), blank ? "(none)" : " MA ");
    EXPECT_EQ(house.TextOf(house.Requests("CustomerAddRq").at(0), "City"), " ");
  }
}

struct Place {
  std::string country;
  std::string element;
};

class ProjectCountries : public testing::TestWithParam<Place> {};

TEST_P(ProjectCountries, Decide_where_the_state_goes) {
  const auto country = GetParam().country == "CA"   ? messages::Country::CA
                       : GetParam().country == "UK" ? messages::Country::UK
                       : GetParam().country == "AU" ? messages::Country::AU
                                                    : messages::Country::US;
  ProjectsHouse house({.company = {.country = country}}, {}, GetParam().country);
  house.Project("ABC:", "ProjectState", "'Somewhere'");
  house.Send();
  ASSERT_EQ(house.Requests("CustomerAddRq").size(), 1U);
  EXPECT_EQ(house.TextOf(house.Requests("CustomerAddRq")[0], GetParam().element), "Somewhere");
  EXPECT_NE(house.ColumnOf("ABC:", "QBLinkID"), "NULL");
}

INSTANTIATE_TEST_SUITE_P(ProjectSend, ProjectCountries,
                         testing::Values(Place{"US", "State"}, Place{"CA", "Province"}, Place{"UK", "County"},
                                         Place{"AU", "State"}),
                         [](const auto& test) { return test.param.country; });

TEST(ProjectFields, Every_text_is_cut_to_the_length_that_QuickBooks_tells) {
  ProjectsHouse house;
  const auto text = "'" + Letters(60) + "'";
  house.Project("ABC:", "ProjectName, EmployeeID, ProjectStreet, ProjectStreet2, ProjectCity",
                "'" + Letters(100) + "', " + text + ", " + text + ", " + text + ", '" + Letters(35) + "'");
  house.Send();
  const auto request = house.Requests("CustomerAddRq").at(0);
  EXPECT_EQ(house.TextOf(request, "JobDesc"), Letters(99));
  EXPECT_EQ(house.TextOf(request, "AltContact"), Letters(41));
  EXPECT_EQ(house.TextOf(request, "Addr1"), Letters(41));
  EXPECT_EQ(house.TextOf(request, "Addr2"), Letters(41));
  EXPECT_EQ(house.TextOf(request, "City"), Letters(31));
  EXPECT_NE(house.ColumnOf("ABC:", "QBLinkID"), "NULL");
}

// --- The status ------------------------------------------------------------------------------------------------------

struct Status {
  std::string text;
  int number;
  std::string wire;
};

class ProjectStatuses : public testing::TestWithParam<Status> {};

TEST_P(ProjectStatuses, Go_as_a_number_of_three) {
  EXPECT_EQ(StatusToQB(GetParam().text), GetParam().number);
  ProjectsHouse house;
  house.Project("ABC:", "ProjectStatus", "'" + GetParam().text + "'");
  house.Send();
  EXPECT_EQ(house.TextOf(house.Requests("CustomerAddRq").at(0), "JobStatus"), GetParam().wire);
}

INSTANTIATE_TEST_SUITE_P(ProjectSend, ProjectStatuses,
                         testing::Values(Status{"Active", 2, "InProgress"}, Status{"ACTIVE", 2, "InProgress"},
                                         Status{"Completed", 1, "Closed"}, Status{"completed", 1, "Closed"},
                                         Status{"Hold", 3, "None"}, Status{"Inactive", 3, "None"},
                                         Status{"Main", 3, "None"}, Status{"Active ", 3, "None"},
                                         Status{"", 3, "None"}));

}  // namespace
}  // namespace twqb
