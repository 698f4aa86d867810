// What each side adds up to, by client, project and person: hours, invoices, payments, retainers, expenses, what
// vendors are owed. Each side is added up by itself, from its own rows or records; links say alone who is who.
#pragma once

#include <set>
#include <string>

#include "tests/firm/FirmHouse.h"

namespace twqb {

// The identifiers of what time QuickBooks has; asked for ahead of the first transfer, of its own.
[[nodiscard]] std::set<std::string> TimeOfQuickBooks(FirmHouse& house);

// Behind a send and a get of all. Of QuickBooks' own time the seconds are dropped.
void ExpectThatSumsAgree(FirmHouse& house, const std::set<std::string>& ownTime);

}  // namespace twqb
