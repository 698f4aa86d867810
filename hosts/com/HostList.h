// The list that an operation hands to the host, for its own dialogs.
//
// Where QuickBooks' session library is the other side it is that library's own object, as it came: a host that was
// written for it finds all of its members. Elsewhere, and where the library gives none, it is one of ours with the same
// members (ListObject.h). Both hold the same records in the same order.
#pragma once

#include <oaidl.h>

#include <functional>

#include "quickbooks/ResponseModel.h"

namespace twqb::com {

// Runs the lookup. With one reference; null for a list that is nothing.
[[nodiscard]] IDispatch* AskForList(const std::function<ReturnedList()>& lookUp);

}  // namespace twqb::com
