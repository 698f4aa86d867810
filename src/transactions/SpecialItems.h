// The names of the items and accounts of ours in QuickBooks, by which the lines of invoices and payments refer to them.
//
// InvoiceItems and RetainerItems make sure that they are there.
#pragma once

#include <string_view>

namespace twqb {

inline constexpr std::string_view kRetainerAccount = "TWUnearnedRetAccount";
inline constexpr std::string_view kRetainerPayment = "TWRetainerPayment";
inline constexpr std::string_view kRetainerCharge = "TWRetainerChargeItem";

inline constexpr std::string_view kDiscountItem = "TWInvDiscount";
inline constexpr std::string_view kMiscItem = "TWManInvMiscAmt";
inline constexpr std::string_view kServiceItem = "TWServiceAmt";
inline constexpr std::string_view kServiceTaxItem = "TWServiceTaxAmt";
inline constexpr std::string_view kExpenseItem = "TWExpenseAmt";
inline constexpr std::string_view kExpenseTaxItem = "TWExpenseTaxAmt";
inline constexpr std::string_view kMainServiceTaxItem = "TWMainServiceTaxAmt";
inline constexpr std::string_view kMainExpenseTaxItem = "TWMainExpenseTaxAmt";
inline constexpr std::string_view kAdjustmentItem = "GEN WUD";
inline constexpr std::string_view kCatchAllItem = "From Tallywick";  // of what has no item of its own

}  // namespace twqb
