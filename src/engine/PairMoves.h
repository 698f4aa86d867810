// Whether one side of a linked pair is written over the other: the conflict rule, with the times that it needs read.
//
// For lists and for the lines of transactions. The rule itself is pure and stands in ConflictRule.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "engine/ConflictRule.h"
#include "platform/ado.h"
#include "quickbooks/ResponseModel.h"

namespace twqb {

// What is told of a pair that the settings keep as it is.
inline constexpr std::string_view kNeverChanged = "the settings never change a linked record";

// Whether the record of a pair goes: `twin` is QuickBooks' side. `readRowDate` is asked where the rule needs it; a pair
// whose dates can't be read stays as it is.
[[nodiscard]] bool PairMoves(Direction direction, TwinRule rule, const Record& twin,
                             const std::function<std::optional<Date>()>& readRowDate);

// Puts the table's recordset on the row with that link, which is there. False: the row is to stay as it is.
// `fallbackDateColumn` is compared when LastUpdated is NULL.
[[nodiscard]] bool FindRowToChange(ado::Recordset& rows, std::string_view link, TwinRule rule, const Record& twin,
                                   std::string_view fallbackDateColumn);

}  // namespace twqb
