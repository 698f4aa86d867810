// By what a database is known to be as it was, without reading it: which file it is, its size, its time, and what the
// engine counts in its first page.
//
// A time tells nothing while the clock of the file system may not have moved since: then there is no identity.
#pragma once

#include <string>

namespace twqb::backup {

// Empty where it would tell nothing.
[[nodiscard]] std::string IdentityTextOf(const std::string& path);

// Waits until the file's time tells something, where reading the file would take longer, and where a moment is enough.
void WaitUntilSettled(const std::string& path);

}  // namespace twqb::backup
