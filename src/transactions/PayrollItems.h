// The payroll items of time entries: the four that must exist in QuickBooks, and the choice of one for an entry.
//
// Part of modTimeEntry; bills of vendors with time on them have none.
#pragma once

#include <string>
#include <vector>

#include "platform/ado.h"
#include "quickbooks/QBSessionManager.h"

namespace twqb {

// Adds the four wage items, which pay from that expense account ("": "Payroll Expenses"). True when the first of them
// is there, whatever became of the others; a refusal of it is logged.
bool AddPayrollItemWage(QBSessionManager& session, const std::string& expenseAccount);

// Makes sure of them, paid from the usual account or the one that the settings name. False, which may have been told:
// they can't be had.
[[nodiscard]] bool SecureWageItems(QBSessionManager& session);

// Their names.
[[nodiscard]] std::vector<std::string> WageItemNames();

// The item for an entry: by the employee's own choices, else by the kind of time, else the default.
[[nodiscard]] std::string PayrollItemFor(const ado::Recordset& row);

}  // namespace twqb
