// Texts, phones, identity numbers, rich text, GUIDs and link lookups.

#include <fmt/core.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "platform/Forwarding.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "tests/services/NotingHouse.h"

namespace twqb {
namespace {

struct TextCase {
  std::string_view from;
  std::string_view to;
};

class JunkChars : public testing::TestWithParam<TextCase> {};
TEST_P(JunkChars, Become_one_blank_each) { EXPECT_EQ(ReplaceJunkChars(GetParam().from), GetParam().to); }
INSTANTIATE_TEST_SUITE_P(ReplaceJunkChars, JunkChars,
                         testing::Values(TextCase{"", ""}, TextCase{"Acme", "Acme"},
                                         TextCase{"Smith, John", "Smith  John"}, TextCase{",#;:'", "     "},
                                         TextCase{"a,b#c;d:e'f", "a b c d e f"}, TextCase{"O'Neil", "O Neil"},
                                         TextCase{"keep .-_\"&/", "keep .-_\"&/"},
                                         TextCase{"\xC3\x9C,\xE4\xB8\xAD", "\xC3\x9C \xE4\xB8\xAD"}));

class PhonesForQB : public testing::TestWithParam<TextCase> {};
TEST_P(PhonesForQB, Have_their_digits_grouped) { EXPECT_EQ(FormatPhoneForQB(GetParam().from), GetParam().to); }
INSTANTIATE_TEST_SUITE_P(
    FormatPhoneForQB, PhonesForQB,
    testing::Values(TextCase{"", ""}, TextCase{"   ", ""}, TextCase{"none", ""}, TextCase{"()-", ""},
                    TextCase{"4", "(4)"}, TextCase{" 4 ", "(4)"}, TextCase{"41", "(41)"}, TextCase{"416", "(416)-"},
                    TextCase{"4165", "(416)-5"}, TextCase{"416555", "(416)-555-"}, TextCase{"4165551", "(416)-555-1"},
                    TextCase{"4165551234", "(416)-555-1234"}, TextCase{"(416) 555-1234", "(416)-555-1234"},
                    TextCase{"416.555.1234 ext 56", "(416)-555-123456"}, TextCase{"416555123456", "(416)-555-123456"},
                    TextCase{"+1 416 555 1234", "(141)-655-51234"}));

TEST(FormatPhoneForQB, Is_settled_by_its_own_result) {
  for (const auto* phone : {"4", "41", "416", "4165", "416555", "4165551234", "416555123456"}) {
    const auto once = FormatPhoneForQB(phone);
    EXPECT_EQ(FormatPhoneForQB(once), once);
    EXPECT_EQ(CleanPhoneFromQB(once), phone);
  }
}

class PhonesFromQB : public testing::TestWithParam<TextCase> {};
TEST_P(PhonesFromQB, Lose_their_punctuation_and_keep_letters) {
  EXPECT_EQ(CleanPhoneFromQB(GetParam().from), GetParam().to);
}
INSTANTIATE_TEST_SUITE_P(CleanPhoneFromQB, PhonesFromQB,
                         testing::Values(TextCase{"", ""}, TextCase{" ().-_[],", ""},
                                         TextCase{"(416)-555-1234", "4165551234"},
                                         TextCase{"416.555_1234", "4165551234"}, TextCase{"[416],555", "416555"},
                                         TextCase{"1-800-FLOWERS x 7", "1800FLOWERSx7"},
                                         TextCase{"+1/416#{5}", "+1/416#{5}"}));

class Quotes : public testing::TestWithParam<TextCase> {};
TEST_P(Quotes, Are_doubled) {
  EXPECT_EQ(DoubleQuotes(GetParam().from), GetParam().to);
  EXPECT_EQ(FixQuote(GetParam().from), GetParam().to);
}
INSTANTIATE_TEST_SUITE_P(DoubleQuotes, Quotes,
                         testing::Values(TextCase{"", ""}, TextCase{"plain", "plain"}, TextCase{"'", "''"},
                                         TextCase{"''", "''''"}, TextCase{"O'Neil's", "O''Neil''s"},
                                         TextCase{"\"", "\""}));

struct SinCase {
  std::string_view text;
  bool valid;
};

class SocialInsuranceNumbers : public testing::TestWithParam<SinCase> {};
TEST_P(SocialInsuranceNumbers, Need_their_shape_and_their_check_digit) {
  EXPECT_EQ(ValidateSIN(GetParam().text), GetParam().valid) << GetParam().text;
}
INSTANTIATE_TEST_SUITE_P(
    ValidateSIN, SocialInsuranceNumbers,
    testing::Values(SinCase{"046 454 286", true}, SinCase{"046-454-286", true}, SinCase{"046 454-286", true},
                    SinCase{"046-454 286", true}, SinCase{"  046 454 286  ", true}, SinCase{"046  454   286", true},
                    SinCase{"046      454 286", true}, SinCase{"000 000 000", true}, SinCase{"130-692-544", true},
                    SinCase{"046 454 287", false}, SinCase{"046 454 285", false}, SinCase{"064 454 286", false},
                    SinCase{"046454286", false}, SinCase{"046.454.286", false}, SinCase{"046 454 28", false},
                    SinCase{"046 454 2860", false}, SinCase{"04 6454 286", false}, SinCase{"046--454-286", false},
                    SinCase{"046 454 28a", false}, SinCase{"0460454 286", false}, SinCase{"", false},
                    SinCase{"           ", false}, SinCase{"046\t454\t286", false},
                    SinCase{"046\xC2\xA0"
                            "454 286",
                            false}));

TEST(ValidateSIN, Accepts_just_one_last_digit_for_each_beginning) {
  std::mt19937 random(1);
  for (int round = 0; round < 200; ++round) {
    const auto beginning = fmt::format("{:03} {:03} {:02}", random() % 1000, random() % 1000, random() % 100);
    int valid = 0;
    for (int last = 0; last < 10; ++last) valid += ValidateSIN(beginning + std::to_string(last)) ? 1 : 0;
    EXPECT_EQ(valid, 1) << beginning;
  }
}

class RichTexts : public testing::TestWithParam<TextCase> {};
TEST_P(RichTexts, Keep_their_plain_text) { EXPECT_EQ(StripRichText(GetParam().from), GetParam().to); }
INSTANTIATE_TEST_SUITE_P(
    StripRichText, RichTexts,
    testing::Values(TextCase{"", ""}, TextCase{"a plain note", "a plain note"},
                    TextCase{"two\r\nlines", "two\r\nlines"},
                    TextCase{"back\\slash", "back\\slash"},                                 // no rich text: unchanged
                    TextCase{"{plain}", "plain"},                                           //
                    TextCase{"{}", "{}"}, TextCase{"{{deep}}", "{{deep}}"},                 // nothing kept: unchanged
                    TextCase{"{\\rtf1\\ansi}", "{\\rtf1\\ansi}"},                           //
                    TextCase{"before{in}behind", "in"},                                     // outside of the group
                    TextCase{"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\f0 Hello}", "Hello"},  // deeper groups
                    TextCase{"{\\rtf1 One\\par Two}", "One\r\nTwo"},                        // a blank behind \par goes
                    TextCase{"{\\rtf1 One\\par  Two}", "One\r\n Two"},                      // but only one
                    TextCase{"{\\rtf1 One\\par\\b Two}", "One\r\nTwo"},                     //
                    TextCase{"{\\rtf1 One\\par\r\nTwo}", "One\r\nTwo"},                     // raw line ends are dropped
                    TextCase{"{\\rtf1 One\r\nTwo}", "OneTwo"},                              //
                    TextCase{"{\\rtf1 One\\par\\par\\par Two}", "One\r\n\r\n\r\nTwo"},      //
                    TextCase{"{\\rtf1 One\\pard Two}", "OneTwo"},                           // another control word
                    TextCase{"{\\rtf1 One\\par}", "One"},                                   // \par before a brace
                    TextCase{"{\\rtf1 a\\\\b\\{c\\}d}", "a\\b{c}d"},                        // escaped characters
                    TextCase{"{\\rtf1 a\\b1  two}", "a two"},                               // one blank ends the word
                    TextCase{"{\\rtf1 a\\b0\rb}", "ab"}, TextCase{"{\\rtf1 open", "open"},  //
                    TextCase{"}{{x}", "x"},                                                 // a depth below 0 counts
                    TextCase{"{a}{b}", "ab"}, TextCase{"{\\rtf1 x\\", "x"}, TextCase{"{\\", "{\\"},  //
                    TextCase{"{\\rtf1 \xC3\x9C{\\b}ml}", "\xC3\x9Cml"}));

TEST(TextConversions, Take_any_bytes) {
  std::mt19937 random(7);
  constexpr std::string_view kSpecial = "{}\\ \r\npar,#;:'()-[]._0123456789";
  for (int round = 0; round < 20'000; ++round) {
    std::string text(random() % 40, ' ');
    for (auto& c : text) {
      c = random() % 3 == 0 ? static_cast<char>(random() % 256) : kSpecial[random() % kSpecial.size()];
    }
    const auto replaced = ReplaceJunkChars(text);
    EXPECT_EQ(replaced.size(), text.size());
    EXPECT_EQ(replaced.find_first_of(",#;:'"), std::string::npos);
    EXPECT_LE(StripRichText(text).size(), text.size() + text.size());
    (void)ValidateSIN(text);
    const auto digits = std::ranges::count_if(text, [](char c) { return c >= '0' && c <= '9'; });
    const auto phone = FormatPhoneForQB(text);
    EXPECT_EQ(phone.empty(), digits == 0);
    EXPECT_EQ(std::ranges::count_if(phone, [](char c) { return c >= '0' && c <= '9'; }), digits);
    EXPECT_EQ(CleanPhoneFromQB(text).find_first_of(" ().-_[],"), std::string::npos);
    EXPECT_EQ(ReplaceAll(DoubleQuotes(text), "''", "'"), text);
  }
}

TEST(GenerateGUID, Prints_the_bytes_in_groups_with_braces) {
  class OneGuidMachine : public ForwardingMachine {
   public:
    using ForwardingMachine::ForwardingMachine;
    std::optional<GuidBytes> CreateGuid() override {
      return GuidBytes{0x00, 0x01, 0x02, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0x10, 0xAB, 0xCD, 0xEF, 0x00, 0x09, 0xFF};
    }
  };
  TestHouse house;
  OneGuidMachine machine(house.machine);
  auto seams = house.Seams();
  seams.machine = &machine;
  house.Enter(seams);
  EXPECT_EQ(GenerateGUID(), "{0001020A-0B0C-0D0E-0F10-ABCDEF0009FF}");
}

TEST(GenerateGUID, Makes_another_one_each_time) {
  TestHouse house;
  house.Enter();
  const testing::Matcher<std::string> shape = testing::MatchesRegex("\\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\}");
  std::set<std::string> made;
  for (int i = 0; i < 1000; ++i) {
    const auto guid = GenerateGUID();
    EXPECT_TRUE(shape.Matches(guid)) << guid;
    made.insert(guid);
  }
  EXPECT_EQ(made.size(), 1000U);
}

enum class GuidFailure : std::uint8_t { Nothing, Raised };

class FailedGuids : public testing::TestWithParam<GuidFailure> {};

TEST_P(FailedGuids, Are_told_and_stay_empty) {
  class NoGuidMachine : public ForwardingMachine {
   public:
    using ForwardingMachine::ForwardingMachine;
    std::optional<GuidBytes> CreateGuid() override {
      if (GetParam() == GuidFailure::Raised) throw PlatformError(error::kObjectNothing);
      return std::nullopt;
    }
  };
  TestHouse house;
  NoGuidMachine machine(house.machine);
  auto seams = house.Seams();
  seams.machine = &machine;
  house.Enter(seams);
  EXPECT_EQ(GenerateGUID(), "");
  ASSERT_EQ(house.desk.Boxes().size(), 1U);
  const auto& box = house.desk.Boxes()[0].box;
  EXPECT_EQ(box.text, "Could Not Generate A GUID");
  EXPECT_EQ(box.title, "Tallywick - QuickBooks Client");
  EXPECT_EQ(box.icon, BoxIcon::Error);
  EXPECT_EQ(box.buttons, BoxButtons::Ok);
}

INSTANTIATE_TEST_SUITE_P(GenerateGUID, FailedGuids, testing::Values(GuidFailure::Nothing, GuidFailure::Raised));

struct LinkCase {
  std::string_view kind;
  std::string_view statement;
};

class Links : public testing::TestWithParam<LinkCase> {};

TEST_P(Links, Are_looked_up_by_kind_in_any_case) {
  NotingHouse house;
  house.Sql("INSERT INTO Employee (EmployeeID, QBLinkID) VALUES ('K', 'link')");
  house.Sql("INSERT INTO Client (ClientID, QBLinkID) VALUES ('K', 'link')");
  house.Sql("INSERT INTO Project (ProjectID, QBLinkID) VALUES ('K', 'link')");
  house.Sql("INSERT INTO Activity (ActivityID, QBLinkID) VALUES ('K', 'link')");
  house.Sql("INSERT INTO Expense (ExpID, QBLinkID) VALUES ('K', 'link')");
  EXPECT_EQ(GetQBLinkIDOf(GetParam().kind, "K"), "link");
  EXPECT_EQ(house.NotesOf("execute"), Notes{"execute " + std::string(GetParam().statement)});
  EXPECT_EQ(GetQBLinkIDOf(GetParam().kind, "none"), "");
}

INSTANTIATE_TEST_SUITE_P(
    GetQBLinkIDOf, Links,
    testing::Values(LinkCase{"EMPLOYEE", "SELECT QBLinkID, EmployeeID FROM Employee WHERE EmployeeID = 'K';"},
                    LinkCase{"Client", "SELECT QBLinkID, ClientID FROM Client WHERE ClientID = 'K';"},
                    LinkCase{"project", "SELECT QBLinkID, ProjectID FROM Project WHERE ProjectID = 'K';"},
                    LinkCase{"aCTIVITY", "SELECT QBLinkID, ActivityID FROM Activity WHERE ActivityID = 'K';"},
                    LinkCase{"Expense", "SELECT QBLinkID, ExpID FROM Expense WHERE ExpID = 'K';"}));

TEST(GetQBLinkIDOf, Is_empty_without_a_message_for_a_NULL_link_an_unknown_kind_and_a_key_that_breaks_the_statement) {
  NotingHouse house;
  house.Sql("INSERT INTO Client (ClientID) VALUES ('K')");
  EXPECT_EQ(GetQBLinkIDOf("CLIENT", "K"), "");
  EXPECT_EQ(GetQBLinkIDOf("CLIENTS", "K"), "");
  EXPECT_EQ(GetQBLinkIDOf("", "K"), "");
  EXPECT_EQ(GetQBLinkIDOf("CLIENT", "it's"), "");
  EXPECT_TRUE(house.desk.Boxes().empty());
  EXPECT_EQ(Vars().g_CnRefCount, 0);
}

TEST(GetQBLinkIDOf, Puts_a_key_with_braces_into_the_statement_as_it_is) {
  NotingHouse house;
  house.Sql("INSERT INTO Client (ClientID, QBLinkID) VALUES ('{0}', 'link')");
  EXPECT_EQ(GetQBLinkIDOf("CLIENT", "{0}"), "link");
}

}  // namespace
}  // namespace twqb
