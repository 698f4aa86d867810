// Requests that the script answers: taken out of the document, and merged into the answer.
#include <gtest/gtest.h>

#include "SeamFakes.h"
#include "adapters/faults/Faults.h"

namespace twqb {
namespace {

std::string Document(const std::string& requests, const std::string& onError = "continueOnError") {
  return "<?xml version=\"1.0\"?><?qbxml version=\"CA3.0\"?><QBXML><QBXMLMsgsRq onError=\"" + onError + "\">" +
         requests + "</QBXMLMsgsRq></QBXML>";
}

std::string Answer(const std::string& responses) {
  return "<?xml version=\"1.0\" ?><QBXML><QBXMLMsgsRs>" + responses + "</QBXMLMsgsRs></QBXML>";
}

class FaultAnswers : public testing::Test {
 protected:
  void Script(std::string_view text) {
    faults_ = std::make_unique<FaultPlatform>(fakes_.Seams(), ParseFaults(text));
    session_ = faults_->Decorated().quickbooks->CreateTransport();
  }
  // The one document that the seam inside got.
  std::string PassedOn() {
    EXPECT_EQ(fakes_.quickbooks.documents.size(), 1U);
    return fakes_.quickbooks.documents.empty() ? "" : fakes_.quickbooks.documents.front();
  }

  fakes::FakePlatform fakes_;
  std::unique_ptr<FaultPlatform> faults_;
  std::unique_ptr<Transport> session_;
};

TEST_F(FaultAnswers, A_document_whose_only_request_is_at_fault_is_answered_without_QuickBooks) {
  Script("CustomerAddRq 1 status 3110 Error \"bad <State> & \"\"x\"\"\"");
  EXPECT_EQ(session_->ProcessDocument(Document("<CustomerAddRq requestID=\"7\"><CustomerAdd/></CustomerAddRq>")),
            Answer("<CustomerAddRs requestID=\"7\" statusCode=\"3110\" statusSeverity=\"Error\" "
                   "statusMessage=\"bad &lt;State&gt; &amp; &quot;x&quot;\"/>"));
  EXPECT_TRUE(fakes_.quickbooks.documents.empty());
}

TEST_F(FaultAnswers, A_request_without_an_identifier_gets_an_answer_without_one) {
  Script("CustomerAddRq 1 status 0 Info");
  EXPECT_EQ(session_->ProcessDocument(Document("<CustomerAddRq/>")),
            Answer("<CustomerAddRs statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"\"/>"));
}

TEST_F(FaultAnswers, A_subscription_request_is_answered_in_its_own_form) {
  Script("SubscriptionDelRq 1 status 3120 Error \"gone\"");
  EXPECT_EQ(
      session_->ProcessSubscription(
          "<QBXML><QBXMLSubscriptionMsgsRq><SubscriptionDelRq requestID=\"1\"/></QBXMLSubscriptionMsgsRq></QBXML>"),
      "<?xml version=\"1.0\" ?><QBXML><QBXMLSubscriptionMsgsRs><SubscriptionDelRs requestID=\"1\" "
      "statusCode=\"3120\" statusSeverity=\"Error\" statusMessage=\"gone\"/></QBXMLSubscriptionMsgsRs></QBXML>");
}

TEST_F(FaultAnswers, The_second_request_of_the_run_is_the_second_over_all_documents) {
  Script("CustomerAddRq 2 status 3110 Error \"no\"");
  fakes_.quickbooks.answer = Answer("<CustomerAddRs statusCode=\"0\"/>");
  const auto document = Document("<CustomerAddRq/>");
  EXPECT_EQ(session_->ProcessDocument(document), fakes_.quickbooks.answer);
  (void)session_->ProcessDocument(Document("<CustomerModRq/>"));
  EXPECT_EQ(session_->ProcessDocument(document),
            Answer("<CustomerAddRs statusCode=\"3110\" statusSeverity=\"Error\" statusMessage=\"no\"/>"));
  EXPECT_EQ(session_->ProcessDocument(document), fakes_.quickbooks.answer);
  EXPECT_EQ(fakes_.quickbooks.documents.size(), 3U);
}

TEST_F(FaultAnswers, A_document_without_a_fault_passes_byte_for_byte) {
  Script("CustomerAddRq 9 status 3110 Error \"no\"");
  fakes_.quickbooks.answer = "  <odd  answer = 'x' />\r\n";
  const std::string document =
      "<?xml version='1.0'?>\r\n<QBXML ><QBXMLMsgsRq>\n<CustomerAddRq  a='b'/></QBXMLMsgsRq></QBXML>";
  EXPECT_EQ(session_->ProcessDocument(document), fakes_.quickbooks.answer);
  EXPECT_EQ(PassedOn(), document);
}

TEST_F(FaultAnswers, A_text_that_is_no_document_passes_on) {
  Script("CustomerAddRq 1 status 3110 Error \"no\"");
  fakes_.quickbooks.answer = "refused";
  EXPECT_EQ(session_->ProcessDocument("<QBXML><CustomerAddRq>"), "refused");
  EXPECT_EQ(PassedOn(), "<QBXML><CustomerAddRq>");
}

struct Place {
  std::string name;
  std::string script;
  std::string passedOn;
  std::string carriedOut;
  std::string answer;
};
std::ostream& operator<<(std::ostream& out, const Place& place) { return out << place.name; }
class EveryPlace : public FaultAnswers, public testing::WithParamInterface<Place> {};
TEST_P(EveryPlace, Of_a_fault_among_three_requests_is_kept_in_the_answer) {
  Script(GetParam().script);
  fakes_.quickbooks.answer = Answer(GetParam().carriedOut);
  const auto document = Document("<ARq requestID=\"1\"><A/></ARq><BRq requestID=\"2\"/><ARq requestID=\"3\"/>");
  EXPECT_EQ(session_->ProcessDocument(document), Answer(GetParam().answer));
  EXPECT_EQ(PassedOn(), Document(GetParam().passedOn));
}

constexpr auto kFirst = R"(<ARs requestID="1" statusCode="9" statusSeverity="Info" statusMessage="f"/>)";
constexpr auto kSecond = R"(<BRs requestID="2" statusCode="9" statusSeverity="Info" statusMessage="f"/>)";
constexpr auto kThird = R"(<ARs requestID="3" statusCode="9" statusSeverity="Info" statusMessage="f"/>)";
constexpr auto kCarried1 = R"(<ARs requestID="1" statusCode="0"><ARet/></ARs>)";
constexpr auto kCarried2 = R"(<BRs requestID="2" statusCode="0"/>)";
constexpr auto kCarried3 = R"(<ARs requestID="3" statusCode="0"/>)";

INSTANTIATE_TEST_SUITE_P(Places, EveryPlace,
                         testing::Values(Place{.name = "first",
                                               .script = "ARq 1 status 9 Info \"f\"",
                                               .passedOn = "<BRq requestID=\"2\"/><ARq requestID=\"3\"/>",
                                               .carriedOut = std::string(kCarried2) + kCarried3,
                                               .answer = std::string(kFirst) + kCarried2 + kCarried3},
                                         Place{.name = "middle",
                                               .script = "BRq 1 status 9 Info \"f\"",
                                               .passedOn = "<ARq requestID=\"1\"><A/></ARq><ARq requestID=\"3\"/>",
                                               .carriedOut = std::string(kCarried1) + kCarried3,
                                               .answer = std::string(kCarried1) + kSecond + kCarried3},
                                         Place{.name = "last",
                                               .script = "ARq 2 status 9 Info \"f\"",
                                               .passedOn = "<ARq requestID=\"1\"><A/></ARq><BRq requestID=\"2\"/>",
                                               .carriedOut = std::string(kCarried1) + kCarried2,
                                               .answer = std::string(kCarried1) + kCarried2 + kThird},
                                         Place{.name = "two_of_a_name",
                                               .script = "ARq 1 status 9 Info \"f\"\nARq 2 status 9 Info \"f\"",
                                               .passedOn = "<BRq requestID=\"2\"/>",
                                               .carriedOut = kCarried2,
                                               .answer = std::string(kFirst) + kCarried2 + kThird},
                                         Place{.name = "two_side_by_side",
                                               .script = "ARq 1 status 9 Info \"f\"\nBRq 1 status 9 Info \"f\"",
                                               .passedOn = "<ARq requestID=\"3\"/>",
                                               .carriedOut = kCarried3,
                                               .answer = std::string(kFirst) + kSecond + kCarried3}),
                         [](const auto& test) { return test.param.name; });

TEST_F(FaultAnswers, Values_beside_the_fault_keep_their_spelling) {
  Script("BRq 1 status 9 Info \"f\"");
  const std::string note = "<Note>a&#13;&#10;b &amp; <![CDATA[<c>]]> &apos;&#xE9;\xC3\xA9 </Note>";
  fakes_.quickbooks.answer = Answer("<ARs statusMessage='say \"x\" &lt;&gt;'>" + note + "</ARs>");
  EXPECT_EQ(session_->ProcessDocument(Document("<ARq>" + note + "</ARq><BRq/>")),
            Answer("<ARs statusMessage=\"say &quot;x&quot; &lt;&gt;\">" + note +
                   "</ARs><BRs statusCode=\"9\" statusSeverity=\"Info\" statusMessage=\"f\"/>"));
  EXPECT_EQ(PassedOn(), Document("<ARq>" + note + "</ARq>"));
}

TEST_F(FaultAnswers, In_a_set_that_stops_on_errors_nothing_behind_the_fault_is_carried_out) {
  Script("BRq 1 status 3110 Error \"f\"");
  fakes_.quickbooks.answer = Answer("<ARs statusCode=\"0\" statusSeverity=\"Info\"/>");
  const auto answer = session_->ProcessDocument(Document("<ARq/><BRq/><CRq/>", "stopOnError"));
  EXPECT_EQ(PassedOn(), Document("<ARq/>", "stopOnError"));
  EXPECT_NE(answer.find("<BRs statusCode=\"3110\""), std::string::npos) << answer;
  EXPECT_NE(answer.find("<CRs statusCode=\"3231\" statusSeverity=\"Error\""), std::string::npos) << answer;
}

TEST_F(FaultAnswers, In_a_set_that_stops_on_errors_a_fault_behind_an_error_is_not_processed_either) {
  Script("BRq 1 status 0 Info \"f\"");
  fakes_.quickbooks.answer = Answer("<ARs statusCode=\"3100\" statusSeverity=\"Error\"/>");
  EXPECT_NE(session_->ProcessDocument(Document("<ARq/><BRq/>", "stopOnError")).find("<BRs statusCode=\"3231\""),
            std::string::npos);
}

TEST_F(FaultAnswers, A_call_that_fails_before_it_takes_effect_brings_no_request_on_the_wire) {
  Script("DoRequests 1 raise 0x80040307\nCustomerAddRq 1 status 3110 Error \"no\"");
  const auto document = Document("<CustomerAddRq/>");
  EXPECT_THROW((void)session_->ProcessDocument(document), PlatformError);
  EXPECT_NE(session_->ProcessDocument(document).find("statusCode=\"3110\""), std::string::npos);
}

TEST_F(FaultAnswers, A_call_that_fails_afterwards_has_carried_its_requests_out) {
  Script("DoRequests 1 raise-after 0x80040307");
  EXPECT_THROW((void)session_->ProcessDocument(Document("<CustomerAddRq/>")), PlatformError);
  EXPECT_EQ(PassedOn(), Document("<CustomerAddRq/>"));
}

TEST_F(FaultAnswers, A_document_that_QuickBooks_refuses_is_refused_beside_a_fault_too) {
  Script("BRq 1 status 9 Info \"f\"");
  fakes_.notes.raiseNext = PlatformError(error::kParse);
  EXPECT_THROW((void)session_->ProcessDocument(Document("<ARq/><BRq/>")), PlatformError);
}

}  // namespace
}  // namespace twqb
