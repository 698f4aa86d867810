// The message set that fits the edition, the report of a refusal, and the level of a customer.

#include <gtest/gtest.h>

#include "adapters/system/FrozenMachine.h"
#include "platform/PlatformError.h"
#include "quickbooks/IsCustomer.h"
#include "quickbooks/Requests.h"
#include "tests/quickbooks/CannedQuickBooks.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

struct FormCase {
  std::string_view country;
  int major;
  int minor;
  std::string_view tag;
};

class Forms : public testing::TestWithParam<FormCase> {};

TEST_P(Forms, Are_the_countrys_own_in_Canada_and_Britain_and_the_US_form_elsewhere) {
  TestHouse house;
  house.Enter();
  Vars().g_QBCountry = GetParam().country;
  Vars().g_QBMajorVer = static_cast<std::int16_t>(GetParam().major);
  Vars().g_QBMinorVer = static_cast<std::int16_t>(GetParam().minor);
  FrozenMachine machine({}, {});
  QBSessionManager session(CannedQuickBooks(Canned{}).CreateTransport(), machine);
  auto set = fnCreateMsgSetRequest(session);
  ASSERT_TRUE(set);
  set->Append("HostQueryRq");
  EXPECT_EQ(set->ToXMLString(), fmt::format("<?xml version=\"1.0\"?><?qbxml version=\"{}\"?><QBXML><QBXMLMsgsRq "
                                            "onError=\"continueOnError\"><HostQueryRq requestID=\"1\"></HostQueryRq>"
                                            "</QBXMLMsgsRq></QBXML>",
                                            GetParam().tag));
}

INSTANTIATE_TEST_SUITE_P(fnCreateMsgSetRequest, Forms,
                         testing::Values(FormCase{"US", 3, 0, "3.0"}, FormCase{"CA", 3, 0, "CA3.0"},
                                         FormCase{"ca", 2, 0, "CA2.0"}, FormCase{"UK", 2, 1, "UK2.1"},
                                         FormCase{"uK", 3, 0, "UK3.0"}, FormCase{"AU", 3, 0, "3.0"},
                                         FormCase{"", 1, 1, "1.1"}, FormCase{"NZ", 1, 0, "1.0"}));

TEST(SessionManager, Refuses_a_country_without_a_form) {
  FrozenMachine machine({}, {});
  QBSessionManager session(CannedQuickBooks(Canned{}).CreateTransport(), machine);
  EXPECT_THROW((void)session.CreateMsgSetRequest("NZ", 3, 0), PlatformError);
  EXPECT_NO_THROW((void)session.CreateMsgSetRequest("au", 3, 0));
}

TEST(SessionManager, Makes_a_new_empty_set_each_time) {
  FrozenMachine machine({}, {});
  QBSessionManager session(CannedQuickBooks(Canned{}).CreateTransport(), machine);
  auto one = session.CreateMsgSetRequest("US", 3, 0);
  one.Append("HostQueryRq");
  EXPECT_EQ(one.Count(), 1U);
  EXPECT_EQ(session.CreateMsgSetRequest("US", 3, 0).Count(), 0U);
}

MsgSetResponse Refusal() {
  return MsgSetResponse(
      CannedAnswer("CustomerAddRs",
                   "statusCode=\"3100\" statusSeverity=\"Error\" statusMessage=\"The name &quot;A&amp;B&quot; "
                   "is already in use.\"",
                   ""));
}

TEST(QBError, Is_told_in_the_common_words) {
  EXPECT_EQ(QBErrorText(Refusal().GetAt(0)),
            "QuickBooks has reported the following error:\r\n"
            "\r\n"
            "The name \"A&B\" is already in use.\r\n"
            "Error Code: 3100\r\n"
            "Severity: Error\r\n"
            "Please contact your software vendor.");
}

TEST(QBError, Has_a_prefix_before_its_first_line_where_one_is_given) {
  EXPECT_TRUE(QBErrorText(Refusal().GetAt(0), "Routine : ")
                  .starts_with("Routine : QuickBooks has reported the following error:\r\n\r\n"));
}

TEST(QBError, Is_shown_with_the_information_icon) {
  TestHouse house;
  house.Enter();
  ShowQBError(Refusal().GetAt(0));
  const auto& box = house.desk.Boxes().at(0).box;
  EXPECT_EQ(box.text, QBErrorText(Refusal().GetAt(0)));
  EXPECT_EQ(box.title, "Error");
  EXPECT_EQ(box.icon, BoxIcon::Information);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
  EXPECT_EQ(house.desk.Beeps(), 0);
}

Record Customer(std::string_view fields) {
  return MsgSetResponse(
             CannedAnswer("CustomerQueryRs", kStatusOk, "<CustomerRet>" + std::string(fields) + "</CustomerRet>"))
      .GetAt(0)
      .Detail();
}

TEST(IsCustomer, Is_True_at_level_0_alone) {
  TestHouse house;
  house.Enter();
  EXPECT_TRUE(IsCustomer(Customer("<Sublevel>0</Sublevel>")));
  EXPECT_FALSE(IsCustomer(Customer("<Sublevel>1</Sublevel>")));
  EXPECT_FALSE(IsCustomer(Customer("<Sublevel>4</Sublevel>")));
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST(IsCustomer, Reports_a_record_that_tells_no_level) {
  TestHouse house;
  house.Enter();
  EXPECT_FALSE(IsCustomer(Customer("<Name>Acme</Name>")));
  EXPECT_FALSE(IsCustomer(Record()));
  EXPECT_FALSE(IsCustomer(Customer("<Sublevel>top</Sublevel>")));
  ASSERT_EQ(house.desk.Boxes().size(), 3U);
  for (const auto& text : house.BoxTexts()) EXPECT_NE(text.find("procedure: IsCustomer. "), std::string::npos);
}

}  // namespace
}  // namespace twqb
