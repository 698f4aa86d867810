// Answers: statuses, records, fields that are nothing, and lists.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "adapters/system/FrozenMachine.h"
#include "platform/PlatformError.h"
#include "quickbooks/ResponseModel.h"
#include "tests/quickbooks/CannedQuickBooks.h"

namespace twqb {
namespace {

template <typename Body>
ErrorNumber NumberOf(Body body) {
  try {
    body();
  } catch (const PlatformError& raised) {
    return raised.number();
  }
  return 0;
}

Record Customer(std::string_view fields, Machine* machine = nullptr) {
  return MsgSetResponse(
             CannedAnswer("CustomerQueryRs", kStatusOk, "<CustomerRet>" + std::string(fields) + "</CustomerRet>"),
             machine)
      .GetAt(0)
      .Detail();
}

TEST(Response, Tells_its_status) {
  const MsgSetResponse answer(CannedAnswer(
      "CustomerAddRs", "statusCode=\"3100\" statusSeverity=\"Error\" statusMessage=\"&quot;A&quot; is in use\"", ""));
  ASSERT_EQ(answer.Count(), 1U);
  EXPECT_EQ(answer.GetAt(0).StatusCode(), 3100);
  EXPECT_EQ(answer.GetAt(0).StatusSeverity(), "Error");
  EXPECT_EQ(answer.GetAt(0).StatusMessage(), "\"A\" is in use");
}

TEST(Response, Without_records_has_nothing_as_its_detail) {
  const MsgSetResponse answer(
      CannedAnswer("CustomerQueryRs", "statusCode=\"1\" statusSeverity=\"Info\" statusMessage=\"None\"", ""));
  EXPECT_EQ(answer.GetAt(0).DetailCount(), 0U);
  EXPECT_TRUE(answer.GetAt(0).Details().empty());
  EXPECT_EQ(NumberOf([&] { (void)answer.GetAt(0).Detail(); }), error::kObjectNothing);
}

TEST(Record, Tells_in_which_form_a_value_is_written) {
  const auto customer = Customer("<Name>A</Name><IsActive>true</IsActive><Balance>1.00</Balance>");
  EXPECT_EQ(customer["Name"].ValueType(), messages::Type::Str);
  EXPECT_EQ(customer["IsActive"].ValueType(), messages::Type::Bool);
  EXPECT_EQ(customer["Balance"].ValueType(), messages::Type::Amt);
  EXPECT_EQ(NumberOf([&] { (void)customer["Phone"].ValueType(); }), error::kObjectNothing);
}

TEST(Response, Gives_its_records_in_order) {
  const MsgSetResponse answer(CannedAnswer("CustomerQueryRs", kStatusOk,
                                           "\n  <CustomerRet>\n<Name>A</Name>\n</CustomerRet>\n"
                                           "<CustomerRet><Name>B</Name></CustomerRet>\n"));
  const auto& response = answer.GetAt(0);
  ASSERT_EQ(response.DetailCount(), 2U);
  EXPECT_EQ(response.Detail()["Name"].GetValue(), "A");
  EXPECT_EQ(response.DetailAt(1)["Name"].GetValue(), "B");
  EXPECT_EQ(response.Details().size(), 2U);
  EXPECT_EQ(NumberOf([&] { (void)response.DetailAt(2); }), error::kObjectNothing);
}

TEST(Response, Raises_for_a_record_that_is_none_of_its_message) {
  const MsgSetResponse answer(CannedAnswer("CustomerQueryRs", kStatusOk, "<VendorThing></VendorThing>"));
  EXPECT_EQ(NumberOf([&] { (void)answer.GetAt(0).Detail(); }), error::kParse);
}

TEST(MsgSetResponse, Has_the_answers_in_the_order_of_the_requests) {
  const MsgSetResponse answer(
      "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs><HostQueryRs statusCode=\"0\"></HostQueryRs>"
      "<CustomerAddRs statusCode=\"3100\"/></QBXMLMsgsRs></QBXML>");
  ASSERT_EQ(answer.Count(), 2U);
  EXPECT_EQ(answer.GetAt(0).StatusCode(), 0);
  EXPECT_EQ(answer.GetAt(1).StatusCode(), 3100);
  EXPECT_EQ(NumberOf([&] { (void)answer.GetAt(2); }), error::kObjectNothing);
}

TEST(MsgSetResponse, Refuses_a_text_that_is_no_answer) {
  for (const auto* text : {"", "no XML", "<QBXML>", "<QBXML></QBXML>", "<Other><QBXMLMsgsRs/></Other>"}) {
    EXPECT_EQ(NumberOf([&] { MsgSetResponse answer{std::string(text)}; }), error::kParse) << text;
  }
}

TEST(MsgSetResponse, Reads_the_answers_to_subscriptions_alike) {
  const MsgSetResponse answer(CannedAnswer("SubscriptionQueryRs", "statusCode=\"1\"", "", "QBXMLSubscriptionMsgsRs"));
  EXPECT_EQ(answer.GetAt(0).StatusCode(), 1);
}

TEST(Record, Gives_a_field_by_its_name_in_any_case) {
  const auto customer = Customer("<Name>Acme &amp; Co</Name><BillAddress><City>Toronto</City></BillAddress>");
  EXPECT_EQ(customer["Name"].GetValue(), "Acme & Co");
  EXPECT_EQ(customer["NAME"].GetValue(), "Acme & Co");
  EXPECT_EQ(customer.Field("name").GetValue(), "Acme & Co");
  EXPECT_EQ(customer["billaddress"]["CITY"].GetValue(), "Toronto");
}

TEST(Record, Has_nothing_for_a_field_that_the_answer_lacks) {
  const auto customer = Customer("<Name>Acme</Name>");
  EXPECT_TRUE(customer["Phone"].IsNothing());
  EXPECT_FALSE(customer["Name"].IsNothing());
  EXPECT_TRUE(customer["BillAddress"].IsNothing());
  EXPECT_EQ(customer["Phone"].GetValueOrEmpty(), "");
  EXPECT_EQ(customer["Name"].GetValueOrEmpty(), "Acme");
}

TEST(Record, Raises_91_when_nothing_is_read) {
  const auto customer = Customer("<Name>Acme</Name>");
  const auto phone = customer["Phone"];
  EXPECT_EQ(NumberOf([&] { (void)phone.GetValue(); }), error::kObjectNothing);
  EXPECT_EQ(NumberOf([&] { (void)phone.GetInteger(); }), error::kObjectNothing);
  EXPECT_EQ(NumberOf([&] { (void)phone.GetNumber(); }), error::kObjectNothing);
  EXPECT_EQ(NumberOf([&] { (void)phone.GetAmount(); }), error::kObjectNothing);
  EXPECT_EQ(NumberOf([&] { (void)phone.GetBoolean(); }), error::kObjectNothing);
  EXPECT_EQ(NumberOf([&] { (void)phone.GetDate(); }), error::kObjectNothing);
  EXPECT_EQ(NumberOf([&] { (void)phone.GetAsString(); }), error::kObjectNothing);
  EXPECT_EQ(NumberOf([&] { (void)customer["BillAddress"]["City"]; }), error::kObjectNothing);
  EXPECT_EQ(NumberOf([&] { (void)Record()["Name"]; }), error::kObjectNothing);
}

TEST(Record, Raises_438_for_a_name_that_no_version_or_country_has) {
  const auto customer = Customer("<Name>Acme</Name><BillAddress></BillAddress>");
  EXPECT_EQ(NumberOf([&] { (void)customer["NoSuchField"]; }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { (void)customer["BillAddress"]["Name"]; }), error::kNameUnknown);
  EXPECT_EQ(NumberOf([&] { (void)customer["Name"]["Name"]; }), error::kNameUnknown);
}

TEST(Record, Keeps_texts_as_QuickBooks_wrote_them) {
  const auto customer = Customer(
      "<Name>  two  blanks </Name><CompanyName>   </CompanyName><Phone></Phone><Fax/>"
      "<Notes>a&#13;\nb &lt;&#233;&gt;</Notes>");
  EXPECT_EQ(customer["Name"].GetValue(), "  two  blanks ");
  EXPECT_EQ(customer["CompanyName"].GetValue(), "   ");
  EXPECT_FALSE(customer["Phone"].IsNothing());
  EXPECT_EQ(customer["Phone"].GetValue(), "");
  EXPECT_EQ(customer["Fax"].GetValue(), "");
  EXPECT_EQ(customer["Notes"].GetValue(), "a\r\nb <\xC3\xA9>");
}

FrozenMachine MachineIn(TimeZoneState state) {
  return {{}, {.now = {}, .zone = {.bias = 300, .daylightBias = -60, .state = state}}};
}

TEST(Record, Reads_a_time_without_its_offset) {
  auto machine = MachineIn(TimeZoneState::Standard);
  for (const std::string_view offset : {"", "Z", "-05:00", "+05:30", "-00:00"}) {
    const auto customer = Customer(fmt::format("<TimeModified>2008-03-05T10:11:12{}</TimeModified>", offset), &machine);
    EXPECT_EQ(IsoDate(customer["TimeModified"].GetDate()), "2008-03-05T10:11:12") << offset;
  }
  EXPECT_EQ(IsoDate(Customer("<JobStartDate>2008-03-05</JobStartDate>")["JobStartDate"].GetDate()),
            "2008-03-05T00:00:00");
}

TEST(Record, Has_no_times_without_a_machine_that_knows_the_seasons_but_days) {
  const auto customer =
      Customer("<TimeModified>2008-03-05T10:11:12</TimeModified><JobStartDate>2008-03-05</JobStartDate>");
  EXPECT_EQ(NumberOf([&] { (void)customer["TimeModified"].GetDate(); }), error::kObjectNothing);
  EXPECT_EQ(IsoDate(customer["JobStartDate"].GetDate()), "2008-03-05T00:00:00");
}

TEST(Record, Reads_a_time_in_daylight_time_as_standard_time_and_a_day_as_it_is) {
  auto machine = MachineIn(TimeZoneState::Daylight);
  const auto customer = Customer(
      "<TimeModified>2008-06-24T23:53:54-05:00</TimeModified><JobStartDate>2008-06-24</JobStartDate>", &machine);
  EXPECT_EQ(IsoDate(customer["TimeModified"].GetDate()), "2008-06-24T22:53:54");
  EXPECT_EQ(customer["TimeModified"].GetValue(), "2008-06-24T23:53:54-05:00");
  EXPECT_EQ(IsoDate(customer["JobStartDate"].GetDate()), "2008-06-24T00:00:00");
}

TEST(Record, Converts_its_values) {
  const auto customer =
      Customer("<IsActive>true</IsActive><Sublevel>2</Sublevel><Balance>-12.50</Balance><JobStatus>None</JobStatus>");
  EXPECT_TRUE(customer["IsActive"].GetBoolean());
  EXPECT_FALSE(Customer("<IsActive>0</IsActive>")["IsActive"].GetBoolean());
  EXPECT_EQ(customer["Sublevel"].GetInteger(), 2);
  EXPECT_EQ(customer["Balance"].GetNumber(), -12.5);
  EXPECT_EQ(customer["Balance"].GetAmount(), Currency::FromTenThousandths(-125'000));
  EXPECT_EQ(customer["JobStatus"].GetAsString(), "None");
  EXPECT_EQ(customer.GetAsString(), "CustomerRet");
}

TEST(Record, Raises_13_for_a_text_that_does_not_convert) {
  const auto customer = Customer("<Name>Acme</Name>");
  EXPECT_EQ(NumberOf([&] { (void)customer["Name"].GetBoolean(); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { (void)customer["Name"].GetInteger(); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { (void)customer["Name"].GetNumber(); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { (void)customer["Name"].GetAmount(); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { (void)customer["Name"].GetDate(); }), error::kConversion);
}

TEST(Record, Lists_a_repeating_field) {
  const auto customer = Customer(
      "<Name>Acme</Name><DataExtRet><DataExtName>one</DataExtName></DataExtRet>"
      "<DataExtRet><DataExtName>two</DataExtName></DataExtRet>");
  const auto list = customer["DataExtRetList"];
  ASSERT_EQ(list.Count(), 2U);
  EXPECT_EQ(list.GetAt(0)["DataExtName"].GetValue(), "one");
  EXPECT_EQ(list.GetAt(1)["DataExtName"].GetValue(), "two");
  EXPECT_EQ(NumberOf([&] { (void)list.GetAt(2); }), error::kBadArgument);
  EXPECT_EQ(Customer("<Name>A</Name>")["DataExtRetList"].Count(), 0U);
}

TEST(Record, Keeps_the_answer_alive) {
  Record name;
  {
    const MsgSetResponse answer(
        CannedAnswer("CustomerQueryRs", kStatusOk, "<CustomerRet><Name>Acme</Name></CustomerRet>"));
    name = answer.GetAt(0).Detail()["Name"];
  }
  EXPECT_EQ(name.GetValue(), "Acme");
}

TEST(RecordList, Keeps_the_records_in_the_order_of_their_adding) {
  RecordList list;
  list.Add(Customer("<Name>B</Name>"), "2");
  list.Add(Customer("<Name>A</Name>"), "1");
  ASSERT_EQ(list.Count(), 2U);
  EXPECT_EQ(list.At(0)["Name"].GetValue(), "B");
  std::string names;
  for (const auto& record : list) names += record["Name"].GetValue();
  EXPECT_EQ(names, "BA");
}

TEST(RecordList, Raises_457_for_a_key_that_is_there_already_and_keeps_the_first) {
  RecordList list;
  list.Add(Customer("<Name>A</Name>"), "80000-1");
  EXPECT_EQ(NumberOf([&] { list.Add(Customer("<Name>B</Name>"), "80000-1"); }), error::kKeyInUse);
  ASSERT_EQ(list.Count(), 1U);
  EXPECT_EQ(list.At(0)["Name"].GetValue(), "A");
}

// --- The list of a query ---------------------------------------------------------------------------------------------

TEST(ReturnedList, Holds_the_records_in_the_order_of_the_answer_and_keeps_it_alive) {
  ReturnedList list;
  {
    const MsgSetResponse answer(CannedAnswer("ClassQueryRs", kStatusOk,
                                             "<ClassRet><Name>West</Name></ClassRet><ClassRet><Name>East</Name>"
                                             "</ClassRet>"));
    list = answer.GetAt(0).DetailList();
  }
  const auto copy = list;
  list = {};
  ASSERT_FALSE(copy.IsNothing());
  ASSERT_EQ(copy.Count(), 2U);
  EXPECT_EQ(copy.GetAt(0)["Name"].GetValue(), "West");
  EXPECT_EQ(copy.GetAt(1)["Name"].GetValue(), "East");
  EXPECT_EQ(NumberOf([&] { (void)copy.GetAt(2); }), error::kBadArgument);
}

TEST(ReturnedList, Is_nothing_without_records_and_raises_91_then) {
  const MsgSetResponse answer(CannedAnswer("ClassQueryRs", kStatusOk, ""));
  const auto list = answer.GetAt(0).DetailList();
  EXPECT_TRUE(list.IsNothing());
  EXPECT_TRUE(ReturnedList().IsNothing());
  EXPECT_EQ(NumberOf([&] { (void)list.Count(); }), error::kObjectNothing);
  EXPECT_EQ(NumberOf([&] { (void)list.GetAt(0); }), error::kObjectNothing);
}

}  // namespace
}  // namespace twqb
