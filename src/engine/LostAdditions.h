// Additions whose outcome may get lost: a process can die, or a call can fail, between QuickBooks' commit and the
// writing of the link, and the row would be added a second time.
//
// Every addition of a row goes through here. It goes under an identifier (quickbooks/Recovery.h) and names its row, so
// that the outcome which QuickBooks keeps tells later what was added for whom; the row then gets its link as the send
// would have written it. How that is done is the table's affair (LostLink in engine/Table.h). One addition is open at a
// time: from its request until its rows are written.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Table.h"
#include "platform/ado.h"
#include "quickbooks/QBSessionManager.h"
#include "quickbooks/Recovery.h"

namespace twqb {

// Appends a request that adds the row of that key, and names it so.
[[nodiscard]] RequestField AppendAddition(MsgSetRequest& set, std::string_view addRequest, const Table& table,
                                          std::string_view key);

// The same for a request that was appended before its row was known.
void NameAddition(MsgSetRequest& set, const Table& table, std::string_view key);
// Names the request appended last by the twin that it modifies, for the case that an addition follows in its place.
void NameTwin(MsgSetRequest& set, std::string_view identifier);

// Sends a set whose last request adds that row. Nothing: the row may be in QuickBooks already, which has been told, and
// must not go. An addition before it that is still open is settled first.
[[nodiscard]] std::optional<MsgSetResponse> SendAddition(const Table& table, std::string_view key,
                                                         QBSessionManager& session, const MsgSetRequest& set);
// Behind the answer, once all is written that is to be written of it.
void CloseAddition(QBSessionManager& session, RestOfRow rest = RestOfRow::None);

// Whether one is open, and whether additions can be: never where lost links are not looked for.
[[nodiscard]] bool IsAdditionOpen(QBSessionManager& session);
[[nodiscard]] bool FindsLostLinks(QBSessionManager& session);

// Finds the table of a number; nothing where there is none.
using FindTableRoutine = std::function<const Table*(std::int32_t number)>;

// Ahead of the first row of a transfer: takes up what an earlier one left. Raises when QuickBooks can't be asked.
void TakeUpWhatWasLeft(QBSessionManager& session, const FindTableRoutine& findTable);
// Behind the last row of a table: settles an addition that is still open. Errors go to the log.
void SettleOpenAddition(QBSessionManager& session);
// Behind a transfer: has QuickBooks drop what is settled. Errors are ignored; the next transfer finds it settled.
void DropWhatIsSettled(QBSessionManager& session);

// Whether the row was taken up in this transfer: its link or its date was written just now.
[[nodiscard]] bool WasTakenUp(const Table& table, std::string_view key, QBSessionManager& session);

// --- For the tables --------------------------------------------------------------------------------------------------

// For WasTakenUp.
void NoteTakenUp(const Table& table, std::string_view key, QBSessionManager& session);

}  // namespace twqb
