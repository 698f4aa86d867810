// Wide: a whole number of 128 bits, for products of two of 64.
//
// The compiler's own where it has one. On 32 bits there is none, and PortableWide takes its place: slower, and with the
// operations that are needed alone.
#pragma once

#include <compare>
#include <cstdint>

namespace twqb {

// Sign and magnitude. What grows beyond 127 bits loses its highest ones. A divisor of 0 gives 0.
class PortableWide {
 public:
  constexpr PortableWide() = default;
  constexpr PortableWide(std::int64_t value)  // as every whole number turns into a wider one
      : low_(value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value)),
        isNegative_(value < 0) {}

  constexpr explicit operator std::int64_t() const { return static_cast<std::int64_t>(isNegative_ ? 0 - low_ : low_); }

  constexpr PortableWide operator-() const { return Signed(high_, low_, !isNegative_); }

  friend constexpr PortableWide operator+(PortableWide a, PortableWide b) {
    if (a.isNegative_ == b.isNegative_) {
      const auto low = a.low_ + b.low_;
      return Signed(a.high_ + b.high_ + (low < a.low_ ? 1 : 0), low, a.isNegative_);
    }
    // The greater one gives the sign.
    if (IsLess(a, b)) return Signed(Without(b, a), b.isNegative_);
    return Signed(Without(a, b), a.isNegative_);
  }
  friend constexpr PortableWide operator-(PortableWide a, PortableWide b) { return a + -b; }

  friend constexpr PortableWide operator*(PortableWide a, PortableWide b) {
    auto product = Product(a.low_, b.low_);
    product.high_ += a.high_ * b.low_ + a.low_ * b.high_;
    return Signed(product, a.isNegative_ != b.isNegative_);
  }

  friend constexpr PortableWide operator/(PortableWide a, PortableWide b) {
    PortableWide rest;
    return Signed(Divided(a, b, rest), a.isNegative_ != b.isNegative_);
  }
  friend constexpr PortableWide operator%(PortableWide a, PortableWide b) {
    PortableWide rest;
    static_cast<void>(Divided(a, b, rest));
    return Signed(rest, a.isNegative_);
  }

  constexpr PortableWide& operator*=(PortableWide other) { return *this = *this * other; }
  constexpr PortableWide& operator/=(PortableWide other) { return *this = *this / other; }
  constexpr PortableWide& operator+=(PortableWide other) { return *this = *this + other; }

  friend constexpr bool operator==(const PortableWide&, const PortableWide&) = default;
  friend constexpr std::strong_ordering operator<=>(PortableWide a, PortableWide b) {
    if (a.isNegative_ != b.isNegative_) {
      return a.isNegative_ ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    if (a == b) return std::strong_ordering::equal;
    return IsLess(a, b) != a.isNegative_ ? std::strong_ordering::less : std::strong_ordering::greater;
  }

 private:
  static constexpr PortableWide Signed(std::uint64_t high, std::uint64_t low, bool isNegative) {
    PortableWide value;
    value.high_ = high;
    value.low_ = low;
    value.isNegative_ = isNegative && (high != 0 || low != 0);
    return value;
  }
  static constexpr PortableWide Signed(PortableWide magnitude, bool isNegative) {
    return Signed(magnitude.high_, magnitude.low_, isNegative);
  }

  // Of the magnitudes.
  static constexpr bool IsLess(PortableWide a, PortableWide b) {
    return a.high_ != b.high_ ? a.high_ < b.high_ : a.low_ < b.low_;
  }
  static constexpr PortableWide Without(PortableWide greater, PortableWide less) {
    return Signed(greater.high_ - less.high_ - (greater.low_ < less.low_ ? 1 : 0), greater.low_ - less.low_, false);
  }
  // By halves of 32 bits.
  static constexpr PortableWide Product(std::uint64_t a, std::uint64_t b) {
    constexpr int kHalf = 32;
    constexpr std::uint64_t kLower = 0xFFFFFFFF;
    const auto low = (a & kLower) * (b & kLower);
    const auto one = (a >> kHalf) * (b & kLower) + (low >> kHalf);
    const auto other = (a & kLower) * (b >> kHalf) + (one & kLower);
    return Signed((a >> kHalf) * (b >> kHalf) + (one >> kHalf) + (other >> kHalf), (other << kHalf) | (low & kLower),
                  false);
  }
  // Of the magnitudes, bit by bit, as on paper.
  static constexpr PortableWide Divided(PortableWide dividend, PortableWide divisor, PortableWide& rest) {
    constexpr int kBits = 64;
    PortableWide quotient;
    if (divisor.high_ == 0 && divisor.low_ == 0) return quotient;
    for (int bit = 2 * kBits - 1; bit >= 0; --bit) {
      const auto part = bit >= kBits ? dividend.high_ >> (bit - kBits) : dividend.low_ >> bit;
      rest = Signed((rest.high_ << 1) | (rest.low_ >> (kBits - 1)), (rest.low_ << 1) | (part & 1), false);
      quotient = Signed((quotient.high_ << 1) | (quotient.low_ >> (kBits - 1)), quotient.low_ << 1, false);
      if (!IsLess(rest, divisor)) {
        rest = Without(rest, divisor);
        quotient.low_ |= 1;
      }
    }
    return quotient;
  }

  std::uint64_t high_ = 0;
  std::uint64_t low_ = 0;
  bool isNegative_ = false;
};

#ifdef __SIZEOF_INT128__
__extension__ using Wide = __int128;
#else
using Wide = PortableWide;
#endif

}  // namespace twqb
