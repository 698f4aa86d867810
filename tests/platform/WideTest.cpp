// The number of 128 bits that stands in where the compiler has none, against the compiler's own.

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "platform/Wide.h"

#ifdef __SIZEOF_INT128__

namespace twqb {
namespace {

// Both forms of one number.
struct Pair {
  Wide own;
  PortableWide portable;
};

bool Agree(Wide own, PortableWide portable) {
  // Both halves, for a number is more than its lower one.
  constexpr std::int64_t kHalf = std::int64_t{1} << 40;
  for (int i = 0; i < 4; ++i) {
    if (static_cast<std::int64_t>(own % kHalf) != static_cast<std::int64_t>(portable % kHalf)) return false;
    own /= kHalf;
    portable /= kHalf;
  }
  return own == 0 && portable == 0;
}

std::vector<Pair> Numbers() {
  std::vector<Pair> numbers;
  std::mt19937_64 random(7);
  const auto add = [&](std::int64_t a, std::int64_t b) {
    numbers.push_back({static_cast<Wide>(a) * b, PortableWide(a) * PortableWide(b)});
  };
  for (const std::int64_t edge : std::array<std::int64_t, 8>{0, 1, -1, 10, -10, INT64_MAX, INT64_MIN + 1, INT64_MIN}) {
    add(edge, 1);
    add(edge, edge == INT64_MIN ? 1 : edge);
  }
  for (int i = 0; i < 40; ++i) {
    const auto a = static_cast<std::int64_t>(random() >> (random() % 60));
    const auto b = static_cast<std::int64_t>(random() >> (4 + random() % 60));
    add(random() % 2 == 0 ? a : -a, random() % 2 == 0 ? b : -b);
  }
  return numbers;
}

TEST(PortableWide, Products_of_two_numbers_are_those_of_the_compilers_own) {
  for (const auto& [own, portable] : Numbers()) EXPECT_TRUE(Agree(own, portable)) << static_cast<double>(own);
}

TEST(PortableWide, Sums_quotients_rests_and_order_are_those_of_the_compilers_own) {
  constexpr Wide kMostThatAddsUp = (static_cast<Wide>(1) << 126) - 1;
  for (const auto& a : Numbers()) {
    for (const auto& b : Numbers()) {
      EXPECT_EQ(a.own < b.own, a.portable < b.portable);
      EXPECT_EQ(a.own >= b.own, a.portable >= b.portable);
      EXPECT_EQ(a.own == b.own, a.portable == b.portable);
      EXPECT_TRUE(Agree(-a.own, -a.portable));
      if (b.own != 0) {
        EXPECT_TRUE(Agree(a.own / b.own, a.portable / b.portable));
        EXPECT_TRUE(Agree(a.own % b.own, a.portable % b.portable));
      }
      const auto fits = [](Wide value) { return value < kMostThatAddsUp && value > -kMostThatAddsUp; };
      if (!fits(a.own) || !fits(b.own)) continue;
      EXPECT_TRUE(Agree(a.own + b.own, a.portable + b.portable));
      EXPECT_TRUE(Agree(a.own - b.own, a.portable - b.portable));
    }
  }
}

}  // namespace
}  // namespace twqb

#endif
