// The rows of BillingDb that have a link, and all identifiers that there are in QuickBooks.
//
// It reads the two files by themselves: no transfer, no library.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "cli/options/Options.h"
#include "platform/machine.h"

namespace twqb::cli {

struct LinkedRow {
  std::int32_t table = 0;
  std::string key;
  std::string identifier;
};

// Of each of the tables, in their order. Nothing of a table that BillingDb does not have, or that has no links.
[[nodiscard]] std::vector<LinkedRow> ReadLinkedRows(const Workplace& place, std::span<const std::int32_t> tables);

// Whose records QuickBooks does not tell: a feature that is off, what this user may not see.
struct ClosedKind {
  std::string kind;  // "TimeTracking"
  std::int32_t code = 0;
  std::string answer;
};

struct IdentifiersThere {
  std::set<std::string, std::less<>> known;  // of records, and of the lines of transactions
  std::vector<ClosedKind> closed;
};
[[nodiscard]] IdentifiersThere ReadIdentifiers(const Workplace& place, Machine& machine);

// The one among them to whose records a row of the table may be linked; nullptr when there is none. Then only may a
// link that leads to nothing known count as dead.
[[nodiscard]] const ClosedKind* ClosedTo(std::int32_t table, std::span<const ClosedKind> closed);

}  // namespace twqb::cli
