#include "CompanyTest.h"

namespace twqb::company {

namespace {

class CustomerMod : public CompanyTest {
 protected:
  std::string AddId(std::string_view name) { return AddNamed(name).Value("ListID"); }
  std::string AddJobId(std::string_view name, std::string_view parent) { return AddJob(name, parent).Value("ListID"); }
  static std::string Under(std::string_view parent) {
    return std::string("<ParentRef><FullName>").append(parent).append("</FullName></ParentRef>");
  }
};

TEST_F(CustomerMod, Fields_given_replace_and_fields_not_given_stay) {
  Add("<Name>Acme</Name><Phone>1</Phone><Fax>2</Fax><Notes>n</Notes>");
  const auto id = ByName("Acme").Value("ListID");
  const auto answer = Modify(id, "<Phone>3</Phone><AltPhone>4</AltPhone>");
  EXPECT_EQ(answer.code, 0);
  EXPECT_EQ(answer.Value("Phone"), "3");
  EXPECT_EQ(answer.Value("AltPhone"), "4");
  EXPECT_EQ(answer.Value("Fax"), "2");
  EXPECT_EQ(answer.Value("Notes"), "n");
  EXPECT_EQ(answer.Value("Name"), "Acme");
  EXPECT_EQ(answer.Value("IsActive"), "true");
}

TEST_F(CustomerMod, An_empty_element_blanks_its_field) {
  Add("<Name>Acme</Name><BillAddress><City>Hadley</City></BillAddress><Phone>1</Phone>");
  const auto answer = Modify(ByName("Acme").Value("ListID"), "<BillAddress/><Phone></Phone>");
  EXPECT_FALSE(answer.Has("Phone"));
  EXPECT_FALSE(answer.Has("BillAddress"));
}

TEST_F(CustomerMod, An_address_is_replaced_as_a_whole) {
  Add("<Name>Acme</Name><BillAddress><Addr1>A</Addr1><City>Hadley</City></BillAddress>");
  const auto answer = Modify(ByName("Acme").Value("ListID"), "<BillAddress><Addr2>B</Addr2></BillAddress>");
  EXPECT_EQ(answer.Value("BillAddress/Addr2"), "B");
  EXPECT_FALSE(answer.Has("BillAddress/Addr1"));
  EXPECT_FALSE(answer.Has("BillAddress/City"));
}

TEST_F(CustomerMod, A_change_in_an_older_form_keeps_what_that_form_does_not_know) {
  Add("<Name>Acme</Name><Notes>n</Notes>");
  Modify(ByName("Acme").Value("ListID"), "<Phone>1</Phone>", "1.1");
  EXPECT_EQ(ByName("Acme").Value("Notes"), "n");
}

TEST_F(CustomerMod, A_customer_can_be_made_inactive_and_active_again) {
  const auto id = AddId("Acme");
  EXPECT_EQ(Modify(id, "<IsActive>false</IsActive>").Value("IsActive"), "false");
  EXPECT_EQ(Query("").code, 1);
  EXPECT_EQ(Modify(id, "<Phone>1</Phone>").Value("IsActive"), "false");
  EXPECT_EQ(Modify(id, "<IsActive>1</IsActive>").Value("IsActive"), "true");
}

TEST_F(CustomerMod, A_change_raises_the_edit_sequence_and_the_time_and_keeps_the_time_of_creation) {
  const auto id = AddId("Acme");
  machine_.Pass(90);
  const auto answer = Modify(id, "<Phone>1</Phone>");
  EXPECT_EQ(answer.Value("EditSequence"), "1204729290");
  EXPECT_EQ(answer.Value("TimeModified"), "2008-03-05T10:01:30-05:00");
  EXPECT_EQ(answer.Value("TimeCreated"), "2008-03-05T10:00:00-05:00");
}

TEST_F(CustomerMod, Two_changes_within_a_second_have_different_edit_sequences) {
  const auto id = AddId("Acme");
  EXPECT_EQ(Modify(id, "<Phone>1</Phone>").Value("EditSequence"), "1204729201");
  EXPECT_EQ(Modify(id, "<Phone>2</Phone>").Value("EditSequence"), "1204729202");
  machine_.Pass(-3600);
  EXPECT_EQ(Modify(id, "<Phone>3</Phone>").Value("EditSequence"), "1204729203") << "a clock set back changes nothing";
}

TEST_F(CustomerMod, An_edit_sequence_that_is_not_the_present_one_is_out_of_date) {
  const auto id = AddId("Acme");
  for (const char* sequence : {"1204729199", "1204729201", "01204729200", "x"}) {
    const auto answer =
        Send(ModRequest("<ListID>" + id + "</ListID><EditSequence>" + sequence + "</EditSequence><Phone>1</Phone>"));
    EXPECT_EQ(answer.code, 3200);
    EXPECT_EQ(answer.message, std::string("The provided edit sequence \"") + sequence + "\" is out-of-date.");
  }
  EXPECT_FALSE(ByName("Acme").Has("Phone"));
}

TEST_F(CustomerMod, A_customer_that_is_not_there_can_not_be_changed) {
  const auto answer = Send(ModRequest("<ListID>80000009-1</ListID><EditSequence>1</EditSequence>"));
  EXPECT_EQ(answer.code, 3120);
  EXPECT_EQ(
      answer.message,
      "Object \"80000009-1\" specified in the request cannot be found.  QuickBooks error message: Invalid argument.  "
      "The specified record does not exist in the list.");
}

TEST_F(CustomerMod, A_new_name_goes_through_to_everything_below) {
  const auto id = AddId("Acme");
  AddNamed("Acme Two");
  AddJob("Roof", "Acme");
  AddJob("North", "Acme:Roof");
  AddJob("Floor", "Acme Two");
  EXPECT_EQ(Modify(id, "<Name>Zeta &#233;</Name>").Value("FullName"), "Zeta \xC3\xA9");
  const auto all = Query("");
  EXPECT_EQ(all.All("FullName"), (std::vector<std::string>{"Acme Two", "Acme Two:Floor", "Zeta \xC3\xA9",
                                                           "Zeta \xC3\xA9:Roof", "Zeta \xC3\xA9:Roof:North"}));
  EXPECT_EQ(ByName("zeta \xC3\x89:roof:north").Value("ParentRef/FullName"), "Zeta \xC3\xA9:Roof");
  EXPECT_EQ(ByName("Acme:Roof").code, 500);
}

TEST_F(CustomerMod, A_name_may_change_in_case_alone) {
  const auto id = AddId("Acme");
  AddJob("Roof", "Acme");
  EXPECT_EQ(Modify(id, "<Name>ACME</Name>").code, 0);
  EXPECT_EQ(ByName("acme:roof").Value("FullName"), "ACME:Roof");
}

TEST_F(CustomerMod, A_new_name_follows_the_rules_of_names) {
  const auto id = AddId("Acme");
  AddNamed("Other");
  EXPECT_EQ(Modify(id, "<Name>OTHER</Name>").code, 3100);
  EXPECT_EQ(Modify(id, "<Name>A:B</Name>").code, 3090);
  EXPECT_EQ(Modify(id, "<Name></Name>").code, 3150);
  EXPECT_EQ(ByName("Acme").code, 0);
}

TEST_F(CustomerMod, A_job_moves_under_another_parent_with_everything_below_it) {
  AddNamed("Acme");
  AddNamed("Other");
  AddJob("Big", "Other");
  const auto roof = AddJobId("Roof", "Acme");
  AddJob("North", "Acme:Roof");
  EXPECT_EQ(Modify(roof, Under("Other:Big")).Value("FullName"), "Other:Big:Roof");
  const auto north = ByName("Other:Big:Roof:North");
  EXPECT_EQ(north.Value("Sublevel"), "3");
  EXPECT_EQ(north.Value("ParentRef/FullName"), "Other:Big:Roof");
}

TEST_F(CustomerMod, An_empty_parent_moves_a_job_to_the_top) {
  AddNamed("Acme");
  const auto roof = AddJobId("Roof", "Acme");
  AddJob("North", "Acme:Roof");
  const auto answer = Modify(roof, "<ParentRef/>");
  EXPECT_EQ(answer.Value("FullName"), "Roof");
  EXPECT_EQ(answer.Value("Sublevel"), "0");
  EXPECT_FALSE(answer.Has("ParentRef"));
  EXPECT_EQ(ByName("Roof:North").Value("Sublevel"), "1");
}

TEST_F(CustomerMod, A_move_to_where_the_name_is_in_use_is_refused) {
  AddNamed("Acme");
  AddNamed("Roof");
  const auto job = AddJobId("Roof", "Acme");
  EXPECT_EQ(Modify(job, "<ParentRef/>").code, 3100);
  EXPECT_EQ(Modify(job, "<Name>Roof Two</Name><ParentRef/>").code, 0);
}

TEST_F(CustomerMod, Nothing_moves_below_itself) {
  const auto acme = AddId("Acme");
  AddJob("Roof", "Acme");
  AddJob("North", "Acme:Roof");
  for (const char* parent : {"Acme", "Acme:Roof", "Acme:Roof:North"}) {
    EXPECT_EQ(Modify(acme, Under(parent)).code, 3130);
  }
  EXPECT_EQ(ByName("Acme:Roof:North").code, 0);
}

TEST_F(CustomerMod, A_move_that_would_nest_too_deep_is_refused) {
  AddNamed("A");
  AddJob("B", "A");
  AddJob("C", "A:B");
  AddJob("D", "A:B:C");
  const auto other = AddId("Other");
  AddJob("Job", "Other");
  EXPECT_EQ(Modify(other, Under("A:B:C:D")).code, 3130);
  EXPECT_EQ(Modify(other, Under("A:B:C")).code, 0);
  EXPECT_EQ(ByName("A:B:C:Other:Job").Value("Sublevel"), "4");
}

TEST_F(CustomerMod, A_dead_parent_and_a_dead_reference_are_refused) {
  const auto id = AddId("Acme");
  EXPECT_EQ(Modify(id, Under("Nobody")).code, 3130);
  EXPECT_EQ(Modify(id, "<TermsRef><FullName>Net 90</FullName></TermsRef>").code, 3140);
}

TEST_F(CustomerMod, A_move_takes_the_balance_along) {
  AddNamed("Acme");
  AddNamed("Other");
  const auto roof = Add("<Name>Roof</Name>" + Under("Acme") + "<OpenBalance>20.00</OpenBalance>").Value("ListID");
  Modify(roof, Under("Other"));
  const auto all = Query("");
  EXPECT_EQ(all.All("FullName"), (std::vector<std::string>{"Acme", "Other", "Other:Roof"}));
  EXPECT_EQ(all.All("TotalBalance"), (std::vector<std::string>{"0.00", "20.00", "20.00"}));
}

}  // namespace

}  // namespace twqb::company
