// What an invoice says in QuickBooks: header and lines, out of a row of the invoices' selection.
//
// An invoice goes in detail, a line for each hour and each expense that was billed, or in summary, a line for all
// services and one for all expenses; the project's kind of contract decides, and the amounts below are a line each
// either way. BillingDb is master of the amounts: hours that do not come to the service total get a line that makes up
// for it. All amounts are decimal numbers on their way.
#pragma once

#include "engine/StatusRules.h"
#include "platform/ado.h"
#include "quickbooks/RequestModel.h"

namespace twqb {

// The money of a line: its amount in an American file, elsewhere its rate.
void AssignMoney(const RequestField& line, Currency amount);

// Which of our items are sales taxes in QuickBooks. Their lines have neither quantity nor tax code there.
struct SalesTaxLines {
  bool g_HasServiceTaxItem = false;
  bool g_HasExpenseTaxItem = false;
  bool g_HasMainServiceTaxItem = false;
  bool g_HasMainExpenseTaxItem = false;
};

// Asks QuickBooks; a Canadian or British file has none.
[[nodiscard]] SalesTaxLines CheckTaxItems();

// Fills the request ahead of its lines. False: the invoice is not to go, because it is negative or lacks a link.
[[nodiscard]] bool AssignInvoiceHeader(const RequestField& request, const ado::Recordset& row);
// Fills the request. False: the invoice is not to go, because it is negative or lacks the link of its client or its
// project, or because of an error (told by ErrorHandler). A modification has its lines under other names, and nothing
// else of its own; no message form that this program knows has one, so that today it ends in an error.
[[nodiscard]] bool AssignInvoiceFldValues(const ado::Recordset& row, const RequestField& request, RequestKind kind,
                                          const SalesTaxLines& salesTax);

}  // namespace twqb
