// Whether this product is subscribed to QuickBooks events.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "events/modSubscribe.h"
#include "quickbooks/QBSessionManager.h"
#include "tests/quickbooks/CannedQuickBooks.h"
#include "tests/services/NotingHouse.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {
namespace {

std::string Status(std::string_view attributes) {
  return CannedAnswer("SubscriptionQueryRs", attributes, "", "QBXMLSubscriptionMsgsRs");
}

// A house with a session that stands, in the country and version given; `attributes` are the answer's status.
class ConnectedHouse : public NotingHouse {
 public:
  explicit ConnectedHouse(std::string attributes, std::string_view country = "US", std::int16_t major = 3,
                          std::string_view faults = {})
      : NotingHouse(
            {}, faults,
            std::make_unique<CannedQuickBooks>(Canned{
                .answer = [attributes = std::move(attributes)](std::string_view) { return Status(attributes); }})) {
    Vars().g_QBSession =
        std::make_shared<QBSessionManager>(Vars().platform.quickbooks->CreateTransport(), TheMachine());
    Vars().g_QBCountry = country;
    Vars().g_QBMajorVer = major;
    notes.clear();
  }
};

TEST(IsSubscribed, Is_True_for_status_0_and_False_for_status_1) {
  ConnectedHouse subscribed("statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\"");
  EXPECT_TRUE(IsSubscribed());
  EXPECT_TRUE(subscribed.desk.Boxes().empty());
  ConnectedHouse other("statusCode=\"1\" statusSeverity=\"Info\" statusMessage=\"None\"");
  EXPECT_FALSE(IsSubscribed());
  EXPECT_TRUE(other.desk.Boxes().empty());
}

TEST(IsSubscribed, Tells_any_other_status_and_is_False) {
  ConnectedHouse house("statusCode=\"3260\" statusSeverity=\"Error\" statusMessage=\"Not allowed\"");
  EXPECT_FALSE(IsSubscribed());
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text,
            "QuickBooks has reported the following error:\r\n"
            "\r\n"
            "Not allowed\r\n"
            "Error Code: 3260\r\n"
            "Severity: Error\r\n"
            "Please contact your software vendor.");
  EXPECT_EQ(box.title, "Error");
  EXPECT_EQ(box.icon, BoxIcon::Information);
}

struct Tag {
  std::string_view country;
  std::string_view tag;
};

class SubscriptionTags : public testing::TestWithParam<Tag> {};

TEST_P(SubscriptionTags, Are_Canadas_in_Australia_too) {
  ConnectedHouse house("statusCode=\"0\"", GetParam().country);
  EXPECT_TRUE(IsSubscribed());
  EXPECT_EQ(
      house.notes,
      Notes{fmt::format("subscription <?xml version=\"1.0\"?><?qbxml version=\"{}\"?><QBXML><QBXMLSubscriptionMsgsRq>"
                        "<SubscriptionQueryRq requestID=\"1\"><SubscriberID>{{587B27F0-273E-46fd-BBDF-B5E79696FC3E}}"
                        "</SubscriberID></SubscriptionQueryRq></QBXMLSubscriptionMsgsRq></QBXML>",
                        GetParam().tag)});
}

INSTANTIATE_TEST_SUITE_P(IsSubscribed, SubscriptionTags,
                         testing::Values(Tag{"US", "3.0"}, Tag{"CA", "CA3.0"}, Tag{"UK", "UK3.0"}, Tag{"AU", "CA3.0"},
                                         Tag{"", "3.0"}));

TEST(IsSubscribed, Asks_nothing_and_says_nothing_before_version_3) {
  ConnectedHouse house("statusCode=\"0\"", "US", 2);
  EXPECT_FALSE(IsSubscribed());
  EXPECT_TRUE(house.notes.empty());
}

TEST(IsSubscribed, Always_asks_in_version_3_0) {
  ConnectedHouse house("statusCode=\"0\"", "US", 4);
  EXPECT_TRUE(IsSubscribed());
  EXPECT_NE(house.notes.at(0).find("<?qbxml version=\"3.0\"?>"), std::string::npos);
}

TEST(IsSubscribed, Reports_a_call_that_fails_under_its_name) {
  ConnectedHouse house("statusCode=\"0\"", "US", 3, "DoSubscriptionRequests 1 raise 0x80040400 \"Not understood\"");
  EXPECT_FALSE(IsSubscribed());
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("Not understood has occurred in the following procedure: IsSubscribed. "),
            std::string::npos);
}

TEST(IsSubscribed, Is_False_without_a_further_word_when_no_session_can_be_had) {
  NotingHouse house({}, "OpenConnection 1 raise 0x80040408 \"Not running\"");
  EXPECT_FALSE(IsSubscribed());
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("procedure: StartQBSession. "), std::string::npos);
}

TEST(IsSubscribed, Opens_the_file_for_whoever_else_is_in_it_even_in_single_user_mode) {
  NotingHouse house({.answers = "no"});
  CTWQBBridge bridge;
  bridge.SetIsQBSingleMode(true);
  EXPECT_FALSE(bridge.IsSubscribedToQBEvents());
  auto other = house.quickbooks->CreateTransport();
  other->OpenConnection("OTHER", "other");
  EXPECT_NO_THROW(other->BeginSession("", OpenMode::DoNotCare));
}

class CompanyCountries : public testing::TestWithParam<messages::Country> {};

TEST_P(CompanyCountries, Are_asked_for_a_subscription_and_have_none) {
  NotingHouse house({.answers = "no", .company = {.country = GetParam()}});
  EXPECT_FALSE(IsSubscribed());
  EXPECT_EQ(house.NotesOf("subscription").size(), 1U);
  EXPECT_EQ(house.desk.Boxes().size(), 1U) << "the question of the first run alone";
}

INSTANTIATE_TEST_SUITE_P(IsSubscribed, CompanyCountries,
                         testing::Values(messages::Country::US, messages::Country::CA, messages::Country::UK));

TEST(IsSubscribedToQBEvents, Asks_at_every_read_and_keeps_the_answer) {
  NotingHouse house({.answers = "no"},
                    "SubscriptionQueryRq 1 status 0 Info \"Status OK\"\n"
                    "SubscriptionQueryRq 2 status 1 Info \"None\"");
  CTWQBBridge bridge;
  EXPECT_TRUE(bridge.IsSubscribedToQBEvents());
  EXPECT_TRUE(Vars().g_IsSubscribed);
  EXPECT_FALSE(bridge.IsSubscribedToQBEvents());
  EXPECT_FALSE(Vars().g_IsSubscribed);
  EXPECT_EQ(house.NotesOf("subscription").size(), 2U);
  EXPECT_EQ(house.NotesOf("CreateTransport").size(), 1U);
}

}  // namespace
}  // namespace twqb
