// Whole requests, filled as the transfers fill them: what goes on the wire, that it is as published, and what raises
// before it goes.

#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>

#include "messages/Validation.h"
#include "platform/PlatformError.h"
#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"
#include "tests/quickbooks/CannedQuickBooks.h"

namespace twqb {
namespace {

using messages::Country;
using messages::MessageSet;
using messages::TimeInterval;

constexpr messages::Form kUs = {.country = Country::US, .version = {3, 0}};
constexpr messages::Form kCa = {.country = Country::CA, .version = {3, 0}};

MsgSetRequest CompanySet(const messages::Form& form = kUs) { return {form, MessageSet::Company}; }

// What stands in the one request of the set; a failure when the request is not as published in that form.
std::string Wire(const MsgSetRequest& set, const messages::Form& form = kUs) {
  const auto text = set.ToXMLString();
  pugi::xml_document document;
  EXPECT_TRUE(document.load_string(text.c_str())) << text;
  const auto request = document.document_element().first_child().first_child();
  const auto* message = messages::FindMessage(request.name());
  if (message == nullptr) return {};
  for (const auto& problem : messages::Validate(request, message->request, form)) {
    ADD_FAILURE() << problem.field << " \"" << problem.value << "\" in " << text;
  }
  const auto from = text.find("requestID=\"1\">") + std::string_view("requestID=\"1\">").size();
  return text.substr(from, text.rfind("</" + message->RequestName()) - from);
}

ErrorNumber NumberOf(const auto& body) {
  try {
    body();
  } catch (const PlatformError& raised) {
    return raised.number();
  }
  return 0;
}

void FillInvoiceHead(const RequestField& invoice) {
  invoice["CustomerRef"]["ListID"].SetValue("80000001-1");
  invoice["TxnDate"].SetValue("3/5/2008");
}

TEST(InvoiceAdd, Keeps_its_lines_in_the_order_in_which_they_were_appended) {
  auto set = CompanySet();
  const auto invoice = set.Append("InvoiceAddRq");
  FillInvoiceHead(invoice);
  const auto lines = invoice["ORInvoiceLineAddList"];
  const auto first = lines.Append()["InvoiceLineAdd"];
  first["ItemRef"]["FullName"].SetValue("Consulting");
  first["Quantity"].SetValue(2.5);
  first["ORRatePriceLevel"]["Rate"].SetValue(97.123456);
  lines.Append()["InvoiceLineGroupAdd"]["ItemGroupRef"]["FullName"].SetValue("Package");
  const auto last = lines.Append()["InvoiceLineAdd"];
  last["ItemRef"]["FullName"].SetValue("TWServiceTaxAmt");
  last["Amount"].SetValue(97.5);
  EXPECT_EQ(lines.Count(), 3U);
  EXPECT_EQ(lines.GetAt(0).ORType(), 0);
  EXPECT_EQ(lines.GetAt(1).ORType(), 1);
  EXPECT_EQ(Wire(set),
            "<InvoiceAdd><CustomerRef><ListID>80000001-1</ListID></CustomerRef><TxnDate>2008-03-05</TxnDate>"
            "<InvoiceLineAdd><ItemRef><FullName>Consulting</FullName></ItemRef><Quantity>2.5</Quantity>"
            "<Rate>97.12346</Rate></InvoiceLineAdd>"
            "<InvoiceLineGroupAdd><ItemGroupRef><FullName>Package</FullName></ItemGroupRef></InvoiceLineGroupAdd>"
            "<InvoiceLineAdd><ItemRef><FullName>TWServiceTaxAmt</FullName></ItemRef><Amount>97.50</Amount>"
            "</InvoiceLineAdd></InvoiceAdd>");
}

TEST(InvoiceAdd, Has_the_rate_of_a_line_behind_the_choice_that_its_form_knows) {
  const auto wire = [](const messages::Form& form) {
    auto set = CompanySet(form);
    const auto invoice = set.Append("InvoiceAddRq");
    FillInvoiceHead(invoice);
    const auto line = invoice["ORInvoiceLineAddList"].Append()["InvoiceLineAdd"];
    line["ORRatePriceLevel"]["Rate"].SetValue(1);
    line["ORRate"]["Rate"].SetValue(2);
    line["SalesTaxCodeRef"]["FullName"].SetValue("NON");
    line["TaxCodeRef"]["FullName"].SetValue("E");
    const auto text = Wire(set, form);
    return text.substr(text.find("<InvoiceLineAdd>"));
  };
  EXPECT_EQ(wire(kUs),
            "<InvoiceLineAdd><Rate>1</Rate><SalesTaxCodeRef><FullName>NON</FullName></SalesTaxCodeRef>"
            "</InvoiceLineAdd></InvoiceAdd>");
  EXPECT_EQ(wire(kCa),
            "<InvoiceLineAdd><Rate>2</Rate><TaxCodeRef><FullName>E</FullName></TaxCodeRef></InvoiceLineAdd>"
            "</InvoiceAdd>");
}

TEST(InvoiceAdd, Without_a_line_raises_before_anything_is_sent) {
  auto set = CompanySet();
  const auto invoice = set.Append("InvoiceAddRq");
  FillInvoiceHead(invoice);
  EXPECT_EQ(NumberOf([&] { (void)set.ToXMLString(); }), error::kRequestIncomplete);
  const auto line = invoice["ORInvoiceLineAddList"].Append()["InvoiceLineAdd"];
  EXPECT_EQ(NumberOf([&] { (void)set.ToXMLString(); }), error::kRequestIncomplete) << "the line comes to nothing";
  line["Desc"].SetValue("Text alone");
  EXPECT_EQ(NumberOf([&] { (void)set.ToXMLString(); }), 0U);
}

TEST(BillAdd, Has_item_lines_with_a_billable_status_and_may_have_none) {
  auto set = CompanySet();
  const auto bill = set.Append("BillAddRq");
  bill["VendorRef"]["ListID"].SetValue("80000002-1");
  EXPECT_EQ(NumberOf([&] { (void)set.ToXMLString(); }), 0U);
  const auto line = bill["ORItemLineAddList"].Append()["ItemLineAdd"];
  line["ItemRef"]["ListID"].SetValue("80000003-1");
  line["BillableStatus"].SetValue(1);
  line["Amount"].SetValue("12.345");
  EXPECT_EQ(Wire(set),
            "<BillAdd><VendorRef><ListID>80000002-1</ListID></VendorRef><ItemLineAdd><ItemRef>"
            "<ListID>80000003-1</ListID></ItemRef><Amount>12.35</Amount><BillableStatus>NotBillable</BillableStatus>"
            "</ItemLineAdd></BillAdd>");
}

TEST(ReceivePaymentAdd, Applies_itself_to_a_list_of_transactions) {
  auto set = CompanySet();
  const auto payment = set.Append("ReceivePaymentAddRq");
  payment["CustomerRef"]["ListID"].SetValue("80000001-1");
  payment["TotalAmount"].SetValue(0);
  const auto applied = payment["ORApplyPayment"]["AppliedToTxnAddList"];
  const auto first = applied.Append();
  first["TxnID"].SetValue("1A-1");
  first["PaymentAmount"].SetValue(129.43);
  const auto second = applied.Append();
  second["TxnID"].SetValue("1B-1");
  second["DiscountAmount"].SetValue(5);
  second["DiscountAccountRef"]["FullName"].SetValue("TWUnearnedRetAccount");
  EXPECT_EQ(payment["ORApplyPayment"].ORType(), 1);
  EXPECT_EQ(Wire(set),
            "<ReceivePaymentAdd><CustomerRef><ListID>80000001-1</ListID></CustomerRef><TotalAmount>0.00</TotalAmount>"
            "<AppliedToTxnAdd><TxnID>1A-1</TxnID><PaymentAmount>129.43</PaymentAmount></AppliedToTxnAdd>"
            "<AppliedToTxnAdd><TxnID>1B-1</TxnID><DiscountAmount>5.00</DiscountAmount><DiscountAccountRef>"
            "<FullName>TWUnearnedRetAccount</FullName></DiscountAccountRef></AppliedToTxnAdd></ReceivePaymentAdd>");
}

struct LackingChoice {
  std::string_view request;
  std::string_view field;  // something else that is set
};

class RequiredChoice : public testing::TestWithParam<LackingChoice> {};

TEST_P(RequiredChoice, Left_empty_raises_before_anything_is_sent) {
  auto set = CompanySet();
  set.Append(GetParam().request)[GetParam().field].SetValue("1");
  EXPECT_EQ(NumberOf([&] { (void)set.ToXMLString(); }), error::kRequestIncomplete) << GetParam().request;
}

INSTANTIATE_TEST_SUITE_P(
    Requests, RequiredChoice,
    testing::Values(LackingChoice{"InvoiceAddRq", "RefNumber"}, LackingChoice{"CreditMemoAddRq", "RefNumber"},
                    LackingChoice{"EstimateAddRq", "RefNumber"}, LackingChoice{"ReceivePaymentAddRq", "RefNumber"},
                    LackingChoice{"ItemServiceAddRq", "Name"}, LackingChoice{"ItemOtherChargeAddRq", "Name"},
                    LackingChoice{"ItemNonInventoryAddRq", "Name"}));

TEST(RequiredChoice, Of_an_aggregate_that_is_not_there_is_not_missed) {
  auto set = CompanySet();
  set.Append("BillQueryRq")["IncludeLineItems"].SetValue(true);
  EXPECT_EQ(Wire(set), "<IncludeLineItems>true</IncludeLineItems>");
}

TEST(EmployeeAdd, Has_its_earnings_in_the_payroll_information) {
  auto set = CompanySet();
  const auto employee = set.Append("EmployeeAddRq");
  employee["LastName"].SetValue("Mori");
  const auto payroll = employee["EmployeePayrollInfo"];
  const auto earnings = payroll["OREarnings"]["EarningsList"].Append();
  earnings["PayrollItemWageRef"]["FullName"].SetValue("TW Regular Pay");
  earnings["ORRate"]["Rate"].SetValue(40);
  payroll["UseTimeDataToCreatePaychecks"].SetValue(1);
  EXPECT_EQ(Wire(set),
            "<EmployeeAdd><LastName>Mori</LastName><EmployeePayrollInfo><Earnings><PayrollItemWageRef>"
            "<FullName>TW Regular Pay</FullName></PayrollItemWageRef><Rate>40</Rate></Earnings>"
            "<UseTimeDataToCreatePaychecks>UseTimeData</UseTimeDataToCreatePaychecks></EmployeePayrollInfo>"
            "</EmployeeAdd>");
}

TEST(ItemServiceMod, Sets_the_price_of_the_form_that_the_item_has) {
  auto set = CompanySet();
  const auto item = set.Append("ItemServiceModRq");
  item["ListID"].SetValue("80000001-1");
  item["EditSequence"].SetValue("1");
  item["ORSalesPurchaseMod"]["SalesOrPurchaseMod"]["ORPrice"]["PRICE"].SetValue(1.000005);
  EXPECT_EQ(Wire(set),
            "<ItemServiceMod><ListID>80000001-1</ListID><EditSequence>1</EditSequence><SalesOrPurchaseMod>"
            "<Price>1.00001</Price></SalesOrPurchaseMod></ItemServiceMod>");
}

TEST(ItemSalesTaxAdd, Writes_its_percentage_as_a_plain_number) {
  for (const auto& [value, wire] : {std::pair{8.25, "8.25"}, {0.0, "0"}, {0.00001, "0.00001"}, {13.0, "13"}}) {
    auto set = CompanySet();
    const auto item = set.Append("ItemSalesTaxAddRq");
    item["Name"].SetValue("Tax");
    item["TaxRate"].SetValue(value);
    EXPECT_EQ(item["TaxRate"].GetValue(), wire);
    item["TaxRate"].SetValue(item["TaxRate"].GetValue());
    EXPECT_EQ(Wire(set),
              std::string("<ItemSalesTaxAdd><Name>Tax</Name><TaxRate>") + wire + "</TaxRate></ItemSalesTaxAdd>");
  }
}

TEST(TimeTrackingAdd, Writes_a_span_of_hours_minutes_and_seconds_and_no_rate) {
  auto set = CompanySet();
  const auto entry = set.Append("TimeTrackingAddRq");
  entry["EntityRef"]["ListID"].SetValue("80000001-1");
  entry["Rate"].SetValue(50);
  entry["Duration"].SetValue(TimeInterval{.hours = 2, .minutes = 30, .seconds = 59});
  EXPECT_EQ(Wire(set),
            "<TimeTrackingAdd><EntityRef><ListID>80000001-1</ListID></EntityRef><Duration>PT2H30M59S</Duration>"
            "</TimeTrackingAdd>");
  entry["Duration"].SetValue("");
  EXPECT_EQ(entry["Duration"].GetValue(), "");
  EXPECT_EQ(NumberOf([&] { entry["Duration"].SetValue(2.5); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { entry["Notes"].SetValue(TimeInterval{}); }), error::kConversion);
}

TEST(SubscriptionAdd, Takes_its_events_by_number_in_the_order_given) {
  MsgSetRequest set(kUs, MessageSet::Subscription);
  const auto data = set.Append("DataEventSubscriptionAddRq");
  data["SubscriberID"].SetValue("{587B27F0-273E-46fd-BBDF-B5E79696FC3E}");
  data["COMCallbackInfo"]["AppName"].SetValue("Events");
  data["COMCallbackInfo"]["ORProgCLSID"]["ProgID"].SetValue("Callback.CMain");
  data["DeliveryPolicy"].SetValue(0);
  const auto lists = data["ListEventSubscriptionList"].Append();
  for (const int type : {6, 2, 28, 13, 17}) lists["ListEventTypeList"].Add(type);
  for (const int operation : {0, 1, 3, 2}) lists["ListEventOperationList"].Add(operation);
  EXPECT_EQ(lists["ListEventTypeList"].Count(), 5U);
  const auto wire = Wire(set);
  EXPECT_NE(wire.find("<ListEventSubscription><ListEventType>Employee</ListEventType>"
                      "<ListEventType>Customer</ListEventType><ListEventType>Vendor</ListEventType>"
                      "<ListEventType>ItemOtherCharge</ListEventType><ListEventType>ItemService</ListEventType>"
                      "<ListEventOperation>Add</ListEventOperation><ListEventOperation>Delete</ListEventOperation>"
                      "<ListEventOperation>Modify</ListEventOperation><ListEventOperation>Merge</ListEventOperation>"
                      "</ListEventSubscription>"),
            std::string::npos)
      << wire;
  EXPECT_EQ(NumberOf([&] { lists["ListEventTypeList"].Add(99); }), error::kConversion);
  EXPECT_EQ(NumberOf([&] { data["DeliveryPolicy"].Add(0); }), error::kNameUnknown) << "it does not repeat";
}

TEST(UIExtensionSubscriptionAdd, Has_its_menu_items_in_a_submenu) {
  MsgSetRequest set(kUs, MessageSet::Subscription);
  const auto menu = set.Append("UIExtensionSubscriptionAddRq");
  menu["SubscriberID"].SetValue("{587B27F0-273E-46fd-BBDF-B5E79696FC3E}");
  menu["COMCallbackInfo"]["AppName"].SetValue("Events");
  menu["COMCallbackInfo"]["ORProgCLSID"]["ProgID"].SetValue("Callback.CMain");
  menu["MenuExtensionSubscription"]["AddToMenu"].SetValue(0);
  const auto items = menu["MenuExtensionSubscription"]["ORSubmenuMenuItem"]["Submenu"]["MenuItemList"];
  for (const auto* name : {"Sync All", "Unsubscribe"}) {
    const auto item = items.Append();
    item["MenuText"].SetValue(name);
    item["EventTag"].SetValue(name);
  }
  const auto wire = Wire(set);
  EXPECT_NE(wire.find("<MenuExtensionSubscription><AddToMenu>File</AddToMenu><Submenu><MenuItem><MenuText>Sync All"
                      "</MenuText><EventTag>Sync All</EventTag></MenuItem><MenuItem><MenuText>Unsubscribe</MenuText>"),
            std::string::npos)
      << wire;
}

// Records with lines.

Record Invoice(std::string_view fields) {
  return MsgSetResponse(
             CannedAnswer("InvoiceQueryRs", kStatusOk, "<InvoiceRet>" + std::string(fields) + "</InvoiceRet>"))
      .GetAt(0)
      .Detail();
}

TEST(InvoiceRet, Lists_its_lines_in_order_whatever_their_kind) {
  const auto invoice = Invoice(
      "<TxnID>1A-1</TxnID><InvoiceLineRet><TxnLineID>1-1</TxnLineID><Rate>5</Rate></InvoiceLineRet>"
      "<InvoiceLineGroupRet><TxnLineID>2-1</TxnLineID><TotalAmount>7.00</TotalAmount>"
      "<InvoiceLineRet><TxnLineID>2-2</TxnLineID></InvoiceLineRet></InvoiceLineGroupRet>"
      "<InvoiceLineRet><TxnLineID>3-1</TxnLineID></InvoiceLineRet>");
  const auto lines = invoice["ORInvoiceLineRetList"];
  ASSERT_EQ(lines.Count(), 3U);
  EXPECT_EQ(lines.GetAt(0).ORType(), 0);
  EXPECT_EQ(lines.GetAt(0)["InvoiceLineRet"]["TxnLineID"].GetValue(), "1-1");
  EXPECT_EQ(lines.GetAt(0)["InvoiceLineRet"]["ORRate"]["Rate"].GetNumber(), 5);
  EXPECT_TRUE(lines.GetAt(0)["InvoiceLineGroupRet"].IsNothing());
  EXPECT_EQ(lines.GetAt(1).ORType(), 1);
  EXPECT_TRUE(lines.GetAt(1)["InvoiceLineRet"].IsNothing());
  EXPECT_EQ(lines.GetAt(1)["InvoiceLineGroupRet"]["TotalAmount"].GetValue(), "7.00");
  EXPECT_EQ(lines.GetAt(1)["InvoiceLineGroupRet"]["InvoiceLineRetList"].Count(), 1U);
  EXPECT_EQ(lines.GetAt(2)["InvoiceLineRet"]["TxnLineID"].GetValue(), "3-1");
  EXPECT_EQ(NumberOf([&] { (void)lines.GetAt(3); }), error::kBadArgument);
  EXPECT_EQ(NumberOf([&] { (void)lines.GetAt(0)["ItemLineRet"]; }), error::kNameUnknown);
}

TEST(InvoiceRet, Without_lines_has_nothing_as_their_list) {
  const auto invoice = Invoice("<TxnID>1A-1</TxnID>");
  EXPECT_TRUE(invoice["ORInvoiceLineRetList"].IsNothing());
  EXPECT_EQ(invoice["ORInvoiceLineRetList"].Count(), 0U);
  EXPECT_EQ(invoice["ORInvoiceLineRetList"].ORType(), -1);
}

TEST(TimeTrackingRet, Gives_its_span_of_time) {
  const auto span = [](const std::string& text) {
    return MsgSetResponse(CannedAnswer("TimeTrackingQueryRs", kStatusOk,
                                       "<TimeTrackingRet><Duration>" + text + "</Duration></TimeTrackingRet>"))
        .GetAt(0)
        .Detail()["Duration"]
        .GetTimeInterval();
  };
  EXPECT_EQ(span("PT2H30M59S"), (TimeInterval{.hours = 2, .minutes = 30, .seconds = 59}));
  EXPECT_EQ(span("PT45M"), (TimeInterval{.minutes = 45}));
  EXPECT_EQ(NumberOf([&] { (void)span("2:30"); }), error::kConversion);
}

}  // namespace
}  // namespace twqb
