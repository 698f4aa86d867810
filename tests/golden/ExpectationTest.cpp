// What golden expectations leave out of a record.

#include <gtest/gtest.h>

#include "tests/golden/Expectation.h"

namespace twqb {
namespace {

TEST(Expectation, Subjects_are_named_as_scenarios_name_them) {
  EXPECT_EQ(SubjectNamed("progress"), Subject::Progress);
  EXPECT_EQ(SubjectNamed("settings"), Subject::Settings);
  EXPECT_EQ(SubjectNamed("boxes"), std::nullopt);
}

TEST(Expectation, The_progress_form_is_progress_and_the_choice_of_a_vendor_is_not) {
  EXPECT_EQ(SubjectOf(R"({"seq":8,"kind":"form","form":"msgForm","event":"update","lblItem":"Sending","pbconv":33})"),
            Subject::Progress);
  EXPECT_EQ(SubjectOf(R"({"seq":9,"kind":"form","form":"frmPickVendor","lblMsg":"","choices":[],"answer":null})"),
            std::nullopt);
}

TEST(Expectation, Settings_and_registry_values_are_settings_whatever_became_of_them) {
  EXPECT_EQ(SubjectOf(R"({"seq":1,"kind":"setting","operation":"read","section":"GENERAL","key":"K","value":""})"),
            Subject::Settings);
  EXPECT_EQ(SubjectOf(R"({"seq":1,"kind":"setting","operation":"write","section":"GENERAL","key":"K","value":"V",)"
                      R"("raised":{"number":"0x0000004B","description":"The disk is full."}})"),
            Subject::Settings);
  EXPECT_EQ(SubjectOf(R"({"seq":1,"kind":"registry","key":"SOFTWARE","name":"Database","value":null})"),
            Subject::Settings);
}

TEST(Expectation, What_is_told_shown_asked_sent_and_written_is_in_every_expectation) {
  for (const std::string kind : {"step", "call", "return", "session", "request", "response", "connect", "disconnect",
                                 "sql",  "row",  "box",    "file",    "log",     "callback", "cursor",  "sleep",
                                 "copy", "show", "stored", "screen",  "files",   "ask"}) {
    EXPECT_EQ(SubjectOf(R"({"seq":1,"kind":")" + kind + "\"}"), std::nullopt) << kind;
  }
}

TEST(Expectation, Lines_are_compared_without_their_number_in_the_whole_record) {
  const std::vector<std::string> lines = {R"({"kind":"step","line":"send clients"})",
                                          R"({"kind":"log","line":"{\"seq\":1,a"})"};
  EXPECT_EQ(ComparedLines("{\"kind\":\"step\",\"line\":\"send clients\"}\n"
                          "{\"seq\":107,\"kind\":\"log\",\"line\":\"{\\\"seq\\\":1,a\"}\n"),
            lines);
}

TEST(Expectation, Exit_statuses_and_screens_are_left_out_of_what_came_through_COM) {
  const std::vector<std::string> lines = {R"({"kind":"step","line":"send clients","clock":"2008"})",
                                          R"({"kind":"show","rows":[]})"};
  EXPECT_EQ(LinesThroughCom("{\"kind\":\"step\",\"line\":\"send clients\",\"clock\":\"2008\",\"exit\":1}\n"
                            "{\"kind\":\"screen\",\"lines\":[\"Sending\"]}\n"
                            "{\"kind\":\"show\",\"rows\":[]}\n"),
            lines);
}

}  // namespace
}  // namespace twqb
