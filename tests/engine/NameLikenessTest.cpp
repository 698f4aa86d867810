// Which names are alike, and by what they differ.

#include <gtest/gtest.h>

#include <algorithm>

#include "engine/NameLikeness.h"

namespace twqb {
namespace {

NameLikeness Of(std::string_view a, std::string_view b) { return LikenessOf(ComparedName(a), ComparedName(b)); }
NameDifference Between(std::string_view a, std::string_view b) { return Of(a, b).difference; }

TEST(Names, Are_the_same_to_the_letter_or_differ_by_the_least_that_tells_them_apart) {
  EXPECT_EQ(Between("Abbott Roofing", "Abbott Roofing"), NameDifference::None);
  EXPECT_EQ(Between("Abbott Roofing", " Abbott Roofing "), NameDifference::None);
  EXPECT_EQ(Between("Abbott Roofing", "ABBOTT ROOFING"), NameDifference::Case);
  EXPECT_EQ(Between("O'Hara & Sons", "OHara and Sons"), NameDifference::Punctuation);
  EXPECT_EQ(Between("St. Mary's Church", "St Marys Church"), NameDifference::Punctuation);
  EXPECT_EQ(Between("Bay View", "Bayview"), NameDifference::Punctuation);
  EXPECT_EQ(Between("Abbott Roofing, Inc.", "Abbott Roofing"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Abbott Roofing L.L.C.", "Abbott Roofing Ltd"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Weber GmbH", "Weber"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Abbott Bros. Roofing", "Abbott Brothers Roofing, Inc."), NameDifference::ShortWord);
  EXPECT_EQ(Between("Abbott, John", "John Abbott"), NameDifference::WordOrder);
  EXPECT_EQ(Between("Hartwell Farms", "Hartwel Farms"), NameDifference::Spelling);
  EXPECT_EQ(Between("Hartwell Farms", "Harwtell Farms Inc"), NameDifference::Spelling);
  EXPECT_EQ(Between("Hartwel Farms", "Farms Hartwell"), NameDifference::Spelling);
}

TEST(Names, Are_the_same_but_for_marks_on_letters_or_what_is_written_in_their_place) {
  EXPECT_EQ(Between("M\u00FCller Bau", "Muller Bau"), NameDifference::Marks);
  EXPECT_EQ(Between("M\u00FCller Bau", "MUELLER BAU"), NameDifference::Marks);
  EXPECT_EQ(Between("M\u00FCller Bau", "Mu\u0308ller Bau"), NameDifference::Marks);
  EXPECT_EQ(Between("Caf\u00E9 Stra\u00DFe", "Cafe Strasse"), NameDifference::Marks);
  EXPECT_EQ(Between("M\u00FCller Bau GmbH", "Mueller Bau"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Muller Bau", "Mueller Bau"), NameDifference::Spelling);
  EXPECT_EQ(Between("\u6771\u4EAC", "\u4EAC\u6771"), NameDifference::Other);
}

TEST(Names, Of_people_and_firms_are_the_same_without_titles_articles_and_initials) {
  EXPECT_EQ(Between("Smith & Sons, Inc.", "Smith and Sons"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Smith + Sons", "Smith and Sons"), NameDifference::Punctuation);
  EXPECT_EQ(Between("ACME Corp", "Acme Corporation Ltd."), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Dr. J. Brown", "J. Brown"), NameDifference::Title);
  EXPECT_EQ(Between("Dr. J. Brown", "Brown, J."), NameDifference::WordOrder);
  EXPECT_EQ(Between("Dr. J. Brown", "Brown, Dr. J."), NameDifference::WordOrder);
  EXPECT_EQ(Between("The Corner Store", "Corner Store, The"), NameDifference::Title);
  EXPECT_EQ(Between("The The", "The"), NameDifference::Other);
  EXPECT_EQ(Between("J. Brown", "John Brown"), NameDifference::Initial);
  EXPECT_EQ(Between("Brown, J.", "John Brown"), NameDifference::Initial);
  EXPECT_EQ(Between("John A. Brown", "John Brown"), NameDifference::Initial);
}

TEST(Names, Of_firms_are_the_same_without_an_and_that_joins_nothing) {
  EXPECT_EQ(Between("Jackson & Co.", "Jackson"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Baker Brothers & Company", "Baker Brothers"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Jackson and Co. Ltd", "Jackson Inc"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Jackson & Co.", "Johnson"), NameDifference::Other);
  EXPECT_EQ(Between("& Co.", "Jackson & Co."), NameDifference::Other);
}

TEST(Names, Are_the_same_wherever_a_blank_stands) {
  EXPECT_EQ(Between("O Hara and Sons", "OHara and Sons LLC"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("A T & T Inc", "AT&T"), NameDifference::CompanySuffix);
  EXPECT_EQ(Between("Dr. Mac Lean", "MacLean"), NameDifference::Title);
  EXPECT_EQ(Between("Bay View Svcs", "Bayview Services"), NameDifference::ShortWord);
  EXPECT_EQ(Between("Lot 1 12 Inc", "Lot 11 2"), NameDifference::Other);
}

TEST(Names, Are_the_same_without_the_small_words_that_join_others) {
  EXPECT_EQ(Between("Bank Ohio", "Bank of Ohio"), NameDifference::Title);
  EXPECT_EQ(Between("Smith & Sons", "Smith Sons"), NameDifference::Title);
  EXPECT_EQ(Between("Bank of Ohio", "Bank of Iowa"), NameDifference::Other);
  EXPECT_EQ(Between("Bank of Ohio", "Bank of Utah"), NameDifference::Other);
  EXPECT_EQ(Between("County of Kent", "County of Kern"), NameDifference::Other);
  EXPECT_EQ(Between("Bank of Savannah", "Bank Savanah"), NameDifference::Spelling);
  EXPECT_EQ(Between("Of", "And"), NameDifference::Other);
}

TEST(Names, Behind_a_comma_have_their_initial_behind_the_first_name) {
  EXPECT_EQ(Between("Brown, John A.", "John Brown"), NameDifference::Initial);
  EXPECT_EQ(Between("Brown, John A.", "Brown, John"), NameDifference::Initial);
  EXPECT_EQ(Between("Brown, John A.", "John B. Brown"), NameDifference::Other);
  EXPECT_EQ(Between("Harbor Survey B", "Harbor Survey"), NameDifference::Other);
}

TEST(Names, That_differ_in_what_tells_two_of_a_kind_apart_are_not_alike) {
  EXPECT_EQ(Between("Lee", "Lea"), NameDifference::Other);
  EXPECT_EQ(Between("J. Brown", "K. Brown"), NameDifference::Other);
  EXPECT_EQ(Between("J. Brown", "Kate Brown"), NameDifference::Other);
  EXPECT_EQ(Between("John A. Brown", "John B. Brown"), NameDifference::Other);
  EXPECT_EQ(Between("John Brown Jr.", "John Brown Sr."), NameDifference::Other);
  EXPECT_EQ(Between("Harbor Survey Phase II", "Harbor Survey Phase III"), NameDifference::Other);
  EXPECT_EQ(Between("Harbor Survey Lot A", "Harbor Survey Lot B"), NameDifference::Other);
  EXPECT_EQ(Between("Harbor Survey Lot", "Harbor Survey Lot B"), NameDifference::Other);
  EXPECT_EQ(Between("Harbor Apartments East", "Harbor Apartments West"), NameDifference::Other);
  EXPECT_EQ(Between("Northern Light", "Southern Light"), NameDifference::Other);
}

TEST(Names, Of_others_are_not_alike) {
  EXPECT_EQ(Between("Abbott", "Costello"), NameDifference::Other);
  EXPECT_EQ(Between("Bell", "Ball"), NameDifference::Other) << "too short for a slip";
  EXPECT_EQ(Between("Pier 9, phase 1", "Pier 9, phase 2"), NameDifference::Other);
  EXPECT_EQ(Between("Lot 12", "Lot 21"), NameDifference::Other);
  EXPECT_EQ(Between("", ""), NameDifference::Other);
  EXPECT_EQ(Between("---", "***"), NameDifference::Other);
  EXPECT_EQ(Between("Smith Roofing", "Smith Paving"), NameDifference::Other);
}

TEST(Names, Score_the_less_the_more_they_differ) {
  const std::string_view pairs[][2] = {{"Abbott Roofing", "Abbott Roofing"},  {"Abbott Roofing", "abbott roofing"},
                                       {"Abbott Roofing", "Abbott-Roofing"},  {"Abbott Roofing", "Abbott Roofing Inc"},
                                       {"Abbott Roofing", "Roofing, Abbott"}, {"Abbott Roofing", "Abott Roofing"},
                                       {"Abbott Roofing", "Abott Rofing"}};
  int before = 101;
  for (const auto& [a, b] : pairs) {
    const auto score = Of(a, b).score;
    EXPECT_LT(score, before) << b;
    EXPECT_GT(score, 0) << b;
    EXPECT_EQ(score, Of(b, a).score);
    before = score;
  }
}

TEST(Names, A_company_that_is_called_by_its_kind_alone_keeps_its_name) {
  EXPECT_EQ(Between("Company Ltd", "Corporation Ltd"), NameDifference::Other);
  EXPECT_EQ(Between("Company", "company"), NameDifference::Case);
}

TEST(Names, That_are_alike_meet_in_a_block) {
  const auto meet = [](std::string_view a, std::string_view b) {
    const auto first = BlocksOf(ComparedName(a));
    const auto second = BlocksOf(ComparedName(b));
    return std::ranges::find_first_of(first, second) != first.end();
  };
  EXPECT_TRUE(meet("Abbott Roofing", "ABBOTT ROOFING, INC."));
  EXPECT_TRUE(meet("Abbott, John", "John Abbott"));
  EXPECT_TRUE(meet("Hartwell", "Artwell"));
  EXPECT_TRUE(meet("Hartwell", "Hartwe1l"));
  EXPECT_TRUE(meet("Hartwell", "Hatrwell"));
  EXPECT_TRUE(meet("Hartwell Farms", "Hrtwel Farms"));
  EXPECT_TRUE(meet("M\u00FCller Bau GmbH", "Mueller Bau"));
  EXPECT_TRUE(meet("M\u00FCller Bau", "Muller Bau"));
  EXPECT_TRUE(meet("Dr. J. Brown", "Brown, John"));
  EXPECT_TRUE(meet("John A. Brown", "John Brown"));
  EXPECT_TRUE(meet("Store, The", "The Store"));
  EXPECT_TRUE(meet("Jackson & Co.", "Jackson"));
  EXPECT_TRUE(meet("O Hara and Sons", "OHara and Sons LLC"));
  EXPECT_TRUE(meet("A T & T Inc", "AT&T"));
  EXPECT_TRUE(meet("Brown, John A.", "John Brown"));
  EXPECT_TRUE(meet("Bank Ohio", "Bank of Ohio"));
  EXPECT_TRUE(meet("***", "***"));
  EXPECT_FALSE(meet("Abbott", "Costello"));
}

}  // namespace
}  // namespace twqb
