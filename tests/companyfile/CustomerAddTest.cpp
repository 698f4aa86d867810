#include "CompanyTest.h"

namespace twqb::company {

namespace {

using messages::Country;

// 5 March 2008, 10:00 in New York, in Unix seconds.
constexpr std::int64_t kTen = 1204729200;

class CustomerAdd : public CompanyTest {};

TEST_F(CustomerAdd, A_new_customer_comes_back_with_all_that_QuickBooks_makes_of_it) {
  SendAll(AddRequest("<Name>Acme</Name><Phone>413-555-0100</Phone>"));
  EXPECT_NE(
      text_.find("<CustomerRet><ListID>80000001-1204729200</ListID><TimeCreated>2008-03-05T10:00:00-05:00</TimeCreated>"
                 "<TimeModified>2008-03-05T10:00:00-05:00</TimeModified><EditSequence>1204729200</EditSequence>"
                 "<Name>Acme</Name><FullName>Acme</FullName><IsActive>true</IsActive><Sublevel>0</Sublevel>"
                 "<Phone>413-555-0100</Phone><Balance>0.00</Balance><TotalBalance>0.00</TotalBalance>"
                 "<JobStatus>None</JobStatus></CustomerRet>"),
      std::string::npos)
      << text_;
}

TEST_F(CustomerAdd, Every_field_comes_back_as_it_was_given) {
  const std::string fields =
      "<CompanyName>Acme Tools</CompanyName><Salutation>Dr.</Salutation><FirstName>Lydia</FirstName>"
      "<MiddleName>Q.</MiddleName><LastName>Cho</LastName><BillAddress><Addr1>A</Addr1><Addr2>B</Addr2><Addr3>C</Addr3>"
      "<Addr4>D</Addr4><City>Hadley</City><State>MA</State><PostalCode>01035</PostalCode><Country>USA</Country>"
      "</BillAddress><ShipAddress><Addr1>E</Addr1></ShipAddress><Phone>1</Phone><AltPhone>2</AltPhone><Fax>3</Fax>"
      "<Email>a@b.example</Email><Contact>Lydia</Contact><AltContact>Amos</AltContact>";
  const std::string more =
      "<ResaleNumber>4</ResaleNumber><AccountNumber>5</AccountNumber><CreditLimit>1000.50</CreditLimit><CreditCardInfo>"
      "<CreditCardNumber>6</CreditCardNumber><ExpirationMonth>7</ExpirationMonth></CreditCardInfo><JobStatus>Awarded"
      "</JobStatus><JobStartDate>2008-01-07</JobStartDate><JobDesc>Roof</JobDesc><Notes>By hand.</Notes>";
  ASSERT_EQ(Add("<Name>Acme</Name>" + fields + more).code, 0);
  ByName("Acme");
  EXPECT_NE(text_.find("<Sublevel>0</Sublevel>" + fields + "<Balance>0.00</Balance><TotalBalance>0.00</TotalBalance>" +
                       more + "</CustomerRet>"),
            std::string::npos)
      << text_;
}

TEST_F(CustomerAdd, Fields_without_content_are_absent_from_the_answer) {
  const auto answer = Add("<Name>Acme</Name><BillAddress><City></City></BillAddress><ShipAddress/><Phone></Phone>");
  EXPECT_EQ(answer.code, 0);
  EXPECT_FALSE(answer.Has("Phone"));
  EXPECT_FALSE(answer.Has("BillAddress"));
  EXPECT_FALSE(answer.Has("ShipAddress"));
}

TEST_F(CustomerAdd, Values_come_back_in_the_form_in_which_QuickBooks_writes_them) {
  const auto answer =
      Add("<Name>Acme</Name><IsActive>0</IsActive><CreditLimit>+0050.00</CreditLimit><CreditCardInfo>"
          "<ExpirationMonth>+07</ExpirationMonth></CreditCardInfo>");
  EXPECT_EQ(answer.Value("IsActive"), "false");
  EXPECT_EQ(answer.Value("CreditLimit"), "50.00");
  EXPECT_EQ(answer.Value("CreditCardInfo/ExpirationMonth"), "7");
}

TEST_F(CustomerAdd, An_answer_has_only_what_its_form_knows) {
  MakeFile({.country = Country::CA, .accepts = {Country::CA, Country::US}});
  ASSERT_EQ(Add("<Name>Acme</Name><BillAddress><Addr4>Rear</Addr4><Province>ON</Province></BillAddress>"
                "<IsUsingCustomerTaxCode>true</IsUsingCustomerTaxCode>",
                "CA3.0")
                .Value("BillAddress/Province"),
            "ON");
  const auto us = Query("", "3.0");
  EXPECT_EQ(us.Value("BillAddress/Addr4"), "Rear");
  EXPECT_FALSE(us.Has("BillAddress/Province"));
  EXPECT_FALSE(us.Has("IsUsingCustomerTaxCode"));
  const auto old = Query("", "CA1.1");
  EXPECT_FALSE(old.Has("BillAddress/Addr4"));
  EXPECT_EQ(old.Value("BillAddress/Province"), "ON");
}

TEST_F(CustomerAdd, Identifiers_count_up_in_hexadecimal_and_survive_reopening) {
  for (int i = 1; i <= 9; ++i) AddNamed("Customer " + std::to_string(i));
  file_.emplace(path_, machine_);
  machine_.Pass(60);
  EXPECT_EQ(AddNamed("Tenth").Value("ListID"), "8000000A-" + std::to_string(kTen + 60));
}

TEST_F(CustomerAdd, A_refused_customer_uses_up_no_identifier) {
  AddNamed("Acme");
  AddNamed("Acme");
  EXPECT_EQ(AddNamed("Other").Value("ListID"), "80000002-1204729200");
}

TEST_F(CustomerAdd, In_daylight_time_the_wall_clock_is_written_with_the_standard_offset) {
  machine_.zone.state = TimeZoneState::Daylight;
  const auto answer = AddNamed("Acme");
  EXPECT_EQ(answer.Value("TimeCreated"), "2008-03-05T10:00:00-05:00");
  EXPECT_EQ(answer.Value("ListID"), "80000001-" + std::to_string(kTen - 3600));
}

TEST_F(CustomerAdd, A_zone_east_of_Greenwich_has_its_offset) {
  machine_.zone = {.bias = -570, .daylightBias = -60, .state = TimeZoneState::Standard};
  EXPECT_EQ(AddNamed("Acme").Value("TimeCreated"), "2008-03-05T10:00:00+09:30");
}

TEST_F(CustomerAdd, A_name_in_use_is_refused_whatever_its_case_and_trailing_blanks) {
  AddNamed(
      "\xC3\x89"
      "cole");
  for (const char* name : {"\xC3\x89"
                           "cole",
                           "\xC3\xA9"
                           "COLE",
                           "\xC3\x89"
                           "cole  "}) {
    const auto answer = AddNamed(name);
    EXPECT_EQ(answer.code, 3100);
    EXPECT_EQ(answer.message, std::string("The name \"") + name + "\" of the list element is already in use.");
  }
  EXPECT_EQ(AddNamed(" \xC3\x89"
                     "cole")
                .code,
            0)
      << "a leading blank makes another name";
}

TEST_F(CustomerAdd, The_name_of_an_inactive_customer_is_in_use) {
  Add("<Name>Acme</Name><IsActive>false</IsActive>");
  EXPECT_EQ(AddNamed("Acme").code, 3100);
}

TEST_F(CustomerAdd, A_colon_in_a_name_is_refused) {
  const auto answer = AddNamed("A:B");
  EXPECT_EQ(answer.code, 3090);
  EXPECT_EQ(answer.message,
            "There was an error when storing \"A:B\" in the \"customer name\" field.  QuickBooks error message: Names "
            "in this list "
            "cannot contain a colon.");
}

TEST_F(CustomerAdd, A_name_is_kept_with_its_blanks) { EXPECT_EQ(AddNamed(" Acme  ").Value("Name"), " Acme  "); }

TEST_F(CustomerAdd, Length_counts_characters_and_not_bytes) {
  std::string name;
  for (int i = 0; i < 41; ++i) name += "\xC3\xA9";
  EXPECT_EQ(AddNamed(name).code, 0);
  EXPECT_EQ(AddNamed(name + "e").code, 3070);
}

TEST_F(CustomerAdd, A_job_stands_under_its_parent) {
  const auto parent = AddNamed("Acme").Value("ListID");
  const auto job = AddJob("Roof", "acme");
  EXPECT_EQ(job.Value("FullName"), "Acme:Roof");
  EXPECT_EQ(job.Value("Sublevel"), "1");
  EXPECT_EQ(job.Value("ParentRef/ListID"), parent);
  EXPECT_EQ(job.Value("ParentRef/FullName"), "Acme");
  EXPECT_EQ(AddJob("North", "ACME:roof").Value("FullName"), "Acme:Roof:North");
}

TEST_F(CustomerAdd, Jobs_are_unique_under_their_parent_alone) {
  AddNamed("Acme");
  AddNamed("Other");
  EXPECT_EQ(AddJob("Roof", "Acme").code, 0);
  EXPECT_EQ(AddJob("ROOF ", "Acme").code, 3100);
  EXPECT_EQ(AddJob("Roof", "Other").code, 0);
  EXPECT_EQ(AddNamed("Roof").code, 0);
}

TEST_F(CustomerAdd, The_identifier_of_a_parent_wins_over_its_name) {
  const auto acme = AddNamed("Acme").Value("ListID");
  AddNamed("Other");
  const auto fields = [](const std::string& id, const std::string& name) {
    return "<Name>Roof</Name><ParentRef><ListID>" + id + "</ListID><FullName>" + name + "</FullName></ParentRef>";
  };
  EXPECT_EQ(Add(fields(acme, "Other")).Value("FullName"), "Acme:Roof");
  EXPECT_EQ(Add(fields("80000099-1", "Other")).code, 3130);
}

TEST_F(CustomerAdd, A_parent_that_is_not_there_is_refused) {
  const auto answer = AddJob("Roof", "Nobody");
  EXPECT_EQ(answer.code, 3130);
  EXPECT_EQ(
      answer.message,
      "There is an invalid reference to a parent \"Nobody\" in the Customer list.  QuickBooks error message: Invalid "
      "argument.  The specified record does not exist in the list.");
}

TEST_F(CustomerAdd, Customers_nest_five_levels_deep_and_no_deeper) {
  std::string path(41, 'a');
  AddNamed(path);
  for (int level = 2; level <= 5; ++level) {
    ASSERT_EQ(AddJob(std::string(41, 'a'), path).code, 0);
    path += ":" + std::string(41, 'a');
  }
  EXPECT_EQ(ByName(path).Value("Sublevel"), "4");
  EXPECT_EQ(ByName(path).Value("FullName").size(), 209U);
  EXPECT_EQ(AddJob("a", path).code, 3130);
}

TEST_F(CustomerAdd, An_opening_balance_is_the_balance_and_counts_in_the_totals_of_the_parents) {
  Add("<Name>Acme</Name><OpenBalance>100.00</OpenBalance><OpenBalanceDate>2008-01-01</OpenBalanceDate>");
  AddJob("Roof", "Acme");
  const auto north =
      Add("<Name>North</Name><ParentRef><FullName>Acme:Roof</FullName></ParentRef><OpenBalance>20.25"
          "</OpenBalance>");
  EXPECT_EQ(north.Value("Balance"), "20.25");
  EXPECT_FALSE(north.Has("OpenBalance"));
  const auto all = Query("");
  EXPECT_EQ(all.All("Balance"), (std::vector<std::string>{"100.00", "0.00", "20.25"}));
  EXPECT_EQ(all.All("TotalBalance"), (std::vector<std::string>{"120.25", "20.25", "20.25"}));
}

}  // namespace

}  // namespace twqb::company
