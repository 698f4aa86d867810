// The records that a new company file has before anybody adds one: tax codes, payment methods, terms, types of
// customers and vendors and templates, as QuickBooks makes them.
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

// Tax codes. US: Tax and Non. AU: those and E. CA: E, G, H, P, S, Z and NON. UK: E, O, S, Z and NON. NON is for
// programs that send the US form there and mean what is not taxable. Payment methods: Cash, Check (CA and UK: Cheque),
// American Express, Discover (US alone), MasterCard, Visa. The others are the same for all. `made` is the time of
// making, in Unix seconds. Only those that files of `format` do not have: kNoFormat is for all of them.
[[nodiscard]] std::vector<FoundRecord> Presets(messages::Country country, std::int64_t made, std::int64_t format);

}  // namespace twqb::company
