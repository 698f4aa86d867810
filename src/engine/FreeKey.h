// The key of a new row: the first one that no row of its table has.
//
// A table says how its keys are made; the search ends where a cut takes the counter off again.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/ado.h"

namespace twqb {

struct KeyColumn {
  std::string_view table;
  std::string_view column;
};

// Tries `keyOf(0)`, `keyOf(1)` and so on, each as it will be written. Raises kKeyInUse, with a text about the record of
// that name, when a key comes a second time. A key must hold no quote.
[[nodiscard]] std::string FreeKey(ado::Connection& connection, const KeyColumn& place, std::string_view recordName,
                                  const std::function<std::string(int counter)>& keyOf);

}  // namespace twqb
