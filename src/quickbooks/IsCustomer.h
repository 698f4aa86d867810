// Customers and jobs share one QuickBooks list; the level tells them apart.
#pragma once

#include "quickbooks/ResponseModel.h"

namespace twqb {

// Whether the record is a customer (level 0) and not a job. False, after ErrorHandler, when it can't be told.
[[nodiscard]] bool IsCustomer(const Record& customerRet);

}  // namespace twqb
