// Which fields of a job go into a project.

#include <gtest/gtest.h>

#include "tests/lists/ProjectsHouse.h"

namespace twqb {
namespace {

// A job as QuickBooks could answer it, with what is beside its names.
std::string Answer(const std::string& customer, std::string_view fields) {
  return "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><CustomerQueryRs requestID=\"1\" statusCode=\"0\" "
         "statusSeverity=\"Info\" statusMessage=\"Status OK\"><CustomerRet><ListID>1-1</ListID>"
         "<TimeCreated>2007-04-05T06:07:08</TimeCreated><TimeModified>2008-03-05T10:00:00</TimeModified>"
         "<EditSequence>1</EditSequence><Name>Roof</Name><FullName>Acme:Roof</FullName><ParentRef><ListID>" +
         customer + "</ListID></ParentRef><Sublevel>1</Sublevel>" + std::string(fields) +
         "</CustomerRet></CustomerQueryRs></QBXMLMsgsRs></QBXML>";
}

class FieldsHouse : public ProjectsHouse {
 public:
  using ProjectsHouse::ProjectsHouse;
  // Gets the job with these fields; the column of its row.
  void GetJob(std::string_view fields) {
    traffic.canned.emplace_back(Answer(client, fields));
    Get();
  }
  std::string Got(std::string_view column) { return ColumnOf("Roof:", column); }
  // The row that the job is linked to already.
  void Known(std::string_view columns, std::string_view values) {
    Project("Roof:", "QBLinkID, " + std::string(columns), "'1-1', " + std::string(values));
  }
};

constexpr std::string_view kShip =
    "<ShipAddress><Addr1>1 Main</Addr1><Addr2>Rear</Addr2><Addr4>no</Addr4><City>Boston</City><State>MA</State>"
    "<PostalCode>02110</PostalCode></ShipAddress>";
constexpr std::string_view kBill =
    "<BillAddress><Addr1>Acme</Addr1><Addr2>2 Main</Addr2><Addr3>Floor 3</Addr3><City>Salem</City><State>NH</State>"
    "<PostalCode>03079</PostalCode></BillAddress>";

TEST(JobFields, A_full_job_fills_every_column) {
  FieldsHouse house;
  house.Sql("INSERT INTO Employee (EmployeeID) VALUES ('ALICE')");
  house.GetJob("<IsActive>true</IsActive>" + std::string(kBill) + std::string(kShip) +
               "<AltContact>ALICE</AltContact><JobStatus>Closed</JobStatus><JobStartDate>2007-06-01</JobStartDate>"
               "<JobTypeRef><FullName>Fixed</FullName></JobTypeRef>");
  EXPECT_EQ(house.Got("ProjectName"), "Roof");
  EXPECT_EQ(house.Got("EmployeeID"), "ALICE");
  EXPECT_EQ(house.Got("ProjectConType"), "Fixed");
  EXPECT_EQ(house.Got("ProjectStatus"), "Active");
  EXPECT_EQ(house.Got("ProjectStartDate"), "6/1/2007");
  EXPECT_EQ(house.Got("ProjectStreet"), "1 Main");
  EXPECT_EQ(house.Got("ProjectStreet2"), "Rear");
  EXPECT_EQ(house.Got("ProjectCity"), "Boston");
  EXPECT_EQ(house.Got("ProjectState"), "MA");
  EXPECT_EQ(house.Got("ProjectZip"), "02110");
}

TEST(JobFields, A_bare_job_starts_on_the_day_on_which_it_was_made) {
  FieldsHouse house;
  house.GetJob("");
  EXPECT_EQ(house.Got("ProjectStartDate"), "4/5/2007");
  EXPECT_EQ(house.Got("ProjectConType"), "Hourly");
  EXPECT_EQ(house.Got("ProjectStatus"), "NULL");
  EXPECT_EQ(house.Got("ProjectStreet"), "NULL");
}

// --- Addresses -------------------------------------------------------------------------------------------------------

TEST(JobFields, A_third_line_of_the_site_takes_the_place_of_the_second) {
  FieldsHouse house;
  house.GetJob("<ShipAddress><Addr1>1 Main</Addr1><Addr2>Rear</Addr2><Addr3>Top</Addr3></ShipAddress>");
  EXPECT_EQ(house.Got("ProjectStreet2"), "Top");
}

TEST(JobFields, Without_a_site_the_lines_of_the_billing_address_behind_the_company_are_taken) {
  FieldsHouse house;
  house.GetJob(kBill);
  EXPECT_EQ(house.Got("ProjectStreet"), "2 Main");
  EXPECT_EQ(house.Got("ProjectStreet2"), "Floor 3");
  EXPECT_EQ(house.Got("ProjectCity"), "Salem");
  EXPECT_EQ(house.Got("ProjectState"), "NH");
  EXPECT_EQ(house.Got("ProjectZip"), "03079");
}

TEST(JobFields, Without_either_address_nothing_is_blanked) {
  FieldsHouse house;
  house.Known("ProjectStreet, ProjectStreet2, ProjectCity, ProjectState, ProjectZip", "'s', 't', 'u', 'v', 'w'");
  house.GetJob("");
  EXPECT_EQ(house.Got("ProjectStreet || ProjectStreet2 || ProjectCity || ProjectState || ProjectZip"), "stuvw");
}

TEST(JobFields, A_part_that_an_address_lacks_keeps_its_column) {
  FieldsHouse house;
  house.Known("ProjectStreet, ProjectCity", "'s', 'u'");
  house.GetJob("<ShipAddress><City>Boston</City></ShipAddress>" + std::string(kBill));
  EXPECT_EQ(house.Got("ProjectStreet"), "s");
  EXPECT_EQ(house.Got("ProjectCity"), "Boston");
}

struct Place {
  std::string country;
  std::string element;
};

class JobCountries : public testing::TestWithParam<std::tuple<Place, std::string>> {};

TEST_P(JobCountries, Decide_what_fills_the_state) {
  const auto& [place, address] = GetParam();
  FieldsHouse house;
  Vars().g_QBCountry = place.country;
  house.GetJob("<" + address + "><" + place.element + ">Somewhere</" + place.element + "></" + address + ">");
  EXPECT_EQ(house.Got("ProjectState"), "Somewhere");
}

INSTANTIATE_TEST_SUITE_P(ProjectGet, JobCountries,
                         testing::Combine(testing::Values(Place{"US", "State"}, Place{"CA", "Province"},
                                                          Place{"uk", "County"}, Place{"AU", "State"}),
                                          testing::Values("ShipAddress", "BillAddress")),
                         [](const auto& test) {
                           return std::get<0>(test.param).country + "_" + std::get<1>(test.param);
                         });

// --- Status and contract type ----------------------------------------------------------------------------------------

struct Status {
  std::string wire;
  std::string status;
  std::string contract;
};

class JobStatuses : public testing::TestWithParam<std::tuple<Status, bool>> {};

TEST_P(JobStatuses, Decide_status_and_contract_of_a_new_row_and_an_old_one_unless_the_job_is_inactive) {
  const auto& [status, active] = GetParam();
  for (const bool known : {false, true}) {
    FieldsHouse house;
    if (known) house.Known("ProjectStatus, ProjectConType", "'Hold', 'Hourly'");
    house.GetJob(std::string(active ? "<IsActive>true</IsActive>" : "<IsActive>false</IsActive>") + "<JobStatus>" +
                 status.wire + "</JobStatus>");
    EXPECT_EQ(house.Got("ProjectStatus"), active ? status.status : "Inactive");
    EXPECT_EQ(house.Got("ProjectConType"), status.contract);
  }
}

INSTANTIATE_TEST_SUITE_P(
    ProjectGet, JobStatuses,
    testing::Combine(testing::Values(Status{"Awarded", "Active", "Hourly"}, Status{"Closed", "Active", "Hourly"},
                                     Status{"InProgress", "Active", "Hourly"}, Status{"None", "Active", "Hourly"},
                                     Status{"NotAwarded", "Completed", "Marketing"},
                                     Status{"Pending", "Active", "Marketing"}),
                     testing::Bool()),
    [](const auto& test) {
      return std::get<0>(test.param).wire + (std::get<1>(test.param) ? "_Active" : "_Inactive");
    });

TEST(JobFields, An_inactive_job_without_a_status_is_inactive_and_an_active_one_keeps_its_status) {
  for (const bool active : {false, true}) {
    FieldsHouse house;
    house.Known("ProjectStatus", "'Hold'");
    house.GetJob(active ? "<IsActive>true</IsActive>" : "<IsActive>false</IsActive>");
    EXPECT_EQ(house.Got("ProjectStatus"), active ? "Hold" : "Inactive");
  }
}

TEST(JobFields, A_project_that_was_sent_as_completed_comes_back_as_active) {
  ProjectsHouse house;
  house.Project("ABC:", "ProjectName, ProjectStatus", "'Main', 'Completed'");
  house.Send();
  house.Get();
  EXPECT_EQ(house.ColumnOf("ABC:", "ProjectStatus"), "Active");
}

class ContractTypes : public testing::TestWithParam<std::pair<std::string, std::string>> {};

TEST_P(ContractTypes, Are_those_of_a_fixed_list_as_QuickBooks_spells_them) {
  FieldsHouse house;
  house.GetJob("<JobTypeRef><FullName>" + GetParam().first + "</FullName></JobTypeRef>");
  EXPECT_EQ(house.Got("ProjectConType"), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(ProjectGet, ContractTypes,
                         testing::Values(std::pair{"Fixed", "Fixed"}, std::pair{"fIXED", "fIXED"},
                                         std::pair{"Hourly", "Hourly"},
                                         std::pair{"Hourly Not To Exceed", "Hourly Not To Exceed"},
                                         std::pair{"Marketing", "Marketing"}, std::pair{"OVERHEAD", "OVERHEAD"},
                                         std::pair{"Percentage", "Percentage"}, std::pair{"Recurring", "Recurring"},
                                         std::pair{"Recurring with cap", "Recurring with cap"},
                                         std::pair{"Residential", "Hourly"}, std::pair{"Residential:Fixed", "Hourly"},
                                         std::pair{"Fixed ", "Hourly"}, std::pair{"", "Hourly"}));

TEST(JobFields, The_job_type_of_a_known_project_is_not_read) {
  FieldsHouse house;
  house.Known("ProjectConType", "'Recurring'");
  house.GetJob("<JobTypeRef><FullName>Fixed</FullName></JobTypeRef>");
  EXPECT_EQ(house.Got("ProjectConType"), "Recurring");
}

// --- The name --------------------------------------------------------------------------------------------------------

struct Naming {
  std::string key;
  std::string present;  // as SQL
  std::string name;     // in QuickBooks
  std::string taken;
};

class JobNames : public testing::TestWithParam<Naming> {};

TEST_P(JobNames, Lose_the_key_and_leave_a_longer_name_alone) {
  ProjectsHouse house;
  const auto id = house.Job(GetParam().name, house.client);
  house.Project(GetParam().key, "QBLinkID, ProjectName", "'" + id + "', " + GetParam().present);
  house.Get();
  EXPECT_EQ(house.ColumnOf(GetParam().key, "ProjectName"), GetParam().taken);
}

INSTANTIATE_TEST_SUITE_P(
    ProjectGet, JobNames,
    testing::Values(Naming{"ABC:", "NULL", "ABC- Main", "Main"}, Naming{"ABC:01", "'Old'", "ABC-01 Roof", "Roof"},
                    // Cut by QuickBooks: the longer name stays.
                    Naming{"ABC:", "'Main Street North'", "ABC- Main Str", "Main Street North"},
                    Naming{"ABC:", "'main street'", "ABC- Main", "Main"},
                    // Without the key, or with it in another case, the name is taken as it is.
                    Naming{"ABC:", "'Main Street'", "Main", "Main"}, Naming{"ABC:", "NULL", "ABC Main", "ABC Main"},
                    Naming{"ABC:", "NULL", "abc- Main", "abc- Main"},
                    // One more character goes, whatever it is, and an empty rest is never written.
                    Naming{"ABC:", "NULL", "ABC-éMain", "Main"}, Naming{"ABC:", "'Old'", "ABC-", "Old"},
                    Naming{"ABC:01", "'Old'", "ABC-01X", "Old"}));

TEST(JobFields, Every_text_is_cut_to_its_column) {
  FieldsHouse house;
  const std::string text(120, 'x');
  house.GetJob("<ShipAddress><Addr1>" + text + "</Addr1><Addr2>" + text + "</Addr2><City>" + text + "</City><State>" +
               text + "</State><PostalCode>" + text + "</PostalCode></ShipAddress>");
  EXPECT_EQ(house.Got("length(ProjectStreet) || '-' || length(ProjectStreet2) || '-' || length(ProjectCity) || '-' || "
                      "length(ProjectState) || '-' || length(ProjectZip)"),
            "60-60-35-25-15");
}

TEST(JobFields, A_name_is_cut_to_its_column_before_the_key_is_taken_off) {
  ProjectsHouse house;
  house.Sql("DROP TABLE Project");
  house.Sql(
      "CREATE TABLE Project (ProjectID VARCHAR(100) PRIMARY KEY, ProjectCode VARCHAR(4), ProjectPhase VARCHAR(3), "
      "ProjectName VARCHAR(9), ClientID VARCHAR(65), EmployeeID VARCHAR(8), ProjectIsPhase SMALLINT, ParentProjectID "
      "VARCHAR(4), PhaseDescription VARCHAR(12), ProjectConType VARCHAR(4), ProjectStatus VARCHAR(3), "
      "ProjectStartDate DATETIME, QBLinkID VARCHAR(40), LastUpdated DATETIME)");
  house.Job("ABCD- Main", house.client);
  house.Get();
  // The code is cut, and so is the key that the name is compared with.
  EXPECT_EQ(house.ColumnOf("ABCD:", "ProjectName"), "Mai");
  EXPECT_EQ(house.ColumnOf("ABCD:", "EmployeeID"), "From Qui");
  EXPECT_EQ(house.ColumnOf("ABCD:", "ProjectConType"), "Hour");
  EXPECT_EQ(house.ColumnOf("ABCD:", "ProjectStatus"), "Act");
}

}  // namespace
}  // namespace twqb
