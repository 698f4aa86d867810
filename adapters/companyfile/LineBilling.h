// Billable lines of checks, charges and bills on their way to an invoice: what somebody at QuickBooks does with
// "Time/Costs".
//
// No request up to version 3.0 does that, and an invoice that a program adds takes nothing up, whatever its lines are.
// So the file's host says it. The invoice stays as it is: its lines are the business of who adds it.
#pragma once

#include <cstdint>
#include <string_view>

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/TxnStore.h"

namespace twqb::company {

// What became of it; anything but `Done` has changed nothing.
enum class LineBilling : std::uint8_t {
  Done,
  NoSuchInvoice,
  NoSuchLine,
  NotBillable,
  AlreadyBilled,
  OtherCustomer,  // the invoice is for another customer or job than the line
};

// From now on the line is answered as billed, and the transaction that it stands in has changed.
[[nodiscard]] LineBilling BillLine(CompanyStore& store, std::string_view invoiceId, std::string_view lineId,
                                   const ClockReading& clock);

// An invoice that goes gives its lines back: they are billable once more.
void GiveLinesBack(TxnStore& txns, std::string_view invoiceId, const ClockReading& clock);

}  // namespace twqb::company
