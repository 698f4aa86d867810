#include <fmt/core.h>

#include "CompanyTest.h"

namespace twqb::company {

namespace {

using messages::Country;

constexpr std::string_view kSubscriber = "{8C9A1E70-1111-2222-3333-0123456789AB}";
constexpr std::string_view kSameSubscriber = "{8c9a1e70-1111-2222-3333-0123456789ab}";
constexpr std::string_view kOther = "{00000000-1111-2222-3333-0123456789AB}";
constexpr std::string_view kCallback =
    "<COMCallbackInfo><AppName>Events</AppName><ProgID>Callback.CMain</ProgID></COMCallbackInfo>";

std::string Data(std::string_view subscriber = kSubscriber) {
  return fmt::format(
      "<DataEventSubscriptionAddRq requestID=\"1\"><DataEventSubscriptionAdd><SubscriberID>{}</SubscriberID>{}"
      "<DeliveryPolicy>DeliverAlways</DeliveryPolicy><ListEventSubscription><ListEventType>Employee</ListEventType>"
      "<ListEventType>Customer</ListEventType><ListEventOperation>Add</ListEventOperation></ListEventSubscription>"
      "<TxnEventSubscription><TxnEventType>Bill</TxnEventType><TxnEventOperation>Modify</TxnEventOperation>"
      "</TxnEventSubscription></DataEventSubscriptionAdd></DataEventSubscriptionAddRq>",
      subscriber, kCallback);
}

std::string Ui(std::string_view subscriber = kSubscriber) {
  return fmt::format(
      "<UIEventSubscriptionAddRq requestID=\"2\"><UIEventSubscriptionAdd><SubscriberID>{}</SubscriberID>{}"
      "<DeliveryPolicy>DeliverAlways</DeliveryPolicy><CompanyFileEventSubscription>"
      "<CompanyFileEventOperation>Open</CompanyFileEventOperation></CompanyFileEventSubscription>"
      "</UIEventSubscriptionAdd></UIEventSubscriptionAddRq>",
      subscriber, kCallback);
}

std::string UiExtension(std::string_view subscriber = kSubscriber) {
  return fmt::format(
      "<UIExtensionSubscriptionAddRq requestID=\"3\"><UIExtensionSubscriptionAdd><SubscriberID>{}</SubscriberID>{}"
      "<MenuExtensionSubscription><AddToMenu>File</AddToMenu><Submenu><MenuItem><MenuText>Sync All</MenuText>"
      "<EventTag>SyncAll</EventTag></MenuItem></Submenu></MenuExtensionSubscription></UIExtensionSubscriptionAdd>"
      "</UIExtensionSubscriptionAddRq>",
      subscriber, kCallback);
}

std::string Delete(std::string_view type, std::string_view subscriber = kSubscriber) {
  return fmt::format(
      "<SubscriptionDelRq requestID=\"4\"><SubscriberID>{}</SubscriberID><SubscriptionType>{}</SubscriptionType>"
      "</SubscriptionDelRq>",
      subscriber, type);
}

std::string Ask(std::string_view subscriber = kSubscriber) {
  return fmt::format("<SubscriptionQueryRq requestID=\"5\"><SubscriberID>{}</SubscriberID></SubscriptionQueryRq>",
                     subscriber);
}

class CompanySubscription : public CompanyTest {
 protected:
  // The codes, in the order of the requests.
  std::vector<int> Codes(std::string_view requests, std::string_view tag = "3.0") {
    text_ = file_->ProcessSubscription(SubscriptionDocument(requests, tag));
    std::vector<int> codes;
    for (const auto& answer : ReadAnswers("QBXMLSubscriptionMsgsRs")) codes.push_back(answer.code);
    return codes;
  }
  Answer One(std::string_view request) {
    text_ = file_->ProcessSubscription(SubscriptionDocument(request));
    return ReadAnswers("QBXMLSubscriptionMsgsRs").front();
  }
  ErrorNumber Refusal(const std::string& document) {
    return NumberRaised([&] { static_cast<void>(file_->ProcessSubscription(document)); });
  }
};

using Ints = std::vector<int>;

TEST_F(CompanySubscription, A_program_that_is_not_subscribed_is_told_so_as_information) {
  const auto answer = One(Ask());
  EXPECT_EQ(answer.code, 1);
  EXPECT_EQ(answer.severity, "Info");
  EXPECT_EQ(answer.id, "5");
}

TEST_F(CompanySubscription, One_of_each_type_can_be_added_in_one_set) {
  EXPECT_EQ(Codes(Data() + Ui() + UiExtension()), (Ints{0, 0, 0}));
  EXPECT_EQ(One(Ask()).code, 0);
}

TEST_F(CompanySubscription, Any_type_alone_makes_a_subscriber) {
  for (const auto& [add, type] : {std::pair{Data(), "Data"}, {Ui(), "UI"}, {UiExtension(), "UIExtension"}}) {
    EXPECT_EQ(Codes(add + Ask() + Delete(type) + Ask()), (Ints{0, 0, 0, 1})) << type;
  }
}

TEST_F(CompanySubscription, A_second_one_of_a_type_can_not_be_saved) {
  EXPECT_EQ(Codes(Data() + Ui() + UiExtension() + Data() + Ui() + UiExtension()), (Ints{0, 0, 0, 3180, 3180, 3180}));
  const auto again = One(Data(kSameSubscriber));
  EXPECT_EQ(again.code, 3180);
  EXPECT_EQ(again.severity, "Error");
  EXPECT_EQ(again.message,
            "There was an error when saving a data event subscription.  QuickBooks error message: The subscriber has "
            "such a subscription already.");
  EXPECT_FALSE(again.node.first_child());
}

TEST_F(CompanySubscription, A_subscriber_is_met_in_any_case_and_others_are_not_touched) {
  EXPECT_EQ(Codes(Data() + Data(kOther)), (Ints{0, 0}));
  EXPECT_EQ(Codes(Ask(kSameSubscriber) + Delete("Data", kSameSubscriber)), (Ints{0, 0}));
  EXPECT_EQ(Codes(Ask() + Ask(kOther)), (Ints{1, 0}));
}

TEST_F(CompanySubscription, Deleting_what_is_not_there_is_told_as_not_found) {
  const auto answer = One(Delete("Data"));
  EXPECT_EQ(answer.code, 3120);
  EXPECT_EQ(answer.message,
            "Object \"{8C9A1E70-1111-2222-3333-0123456789AB}\" specified in the request cannot be found.  QuickBooks "
            "error message: Invalid argument.  The specified record does not exist in the list.");
  EXPECT_EQ(Codes(Ui() + Delete("Data") + Delete("UI") + Delete("UI")), (Ints{0, 3120, 0, 3120}));
}

TEST_F(CompanySubscription, After_a_deletion_it_can_be_added_anew) {
  EXPECT_EQ(Codes(Data() + Delete("Data") + Data()), (Ints{0, 0, 0}));
}

TEST_F(CompanySubscription, To_data_is_answered_with_its_record) {
  const auto answer = One(Data());
  EXPECT_EQ(answer.Value("SubscriberID"), kSubscriber);
  EXPECT_EQ(answer.Value("TimeCreated").size(), std::string("2008-03-05T10:00:00-05:00").size());
  EXPECT_EQ(answer.Value("COMCallbackInfo/AppName"), "Events");
  EXPECT_EQ(answer.Value("COMCallbackInfo/ProgID"), "Callback.CMain");
  EXPECT_EQ(answer.Value("DeliveryPolicy"), "DeliverAlways");
  EXPECT_EQ(answer.Value("TrackLostEvents"), "None") << "which it is unless told otherwise";
  EXPECT_EQ(answer.Value("TxnEventSubscription/TxnEventOperation"), "Modify");
  std::vector<std::string> types;
  const auto lists = answer.node.first_child().child("ListEventSubscription");
  for (const auto type : lists.children("ListEventType")) types.emplace_back(type.text().get());
  EXPECT_EQ(types, (std::vector<std::string>{"Employee", "Customer"}));
  EXPECT_FALSE(One(Ui()).node.first_child()) << "the other types have no record";
}

TEST_F(CompanySubscription, Is_still_there_when_the_file_is_opened_again) {
  EXPECT_EQ(Codes(Data() + UiExtension()), (Ints{0, 0}));
  file_.emplace(path_, machine_);
  EXPECT_EQ(Codes(Ask() + Delete("Data") + Delete("UI") + Delete("UIExtension") + Ask()), (Ints{0, 0, 3120, 0, 1}));
}

TEST_F(CompanySubscription, One_that_a_status_refuses_does_not_hold_up_the_next) {
  auto lacking = Data();
  const auto policy = lacking.find("<DeliveryPolicy>");
  lacking.erase(policy, lacking.find("</DeliveryPolicy>") + std::string_view("</DeliveryPolicy>").size() - policy);
  EXPECT_EQ(Codes(lacking + Ui()), (Ints{3150, 0}));
}

TEST_F(CompanySubscription, And_other_requests_do_not_mix) {
  EXPECT_EQ(Refusal(Document("<HostQueryRq/>")), kRefused);
  EXPECT_EQ(Refusal(SubscriptionDocument("<HostQueryRq/>")), kRefused);
  EXPECT_EQ(RefusalOf(SubscriptionDocument(Ask())), kRefused);
  EXPECT_EQ(RefusalOfRequest(Data()), kRefused);
}

TEST_F(CompanySubscription, Is_not_known_before_version_3_nor_with_unknown_events) {
  for (const auto& request : {Data(), Ui(), UiExtension(), Delete("UI"), Ask()}) {
    EXPECT_EQ(Refusal(SubscriptionDocument(request, "2.1")), kRefused) << request;
  }
  EXPECT_EQ(Refusal(SubscriptionDocument(Ask("me"))), kRefused);
  EXPECT_EQ(Refusal(SubscriptionDocument(Delete("Everything"))), kRefused);
  auto unknown = Data();
  unknown.replace(unknown.find("Employee"), 8, "Nobodies");
  EXPECT_EQ(Refusal(SubscriptionDocument(unknown)), kRefused);
  EXPECT_EQ(One(Ask()).code, 1);
}

struct TagCase {
  const char* name;
  Country country;
  const char* tag;
  bool taken;
};
void PrintTo(const TagCase& tag, std::ostream* out) { *out << tag.name; }

class SubscriptionTag : public CompanySubscription, public testing::WithParamInterface<TagCase> {};

TEST_P(SubscriptionTag, Is_taken_or_refused) {
  MakeFile({.country = GetParam().country});
  for (const auto& request : {Data(), Ui(), UiExtension(), Ask(), Delete("Data")}) {
    EXPECT_EQ(Refusal(SubscriptionDocument(request, GetParam().tag)), GetParam().taken ? 0U : kUnknownVersion)
        << request;
  }
}

INSTANTIATE_TEST_SUITE_P(Countries, SubscriptionTag,
                         testing::Values(TagCase{"US_in_the_US", Country::US, "3.0", true},
                                         TagCase{"Canadian_in_the_US", Country::US, "CA3.0", false},
                                         TagCase{"Canadian_in_Canada", Country::CA, "CA3.0", true},
                                         TagCase{"British_in_Britain", Country::UK, "UK3.0", true},
                                         TagCase{"US_in_Britain", Country::UK, "3.0", false},
                                         TagCase{"Canadian_in_Australia", Country::AU, "CA3.0", true},
                                         TagCase{"Australian_in_Australia", Country::AU, "AU3.0", false}),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace

}  // namespace twqb::company
