// The tables of BillingDb for a test or a benchmark, from the one schema file, and the rows of the sample firm.
#pragma once

#include "platform/ado.h"

namespace twqb {

// Makes every table, view and index of samples/billing/schema.sql in an empty database, in one transaction.
void MakeBillingSchema(ado::Connection& connection);

// Puts the rows of samples/billing in, all of them, in one transaction.
void FillSampleFirm(ado::Connection& connection);

}  // namespace twqb
