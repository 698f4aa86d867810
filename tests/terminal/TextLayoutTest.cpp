#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "adapters/terminal/TextLayout.h"

namespace twqb {
namespace {

using testing::ElementsAre;

TEST(TextLayout, Characters_that_could_steer_the_terminal_become_question_marks) {
  EXPECT_EQ(Printable("a\x1b[2Jb\x07\x7f"), "a?[2Jb??");
  EXPECT_EQ(Printable("\xC2\x9B"
                      "31m"),
            "?31m");                              // CSI as one C1 character
  EXPECT_EQ(Printable("x\xE2\x80\xAEy"), "x?y");  // right-to-left override
  EXPECT_EQ(Printable("x\xE2\x80\xA8y"), "x?y");  // line separator
  EXPECT_EQ(Printable("\x9B\xFF"), "??");         // no UTF-8
  EXPECT_EQ(Printable("a\r\nb"), "a??b");
  EXPECT_EQ(Printable(std::string_view("a\0b", 3)), "a?b");
}

TEST(TextLayout, Other_characters_pass_and_a_tab_is_a_blank) {
  EXPECT_EQ(Printable("Zo\xC3\xAB\t\xE6\x9D\xB1 \xF0\x9F\x98\x80"), "Zo\xC3\xAB \xE6\x9D\xB1 \xF0\x9F\x98\x80");
}

TEST(TextLayout, Line_ends_become_blanks_on_one_line) {
  EXPECT_EQ(OneLine("a\r\nb\nc\rd\r\n"), "a b c d");
  EXPECT_EQ(OneLine(""), "");
}

TEST(TextLayout, East_Asian_characters_take_two_columns_and_combining_marks_none) {
  EXPECT_EQ(ColumnCount("abc"), 3U);
  EXPECT_EQ(ColumnCount("Zo\xC3\xAB"), 3U);
  EXPECT_EQ(ColumnCount("Zoe\xCC\x88"), 3U);
  EXPECT_EQ(ColumnCount("\xE6\x9D\xB1\xE4\xBA\xAC"), 4U);
}

TEST(TextLayout, Trimming_never_cuts_a_character_in_half) {
  EXPECT_EQ(TrimToColumns("\xE6\x9D\xB1\xE4\xBA\xAC", 3), "\xE6\x9D\xB1");
  EXPECT_EQ(TrimToColumns("e\xCC\x88x", 1), "e\xCC\x88");
  EXPECT_EQ(TrimToColumns("abc", 10), "abc");
}

TEST(TextLayout, What_is_cut_ends_in_an_ellipsis_and_holds_no_half_character) {
  EXPECT_EQ(CutToColumns("Harbor", 6), "Harbor");
  EXPECT_EQ(CutToColumns("Harbor", 5), "Harb\u2026");
  EXPECT_EQ(CutToColumns("Har bor", 5), "Har\u2026");
  EXPECT_EQ(CutToColumns("\u6771\u4EAC\u6771", 5), "\u6771\u4EAC\u2026");
  EXPECT_EQ(CutToColumns("\u6771\u4EAC\u6771", 4), "\u6771\u2026");
  EXPECT_EQ(CutToColumns("e\u0308\u0301xyz", 2), "e\u0308\u0301\u2026");
  EXPECT_EQ(CutToColumns("abc", 1), "\u2026");
}

TEST(TextLayout, What_joiners_hold_together_is_cut_as_one) {
  const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
  for (std::size_t columns = 2; columns < 8; ++columns) {
    EXPECT_EQ(CutToColumns("a" + family + "bc", columns), "a\u2026") << columns;
  }
  EXPECT_EQ(CutToColumns("a" + family + "bc", 8), "a" + family + "\u2026");
}

TEST(TextLayout, Long_lines_break_at_blanks) {
  EXPECT_THAT(WrapText("the client was not sent", 10), ElementsAre("the client", "was not", "sent"));
}

TEST(TextLayout, A_word_wider_than_a_line_breaks_inside) {
  EXPECT_THAT(WrapText("id 80000001-1204567890", 10), ElementsAre("id", "80000001-1", "204567890"));
}

TEST(TextLayout, Line_ends_and_empty_lines_stay_but_not_at_the_end) {
  EXPECT_THAT(WrapText("one\r\n\r\ntwo\r\n\r\n", 10), ElementsAre("one", "", "two"));
}

TEST(TextLayout, Leading_blanks_stay) {
  EXPECT_THAT(WrapText("   1  a long name", 9), ElementsAre("   1  a", "long name"));
}

TEST(TextLayout, Wide_characters_wrap_by_columns) {
  EXPECT_THAT(WrapText("\xE6\x9D\xB1\xE4\xBA\xAC\xE6\x9D\xB1", 4),
              ElementsAre("\xE6\x9D\xB1\xE4\xBA\xAC", "\xE6\x9D\xB1"));
}

}  // namespace
}  // namespace twqb
