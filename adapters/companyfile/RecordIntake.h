// Fills a new company file with what another QuickBooks tells in answers to queries, as it tells it: identifiers,
// times, edit sequences, balances and links stay, and none of the rules is looked at that requests go by.
//
// It asks nobody; who reads that QuickBooks hands the answers over, lists ahead of transactions. What refers to records
// that this file does not keep, nor was told of (ToldKinds), is answered as it was told.
#pragma once

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "adapters/companyfile/CompanyConditions.h"
#include "adapters/companyfile/CompanyOptions.h"
#include "adapters/companyfile/ListKind.h"
#include "adapters/companyfile/TxnKind.h"
#include "platform/machine.h"

namespace twqb::company {

class RecordIntake {
 public:
  // Makes the file; raises as CreateCompanyFile does. `machine` knows the zone in which times are told.
  RecordIntake(const std::string& path, const CompanyOptions& options, Machine& machine);
  ~RecordIntake();
  RecordIntake(const RecordIntake&) = delete;
  RecordIntake& operator=(const RecordIntake&) = delete;

  // Each takes the response of a query: its children are the records. A list is announced before any is laid, so that
  // it is known which references lead out of the file.
  void Announce(const ListKind& kind, pugi::xml_node response);
  void Lay(const ListKind& kind, pugi::xml_node response);
  void Lay(const TxnKind& kind, pugi::xml_node response);
  // The same of a kind of ToldKinds, laid behind the lists: of their records it takes what AddTxn looks at.
  void AnnounceTold(const ListKind& kind, pugi::xml_node response);
  void LayTold(const ListKind& kind, pugi::xml_node response);
  // What QuickBooks answers to a question for all of a kind, instead of records: every request about the kind gets that
  // answer from the file.
  void Refuse(std::string_view kind, int code, std::string_view message);

  // Settles what leads from one transaction to another, and keeps the file. Without it nothing of it stays whole.
  void Finish(const CompanyConditions& conditions);

 private:
  class Laying;
  std::unique_ptr<Laying> laying_;
};

}  // namespace twqb::company
