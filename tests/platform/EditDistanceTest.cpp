// How far two words are from each other.

#include <gtest/gtest.h>

#include "platform/EditDistance.h"

namespace twqb {
namespace {

TEST(Edit_distance, Counts_letters_added_dropped_replaced_and_swapped) {
  EXPECT_EQ(EditDistance("", ""), 0U);
  EXPECT_EQ(EditDistance("", "abc"), 3U);
  EXPECT_EQ(EditDistance("hartwell", "hartwel"), 1U);
  EXPECT_EQ(EditDistance("hartwell", "hartvell"), 1U);
  EXPECT_EQ(EditDistance("hartwell", "hatrwell"), 1U);
  EXPECT_EQ(EditDistance("kitten", "sitting"), 3U);
}

TEST(Edit_distance, A_swapped_pair_is_not_changed_any_further) { EXPECT_EQ(EditDistance("ca", "abc"), 3U); }

TEST(Edit_distance, Is_the_same_in_both_directions) {
  for (const auto& [a, b] : {std::pair("abbott", "abot"), std::pair("müller", "mueller"), std::pair("a", "")}) {
    EXPECT_EQ(EditDistance(a, b), EditDistance(b, a)) << a << ' ' << b;
  }
}

TEST(Edit_distance, Counts_characters_and_not_bytes) {
  EXPECT_EQ(EditDistance("müller", "muller"), 1U);
  EXPECT_EQ(EditDistance("駅前", "駅"), 1U);
}

}  // namespace
}  // namespace twqb
