#include <gtest/gtest.h>

#include <vector>

#include "adapters/system/ProfileText.h"

namespace twqb {
namespace {

std::string Found(std::string_view text, std::string_view section, std::string_view key) {
  return ProfileText(std::string(text)).Find(section, key).value_or("(missing)");
}

std::string Changed(std::string_view text, std::string_view section, std::string_view key, std::string_view value) {
  return ProfileText(std::string(text)).With(section, key, value).value_or("(refused)");
}

TEST(ProfileText, Sections_and_keys_match_without_case) {
  EXPECT_EQ(Found("[General]\nQBDBPath=C:\\a.qbw\n", "GENERAL", "qbdbpath"), "C:\\a.qbw");
  EXPECT_EQ(Found("[ÉTÉ]\nÄ=1\n", "été", "ä"), "1");
}

TEST(ProfileText, The_first_section_of_a_name_and_the_first_key_in_it_count) {
  constexpr auto kText = "[A]\nk=1\nk=2\n[B]\nk=3\n[a]\nk=4\nm=5\n";
  EXPECT_EQ(Found(kText, "A", "k"), "1");
  EXPECT_EQ(Found(kText, "B", "k"), "3");
  EXPECT_EQ(Found(kText, "A", "m"), "(missing)");
}

TEST(ProfileText, Blanks_around_section_key_and_value_are_dropped) {
  EXPECT_EQ(Found("  [ A ]  \r\n\t key one \t=\t some value \t\r\n", "A", "key one"), "some value");
  EXPECT_EQ(Found("[A]\n k =    \n", "A", "k"), "");
}

TEST(ProfileText, A_value_loses_the_quotes_that_enclose_it_and_keeps_the_blanks_inside) {
  struct Case {
    std::string_view written;
    std::string_view read;
  };
  for (const auto& [written, read] : std::vector<Case>{{"\"a b\"", "a b"},
                                                       {"' a '", " a "},
                                                       {"  \"x\"  ", "x"},
                                                       {"\"\"", ""},
                                                       {"\"\"x\"\"", "\"x\""},
                                                       {"\"a'", "\"a'"},
                                                       {"\"", "\""},
                                                       {"say \"a\"", "say \"a\""}}) {
    EXPECT_EQ(Found("[A]\nk=" + std::string(written) + "\n", "A", "k"), read) << written;
  }
}

TEST(ProfileText, Comments_lines_without_an_equals_sign_and_entries_above_all_sections_mean_nothing) {
  constexpr auto kText = "k=0\n[A]\n;k=1\n  ; k=2\nk\nk=3 ; kept\n";
  EXPECT_EQ(Found(kText, "A", "k"), "3 ; kept");
  EXPECT_EQ(Found(kText, "A", ";k"), "(missing)");
  EXPECT_EQ(Found(kText, "", "k"), "(missing)");
}

TEST(ProfileText, Only_the_first_equals_sign_parts_key_and_value) {
  EXPECT_EQ(Found("[A]\nk=Provider=X;Data Source=y\n", "A", "k"), "Provider=X;Data Source=y");
}

TEST(ProfileText, A_byte_order_mark_and_a_last_line_without_an_end_are_read_through) {
  EXPECT_EQ(Found("\xEF\xBB\xBF[A]\nk=1", "A", "k"), "1");
}

TEST(ProfileText, Bytes_that_are_no_UTF_8_pass_through) {
  EXPECT_EQ(Found("[A]\nk=caf\xE9\n", "A", "K"), "caf\xE9");
  EXPECT_EQ(Changed("[A]\n;\xE9\nk=\xFF\n", "A", "k", "2"), "[A]\n;\xE9\nk=2\n");
}

TEST(ProfileText, Entries_come_in_the_order_of_the_text_and_hide_what_can_not_be_found) {
  const ProfileText text("[B]\nx = '1'\nX=2\n;c\n[a]\ny=3\n[b]\nz=4\n");
  const std::vector<ProfileEntry> expected = {{"B", "x", "1"}, {"a", "y", "3"}};
  EXPECT_EQ(text.Entries(), expected);
}

TEST(ProfileText, A_value_is_changed_in_place_and_all_else_stays_byte_for_byte) {
  EXPECT_EQ(Changed("; top\r\n\r\n[A]\r\n Key =  old  \r\n;c\r\n[B]\nKey=1", "a", "KEY", "new"),
            "; top\r\n\r\n[A]\r\n Key =  new  \r\n;c\r\n[B]\nKey=1");
  EXPECT_EQ(Changed("[A]\nk=", "A", "k", "v"), "[A]\nk=v");
  EXPECT_EQ(Changed("[A]\nk='old'\n", "A", "k", ""), "[A]\nk=\n");
}

TEST(ProfileText, A_new_key_goes_to_the_end_of_its_section_before_the_blank_lines) {
  EXPECT_EQ(Changed("[A]\na=1\n;last\n\n \n[B]\nb=1\n", "A", "n", "v"), "[A]\na=1\n;last\nn=v\n\n \n[B]\nb=1\n");
  EXPECT_EQ(Changed("[A]\n[B]\n", "A", "n", "v"), "[A]\nn=v\n[B]\n");
  EXPECT_EQ(Changed("[A]\na=1\n[B]\n[A]\na=2\n", "A", "n", "v"), "[A]\na=1\nn=v\n[B]\n[A]\na=2\n");
}

TEST(ProfileText, A_new_section_goes_to_the_end) {
  EXPECT_EQ(Changed("[A]\na=1\n", "B", "n", "v"), "[A]\na=1\n[B]\nn=v\n");
}

TEST(ProfileText, Tells_the_lines_that_set_nothing) {
  const ProfileText text(
      "note = ahead of any section\n; a comment\n\n[Used]\nkey=1\nKEY = 2\nno value\n[Empty]\n[used]\nother=3\n");
  EXPECT_EQ(text.OtherLines(), (std::vector<std::string>{"note = ahead of any section", "; a comment", "KEY = 2",
                                                         "no value", "[Empty]", "other=3"}));
}

TEST(ProfileText, New_lines_end_as_the_text_does_and_with_CR_LF_in_a_new_one) {
  EXPECT_EQ(Changed("", "A", "k", "v"), "[A]\r\nk=v\r\n");
  EXPECT_EQ(Changed("[A]\r\na=1\r\n", "A", "k", "v"), "[A]\r\na=1\r\nk=v\r\n");
  EXPECT_EQ(Changed("[A]\na=1", "A", "k", "v"), "[A]\na=1\nk=v\n");
  EXPECT_EQ(Changed("[A]", "B", "k", "v"), "[A]\r\n[B]\r\nk=v\r\n");
  EXPECT_EQ(Changed("\n", "A", "k", "v"), "\n[A]\nk=v\n");
}

TEST(ProfileText, An_empty_section_or_key_is_one_like_any_other) {
  const auto text = Changed("", "", "", "v");
  EXPECT_EQ(text, "[]\r\n=v\r\n");
  EXPECT_EQ(Found(text, "", ""), "v");
}

TEST(ProfileText, Whatever_value_is_written_comes_back_as_itself) {
  for (const std::string_view value : {"", " ", "   ", " x", "x ", "\tx", "\"", "\"\"", "\"x\"", "'x'", "' '", "'x\"",
                                       "a;b", ";", "[x]", "=", "a=b", "Zo\xC3\xAB's \"best\"", "caf\xE9"}) {
    EXPECT_EQ(Found(Changed("", "S", "k", value), "S", "k"), value);
    EXPECT_EQ(Found(Changed("[S]\nk=old\nm=1\n", "S", "k", value), "S", "k"), value);
  }
}

TEST(ProfileText, A_value_is_put_in_quotes_only_where_a_reader_would_change_it) {
  EXPECT_EQ(Changed("", "A", "k", "a b"), "[A]\r\nk=a b\r\n");
  EXPECT_EQ(Changed("", "A", "k", "   "), "[A]\r\nk=\"   \"\r\n");
  EXPECT_EQ(Changed("", "A", "k", "\"x\""), "[A]\r\nk=\"\"x\"\"\r\n");
}

TEST(ProfileText, What_a_line_can_not_hold_is_refused) {
  EXPECT_EQ(Changed("", "A", "k", "a\r\nb"), "(refused)");
  EXPECT_EQ(Changed("", "A", "k", "a\n"), "(refused)");
  EXPECT_EQ(Changed("", "A", "k", std::string_view("a\0b", 3)), "(refused)");
  EXPECT_EQ(Changed("", "A", "k\n", "v"), "(refused)");
  EXPECT_EQ(Changed("", "A", "a=b", "v"), "(refused)");
  EXPECT_EQ(Changed("", "A", " ;k", "v"), "(refused)");
  EXPECT_EQ(Changed("", "A", "[k", "v"), "(refused)");
  EXPECT_EQ(Changed("", "A]", "k", "v"), "(refused)");
  EXPECT_EQ(Changed("", "A\n", "k", "v"), "(refused)");
}

}  // namespace
}  // namespace twqb
