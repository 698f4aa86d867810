// Whose sums hang on transactions of which it is not known what they come to: whom they are about, the accounts that
// they stand on, and what is applied to them.
//
// Which transactions these are CompanyStore notes; that their own amounts are not known is theirs alone.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "adapters/companyfile/CompanyStore.h"

namespace twqb::company {

// Identifiers, as they are told, of list records and transactions.
[[nodiscard]] std::set<std::string, std::less<>> UnknownSums(CompanyStore& store);

}  // namespace twqb::company
