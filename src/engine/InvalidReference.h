// The box about a request that refers to something QuickBooks does not have, as a hook of a table's rules.
#pragma once

#include <string_view>

#include "engine/StatusRules.h"

namespace twqb {

// QuickBooks' message alone.
[[nodiscard]] MessageBox InvalidReference(const RefusedRequest& refused);
// The message with its number, and what to do: the lines of the advice, separated by CRLF.
[[nodiscard]] MessageBox InvalidReference(const Response& response, std::string_view advice);

}  // namespace twqb
