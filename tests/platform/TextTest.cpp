#include <gtest/gtest.h>

#include <utility>

#include "platform/Text.h"

namespace twqb {
namespace {

constexpr std::string_view kEuro = "\xE2\x82\xAC";       // €
constexpr std::string_view kClef = "\xF0\x9D\x84\x9E";   // outside the basic plane
constexpr std::string_view kSurrogate = "\xED\xA0\x80";  // no UTF-8
constexpr std::string_view kOverlong = "\xC0\xAF";       // no UTF-8
constexpr std::string_view kCutShort = "\xE2\x82";       // the first bytes of a character

std::string Joined(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const auto part : parts) text += part;
  return text;
}

// Texts are read by eights as long as they are ASCII.
TEST(Text, What_is_beyond_ascii_counts_wherever_it_stands) {
  for (std::size_t before = 0; before < 20; ++before) {
    for (const std::size_t behind : {0U, 3U, 9U}) {
      const auto around = [&](std::string_view middle) {
        return Joined({std::string(before, 'a'), middle, std::string(behind, 'b')});
      };
      EXPECT_EQ(UpperCase(around("ü")), std::string(before, 'A') + "Ü" + std::string(behind, 'B'));
      EXPECT_EQ(FoldCase(UpperCase(around("ü"))), around("ü"));
      EXPECT_TRUE(IsUtf8(around(kClef)));
      for (const auto bad : {kSurrogate, kOverlong, kCutShort}) {
        EXPECT_FALSE(IsUtf8(around(bad))) << before << " " << behind;
        EXPECT_EQ(UpperCase(around(bad)), std::string(before, 'A') + std::string(bad) + std::string(behind, 'B'));
      }
    }
  }
}

TEST(Text, A_number_is_padded_with_zeros) {
  const auto padded = [](int value, std::size_t width) {
    std::string text(":");
    AppendPadded(text, value, width);
    return text;
  };
  EXPECT_EQ(padded(7, 2), ":07");
  EXPECT_EQ(padded(0, 4), ":0000");
  EXPECT_EQ(padded(2008, 4), ":2008");
  EXPECT_EQ(padded(12345, 4), ":12345");
  EXPECT_EQ(padded(-1, 4), ":-001");
}

TEST(Text, A_character_is_a_code_point) {
  EXPECT_EQ(CharacterCount(""), 0U);
  EXPECT_EQ(CharacterCount("abc"), 3U);
  EXPECT_EQ(CharacterCount("Müller"), 6U);
  EXPECT_EQ(CharacterCount(kEuro), 1U);
  EXPECT_EQ(CharacterCount(kClef), 1U);
  EXPECT_EQ(CharacterCount("e\xCC\x81"), 2U) << "a letter and a combining accent";
  EXPECT_EQ(CharacterCount(std::string_view("a\0b", 3)), 3U);
}

TEST(Text, Each_byte_that_is_no_UTF_8_counts_as_a_character) {
  EXPECT_EQ(CharacterCount("\x80"), 1U);
  EXPECT_EQ(CharacterCount("\xFF\xFE"), 2U);
  EXPECT_EQ(CharacterCount(kSurrogate), 3U);
  EXPECT_EQ(CharacterCount(kOverlong), 2U);
  EXPECT_EQ(CharacterCount(kCutShort), 2U);
  EXPECT_EQ(CharacterCount(Joined({kCutShort, "a"})), 3U);
  EXPECT_EQ(CharacterCount("caf\xE9"), 4U);
}

TEST(Text, A_cut_never_splits_a_character) {
  const auto text = Joined({"a", kEuro, kClef, "b"});
  EXPECT_EQ(Left(text, 0), "");
  EXPECT_EQ(Left(text, 1), "a");
  EXPECT_EQ(Left(text, 2), Joined({"a", kEuro}));
  EXPECT_EQ(Left(text, 3), Joined({"a", kEuro, kClef}));
  EXPECT_EQ(Left(text, 4), text);
  EXPECT_EQ(Left(text, 99), text);
  EXPECT_EQ(Left("caf\xE9s", 4), "caf\xE9");
  EXPECT_EQ(Left("", 5), "");
}

TEST(Text, Right_keeps_the_last_characters) {
  const auto text = Joined({"a", kEuro, kClef, "b"});
  EXPECT_EQ(Right(text, 0), "");
  EXPECT_EQ(Right(text, 1), "b");
  EXPECT_EQ(Right(text, 3), Joined({kEuro, kClef, "b"}));
  EXPECT_EQ(Right(text, 4), text);
  EXPECT_EQ(Right(text, 99), text);
  EXPECT_EQ(Right("caf\xE9s", 2), "\xE9s");
  EXPECT_EQ(Right("", 5), "");
}

TEST(Text, The_walk_gives_the_bytes_of_one_character_after_the_other) {
  const auto text = Joined({"x", kClef, kCutShort, kEuro});
  CharacterWalk walk(text);
  EXPECT_EQ(walk.Next(), "x");
  EXPECT_EQ(walk.Next(), kClef);
  EXPECT_EQ(walk.Next(), "\xE2");
  EXPECT_EQ(walk.Next(), "\x82");
  EXPECT_EQ(walk.Next(), kEuro);
  EXPECT_EQ(walk.Next(), "");
  EXPECT_EQ(walk.Next(), "");
}

TEST(Text, Upper_case_maps_each_character_to_one) {
  EXPECT_EQ(UpperCase("abc Xyz 1"), "ABC XYZ 1");
  EXPECT_EQ(UpperCase("zoë ñandú жук"), "ZOË ÑANDÚ ЖУК");
  EXPECT_EQ(UpperCase("straße"), "STRAßE");
  EXPECT_EQ(UpperCase("caf\xE9 x"), "CAF\xE9 X");
}

TEST(Text, Folding_makes_texts_that_differ_in_case_alone_equal) {
  for (const auto& [a, b] : {std::pair{"ACME", "acme"},
                             {"ZOË", "zoë"},
                             {"ΣΟΦΟΣ", "σοφος"},
                             {"σοφος", "σοφοσ"},
                             {"ЖУК", "жук"},
                             {"ẞ", "ß"},
                             {"\xE2\x84\xAA", "k"}}) {
    EXPECT_EQ(FoldCase(a), FoldCase(b)) << a;
  }
  EXPECT_NE(FoldCase("ß"), FoldCase("ss")) << "simple folding keeps the number of characters";
  EXPECT_NE(FoldCase("e"), FoldCase("é"));
  EXPECT_EQ(FoldCase("\xFF"
                     "A"),
            "\xFF"
            "a");
}

TEST(Text, Trimming_takes_blanks_alone) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("\t a \r\n"), "\t a \r\n");
  EXPECT_EQ(Trim("\xC2\xA0 a"), "\xC2\xA0 a") << "a no-break space is no blank";
  EXPECT_EQ(Trim("    "), "");
  EXPECT_EQ(Trim(""), "");
}

TEST(Text, Every_occurrence_is_replaced_once_from_the_left) {
  EXPECT_EQ(ReplaceAll("O'Hara's", "'", "''"), "O''Hara''s");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(ReplaceAll("a,b,", ",", ""), "ab");
  EXPECT_EQ(ReplaceAll("abc", "x", "y"), "abc");
  EXPECT_EQ(ReplaceAll("", "x", "y"), "");
}

TEST(Text, A_text_of_n_separators_splits_into_n_plus_1_parts) {
  using Parts = std::vector<std::string>;
  EXPECT_EQ(Split("a,b,,c", ','), (Parts{"a", "b", "", "c"}));
  EXPECT_EQ(Split("", ','), (Parts{""}));
  EXPECT_EQ(Split(",", ','), (Parts{"", ""}));
}

TEST(Text, Texts_are_joined_with_the_separator_between) {
  EXPECT_EQ(Join(std::vector<std::string>{"a", "", "c"}, ", "), "a, , c");
  EXPECT_EQ(Join(std::vector<std::string>{"a"}, ", "), "a");
  EXPECT_EQ(Join(std::vector<std::string>{}, ", "), "");
  EXPECT_EQ(Join(std::vector<std::string_view>{"a", "b"}, ""), "ab");
}

TEST(Text, Names_compare_without_regard_to_the_case_of_ASCII_letters_alone) {
  EXPECT_TRUE(SameName("ListID", "LISTid"));
  EXPECT_TRUE(SameName("", ""));
  EXPECT_FALSE(SameName("Name", "Name "));
  EXPECT_FALSE(SameName("a", "ab"));
  EXPECT_FALSE(SameName("ä", "Ä"));
  EXPECT_FALSE(SameName("[", "{")) << "these differ in the bit that parts the cases of letters";
}

TEST(Text, Control_characters_are_replaced_where_they_stand_and_layout_stays) {
  const auto named = [](unsigned control) { return "<" + std::to_string(control) + ">"; };
  EXPECT_EQ(ReplaceControls("a\tb\r\nc", named), "a\tb\r\nc");
  EXPECT_EQ(ReplaceControls(std::string_view("\0\x1b[1m\x7f\xC2\x80\xC2\x9F\xC2\xA0", 12), named),
            "<0><27>[1m<127><128><159>\xC2\xA0");
  EXPECT_EQ(WithoutControls("\xE4\x07\xFC"), "\xE4?\xFC") << "other bytes that are no UTF-8 stay";
}

TEST(Text, Single_bytes_that_an_8_bit_terminal_obeys_are_control_characters) {
  EXPECT_EQ(WithoutControls("\x9B"
                            "2J"),
            "?2J");
  EXPECT_EQ(WithoutControls("\x80 \x9F \xA0"), "? ? \xA0");
  EXPECT_EQ(WithoutControls("\xC3\x9B \xE2\x82\xAC"), "\xC3\x9B \xE2\x82\xAC") << "within a character they are none";
}

TEST(Text, Well_formed_UTF_8_is_told_from_other_bytes) {
  EXPECT_TRUE(IsUtf8(""));
  EXPECT_TRUE(IsUtf8(Joined({"a", kEuro, kClef, "\x7F"})));
  EXPECT_TRUE(IsUtf8("\xF4\x8F\xBF\xBF"));
  for (const auto bytes : {kSurrogate, kOverlong, kCutShort, std::string_view("\x80"), std::string_view("a\xFF"),
                           std::string_view("\xF4\x90\x80\x80"), std::string_view("caf\xE9")}) {
    EXPECT_FALSE(IsUtf8(bytes));
  }
}

TEST(Text, XML_carries_no_control_characters_but_tabs_and_line_ends) {
  for (const std::string_view text : {"", "a\tb\r\n", "\x7F", "\xC2\x80", "caf\xC3\xA9"}) {
    EXPECT_TRUE(IsXmlText(text)) << text;
    EXPECT_EQ(XmlText(text), text);
  }
  EXPECT_EQ(XmlText(std::string_view("a\0b\x01\x0B\x1F c", 8)), "ab c");
  EXPECT_EQ(XmlText("\xEF\xBF\xBE\xEF\xBF\xBFx"), "x") << "noncharacters";
  EXPECT_FALSE(IsXmlText("a\x1B"));
  EXPECT_FALSE(IsXmlText("\xEF\xBF\xBF"));
}

TEST(Text, Bytes_that_are_no_UTF_8_are_read_as_Windows_1252) {
  EXPECT_EQ(XmlText("caf\xE9"), "café");
  EXPECT_EQ(XmlText("\x80 5 \x96 \x93ja\x94 \x9F\xFF"), "€ 5 – “ja” Ÿÿ");
  EXPECT_EQ(XmlText("é \xE9"), "é é") << "beside what is UTF-8";
  EXPECT_EQ(XmlText("\x81"), "\xC2\x81") << "one of the five that Windows-1252 leaves open";
  for (int byte = 0; byte < 256; ++byte) {
    EXPECT_TRUE(IsXmlText(XmlText(std::string(1, static_cast<char>(byte))))) << byte;
  }
}

}  // namespace
}  // namespace twqb
