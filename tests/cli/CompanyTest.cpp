#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

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

TEST_F(Company, A_document_of_many_megabytes_is_answered) {
  std::string requests;
  constexpr int kCustomers = 20'000;
  for (int i = 0; i < kCustomers; ++i) {
    requests += "<CustomerAddRq><CustomerAdd><Name>C" + std::to_string(i) + "</Name><Notes>" + std::string(500, 'n') +
                "</Notes></CustomerAdd></CustomerAddRq>";
  }
  folder_.Write("many.xml", Document("<QBXMLMsgsRq onError=\"stopOnError\">" + requests + "</QBXMLMsgsRq>"));
  EXPECT_THAT(folder_.Done({"company", "run", "many.xml"}), HasSubstr("<Name>C19999</Name>"));
  EXPECT_THAT(folder_.Done({"company", "show"}), testing::ContainsRegex("Customer +20000\n"));
}

TEST_F(Company, What_is_no_document_of_requests_is_refused_with_a_sentence_of_why) {
  const std::string set = "<QBXML><QBXMLMsgsRq onError=\"stopOnError\"><HostQueryRq/></QBXMLMsgsRq></QBXML>";
  for (const auto& [text, why] : {std::pair<std::string, std::string>{"", "There is no root element"},
                                  {"Dear QuickBooks", "text outside the root"},
                                  {"<?xml version=\"1.0\"?>" + set, "The line with the message version is missing"},
                                  {"<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + set, "encoding UTF-16"},
                                  {std::string("\xFF\xFE<\0", 4), "UTF-8"},
                                  {"<?xml version=\"1.0\"?><!DOCTYPE QBXML SYSTEM \"http://there/x\">" + set,
                                   "Document type declarations are not accepted"},
                                  {std::string(1'000'000, '<'), "tag without a name"}}) {
    const auto ended = folder_.Twqb({"company", "run", "-"}, {.input = text});
    EXPECT_EQ(ended.status, 1) << why;
    EXPECT_THAT(ended.err, AllOf(HasSubstr("0x80040400"), HasSubstr(why)));
    EXPECT_THAT(ended.out, IsEmpty());
    EXPECT_LT(ended.err.size(), 500U);
  }
}

TEST_F(Company, An_input_without_an_end_is_given_up) {
  const auto ended = folder_.Twqb({"company", "run", "/dev/zero"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("/dev/zero has more than 512 MB"));
}

TEST_F(Company, Show_counts_every_kind_and_sums_the_balances) {
  folder_.Done({"company", "run", "-"},
               {.input = Document("<QBXMLMsgsRq onError=\"stopOnError\"><CustomerAddRq><CustomerAdd><Name>Acme</Name>"
                                  "<OpenBalance>12.50</OpenBalance><OpenBalanceDate>2008-03-01</OpenBalanceDate>"
                                  "</CustomerAdd></CustomerAddRq></QBXMLMsgsRq>")});
  EXPECT_THAT(folder_.Done({"company", "show"}),
              AllOf(testing::ContainsRegex("\nCustomer +1\n  balance +12.50\n"),
                    testing::ContainsRegex("\nInvoice +0\n"), testing::ContainsRegex("\nAccount +[0-9]+\n")));
}

TEST_F(Company, A_line_that_an_invoice_takes_up_is_answered_as_billed_and_a_second_time_is_told) {
  const std::string job = "<CustomerRef><FullName>Acme</FullName></CustomerRef>";
  const std::string account = "<AccountRef><FullName>Fees</FullName></AccountRef>";
  const auto add = [](const std::string& kind, const std::string& fields) {
    return "<" + kind + "AddRq><" + kind + "Add>" + fields + "</" + kind + "Add></" + kind + "AddRq>";
  };
  folder_.Done(
      {"company", "run", "-"},
      {.input = Document(
           "<QBXMLMsgsRq onError=\"stopOnError\">" + add("Customer", "<Name>Acme</Name>") +
           add("Vendor", "<Name>Vic</Name>") + add("Account", "<Name>Fees</Name><AccountType>Income</AccountType>") +
           add("ItemService", "<Name>Design</Name><SalesOrPurchase>" + account + "</SalesOrPurchase>") +
           add("Invoice", job + "<InvoiceLineAdd><ItemRef><FullName>Design</FullName></ItemRef></InvoiceLineAdd>") +
           add("Bill", "<VendorRef><FullName>Vic</FullName></VendorRef><ExpenseLineAdd>" + account +
                           "<Amount>5.00</Amount>" + job +
                           "<BillableStatus>Billable</BillableStatus></ExpenseLineAdd>") +
           "</QBXMLMsgsRq>")});
  const auto idIn = [this](const std::string& query, const std::string& element) {
    const auto answer =
        folder_.Done({"company", "run", "-"},
                     {.input = Document("<QBXMLMsgsRq onError=\"stopOnError\"><" + query +
                                        "><IncludeLineItems>true</IncludeLineItems></" + query + "></QBXMLMsgsRq>")});
    const auto from = answer.find("<" + element + ">") + element.size() + 2;
    return answer.substr(from, answer.find('<', from) - from);
  };
  const auto invoice = idIn("InvoiceQueryRq", "TxnID");
  const auto line = idIn("BillQueryRq", "TxnLineID");
  EXPECT_EQ(idIn("BillQueryRq", "BillableStatus"), "Billable");
  EXPECT_THAT(folder_.Done({"company", "bill", invoice, line}), IsEmpty());
  EXPECT_EQ(idIn("BillQueryRq", "BillableStatus"), "HasBeenBilled");
  const auto again = folder_.Twqb({"company", "bill", invoice, line});
  EXPECT_EQ(again.status, 1);
  EXPECT_THAT(again.err, HasSubstr("billed already"));
}

// The lines between the fences of the first block of shell below that heading.
std::string DocumentedLines(const std::string& document, const std::string& heading) {
  constexpr std::string_view kFence = "```sh\n";
  const auto text = ReadWholeFile(TWQB_SOURCE_DIR "/docs/" + document);
  const auto begin = text.find(kFence, text.find("## " + heading)) + kFence.size();
  return text.substr(begin, text.find("```", begin) - begin);
}

TEST(CompanyDocumentation, The_five_lines_for_a_program_of_one_s_own_work_as_they_stand) {
  const auto lines = DocumentedLines("company-file.md", "Your own program against it");
  EXPECT_EQ(std::ranges::count(lines, '\n'), 5);
  const TemporaryFolder folder;
  const auto program = std::filesystem::path(TWQB_PROGRAM).parent_path().string();
  const auto ended =
      RunProcess({"/bin/sh", "-c", "set -e\nPATH=\"" + program + ":$PATH\"\n" + lines}, {.folder = folder.Path()});
  EXPECT_EQ(ended.exitStatus, 0) << ended.errors;
  EXPECT_THAT(ended.output, HasSubstr("<CustomerAddRs requestID=\"1\" statusCode=\"0\""));
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

struct Change {
  std::string name;
  std::string fresh;
  std::string changed;
};
void PrintTo(const Change& change, std::ostream* out) { *out << change.name; }

class CompanySet : public Company, public testing::WithParamInterface<Change> {
 protected:
  [[nodiscard]] std::string Shown(const std::string& value) const {
    constexpr std::size_t kWidth = 25;
    auto line = "\n" + GetParam().name;
    line.resize(1 + kWidth, ' ');
    return line + value + "\n";
  }
};

TEST_P(CompanySet, Changes_what_is_shown_and_changes_it_back) {
  EXPECT_THAT(folder_.Done({"company", "show"}), HasSubstr(Shown(GetParam().fresh)));
  EXPECT_THAT(folder_.Done({"company", "set", GetParam().name, GetParam().changed}), IsEmpty());
  EXPECT_THAT(folder_.Done({"company", "show"}), HasSubstr(Shown(GetParam().changed)));
  folder_.Done({"company", "set", GetParam().name, GetParam().fresh});
  EXPECT_THAT(folder_.Done({"company", "show"}), HasSubstr(Shown(GetParam().fresh)));
}

TEST_P(CompanySet, A_wrong_value_gives_2_names_the_right_ones_and_changes_nothing) {
  const auto ended = folder_.Twqb({"company", "set", GetParam().name, "perhaps"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err,
              AllOf(HasSubstr("\"perhaps\" is no value of " + GetParam().name), HasSubstr(GetParam().fresh)));
  EXPECT_THAT(folder_.Done({"company", "show"}), HasSubstr(Shown(GetParam().fresh)));
}

TEST_P(CompanySet, The_help_names_it_and_its_values) {
  EXPECT_THAT(folder_.Done({"company", "set", "--help"}),
              testing::ContainsRegex("\n  " + GetParam().name + " [^\n]*" + GetParam().fresh));
}

INSTANTIATE_TEST_SUITE_P(
    Conditions, CompanySet,
    testing::Values(Change{"permission", "granted", "withheld"}, Change{"auto-logon", "granted", "withheld"},
                    Change{"dialog", "closed", "open"}, Change{"host-query", "answered", "refused"},
                    Change{"host-query", "answered", "unknown"}, Change{"time-tracking", "enabled", "disabled"},
                    Change{"closing-date", "none", "2007-12-31"}, Change{"interface-version", "5.0", "2.1"}),
    [](const auto& suite) {
      auto name = suite.param.name + "_" + suite.param.changed;
      std::ranges::replace_if(
          name, [](char c) { return c == '-' || c == '.'; }, '_');
      return name;
    });

TEST_F(Company, Set_keeps_what_was_set_before) {
  folder_.Done({"company", "set", "permission", "withheld"});
  folder_.Done({"company", "set", "dialog", "open"});
  EXPECT_THAT(folder_.Done({"company", "show"}), AllOf(HasSubstr(" withheld\n"), HasSubstr(" open\n")));
}

TEST_F(Company, Set_of_an_unknown_name_gives_2_and_lists_the_names) {
  const auto ended = folder_.Twqb({"company", "set", "permision", "granted"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("Did you mean \"permission\"?"),
                               HasSubstr("permission, auto-logon, dialog, host-query, personal-data, time-tracking, "
                                         "recovery, closing-date, interface-version")));
}

TEST_F(Company, Set_in_a_company_file_that_is_not_there_gives_2) {
  const auto ended = folder_.Twqb({"company", "set", "dialog", "open", "--company", "none.twq"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("none.twq"));
}

TEST_F(Company, What_is_set_does_not_keep_documents_from_being_answered) {
  folder_.Done({"company", "set", "permission", "withheld"});
  folder_.Done({"company", "set", "dialog", "open"});
  EXPECT_THAT(folder_.Done({"company", "run", "-"}, {.input = kAdd}), HasSubstr("statusCode=\"0\""));
}

}  // namespace
}  // namespace twqb::cli
