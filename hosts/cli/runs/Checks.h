// What must be usable before a transfer begins, so that a wrong path is one clear message and no chain of boxes.
//
// Each check raises UsageError with the cause and what to do. They look at the files themselves: faults and transcript
// of a run do not see them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/options/Options.h"

namespace twqb::cli {

// The connection string can be opened.
void CheckBilling(const Workplace& place);
// The company file is one, if anything is there. A missing file is met in the run: then QuickBooks has none open.
void CheckCompany(const Workplace& place);
// The same, and a missing file is refused too, and so is QuickBooks itself in the place of one.
void RequireCompany(const Workplace& place);
// The settings file can be read and written, or made.
void CheckSettings(const Workplace& place);
// BillingDb has a table for the settings.
void CheckSettingsTable(const Workplace& place);

// Those of `tables` that BillingDb does not have, each once; none when the database can't tell.
[[nodiscard]] std::vector<std::string_view> MissingTables(const Workplace& place,
                                                          const std::vector<std::string_view>& tables);
// What is said of them.
[[nodiscard]] std::string MissingText(const std::vector<std::string_view>& missing);

}  // namespace twqb::cli
