// The double of a time entry of the session library, whose duration is not given as a result but by four references:
// hours, minutes and seconds as Int16, and whether it is negative.
//
// It takes variables of exactly these types, as C++ hosts have them, or scripts' variables, and reads the text of the
// answer itself: it shares nothing with the list objects of TWQBClient90 that it is compared with.
#pragma once

#include <oaidl.h>

#include "quickbooks/ResponseModel.h"

namespace twqb::doubles {

// With one reference. All members but Duration are those of TWQBClient90's object.
[[nodiscard]] IDispatch* MakeTimeEntry(const Record& record);

}  // namespace twqb::doubles
