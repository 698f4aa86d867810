// Which fields of an employee go to QuickBooks, and in which shape.

#include <gtest/gtest.h>

#include "tests/lists/PeopleHouse.h"

namespace twqb {
namespace {

class EmployeeHouse : public PeopleHouse {
 public:
  explicit EmployeeHouse(const Edition& edition = {}) : PeopleHouse(IsVendor::No, {}, {}, edition) {}
};

const Columns kFull = {{"EmployeeID", "'AHILL'"},
                       {"EmpFName", "'Ann'"},
                       {"EmpLName", "'Hill & Dale'"},
                       {"EmpMI", "'B'"},
                       {"EmpSalt", "'Ms.'"},
                       {"EmpCompany", "'Never sent'"},
                       {"EmpStreet", "'1 Main'"},
                       {"EmpStreet2", "'Floor 2'"},
                       {"EmpCity", "'Boston'"},
                       {"EmpState", "'MA'"},
                       {"EmpZip", "'02110'"},
                       {"EmpHPhone", "'617 555 0123'"},
                       {"EmpContactPhone", "'617.555.0124 x9'"},
                       {"MobileNumber", "'617-555-0125'"},
                       {"EmpHFax", "'(617)555-0126'"},
                       {"EmpEmail", "'a@b.example'"},
                       {"EmpDateHired", "'2003-02-10 00:00:00'"},
                       {"EmpDateReleased", "'2007-11-30 00:00:00'"},
                       {"EmpSSN", "'987654320'"},
                       {"Status", "'Inactive'"}};

TEST(EmployeeFields, A_full_employee_is_added_with_every_field_at_its_place) {
  EmployeeHouse house;
  EXPECT_EQ(house.Fields(kFull, RequestKind::Add),
            "<IsActive>false</IsActive><Salutation>Ms.</Salutation><FirstName>Ann</FirstName><MiddleName>B</MiddleName>"
            "<LastName>Hill &amp; Dale</LastName><EmployeeAddress><Addr1>1 Main</Addr1><Addr2>Floor 2</Addr2>"
            "<City>Boston</City><State>MA</State><PostalCode>02110</PostalCode></EmployeeAddress>"
            "<Phone>(617)-555-0123</Phone><Mobile>(617)-555-0125</Mobile><AltPhone>(617)-555-01249</AltPhone>"
            "<Fax>(617)-555-0126</Fax><SSN>987-65-4320</SSN><Email>a@b.example</Email><HiredDate>2003-02-10</HiredDate>"
            "<ReleasedDate>2007-11-30</ReleasedDate><EmployeePayrollInfo>"
            "<IsUsingTimeDataToCreatePaychecks>true</IsUsingTimeDataToCreatePaychecks></EmployeePayrollInfo>");
}

TEST(EmployeeFields, A_Mod_leaves_dates_number_and_payroll_as_they_are) {
  EmployeeHouse house;
  EXPECT_EQ(house.Fields(kFull),
            "<IsActive>false</IsActive><Salutation>Ms.</Salutation><FirstName>Ann</FirstName><MiddleName>B</MiddleName>"
            "<LastName>Hill &amp; Dale</LastName><EmployeeAddress><Addr1>1 Main</Addr1><Addr2>Floor 2</Addr2>"
            "<City>Boston</City><State>MA</State><PostalCode>02110</PostalCode></EmployeeAddress>"
            "<Phone>(617)-555-0123</Phone><Mobile>(617)-555-0125</Mobile><AltPhone>(617)-555-01249</AltPhone>"
            "<Fax>(617)-555-0126</Fax><Email>a@b.example</Email>");
}

TEST(EmployeeFields, What_is_NULL_stays_away_where_it_is_asked_for_and_goes_empty_elsewhere) {
  EmployeeHouse house;
  EXPECT_EQ(house.Fields({}, RequestKind::Mod),
            "<FirstName></FirstName><EmployeeAddress><Addr1></Addr1><Addr2></Addr2><State>None</State>"
            "</EmployeeAddress><Mobile></Mobile><Fax></Fax>");
  Columns empty;
  for (const auto& [column, value] : kFull) empty[column] = "''";
  empty.erase("EmpDateHired");
  empty.erase("EmpDateReleased");
  EXPECT_EQ(house.Fields(empty, RequestKind::Mod),
            "<IsActive>false</IsActive><FirstName></FirstName><MiddleName></MiddleName><LastName></LastName>"
            "<EmployeeAddress><Addr1></Addr1><Addr2></Addr2><City></City><State>None</State><PostalCode></PostalCode>"
            "</EmployeeAddress><Phone></Phone><Mobile></Mobile><AltPhone></AltPhone><Fax></Fax><Email></Email>");
}

TEST(EmployeeFields, The_name_Missing_Data_is_never_sent) {
  EmployeeHouse house;
  const auto xml = house.Fields({{"EmpFName", "'Missing Data'"}, {"EmpLName", "'Missing Data'"}});
  EXPECT_EQ(house.TextOf(xml, "FirstName"), "(none)");
  EXPECT_EQ(house.TextOf(xml, "LastName"), "(none)");
  const auto row = house.Row({{"EmpFName", "'Missing Data'"}, {"EmpLName", "'Lee'"}});
  const auto retried = house.Fields(*row, RequestKind::Add, {.key = "K", .countedName = "Missing Data2"});
  EXPECT_EQ(house.TextOf(retried, "FirstName"), "2");
  EXPECT_EQ(house.TextOf(retried, "LastName"), "Lee");
}

TEST(EmployeeFields, The_first_name_is_the_one_in_hand_with_its_counter) {
  EmployeeHouse house;
  const auto row = house.Row({{"EmpFName", "'John'"}});
  EXPECT_EQ(house.TextOf(house.Fields(*row, RequestKind::Add, {.countedName = "John3"}), "FirstName"), "John3");
}

struct CutCase {
  std::string column;
  std::string element;
  std::size_t length;
};

TEST(EmployeeFields, Each_text_is_cut_to_the_length_that_is_fixed_for_it) {
  EmployeeHouse house;
  const CutCase cases[] = {{"EmpSalt", "Salutation", 15}, {"EmpFName", "FirstName", 25}, {"EmpMI", "MiddleName", 5},
                           {"EmpLName", "LastName", 25},  {"EmpEmail", "Email", 99},     {"EmpState", "State", 21},
                           {"EmpStreet", "Addr1", 41},    {"EmpStreet2", "Addr2", 41},   {"EmpCity", "City", 31},
                           {"EmpZip", "PostalCode", 13}};
  for (const auto& c : cases) {
    EXPECT_EQ(house.Field({{c.column, Quoted(Letters(c.length))}}, c.element), Letters(c.length)) << c.element;
    EXPECT_EQ(house.Field({{c.column, Quoted(Letters(c.length + 1))}}, c.element), Letters(c.length)) << c.element;
  }
  EXPECT_EQ(house.Field({{"EmpZip", "'ééééééééééééééé'"}}, "PostalCode"), "ééééééééééééé");
}

TEST(EmployeeFields, Phones_are_formatted_and_then_cut) {
  EmployeeHouse house;
  for (const std::string_view pair :
       {"EmpHPhone Phone", "EmpContactPhone AltPhone", "MobileNumber Mobile", "EmpHFax Fax"}) {
    const auto names = Split(pair, ' ');
    EXPECT_EQ(house.Field({{names[0], "'6175550123'"}}, names[1]), "(617)-555-0123") << pair;
    EXPECT_EQ(house.Field({{names[0], "'call me'"}}, names[1]), "") << pair;
    EXPECT_EQ(house.Field({{names[0], "'123456789012345678901'"}}, names[1]), "(123)-456-78901234567") << pair;
  }
}

struct StatusCase {
  std::string status;  // as SQL
  std::string isActive;
};

TEST(EmployeeFields, Only_a_status_other_than_Active_tells_whether_the_employee_is_active) {
  EmployeeHouse house;
  const StatusCase cases[] = {
      {"NULL", "(none)"}, {"'Active'", "(none)"}, {"'Inactive'", "false"}, {"'InActive'", "false"}, {"''", "false"}};
  for (const auto& c : cases) EXPECT_EQ(house.Field({{"Status", c.status}}, "IsActive"), c.isActive) << c.status;
}

TEST(EmployeeFields, An_empty_state_is_None_and_a_blank_one_too) {
  EmployeeHouse house;
  for (const std::string_view state : {"NULL", "''", "'   '"}) {
    EXPECT_EQ(house.Field({{"EmpState", std::string(state)}}, "State"), "None") << state;
  }
}

// --- Countries -------------------------------------------------------------------------------------------------------

struct CountryCase {
  std::string_view name;
  Edition edition;
  std::string_view state;  // the field that the state goes to
  bool mobile;
  bool fax;
  std::string_view birthDate;
};

class EmployeeInCountry : public testing::TestWithParam<CountryCase> {};

TEST_P(EmployeeInCountry, Has_the_fields_of_the_country) {
  const auto& c = GetParam();
  EmployeeHouse house(c.edition);
  auto set = SpiedHouse::Session().CreateMsgSetRequest("US", 3, 0);
  const auto request = set.Append("EmployeeModRq");
  const Columns columns = {{"EmpState", "'Kent'"}, {"MobileNumber", "'1'"}, {"EmpHFax", "'2'"}};
  AssignEmployeeFldValues(request, *house.Row(columns), RequestKind::Mod, {}, IsVendor::No);
  for (const std::string_view field : {"State", "Province", "County"}) {
    EXPECT_EQ(house.Field(columns, field), field == c.state ? "Kent" : "(none)") << field;
  }
  EXPECT_EQ(request["Mobile"].IsSet(), c.mobile);
  EXPECT_EQ(request["Fax"].IsSet(), c.fax);
  EXPECT_EQ(request["BirthDate"].GetValue(), c.birthDate);
}

INSTANTIATE_TEST_SUITE_P(
    EmployeeFields, EmployeeInCountry,
    testing::Values(CountryCase{"US", {}, "State", true, true, ""},
                    CountryCase{"Australia", {.country = "AU", .hostCountry = "AU"}, "State", true, false, ""},
                    CountryCase{"Canada", kCanadian, "Province", false, false, ""},
                    CountryCase{"Britain", kBritish, "County", false, false, "1990-01-01"},
                    CountryCase{"HostInBritain", {.hostCountry = "UK"}, "State", true, true, ""}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(EmployeeFields, The_birth_date_of_a_British_file_goes_on_an_Add_too) {
  EmployeeHouse house(kBritish);
  EXPECT_EQ(house.Field({}, "BirthDate", RequestKind::Add), "1990-01-01");
}

struct SalutationCase {
  std::string stored;
  std::string american;
  std::string british;
};

TEST(EmployeeFields, A_British_salutation_has_no_final_dot_and_is_never_Ms) {
  EmployeeHouse american;
  EmployeeHouse british(kBritish);
  const SalutationCase cases[] = {
      {"Mr.", "Mr.", "Mr"},
      {"Dr", "Dr", "Dr"},
      {"Ms.", "Ms.", "(none)"},
      {"mS", "mS", "(none)"},
      {"Miss", "Miss", "Miss"},
      {"Mr..", "Mr..", "Mr."},
      {"   ", "(none)", "(none)"},
      {"Right Honourable.", "Right Honourabl", "Right Honourabl"},
      {"Fifteen letters.", "Fifteen letters", "Fifteen letters"},
  };
  for (const auto& c : cases) {
    const Columns row = {{"EmpSalt", Quoted(c.stored)}};
    EXPECT_EQ(SpiedHouse::TextOf(british.Fields(row), "Salutation"), c.british) << c.stored;
  }
  Vars().g_QBCountry = "US";
  for (const auto& c : cases) {
    EXPECT_EQ(american.Field({{"EmpSalt", Quoted(c.stored)}}, "Salutation"), c.american) << c.stored;
  }
}

// --- Versions --------------------------------------------------------------------------------------------------------

struct VersionCase {
  std::int16_t version;
  std::string name;      // on an Add
  bool usesTimeData;     // the field below version 3
  bool isUsingTimeData;  // the field from it
};

TEST(EmployeeFields, Name_and_payroll_flag_go_by_the_version) {
  const VersionCase cases[] = {{1, "AHILL", false, false}, {2, "AHILL", true, false}, {3, "", false, true}};
  for (const auto& c : cases) {
    EmployeeHouse house({.version = c.version});
    auto set = SpiedHouse::Session().CreateMsgSetRequest("US", 3, 0);
    const auto request = set.Append("EmployeeAddRq");
    const auto row = house.Row(kFull);
    AssignEmployeeFldValues(request, *row, RequestKind::Add, {.key = "AHILL", .countedName = "Ann"}, IsVendor::No);
    EXPECT_EQ(request["Name"].GetValue(), c.name) << c.version;
    const auto payroll = request["EmployeePayrollInfo"];
    EXPECT_EQ(payroll["UseTimeDataToCreatePaychecks"].GetValue(), c.usesTimeData ? "UseTimeData" : "") << c.version;
    EXPECT_EQ(payroll["IsUsingTimeDataToCreatePaychecks"].GetValue(), c.isUsingTimeData ? "true" : "") << c.version;
  }
}

TEST(EmployeeFields, The_name_below_version_3_is_the_key_cut_to_41_and_goes_on_an_Add_alone) {
  EmployeeHouse house({.version = 1});
  const Columns row = {{"EmployeeID", Quoted(Letters(42))}};
  EXPECT_EQ(house.Field(row, "Name", RequestKind::Add), Letters(41));
  EXPECT_EQ(house.Field(row, "Name", RequestKind::Mod), "(none)");
}

}  // namespace
}  // namespace twqb
