// Bases of expenses, vendor bills and estimates: of one vendor and one job in QuickBooks, ten lines to each record.
//
// Expenses of ten rows each are of a person of their own, so that they become a bill each; all these people are the one
// vendor.
#pragma once

#include "bench/Bases.h"

namespace twqb {

[[nodiscard]] BenchTable ExpensesToMeasure();
[[nodiscard]] BenchTable VendorBillsToMeasure();
[[nodiscard]] BenchTable EstimatesToMeasure();

}  // namespace twqb
