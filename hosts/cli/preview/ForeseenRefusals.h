// What a send of the checked tables would have refused, or fail at, as findings beside those of the rows themselves.
//
// It is found by a preview, on copies, so that it is what QuickBooks says. Where there can be none that is told, and
// nothing is added.
#pragma once

#include <vector>

#include "bridge/RowChecks.h"
#include "cli/options/Options.h"

namespace twqb::cli {

// Once for each row, and not where a finding of it gives the same reason.
void AddWhatASendTells(const Options& options, std::vector<TableFindings>& told);

}  // namespace twqb::cli
