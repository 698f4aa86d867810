// Links that lead nowhere: rows whose twin QuickBooks does not have any more, found by the reads of all tables.
//
// Only reads. Links lead to records and to their lines, and a row of one table may be linked to what another one reads;
// so all tables are read before any link counts as dead.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>

#include "engine/Table.h"
#include "quickbooks/QBSessionManager.h"
#include "services/Run.h"

namespace twqb {

using Identifiers = std::unordered_set<std::string>;

// Those of every record, and of every line, that a get of any table would read without a filter. Nothing when a read
// failed or was refused, which has been told.
[[nodiscard]] std::optional<Identifiers> ReadIdentifiers(QBSessionManager& session, Run& run);

// How many rows of a table have a link to none of these. On the shared connection; raises what the database raises.
[[nodiscard]] std::int64_t CountDeadLinks(const Table& table, const Identifiers& known);

}  // namespace twqb
