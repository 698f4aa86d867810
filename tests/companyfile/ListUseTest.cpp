// References between lists, what follows from them, and what a file holds from the beginning.

#include <gmock/gmock.h>

#include "ListTest.h"

namespace twqb::company {

namespace {

using messages::Country;
using testing::ElementsAre;

std::string Named(const std::string& name) { return "<Name>" + name + "</Name>"; }

class Uses : public ListTest {
 protected:
  std::string AddCustomer(const std::string& name, const std::string& more) {
    return AddId("Customer", Named(name) + more);
  }
  std::string AddJobType(const std::string& name) { return AddId("JobType", Named(name)); }
};

TEST_F(Uses, A_reference_names_by_identifier_before_name_and_answers_both) {
  const auto roof = AddJobType("Roof");
  AddJobType("Floor");
  const auto answer =
      AddTo("Customer", Named("Acme") + "<JobTypeRef>" + Id(roof) + "<FullName>Floor</FullName></JobTypeRef>");
  EXPECT_EQ(answer.Value("JobTypeRef/ListID"), roof);
  EXPECT_EQ(answer.Value("JobTypeRef/FullName"), "Roof");
  EXPECT_EQ(AddTo("Customer", Named("Other") + RefTo("JobTypeRef", "ROOF ")).Value("JobTypeRef/ListID"), roof);
  EXPECT_FALSE(AddTo("Customer", Named("Third") + "<JobTypeRef/>").Has("JobTypeRef"));
}

TEST_F(Uses, A_reference_answers_the_name_that_the_record_has_now) {
  const auto vendor = AddId("Vendor", Named("Supplier"));
  AddId("ItemSalesTax", Named("Tax Item") + RefTo("TaxVendorRef", "Supplier"));
  ASSERT_EQ(ModifyIn("Vendor", vendor, Named("State of MA")).code, 0);
  EXPECT_EQ(QueryOf("ItemSalesTax").Value("TaxVendorRef/FullName"), "State of MA");
}

TEST_F(Uses, A_record_in_use_is_not_deleted_until_nothing_uses_it_any_more) {
  const auto roof = AddJobType("Roof");
  const auto acme = AddCustomer("Acme", RefTo("JobTypeRef", "Roof"));
  const auto other = AddCustomer("Other", RefTo("JobTypeRef", "Roof"));
  const auto refused = Delete("JobType", roof);
  EXPECT_EQ(refused.code, 3160);
  EXPECT_EQ(refused.message, "Cannot delete the object specified by the id \"" + roof +
                                 "\".  QuickBooks error message: The list element is in use.");
  EXPECT_EQ(QueryOf("JobType", Id(roof)).code, 0);
  ASSERT_EQ(ModifyIn("Customer", acme, "<JobTypeRef/>").code, 0);
  EXPECT_EQ(Delete("JobType", roof).code, 3160);
  ASSERT_EQ(Delete("Customer", other).code, 0);
  EXPECT_EQ(Delete("JobType", roof).code, 0);
}

TEST_F(Uses, A_change_that_says_nothing_of_a_reference_keeps_it) {
  const auto roof = AddJobType("Roof");
  const auto acme = AddCustomer("Acme", RefTo("JobTypeRef", "Roof"));
  EXPECT_EQ(ModifyIn("Customer", acme, "<Phone>1</Phone>").Value("JobTypeRef/ListID"), roof);
  EXPECT_EQ(Delete("JobType", roof).code, 3160);
}

TEST_F(Uses, A_deleted_record_takes_its_balance_along) {
  AddCustomer("Acme", {});
  const auto job = AddCustomer("Roof", RefTo("ParentRef", "Acme") + "<OpenBalance>5.00</OpenBalance>");
  ASSERT_EQ(Delete("Customer", job).code, 0);
  EXPECT_THAT(QueryOf("Customer").All("TotalBalance"), ElementsAre("0.00"));
}

TEST_F(Uses, Each_request_of_a_set_sees_the_ones_before_it) {
  const auto answers = SendAll(
      AddText("Account", Named("Fees") + "<AccountType>Income</AccountType>") +
      AddText("ItemService", Named("Item") + "<SalesOrPurchase>" + RefTo("AccountRef", "Fees") + "</SalesOrPurchase>") +
      AddText("ItemGroup", Named("Set") + "<ItemGroupLine>" + RefTo("ItemRef", "Item") + "</ItemGroupLine>"));
  for (const auto& answer : answers) EXPECT_EQ(answer.code, 0) << answer.message;
}

TEST_F(Uses, A_set_stops_at_a_refused_deletion) {
  const auto roof = AddJobType("Roof");
  AddCustomer("Acme", RefTo("JobTypeRef", "Roof"));
  const auto answers = SendAll(DelText("JobType", roof) + AddText("Class", Named("East")), "3.0", "stopOnError");
  ASSERT_EQ(answers.size(), 2U);
  EXPECT_EQ(answers[0].code, 3160);
  EXPECT_EQ(answers[1].code, 3231);
}

TEST_F(Uses, A_list_that_the_file_does_not_keep_has_nothing_to_delete) {
  EXPECT_EQ(Delete("CustomerType", "80000001-1").code, 3120);
  EXPECT_EQ(Delete("Vendor", "no id").code, 3000);
}

class TaxCodes : public ListTest {};

TEST_F(TaxCodes, A_new_file_has_the_codes_and_payment_methods_of_its_country) {
  EXPECT_THAT(QueryOf("SalesTaxCode").All("Name"), ElementsAre("Non", "Tax"));
  EXPECT_THAT(QueryOf("SalesTaxCode").All("IsTaxable"), ElementsAre("false", "true"));
  EXPECT_THAT(QueryOf("PaymentMethod").All("Name"),
              ElementsAre("American Express", "Cash", "Check", "Discover", "MasterCard", "Visa"));
  EXPECT_EQ(QueryOf("SalesTaxCode", "<FullName>NON</FullName>").Value("ListID"), "20000-1204729200");

  MakeFile({.country = Country::CA});
  tag_ = "CA3.0";
  EXPECT_THAT(QueryOf("TaxCode").All("Name"), ElementsAre("E", "G", "H", "NON", "P", "S", "Z"));
  EXPECT_THAT(QueryOf("PaymentMethod").All("Name"),
              ElementsAre("American Express", "Cash", "Cheque", "MasterCard", "Visa"));
  MakeFile({.country = Country::UK});
  tag_ = "UK3.0";
  EXPECT_THAT(QueryOf("TaxCode").All("Name"), ElementsAre("E", "NON", "O", "S", "Z"));
  MakeFile({.country = Country::AU});
  tag_ = "3.0";
  EXPECT_THAT(QueryOf("SalesTaxCode").All("Name"), ElementsAre("E", "Non", "Tax"));
}

TEST_F(TaxCodes, The_first_record_that_is_added_has_the_first_identifier) {
  EXPECT_EQ(AddId("Class", Named("East")), "80000001-1204729200");
}

class TaxCodeOfAnItem : public ListTest, public testing::WithParamInterface<std::tuple<Country, const char*>> {};

TEST_P(TaxCodeOfAnItem, Is_found_by_name_under_the_US_form_too) {
  const auto [country, name] = GetParam();
  MakeFile({.country = country, .accepts = {country, Country::US}});
  AddAccount("Fees", "Income");
  const auto answer = AddTo("ItemService", Named("Item") + RefTo("SalesTaxCodeRef", name) + "<SalesOrPurchase>" +
                                               RefTo("AccountRef", "Fees") + "</SalesOrPurchase>");
  EXPECT_EQ(answer.code, 0) << answer.message;
  EXPECT_STRCASEEQ(answer.Value("SalesTaxCodeRef/FullName").c_str(), name);
}

INSTANTIATE_TEST_SUITE_P(Countries, TaxCodeOfAnItem,
                         testing::Values(std::tuple{Country::US, "NON"}, std::tuple{Country::CA, "E"},
                                         std::tuple{Country::CA, "NON"}, std::tuple{Country::UK, "E"},
                                         std::tuple{Country::AU, "NON"}, std::tuple{Country::AU, "E"}),
                         [](const auto& test) {
                           return std::string(messages::CountryName(std::get<0>(test.param))) + "_" +
                                  std::get<1>(test.param);
                         });

TEST_F(TaxCodes, A_list_of_another_country_s_edition_is_not_enabled) {
  MakeFile({.country = Country::CA, .accepts = {Country::CA, Country::US}});
  for (const auto& request :
       {QueryText("SalesTaxCode", {}), QueryText("ItemSalesTax", {}), AddText("ItemSalesTax", Named("Tax")),
        AddText("SalesTaxCode", Named("New") + "<IsTaxable>true</IsTaxable>")}) {
    const auto answer = Send(request);
    EXPECT_EQ(answer.code, 3250) << request;
    EXPECT_EQ(answer.severity, "Error");
    EXPECT_FALSE(answer.node.first_child());
  }
  MakeFile({.country = Country::US, .accepts = {Country::US, Country::CA}});
  EXPECT_EQ(Send(QueryText("TaxCode", {}), "CA3.0").code, 3250);
}

class PersonalData : public ListTest, public testing::WithParamInterface<Country> {
 protected:
  void SetUp() override {
    MakeFile({.country = GetParam()});
    tag_ = messages::FormTag({.country = GetParam(), .version = {3, 0}});
  }
  [[nodiscard]] static std::string Number() {
    switch (GetParam()) {
      case Country::CA:
        return "SIN";
      case Country::UK:
        return "NiNumber";
      default:
        return "SSN";
    }
  }
  [[nodiscard]] static std::string WithNumber(const std::string& name) {
    return "<LastName>" + name + "</LastName><" + Number() + ">12</" + Number() + ">";
  }
};

TEST_P(PersonalData, That_are_withheld_are_neither_taken_nor_given) {
  const auto id = AddId("Employee", WithNumber("Lee"));
  EXPECT_EQ(QueryOf("Employee").Value(Number().c_str()), "12");
  Set("personal-data", "withheld");
  const auto refused = AddTo("Employee", WithNumber("Roy"));
  EXPECT_EQ(refused.code, 3261);
  EXPECT_EQ(refused.severity, "Error");
  EXPECT_EQ(AddTo("Employee", "<LastName>Roy</LastName>").code, 0);
  EXPECT_FALSE(QueryOf("Employee", Id(id)).Has(Number().c_str()));
  EXPECT_FALSE(ModifyIn("Employee", id, "<Phone>1</Phone>").Has(Number().c_str()));
  Set("personal-data", "granted");
  EXPECT_EQ(QueryOf("Employee", Id(id)).Value(Number().c_str()), "12") << "a change in between kept it";
}

INSTANTIATE_TEST_SUITE_P(Countries, PersonalData, testing::Values(Country::US, Country::CA, Country::UK),
                         [](const auto& test) { return std::string(messages::CountryName(test.param)); });

}  // namespace

}  // namespace twqb::company
