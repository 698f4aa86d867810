// What must be usable before a transfer begins, so that a wrong path is one clear message and no chain of boxes.
//
// Each check raises UsageError with the cause and what to do. They look at the files themselves: faults and transcript
// of a run do not see them.
#pragma once

#include <optional>
#include <string>

#include "cli/Options.h"
#include "twqb/enTables.h"

namespace twqb::cli {

// The connection string can be opened.
void CheckBilling(const Workplace& place);
// The company file is one, if anything is there. A missing file is met in the run: then QuickBooks has none open.
void CheckCompany(const Workplace& place);
// The same, and a missing file is refused too.
void RequireCompany(const Workplace& place);
// The settings file can be read and written, or made.
void CheckSettings(const Workplace& place);

// A table of BillingDb that a transfer of `table` needs and that is not there; nothing when all are, and when the
// database can't tell.
[[nodiscard]] std::optional<std::string> MissingTable(const Workplace& place, enTables table);

}  // namespace twqb::cli
