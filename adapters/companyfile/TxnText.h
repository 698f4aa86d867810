// A transaction as XML, as it is answered: its columns, its body, its lines, and what it is linked to.
#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "adapters/companyfile/References.h"
#include "adapters/companyfile/TxnRequests.h"
#include "adapters/companyfile/TxnStore.h"

namespace twqb::company {

// Whether a field of the answered record is formed from the columns of the storage, and so is in no body.
[[nodiscard]] bool IsTxnColumn(std::string_view field);

// What an answer has beside the header.
struct TxnDetail {
  TxnParts parts = TxnParts::HeaderAndLines;
  enum class Links : std::uint8_t { LeftOut, Included } links = Links::LeftOut;
};

// Writes transactions of one answer.
class TxnWriter {
 public:
  // `record` is the row of the record (InvoiceRet); what the form of the context does not know stays out.
  TxnWriter(const TxnContext& context, TxnStore& txns, const messages::Element& record, TxnDetail detail)
      : context_(context), txns_(txns), record_(record), detail_(detail), names_(context.store) {}

  void Append(std::string& out, const TxnRecord& txn);

 private:
  void AppendField(std::string& out, const TxnRecord& txn, const messages::Element& row);
  void AppendLines(std::string& out, const TxnRecord& txn);
  void AppendLinks(std::string& out, const TxnRecord& txn, const messages::Element& row);
  void AppendApplications(std::string& out, const TxnRecord& txn, const messages::Element& row);
  void AppendTold(std::string& out, pugi::xml_node told, const messages::Element& row);

  const TxnContext& context_;
  TxnStore& txns_;
  const messages::Element& record_;
  TxnDetail detail_;
  NameCache names_;
  pugi::xml_document body_;  // kept for their memory
  pugi::xml_document lines_;
};

}  // namespace twqb::company
