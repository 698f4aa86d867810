// Numbers by chance that are the same on every machine, for the same seed and purpose.
//
// The standard says what its engines give, but not what its distributions make of it; so the arithmetic stands here.
// Each part of a firm throws dice of its own: more of one part does not change another. Arguments of one call are
// evaluated in whatever order the compiler likes, so no call has two throws in them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace twqb::firm {

class Dice {
 public:
  Dice(std::uint64_t seed, std::uint64_t purpose) : engine_(Mixed(Mixed(seed) + purpose)) {}

  // Both ends included.
  std::int64_t Of(std::int64_t from, std::int64_t to) {
    const auto span = static_cast<std::uint64_t>(to - from) + 1;
    return from + static_cast<std::int64_t>(engine_() % span);
  }
  // Once in so many times.
  bool OnceIn(std::int64_t times) { return Of(1, times) == 1; }
  bool PerCent(int chance) { return Of(1, 100) <= chance; }
  // A place in a list of that length.
  std::size_t Place(std::size_t count) { return static_cast<std::size_t>(Of(0, static_cast<std::int64_t>(count) - 1)); }
  template <typename List>
  const auto& OneOf(const List& list) {
    return list[Place(std::size(list))];
  }

 private:
  // Neighbouring seeds are far apart behind it.
  static std::uint64_t Mixed(std::uint64_t value) {
    value += 0x9E3779B97F4A7C15U;
    value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31U);
  }

  std::mt19937_64 engine_;
};

}  // namespace twqb::firm
