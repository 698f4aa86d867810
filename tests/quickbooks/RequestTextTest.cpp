// The text form of a message set.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "platform/PlatformError.h"
#include "platform/Text.h"
#include "quickbooks/RequestModel.h"

namespace twqb {
namespace {

using messages::Country;
using messages::MessageSet;
using messages::Version;

MsgSetRequest SetOf(Country country, Version version) {
  return {{.country = country, .version = version}, MessageSet::Company};
}

// What stands in the one request of a set.
std::string Inside(const MsgSetRequest& set) {
  const auto text = set.ToXMLString();
  constexpr std::string_view kBefore = "requestID=\"1\">";
  const auto from = text.find(kBefore) + kBefore.size();
  return text.substr(from, text.find("Rq></QBXMLMsgsRq>") - from);
}

TEST(RequestText, Has_the_form_in_its_second_line_and_numbers_the_requests) {
  auto set = SetOf(Country::CA, {2, 0});
  set.SetOnError(OnError::Continue);
  set.Append("HostQueryRq");
  set.Append("CustomerQueryRq");
  EXPECT_EQ(set.ToXMLString(),
            "<?xml version=\"1.0\"?><?qbxml version=\"CA2.0\"?><QBXML><QBXMLMsgsRq onError=\"continueOnError\">"
            "<HostQueryRq requestID=\"1\"></HostQueryRq><CustomerQueryRq requestID=\"2\"></CustomerQueryRq>"
            "</QBXMLMsgsRq></QBXML>");
}

TEST(RequestText, Stops_on_errors_unless_told_otherwise) {
  EXPECT_EQ(SetOf(Country::US, {3, 0}).ToXMLString(),
            "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq onError=\"stopOnError\"></QBXMLMsgsRq>"
            "</QBXML>");
}

TEST(RequestText, Of_a_subscription_set_has_its_own_element) {
  MsgSetRequest set({.country = Country::US, .version = {3, 0}}, MessageSet::Subscription);
  set.Append("SubscriptionQueryRq")["SubscriberID"].SetValue("{1}");
  EXPECT_EQ(set.ToXMLString(),
            "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLSubscriptionMsgsRq>"
            "<SubscriptionQueryRq requestID=\"1\"><SubscriberID>{1}</SubscriberID></SubscriptionQueryRq>"
            "</QBXMLSubscriptionMsgsRq></QBXML>");
}

TEST(RequestText, Has_every_field_once_whatever_order_all_were_set_in) {
  const auto* message = messages::FindMessage("CustomerAddRq");
  std::vector<const messages::Element*> texts;
  for (const auto& row : message->request.front().Children()) {
    if (row.type == messages::Type::Str && row.KnownIn({})) texts.push_back(&row);
  }
  ASSERT_GT(texts.size(), 10U);
  std::string expected;
  for (const auto* row : texts) expected += fmt::format("<{0}>2 {0}</{0}>", row->name);
  // Each order begins somewhere else and leaps by a number that meets all of them.
  for (const std::size_t leap : {std::size_t{1}, texts.size() - 1}) {
    for (std::size_t begin = 0; begin < texts.size(); ++begin) {
      auto set = SetOf(Country::US, {3, 0});
      const auto customer = set.Append("CustomerAddRq");
      for (std::size_t i = 0; i < 2 * texts.size(); ++i) {
        const auto name = texts[(begin + i * leap) % texts.size()]->name;
        customer[name].SetValue(fmt::format("{} {}", i / texts.size() + 1, name));
      }
      EXPECT_EQ(Inside(set), fmt::format("<CustomerAdd>{}</CustomerAdd></CustomerAdd", expected));
    }
  }
}

TEST(RequestText, Has_the_elements_in_the_published_order_whatever_order_they_were_set_in) {
  auto set = SetOf(Country::US, {3, 0});
  const auto customer = set.Append("CustomerAddRq");
  customer["Notes"].SetValue("n");
  customer["JobStatus"].SetValue(1);
  customer["Phone"].SetValue("1");
  customer["BillAddress"]["Country"].SetValue("USA");
  customer["BillAddress"]["Addr1"].SetValue("1 Main St");
  customer["CompanyName"].SetValue("Acme");
  customer["ParentRef"]["FullName"].SetValue("Parent");
  customer["IsActive"].SetValue(true);
  customer["Name"].SetValue("Acme");
  EXPECT_EQ(Inside(set),
            "<CustomerAdd><Name>Acme</Name><IsActive>true</IsActive><ParentRef><FullName>Parent</FullName></ParentRef>"
            "<CompanyName>Acme</CompanyName><BillAddress><Addr1>1 Main St</Addr1><Country>USA</Country></BillAddress>"
            "<Phone>1</Phone><JobStatus>Closed</JobStatus><Notes>n</Notes></CustomerAdd></Customer"
            "Add");
}

TEST(RequestText, Leaves_no_element_for_choice_and_filter_groups) {
  auto set = SetOf(Country::US, {3, 0});
  const auto filter = set.Append("CustomerQueryRq")["ORCustomerListQuery"]["ListFilter"];
  filter["ORNameFilter"]["NameRangeFilter"]["ToName"].SetValue("B");
  filter["ORNameFilter"]["NameRangeFilter"]["FromName"].SetValue("A");
  filter["ToModifiedDate"].SetValue(TextToDate("2008-03-05T10:00:00"));
  filter["ActiveStatus"].SetValue(2);
  EXPECT_EQ(Inside(set),
            "<ActiveStatus>All</ActiveStatus><ToModifiedDate>2008-03-05T10:00:00</ToModifiedDate><NameRangeFilter>"
            "<FromName>A</FromName><ToName>B</ToName></NameRangeFilter></CustomerQuery");
}

TEST(RequestText, Has_the_items_of_a_list_in_the_order_of_their_adding) {
  auto set = SetOf(Country::US, {3, 0});
  const auto query = set.Append("CustomerQueryRq");
  query["OwnerIDList"].Add("0");
  query["ORCustomerListQuery"]["ListIDList"].Add("20000-2");
  query["ORCustomerListQuery"]["ListIDList"].Add("10000-1");
  EXPECT_EQ(Inside(set), "<ListID>20000-2</ListID><ListID>10000-1</ListID><OwnerID>0</OwnerID></CustomerQuery");
}

TEST(RequestText, Leaves_out_what_was_only_looked_at_or_was_unset) {
  auto set = SetOf(Country::US, {3, 0});
  const auto customer = set.Append("CustomerAddRq");
  (void)customer["BillAddress"]["Addr1"].GetValue();
  (void)customer["ParentRef"]["ListID"];
  customer["Phone"].SetValue("1");
  customer["Phone"].Unset();
  customer["ShipAddress"]["City"].SetValue("x");
  customer["ShipAddress"]["City"].Unset();
  customer["Name"].SetValue("Acme");
  EXPECT_EQ(Inside(set), "<CustomerAdd><Name>Acme</Name></CustomerAdd></CustomerAdd");
}

TEST(RequestText, Holds_an_element_for_an_empty_value) {
  auto set = SetOf(Country::US, {3, 0});
  set.Append("CustomerAddRq")["Name"].SetValue("");
  EXPECT_EQ(Inside(set), "<CustomerAdd><Name></Name></CustomerAdd></CustomerAdd");
}

struct FormCase {
  Country country;
  Version version;
  std::string_view address;
  std::string_view taxCode;
};

class FormFields : public testing::TestWithParam<FormCase> {};

TEST_P(FormFields, Are_those_that_country_and_version_know) {
  auto set = SetOf(GetParam().country, GetParam().version);
  const auto customer = set.Append("CustomerAddRq");
  for (const auto* name : {"Addr4", "State", "Province", "County"}) customer["BillAddress"][name].SetValue(name);
  for (const auto* name : {"SalesTaxCodeRef", "TaxCodeRef", "CurrencyRef"}) customer[name]["FullName"].SetValue("t");
  customer["Notes"].SetValue("n");
  EXPECT_EQ(Inside(set), fmt::format("<CustomerAdd><BillAddress>{}</BillAddress>{}</CustomerAdd></CustomerAdd",
                                     GetParam().address, GetParam().taxCode));
}

constexpr std::string_view kAddr4State = "<Addr4>Addr4</Addr4><State>State</State>";
constexpr std::string_view kSalesTaxCode = "<SalesTaxCodeRef><FullName>t</FullName></SalesTaxCodeRef>";

INSTANTIATE_TEST_SUITE_P(
    RequestText, FormFields,
    testing::Values(
        FormCase{Country::US, {1, 0}, "<State>State</State>", kSalesTaxCode},
        FormCase{Country::US, {1, 1}, "<State>State</State>", kSalesTaxCode},
        FormCase{Country::US, {2, 0}, kAddr4State, kSalesTaxCode},
        FormCase{Country::US, {2, 1}, kAddr4State, kSalesTaxCode},
        FormCase{Country::US,
                 {3, 0},
                 kAddr4State,
                 "<SalesTaxCodeRef><FullName>t</FullName></SalesTaxCodeRef><Notes>n</Notes>"},
        FormCase{Country::CA, {1, 0}, "<Province>Province</Province>", ""},
        FormCase{Country::CA,
                 {2, 0},
                 "<Addr4>Addr4</Addr4><Province>Province</Province>",
                 "<TaxCodeRef><FullName>t</FullName></TaxCodeRef><CurrencyRef><FullName>t</FullName></CurrencyRef>"},
        FormCase{Country::CA,
                 {3, 0},
                 "<Addr4>Addr4</Addr4><Province>Province</Province>",
                 "<TaxCodeRef><FullName>t</FullName></TaxCodeRef><Notes>n</Notes><CurrencyRef><FullName>t</FullName>"
                 "</CurrencyRef>"},
        FormCase{Country::UK, {1, 1}, "<County>County</County>", ""},
        FormCase{Country::UK,
                 {3, 0},
                 "<Addr4>Addr4</Addr4><County>County</County>",
                 "<TaxCodeRef><FullName>t</FullName></TaxCodeRef><Notes>n</Notes>"}));

TEST(RequestText, Of_a_change_has_the_fields_of_its_version_too) {
  const auto inside = [](Version version) {
    auto set = SetOf(Country::US, version);
    const auto customer = set.Append("CustomerModRq");
    customer["IsActive"].SetValue(false);
    customer["EditSequence"].SetValue("7");
    customer["ListID"].SetValue("10000-1");
    return Inside(set);
  };
  EXPECT_EQ(inside({2, 1}),
            "<CustomerMod><ListID>10000-1</ListID><EditSequence>7</EditSequence></CustomerMod></CustomerMod");
  EXPECT_EQ(inside({3, 0}),
            "<CustomerMod><ListID>10000-1</ListID><EditSequence>7</EditSequence><IsActive>false</IsActive>"
            "</CustomerMod></CustomerMod");
}

TEST(RequestText, Escapes_what_XML_would_take_for_its_own) {
  auto set = SetOf(Country::US, {3, 0});
  set.Append("CustomerAddRq")["Name"].SetValue("a<b>&\"c'\r\n\xC3\xA9");
  EXPECT_EQ(Inside(set), "<CustomerAdd><Name>a&lt;b&gt;&amp;&quot;c'&#13;\n\xC3\xA9</Name></CustomerAdd></CustomerAdd");
}

TEST(RequestText, Brings_every_text_to_the_reader_as_it_was_set) {
  for (const std::string_view text :
       {"]]>", "&amp;", "<Name>", "two\r\nlines", "  blanks  ", "\ttab", "\xE4\xB8\xAD"}) {
    auto set = SetOf(Country::US, {3, 0});
    set.Append("CustomerAddRq")["Name"].SetValue(text);
    const auto xml = set.ToXMLString();
    pugi::xml_document document;
    ASSERT_TRUE(document.load_buffer(xml.data(), xml.size(), pugi::parse_default | pugi::parse_ws_pcdata));
    EXPECT_EQ(document.first_element_by_path("QBXML/QBXMLMsgsRq/CustomerAddRq/CustomerAdd/Name").text().get(),
              std::string(text));
  }
}

}  // namespace
}  // namespace twqb
