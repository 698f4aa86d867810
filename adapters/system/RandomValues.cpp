#include "adapters/system/RandomValues.h"

namespace twqb {

double UnitInterval(std::mt19937_64& generator) {
  constexpr int kDroppedBits = 11;  // 53 stay, as many as a double holds
  constexpr double kStep = 0x1p-53;
  return static_cast<double>(generator() >> kDroppedBits) * kStep;
}

GuidBytes AsRandomGuid(GuidBytes bytes) {
  constexpr std::size_t kVersionAt = 6;
  constexpr std::size_t kVariantAt = 8;
  bytes[kVersionAt] = static_cast<std::uint8_t>((bytes[kVersionAt] & 0x0F) | 0x40);
  bytes[kVariantAt] = static_cast<std::uint8_t>((bytes[kVariantAt] & 0x3F) | 0x80);
  return bytes;
}

}  // namespace twqb
