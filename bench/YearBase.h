// A firm's year: its lists, and what it books on them, as it stands in BillingDb before anything has been sent.
//
// Every list is as long as the number of invoices asks for; what is booked goes round them. The same rows each time.
// None of the made firms of samples/firm: what a record takes is held against a tenth of the year, so that each record
// has to be of one shape, and there have to be as many as were asked for.
#pragma once

#include <string>

#include "platform/ado.h"
#include "twqb/enTables.h"

namespace twqb {

struct Year {
  int invoices = 1'000;

  // Of the year, in BillingDb; of estimates, in QuickBooks. Expenses are those on invoices and on bills of vendors.
  [[nodiscard]] int Records(enTables table) const;
  [[nodiscard]] int Expenses() const;
};

// Makes the files of a year that was never sent; QuickBooks has accounts and nothing else.
void MakeYear(const std::string& folder, const Year& year);

// Raises std::runtime_error unless all of the year is in BillingDb and has a twin.
void CheckYear(const std::string& folder, const Year& year);

// Makes the files of a firm whose year is in QuickBooks alone: a copy of the company file that `sent` went to, with
// estimates, beside an empty BillingDb.
void MakeYearToGet(const std::string& folder, const std::string& sent, const Year& year);

}  // namespace twqb
