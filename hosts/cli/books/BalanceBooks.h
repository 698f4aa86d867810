// Reads what clients owe: from BillingDb, and from the company file. Writes to neither.
//
// Both sides say whose a balance is by the links of projects and clients, which ReadPayers finds.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "cli/books/Balances.h"
#include "cli/options/Options.h"
#include "platform/ado.h"
#include "platform/machine.h"

namespace twqb::cli {

struct Payers {
  std::map<std::string, Payer> byProject;  // keys without case
  std::map<std::string, Payer> byLink;     // of a customer that both a client and a project lead to, the project
};

// Each raises PlatformError when BillingDb can't be read.
[[nodiscard]] Payers ReadPayers(ado::Connection& billing);
[[nodiscard]] BilledSide ReadBilledSide(ado::Connection& billing, const Payers& payers);

// Raises PlatformError, and std::runtime_error when QuickBooks refuses or answers an amount that is none.
[[nodiscard]] BookedSide ReadBookedSide(const Workplace& place, Machine& machine, const Payers& payers);

// All balances, each read and compared with the other side's. Raises as these do.
[[nodiscard]] std::vector<Balance> CompareBooks(const Workplace& place, ado::Provider& database, Machine& machine);

}  // namespace twqb::cli
