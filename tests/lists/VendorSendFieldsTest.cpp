// Which fields of a vendor go to QuickBooks, and in which shape.

#include <gtest/gtest.h>

#include "tests/lists/PeopleHouse.h"

namespace twqb {
namespace {

class VendorHouse : public PeopleHouse {
 public:
  explicit VendorHouse(const Edition& edition = {}) : PeopleHouse(IsVendor::Yes, {}, {}, edition) {}
};

const Columns kFull = {{"EmployeeID", "'JSMITH'"},
                       {"EmpFName", "'John'"},
                       {"EmpLName", "'Smith'"},
                       {"EmpMI", "'Q'"},
                       {"EmpSalt", "'Mr.'"},
                       {"EmpCompany", "'Drill & Core'"},
                       {"EmpStreet", "'Route 125'"},
                       {"EmpStreet2", "'Barn'"},
                       {"EmpCity", "'Epping'"},
                       {"EmpState", "'NH'"},
                       {"EmpZip", "'03042'"},
                       {"EmpHPhone", "'603 555 0123'"},
                       {"EmpContactPhone", "'603.555.0124'"},
                       {"MobileNumber", "'603-555-0125'"},
                       {"EmpHFax", "'(603)555-0126'"},
                       {"EmpEmail", "'d@c.example'"},
                       {"EmpDateHired", "'2005-07-11 00:00:00'"},
                       {"EmpDateReleased", "'2007-11-30 00:00:00'"},
                       {"EmpSSN", "'98-7654321'"},
                       {"Status", "'Active'"}};

TEST(VendorFields, A_full_vendor_is_added_with_every_field_at_its_place) {
  VendorHouse house;
  EXPECT_EQ(
      house.Fields(kFull, RequestKind::Add),
      "<Name>John Q Smith</Name><CompanyName>Drill &amp; Core</CompanyName><Salutation>Mr.</Salutation>"
      "<FirstName>John</FirstName><MiddleName>Q</MiddleName><LastName>Smith</LastName><VendorAddress>"
      "<Addr1>Drill &amp; Core</Addr1><Addr2>Route 125</Addr2><Addr3>Barn</Addr3><City>Epping</City><State>NH</State>"
      "<PostalCode>03042</PostalCode></VendorAddress><Phone>(603)-555-0123</Phone><AltPhone>(603)-555-0124</AltPhone>"
      "<Fax>(603)-555-0126</Fax><Email>d@c.example</Email><VendorTaxIdent>98-7654321</VendorTaxIdent>"
      "<OpenBalanceDate>2005-07-11</OpenBalanceDate>");
}

TEST(VendorFields, A_Mod_leaves_name_and_date_as_they_are) {
  VendorHouse house;
  const auto xml = house.Fields(kFull);
  EXPECT_EQ(house.TextOf(xml, "Name"), "(none)");
  EXPECT_EQ(house.TextOf(xml, "OpenBalanceDate"), "(none)");
  EXPECT_EQ(house.TextOf(xml, "VendorTaxIdent"), "98-7654321");
  EXPECT_EQ(house.TextOf(xml, "CompanyName"), "Drill &amp; Core");
}

TEST(VendorFields, An_empty_vendor_has_no_state_and_an_empty_first_line) {
  VendorHouse house;
  EXPECT_EQ(house.Fields({{"EmployeeID", "'LAB'"}}, RequestKind::Add),
            "<Name>LAB</Name><FirstName></FirstName><VendorAddress><Addr1></Addr1><Addr2></Addr2><Addr3></Addr3>"
            "</VendorAddress><Fax></Fax>");
}

TEST(VendorFields, The_mobile_number_is_set_and_left_off_the_wire) {
  VendorHouse house;
  auto set = SpiedHouse::Session().CreateMsgSetRequest("US", 3, 0);
  const auto request = set.Append("VendorModRq");
  AssignEmployeeFldValues(request, *house.Row(kFull), RequestKind::Mod, {}, IsVendor::Yes);
  EXPECT_EQ(request["Mobile"].GetValue(), "(603)-555-0125");
  EXPECT_EQ(house.Field(kFull, "Mobile"), "(none)");
}

struct NameCase {
  std::string first;  // as SQL
  std::string middle;
  std::string last;
  std::string name;
};

TEST(VendorFields, The_name_is_the_names_joined_or_the_key_where_there_are_none) {
  VendorHouse house;
  const NameCase cases[] = {
      {"'John'", "NULL", "'Smith'", "John Smith"},
      {"'John'", "''", "'Smith'", "John Smith"},
      {"'John'", "NULL", "NULL", "John"},
      {"NULL", "NULL", "'Smith'", "Smith"},
      {"NULL", "'Q'", "NULL", "Q"},
      {"NULL", "NULL", "NULL", "LAB"},
      {"''", "''", "''", "LAB"},
      {"' '", "' '", "' '", "LAB"},
      {"'Missing Data'", "NULL", "'Smith'", "Smith"},
      {"'John'", "NULL", "'Missing Data'", "John"},
      {"'Missing Data'", "NULL", "'Missing Data'", "LAB"},
      {"'Mary Ann'", "NULL", "'Smith'", "Mary Ann Smith"},
      {Quoted(Letters(30)), "NULL", Quoted(Letters(30)), Letters(30) + " " + Letters(10)},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(house.Field({{"EmployeeID", "'LAB'"}, {"EmpFName", c.first}, {"EmpMI", c.middle}, {"EmpLName", c.last}},
                          "Name", RequestKind::Add),
              c.name);
  }
}

TEST(VendorFields, The_company_is_cut_to_50_and_the_first_line_to_41) {
  VendorHouse house;
  const auto xml = house.Fields({{"EmpCompany", Quoted(Letters(60))}});
  EXPECT_EQ(house.TextOf(xml, "CompanyName"), Letters(50));
  EXPECT_EQ(house.TextOf(xml, "Addr1"), Letters(41));
  const auto lines = house.Fields({{"EmpStreet", Quoted(Letters(60))}, {"EmpStreet2", Quoted(Letters(60))}});
  EXPECT_EQ(house.TextOf(lines, "Addr2"), Letters(41));
  EXPECT_EQ(house.TextOf(lines, "Addr3"), Letters(41));
}

TEST(VendorFields, A_company_between_the_two_lengths_comes_back_as_QuickBooks_refusal) {
  PeopleHouse house(IsVendor::Yes, {.answers = "yes"});
  const auto company = Letters(42);
  house.Person({{"EmployeeID", "'LAB'"}, {"EmpCompany", Quoted(company)}});
  EXPECT_TRUE(house.Send());
  EXPECT_EQ(house.BoxTexts(),
            Texts{RefusedAdd("The string \"" + company + "\" in the field \"CompanyName\" is too long.", 3070, "LAB")});
  EXPECT_EQ(house.ColumnOf("LAB", "QBLinkID"), "NULL");
}

TEST(VendorFields, The_tax_number_goes_from_version_3_on_when_there_is_one) {
  for (const auto version : {std::int16_t{1}, std::int16_t{2}}) {
    VendorHouse house({.version = version});
    auto set = SpiedHouse::Session().CreateMsgSetRequest("US", 3, 0);
    const auto request = set.Append("VendorAddRq");
    AssignEmployeeFldValues(request, *house.Row(kFull), RequestKind::Add, {}, IsVendor::Yes);
    EXPECT_FALSE(request["VendorTaxIdent"].IsSet()) << version;
  }
  VendorHouse house;
  EXPECT_EQ(house.Field({{"EmpSSN", "''"}}, "VendorTaxIdent"), "(none)");
  EXPECT_EQ(house.Field({}, "VendorTaxIdent"), "(none)");
}

TEST(VendorFields, A_vendor_has_no_birth_date_and_no_number_of_an_employee_in_any_country) {
  for (const auto& edition : {Edition{}, kCanadian, kBritish}) {
    VendorHouse house(edition);
    const auto xml = house.Fields(kFull, RequestKind::Add);
    for (const std::string_view field : {"BirthDate", "SSN", "SIN", "NiNumber", "HiredDate", "EmployeePayrollInfo"}) {
      EXPECT_EQ(xml.find("<" + std::string(field) + ">"), std::string::npos) << edition.country << " " << field;
    }
    EXPECT_TRUE(house.Log().empty()) << edition.country;
  }
}

TEST(VendorFields, The_state_goes_to_the_field_of_the_country) {
  EXPECT_EQ(VendorHouse().Field(kFull, "State"), "NH");
  EXPECT_EQ(VendorHouse(kCanadian).Field(kFull, "Province"), "NH");
  EXPECT_EQ(VendorHouse(kBritish).Field(kFull, "County"), "NH");
}

TEST(VendorFields, The_fax_goes_in_the_United_States_alone) {
  EXPECT_EQ(VendorHouse().Field(kFull, "Fax"), "(603)-555-0126");
  EXPECT_EQ(VendorHouse(kCanadian).Field(kFull, "Fax"), "(none)");
  EXPECT_EQ(VendorHouse(kBritish).Field(kFull, "Fax"), "(none)");
  EXPECT_EQ(VendorHouse({.country = "AU"}).Field(kFull, "Fax"), "(none)");
}

}  // namespace
}  // namespace twqb
