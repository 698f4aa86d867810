// The text of a request: what is set, in the order of the messages. Behind MsgSetRequest, which writes what stands
// around the requests.
#pragma once

#include <string>
#include <string_view>

#include "messages/Schema.h"
#include "quickbooks/RequestNode.h"

namespace twqb::detail {

// Appends what of the request's content the form knows. Raises 0x80040307 when a required choice of what is there is
// empty. `mended`, unless it is nullptr, becomes true for a text that XML can't carry as it is.
void WriteRequest(const RequestNode& request, const messages::Form& form, std::string& out, bool* mended);

// Appends a text that XML can carry, for content or between double quotes.
void AppendEscaped(std::string& out, std::string_view text);

}  // namespace twqb::detail
