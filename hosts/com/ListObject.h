// QuickBooks' lists and records as objects for the host's own dialogs, with the members that QuickBooks' object library
// gives them: Count and GetAt of a list, the fields of a record by their names, GetValue of a field. A span of
// time is given by four references: hours, minutes, seconds, and whether it is negative.
//
// A field that QuickBooks left out is a null object. They keep the answer that they are views into.
#pragma once

#include <oaidl.h>

#include "quickbooks/ResponseModel.h"

namespace twqb::com {

// With one reference; null for a list that is nothing.
[[nodiscard]] IDispatch* MakeListObject(ReturnedList list);
[[nodiscard]] IDispatch* MakeRecordObject(Record record);

}  // namespace twqb::com
