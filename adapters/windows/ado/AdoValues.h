// Values of a database field between their two forms: the library's, and a variant of ADO's.
#pragma once

#include "adapters/windows/late/Owned.h"
#include "platform/Value.h"

namespace twqb::windows {

// Raises 13 for what the library has no form of, as bytes. A decimal becomes a whole number or currency where it is one
// without loss, and else a text.
[[nodiscard]] Value ValueOf(const Variant& given);
[[nodiscard]] Variant VariantOf(const Value& value);

}  // namespace twqb::windows
