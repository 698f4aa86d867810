// The files that a run works on, so that none of them is taken for another one: what is written must be no database.
//
// It looks at names, devices and numbers of files, and opens none but the settings.
#pragma once

#include <string>
#include <vector>

#include "cli/options/Options.h"
#include "platform/machine.h"

namespace twqb::cli {

struct RunFile {
  std::string path;
  std::string called;  // "the company file": what a user reads
};

// All that a run with these files reads or writes: the four of `place`, what the databases and the link keep beside
// them, the log, and `read`. Files that are not there yet are among them.
[[nodiscard]] std::vector<RunFile> FilesOfRun(const Workplace& place, Machine& machine,
                                              const std::vector<std::string>& read);

// Raises UsageError when BillingDb, company file and settings are not three files, when the log leads to one of them,
// when answers or faults are read from the settings, or when the settings are no text: writing would destroy what is
// there.
void CheckApart(const Workplace& place, const Options& options);

}  // namespace twqb::cli
