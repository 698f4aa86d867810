// What terms of payment say of a transaction: when it is due. Discounts for early payment are kept with the terms, and
// nothing is worked out of them.
#pragma once

#include "adapters/companyfile/ListRecord.h"
#include "platform/Date.h"

namespace twqb::company {

// The day on which a transaction of the day `date` is due under `terms`, a record of either kind of terms.
[[nodiscard]] Date DueDate(const FoundRecord& terms, Date date);

}  // namespace twqb::company
