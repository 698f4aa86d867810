// A year of a firm of any size: what stands in its BillingDb, and what its QuickBooks has of its own.
//
// The two sides are made apart, and nothing has been sent from one to the other. A firm is what goes without anything
// being held back: a run over all tables comes to its end. Who wants what is held back adds it.
#pragma once

#include "samples/firm/FirmPlan.h"
#include "samples/firm/Requests.h"
#include "samples/firm/Rows.h"

namespace twqb::firm {

// INSERT statements, for the tables of samples/billing/schema.sql; a plan with a fault makes none.
void WriteBilling(const FirmPlan& plan, const TakeStatement& take);

// Documents of requests, each of which refers to records of those before it alone; all of them belong into one opening
// of the company file. No field is in them that the form of a country lacks.
void WriteCompany(const FirmPlan& plan, const TakeDocument& take);

}  // namespace twqb::firm
