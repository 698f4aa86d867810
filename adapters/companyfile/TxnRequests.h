// Add and Query of transactions, the same for every kind, and the requests that name one transaction of any kind. What
// differs is in the kind's description and in the rows of its messages.
//
// A request that is refused has changed nothing: every check comes before the first change.
#pragma once

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/Macros.h"
#include "adapters/companyfile/Response.h"
#include "adapters/companyfile/TxnKind.h"
#include "messages/Schema.h"

namespace twqb::company {

// What a request is carried out against.
struct TxnContext {
  CompanyStore& store;
  const TxnKind& kind;
  const messages::Form& form;
  const ClockReading& clock;
  Macros& macros;
};

// Throws Refused with 3250 while the feature that the kind belongs to is not enabled.
void RequireFeature(const TxnContext& context);

// Each writes its whole answer. The request has passed the checks of its rows.
//
// AddTxn raises `error::kRequestIncomplete` for a transaction that comes to nothing where QuickBooks does not take such
// a one: the document as a whole fails.
void AddTxn(const TxnContext& context, const Request& request, Response& response);
void QueryTxns(const TxnContext& context, const Request& request, Response& response);
void DeleteTxn(CompanyStore& store, const ClockReading& clock, const Request& request, Response& response);
// Shows the transaction to the person at QuickBooks, so nothing but its being there matters.
void DisplayTxn(CompanyStore& store, const Request& request, Response& response);

}  // namespace twqb::company
