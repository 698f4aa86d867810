#include "adapters/companyfile/LineBilling.h"

#include <pugixml.hpp>

#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/TxnSettlement.h"

namespace twqb::company {

namespace {

// The line of that identifier; the lines of a group are not billed one by one.
pugi::xml_node FindLine(const pugi::xml_document& lines, std::string_view lineId) {
  for (const auto line : lines.children()) {
    if (ChildText(line, "TxnLineID") == lineId) return line;
  }
  return {};
}

void NoteChange(TxnStore& txns, TxnRecord& txn, const ClockReading& clock) {
  MarkChanged(txn, clock);
  txns.UpdateOpen(txn);
}

}  // namespace

LineBilling BillLine(CompanyStore& store, std::string_view invoiceId, std::string_view lineId,
                     const ClockReading& clock) {
  TxnStore txns(store.Database());
  const auto invoice = txns.Find(invoiceId);
  if (!invoice || invoice->kind->name != "Invoice") return LineBilling::NoSuchInvoice;
  auto txn = txns.FindByLine(lineId);
  if (!txn) return LineBilling::NoSuchLine;
  pugi::xml_document lines;
  ParseBody(lines, txn->lines);
  const auto line = FindLine(lines, lineId);
  if (ChildText(line, "BillableStatus") != "Billable") return LineBilling::NotBillable;
  if (txns.IsBilledLine(lineId)) return LineBilling::AlreadyBilled;
  if (ChildText(ChildElement(line, "CustomerRef"), "ListID") != invoice->entityId) return LineBilling::OtherCustomer;
  txns.AddBilledLine({.lineId = std::string(lineId), .txnId = txn->txnId, .invoiceId = invoice->txnId});
  NoteChange(txns, *txn, clock);
  return LineBilling::Done;
}

void GiveLinesBack(TxnStore& txns, std::string_view invoiceId, const ClockReading& clock) {
  for (const auto& line : txns.LinesBilledBy(invoiceId)) {
    auto txn = txns.Find(line.txnId);
    if (txn) NoteChange(txns, *txn, clock);
  }
}

}  // namespace twqb::company
