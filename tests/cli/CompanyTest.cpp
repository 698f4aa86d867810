#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Program.h"

namespace twqb::cli {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

std::string Document(const std::string& requests) {
  return "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML>" + requests + "</QBXML>";
}

const std::string kAdd = Document(
    "<QBXMLMsgsRq onError=\"stopOnError\"><CustomerAddRq><CustomerAdd><Name>Grünwald</Name></CustomerAdd>"
    "</CustomerAddRq></QBXMLMsgsRq>");

class Company : public testing::Test {
 protected:
  Company() { folder_.Done({"init"}); }
  WorkFolder folder_;
};

TEST_F(Company, A_document_in_a_file_is_answered_on_standard_output) {
  folder_.Write("add.xml", kAdd);
  EXPECT_THAT(folder_.Done({"company", "run", "add.xml"}),
              AllOf(HasSubstr("statusCode=\"0\""), HasSubstr("<FullName>Grünwald</FullName>"), EndsWith("\n")));
  EXPECT_THAT(folder_.Done({"company", "show"}), testing::ContainsRegex("Customer +1\n"));
}

TEST_F(Company, A_dash_is_standard_input) {
  EXPECT_THAT(folder_.Done({"company", "run", "-"}, {.input = kAdd}), HasSubstr("statusCode=\"0\""));
}

TEST_F(Company, A_request_that_is_refused_gives_0) {
  folder_.Done({"company", "run", "-"}, {.input = kAdd});
  EXPECT_THAT(folder_.Done({"company", "run", "-"}, {.input = kAdd}), HasSubstr("statusCode=\"3100\""));
}

TEST_F(Company, A_document_that_is_refused_as_a_whole_gives_1) {
  const auto ended = folder_.Twqb({"company", "run", "-"}, {.input = "<QBXML>"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("0x80040400"));
  EXPECT_THAT(ended.out, IsEmpty());
}

TEST_F(Company, Subscription_requests_are_answered_too) {
  const auto query = Document(
      "<QBXMLSubscriptionMsgsRq><SubscriptionQueryRq><SubscriberID>{11111111-1111-1111-1111-111111111111}"
      "</SubscriberID></SubscriptionQueryRq></QBXMLSubscriptionMsgsRq>");
  EXPECT_THAT(folder_.Done({"company", "run", "-"}, {.input = query}), HasSubstr("<SubscriptionQueryRs"));
}

TEST_F(Company, The_clock_stamps_the_records) {
  EXPECT_THAT(folder_.Done({"company", "run", "-", "--clock", "2008-03-05T10:00:00", "--bias", "300"}, {.input = kAdd}),
              HasSubstr("<TimeCreated>2008-03-05T10:00:00-05:00</TimeCreated>"));
}

TEST_F(Company, A_missing_document_and_a_missing_company_file_give_2) {
  EXPECT_EQ(folder_.Twqb({"company", "run", "none.xml"}).status, 2);
  const auto ended = folder_.Twqb({"company", "show", "--company", "none.twq"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("none.twq"), HasSubstr("twqb init")));
}

TEST_F(Company, A_company_file_that_is_none_gives_2) {
  EXPECT_EQ(folder_.Twqb({"company", "show", "--company", "billing.db"}).status, 2);
}

}  // namespace
}  // namespace twqb::cli
