// The common steps of a request: the message set that fits the edition found, and the report of a refusal.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "quickbooks/QBSessionManager.h"

namespace twqb {

// A set in the form of the country and version found, continuing on errors. Nothing, after ErrorHandler, on a failure.
[[nodiscard]] std::optional<MsgSetRequest> fnCreateMsgSetRequest(QBSessionManager& session);

// The same for a caller with a handler of its own: raises 91 when there is no set.
[[nodiscard]] MsgSetRequest RequireMsgSetRequest(QBSessionManager& session);

// QuickBooks' refusal in the common words. `prefix` stands before the first line.
[[nodiscard]] std::string QBErrorText(const Response& response, std::string_view prefix = {});

// Shows it: information icon, "Error", OK. To an observer it is an error.
void ShowQBError(const Response& response, std::string_view prefix = {});
// The box alone: of a record that was refused the observer hears with the record.
void ShowRefusal(const Response& response, std::string_view prefix = {});

}  // namespace twqb
