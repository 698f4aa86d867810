// The steps that scenarios prepare their two sides with. A step that fails is a mistake in the scenario and raises
// std::runtime_error.
#pragma once

#include <string_view>

#include "Sweep.h"

namespace twqb::sweep {

// A customer or job with these fields, in wire order.
void AddCustomer(TestHouse& house, std::string_view fields);
void ChangeCustomer(TestHouse& house, std::string_view fullName, std::string_view fields);
// The scenario's transfers, in a process state of their own.
void TransferNow(TestHouse& house, const Scenario& scenario);

}  // namespace twqb::sweep
