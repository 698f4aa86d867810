// The box about a request that refers to something QuickBooks does not have.
#pragma once

#include <cstdint>
#include <string_view>

#include "quickbooks/ResponseModel.h"

namespace twqb {

inline constexpr std::int32_t kStatusInvalidReference = 3140;

// QuickBooks' message alone.
void TellInvalidReference(const Response& response);
// The message with its number, and what to do: the lines of the advice, separated by CRLF.
void TellInvalidReference(const Response& response, std::string_view advice);

}  // namespace twqb
