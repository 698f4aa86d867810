// Balances as a table for people.
//
// For whoever shows them: the command, and the demonstration at its end. What the balances are is worked out elsewhere
// (Balances), and what they differ by is told by whoever shows them.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "cli/books/Balances.h"
#include "cli/screen/TextTable.h"
#include "platform/Currency.h"

namespace twqb::cli {

// "-2830.00"; with fractions of a cent where it has them.
[[nodiscard]] std::string MoneyText(Currency amount);
// "-" for a text that is empty.
[[nodiscard]] std::string TextOrNone(const std::string& text);

// Client and project; a customer without a link stands where the project does.
[[nodiscard]] TableLine CellsOf(const Payer& payer);
// A line for each balance below the heading, and their sums.
[[nodiscard]] std::vector<TableLine> BalanceLines(const std::vector<Balance>& balances);
inline constexpr std::array kBalanceAlignments = {Align::Left, Align::Left, Align::Right, Align::Right, Align::Right};

}  // namespace twqb::cli
