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
  EXPECT_EQ(Between("Müller Bau", "Muller Bau"), NameDifference::Spelling);
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
  EXPECT_TRUE(meet("***", "***"));
  EXPECT_FALSE(meet("Abbott", "Costello"));
}

}  // namespace
}  // namespace twqb
