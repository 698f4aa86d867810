// Dispatch: the way of a transfer from the public call to a table's routine.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "engine/SavedFilters.h"
#include "platform/ado.h"
#include "quickbooks/QBSessionManager.h"
#include "twqb/enTables.h"

namespace twqb {

// What a bridge object contributes to a transfer.
struct TransferOptions {
  bool usePreferencesTW = false;
  bool isSync = false;
  bool isQBSingleMode = false;
};

// The two transfers; False when something failed, which the user has been told.
bool SendData(std::int32_t table, const TransferOptions& options);
bool GetData(std::int32_t table, const TransferOptions& options);

// What writes links to rows beside the transfers (bridge/Linking.h): `work` in a session of its own, what an earlier
// send left taken up ahead of it. False when there is none, or it raised, which the user has been told.
bool LinkRows(bool isQBSingleMode, const std::function<void(QBSessionManager& session)>& work);

// Reads the saved filters of a table. Clears nothing: a text whose option is off stays as it was. Of a table to be left
// out nothing else is read. False after ErrorHandler.
bool GetSavedFilters(std::string_view strPrefix, std::int32_t table, SavedFilters& filters);

// One table to QuickBooks, selected by the filters, in the run of the process.
bool SendTableToQB(std::int32_t table, const SavedFilters& filters);

// One table from QuickBooks, in the run of the process. `blnByID` is the pull of a single record for another table's
// sake, on `connection`.
bool GetTableFromQB(std::int32_t table, const SavedFilters& filters, ActiveOnly activeOnly, bool blnByID,
                    ado::Connection* connection);

}  // namespace twqb
