// The identity numbers of employees: social security, social insurance and national insurance numbers, by the country
// of the company file. Part of modEmployees; it knows no other field.
#pragma once

#include <string>
#include <string_view>

#include "quickbooks/RequestModel.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

// Sets SIN, NiNumber or SSN of an Add from what BillingDb holds ("" for nothing). A text that makes no such number is
// left out: a Canadian one after a line in the log, a British one for a mask, any other silently.
void AssignEmployeeNumber(const RequestField& request, std::string_view stored, std::string_view employeeId);

// The number of a record, without its separators; "" when it has none.
[[nodiscard]] std::string EmployeeNumberOf(const Record& employee);

}  // namespace twqb
