// Reads a company out of QuickBooks itself, whole, into a new company file.
//
// It asks one question for each kind of list and transaction that company files here keep, in the newest messages that
// they know, and lays the answers down as they are. Of kinds that they don't keep those come along that transactions
// there may name, and that keep others from having their names.
#pragma once

#include <string>

#include "adapters/snapshot/Snapshot.h"
#include "platform/machine.h"
#include "platform/transport.h"

namespace twqb::snapshot {

// `session` has begun and goes on. Raises SnapshotError for what QuickBooks does not answer, and PlatformError when the
// file can't be made.
void ReadCompany(Transport& session, const std::string& path, Machine& machine, const Watch& watch);

}  // namespace twqb::snapshot
