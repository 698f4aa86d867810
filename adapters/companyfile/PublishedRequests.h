// The requests that have been published up to message version 3.0 about records that company files here do not keep.
//
// QuickBooks knows them, so a set that has one among others is no broken document: the one request is answered that it
// is not supported. Their elements are not known here, and are not looked at.
#pragma once

#include <string_view>

#include "messages/Schema.h"

namespace twqb::company {

// Whether messages of that version have the request, by the name of the element: "DepositAddRq".
[[nodiscard]] bool IsRequestOfOtherRecords(std::string_view element, messages::Version version);

}  // namespace twqb::company
