// The lists of QuickBooks that a host's dialogs show: what is asked, what is handed on, what is told.

#include <gtest/gtest.h>

#include <algorithm>

#include "quickbooks/LookupLists.h"
#include "tests/bridge/LookupHouse.h"
#include "tests/bridge/LookupMembers.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

Texts NamesOf(const ReturnedList& list, std::string_view field) {
  Texts names;
  for (std::size_t i = 0; !list.IsNothing() && i < list.Count(); ++i) names.push_back(list.GetAt(i)[field].GetValue());
  return names;
}

class Lookups : public testing::TestWithParam<LookupMember> {};
INSTANTIATE_TEST_SUITE_P(OfTheHost, Lookups, testing::ValuesIn(LookupMembers()),
                         [](const auto& test) { return test.param.operation; });

class LookupsWithAll : public testing::TestWithParam<LookupMember> {};
INSTANTIATE_TEST_SUITE_P(OfTheHost, LookupsWithAll, testing::ValuesIn(LookupMembersWithAll()),
                         [](const auto& test) { return test.param.operation; });

// What none of these tests would go through. Sales tax items have no operation.
TEST(LookupRows, Are_there_for_every_list_that_has_an_operation) {
  const auto members = LookupMembers();
  for (std::size_t place = 0; place <= static_cast<std::size_t>(kLastLookupList); ++place) {
    const auto list = static_cast<LookupList>(place);
    const auto rows = std::ranges::count(members, LookupName(list), &LookupMember::Routine);
    EXPECT_EQ(rows, list == LookupList::SalesTaxItems ? 0 : 1) << LookupName(list);
  }
}

// --- What is asked ---------------------------------------------------------------------------------------------------

TEST_P(Lookups, Send_one_plain_query) {
  LookupHouse house;
  house.traffic.canned.push_back(GetParam().Answer(kStatusOk, {"A"}));
  (void)GetParam().call(house.bridge);
  EXPECT_EQ(
      house.traffic.documents,
      Texts{fmt::format("<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML>"
                        "<QBXMLMsgsRq onError=\"continueOnError\"><{0} requestID=\"1\"></{0}></QBXMLMsgsRq></QBXML>",
                        GetParam().Request())});
  EXPECT_TRUE(house.traffic.statements.empty());
}

TEST_P(LookupsWithAll, Ask_for_inactive_records_too_with_GetAll_alone) {
  for (const bool all : {false, true}) {
    LookupHouse house;
    house.traffic.canned.push_back(GetParam().Answer(kStatusOk, {"A"}));
    (void)GetParam().callAll(house.bridge, all);
    ASSERT_EQ(house.traffic.documents.size(), 1U);
    EXPECT_EQ(house.traffic.documents[0].find("<ActiveStatus>All</ActiveStatus>") != std::string::npos, all)
        << house.traffic.documents[0];
  }
}

TEST_P(LookupsWithAll, Take_GetAll_as_False_where_it_is_omitted) {
  LookupHouse house;
  house.traffic.canned.assign(2, GetParam().Answer(kStatusOk, {"A"}));
  (void)GetParam().call(house.bridge);
  (void)GetParam().callAll(house.bridge, false);
  EXPECT_EQ(house.traffic.documents.at(0), house.traffic.documents.at(1));
}

TEST_P(Lookups, Connect_by_themselves_and_find_the_session_the_next_time) {
  BridgeHouse house({},
                    fmt::format("{0} 1 status 1 Info \"None.\"\n{0} 2 status 1 Info \"None.\"", GetParam().Request()));
  Bridge bridge(house);
  (void)GetParam().call(bridge);
  EXPECT_TRUE(Vars().g_QBSession);
  EXPECT_EQ(bridge.QBCountry(), "US");
  (void)GetParam().call(bridge);
  EXPECT_EQ(house.Requests("HostQueryRq").size(), 1U);
  EXPECT_EQ(house.traffic.documents.size(), 3U);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(Lookups, Open_the_file_in_the_mode_of_the_object) {
  for (const bool single : {false, true}) {
    BridgeHouse house({}, GetParam().Request() + " 1 status 1 Info \"None.\"");
    Bridge bridge(house);
    bridge.SetIsQBSingleMode(single);
    (void)GetParam().call(bridge);
    EXPECT_EQ(OthersCanOpenTheFile(house), !single);
  }
}

// --- What is handed on -----------------------------------------------------------------------------------------------

TEST_P(Lookups, Hand_the_list_on_as_it_came) {
  LookupHouse house;
  house.FindNoEmployee();
  house.traffic.canned.push_back(GetParam().Answer(kStatusOk, {"B", "A", "B"}));
  const auto list = GetParam().call(house.bridge);
  ASSERT_FALSE(list.IsNothing());
  EXPECT_EQ(NamesOf(list, GetParam().key), (Texts{"B", "A", "B"}));
  EXPECT_FALSE(house.bridge.NoRecsInQBTable());
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(Lookups, Hand_on_a_list_that_outlives_the_next_lookup_and_the_session) {
  ReturnedList list;
  {
    LookupHouse house;
    house.traffic.canned.push_back(GetParam().Answer(kStatusOk, {"A"}));
    house.traffic.canned.push_back(GetParam().Answer(kStatusOk, {"B"}));
    list = GetParam().call(house.bridge);
    (void)GetParam().call(house.bridge);
  }
  EXPECT_EQ(NamesOf(list, GetParam().key), Texts{"A"});
}

TEST_P(Lookups, Of_an_empty_list_are_nothing_without_a_box_and_NoRecsInQBTable_tells) {
  LookupHouse house;
  house.traffic.canned.push_back(GetParam().Answer(kNone, {}));
  EXPECT_TRUE(GetParam().call(house.bridge).IsNothing());
  EXPECT_EQ(house.bridge.NoRecsInQBTable(), GetParam().tellsNone);
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST_P(Lookups, Of_an_answer_without_records_are_nothing_and_no_empty_list) {
  LookupHouse house;
  house.traffic.canned.push_back(GetParam().Answer(kStatusOk, {}));
  EXPECT_TRUE(GetParam().call(house.bridge).IsNothing());
  EXPECT_FALSE(house.bridge.NoRecsInQBTable());
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(LookupsOfTwoObjects, Tell_each_its_own_NoRecsInQBTable) {
  LookupHouse house;
  const CTWQBBridge other;
  house.FindNoEmployee();
  EXPECT_FALSE(other.NoRecsInQBTable());
}

// --- What is told ----------------------------------------------------------------------------------------------------

TEST_P(Lookups, Tell_every_other_status_and_are_nothing) {
  for (const int status : {2, 500, 3120, 3180, 3260, -1}) {
    SCOPED_TRACE(status);
    LookupHouse house;
    house.FindNoEmployee();
    house.traffic.canned.push_back(GetParam().Answer(
        fmt::format("statusCode=\"{}\" statusSeverity=\"Error\" statusMessage=\"Not &lt;that&gt;.\"", status), {}));
    EXPECT_TRUE(GetParam().call(house.bridge).IsNothing());
    EXPECT_FALSE(house.bridge.NoRecsInQBTable());
    ASSERT_EQ(house.desk.Boxes().size(), 1U);
    const auto& box = house.desk.Boxes()[0].box;
    EXPECT_EQ(box.text, RefusalText("Not <that>.", status, "Error"));
    EXPECT_EQ(box.title, "Error");
    EXPECT_EQ(box.icon, BoxIcon::Information);
    EXPECT_EQ(box.buttons, BoxButtons::Ok);
  }
}

TEST_P(Lookups, Report_a_call_that_fails_under_their_name_and_are_nothing) {
  LookupHouse house("DoRequests 1 raise 0x80040400 \"Not understood.\"");
  house.FindNoEmployee();
  EXPECT_TRUE(GetParam().call(house.bridge).IsNothing());
  EXPECT_FALSE(house.bridge.NoRecsInQBTable());
  EXPECT_EQ(house.BoxTexts(),
            Texts{"Error #: -2147220480(80040400) -- \r\n\r\nNot understood." + ErrorBoxEnd(GetParam().Routine())});
  EXPECT_EQ(house.desk.Boxes()[0].box.title, "WARNING");
  EXPECT_EQ(house.desk.Boxes()[0].box.icon, BoxIcon::Warning);
}

TEST_P(Lookups, Report_an_answer_of_nothing_and_one_that_is_none) {
  for (const std::string answer : {"<QBXML><QBXMLMsgsRs/></QBXML>", "no answer"}) {
    LookupHouse house;
    house.traffic.canned.push_back(answer);
    EXPECT_TRUE(GetParam().call(house.bridge).IsNothing());
    ASSERT_EQ(house.BoxTexts().size(), 1U);
    EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd(GetParam().Routine()))) << house.BoxTexts()[0];
  }
}

TEST_P(Lookups, Are_nothing_without_a_further_word_when_no_session_can_be_had) {
  BridgeHouse house({}, "OpenConnection 1 raise 0x80040408 \"Not running\"");
  Bridge bridge(house);
  EXPECT_TRUE(GetParam().call(bridge).IsNothing());
  EXPECT_FALSE(bridge.NoRecsInQBTable());
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("StartQBSession")));
  EXPECT_TRUE(house.traffic.documents.empty());
}

// --- Lists of a company file -----------------------------------------------------------------------------------------

TEST(LookupsInACompanyFile, Of_a_list_without_records_are_nothing_and_say_so) {
  LookupHouse house;
  EXPECT_TRUE(house.bridge.GetEmployees().IsNothing());
  EXPECT_TRUE(house.bridge.NoRecsInQBTable());
  EXPECT_TRUE(house.bridge.GetClassItems().IsNothing());
  EXPECT_FALSE(house.bridge.NoRecsInQBTable());
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(LookupsInACompanyFile, Leave_inactive_records_out_unless_all_are_asked_for) {
  LookupHouse house;
  const auto income = "<AccountRef><FullName>Fees</FullName></AccountRef>";
  house.Add("Account", "<Name>Fees</Name><AccountType>Income</AccountType>");
  for (const std::string active : {"true", "false"}) {
    const auto name = active == "true" ? "Active" : "Retired";
    const auto fields = fmt::format("<Name>{}</Name><IsActive>{}</IsActive>", name, active);
    house.Add("Employee", fmt::format("<IsActive>{}</IsActive><FirstName>{}</FirstName>", active, name));
    house.Add("Customer", fmt::format("<Name>{0} C</Name><IsActive>{1}</IsActive>", name, active));
    house.Add("Vendor", fmt::format("<Name>{0} V</Name><IsActive>{1}</IsActive>", name, active));
    for (const std::string item : {"ItemService", "ItemOtherCharge"}) {
      house.Add(item, fmt::format("<Name>{0} {1}</Name><IsActive>{2}</IsActive><SalesOrPurchase>{3}</SalesOrPurchase>",
                                  name, item, active, income));
    }
  }
  auto& bridge = house.bridge;
  EXPECT_EQ(NamesOf(bridge.GetEmployees(), "FirstName"), Texts{"Active"});
  EXPECT_EQ(NamesOf(bridge.GetEmployees(true), "FirstName"), (Texts{"Active", "Retired"}));
  EXPECT_EQ(NamesOf(bridge.GetCustomers(), "Name"), Texts{"Active C"});
  EXPECT_EQ(NamesOf(bridge.GetCustomers(true), "Name"), (Texts{"Active C", "Retired C"}));
  EXPECT_EQ(NamesOf(bridge.GetVendors(), "Name"), Texts{"Active V"});
  EXPECT_EQ(NamesOf(bridge.GetVendors(true), "Name"), (Texts{"Active V", "Retired V"}));
  EXPECT_EQ(NamesOf(bridge.GetActivities(), "Name"), Texts{"Active ItemService"});
  EXPECT_EQ(NamesOf(bridge.GetActivities(true), "Name"), (Texts{"Active ItemService", "Retired ItemService"}));
  EXPECT_EQ(NamesOf(bridge.GetExpCodes(), "Name"), Texts{"Active ItemOtherCharge"});
  EXPECT_EQ(NamesOf(bridge.GetExpCodes(true), "Name"), (Texts{"Active ItemOtherCharge", "Retired ItemOtherCharge"}));
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(LookupsInACompanyFile, Hold_jobs_among_the_customers) {
  LookupHouse house;
  const auto acme = house.AddCustomer("<Name>Acme</Name>");
  house.AddJob("Barn", acme);
  EXPECT_EQ(NamesOf(house.bridge.GetCustomers(), "FullName"), (Texts{"Acme", "Acme:Barn"}));
}

TEST(LookupsInACompanyFile, Hold_classes_and_payroll_items) {
  LookupHouse house;
  house.Add("Account", "<Name>Wages</Name><AccountType>Expense</AccountType>");
  house.Add("Class", "<Name>East</Name>");
  house.Add("PayrollItemWage",
            "<Name>Base Pay</Name><WageType>HourlyRegular</WageType>"
            "<ExpenseAccountRef><FullName>Wages</FullName></ExpenseAccountRef>");
  EXPECT_EQ(NamesOf(house.bridge.GetClassItems(), "Name"), Texts{"East"});
  EXPECT_EQ(NamesOf(house.bridge.GetPayrollItems(), "Name"), Texts{"Base Pay"});
}

// --- Sales tax items: for the library's own use ----------------------------------------------------------------------

TEST(SalesTaxItems, Are_looked_up_on_the_session_that_stands) {
  LookupHouse house;
  EXPECT_TRUE(LookUp(LookupList::SalesTaxItems).list.IsNothing());
  house.Add("ItemSalesTax", "<Name>County Tax</Name>");
  const auto result = LookUp(LookupList::SalesTaxItems);
  EXPECT_EQ(NamesOf(result.list, "Name"), Texts{"County Tax"});
  EXPECT_TRUE(house.BoxTexts().empty());
}

TEST(SalesTaxItems, Are_refused_and_reported_like_every_list) {
  LookupHouse house("ItemSalesTaxQueryRq 1 status 3260 Error \"No.\"\nDoRequests 2 raise 0x80040400 \"Broken.\"");
  EXPECT_TRUE(LookUp(LookupList::SalesTaxItems).list.IsNothing());
  EXPECT_TRUE(LookUp(LookupList::SalesTaxItems).list.IsNothing());
  EXPECT_EQ(house.BoxTexts(),
            (Texts{RefusalText("No.", 3260, "Error"),
                   "Error #: -2147220480(80040400) -- \r\n\r\nBroken." + ErrorBoxEnd("GetSalesTaxItems()")}));
}

TEST(SalesTaxItems, Need_a_session_and_start_none) {
  BridgeHouse house;
  EXPECT_TRUE(LookUp(LookupList::SalesTaxItems).list.IsNothing());
  EXPECT_FALSE(Vars().g_QBSession);
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_TRUE(house.BoxTexts()[0].ends_with(ErrorBoxEnd("GetSalesTaxItems()")));
}

}  // namespace
}  // namespace twqb
