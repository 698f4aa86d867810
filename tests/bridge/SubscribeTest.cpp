// The subscription to QuickBooks events: taking it, and taking it back.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "events/modSubscribe.h"
#include "platform/Text.h"
#include "tests/engine/SpiedHouse.h"
#include "tests/services/NotingHouse.h"
#include "twqb/CTWQBBridge.h"

namespace twqb {
namespace {

using Texts = std::vector<std::string>;

constexpr std::string_view kDone = "Done! Please restart Tallywick and QuickBooks for the changes to take effect";
constexpr std::string_view kWho =
    "<SubscriberID>{587B27F0-273E-46fd-BBDF-B5E79696FC3E}</SubscriberID><COMCallbackInfo><AppName>Tallywick 2008 "
    "Events "
    "Call Back</AppName><ProgID>TWQBCallback90.CMain</ProgID></COMCallbackInfo>";

// A house past the question of the first run, with its company file in a country.
class EventsHouse : public NotingHouse {
 public:
  explicit EventsHouse(std::string_view faults = {}, const company::CompanyOptions& options = {})
      : NotingHouse({.company = options}, faults) {
    machine.WritePrivateProfileString("GENERAL", "FIRST_TIME", "False", Path("twqb.ini"));
  }
  // The subscription documents that went out.
  [[nodiscard]] Texts Sets() const {
    Texts sets;
    for (const auto& note : NotesOf("subscription "))
      sets.push_back(note.substr(std::string_view("subscription ").size()));
    return sets;
  }
  // Those among them that change something.
  [[nodiscard]] Texts Changes() const {
    auto sets = Sets();
    std::erase_if(sets, [](const auto& set) { return set.find("SubscriptionQueryRq") != std::string::npos; });
    return sets;
  }
  // The types that the deletions of a document name, in order.
  static std::string TypesIn(std::string_view document) {
    std::string types;
    for (const auto& request : SpiedHouse::RequestsOf(document, "SubscriptionDelRq")) {
      types += (types.empty() ? "" : ",") + SpiedHouse::TextOf(request, "SubscriptionType");
    }
    return types;
  }
};

void ExpectBox(const ShownBox& shown, std::string_view text, std::string_view title) {
  EXPECT_EQ(shown.box.text, text);
  EXPECT_EQ(shown.box.title, title);
  EXPECT_EQ(shown.box.icon, BoxIcon::Information);
  EXPECT_EQ(shown.box.buttons, BoxButtons::Ok);
}

// --- Subscribing -----------------------------------------------------------------------------------------------------

TEST(FnSubscribe, Asks_for_list_and_transaction_events_company_file_events_and_menu_items_in_one_set) {
  EventsHouse house;
  EXPECT_TRUE(fnSubscribe());
  std::string menu;
  for (const auto& [text, tag] : {std::pair{"Unsubscribe", "Unsubscribe"},
                                  {"Sync Settings ...", "SyncSettings"},
                                  {"Sync Employees", "SyncEmployees"},
                                  {"Sync Customers", "SyncCustomers"},
                                  {"Sync Jobs", "SyncJobs"},
                                  {"Sync ItemServices", "SyncItemServices"},
                                  {"Sync ItemOtherCharges", "SyncItemOtherCharges"},
                                  {"Sync Checks/Bills", "SyncChecks/Bills"},
                                  {"Sync TimeEntries", "SyncTimeEntries"},
                                  {"Sync Invoices", "SyncInvoices"},
                                  {"Sync Payments", "SyncPayments"},
                                  {"Sync Vendors", "SyncVendors"},
                                  {"Sync All", "SyncAll"}}) {
    menu += fmt::format("<MenuItem><MenuText>{}</MenuText><EventTag>{}</EventTag></MenuItem>", text, tag);
  }
  const auto expected = fmt::format(
      "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLSubscriptionMsgsRq>"
      "<DataEventSubscriptionAddRq requestID=\"1\"><DataEventSubscriptionAdd>{0}<DeliveryPolicy>DeliverAlways"
      "</DeliveryPolicy><TrackLostEvents>None</TrackLostEvents><ListEventSubscription>"
      "<ListEventType>Employee</ListEventType><ListEventType>Customer</ListEventType>"
      "<ListEventType>Vendor</ListEventType><ListEventType>ItemOtherCharge</ListEventType>"
      "<ListEventType>ItemService</ListEventType><ListEventOperation>Add</ListEventOperation>"
      "<ListEventOperation>Delete</ListEventOperation><ListEventOperation>Modify</ListEventOperation>"
      "<ListEventOperation>Merge</ListEventOperation></ListEventSubscription><TxnEventSubscription>"
      "<TxnEventType>Bill</TxnEventType><TxnEventType>Check</TxnEventType><TxnEventType>Invoice</TxnEventType>"
      "<TxnEventType>ReceivePayment</TxnEventType><TxnEventType>TimeTracking</TxnEventType>"
      "<TxnEventOperation>Add</TxnEventOperation><TxnEventOperation>Delete</TxnEventOperation>"
      "<TxnEventOperation>Modify</TxnEventOperation></TxnEventSubscription></DataEventSubscriptionAdd>"
      "</DataEventSubscriptionAddRq><UIEventSubscriptionAddRq requestID=\"2\"><UIEventSubscriptionAdd>{0}"
      "<DeliveryPolicy>DeliverAlways</DeliveryPolicy><CompanyFileEventSubscription><CompanyFileEventOperation>Open"
      "</CompanyFileEventOperation><CompanyFileEventOperation>Close</CompanyFileEventOperation>"
      "</CompanyFileEventSubscription></UIEventSubscriptionAdd></UIEventSubscriptionAddRq>"
      "<UIExtensionSubscriptionAddRq requestID=\"3\"><UIExtensionSubscriptionAdd>{0}<MenuExtensionSubscription>"
      "<AddToMenu>File</AddToMenu><Submenu>{1}</Submenu></MenuExtensionSubscription></UIExtensionSubscriptionAdd>"
      "</UIExtensionSubscriptionAddRq></QBXMLSubscriptionMsgsRq></QBXML>",
      kWho, menu);
  EXPECT_EQ(house.Changes(), Texts{expected});
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST(FnSubscribe, Ends_the_session_and_asks_in_a_new_one_whether_it_is_subscribed) {
  EventsHouse house;
  EXPECT_TRUE(fnSubscribe());
  EXPECT_EQ(house.NotesOf("EndSession").size(), 1U);
  EXPECT_EQ(house.NotesOf("CreateTransport").size(), 2U);
  EXPECT_EQ(house.Sets().size(), 2U);
  EXPECT_TRUE(Vars().g_IsSubscribed);
  EXPECT_TRUE(Vars().g_QBSession);
}

TEST(FnSubscribe, A_second_time_is_told_3180_for_each_request_and_ends_as_success) {
  EventsHouse house;
  EXPECT_TRUE(fnSubscribe());
  EXPECT_TRUE(fnSubscribe());
  EXPECT_TRUE(house.desk.Boxes().empty());
  EXPECT_TRUE(Vars().g_IsSubscribed);
}

TEST(FnSubscribe, Counts_3180_as_success_and_names_every_other_refusal_by_its_number) {
  EventsHouse house(
      "DataEventSubscriptionAddRq 1 status 3120 Error \"Not found.\"\n"
      "UIEventSubscriptionAddRq 1 status 3180 Error \"There already.\"\n"
      "UIExtensionSubscriptionAddRq 1 status 3260 Warn \"Not allowed.\"");
  EXPECT_FALSE(fnSubscribe());
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  ExpectBox(
      house.desk.Boxes()[0],
      "Request Number 1 :-\r\nStatus Code = 3120\r\nStatus Message = Not found.\r\nStatus Severity = Error\r\n\r\n"
      "Request Number 3 :-\r\nStatus Code = 3260\r\nStatus Message = Not allowed.\r\nStatus Severity = Warn\r\n"
      "\r\n",
      "Error");
  EXPECT_FALSE(Vars().g_QBSession) << "the session is ended";
  EXPECT_EQ(house.NotesOf("EndSession").size(), 1U);
  EXPECT_EQ(house.Sets().size(), 1U) << "and nothing is asked";
}

TEST(FnSubscribe, Is_False_when_the_session_does_not_end) {
  EventsHouse house("EndSession 1 raise 0x80040408 \"Stuck\"");
  EXPECT_FALSE(fnSubscribe());
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("Stuck" + ErrorBoxEnd("StartQBSession")), std::string::npos);
  EXPECT_EQ(house.Sets().size(), 1U);
  EXPECT_FALSE(Vars().g_IsSubscribed);
}

// --- Taking it back --------------------------------------------------------------------------------------------------

class Unsubscribing : public testing::TestWithParam<std::pair<SubscriptionType, std::string_view>> {};

TEST_P(Unsubscribing, Names_the_subscription_to_data_and_the_one_meant) {
  EventsHouse house;
  const auto& [type, name] = GetParam();
  EXPECT_TRUE(fnUnsubscribe(type));
  EXPECT_EQ(
      house.Changes(),
      Texts{fmt::format("<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLSubscriptionMsgsRq>"
                        "<SubscriptionDelRq requestID=\"1\"><SubscriberID>{0}</SubscriberID><SubscriptionType>Data"
                        "</SubscriptionType></SubscriptionDelRq><SubscriptionDelRq requestID=\"2\"><SubscriberID>{0}"
                        "</SubscriberID><SubscriptionType>{1}</SubscriptionType></SubscriptionDelRq>"
                        "</QBXMLSubscriptionMsgsRq></QBXML>",
                        "{587B27F0-273E-46fd-BBDF-B5E79696FC3E}", name)});
}

TEST_P(Unsubscribing, Without_a_subscription_is_told_3120_and_ends_as_success) {
  EventsHouse house;
  EXPECT_TRUE(fnUnsubscribe(GetParam().first));
  EXPECT_TRUE(house.desk.Boxes().empty());
  EXPECT_FALSE(Vars().g_IsSubscribed);
  EXPECT_EQ(house.NotesOf("EndSession").size(), 1U);
}

TEST_P(Unsubscribing, Leaves_the_subscriptions_of_the_other_types) {
  EventsHouse house;
  EXPECT_TRUE(fnSubscribe());
  EXPECT_TRUE(fnUnsubscribe(GetParam().first));
  EXPECT_TRUE(Vars().g_IsSubscribed);
}

INSTANTIATE_TEST_SUITE_P(FnUnsubscribe, Unsubscribing,
                         testing::Values(std::pair{SubscriptionType::Data, "Data"},
                                         std::pair{SubscriptionType::UI, "UI"},
                                         std::pair{SubscriptionType::UIExtension, "UIExtension"}),
                         [](const auto& suite) { return std::string(suite.param.second); });

TEST(FnUnsubscribe, Counts_3120_as_success_and_names_every_other_refusal) {
  EventsHouse house("SubscriptionDelRq 2 status 3180 Error \"Can't be saved.\"");
  EXPECT_FALSE(fnUnsubscribe(SubscriptionType::UI));
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  ExpectBox(house.desk.Boxes()[0],
            "Request Number 2 :-\r\nStatus Code = 3180\r\nStatus Message = Can't be saved.\r\nStatus Severity = Error"
            "\r\n\r\n",
            "Error");
  EXPECT_FALSE(Vars().g_QBSession);
}

// --- The host's operation --------------------------------------------------------------------------------------------

TEST(SubscribeToQBEvents, Says_when_it_is_done_the_second_time_too) {
  EventsHouse house;
  CTWQBBridge bridge;
  for (std::size_t times = 1; times <= 2; ++times) {
    EXPECT_TRUE(bridge.SubscribeToQBEvents(true));
    ASSERT_EQ(house.desk.Boxes().size(), times);
    ExpectBox(house.desk.Boxes().back(), kDone, "Tallywick<->QuickBooks");
  }
  EXPECT_TRUE(bridge.IsSubscribedToQBEvents());
}

TEST(SubscribeToQBEvents, Takes_all_three_back_the_company_file_first) {
  EventsHouse house;
  CTWQBBridge bridge;
  EXPECT_TRUE(bridge.SubscribeToQBEvents(true));
  house.notes.clear();
  EXPECT_TRUE(bridge.SubscribeToQBEvents(false));
  Texts types;
  for (const auto& set : house.Changes()) types.push_back(EventsHouse::TypesIn(set));
  EXPECT_EQ(types, (Texts{"Data,UI", "Data,Data", "Data,UIExtension"}));
  EXPECT_EQ(house.NotesOf("EndSession").size(), 3U);
  EXPECT_EQ(house.BoxTexts(), Texts(2, std::string(kDone)));
  EXPECT_FALSE(Vars().g_IsSubscribed);
  EXPECT_FALSE(bridge.IsSubscribedToQBEvents());
}

TEST(SubscribeToQBEvents, Takes_back_what_is_not_there_with_success) {
  EventsHouse house;
  CTWQBBridge bridge;
  EXPECT_TRUE(bridge.SubscribeToQBEvents(false));
  EXPECT_EQ(house.BoxTexts(), Texts{std::string(kDone)});
}

TEST(SubscribeToQBEvents, Ends_with_the_first_that_can_not_be_taken_back) {
  for (std::size_t sets = 1; sets <= 3; ++sets) {
    EventsHouse house("SubscriptionDelRq " + std::to_string(2 * sets) + " status 3260 Error \"Not allowed.\"");
    CTWQBBridge bridge;
    EXPECT_FALSE(bridge.SubscribeToQBEvents(false));
    EXPECT_EQ(house.Changes().size(), sets);
    ASSERT_EQ(house.BoxTexts().size(), 1U);
    EXPECT_TRUE(house.BoxTexts()[0].starts_with("Request Number 2 :-\r\n"));
  }
}

TEST(SubscribeToQBEvents, Reports_a_box_that_can_not_be_shown_under_its_name) {
  EventsHouse house("box 1 raise 75 \"No desk\" Done!");
  CTWQBBridge bridge;
  EXPECT_FALSE(bridge.SubscribeToQBEvents(true));
  EXPECT_NE(house.BoxTexts().back().find("No desk" + ErrorBoxEnd("SubscribeToQBEvents")), std::string::npos);
}

TEST(SubscribeToQBEvents, Opens_the_file_for_whoever_else_is_in_it_even_in_single_user_mode) {
  EventsHouse house;
  CTWQBBridge bridge;
  bridge.SetIsQBSingleMode(true);
  EXPECT_TRUE(bridge.SubscribeToQBEvents(true));
  EXPECT_EQ(house.NotesOf("BeginSession"),
            Texts(2, fmt::format("BeginSession \"\" {}", static_cast<int>(OpenMode::DoNotCare))));
}

// --- Countries -------------------------------------------------------------------------------------------------------

struct CountryTag {
  messages::Country country;
  std::string name;
  std::string tag;
};

class SubscribingIn : public testing::TestWithParam<CountryTag> {};

TEST_P(SubscribingIn, Goes_with_the_tag_of_the_country_of_which_Australia_has_Canadas) {
  EventsHouse house({}, {.country = GetParam().country});
  CTWQBBridge bridge;
  EXPECT_TRUE(bridge.SubscribeToQBEvents(true));
  EXPECT_EQ(bridge.QBCountry(), GetParam().name);
  EXPECT_TRUE(bridge.IsSubscribedToQBEvents());
  EXPECT_TRUE(bridge.SubscribeToQBEvents(false));
  EXPECT_FALSE(bridge.IsSubscribedToQBEvents());
  EXPECT_EQ(house.BoxTexts(), Texts(2, std::string(kDone)));
  EXPECT_EQ(house.Changes().size(), 4U);
  for (const auto& set : house.Sets()) {
    EXPECT_TRUE(set.starts_with("<?xml version=\"1.0\"?><?qbxml version=\"" + GetParam().tag + "\"?><QBXML>")) << set;
  }
}

INSTANTIATE_TEST_SUITE_P(SubscribeToQBEvents, SubscribingIn,
                         testing::Values(CountryTag{messages::Country::US, "US", "3.0"},
                                         CountryTag{messages::Country::CA, "CA", "CA3.0"},
                                         CountryTag{messages::Country::UK, "UK", "UK3.0"},
                                         CountryTag{messages::Country::AU, "AU", "CA3.0"}),
                         [](const auto& suite) { return suite.param.name; });

// --- What is too old, and what fails ---------------------------------------------------------------------------------

TEST(EventsBeforeVersion3, Have_a_message_for_each_change_and_none_for_the_question) {
  EventsHouse house({}, {.hostVersion = 12});
  EXPECT_FALSE(IsSubscribed());
  EXPECT_TRUE(house.desk.Boxes().empty());
  EXPECT_FALSE(fnSubscribe());
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  ExpectBox(house.desk.Boxes()[0],
            "Only one-way automatic sync is available. You need to\r\n"
            "have QuickBooks 2004 or better to enable two-way real time\r\n"
            "data sync.",
            "Message");
  EXPECT_FALSE(fnUnsubscribe(SubscriptionType::UI));
  ASSERT_EQ(house.desk.Boxes().size(), 2U);
  ExpectBox(house.desk.Boxes()[1],
            "To subscribe to Data and User Interface Events\r\n"
            "you need QuickBooks 2004 or a later Edition",
            "Tallywick<->QuickBooks");
  EXPECT_TRUE(house.Sets().empty());
  EXPECT_TRUE(Vars().g_QBSession) << "nothing ended it";
}

TEST(EventsBeforeVersion3, Are_refused_to_the_host_with_one_box) {
  for (const bool subscribe : {true, false}) {
    EventsHouse house({}, {.hostVersion = 12});
    CTWQBBridge bridge;
    EXPECT_FALSE(bridge.SubscribeToQBEvents(subscribe));
    EXPECT_EQ(house.desk.Boxes().size(), 1U);
  }
}

struct Change {
  std::string name;
  bool (*run)();
};

class FailingChange : public testing::TestWithParam<Change> {};

TEST_P(FailingChange, Is_reported_under_its_name) {
  EventsHouse house("DoSubscriptionRequests 1 raise 0x80040400 \"Not understood\"");
  EXPECT_FALSE(GetParam().run());
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find("Not understood" + ErrorBoxEnd(GetParam().name)), std::string::npos);
}

TEST_P(FailingChange, Is_False_without_a_further_word_when_no_session_can_be_had) {
  EventsHouse house("OpenConnection 1 raise 0x80040408 \"Not running\"");
  EXPECT_FALSE(GetParam().run());
  ASSERT_EQ(house.BoxTexts().size(), 1U);
  EXPECT_NE(house.BoxTexts()[0].find(ErrorBoxEnd("StartQBSession")), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Events, FailingChange,
                         testing::Values(Change{"fnSubscribe", [] { return fnSubscribe(); }},
                                         Change{"fnUnsubscribe", [] { return fnUnsubscribe(SubscriptionType::UI); }}),
                         [](const auto& suite) { return suite.param.name; });

}  // namespace
}  // namespace twqb
