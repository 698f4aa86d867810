// The demonstration: a sample firm is kept for a quarter on both sides, and the link brings them together month by
// month.
//
// It asks nothing, tells what happens as a page on standard output, and checks the outcome itself.
#pragma once

#include <filesystem>

#include "cli/options/ExitStatus.h"
#include "cli/options/Options.h"
#include "cli/workplace/Surroundings.h"

namespace twqb::cli {

// Works in `folder`, which must have none of the four files; of a clock that is given the time zone counts. `Failed`
// when a transfer fails or asks, a row stays without a link that should have one, a change is not where the rule of the
// newer record puts it, a round behind the quarter moves something new, or the balances differ by what nobody expects;
// what is wrong is told then.
[[nodiscard]] ExitStatus RunDemo(const std::filesystem::path& folder, const Options& options,
                                 Surroundings surroundings);

}  // namespace twqb::cli
