// Expense codes and QuickBooks items. A new code becomes an other-charge item; items of three kinds come and are
// modified: other charges, inventory and non-inventory items, each with prices and accounts in places of their own.
//
// The name of an item is its code's key with a blank for the colon. The way back expects " | " there, so a code that
// was sent does not come back as it was; its link keeps the pair together.
#pragma once

#include <string>
#include <string_view>

#include "engine/ListTable.h"

namespace twqb {

extern const Table kExpenseCodesTable;

// Sends the expense codes of the call, but for the one that stands for unknown items.
void MoveExpenseCodesToQB(const SendCall& call);

// Takes items over.
void MoveExpenseCodesToTW(const GetCall& call);

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
