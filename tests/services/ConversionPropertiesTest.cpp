// What holds of the conversions whatever the value: round trips, idempotence, and no bytes that they cannot take.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Settings.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

constexpr int kRounds = 5000;
constexpr int kRoundsOnDisk = 200;

// Texts out of given pieces, the same ones in every run.
class RandomTexts {
 public:
  explicit RandomTexts(std::uint32_t seed) : random_(seed) {}

  [[nodiscard]] std::size_t Below(std::size_t bound) { return random_() % bound; }
  template <typename Pieces>
  [[nodiscard]] std::string Of(const Pieces& pieces, std::size_t most) {
    std::string text;
    for (auto left = Below(most + 1); left > 0; --left) text += pieces[Below(pieces.size())];
    return text;
  }
  [[nodiscard]] std::string Bytes(std::size_t most) {
    std::string text(Below(most + 1), '\0');
    for (auto& c : text) c = static_cast<char>(random_() % 256);
    return text;
  }

 private:
  std::mt19937 random_;
};

// Well-formed characters of one to four bytes, and those that conversions, SQL and INI files take for their own.
const auto kCharacters = Split(
    "a|B|7|0| |  |'|\"|,|#|;|:|(|)|-|_|[|]|.|{|}|\\|%|?|=|+|@|/|--|\t|\xC3\x9C|\xE4\xB8\xAD|\xF0\x9F\x93\x9E|True",
    '|');

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string DigitsOf(std::string text) {
  std::erase_if(text, [](char c) { return !IsDigit(c); });
  return text;
}

// --- Keys and phones -------------------------------------------------------------------------------------------------

TEST(ReplaceJunkChars, Is_settled_by_its_own_result_and_keeps_the_number_of_characters) {
  RandomTexts texts(11);
  for (int round = 0; round < kRounds; ++round) {
    const auto text = texts.Of(kCharacters, 30);
    const auto key = ReplaceJunkChars(text);
    EXPECT_EQ(ReplaceJunkChars(key), key);
    EXPECT_EQ(CharacterCount(key), CharacterCount(text));
    EXPECT_TRUE(IsUtf8(key));
    EXPECT_EQ(FixQuote(key), key) << "a key goes into a statement as it is";
  }
}

TEST(FormatPhoneForQB, Keeps_the_digits_of_any_bytes_and_comes_back_as_them) {
  RandomTexts texts(12);
  for (int round = 0; round < kRounds; ++round) {
    const auto text = round % 2 == 0 ? texts.Of(kCharacters, 30) : texts.Bytes(30);
    const auto phone = FormatPhoneForQB(text);
    EXPECT_EQ(FormatPhoneForQB(phone), phone);
    EXPECT_EQ(CleanPhoneFromQB(phone), DigitsOf(text));
    EXPECT_EQ(phone.find_first_not_of("0123456789()-"), std::string::npos);
  }
}

TEST(CleanPhoneFromQB, Is_settled_by_its_own_result_and_loses_no_digit) {
  RandomTexts texts(13);
  for (int round = 0; round < kRounds; ++round) {
    const auto text = texts.Of(kCharacters, 30);
    const auto phone = CleanPhoneFromQB(text);
    EXPECT_EQ(CleanPhoneFromQB(phone), phone);
    EXPECT_EQ(DigitsOf(phone), DigitsOf(text));
    EXPECT_TRUE(IsUtf8(phone));
    EXPECT_EQ(FormatPhoneForQB(phone), FormatPhoneForQB(text)) << "a phone that came from there goes back the same";
  }
}

// --- Quotes ----------------------------------------------------------------------------------------------------------

class Dialects : public testing::TestWithParam<std::string> {};

TEST_P(Dialects, Bring_a_text_with_doubled_quotes_back_as_it_was) {
  NotingHouse house({.provider = GetParam()});
  RandomTexts texts(14);
  gp_cnGlobal80(true);  // held open
  for (int round = 0; round < kRounds; ++round) {
    const auto text = texts.Of(kCharacters, 20);
    EXPECT_EQ(GetScalarFromSQL(Sql("SELECT '{}'", Doubled{FixQuote(text)})), text);
  }
  gp_cnGlobal80(false);
  EXPECT_TRUE(house.desk.Boxes().empty());
}

TEST_P(Dialects, Give_a_link_under_any_key_that_ReplaceJunkChars_makes) {
  NotingHouse house({.provider = GetParam()});
  RandomTexts texts(15);
  for (int round = 0; round < kRoundsOnDisk; ++round) {
    const auto key = Left(ReplaceJunkChars(texts.Of(kCharacters, 20)) + "x", 65);
    house.Sql("DELETE FROM Client");
    house.Sql("INSERT INTO Client (ClientID, QBLinkID) VALUES ('" + key + "', 'link')");
    EXPECT_EQ(GetQBLinkIDOf("CLIENT", key), "link") << key;
  }
}

TEST_P(Dialects, Keep_a_setting_in_the_table_but_for_its_outer_blanks) {
  NotingHouse house({.provider = GetParam()});
  Vars().g_UseTWSTable = true;
  RandomTexts texts(16);
  for (int round = 0; round < kRoundsOnDisk; ++round) {
    const auto value = texts.Of(kCharacters, 20);
    EXPECT_TRUE(gf_WriteSettings("GENERAL", "KEY", value, ""));
    const auto kept = Trim(value);
    EXPECT_EQ(gf_ReadSettings("GENERAL", "KEY", "", "default"), kept.empty() ? "default" : kept) << value;
  }
  EXPECT_EQ(house.Scalar("SELECT count(*) FROM TWSTable"), "1");
  EXPECT_TRUE(house.desk.Boxes().empty());
}

INSTANTIATE_TEST_SUITE_P(Texts, Dialects, testing::Values("SQLITE", "JETLITE"),
                         [](const auto& provider) { return provider.param; });

TEST(GetQBLinkIDOf, Takes_any_bytes_as_kind_and_key_without_a_message) {
  NotingHouse house;
  house.Sql("INSERT INTO Client (ClientID, QBLinkID) VALUES ('K', 'link')");
  RandomTexts texts(17);
  for (int round = 0; round < kRounds; ++round) {
    EXPECT_EQ(GetQBLinkIDOf(texts.Bytes(10), "K"), "");
    (void)GetQBLinkIDOf("CLIENT", texts.Bytes(30));
  }
  EXPECT_TRUE(house.desk.Boxes().empty());
  EXPECT_EQ(Vars().g_CnRefCount, 0);
  EXPECT_EQ(GetQBLinkIDOf("CLIENT", "K"), "link");
}

// --- Social insurance numbers ----------------------------------------------------------------------------------------

TEST(ValidateSIN, Finds_every_single_wrong_digit_whatever_separates_and_surrounds_the_groups) {
  RandomTexts texts(18);
  for (int round = 0; round < 500; ++round) {
    std::string sin = fmt::format("{:03} {:03} {:03}", texts.Below(1000), texts.Below(1000), texts.Below(1000));
    const bool valid = ValidateSIN(sin);
    EXPECT_EQ(ValidateSIN(ReplaceAll(sin, " ", "-")), valid) << sin;
    EXPECT_EQ(ValidateSIN("  " + ReplaceAll(sin, " ", "   ") + " "), valid) << sin;
    if (!valid) continue;
    for (auto& c : sin) {
      if (!IsDigit(c)) continue;
      const char right = c;
      for (c = '0'; c <= '9'; ++c) EXPECT_EQ(ValidateSIN(sin), c == right) << sin;
      c = right;
    }
  }
}

TEST(ValidateSIN, Refuses_any_text_without_nine_digits) {
  RandomTexts texts(19);
  for (int round = 0; round < kRounds; ++round) {
    const auto text = texts.Bytes(15);
    EXPECT_FALSE(DigitsOf(text).size() != 9 && ValidateSIN(text)) << text;
  }
}

// --- Rich text -------------------------------------------------------------------------------------------------------

// The note as a rich-text editor writes it: special characters escaped, lines as paragraphs.
std::string AsRichText(std::string_view note) {
  std::string rich = "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0 ";
  for (std::size_t at = 0; at < note.size(); ++at) {
    if (note.substr(at).starts_with(kCrLf)) {
      rich += "\\par ";
      ++at;
      continue;
    }
    if (std::string_view("\\{}").find(note[at]) != std::string_view::npos) rich += '\\';
    rich += note[at];
  }
  return rich + "}";
}

TEST(StripRichText, Gives_back_the_note_that_was_made_rich) {
  RandomTexts texts(20);
  const auto pieces = Split("a|word| |\r\n|\\|{|}|par|\\par|'|\xC3\x9C|1", '|');
  for (int round = 0; round < kRounds; ++round) {
    const auto note = texts.Of(pieces, 25);
    if (note.empty()) continue;  // nothing is kept of it, and so the rich text itself stays
    EXPECT_EQ(StripRichText(AsRichText(note)), note);
  }
}

TEST(StripRichText, Leaves_a_note_without_braces_as_it_is) {
  RandomTexts texts(21);
  for (int round = 0; round < kRounds; ++round) {
    auto note = texts.Bytes(30);
    std::erase_if(note, [](char c) { return c == '{' || c == '}'; });
    EXPECT_EQ(StripRichText(note), note);
  }
}

TEST(StripRichText, Takes_any_bytes_and_never_makes_nothing_out_of_a_text) {
  RandomTexts texts(22);
  for (int round = 0; round < kRounds; ++round) {
    const auto note = "{" + texts.Bytes(30) + (round % 2 == 0 ? "}" : "");
    EXPECT_FALSE(StripRichText(note).empty());
  }
}

// --- Dates in SQL ----------------------------------------------------------------------------------------------------

TEST(FormatSQLDate, Reads_back_as_the_date_to_the_second) {
  std::mt19937_64 random(23);
  const auto first = TextToDate("1753-01-01").Milliseconds();
  const auto last = TextToDate("9999-12-31T23:59:59").Milliseconds();
  for (int round = 0; round < kRounds; ++round) {
    const auto span = static_cast<std::uint64_t>(last - first);
    const auto second = (first + static_cast<std::int64_t>(random() % span)) / Date::kSecond;
    const auto date = Date::FromMilliseconds(second * Date::kSecond);
    const auto text = FormatSQLDate(date, DateForm::WithTime);
    EXPECT_EQ(text.size(), 19U);
    EXPECT_EQ(TextToDate(text), date) << text;
    const auto day = FormatSQLDate(date, DateForm::DateOnly);
    EXPECT_TRUE(text.starts_with(day + " ")) << text;
    EXPECT_EQ(TextToDate(day), date.Midnight()) << day;
  }
}

TEST(FormatSQLDate, Drops_the_part_of_a_second) {
  const auto date = TextToDate("2008-03-05T10:00:59");
  for (const int milliseconds : {1, 499, 500, 999}) {
    EXPECT_EQ(FormatSQLDate(date.PlusMilliseconds(milliseconds), DateForm::WithTime), "03/05/2008 10:00:59");
  }
}

}  // namespace
}  // namespace twqb
