#include "adapters/companyfile/CompanyFile.h"

#include <string>
#include <utility>

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/LineBilling.h"
#include "adapters/companyfile/RequestProcessor.h"
#include "adapters/companyfile/TxnStore.h"
#include "adapters/companyfile/UnknownSums.h"

namespace twqb::company {

namespace {

bool HasBalance(const ListKind& kind) {
  const auto* query = messages::FindMessage(std::string(kind.name) + "Query");
  return query != nullptr && messages::FindChild(query->response.front().Children(), "Balance") != nullptr;
}

}  // namespace

void CreateCompanyFile(const std::string& path, const CompanyOptions& options, Machine& machine) {
  auto settled = options;
  if (settled.accepts.empty()) settled.accepts = {options.country};
  CompanyStore::Create(path, settled, ReadClock(machine).now);
}

CompanyFile::CompanyFile(const std::string& path, Machine& machine, FileMode mode, std::string_view application)
    : store_(std::make_unique<CompanyStore>(path)),
      machine_(&machine),
      mode_(mode),
      session_(std::make_unique<ProgramSession>(ProgramSession{.application = std::string(application)})) {}

CompanyFile::~CompanyFile() = default;
CompanyFile::CompanyFile(CompanyFile&&) noexcept = default;
CompanyFile& CompanyFile::operator=(CompanyFile&&) noexcept = default;

std::string CompanyFile::Process(std::string_view document) {
  return RequestProcessor(*store_, *machine_, mode_, *session_).Process(document, messages::MessageSet::Company);
}

std::string CompanyFile::ProcessSubscription(std::string_view document) {
  return RequestProcessor(*store_, *machine_, mode_, *session_).Process(document, messages::MessageSet::Subscription);
}

std::string CompanyFile::ProcessAny(std::string_view document) {
  return RequestProcessor(*store_, *machine_, mode_, *session_).Process(document, std::nullopt);
}

LineBilling CompanyFile::BillLine(std::string_view invoiceId, std::string_view lineId) {
  auto transaction = store_->Begin(SqliteTransaction::Purpose::Write);
  const auto outcome = company::BillLine(*store_, invoiceId, lineId, ReadClock(*machine_));
  transaction.Commit();
  return outcome;
}

CompanySummary CompanyFile::Summary() {
  CompanySummary summary{.options = store_->Options(), .created = store_->Created(), .kinds = {}};
  for (const auto& kind : ListKinds()) {
    auto& told = summary.kinds.emplace_back(CompanySummary::Kind{.name = std::string(kind.name)});
    for (auto& [type, records, balance] : store_->Totals(kind)) {
      told.records += records;
      if (HasBalance(kind)) told.balances.push_back({.type = std::move(type), .records = records, .balance = balance});
    }
  }
  TxnStore txns(store_->Database());
  for (const auto& kind : TxnKinds()) {
    summary.kinds.push_back({.name = std::string(kind.name), .records = txns.Count(kind)});
  }
  return summary;
}

std::vector<std::string> CompanyFile::UnknownAmounts() { return store_->UnknownAmounts(); }

std::set<std::string, std::less<>> CompanyFile::UnknownSums() { return company::UnknownSums(*store_); }

CompanyConditions CompanyFile::GetConditions() { return store_->ReadConditions(); }

void CompanyFile::SetConditions(const CompanyConditions& conditions) {
  auto transaction = store_->Begin(SqliteTransaction::Purpose::Write);
  store_->WriteConditions(conditions);
  transaction.Commit();
}

}  // namespace twqb::company
