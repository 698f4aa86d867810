// What transactions do to the balances of customers, vendors and accounts.
#pragma once

#include <cstdint>

#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/TxnStore.h"

namespace twqb::company {

enum class Posting : std::int8_t { Enter = 1, TakeBack = -1 };

// Adds what `txn` does to the balances of its entity and of the accounts that it stands on, or takes it back; nothing
// for one that is not posted. A payment counts for whom the charges belong to that it pays, so its links must be there.
void PostBalances(CompanyStore& store, TxnStore& txns, const TxnRecord& txn, Posting posting);

}  // namespace twqb::company
