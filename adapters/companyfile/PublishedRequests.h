// The requests that have been published up to message version 3.0 about records that company files here do not keep.
//
// QuickBooks knows them, so a set that has one among others is no broken document: the one request is answered that it
// is not supported. Their elements are not known here, and are not looked at.
#pragma once

#include <string_view>

namespace twqb::company {

// By the name of the element: "DepositAddRq".
[[nodiscard]] bool IsRequestOfOtherRecords(std::string_view element);

}  // namespace twqb::company
