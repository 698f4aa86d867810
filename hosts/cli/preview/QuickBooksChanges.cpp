#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <exception>
#include <iterator>
#include <map>
#include <pugixml.hpp>
#include <span>
#include <string_view>
#include <utility>

#include "adapters/companyfile/CompanyFile.h"
#include "cli/preview/PreviewChanges.h"
#include "cli/workplace/CompanyAnswer.h"
#include "messages/Schema.h"

namespace twqb::cli {

namespace {

using preview::TouchedRecord;

// A record as its fields by their paths, in their order.
struct FlatRecord {
  std::string name;
  std::vector<std::pair<std::string, std::string>> fields;
};
using FlatRecords = std::map<std::string, FlatRecord, std::less<>>;  // by identifier

// What QuickBooks gives and nobody sets. Of a reference the name tells which record it is.
bool IsQuickBooksOwn(pugi::xml_node field) {
  constexpr std::array<std::string_view, 7> kOwn = {"TimeCreated", "TimeModified", "EditSequence", "TxnNumber",
                                                    "TxnID",       "TxnLineID",    "ListID"};
  const std::string_view name = field.name();
  if (std::ranges::find(kOwn, name) == kOwn.end()) return false;
  const std::string_view above = field.parent().name();
  return !above.ends_with("Ref") || field.parent().child("FullName");
}

void Flatten(pugi::xml_node parent, const std::string& path, FlatRecord& record) {
  std::map<std::string, int> numbers;
  for (const auto field : parent.children()) {
    if (field.type() != pugi::node_element || IsQuickBooksOwn(field)) continue;
    const std::string name = field.name();
    const int number = ++numbers[name];
    const bool isOneOfSeveral = number > 1 || name.find("LineRet") != std::string::npos;
    const auto here =
        fmt::format("{}{}{}{}", path, path.empty() ? "" : "/", name, isOneOfSeveral ? fmt::format("[{}]", number) : "");
    if (field.first_child().type() == pugi::node_element) {
      Flatten(field, here, record);
    } else {
      record.fields.emplace_back(here, field.child_value());
    }
  }
}

std::string NameIn(pugi::xml_node record) {
  for (const auto* field : {"FullName", "Name", "RefNumber"}) {
    if (std::string name = record.child_value(field); !name.empty()) return name;
  }
  return {};
}

class CompanyReader {
 public:
  CompanyReader(const std::string& path, Machine& machine) : path_(path), machine_(machine) {
    company::CompanyFile file(path, machine);
    form_ = FormOf(file);
  }

  // Those of one kind, some at a time.
  [[nodiscard]] FlatRecords Read(const std::vector<const TouchedRecord*>& records) const {
    constexpr std::size_t kAtOnce = 100;
    FlatRecords found;
    for (std::size_t from = 0; from < records.size(); from += kAtOnce) {
      const auto to = std::min(records.size(), from + kAtOnce);
      Read(std::span(records).subspan(from, to - from), found);
    }
    return found;
  }

  // All of a list.
  [[nodiscard]] FlatRecords ReadList(const std::string& kind) const {
    FlatRecords found;
    Ask(kind, "<ActiveStatus>All</ActiveStatus>", "ListID", found);
    return found;
  }

 private:
  // One that is not there makes QuickBooks refuse the question for all.
  void Read(std::span<const TouchedRecord* const> records, FlatRecords& found) const {
    if (AskFor(records, found) || records.size() == 1) return;
    for (const auto& record : records) AskFor({&record, 1}, found);
  }

  bool AskFor(std::span<const TouchedRecord* const> records, FlatRecords& found) const {
    const auto& first = *records.front();
    const auto* field = first.isTransaction ? "TxnID" : "ListID";
    std::string identifiers;
    for (const auto* record : records) identifiers += fmt::format("<{0}>{1}</{0}>", field, record->identifier);
    // Not every transaction has lines to ask for.
    const std::string withLines = identifiers + "<IncludeLineItems>true</IncludeLineItems>";
    return (first.isTransaction && Ask(first.kind, withLines, field, found)) ||
           Ask(first.kind, identifiers, field, found);
  }

  // False when QuickBooks refuses the question.
  bool Ask(const std::string& kind, const std::string& fields, const char* identifier, FlatRecords& found) const {
    try {
      const CompanyAnswer answer(company::CompanyFile(path_, machine_), form_,
                                 fmt::format("<{0}QueryRq>{1}</{0}QueryRq>", kind, fields));
      for (const auto record : answer.Response().children()) {
        auto& flat = found[record.child_value(identifier)];
        flat.name = NameIn(record);
        Flatten(record, "", flat);
      }
      return true;
    } catch (const std::exception&) {
      return false;
    }
  }

  std::string path_;
  Machine& machine_;
  messages::Form form_;
};

std::vector<FieldChange> Compare(const FlatRecord& before, const FlatRecord& after) {
  std::vector<FieldChange> fields;
  const std::map<std::string, std::string> then(before.fields.begin(), before.fields.end());
  const std::map<std::string, std::string> now(after.fields.begin(), after.fields.end());
  for (const auto& [field, value] : after.fields) {
    const auto found = then.find(field);
    if (found == then.end()) {
      fields.push_back({.field = field, .after = value});
    } else if (found->second != value) {
      fields.push_back({.field = field, .before = found->second, .after = value});
    }
  }
  for (const auto& [field, value] : before.fields) {
    if (!now.contains(field)) fields.push_back({.field = field, .before = value});
  }
  return fields;
}

using FlatByKind = std::map<std::string, FlatRecords, std::less<>>;

// Those of the touched that `mayBe` there.
template <typename MayBe>
FlatByKind ReadAll(const std::string& path, const std::vector<TouchedRecord>& touched, Machine& machine, MayBe mayBe) {
  std::map<std::string, std::vector<const TouchedRecord*>> kinds;
  for (const auto& record : touched) {
    if (mayBe(record)) kinds[record.kind].push_back(&record);
  }
  FlatByKind found;
  const CompanyReader reader(path, machine);
  for (const auto& [kind, records] : kinds) found[kind] = reader.Read(records);
  return found;
}

ChangeKind KindOf(const TouchedRecord& record, bool was, bool is) {
  if (was && is) return ChangeKind::Changed;
  if (was) return ChangeKind::Removed;
  // What can't be read on either side was touched all the same.
  if (is || record.first == preview::Touch::Added) return ChangeKind::Added;
  return record.first == preview::Touch::Removed ? ChangeKind::Removed : ChangeKind::Changed;
}

// Nobody asks for those: QuickBooks makes an account itself when a transaction needs it first.
std::vector<RecordChange> NewAccounts(const preview::ScratchFile& company, const std::vector<TouchedRecord>& touched,
                                      Machine& machine) {
  constexpr const char* kKind = "Account";
  std::vector<RecordChange> changes;
  if (std::ranges::none_of(touched, &TouchedRecord::isTransaction)) return changes;
  const auto before = CompanyReader(company.before, machine).ReadList(kKind);
  for (const auto& [identifier, account] : CompanyReader(company.worked, machine).ReadList(kKind)) {
    const bool isTouched = std::ranges::find(touched, identifier, &TouchedRecord::identifier) != touched.end();
    if (isTouched || before.contains(identifier)) continue;
    changes.push_back({.side = ChangedSide::QuickBooks,
                       .kind = ChangeKind::Added,
                       .place = kKind,
                       .key = identifier,
                       .name = account.name,
                       .identifier = identifier,
                       .fields = Compare({}, account)});
  }
  return changes;
}

// What one transaction comes to; and sums that it is in. Of a payment the own amount is known.
constexpr std::array<std::string_view, 9> kOwnAmounts = {
    "Amount",      "TotalAmount", "AmountDue",          "Subtotal",     "Rate",
    "RatePercent", "Cost",        "SalesTaxPercentage", "SalesTaxTotal"};
constexpr std::array<std::string_view, 9> kSums = {"Balance",       "TotalBalance",  "BalanceRemaining",
                                                   "AppliedAmount", "OpenAmount",    "CreditRemaining",
                                                   "UnusedPayment", "UnusedCredits", "IsPaid"};

bool IsAmong(std::span<const std::string_view> names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

// Nothing is said of amounts that may be none of QuickBooks'.
void LeaveOutUnknown(company::CompanyFile company, std::vector<RecordChange>& changes) {
  const auto unknown = company.UnknownAmounts();
  if (unknown.empty()) return;
  const auto withSums = company.UnknownSums();
  for (auto& change : changes) {
    const bool isItself = std::ranges::find(unknown, change.identifier) != unknown.end();
    if (!isItself && !withSums.contains(change.identifier)) continue;
    const auto left = std::erase_if(change.fields, [&](const FieldChange& field) {
      const auto name = std::string_view(field.field).substr(field.field.rfind('/') + 1);
      return IsAmong(kSums, name) || (isItself && IsAmong(kOwnAmounts, name));
    });
    change.areAmountsUnknown = isItself || left > 0;
  }
}

}  // namespace

std::vector<RecordChange> QuickBooksChanges(const preview::ScratchFile& company, const preview::TouchedRecords& touched,
                                            Machine& machine) {
  std::vector<RecordChange> changes;
  if (touched.All().empty()) return changes;
  auto before = ReadAll(company.before, touched.All(), machine,
                        [](const TouchedRecord& record) { return record.first != preview::Touch::Added; });
  auto after = ReadAll(company.worked, touched.All(), machine, [](const TouchedRecord& /*record*/) { return true; });
  for (const auto& record : touched.All()) {
    const auto& then = before[record.kind];
    const auto& now = after[record.kind];
    const auto was = then.find(record.identifier);
    const auto is = now.find(record.identifier);
    const FlatRecord none;
    const auto& old = was == then.end() ? none : was->second;
    const auto& present = is == now.end() ? none : is->second;
    changes.push_back({.side = ChangedSide::QuickBooks,
                       .kind = KindOf(record, was != then.end(), is != now.end()),
                       .place = record.kind,
                       .key = record.identifier,
                       .name = is == now.end() ? old.name : present.name,
                       .identifier = record.identifier,
                       .fields = Compare(old, present)});
  }
  std::ranges::move(NewAccounts(company, touched.All(), machine), std::back_inserter(changes));
  LeaveOutUnknown(company::CompanyFile(company.worked, machine), changes);
  return changes;
}

}  // namespace twqb::cli
