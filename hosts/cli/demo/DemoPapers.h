// Invoices, payments and bills of the demonstration, told: as small tables, or in a sentence.
//
// It prints what it is given, and looks nothing up.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/demo/DemoQuarter.h"

namespace twqb::cli {

// Those of that kind: "2003 to O'Dowd's Bakery (768.40) and one to Pioneer Dental (322.00)".
[[nodiscard]] std::string PapersText(const std::vector<DemoPaper>& papers, std::string_view kind,
                                     std::string_view preposition);
void PrintInvoices(const std::vector<DemoPaper>& invoices);
void PrintPayments(const std::vector<DemoPaper>& payments);
// What the bookkeeper has entered, by kinds.
void PrintBooked(const DemoArrivals& come);

}  // namespace twqb::cli
