// What terms of payment say of a transaction: when it is due. Discounts for early payment are kept with the terms, and
// nothing is worked out of them.
#pragma once

#include <pugixml.hpp>

#include "adapters/companyfile/ListRecord.h"
#include "platform/Date.h"

namespace twqb::company {

// Refuses what no terms can say, in the fields of either kind of them: a day that no month has, days below none, more
// of a discount than all.
void CheckTerms(pugi::xml_node fields);

// The day on which a transaction of the day `date` is due under `terms`, a record of either kind of terms.
[[nodiscard]] Date DueDate(const FoundRecord& terms, Date date);

}  // namespace twqb::company
