// Activities and QuickBooks service items.
//
// An item that is made here has both a sales and a purchase side; one that was made in QuickBooks may have a single
// side for either, and keeps its form. Accounts go out with a new item and come back; a Mod leaves them alone.
#pragma once

#include "engine/ListTable.h"

namespace twqb {

extern const Table kActivitiesTable;

// Sends the activities of the call. A QuickBooks of version 1 has no Mod of items: linked activities go as new ones.
void MoveActivityToQB(const SendCall& call);

// Takes service items over.
void MoveActivitiesToTW(const GetCall& call);

// Fills an Add or a Mod from the row; `record` has the name and, of a Mod, the twin. A failure has been told, and ends
// the table.
[[nodiscard]] Filling QBAssignActivityFldValues(const RequestField& request, const ado::Recordset& row,
                                                RequestKind kind, const SendRecord& record);

}  // namespace twqb
