// Numbers by chance, the same in every run, and money as whole cents: for tests that work out their expectations apart
// from the library.
//
// A round of ./run soak is told by the variable TWQB_ROUND, and gives each test other numbers.
#pragma once

#include <fmt/core.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>

#include "platform/Value.h"

namespace twqb {

// The seed that stands for this one in the round of ./run soak.
inline std::uint64_t SeedOfRound(unsigned seed) {
  constexpr std::uint64_t kSeedsOfRound = 1'000'000;
  const char* round = std::getenv("TWQB_ROUND");
  return seed + kSeedsOfRound * (round == nullptr ? 0 : std::strtoull(round, nullptr, 10));
}

class Chance {
 public:
  explicit Chance(unsigned seed) : random_(SeedOfRound(seed)) {}

  // Both ends included.
  std::int64_t Of(std::int64_t from, std::int64_t to) {
    return std::uniform_int_distribution<std::int64_t>(from, to)(random_);
  }
  // Once in so many times.
  bool OnceIn(std::int64_t times) { return Of(1, times) == 1; }
  // A place in a list of that length.
  std::size_t Place(std::size_t count) { return static_cast<std::size_t>(Of(0, static_cast<std::int64_t>(count) - 1)); }

 private:
  std::mt19937_64 random_;
};

inline std::string Amount(std::int64_t cents) {
  return fmt::format("{}{}.{:02}", cents < 0 ? "-" : "", std::abs(cents) / 100, std::abs(cents) % 100);
}
// An amount that is not there is nothing.
inline std::int64_t InCents(std::string_view amount) {
  return amount.empty() ? 0 : std::llround(TextToNumber(amount) * 100);
}

}  // namespace twqb
