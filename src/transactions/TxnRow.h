// What the sends of transactions do with a row alike: the look at its twin, the link and the date that are written
// behind an Add, and small rules of columns and classes.
//
// Knows no request of its own.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "engine/SendRecord.h"
#include "engine/StatusRules.h"
#include "engine/Table.h"
#include "engine/WriteBack.h"
#include "platform/Decimal.h"
#include "platform/ado.h"

namespace twqb {

// A transaction is due so long after its date. The terms of QuickBooks have no say in it.
inline constexpr int kDaysToPay = 30;

// The number in a column; `otherwise` for NULL.
[[nodiscard]] Decimal NumberIn(const ado::Recordset& row, std::string_view column, Decimal otherwise = {});

// The class of the project or code with that link; "" without one, and on any error.
[[nodiscard]] std::string ClassOf(std::string_view table, std::string_view link);
// The project's class, or else that of the code, in whose table it is looked for; `itemLink` "" has none.
[[nodiscard]] std::string ClassFor(std::string_view projectLink, std::string_view codes, std::string_view itemLink);

// Whether the row's link leads to something. One that does not is stale, and forgotten.
[[nodiscard]] bool IsInQuickBooks(const Table& table, SendRecord& record, QBSessionManager& session, Run& run);

// Tells the call-back object the new twin, links the row to it, and stamps a row that has no date yet.
void WriteLinkBack(ado::Connection& connection, const RowPlace& place, const SendRecord& record,
                   const std::string& txnId);

// Gives the row of a lost addition its link and its date. `fill` fills the request that the send makes of it, as far as
// that tells one transaction from another; `read` is the one that finds its twins.
[[nodiscard]] TakenUp TakeUpTxnLink(const LostAddition& lost, const RowPlace& place, const SendRecord& record,
                                    std::string_view addRequest, const QuickBooksRead& read,
                                    const std::function<void(const RequestField& request)>& fill);

// The rows behind the current one, as lines that stay because it did. Only an observer has the cursor moved; errors are
// ignored.
void TellRowsBehind(ado::Recordset& rows, std::string_view keyColumn);

// Tells of a refusal by the rows; answers whether the run ends with it. No to a question ends it without a word, and
// leaves the wish to stop as it is.
[[nodiscard]] bool EndsTheRun(std::span<const StatusRule> rules, const RefusedRequest& refused, Run& run);

// The question about a refusal for which a table has no other words.
[[nodiscard]] MessageBox AskToGoOn(const RefusedRequest& refused);

}  // namespace twqb
