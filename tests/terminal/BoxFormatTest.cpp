#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "adapters/terminal/BoxFormat.h"
#include "adapters/terminal/TextLayout.h"
#include "platform/Text.h"

namespace twqb {
namespace {

TEST(BoxFormat, A_box_is_its_lines_between_two_rules) {
  const MessageBox box{
      .text = "Error # -2147220458\r\nCould not find the client.\r\n", .title = "Error", .icon = BoxIcon::Information};
  EXPECT_EQ(FormatBox(box, 30),
            "---- [i] Error ---------------\n"
            "Error # -2147220458\n"
            "Could not find the client.\n"
            "------------------------------\n");
}

TEST(BoxFormat, The_help_button_names_file_and_topic) {
  const MessageBox box{.text = "Text", .title = "T", .help = true, .helpFile = "TW.chm", .helpId = 512};
  EXPECT_EQ(FormatBox(box, 30),
            "---- T -----------------------\n"
            "Text\n"
            "(help: TW.chm, topic 512)\n"
            "------------------------------\n");
}

TEST(BoxFormat, A_box_without_a_title_gets_the_default_one) {
  EXPECT_THAT(FormatBox({.text = "Text"}, 40), testing::StartsWith("---- TWQBClient90 ---"));
}

TEST(BoxFormat, No_line_is_wider_than_the_width_and_no_word_is_lost) {
  std::string text;
  for (int i = 0; i < 60; ++i) text += "w\xC3\xB6rd" + std::to_string(i) + " \xE6\x9D\xB1\xE4\xBA\xAC ";
  const MessageBox box{.text = text, .title = std::string(200, 'T'), .icon = BoxIcon::Warning};
  const auto formatted = FormatBox(box, kWidestBox);
  for (const auto& line : Split(formatted, '\n')) EXPECT_LE(ColumnCount(line), 80U) << line;
  for (int i = 0; i < 60; ++i) {
    EXPECT_NE(formatted.find("w\xC3\xB6rd" + std::to_string(i)), std::string::npos) << i;
  }
}

TEST(BoxFormat, A_help_button_that_leads_nowhere_is_not_offered) {
  const MessageBox box{.text = "Text", .title = "T", .buttons = BoxButtons::YesNo, .help = true};
  EXPECT_EQ(FormatBox(box, 80).find("help"), std::string::npos);
  EXPECT_EQ(FormatPrompt(box), "[Y]es / [N]o: ");
}

TEST(BoxFormat, Control_characters_of_text_title_and_help_file_do_not_come_through) {
  const MessageBox box{
      .text = "a\x1b]0;x\x07", .title = "b\x1b[31m\r\nc", .help = true, .helpFile = "d\x1b", .helpId = 1};
  const auto formatted = FormatBox(box, 80);
  for (const char c : formatted) EXPECT_TRUE(c == '\n' || (c >= ' ' && c < 0x7f)) << static_cast<int>(c);
  EXPECT_NE(formatted.find("b?[31m c"), std::string::npos);
}

struct IconCase {
  BoxIcon icon;
  std::string start;
};
class IconMarks : public testing::TestWithParam<IconCase> {};
TEST_P(IconMarks, Stand_in_front_of_the_title) {
  EXPECT_THAT(FormatBox({.text = "x", .title = "WARNING", .icon = GetParam().icon}, 40),
              testing::StartsWith(GetParam().start));
}
INSTANTIATE_TEST_SUITE_P(BoxFormat, IconMarks,
                         testing::Values(IconCase{BoxIcon::None, "---- WARNING -"},
                                         IconCase{BoxIcon::Information, "---- [i] WARNING -"},
                                         IconCase{BoxIcon::Question, "---- [?] WARNING -"},
                                         IconCase{BoxIcon::Warning, "---- [!] WARNING -"},
                                         IconCase{BoxIcon::Error, "---- [x] WARNING -"}));

TEST(BoxFormat, The_prompt_offers_the_buttons) {
  EXPECT_EQ(FormatPrompt({.buttons = BoxButtons::YesNo}), "[Y]es / [N]o: ");
  EXPECT_EQ(FormatPrompt({.buttons = BoxButtons::RetryCancel}), "[R]etry / [C]ancel: ");
  EXPECT_EQ(FormatPrompt({.buttons = BoxButtons::Ok}), "Press Enter: ");
  EXPECT_EQ(FormatPrompt({.buttons = BoxButtons::YesNo, .help = true, .helpId = 7}), "[Y]es / [N]o / [H]elp: ");
  EXPECT_EQ(FormatPrompt({.buttons = BoxButtons::Ok, .help = true, .helpId = 7}), "Press Enter, or h for help: ");
}

TEST(BoxFormat, An_answer_is_a_first_letter_or_a_whole_word) {
  EXPECT_EQ(ReadBoxAnswer(BoxButtons::YesNo, " y "), BoxAnswer::Yes);
  EXPECT_EQ(ReadBoxAnswer(BoxButtons::YesNo, "YES"), BoxAnswer::Yes);
  EXPECT_EQ(ReadBoxAnswer(BoxButtons::YesNo, "n"), BoxAnswer::No);
  EXPECT_EQ(ReadBoxAnswer(BoxButtons::RetryCancel, "Retry"), BoxAnswer::Retry);
  EXPECT_EQ(ReadBoxAnswer(BoxButtons::RetryCancel, "C"), BoxAnswer::Cancel);
  EXPECT_EQ(ReadBoxAnswer(BoxButtons::Ok, ""), BoxAnswer::Ok);
}

TEST(BoxFormat, An_empty_line_or_another_word_answers_no_question) {
  for (const auto* line : {"", " ", "yess", "no way", "r", "ok", "1"}) {
    EXPECT_EQ(ReadBoxAnswer(BoxButtons::YesNo, line), std::nullopt) << line;
  }
  EXPECT_EQ(ReadBoxAnswer(BoxButtons::RetryCancel, ""), std::nullopt);
}

}  // namespace
}  // namespace twqb
