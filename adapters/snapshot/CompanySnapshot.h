// Reads a company out of QuickBooks itself, whole, into a new company file.
//
// It asks one question for each kind of list and transaction that company files here keep, in the newest messages that
// they know, and lays the answers down as they are. Names of the kinds that they don't keep come along, where they
// keep others from having them.
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
