// Sets that carry identifiers: what comes again does nothing twice, and a program can ask what became of its set. In
// both readings of what is not settled.

#include <gmock/gmock.h>

#include "FileSql.h"
#include "ListTest.h"
#include "adapters/companyfile/CompanyTransport.h"

namespace twqb::company {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr ErrorNumber kStorageFailed = 0x80040402;

std::string SetDocument(const std::string& attributes, const std::string& requests,
                        const std::string& onError = "continueOnError", const std::string& tag = "3.0") {
  return "<?xml version=\"1.0\"?><?qbxml version=\"" + tag + "\"?><QBXML><QBXMLMsgsRq onError=\"" + onError + "\"" +
         attributes + ">" + requests + "</QBXMLMsgsRq></QBXML>";
}
std::string New(const std::string& id) { return " newMessageSetID=\"" + id + "\""; }
std::string Old(const std::string& id) { return " oldMessageSetID=\"" + id + "\""; }
std::string Check(const std::string& id) { return SetDocument(New(id) + Old(id), ""); }
const std::string kClearAll = SetDocument(Old("ClearAllMessageSets"), "");
const std::string kNone = "(none)";

class Recovery : public ListTest {
 protected:
  // Sends a document and answers the code of the set; kNone when it has none.
  std::string SendSet(const std::string& document) { return SendSetTo(*file_, document); }
  std::string SendSetTo(CompanyFile& file, const std::string& document) {
    text_ = file.Process(document);
    answers_ = ReadAnswers("QBXMLMsgsRs");
    const auto set = parsed_.child("QBXML").child("QBXMLMsgsRs");
    newId_ = set.attribute("newMessageSetID").value();
    return set.attribute("messageSetStatusCode").as_string(kNone.c_str());
  }
  [[nodiscard]] std::vector<int> Codes() const {
    std::vector<int> codes;
    for (const auto& answer : answers_) codes.push_back(answer.code);
    return codes;
  }
  [[nodiscard]] bool HasRecords() const { return text_.find("CustomerRet") != std::string::npos; }
  std::vector<std::string> Customers() {
    const auto answer = QueryOf("Customer", "<ActiveStatus>All</ActiveStatus>");
    return answer.code == 1 ? std::vector<std::string>{} : answer.All("Name");
  }
  void Lenient() { Set("recovery", "lenient"); }

  const std::string acme_ = AddRequest("<Name>Acme</Name>");
  std::vector<Answer> answers_;
  std::string newId_;
};

// --- In both readings ------------------------------------------------------------------------------------------------

class EitherRecovery : public Recovery, public testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override {
    Recovery::SetUp();
    Set("recovery", GetParam());
  }
};
INSTANTIATE_TEST_SUITE_P(Readings, EitherRecovery, testing::Values("strict", "lenient", "late"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(EitherRecovery, A_set_without_identifiers_is_carried_out_each_time) {
  EXPECT_EQ(SendSet(SetDocument("", acme_)), kNone);
  EXPECT_THAT(Codes(), ElementsAre(0));
  EXPECT_EQ(SendSet(SetDocument("", acme_)), kNone);
  EXPECT_THAT(Codes(), ElementsAre(3100));
  EXPECT_EQ(newId_, "");
}

TEST_P(EitherRecovery, A_set_that_comes_again_is_answered_from_memory_and_not_carried_out_again) {
  const auto document = SetDocument(New("AB1F2395"), acme_);
  SendSet(document);
  EXPECT_THAT(Codes(), ElementsAre(0));
  EXPECT_TRUE(HasRecords());
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(SendSet(document), "0");
    EXPECT_EQ(newId_, "AB1F2395");
    EXPECT_THAT(Codes(), ElementsAre(0)) << "what was told then, and not that the name is in use";
  }
  EXPECT_THAT(Customers(), ElementsAre("Acme"));
}

TEST_P(EitherRecovery, Other_content_under_a_known_identifier_does_nothing) {
  SendSet(SetDocument(New("X"), acme_));
  EXPECT_EQ(SendSet(SetDocument(New("X"), AddRequest("<Name>Beta</Name>"))), "9001");
  EXPECT_EQ(newId_, "X");
  EXPECT_THAT(answers_, IsEmpty());
  EXPECT_THAT(Customers(), ElementsAre("Acme"));
}

TEST_P(EitherRecovery, An_empty_set_asks_what_became_of_one_and_leaves_it_known) {
  SendSet(SetDocument(New("X"), acme_ + AddRequest("<Name>A:B</Name>")));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(SendSet(Check("X")), "0");
    EXPECT_EQ(newId_, "X");
    EXPECT_THAT(Codes(), ElementsAre(0, 3090));
    EXPECT_EQ(answers_[0].id, "1");
    EXPECT_EQ(answers_[1].severity, "Error");
  }
}

TEST_P(EitherRecovery, What_was_not_carried_out_behind_an_error_is_remembered_so) {
  SendSet(SetDocument(New("X"), AddRequest("<Name>A:B</Name>") + acme_, "stopOnError"));
  EXPECT_THAT(Codes(), ElementsAre(3090, 3231));
  SendSet(Check("X"));
  EXPECT_THAT(Codes(), ElementsAre(3090, 3231));
  EXPECT_THAT(Customers(), IsEmpty());
}

TEST_P(EitherRecovery, A_new_set_takes_the_place_of_the_one_that_it_names_as_old) {
  SendSet(SetDocument(New("X"), acme_));
  SendSet(SetDocument(New("Y") + Old("X"), AddRequest("<Name>Beta</Name>")));
  EXPECT_THAT(Codes(), ElementsAre(0));
  EXPECT_EQ(SendSet(SetDocument(Old("X"), "")), "600");
  EXPECT_EQ(SendSet(Check("Y")), "0");
}

TEST_P(EitherRecovery, A_new_set_runs_though_the_old_one_is_not_known) {
  SendSet(SetDocument(New("Y") + Old("X"), acme_));
  EXPECT_THAT(Codes(), ElementsAre(0));
  EXPECT_EQ(SendSet(Check("Y")), "0");
}

TEST_P(EitherRecovery, The_set_that_is_sent_again_is_known_before_what_it_names_as_old) {
  const auto second = SetDocument(New("Y") + Old("X"), AddRequest("<Name>Beta</Name>"));
  SendSet(SetDocument(New("X"), acme_));
  SendSet(second);
  SendSet(SetDocument(New("X"), AddRequest("<Name>Gamma</Name>")));
  EXPECT_EQ(SendSet(second), "0");
  EXPECT_EQ(SendSet(Check("X")), "0") << "it came later, and what is answered from memory forgets nothing";
}

TEST_P(EitherRecovery, An_empty_set_with_an_old_identifier_alone_clears_it) {
  SendSet(SetDocument(New("X"), acme_));
  SendSet(SetDocument(New("Y"), AddRequest("<Name>Beta</Name>")));
  EXPECT_EQ(SendSet(SetDocument(Old("X"), "")), "0");
  EXPECT_EQ(newId_, "");
  EXPECT_EQ(SendSet(SetDocument(Old("X"), "")), "600");
  EXPECT_THAT(answers_, IsEmpty());
  EXPECT_EQ(SendSet(Check("Y")), "0");
}

TEST_P(EitherRecovery, All_sets_of_a_program_are_cleared_at_once) {
  SendSet(SetDocument(New("X"), acme_));
  SendSet(SetDocument(New("Y"), AddRequest("<Name>Beta</Name>")));
  EXPECT_EQ(SendSet(kClearAll), "0");
  EXPECT_THAT(answers_, IsEmpty());
  EXPECT_EQ(SendSet(SetDocument(Old("X"), "")), "600");
  EXPECT_EQ(SendSet(SetDocument(Old("Y"), "")), "600");
  EXPECT_EQ(SendSet(kClearAll), "0") << "when there are none, too";
}

TEST_P(EitherRecovery, A_set_with_requests_clears_nothing) {
  SendSet(SetDocument(New("X"), acme_));
  const auto all = Old("ClearAllMessageSets");
  EXPECT_EQ(SendSet(SetDocument(all, AddRequest("<Name>Beta</Name>"))), "600") << "an identifier that is not known";
  EXPECT_THAT(Customers(), ElementsAre("Acme"));
  SendSet(SetDocument(New("Y") + all, AddRequest("<Name>Gamma</Name>")));
  EXPECT_THAT(Codes(), ElementsAre(0)) << "beside a new identifier it stands for none";
  EXPECT_EQ(SendSet(Check("X")), "0");
  EXPECT_EQ(SendSet(Check("Y")), "0");
}

TEST_P(EitherRecovery, Requests_with_an_unknown_old_identifier_and_no_new_one_do_nothing) {
  EXPECT_EQ(SendSet(SetDocument(Old("X"), acme_)), "600");
  EXPECT_THAT(Customers(), IsEmpty());
  SendSet(SetDocument(New("X"), acme_));
  SendSet(SetDocument(Old("X"), AddRequest("<Name>Beta</Name>")));
  EXPECT_THAT(Codes(), ElementsAre(0));
  EXPECT_EQ(SendSet(SetDocument(Old("X"), "")), "600");
}

TEST_P(EitherRecovery, Sets_of_one_program_are_not_known_to_another) {
  CompanyFile other(path_, machine_, FileMode::MultiUser, "Other");
  const auto document = SetDocument(New("X"), acme_);
  SendSet(document);
  SendSetTo(other, document);
  EXPECT_THAT(Codes(), ElementsAre(3100)) << "it is carried out";
  EXPECT_EQ(SendSetTo(other, kClearAll), "0");
  EXPECT_EQ(SendSet(Check("X")), "0");
}

TEST_P(EitherRecovery, A_program_is_known_by_the_name_under_which_it_connects) {
  const auto check = [&](std::string_view application) {
    const auto transport = CompanyTransportFactory(path_, machine_).CreateTransport();
    transport->OpenConnection("", application);
    transport->BeginSession("", OpenMode::DoNotCare);
    return transport->ProcessDocument(SetDocument(Old("X"), ""));
  };
  CompanyFile named(path_, machine_, FileMode::MultiUser, "Books");
  SendSetTo(named, SetDocument(New("X"), acme_));
  EXPECT_THAT(check("Ledger"), HasSubstr("messageSetStatusCode=\"600\""));
  EXPECT_THAT(check("Books"), HasSubstr("messageSetStatusCode=\"0\""));
}

TEST_P(EitherRecovery, Sets_are_known_to_the_file_and_outlast_the_process) {
  SendSet(SetDocument(New("X"), acme_));
  file_.emplace(path_, machine_);
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_)), "0");
  MakeFile({});
  EXPECT_EQ(SendSet(SetDocument(Old("X"), "")), "600") << "another company file knows nothing of it";
}

TEST_P(EitherRecovery, A_document_that_is_refused_leaves_its_identifier_free) {
  EXPECT_EQ(RefusalOf(SetDocument(New("X"), AddRequest("<Nmae>Acme</Nmae>"))), kRefused);
  SendSet(SetDocument(New("X"), acme_));
  EXPECT_THAT(Codes(), ElementsAre(0));
}

TEST_P(EitherRecovery, Records_are_left_out_of_the_answer_where_they_are_not_wanted) {
  const std::string none = " responseData=\"includeNone\"";
  SendSet(SetDocument(none, acme_ + QueryRequest("") + QueryRequest("<FullName>B</FullName>")));
  EXPECT_THAT(Codes(), ElementsAre(0, 0, 500));
  EXPECT_FALSE(HasRecords());
  EXPECT_EQ(answers_[0].id, "1");
  SendSet(SetDocument(" responseData=\"includeAll\"", QueryRequest("")));
  EXPECT_TRUE(HasRecords());
  SendSet(SetDocument(none + New("X"), AddRequest("<Name>Beta</Name>")));
  EXPECT_FALSE(HasRecords());
  SendSet(Check("X"));
  EXPECT_FALSE(HasRecords()) << "what was not told then is not told later";
}

TEST_P(EitherRecovery, Identifiers_that_are_too_long_do_nothing) {
  const std::string tooLong(25, 'x');
  for (const auto& attributes : {New(tooLong), Old(tooLong), New("Y") + Old(tooLong), New(tooLong) + Old("X")}) {
    EXPECT_EQ(SendSet(SetDocument(attributes, acme_)), "9004") << attributes;
    EXPECT_THAT(answers_, IsEmpty());
  }
  EXPECT_THAT(Customers(), IsEmpty());
  SendSet(SetDocument(New(std::string(23, 'x')), acme_));
  EXPECT_THAT(Codes(), ElementsAre(0));
}

TEST_P(EitherRecovery, An_empty_identifier_is_none) {
  EXPECT_EQ(SendSet(SetDocument(New("") + Old(""), acme_)), kNone);
  EXPECT_THAT(Codes(), ElementsAre(0));
}

TEST_P(EitherRecovery, Attributes_that_are_not_published_refuse_the_document) {
  for (const auto* attribute :
       {" newmessagesetid=\"X\"", " messageSetStatusCode=\"0\"", " responseData=\"none\"", " responseData=\"\""}) {
    EXPECT_EQ(RefusalOf(SetDocument(attribute, acme_)), kRefused) << attribute;
  }
  EXPECT_EQ(NumberRaised([&] {
              (void)file_->ProcessSubscription(
                  "<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLSubscriptionMsgsRq "
                  "newMessageSetID=\"X\"/></QBXML>");
            }),
            kRefused);
}

// --- What is not settled ---------------------------------------------------------------------------------------------

TEST_F(Recovery, Strictly_a_first_answer_has_no_code_and_leniently_it_has) {
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_)), kNone);
  EXPECT_EQ(newId_, "");
  Lenient();
  EXPECT_EQ(SendSet(SetDocument(New("Y"), acme_)), "0");
  EXPECT_EQ(newId_, "Y");
}

TEST_F(Recovery, Strictly_a_known_set_is_told_by_its_statuses_alone_and_leniently_with_its_records) {
  const auto document = SetDocument(New("X"), acme_);
  SendSet(document);
  EXPECT_TRUE(HasRecords());
  for (const auto& question : {document, Check("X")}) {
    SendSet(question);
    EXPECT_FALSE(HasRecords());
    EXPECT_THAT(text_, HasSubstr("<CustomerAddRs requestID=\"1\" statusCode=\"0\" statusSeverity=\"Info\" "
                                 "statusMessage=\"Status OK\"></CustomerAddRs>"));
  }
  Lenient();
  SendSet(Check("X"));
  EXPECT_TRUE(HasRecords());
  EXPECT_EQ(answers_[0].Value("Name"), "Acme");
}

TEST_F(Recovery, Strictly_asking_for_an_unknown_set_takes_the_identifier_and_tells_that_it_may_have_run) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(SendSet(Check("X")), "9002");
    EXPECT_THAT(answers_, IsEmpty());
  }
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_)), "9001");
  EXPECT_THAT(Customers(), IsEmpty());
  SendSet(SetDocument(New("X2"), acme_));
  EXPECT_THAT(Codes(), ElementsAre(0)) << "a fresh identifier does";
}

TEST_F(Recovery, Leniently_an_unknown_set_never_came_and_asking_takes_nothing) {
  Lenient();
  EXPECT_EQ(SendSet(Check("X")), "600");
  EXPECT_THAT(answers_, IsEmpty());
  SendSet(SetDocument(New("X"), acme_));
  EXPECT_THAT(Codes(), ElementsAre(0));
}

TEST_F(Recovery, Strictly_a_clear_tells_nothing_of_what_it_cleared_and_leniently_its_answer) {
  SendSet(SetDocument(New("X"), acme_));
  SendSet(SetDocument(Old("X"), ""));
  EXPECT_THAT(answers_, IsEmpty());
  Lenient();
  SendSet(SetDocument(New("Y"), acme_));
  SendSet(SetDocument(Old("Y"), ""));
  EXPECT_THAT(Codes(), ElementsAre(3100));
}

TEST_F(Recovery, Strictly_a_set_is_the_same_to_the_letter_and_leniently_by_what_it_says) {
  const auto respelled =
      SetDocument(New("X"),
                  "\n  <CustomerAddRq requestID='1'>\n  <CustomerAdd><Name>&#65;cme</Name><!-- again --></CustomerAdd> "
                  "</CustomerAddRq>");
  SendSet(SetDocument(New("X"), acme_));
  EXPECT_EQ(SendSet(respelled), "9001");
  EXPECT_EQ(SendSet(kClearAll), "0");
  Lenient();
  SendSet(SetDocument(New("X"), AddRequest("<Name>Acme</Name>")));
  EXPECT_EQ(SendSet(respelled), "0");
  EXPECT_EQ(SendSet(SetDocument(New("X"), AddRequest("<Name>ACME</Name>"))), "9001");
}

TEST_F(Recovery, Strictly_the_version_and_onError_are_part_of_the_content_and_leniently_they_are_not) {
  SendSet(SetDocument(New("X"), acme_, "stopOnError", "3.0"));
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_, "continueOnError", "3.0")), "9001");
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_, "stopOnError", "2.1")), "9001");
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_, "stopOnError", "3.0")), "0");
  Lenient();
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_, "continueOnError", "2.1")), "0");
}

TEST_F(Recovery, A_set_is_known_in_either_reading_whichever_it_was_stored_in) {
  const auto document = SetDocument(New("X"), acme_);
  SendSet(document);
  Lenient();
  EXPECT_EQ(SendSet(document), "0");
  EXPECT_EQ(SendSet(SetDocument(New("X"), AddRequest("<Name>Beta</Name>"))), "9001");
  const auto other = SetDocument(New("Y"), AddRequest("<Name>Beta</Name>"));
  SendSet(other);
  Set("recovery", "strict");
  EXPECT_EQ(SendSet(other), "0");
  EXPECT_EQ(SendSet(SetDocument(New("Y"), acme_)), "9001");
  EXPECT_THAT(Customers(), ElementsAre("Acme", "Beta"));
}

TEST_F(Recovery, A_set_that_a_file_of_the_third_format_stored_is_known) {
  // As those files have it: of the text inside the set alone.
  RunSql(path_,
         "INSERT INTO message_set VALUES ('', 'X', '59a8bbba631483bf-14', 1, "
         "'<HostQueryRs statusCode=\"0\" statusSeverity=\"Info\" statusMessage=\"Status OK\"></HostQueryRs>', "
         "1204700000)");
  for (const auto* reading : {"strict", "lenient"}) {
    Set("recovery", reading);
    EXPECT_EQ(SendSet(SetDocument(New("X"), "<HostQueryRq/>")), "0") << reading;
    EXPECT_EQ(SendSet(SetDocument(New("X"), "<HostQueryRq/><HostQueryRq/>")), "9001") << reading;
  }
}

TEST_F(Recovery, The_identifiers_and_the_order_of_the_attributes_are_no_part_of_the_content) {
  SendSet(SetDocument(New("X"), acme_));
  EXPECT_EQ(SendSet("<?xml version=\"1.0\"?><?qbxml version=\"3.0\"?><QBXML><QBXMLMsgsRq oldMessageSetID='a>b' "
                    "newMessageSetID='X' onError='continueOnError'>" +
                    acme_ + "</QBXMLMsgsRq></QBXML>"),
            "0");
}

TEST_F(Recovery, Strictly_an_identifier_has_23_characters_at_most_and_leniently_24) {
  const auto document = SetDocument(New(std::string(24, 'x')), acme_);
  EXPECT_EQ(SendSet(document), "9004");
  Lenient();
  EXPECT_EQ(SendSet(document), "0");
}

TEST_F(Recovery, Strictly_the_first_versions_have_no_such_attributes_and_leniently_they_do) {
  const auto document = SetDocument(New("X"), acme_, "stopOnError", "1.1");
  EXPECT_EQ(RefusalOf(document), kRefused);
  EXPECT_EQ(RefusalOf(SetDocument(New("X"), acme_, "stopOnError", "2.0")), 0U);
  Lenient();
  EXPECT_EQ(RefusalOf(SetDocument(New("Y"), acme_, "stopOnError", "1.0")), 0U);
}

TEST_F(Recovery, Strictly_the_first_versions_do_not_know_them_empty_either) {
  for (const auto& attribute : {New(""), Old(""), std::string(" responseData=\"includeAll\"")}) {
    for (const auto* tag : {"1.0", "1.1"}) {
      EXPECT_EQ(RefusalOf(SetDocument(attribute, acme_, "stopOnError", tag)), kRefused) << attribute << tag;
    }
    EXPECT_EQ(RefusalOf(SetDocument(attribute, acme_, "stopOnError", "2.0")), 0U) << attribute;
  }
  Lenient();
  EXPECT_EQ(RefusalOf(SetDocument(New(""), acme_, "stopOnError", "1.1")), 0U);
}

TEST_F(Recovery, Where_an_answer_is_stored_late_work_is_done_though_it_can_not_be_stored) {
  Set("recovery", "late");
  RunSql(path_, "CREATE TRIGGER full BEFORE INSERT ON message_set BEGIN SELECT RAISE(ABORT, 'full'); END");
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_)), "9005");
  EXPECT_EQ(newId_, "X");
  EXPECT_THAT(answers_, IsEmpty());
  EXPECT_THAT(Customers(), ElementsAre("Acme"));
  RunSql(path_, "DROP TRIGGER full");
  EXPECT_EQ(SendSet(Check("X")), "9002") << "which is why it tells that the set may have run";
}

TEST_F(Recovery, Elsewhere_work_and_answer_are_stored_together_or_not_at_all) {
  RunSql(path_, "CREATE TRIGGER full BEFORE INSERT ON message_set BEGIN SELECT RAISE(ABORT, 'full'); END");
  EXPECT_EQ(RefusalOf(SetDocument(New("X"), acme_)), kStorageFailed);
  EXPECT_THAT(Customers(), IsEmpty());
  RunSql(path_, "DROP TRIGGER full");
  Lenient();
  EXPECT_EQ(SendSet(Check("X")), "600");
}

TEST_F(Recovery, Text_that_is_the_same_but_for_its_end_is_other_content) {
  SendSet(SetDocument(New("X"), acme_));
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_ + acme_)), "9001");
  EXPECT_EQ(SendSet(SetDocument(New("X"), acme_ + " ")), "9001");
  EXPECT_EQ(SendSet(SetDocument(New("X"), "")), "9001");
}

}  // namespace

}  // namespace twqb::company
