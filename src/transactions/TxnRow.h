// What the sends of transactions do with a row alike: the look at its twin, and the link and the date that are written
// behind an Add.
#pragma once

#include <string>
#include <string_view>

#include "engine/SendRecord.h"
#include "engine/StatusRules.h"
#include "engine/Table.h"
#include "engine/WriteBack.h"
#include "platform/ado.h"

namespace twqb {

// Whether the row's link leads to something. One that does not is stale, and forgotten.
[[nodiscard]] bool IsInQuickBooks(const Table& table, SendRecord& record, QBSessionManager& session, Run& run);

// Tells the call-back object the new twin, links the row to it, and stamps a row that has no date yet.
void WriteLinkBack(ado::Connection& connection, const RowPlace& place, const SendRecord& record,
                   const std::string& txnId);

// The question about a refusal for which a table has no other words.
[[nodiscard]] MessageBox AskToGoOn(const RefusedRequest& refused);

}  // namespace twqb
