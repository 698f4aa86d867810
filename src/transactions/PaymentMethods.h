// Methods of payment: the code that a row has for one, and the name that QuickBooks has for it.
//
// For payments in both directions. What becomes of the money by its method is theirs.
#pragma once

#include <cstdint>
#include <string_view>

namespace twqb {

inline constexpr std::int16_t kCheckMethod = 1;
inline constexpr std::int16_t kCreditMethod = 3;

// What QuickBooks calls the method of that code; a code that is none is that of a check.
[[nodiscard]] std::string_view PaymentMethodName(std::string_view code);

// The code of the method of that QuickBooks name, in any case; that of a check for a name that has none.
[[nodiscard]] std::int16_t PaymentMethodCode(std::string_view name);

}  // namespace twqb
