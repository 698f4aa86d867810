// Expense codes and QuickBooks items. A new code becomes an other-charge item; items of three kinds come and are
// modified: other charges, inventory and non-inventory items, each with prices and accounts in places of their own.
//
// The name of an item is its code's key with a blank for the colon. The way back expects " | " there, so a code that
// was sent does not come back as it was; its link keeps the pair together.
#pragma once

#include <string>
#include <string_view>

#include "engine/Template.h"

namespace twqb {

// Sends the expense codes that `strSQL` selects, but for the one that stands for unknown items; the outcome is
// `g_TableOk`.
void MoveExpenseCodesToQB(const std::string& strSQL, bool optNever, bool optMostRecent, QBSessionManager& session);

// Takes items over; the outcome is `g_TableOk`.
void MoveExpenseCodesToTW(const RecordList& records, bool optNever, bool optMostRecent);

// Fills the Mod of the twin's kind; accounts stay as they are. False, after the error was told: it is not to go.
[[nodiscard]] bool QBAssignExpCodeFldValues(const RequestField& request, const ado::Recordset& row,
                                            const SendRecord& record);

// Fills the Add of an other charge under that name. False, after a box of its own: it is not to go.
[[nodiscard]] bool AssignExpenseCodeFldValues(const RequestField& request, const ado::Recordset& row,
                                              std::string_view name);

// A blank for each colon.
[[nodiscard]] std::string GetExpenseNameForQB(std::string_view text);
// A colon for each " | ".
[[nodiscard]] std::string GetExpenseIDForTW(std::string_view text);

}  // namespace twqb
