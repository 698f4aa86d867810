// What is done about a refusal of an employee or a vendor: the rows of both tables, and the mending of a state that
// QuickBooks does not know.
//
// Part of modEmployees; it knows no field but that of the state.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "engine/StatusRules.h"
#include "lists/modEmployees.h"

namespace twqb {

inline constexpr std::string_view kNoState = "None";  // stands in QuickBooks for a missing state

[[nodiscard]] std::string_view AddressField(IsVendor isVendor);

extern const std::array<StatusRule, 3> kEmployeeRules;
extern const std::array<StatusRule, 4> kVendorRules;

}  // namespace twqb
