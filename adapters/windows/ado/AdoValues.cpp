#include "adapters/windows/ado/AdoValues.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <type_traits>

#include "platform/PlatformError.h"

namespace twqb::windows {

namespace {

constexpr std::size_t kCurrencyDecimals = 4;

std::optional<std::int64_t> WholeNumber(std::string_view digits) {
  std::int64_t number = 0;
  const auto* const end = digits.data() + digits.size();
  const auto [stop, failure] = std::from_chars(digits.data(), end, number);
  return failure == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

// Of "-12.50": a decimal holds more digits than a double does.
Value OfDecimal(std::string text) {
  const auto point = text.find('.');
  if (point == std::string::npos) {
    const auto number = WholeNumber(text);
    return number ? Value(*number) : Value(std::move(text));
  }
  auto decimals = text.substr(point + 1);
  decimals.erase(std::min(decimals.find_last_not_of('0') + 1, decimals.size()));
  if (decimals.empty()) return OfDecimal(text.substr(0, point));
  if (decimals.size() > kCurrencyDecimals) return text;
  decimals.resize(kCurrencyDecimals, '0');
  const auto units = WholeNumber(text.substr(0, point) + decimals);
  return units ? Value(Currency::FromTenThousandths(*units)) : Value(std::move(text));
}

Variant Of(VARTYPE type, auto fill) {
  Variant made;
  made.Get()->vt = type;
  fill(*made.Get());
  return made;
}

}  // namespace

Value ValueOf(const Variant& given) {
  const VARIANT& value = given.Value();
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return Null{};
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE;
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_INT:
      return std::int64_t{given.Number()};
    case VT_I8:
      return std::int64_t{value.llVal};
    case VT_R4:
      return double{value.fltVal};
    case VT_R8:
      return value.dblVal;
    case VT_CY:
      return Currency::FromTenThousandths(value.cyVal.int64);
    case VT_DATE:
      return Date::FromSerial(value.date);
    case VT_UI4:
    case VT_UINT:
    case VT_UI8:
    case VT_DECIMAL:
      return OfDecimal(given.Text());
    case VT_BSTR:
      return TextOf(value.bstrVal);
    default:
      throw PlatformError(error::kConversion);
  }
}

Variant VariantOf(const Value& value) {
  return std::visit(
      [](const auto& held) {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, Null>) {
          return Of(VT_NULL, [](VARIANT&) {});
        } else if constexpr (std::is_same_v<Held, bool>) {
          return Variant(held);
        } else if constexpr (std::is_same_v<Held, std::int64_t>) {
          const bool fits = held == static_cast<std::int32_t>(held);
          return fits ? Variant(static_cast<long>(held)) : Of(VT_I8, [&](VARIANT& made) { made.llVal = held; });
        } else if constexpr (std::is_same_v<Held, double>) {
          return Of(VT_R8, [&](VARIANT& made) { made.dblVal = held; });
        } else if constexpr (std::is_same_v<Held, Currency>) {
          return Of(VT_CY, [&](VARIANT& made) { made.cyVal.int64 = held.TenThousandths(); });
        } else if constexpr (std::is_same_v<Held, Date>) {
          return Of(VT_DATE, [&](VARIANT& made) { made.date = held.Serial(); });
        } else {
          return Variant(std::string_view(held));
        }
      },
      value);
}

}  // namespace twqb::windows
