// From what the texts say to the table. Here is refused what no single line shows: names that nothing defines, that two
// lines define or that nothing uses; rows that the readers of the table could not tell apart.
#pragma once

#include <span>
#include <vector>

#include "messagegen/Source.h"
#include "messagegen/Syntax.h"
#include "messagegen/Table.h"

namespace twqb::messagegen {

// `texts` are those of `files`, one each. Raises BadInput.
[[nodiscard]] Table Resolve(std::span<const SourceFile> files, std::span<const Text> texts);

}  // namespace twqb::messagegen
