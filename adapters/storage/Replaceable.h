// A database that another file is about to take the place of.
//
// What stands beside it would be taken for the new one's, and must be gone by then; but until then it is the old one's,
// which must stay whole if the replacement never comes. To replace the file is the caller's business.
#pragma once

#include <string>

namespace twqb::storage {

// Has what stands beside the file taken into it, and nothing stand beside it. What is beside a file that is no
// database, or that is gone, is removed. False when somebody is writing to it, or it can't be written: then it stays as
// it is.
[[nodiscard]] bool MakeReplaceable(const std::string& path);

}  // namespace twqb::storage
