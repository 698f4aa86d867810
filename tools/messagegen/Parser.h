// From a text of messages to what stands in it. Looks no name up: that is the resolver's.
#pragma once

#include "messagegen/Source.h"
#include "messagegen/Syntax.h"

namespace twqb::messagegen {

// Raises BadInput for the first thing that is out of place. `index` is the file's number, for the places.
[[nodiscard]] Text Parse(const SourceFile& file, std::size_t index);

}  // namespace twqb::messagegen
