// Requests: how their fields are reached and filled.

#include <gtest/gtest.h>

#include <limits>

#include "platform/PlatformError.h"
#include "quickbooks/RequestModel.h"

namespace twqb {
namespace {

using messages::Country;
using messages::MessageSet;

MsgSetRequest NewSet() { return {{.country = Country::US, .version = {3, 0}}, MessageSet::Company}; }

// The number that `body` raises; 0 when it raises nothing.
template <typename Body>
ErrorNumber NumberOf(Body body) {
  try {
    body();
  } catch (const PlatformError& raised) {
    return raised.number();
  }
  return 0;
}

TEST(RequestPath, Reaches_a_field_of_an_aggregate) {
  auto set = NewSet();
  const auto customer = set.Append("CustomerAddRq");
  customer["BillAddress"]["Addr1"].SetValue("1 Main St");
  EXPECT_EQ(customer["BillAddress"]["Addr1"].GetValue(), "1 Main St");
  EXPECT_EQ(customer["ShipAddress"]["Addr1"].GetValue(), "");
}

TEST(RequestPath, Takes_names_without_regard_to_case) {
  auto set = NewSet();
  const auto customer = set.Append("CustomerAdd");
  customer["NAME"].SetValue("Acme");
  customer["billaddress"]["cITY"].SetValue("Toronto");
  EXPECT_EQ(customer["Name"].GetValue(), "Acme");
  EXPECT_EQ(customer["BillAddress"]["City"].GetValue(), "Toronto");
}

TEST(RequestPath, Raises_438_for_a_name_that_no_version_or_country_has) {
  auto set = NewSet();
  const auto customer = set.Append("CustomerAddRq");
  EXPECT_EQ(NumberOf([&] { (void)customer["NoSuchField"]; }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { (void)customer["BillAddress"]["Name"]; }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { (void)customer["Name"]["Addr1"]; }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { (void)customer["NameList"]; }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { (void)customer[""]; }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { set.Append("NoSuchRq"); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { set.Append("SubscriptionQueryRq"); }), error::kNameUnknown);
  EXPECT_EQ(set.Count(), 1U);
}

TEST(RequestPath, Knows_the_fields_of_every_country_and_version) {
  MsgSetRequest set({.country = Country::US, .version = {1, 0}}, MessageSet::Company);
  const auto address = set.Append("CustomerAddRq")["BillAddress"];
  for (const auto* name : {"State", "Province", "County", "Addr4"}) {
    EXPECT_EQ(NumberOf([&] { address[name].SetValue("x"); }), 0U) << name;
  }
}

TEST(RequestPath, Leaves_a_value_of_an_enumeration_out_that_the_form_does_not_know) {
  for (const auto country : {Country::US, Country::CA}) {
    MsgSetRequest set({.country = country, .version = {3, 0}}, MessageSet::Company);
    constexpr int kHourlySick = 6;  // of American files alone
    const auto item = set.Append("PayrollItemWageAddRq");
    item["Name"].SetValue("Sick");
    item["WageType"].SetValue(kHourlySick);
    EXPECT_EQ(item["WageType"].GetValue(), "HourlySick");
    EXPECT_EQ(set.ToXMLString().find("WageType") == std::string::npos, country == Country::CA);
  }
}

TEST(RequestPath, Raises_438_for_a_value_of_what_has_none) {
  auto set = NewSet();
  const auto query = set.Append("CustomerQueryRq");
  EXPECT_EQ(NumberOf([&] { query.SetValue("x"); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { query.SetValue(1); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { query.SetValue(true); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { query.SetValue(Date()); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { (void)query.GetMaxLength(); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { query["ORCustomerListQuery"].SetValue("x"); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { query["ORCustomerListQuery"]["ListFilter"].SetValue("x"); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { set.Append("CustomerAddRq")["BillAddress"].SetValue("x"); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { (void)set.Append("CustomerAddRq")["Name"].Append(); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { set.Append("CustomerAddRq")["Name"].Add("x"); }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { (void)set.Append("CustomerAddRq")["Name"].ORType(); }), error::kNameUnknown);
}

TEST(RequestField, Tells_its_greatest_length) {
  auto set = NewSet();
  const auto customer = set.Append("CustomerAddRq");
  EXPECT_EQ(customer["Name"].GetMaxLength(), 41);
  EXPECT_EQ(customer["MiddleName"].GetMaxLength(), 5);
  EXPECT_EQ(customer["BillAddress"]["PostalCode"].GetMaxLength(), 13);
  EXPECT_EQ(customer["Notes"].GetMaxLength(), 4095);
  EXPECT_EQ(customer["ParentRef"]["FullName"].GetMaxLength(), std::numeric_limits<int>::max());
}

TEST(RequestField, Takes_a_text_of_any_length) {
  auto set = NewSet();
  const auto name = set.Append("CustomerAddRq")["Name"];
  const std::string text(500, 'x');
  name.SetValue(text);
  EXPECT_EQ(name.GetValue(), text);
}

TEST(RequestField, Is_set_once_it_has_a_value_an_empty_one_too) {
  auto set = NewSet();
  const auto customer = set.Append("CustomerAddRq");
  EXPECT_FALSE(customer["Name"].IsSet());
  EXPECT_FALSE(customer["BillAddress"].IsSet());
  customer["BillAddress"]["City"].SetValue("");
  EXPECT_TRUE(customer["BillAddress"]["City"].IsSet());
  EXPECT_TRUE(customer["BillAddress"].IsSet());
  EXPECT_FALSE(customer["BillAddress"]["Addr1"].IsSet());
}

TEST(RequestField, Is_taken_away_by_Unset_with_all_below_it) {
  auto set = NewSet();
  const auto customer = set.Append("CustomerAddRq");
  customer["Name"].SetValue("Acme");
  customer["BillAddress"]["City"].SetValue("Toronto");
  customer["Name"].Unset();
  customer["BillAddress"].Unset();
  customer["Phone"].Unset();
  EXPECT_FALSE(customer["Name"].IsSet());
  EXPECT_EQ(customer["Name"].GetValue(), "");
  EXPECT_FALSE(customer["BillAddress"]["City"].IsSet());
  customer["BillAddress"]["City"].SetValue("Ottawa");
  EXPECT_EQ(customer["BillAddress"]["City"].GetValue(), "Ottawa");
}

struct WireValue {
  std::string_view field;
  std::variant<int, double, bool, Date, Currency, std::string_view> value;
  std::string_view wire;
};

class WireValues : public testing::TestWithParam<WireValue> {};

TEST_P(WireValues, Are_formed_as_the_type_needs) {
  auto set = NewSet();
  const auto field = set.Append("CustomerAddRq")[GetParam().field];
  std::visit([&](auto value) { field.SetValue(value); }, GetParam().value);
  EXPECT_EQ(field.GetValue(), GetParam().wire);
}

INSTANTIATE_TEST_SUITE_P(
    Amounts, WireValues,
    testing::Values(WireValue{"OpenBalance", 12, "12.00"}, WireValue{"OpenBalance", 0.1, "0.10"},
                    WireValue{"OpenBalance", 1.005, "1.01"}, WireValue{"OpenBalance", -1.005, "-1.01"},
                    WireValue{"OpenBalance", -0.001, "0.00"}, WireValue{"OpenBalance", 1234567.891, "1234567.89"},
                    WireValue{"OpenBalance", Currency::FromTenThousandths(123450), "12.35"},
                    WireValue{"OpenBalance", Currency::FromTenThousandths(-100), "-0.01"},
                    WireValue{"OpenBalance", "1234.5", "1234.50"}, WireValue{"OpenBalance", " 7 ", "7.00"}));

INSTANTIATE_TEST_SUITE_P(TruthValues, WireValues,
                         testing::Values(WireValue{"IsActive", true, "true"}, WireValue{"IsActive", false, "false"},
                                         WireValue{"IsActive", -1, "true"}, WireValue{"IsActive", 0, "false"},
                                         WireValue{"IsActive", "True", "true"}, WireValue{"IsActive", "false", "false"},
                                         WireValue{"IsActive", "0", "false"}, WireValue{"IsActive", "-1", "true"}));

INSTANTIATE_TEST_SUITE_P(Dates, WireValues,
                         testing::Values(WireValue{"JobStartDate", TextToDate("2008-03-05T10:11:12"), "2008-03-05"},
                                         WireValue{"JobStartDate", "3/5/2008", "2008-03-05"},
                                         WireValue{"JobStartDate", "2008-03-05", "2008-03-05"},
                                         WireValue{"JobStartDate", 39512, "2008-03-05"},
                                         WireValue{"JobStartDate", 39512.75, "2008-03-05"},
                                         WireValue{"JobStartDate", "3/5/2008 11:30:00 PM", "2008-03-05"}));

INSTANTIATE_TEST_SUITE_P(Enumerations, WireValues,
                         testing::Values(WireValue{"JobStatus", 0, "Awarded"}, WireValue{"JobStatus", 2, "InProgress"},
                                         WireValue{"JobStatus", 5, "Pending"}, WireValue{"JobStatus", 3.0, "None"},
                                         WireValue{"JobStatus", "NotAwarded", "NotAwarded"},
                                         WireValue{"JobStatus", "2", "InProgress"}));

INSTANTIATE_TEST_SUITE_P(Texts, WireValues,
                         testing::Values(WireValue{"Name", "Acme & Co", "Acme & Co"}, WireValue{"Name", 7, "7"},
                                         WireValue{"Name", 0.5, "0.5"}, WireValue{"Name", true, "True"},
                                         WireValue{"Name", TextToDate("2008-03-05"), "3/5/2008"},
                                         WireValue{"Name", Currency::FromTenThousandths(125000), "12.5"}));

TEST(RequestField, Writes_a_whole_number_with_halves_rounded_to_the_even_one) {
  auto set = NewSet();
  const auto month = set.Append("CustomerAddRq")["CreditCardInfo"]["ExpirationMonth"];
  for (const auto& [number, text] : {std::pair{2.5, "2"}, std::pair{3.5, "4"}, std::pair{7.0, "7"}}) {
    month.SetValue(number);
    EXPECT_EQ(month.GetValue(), text);
  }
  month.SetValue("12");
  EXPECT_EQ(month.GetValue(), "12");
}

TEST(RequestField, Writes_a_time_without_an_offset) {
  auto set = NewSet();
  const auto from = set.Append("CustomerQueryRq")["ORCustomerListQuery"]["ListFilter"]["FromModifiedDate"];
  from.SetValue(TextToDate("2008-03-05T10:11:12"));
  EXPECT_EQ(from.GetValue(), "2008-03-05T10:11:12");
  from.SetValue("3/5/2008 1:02:03 PM");
  EXPECT_EQ(from.GetValue(), "2008-03-05T13:02:03");
}

TEST(RequestField, Raises_13_for_what_cannot_be_converted_and_stays_as_it_was) {
  auto set = NewSet();
  const auto customer = set.Append("CustomerAddRq");
  customer["OpenBalance"].SetValue(1);
  EXPECT_EQ(NumberOf([&] { customer["OpenBalance"].SetValue("much"); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { customer["OpenBalance"].SetValue(""); }), error::kConversion);
  EXPECT_EQ(customer["OpenBalance"].GetValue(), "1.00");
  EXPECT_EQ(NumberOf([&] { customer["IsActive"].SetValue("maybe"); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { customer["JobStartDate"].SetValue("2/30/2008"); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { customer["JobStatus"].SetValue(6); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { customer["JobStatus"].SetValue("6"); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { customer["JobStatus"].SetValue("Finished"); }), error::kConversion);
  EXPECT_FALSE(customer["IsActive"].IsSet());
  EXPECT_FALSE(customer["JobStartDate"].IsSet());
  EXPECT_FALSE(customer["JobStatus"].IsSet());
}

TEST(RequestList, Is_reached_by_the_name_with_List_behind_it_and_keeps_its_order) {
  auto set = NewSet();
  const auto query = set.Append("CustomerQueryRq")["ORCustomerListQuery"];
  EXPECT_EQ(query["ListIDList"].Count(), 0U);
  query["ListIDList"].Add("10000-1");
  query["listidlist"].Add("20000-2");
  query["ListID"].Add("30000-3");
  ASSERT_EQ(query["ListIDList"].Count(), 3U);
  EXPECT_EQ(query["ListIDList"].GetAt(0).GetValue(), "10000-1");
  EXPECT_EQ(query["ListIDList"].GetAt(2).GetValue(), "30000-3");
  EXPECT_EQ(NumberOf([&] { (void)query["ListIDList"].GetAt(3); }), error::kBadArgument);
}

TEST(RequestList, Keeps_its_other_items_when_one_is_unset) {
  auto set = NewSet();
  const auto list = set.Append("CustomerQueryRq")["ORCustomerListQuery"]["ListIDList"];
  list.Add("10000-1");
  list.Add("20000-2");
  list.GetAt(0).Unset();
  const auto text = set.ToXMLString();
  EXPECT_EQ(text.find("10000-1"), std::string::npos);
  EXPECT_NE(text.find("\"1\"><ListID>20000-2</ListID><"), std::string::npos);
}

TEST(ChoiceGroup, Tells_the_branch_that_is_set) {
  auto set = NewSet();
  const auto choice = set.Append("CustomerQueryRq")["ORCustomerListQuery"];
  EXPECT_EQ(choice.ORType(), -1);
  choice["ListIDList"].Add("10000-1");
  EXPECT_EQ(choice.ORType(), 0);
  choice["FullNameList"].Add("Acme");
  EXPECT_EQ(choice.ORType(), 1);
  choice["ListFilter"]["ActiveStatus"].SetValue(2);
  EXPECT_EQ(choice.ORType(), 2);
}

TEST(ChoiceGroup, Keeps_only_the_branch_that_was_set_last) {
  auto set = NewSet();
  const auto choice = set.Append("CustomerQueryRq")["ORCustomerListQuery"];
  choice["ListFilter"]["ActiveStatus"].SetValue(2);
  choice["ListFilter"]["ORNameFilter"]["NameFilter"]["Name"].SetValue("A");
  choice["ListFilter"]["ORNameFilter"]["NameRangeFilter"]["FromName"].SetValue("A");
  EXPECT_EQ(choice["ListFilter"]["ORNameFilter"].ORType(), 1);
  EXPECT_TRUE(choice["ListFilter"]["ActiveStatus"].IsSet());
  choice["ListIDList"].Add("10000-1");
  EXPECT_FALSE(choice["ListFilter"]["ActiveStatus"].IsSet());
  EXPECT_EQ(choice.ORType(), 0);
}

TEST(ChoiceGroup, Is_not_decided_by_looking_at_a_branch) {
  auto set = NewSet();
  const auto choice = set.Append("CustomerQueryRq")["ORCustomerListQuery"];
  choice["ListIDList"].Add("10000-1");
  EXPECT_EQ(choice["ListFilter"]["ActiveStatus"].GetValue(), "");
  EXPECT_FALSE(choice["FullNameList"].IsSet());
  EXPECT_EQ(choice.ORType(), 0);
}

TEST(ChoiceGroup, Takes_a_branch_back_that_another_one_had_put_out) {
  auto set = NewSet();
  const auto choice = set.Append("CustomerQueryRq")["ORCustomerListQuery"];
  const auto filter = choice["ListFilter"];
  filter["ActiveStatus"].SetValue(0);
  choice["ListIDList"].Add("10000-1");
  EXPECT_EQ(filter["ActiveStatus"].GetValue(), "");
  EXPECT_EQ(choice["ListIDList"].Count(), 1U);
  filter["ActiveStatus"].SetValue(2);
  EXPECT_EQ(choice.ORType(), 2);
  EXPECT_EQ(choice["ListIDList"].Count(), 0U);
  choice.Unset();
  EXPECT_EQ(choice.ORType(), -1);
  EXPECT_FALSE(choice["ListFilter"]["ActiveStatus"].IsSet());
}

TEST(RequestField, Takes_money_as_it_is_to_the_last_digit) {
  auto set = NewSet();
  const auto line = set.Append("InvoiceAddRq")["ORInvoiceLineAddList"].Append()["InvoiceLineAdd"];
  const auto most = Currency::FromTenThousandths(9'223'372'036'854'775'807);
  line["Amount"].SetValue(most);
  EXPECT_EQ(line["Amount"].GetValue(), "922337203685477.58");
  line["Quantity"].SetValue(Currency::FromTenThousandths(-15'005));
  EXPECT_EQ(line["Quantity"].GetValue(), "-1.5005");
  line["ORRatePriceLevel"]["Rate"].SetValue(most);
  EXPECT_EQ(line["ORRatePriceLevel"]["Rate"].GetValue(), "922337203685477.5807");
  EXPECT_EQ(NumberOf([&] { line["ItemRef"].SetValue(most); }), error::kNameUnknown);
}

TEST(RequestField, That_is_kept_goes_on_the_wire_empty_and_decides_its_choice) {
  auto set = NewSet();
  const auto bill = set.Append("BillAddRq");
  const auto empty = bill["ORItemLineAddList"].Append()["ItemLineAdd"];
  const auto filled = bill["ORItemLineAddList"].Append()["ItemLineAdd"];
  filled["Desc"].SetValue("Paint");
  EXPECT_EQ(set.ToXMLString().find("<ItemLineAdd></ItemLineAdd>"), std::string::npos);
  empty.Keep();
  EXPECT_NE(set.ToXMLString().find("<ItemLineAdd></ItemLineAdd><ItemLineAdd><Desc>Paint</Desc></ItemLineAdd>"),
            std::string::npos);
  EXPECT_EQ(bill["ORItemLineAddList"].GetAt(0).ORType(), 0);
  EXPECT_EQ(NumberOf([&] { filled["Desc"].Keep(); }), error::kNameUnknown);
}

TEST(MsgSetRequest, Counts_its_requests_and_keeps_handles_good_when_it_is_moved) {
  auto set = NewSet();
  const auto first = set.Append("CustomerAddRq");
  for (int i = 0; i < 50; ++i) set.Append("HostQueryRq");
  first["Name"].SetValue("Acme");
  auto moved = std::move(set);
  first["Phone"].SetValue("1");
  EXPECT_EQ(moved.Count(), 51U);
  EXPECT_NE(moved.ToXMLString().find("<Name>Acme</Name><Phone>1</Phone>"), std::string::npos);
}

}  // namespace
}  // namespace twqb
