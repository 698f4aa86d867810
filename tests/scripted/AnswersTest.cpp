#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "adapters/scripted/Answers.h"

namespace twqb {
namespace {

using Word = Answer::Word;

TEST(Answers, Every_word_is_read_in_the_order_of_its_line) {
  const auto answers = ParseAnswers("yes\nno\nretry\ncancel\nskip\nfile /books/My Firm.qbw\nvendor V 1\n");
  const std::vector<Answer> expected{{.word = Word::Yes},
                                     {.word = Word::No},
                                     {.word = Word::Retry},
                                     {.word = Word::Cancel},
                                     {.word = Word::Skip},
                                     {.word = Word::File, .text = "/books/My Firm.qbw"},
                                     {.word = Word::Vendor, .text = "V 1"}};
  EXPECT_EQ(answers.inOrder, expected);
  EXPECT_TRUE(answers.defaults.empty());
  EXPECT_TRUE(answers.cancelAfter.empty());
}

TEST(Answers, Blank_lines_comments_outer_blanks_and_case_do_not_matter) {
  const auto answers = ParseAnswers("\xEF\xBB\xBF# why\r\n\r\n  YES \t\r\n  # more\r\nFile\tC:\\a.qbw\r\nno");
  const std::vector<Answer> expected{
      {.word = Word::Yes}, {.word = Word::File, .text = "C:\\a.qbw"}, {.word = Word::No}};
  EXPECT_EQ(answers.inOrder, expected);
}

TEST(Answers, An_ok_takes_no_place_in_the_order) {
  const std::vector<Answer> expected{{.word = Word::Yes}};
  EXPECT_EQ(ParseAnswers("ok\nyes\nok\n").inOrder, expected);
}

TEST(Answers, Defaults_and_presses_of_Cancel_take_no_place_in_the_order) {
  const auto answers = ParseAnswers("cancel after 12\nyes\ndefault no\ndefault retry\ndefault skip\ncancel AFTER 3\n");
  const std::vector<Answer> expected{{.word = Word::Yes}};
  EXPECT_EQ(answers.inOrder, expected);
  EXPECT_EQ(answers.defaults, (std::vector<Answer>{{.word = Word::No}, {.word = Word::Retry}, {.word = Word::Skip}}));
  EXPECT_EQ(answers.cancelAfter, (std::vector<int>{12, 3}));
}

TEST(Answers, An_answer_is_written_as_its_line) {
  EXPECT_EQ(ToText(Answer{.word = Word::Retry}), "retry");
  EXPECT_EQ(ToText(Answer{.word = Word::Vendor, .text = "V1"}), "vendor V1");
}

class RefusedLine : public testing::TestWithParam<std::tuple<std::string, std::string>> {};

TEST_P(RefusedLine, Is_named_with_its_number_and_what_is_allowed) {
  const auto& [line, allowed] = GetParam();
  try {
    static_cast<void>(ParseAnswers("yes\n# a comment\n" + line + "\nno\n"));
    FAIL() << "read: " << line;
  } catch (const AnswersError& refused) {
    EXPECT_EQ(refused.line(), 3);
    EXPECT_EQ(refused.text(), line);
    const std::string what = refused.what();
    EXPECT_NE(what.find("line 3: \"" + line + "\""), std::string::npos) << what;
    EXPECT_NE(what.find(allowed), std::string::npos) << what;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Answers, RefusedLine,
    testing::Values(std::tuple{"yess", "expected yes, no, ok, retry, cancel, skip, file PATH, vendor TEXT"},
                    std::tuple{"yes please", "expected yes"}, std::tuple{"file", "file PATH"},
                    std::tuple{"vendor", "vendor TEXT"}, std::tuple{"default", "expected default yes"},
                    std::tuple{"default file x", "expected default yes"},
                    std::tuple{"default vendor", "or vendor TEXT"}, std::tuple{"cancel after", "N from 1"},
                    std::tuple{"cancel after 0", "N from 1"}, std::tuple{"cancel after 3x", "N from 1"},
                    std::tuple{"cancel before 3", "cancel after N"}, std::tuple{"after 3", "cancel after N"}));

TEST(Answers, Two_defaults_for_the_same_question_are_refused) {
  EXPECT_THROW(static_cast<void>(ParseAnswers("default yes\ndefault no\n")), AnswersError);
  EXPECT_THROW(static_cast<void>(ParseAnswers("default cancel\ndefault retry\n")), AnswersError);
  EXPECT_THROW(static_cast<void>(ParseAnswers("default ok\ndefault ok\n")), AnswersError);
  EXPECT_THROW(static_cast<void>(ParseAnswers("default vendor V1\ndefault vendor V2\n")), AnswersError);
}

}  // namespace
}  // namespace twqb
