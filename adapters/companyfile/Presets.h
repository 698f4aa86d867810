// The records that a new company file has before anybody adds one: tax codes, as QuickBooks makes them for the country.
//
// Their identifiers stand outside the counter ("10000-", "20000-"), as those of QuickBooks' own records do. Accounts
// that QuickBooks makes itself come when they are needed first: see SpecialAccounts.h.
#pragma once

#include <cstdint>
#include <vector>

#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/ListRecord.h"
#include "messages/Schema.h"

namespace twqb::company {

// US: the sales tax codes Tax and Non. AU: those and E. CA: the tax codes E, G, H, P, S, Z. UK: E, O, S, Z.
// `made` is the time of making, in Unix seconds.
[[nodiscard]] std::vector<FoundRecord> Presets(messages::Country country, std::int64_t made);

}  // namespace twqb::company
