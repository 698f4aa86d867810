#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "messages/Validation.h"

namespace twqb::messages {

// For readable failures.
void PrintTo(const Problem& problem, std::ostream* out) {
  constexpr std::string_view kKinds[] = {"UnexpectedElement", "MalformedValue", "MalformedAmount",
                                         "MalformedId",       "TooLong",        "MissingElement"};
  *out << kKinds[static_cast<std::size_t>(problem.kind)] << " " << problem.field << "=" << problem.value;
}

static bool operator==(const Problem& a, const Problem& b) {
  return a.kind == b.kind && a.field == b.field && a.value == b.value;
}

namespace {

using enum ProblemKind;
using Problems = std::vector<Problem>;

constexpr Form kUs3 = {Country::US, {3, 0}};

Problems Check(std::string_view message, std::string_view content, const Form& form = kUs3) {
  pugi::xml_document document;
  const auto text = "<Rq>" + std::string(content) + "</Rq>";
  EXPECT_TRUE(document.load_string(text.c_str(), pugi::parse_default | pugi::parse_ws_pcdata_single)) << text;
  return Validate(document.first_child(), FindMessage(message)->request, form);
}

// One customer to add or to change, with these fields.
Problems CheckAdd(std::string_view fields, const Form& form = kUs3) {
  return Check("CustomerAdd", "<CustomerAdd>" + std::string(fields) + "</CustomerAdd>", form);
}
Problems CheckMod(std::string_view fields, const Form& form = kUs3) {
  return Check("CustomerMod",
               "<CustomerMod><ListID>80000001-1204731000</ListID><EditSequence>1204731000</EditSequence>" +
                   std::string(fields) + "</CustomerMod>",
               form);
}
// With the problem's first fault alone, where what follows it is out of place in consequence.
Problems FirstOf(Problems problems) {
  if (problems.size() > 1) problems.resize(1);
  return problems;
}

const Problems kNone = {};

TEST(Validation, A_request_as_published_has_no_problem) {
  EXPECT_EQ(CheckAdd("<Name>Acme</Name>"), kNone);
  EXPECT_EQ(CheckAdd("<Name>Acme</Name><IsActive>1</IsActive><ParentRef><ListID>1A-1204731000</ListID></ParentRef>"
                     "<BillAddress><Addr1>1 Main St</Addr1><Addr4/><State>CA</State></BillAddress><Phone/>"
                     "<CreditLimit>-97.50</CreditLimit><JobStatus>InProgress</JobStatus>"
                     "<JobStartDate>2008-02-29</JobStartDate><Notes>n</Notes>"),
            kNone);
  EXPECT_EQ(CheckMod("<Name>Acme</Name>"), kNone);
  EXPECT_EQ(Check("HostQuery", ""), kNone);
}

TEST(Validation, Blanks_and_comments_between_elements_do_not_count) {
  EXPECT_EQ(
      Check("CustomerAdd", "\n <CustomerAdd>\n  <!-- c --><Name>Acme</Name>\n  <Phone>1</Phone>\n </CustomerAdd>\n"),
      kNone);
}

TEST(Validation, A_required_element_that_is_not_there_is_missing) {
  EXPECT_EQ(CheckAdd(""), (Problems{{MissingElement, "Name", ""}}));
  EXPECT_EQ(Check("CustomerAdd", ""), (Problems{{MissingElement, "CustomerAdd", ""}}));
  EXPECT_EQ(Check("CustomerMod", "<CustomerMod/>"),
            (Problems{{MissingElement, "ListID", ""}, {MissingElement, "EditSequence", ""}}));
}

TEST(Validation, An_unknown_element_is_unexpected) {
  EXPECT_EQ(CheckAdd("<Name>A</Name><Nickname>B</Nickname>"), (Problems{{UnexpectedElement, "Nickname", ""}}));
  EXPECT_EQ(CheckAdd("<name>A</name>"), (Problems{{UnexpectedElement, "name", ""}, {MissingElement, "Name", ""}}))
      << "names on the wire are in exact case";
  EXPECT_EQ(Check("HostQuery", "<ListID>1A-1</ListID>"), (Problems{{UnexpectedElement, "ListID", ""}}));
}

TEST(Validation, An_element_out_of_order_is_unexpected_and_missing_where_it_belongs) {
  EXPECT_EQ(CheckAdd("<IsActive>true</IsActive><Name>A</Name>"),
            (Problems{{UnexpectedElement, "Name", ""}, {MissingElement, "Name", ""}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><Fax>1</Fax><Phone>2</Phone>"), (Problems{{UnexpectedElement, "Phone", ""}}));
}

TEST(Validation, An_element_once_too_often_is_unexpected) {
  EXPECT_EQ(FirstOf(CheckAdd("<Name>A</Name><Name>B</Name>")), (Problems{{UnexpectedElement, "Name", ""}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><Phone>1</Phone><Phone>2</Phone>"), (Problems{{UnexpectedElement, "Phone", ""}}));
  EXPECT_EQ(Check("CustomerAdd", "<CustomerAdd><Name>A</Name></CustomerAdd><CustomerAdd><Name>B</Name></CustomerAdd>"),
            (Problems{{UnexpectedElement, "CustomerAdd", ""}}));
}

TEST(Validation, An_element_of_another_form_is_unexpected) {
  constexpr Form kCa3 = {Country::CA, {3, 0}};
  constexpr Form kUs2 = {Country::US, {2, 1}};
  constexpr Form kUs1 = {Country::US, {1, 0}};
  EXPECT_EQ(CheckAdd("<Name>A</Name><BillAddress><State>BC</State></BillAddress>", kCa3),
            (Problems{{UnexpectedElement, "State", ""}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><BillAddress><Province>BC</Province></BillAddress>", kCa3), kNone);
  EXPECT_EQ(CheckAdd("<Name>A</Name><BillAddress><Province>BC</Province></BillAddress>"),
            (Problems{{UnexpectedElement, "Province", ""}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><Notes>n</Notes>", kUs2), (Problems{{UnexpectedElement, "Notes", ""}}));
  EXPECT_EQ(CheckMod("<IsActive>true</IsActive>", kUs2), (Problems{{UnexpectedElement, "IsActive", ""}}));
  EXPECT_EQ(CheckMod("<IsActive>true</IsActive>"), kNone);
  EXPECT_EQ(CheckAdd("<Name>A</Name><BillAddress><Addr4>x</Addr4></BillAddress>", kUs1),
            (Problems{{UnexpectedElement, "Addr4", ""}}));
}

TEST(Validation, A_text_is_too_long_by_its_characters) {
  const std::string fits = "Mü" + std::string(39, 'x');
  EXPECT_EQ(CheckAdd("<Name>" + fits + "</Name>"), kNone);
  EXPECT_EQ(CheckAdd("<Name>" + fits + "x</Name>"), (Problems{{TooLong, "Name", fits + "x"}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><MiddleName>abcdef</MiddleName><LastName>B</LastName>"),
            (Problems{{TooLong, "MiddleName", "abcdef"}}))
      << "what follows is checked on";
}

TEST(Validation, A_text_without_limit_is_never_too_long) {
  EXPECT_EQ(CheckAdd("<Name>A</Name><ParentRef><FullName>" + std::string(5000, 'x') + "</FullName></ParentRef>"),
            kNone);
}

TEST(Validation, A_value_that_is_not_of_its_type_is_malformed) {
  EXPECT_EQ(CheckAdd("<Name>A</Name><IsActive>yes</IsActive>"), (Problems{{MalformedValue, "IsActive", "yes"}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><JobStatus>Lost</JobStatus>"), (Problems{{MalformedValue, "JobStatus", "Lost"}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><JobStartDate>2/29/2008</JobStartDate>"),
            (Problems{{MalformedValue, "JobStartDate", "2/29/2008"}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><CreditCardInfo><ExpirationMonth>x</ExpirationMonth></CreditCardInfo>"),
            (Problems{{MalformedValue, "ExpirationMonth", "x"}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><JobEndDate/>"), (Problems{{MalformedValue, "JobEndDate", ""}}));
}

TEST(Validation, Amounts_and_identifiers_have_problems_of_their_own) {
  EXPECT_EQ(CheckAdd("<Name>A</Name><CreditLimit>97.5</CreditLimit>"),
            (Problems{{MalformedAmount, "CreditLimit", "97.5"}}));
  EXPECT_EQ(CheckAdd("<Name>A</Name><ParentRef><ListID>Acme</ListID></ParentRef>"),
            (Problems{{MalformedId, "ListID", "Acme"}}));
}

TEST(Validation, An_element_inside_a_simple_value_is_unexpected) {
  EXPECT_EQ(CheckAdd("<Name><b>A</b></Name>"), (Problems{{UnexpectedElement, "b", ""}}));
}

TEST(Validation, Problems_come_in_document_order_nested_ones_in_their_place) {
  EXPECT_EQ(CheckAdd("<Name>A</Name><IsActive>x</IsActive><ParentRef><ListID>?</ListID><Sub/></ParentRef>"
                     "<CreditLimit>1</CreditLimit><JobStatus>y</JobStatus>"),
            (Problems{{MalformedValue, "IsActive", "x"},
                      {MalformedId, "ListID", "?"},
                      {UnexpectedElement, "Sub", ""},
                      {MalformedAmount, "CreditLimit", "1"},
                      {MalformedValue, "JobStatus", "y"}}));
}

TEST(Validation, A_choice_takes_one_branch_alone) {
  EXPECT_EQ(Check("CustomerQuery", ""), kNone);
  EXPECT_EQ(Check("CustomerQuery", "<ListID>1A-1</ListID><ListID>1B-1</ListID>"), kNone);
  EXPECT_EQ(Check("CustomerQuery", "<FullName>A</FullName><FullName>B</FullName>"), kNone);
  EXPECT_EQ(Check("CustomerQuery", "<MaxReturned>1</MaxReturned><ActiveStatus>All</ActiveStatus>"), kNone);
  EXPECT_EQ(Check("CustomerQuery", "<ActiveStatus>All</ActiveStatus><OwnerID>0</OwnerID><OwnerID>0</OwnerID>"), kNone);
  EXPECT_EQ(Check("CustomerQuery", "<ListID>1A-1</ListID><FullName>A</FullName>"),
            (Problems{{UnexpectedElement, "FullName", ""}}));
  EXPECT_EQ(Check("CustomerQuery", "<ListID>1A-1</ListID><ActiveStatus>All</ActiveStatus>"),
            (Problems{{UnexpectedElement, "ActiveStatus", ""}}));
}

TEST(Validation, A_choice_within_a_branch_takes_one_branch_alone_too) {
  const std::string name = "<NameFilter><MatchCriterion>Contains</MatchCriterion><Name>x</Name></NameFilter>";
  const std::string range = "<NameRangeFilter><FromName>a</FromName></NameRangeFilter>";
  const std::string balance =
      "<TotalBalanceFilter><Operator>LessThan</Operator><Amount>1.00</Amount></TotalBalanceFilter>";
  EXPECT_EQ(Check("CustomerQuery", name + balance), kNone);
  EXPECT_EQ(Check("CustomerQuery", range), kNone);
  EXPECT_EQ(Check("CustomerQuery", name + range), (Problems{{UnexpectedElement, "NameRangeFilter", ""}}));
  EXPECT_EQ(Check("CustomerQuery", "<NameFilter><Name>x</Name></NameFilter>"),
            (Problems{{MissingElement, "MatchCriterion", ""}}));
  EXPECT_EQ(Check("CustomerQuery", balance + name), (Problems{{UnexpectedElement, "NameFilter", ""}}));
}

// Rows that no published message of the table has yet: a required choice whose branches are a field and a step.
constexpr Element kDiscountFields[] = {{.name = "Amount", .type = Type::Amt}, {.name = "Account", .type = Type::Str}};
constexpr Element kBranches[] = {
    {.name = "Rate", .type = Type::Price},
    {.name = "Discount", .type = Type::Step, .firstChild = kDiscountFields, .childCount = 2}};
constexpr Element kLine[] = {{.name = "Key", .type = Type::Str},
                             {.name = "ORRate", .type = Type::Choice, .firstChild = kBranches, .childCount = 2}};

Problems CheckLine(const char* text) {
  pugi::xml_document document;
  EXPECT_TRUE(document.load_string(text)) << text;
  return Validate(document.first_child(), kLine, kUs3);
}

TEST(Validation, A_required_choice_without_a_branch_is_missing) {
  EXPECT_EQ(CheckLine("<L><Key>k</Key></L>"), (Problems{{MissingElement, "ORRate", ""}}));
  EXPECT_EQ(CheckLine("<L><Key>k</Key><Rate>1.5</Rate></L>"), kNone);
  EXPECT_EQ(CheckLine("<L><Key>k</Key><Amount>1.00</Amount><Account>a</Account></L>"), kNone);
}

TEST(Validation, A_branch_that_is_begun_needs_all_its_required_fields) {
  EXPECT_EQ(CheckLine("<L><Key>k</Key><Amount>1.00</Amount></L>"), (Problems{{MissingElement, "Account", ""}}));
}

}  // namespace
}  // namespace twqb::messages
