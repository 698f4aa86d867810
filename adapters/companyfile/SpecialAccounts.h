// The accounts that QuickBooks makes itself when a transaction first needs them.
#pragma once

#include <cstdint>
#include <string_view>

#include "adapters/companyfile/CompanyStore.h"

namespace twqb::company {

// Whether an account that somebody else made stands in: any of the type, or only one of the type and the name.
enum class StandIn : std::uint8_t { OfType, OfTypeAndName };

struct SpecialAccount {
  std::string_view special;  // SpecialAccountType
  std::string_view type;     // AccountType
  std::string_view name;
  StandIn standIn = StandIn::OfTypeAndName;
};
inline constexpr SpecialAccount kAccountsReceivable = {.special = "AccountsReceivable",
                                                       .type = "AccountsReceivable",
                                                       .name = "Accounts Receivable",
                                                       .standIn = StandIn::OfType};
inline constexpr SpecialAccount kAccountsPayable = {
    .special = "AccountsPayable", .type = "AccountsPayable", .name = "Accounts Payable", .standIn = StandIn::OfType};
inline constexpr SpecialAccount kUndepositedFunds = {
    .special = "UndepositedFunds", .type = "OtherCurrentAsset", .name = "Undeposited Funds"};
inline constexpr SpecialAccount kOpeningBalanceEquity = {
    .special = "OpeningBalanceEquity", .type = "Equity", .name = "Opening Bal Equity"};
inline constexpr SpecialAccount kSalesTaxPayable = {
    .special = "SalesTaxPayable", .type = "OtherCurrentLiability", .name = "Sales Tax Payable"};
inline constexpr SpecialAccount kEstimates = {.special = "Estimates", .type = "NonPosting", .name = "Estimates"};

// The one that was found or made before, as long as it is there; else one that stands in; else a new one, `now` (Unix
// seconds) being the time of making. Where its name belongs to an account of another type, a number goes behind it.
[[nodiscard]] ListRecord FindOrMakeSpecialAccount(CompanyStore& store, const SpecialAccount& account, std::int64_t now);

}  // namespace twqb::company
