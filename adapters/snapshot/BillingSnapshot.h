// Reads the tables of BillingDb out of a database of another maker into a new file of the embedded engine.
//
// Which tables there are the caller says, as statements that make them; what else the database holds stays there. A
// table or a column that the database lacks is lacking in the file, and a column more comes along.
#pragma once

#include <span>
#include <string>

#include "adapters/snapshot/Snapshot.h"
#include "platform/ado.h"

namespace twqb::snapshot {

// `source` is open. `schema`: statements that make tables, indexes and views. Raises SnapshotError for what the
// database does not tell, and PlatformError when the file can't be made.
void ReadBilling(ado::Connection& source, const std::string& path, std::span<const std::string> schema,
                 const Watch& watch);

}  // namespace twqb::snapshot
