// The arithmetic of transaction lines: exact decimals, and what follows for a line from what was given of it.
//
// Money is rounded to cents once per line, halves away from zero. Nothing here knows of requests, items or storage.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Currency.h"

namespace twqb::company {

// A price, a quantity or a percentage: exact, with five decimals.
class Decimal {
 public:
  constexpr Decimal() = default;
  [[nodiscard]] static constexpr Decimal FromUnits(std::int64_t units) { return Decimal(units); }
  [[nodiscard]] static constexpr Decimal Whole(std::int64_t value) { return Decimal(value * kScale); }
  // Reads "12", "-.5", "3.25000"; nothing for what is no decimal or has more digits than fit.
  [[nodiscard]] static std::optional<Decimal> Parse(std::string_view text);

  [[nodiscard]] constexpr std::int64_t Units() const { return units_; }
  // Without trailing zeros: "12.5".
  [[nodiscard]] std::string Text() const;
  // With two decimals at least: "12.50".
  [[nodiscard]] std::string TextToCents() const;

  friend constexpr auto operator<=>(const Decimal&, const Decimal&) = default;

  static constexpr std::int64_t kScale = 100'000;

 private:
  explicit constexpr Decimal(std::int64_t units) : units_(units) {}
  std::int64_t units_ = 0;
};

// Each rounds halves away from zero and answers nothing where the result is too great for an amount or a price.
[[nodiscard]] std::optional<Currency> AmountOf(Decimal quantity, Decimal rate);
[[nodiscard]] std::optional<Currency> PercentOf(Currency base, Decimal percent);
[[nodiscard]] std::optional<Decimal> RateOf(Currency amount, Decimal quantity);  // nothing for a quantity of 0
[[nodiscard]] std::optional<Decimal> Product(Decimal a, Decimal b);

// Two decimals, as money goes out.
[[nodiscard]] std::string MoneyText(Currency amount);
[[nodiscard]] constexpr Currency Negated(Currency amount) { return Currency{} - amount; }

// What a line says of its amount, or what it comes to.
struct LineTerms {
  std::optional<Decimal> quantity;
  std::optional<Decimal> rate;
  std::optional<Decimal> percent;  // in place of a rate
  std::optional<Currency> amount;
};

// What the item of a line says where the line says nothing.
struct ItemTerms {
  enum class Effect : std::uint8_t { Adds, Subtracts };
  std::optional<Decimal> rate;
  std::optional<Decimal> percent;
  Effect effect = Effect::Adds;
};

// The line as it is kept: an amount that was given stands, and the rate follows from it and the quantity; otherwise the
// amount is quantity (1 when there is none) times rate, or the percentage of `base`. A line that has neither amount nor
// rate, nor has its item, has no amount. Nothing when a number comes out too great.
[[nodiscard]] std::optional<LineTerms> CompleteLine(LineTerms given, const ItemTerms& item, Currency base);

}  // namespace twqb::company
