// What holds of any firm once it has been sent, so that one that is made and sent serves for all of it (SentTest.cpp).
//
// `prepared` is a folder with the files of the firm's house as they were ahead of the send.
#pragma once

#include <string>
#include <vector>

#include "tests/firm/Books.h"
#include "tests/firm/Returned.h"

namespace twqb {

// The tables sent one by one in an order of the seed's own end as a run over all did.
void ExpectThatOrdersEndAlike(const firm::FirmPlan& plan, const std::string& prepared, const Books& all);

// Killed at a call of the seed's own, of the `calls` that a run makes where lost links are found again, and sent once
// more, the firm ends as the run over all did.
void ExpectThatBrokenRunsEndAlike(const firm::FirmPlan& plan, const std::string& prepared,
                                  const std::vector<std::string>& calls, const Books& all);

// What went comes back into an empty BillingDb, but for exceptions that have a name. Sends expenses by their names,
// too.
void ExpectThatAllComesBack(FirmHouse& house, Exceptions& exceptions);

}  // namespace twqb
