// Employees and vendors on their way from QuickBooks. What holds for both is told of both.

#include <gtest/gtest.h>

#include "tests/lists/PeopleHouse.h"

namespace twqb {
namespace {

class PersonGet : public testing::TestWithParam<IsVendor> {
 protected:
  // Fields of a record named so; an employee's name is its first name.
  static std::string Named(std::string_view name, std::string_view fields = {}) {
    return fmt::format("<{0}>{1}</{0}>{2}", GetParam() == IsVendor::Yes ? "Name" : "FirstName", name, fields);
  }
  static std::string OwnIsSub() { return GetParam() == IsVendor::Yes ? "-1" : "0"; }
};

INSTANTIATE_TEST_SUITE_P(People, PersonGet, testing::Values(IsVendor::No, IsVendor::Yes), [](const auto& test) {
  return std::string(test.param == IsVendor::Yes ? "Vendor" : "Employee");
});

TEST_P(PersonGet, The_lookups_carry_the_kind_for_the_link_alone) {
  PeopleHouse house(GetParam());
  house.Person({{"EmployeeID", "'Ann'"}});
  const auto id = house.Add(Named("Ann"));
  house.traffic.statements.clear();
  house.Get();
  EXPECT_EQ(house.traffic.statements,
            (Texts{"SELECT * FROM Employee;",
                   "SELECT QBLinkID from Employee WHERE IsSub = " + OwnIsSub() + " AND QBLinkID = '" + id + "';",
                   "SELECT EmployeeID from Employee WHERE EmployeeID = 'Ann';",
                   "SELECT EmployeeID from Employee WHERE EmployeeID = 'Ann1';"}));
  EXPECT_EQ(house.ColumnOf("Ann1", "QBLinkID"), id);
  EXPECT_EQ(house.ColumnOf("Ann1", "IsSub"), OwnIsSub());
  EXPECT_EQ(house.ColumnOf("Ann1", "LastUpdated"), "3/5/2008 3:00:00 PM");
  EXPECT_EQ(Vars().g_TableOk, TableOk::True);
}

TEST_P(PersonGet, A_row_of_the_other_kind_with_that_link_is_not_the_twin) {
  PeopleHouse house(GetParam());
  const auto id = house.Add(Named("Ann"));
  house.Sql(fmt::format("INSERT INTO Employee (EmployeeID, IsSub, QBLinkID) VALUES ('OTHER', {}, '{}')",
                        GetParam() == IsVendor::Yes ? 0 : -1, id));
  house.Get();
  EXPECT_EQ(house.Keys(), "OTHER,Ann");
}

TEST_P(PersonGet, Keys_lose_what_a_key_can_not_have) {
  PeopleHouse house(GetParam());
  house.Add(Named("O'Neil, Lee"));
  house.Get();
  EXPECT_EQ(house.Keys(), "O Neil  Lee");
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(PersonGet, A_missing_first_or_last_name_is_Missing_Data) {
  PeopleHouse house(GetParam());
  house.Add(GetParam() == IsVendor::Yes ? "<Name>Ann</Name>" : "<MiddleName>Ann</MiddleName>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Ann", "EmpFName"), "Missing Data");
  EXPECT_EQ(house.ColumnOf("Ann", "EmpLName"), "Missing Data");
}

TEST_P(PersonGet, The_status_is_Active_or_Inactive) {
  PeopleHouse house(GetParam());
  house.Add(Named("Ann"));
  house.Add(GetParam() == IsVendor::Yes ? "<Name>Bob</Name><IsActive>false</IsActive>"
                                        : "<IsActive>false</IsActive><FirstName>Bob</FirstName>");
  house.Get();
  EXPECT_EQ(house.ColumnOf("Ann", "Status"), "Active");
  EXPECT_EQ(house.ColumnOf("Bob", "Status"), "Inactive");
}

TEST_P(PersonGet, A_state_of_None_does_not_come_back) {
  const auto address = GetParam() == IsVendor::Yes ? "VendorAddress" : "EmployeeAddress";
  PeopleHouse house(GetParam());
  house.Add(Named("Ann", fmt::format("<{0}><City>Bath</City><State>None</State></{0}>", address)));
  house.Add(Named("Bob", fmt::format("<{0}><State>ME</State></{0}>", address)));
  house.Get();
  EXPECT_EQ(house.ColumnOf("Ann", "EmpState"), "");
  EXPECT_EQ(house.ColumnOf("Ann", "EmpCity"), "Bath");
  EXPECT_EQ(house.ColumnOf("Bob", "EmpState"), "ME");
}

TEST_P(PersonGet, The_state_that_was_sent_for_want_of_one_does_not_come_back) {
  PeopleHouse house(
      GetParam(), {},
      fmt::format("{}AddRq 1 status 3110 Error \"state\"", GetParam() == IsVendor::Yes ? "Vendor" : "Employee"));
  house.Person({{"EmployeeID", "'ANN'"}, {"EmpFName", "'Ann'"}, {"EmpState", "'BadLand'"}});
  EXPECT_TRUE(house.Send());
  house.Get();
  EXPECT_EQ(house.FieldOf(house.IdOf("Ann"), "State"), "None");
  EXPECT_EQ(house.ColumnOf("ANN", "EmpState"), "");
}

TEST_P(PersonGet, The_state_is_a_province_in_Canada_and_a_county_in_Britain) {
  const auto address = GetParam() == IsVendor::Yes ? "VendorAddress" : "EmployeeAddress";
  PeopleHouse canadian(GetParam(), {}, {}, kCanadian);
  canadian.Add(Named("Ann", fmt::format("<{0}><Province>ON</Province></{0}>", address)));
  canadian.Get();
  EXPECT_EQ(canadian.ColumnOf("Ann", "EmpState"), "ON");
  PeopleHouse british(GetParam(), {}, {}, kBritish);
  british.Add(Named("Ann", fmt::format("<{0}><County>Kent</County></{0}>", address)));
  british.Get();
  EXPECT_EQ(british.ColumnOf("Ann", "EmpState"), "Kent");
}

TEST_P(PersonGet, The_flags_and_the_later_side_decide_on_a_twin) {
  struct Case {
    bool never;
    bool mostRecent;
    std::string_view lastUpdated;
    std::string_view hired;
    std::string_view first;
  };
  const Case cases[] = {
      {false, false, "'2008-03-05 23:00:00'", "NULL", "Ann"},
      {true, false, "NULL", "NULL", "Bill"},
      {true, true, "NULL", "NULL", "Bill"},
      {false, true, "'2008-03-05 15:00:00'", "NULL", "Ann"},
      {false, true, "'2008-03-05 15:00:01'", "NULL", "Bill"},
      {false, true, "NULL", "'2008-03-05 10:00:00'", "Ann"},
      {false, true, "NULL", "'2008-03-05 10:00:01'", "Bill"},
      {false, true, "NULL", "NULL", "Ann"},
  };
  for (const auto& c : cases) {
    PeopleHouse house(GetParam());
    const auto id = house.Add(GetParam() == IsVendor::Yes ? "<Name>Ann</Name><FirstName>Ann</FirstName>"
                                                          : "<FirstName>Ann</FirstName>");
    house.Person({{"EmployeeID", "'A'"},
                  {"EmpFName", "'Bill'"},
                  {"QBLinkID", Quoted(id)},
                  {"LastUpdated", std::string(c.lastUpdated)},
                  {"EmpDateHired", std::string(c.hired)}});
    house.Get(c.never, c.mostRecent);
    EXPECT_EQ(house.ColumnOf("A", "EmpFName"), c.first) << c.lastUpdated << c.hired;
    EXPECT_EQ(house.Keys(), "A");
  }
}

TEST_P(PersonGet, The_form_shows_the_kind_and_the_names) {
  PeopleHouse house(GetParam());
  house.Add(Named("Ann"));
  house.Add(Named("Bob"));
  house.Get();
  EXPECT_EQ(house.FormTexts(), Texts{GetParam() == IsVendor::Yes ? "Getting Vendors from QuickBooks..."
                                                                 : "Getting Employees from QuickBooks..."});
  std::string shown;
  for (const auto& event : house.desk.FormEvents()) {
    if (!event.state.record.empty() && !shown.ends_with(event.state.record + " ")) shown += event.state.record + " ";
  }
  EXPECT_EQ(shown, "Label1 Ann Bob ");  // the form's own text comes first
}

TEST_P(PersonGet, An_error_is_logged_with_the_name_and_asked_about) {
  PeopleHouse house(GetParam(), {.answers = "yes"},
                    "row 1 raise 0x80040E2F \"The change breaks a constraint.\" Employee");
  house.Add(Named("Ann"));
  house.Add(Named("Bob"));
  house.Get();
  EXPECT_EQ(house.Log(), Texts{"Error transfering data to Tallywick. Employee = Ann"});
  ASSERT_EQ(house.BoxTexts().size(), 2U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("MoveEmployeesToTW")));
  EXPECT_EQ(house.Keys(), "Bob");
}

// --- Fields of an employee -------------------------------------------------------------------------------------------

constexpr std::string_view kFullEmployee =
    "<IsActive>true</IsActive><Salutation>Ms.</Salutation><FirstName>Ann</FirstName><MiddleName>B</MiddleName>"
    "<LastName>Hill</LastName><EmployeeAddress><Addr1>1 Main</Addr1><Addr2>Floor 2</Addr2><City>Boston</City>"
    "<State>MA</State><PostalCode>02110</PostalCode></EmployeeAddress><Phone>(617)-555-0123</Phone>"
    "<Mobile>617.555.0125</Mobile><AltPhone>[617] 555_0124</AltPhone><Fax>617-555-0126</Fax><SSN>987-65-4320</SSN>"
    "<Email>a@b.example</Email><HiredDate>2003-02-10</HiredDate><ReleasedDate>2007-11-30</ReleasedDate>";

TEST(EmployeeGet, A_new_row_has_every_column) {
  PeopleHouse house(IsVendor::No);
  house.Add(kFullEmployee);
  house.Get();
  const std::pair<std::string_view, std::string_view> expected[] = {
      {"EmpFName", "Ann"},
      {"EmpLName", "Hill"},
      {"EmpMI", "B"},
      {"EmpSalt", "Ms."},
      {"EmpCompany", "NULL"},
      {"EmpStreet", "1 Main"},
      {"EmpStreet2", "Floor 2"},
      {"EmpCity", "Boston"},
      {"EmpState", "MA"},
      {"EmpZip", "02110"},
      {"EmpHPhone", "6175550123"},
      {"EmpContactPhone", "6175550124"},
      {"MobileNumber", "6175550125"},
      {"EmpHFax", "NULL"},
      {"EmpEmail", "a@b.example"},
      {"EmpDateHired", "2/10/2003"},
      {"EmpDateReleased", "11/30/2007"},
      {"EmpSSN", "987654320"},
      {"EmpBillRate", "1"},
      {"EmpCostRate", "1"},
      {"Status", "Active"},
      {"IsSub", "0"},
  };
  for (const auto& [column, value] : expected) EXPECT_EQ(house.ColumnOf("Ann B Hill", column), value) << column;
}

TEST(EmployeeGet, What_QuickBooks_leaves_out_blanks_the_texts_and_leaves_dates_and_rates) {
  PeopleHouse house(IsVendor::No);
  const auto id = house.Add("<FirstName>Ann</FirstName>");
  Columns row = {
      {"EmployeeID", "'A'"}, {"QBLinkID", Quoted(id)}, {"EmpDateHired", "'2001-01-02'"}, {"EmpBillRate", "7"}};
  const std::string_view blanked[] = {"EmpMI",  "EmpSalt",   "EmpStreet",       "EmpStreet2",   "EmpCity",  "EmpState",
                                      "EmpZip", "EmpHPhone", "EmpContactPhone", "MobileNumber", "EmpEmail", "EmpSSN"};
  const std::string_view kept[] = {"EmpHFax", "EmpCompany"};
  for (const auto column : blanked) row[std::string(column)] = "'x'";
  for (const auto column : kept) row[std::string(column)] = "'x'";
  house.Person(row);
  house.Get();
  for (const auto column : blanked) EXPECT_EQ(house.ColumnOf("A", column), "") << column;
  for (const auto column : kept) EXPECT_EQ(house.ColumnOf("A", column), "x") << column;
  EXPECT_EQ(house.ColumnOf("A", "EmpLName"), "Missing Data");
  EXPECT_EQ(house.ColumnOf("A", "EmpDateHired"), "1/2/2001");
  EXPECT_EQ(house.ColumnOf("A", "EmpBillRate"), "7");
}

struct StoredNumber {
  Edition edition;
  std::string_view fields;
  std::string_view stored;
};

TEST(EmployeeGet, The_number_of_the_country_loses_its_separators) {
  const StoredNumber cases[] = {
      {{}, "<SSN>987-65-4320</SSN>", "987654320"},
      {{}, "<SSN>98 76-5</SSN>", "98 765"},  // blanks stay in this one
      {{}, "", ""},
      {kCanadian, "<SIN>046 454-286</SIN>", "046454286"},
      {kBritish, "<NiNumber>AB 12-34 56 C</NiNumber>", "AB123456C"},
  };
  for (const auto& c : cases) {
    PeopleHouse house(IsVendor::No, {}, {}, c.edition);
    house.Add("<FirstName>Ann</FirstName>" + std::string(c.fields));
    house.Get();
    EXPECT_EQ(house.ColumnOf("Ann", "EmpSSN"), c.stored) << c.fields;
  }
}

TEST(EmployeeGet, A_mobile_number_is_not_looked_for_in_Canada_and_Britain) {
  for (const auto& edition : {kCanadian, kBritish}) {
    PeopleHouse house(IsVendor::No, {}, {}, edition);
    const auto id = house.Add("<FirstName>Ann</FirstName>");
    house.Person({{"EmployeeID", "'A'"}, {"QBLinkID", Quoted(id)}, {"MobileNumber", "'555'"}});
    house.Get();
    EXPECT_EQ(house.ColumnOf("A", "MobileNumber"), "555") << edition.country;
  }
}

TEST(EmployeeGet, Texts_are_cut_to_the_columns) {
  PeopleHouse house(IsVendor::No);
  house.Sql("DROP TABLE Employee");
  std::string ddl = "CREATE TABLE Employee (EmployeeID VARCHAR(65) NOT NULL PRIMARY KEY, IsSub SMALLINT";
  for (const std::string_view column :
       {"EmpFName", "EmpLName", "EmpMI", "EmpSalt", "EmpCompany", "EmpStreet", "EmpStreet2", "EmpCity", "EmpState",
        "EmpZip", "EmpHPhone", "EmpContactPhone", "MobileNumber", "EmpHFax", "EmpEmail", "EmpSSN"}) {
    ddl += ", " + std::string(column) + " VARCHAR(2)";
  }
  house.Sql(ddl +
            ", EmpDateHired DATETIME, EmpDateReleased DATETIME, EmpBillRate DOUBLE, EmpCostRate DOUBLE, Status "
            "VARCHAR(10), QBLinkID VARCHAR(40), LastUpdated DATETIME)");
  house.Add(kFullEmployee);
  house.Get();
  EXPECT_TRUE(house.BoxTexts().empty());
  const std::pair<std::string_view, std::string_view> expected[] = {
      {"EmpFName", "An"},        {"EmpLName", "Hi"},    {"EmpMI", "B"},     {"EmpSalt", "Ms"},
      {"EmpStreet", "1 "},       {"EmpStreet2", "Fl"},  {"EmpCity", "Bo"},  {"EmpState", "MA"},
      {"EmpZip", "02"},          {"EmpHPhone", "61"},   {"EmpEmail", "a@"}, {"EmpSSN", "98"},
      {"EmpContactPhone", "61"}, {"MobileNumber", "61"}};
  for (const auto& [column, value] : expected) EXPECT_EQ(house.ColumnOf("Ann B Hill", column), value) << column;
}

// --- Fields of a vendor ----------------------------------------------------------------------------------------------

TEST(VendorGet, A_new_row_has_every_column) {
  PeopleHouse house(IsVendor::Yes);
  house.Add(
      "<Name>Drill Co</Name><CompanyName>Drill &amp; Core</CompanyName><Salutation>Mr.</Salutation>"
      "<FirstName>John</FirstName><MiddleName>Q</MiddleName><LastName>Smith</LastName><VendorAddress>"
      "<Addr1>Route 125</Addr1><Addr2>Barn</Addr2><Addr3>Loft</Addr3><City>Epping</City><State>NH</State>"
      "<PostalCode>03042</PostalCode></VendorAddress><Phone>(603)-555-0123</Phone><AltPhone>603.555.0124</AltPhone>"
      "<Fax>603-555-0126</Fax><Email>d@c.example</Email><VendorTaxIdent>98-7654321</VendorTaxIdent>");
  house.Get();
  const std::pair<std::string_view, std::string_view> expected[] = {
      {"EmpFName", "John"},     {"EmpLName", "Smith"},       {"EmpMI", "Q"},
      {"EmpSalt", "Mr."},       {"EmpStreet", "Route 125"},  {"EmpCompany", "Drill & Core"},
      {"EmpStreet2", "Barn"},   {"EmpCity", "Epping"},       {"EmpState", "NH"},
      {"EmpZip", "03042"},      {"EmpHPhone", "6035550123"}, {"EmpContactPhone", "6035550124"},
      {"MobileNumber", ""},     {"EmpHFax", "6035550126"},   {"EmpEmail", "d@c.example"},
      {"EmpDateHired", "NULL"}, {"EmpSSN", "NULL"},          {"EmpBillRate", "1"},
      {"EmpCostRate", "1"},     {"Status", "Active"},        {"IsSub", "-1"},
  };
  for (const auto& [column, value] : expected) EXPECT_EQ(house.ColumnOf("Drill Co", column), value) << column;
}

struct LinesCase {
  std::string lines;
  std::string street;
  std::string street2;
};

TEST(VendorGet, The_streets_begin_below_a_first_line_that_is_the_name) {
  const LinesCase cases[] = {
      {"<Addr1>Drill Co</Addr1><Addr2>Barn</Addr2><Addr3>Loft</Addr3>", "Barn", "Loft"},
      {"<Addr1>Drill Co</Addr1><Addr2>Barn</Addr2>", "Barn", ""},
      {"<Addr1>drill co</Addr1><Addr2>Barn</Addr2><Addr3>Loft</Addr3>", "drill co", "Barn"},
      {"<Addr1>Route 125</Addr1><Addr2>Barn</Addr2><Addr3>Loft</Addr3>", "Route 125", "Barn"},
      {"<Addr2>Barn</Addr2><Addr3>Loft</Addr3>", "", "Barn"},
      {"", "", ""},
  };
  for (const auto& c : cases) {
    PeopleHouse house(IsVendor::Yes);
    house.Add("<Name>Drill Co</Name><VendorAddress>" + c.lines + "<City>Epping</City></VendorAddress>");
    house.Get();
    EXPECT_EQ(house.ColumnOf("Drill Co", "EmpStreet"), c.street) << c.lines;
    EXPECT_EQ(house.ColumnOf("Drill Co", "EmpStreet2"), c.street2) << c.lines;
    EXPECT_EQ(house.ColumnOf("Drill Co", "EmpCity"), "Epping") << c.lines;
  }
}

TEST(VendorGet, What_QuickBooks_leaves_out_blanks_the_texts_but_not_the_number) {
  PeopleHouse house(IsVendor::Yes);
  const auto id = house.Add("<Name>Drill Co</Name>");
  house.Person({{"EmployeeID", "'D'"},
                {"QBLinkID", Quoted(id)},
                {"EmpCompany", "'x'"},
                {"EmpHFax", "'x'"},
                {"EmpSSN", "'x'"},
                {"EmpDateHired", "'2001-01-02'"}});
  house.Get();
  EXPECT_EQ(house.ColumnOf("D", "EmpCompany"), "");
  EXPECT_EQ(house.ColumnOf("D", "EmpHFax"), "");
  EXPECT_EQ(house.ColumnOf("D", "EmpSSN"), "x");
  EXPECT_EQ(house.ColumnOf("D", "EmpDateHired"), "1/2/2001");
}

}  // namespace
}  // namespace twqb
