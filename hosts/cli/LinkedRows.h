// The rows of BillingDb that have a link, and all identifiers that there are in QuickBooks.
//
// It reads the two files by themselves: no transfer, no library.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "cli/Options.h"
#include "platform/machine.h"

namespace twqb::cli {

struct LinkedRow {
  std::int32_t table = 0;
  std::string key;
  std::string identifier;
};

// Of each of the tables, in their order. Nothing of a table that BillingDb does not have, or that has no links.
[[nodiscard]] std::vector<LinkedRow> ReadLinkedRows(const Workplace& place, std::span<const std::int32_t> tables);

// Of records, and of the lines of transactions.
[[nodiscard]] std::set<std::string, std::less<>> ReadIdentifiers(const Workplace& place, Machine& machine);

}  // namespace twqb::cli
