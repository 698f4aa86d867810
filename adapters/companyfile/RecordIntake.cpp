#include "adapters/companyfile/RecordIntake.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "adapters/companyfile/CompanyClock.h"
#include "adapters/companyfile/CompanyStore.h"
#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/References.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/TxnAmounts.h"
#include "adapters/companyfile/TxnLines.h"
#include "adapters/companyfile/TxnStore.h"
#include "adapters/companyfile/TxnText.h"
#include "adapters/companyfile/XmlText.h"
#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

using messages::Element;

std::string TextOf(pugi::xml_node parent, std::string_view field) {
  return field.empty() ? std::string() : std::string(ChildText(parent, field));
}
std::int64_t Integer(std::string_view text, int base = 10) {
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number, base);
  return number;
}
// Of an identifier, "80000001-1204711200", what stands ahead of the time.
std::int64_t CountIn(std::string_view identifier) {
  constexpr int kHexadecimal = 16;
  return Integer(identifier.substr(0, identifier.find('-')), kHexadecimal);
}
std::optional<Currency> AmountIn(pugi::xml_node parent, std::string_view field) {
  return messages::ParseAmount(ChildText(parent, field));
}
Currency Positive(Currency amount) { return std::max(amount, Currency{} - amount); }

// What the kinds call the amount of a transaction, and what is open of it.
std::optional<Currency> FirstAmount(pugi::xml_node record, std::initializer_list<std::string_view> fields) {
  for (const auto field : fields) {
    if (const auto amount = AmountIn(record, field)) return amount;
  }
  return std::nullopt;
}

const Element& RecordRow(std::string_view kind) {
  return messages::FindMessage(std::string(kind) + "Query")->response.front();
}

constexpr std::string_view kLink = "LinkedTxn";
constexpr std::string_view kApplied = "AppliedToTxnRet";

// A link of one transaction to another, as it was told of the one.
struct ToldLink {
  std::string owner;
  std::string other;
  std::string element;
};
struct ToldApplication {
  std::int64_t number = 0;  // of the entry of what made it
  Application application;
  std::string element;  // where a payment told it
};

}  // namespace

class RecordIntake::Laying {
 public:
  Laying(const std::string& path, Machine& machine)
      : store_(path),
        txns_(store_.Database()),
        transaction_(store_.Begin(SqliteTransaction::Purpose::Write)),
        clock_(ReadClock(machine)) {}

  void Announce(const ListKind& kind, pugi::xml_node response) {
    for (const auto record : response.children()) owners_[TextOf(record, "ListID")].push_back(kind.name);
  }

  void AnnounceTold(const ListKind& kind, pugi::xml_node response) {
    for (const auto record : response.children()) told_[TextOf(record, "ListID")].push_back(kind.name);
  }

  void LayRecord(const ListKind& kind, pugi::xml_node told) {
    auto record = RecordOf(told);
    record.listId = IdOf(kind.name, record.listId);
    if (!record.parentId.empty()) record.parentId = IdOf(kind.name, record.parentId);
    record.type = TextOf(told, kind.typeField);
    record.number = TextOf(told, kind.numberField);
    ForEachElementRow(RecordRow(kind.name).Children(), [&](const Element& row) {
      if (!IsListColumn(row.name)) LayField(record.body, told, row);
    });
    highest_.list = std::max(highest_.list, CountIn(record.listId));
    if (const auto rate = TextOf(told, "TaxRate"); !rate.empty()) taxRates_.insert_or_assign(record.listId, rate);
    if (const auto special = TextOf(told, "SpecialAccountType"); !special.empty()) {
      store_.WriteSetting("account " + special, record.listId);
    }
    SetUses(record.listId, record.body);
    store_.Lay(kind.name, kind.nameSpace, std::move(record));
  }

  void LayTold(const ListKind& kind, pugi::xml_node told) {
    auto record = RecordOf(told);
    record.listId = OfKind(record.listId, kind.name);
    if (!record.parentId.empty()) record.parentId = OfKind(record.parentId, kind.name);
    record.body = BodyOfTold(told);
    SetUses(record.listId, record.body);
    store_.Lay(kind.name, kind.nameSpace, std::move(record));
  }

  void LayTxn(const TxnKind& kind, pugi::xml_node told) {
    TxnRecord txn;
    txn.kind = &kind;
    txn.txnId = TextOf(told, "TxnID");
    txn.number = Integer(ChildText(told, "TxnNumber"));
    txn.date = TextOf(told, "TxnDate");
    txn.refNumber = TextOf(told, "RefNumber");
    txn.entityId = Referenced(told, kind.entity);
    txn.accountId = Referenced(told, kind.account);
    txn.created = MomentOf(ChildText(told, "TimeCreated"));
    txn.modified = MomentOf(ChildText(told, "TimeModified"));
    txn.editSequence = Integer(ChildText(told, "EditSequence"));
    TakeAmounts(told, txn);
    txn.posted = !messages::ParseBool(ChildText(told, "IsPending")).value_or(false);
    TakeFields(told, txn);
    NoteNumbers(txn);
    SetUses(txn.txnId, txn.body + txn.lines);
    entered_.emplace(txn.txnId, txn.kind);
    txns_.Insert(txn);
  }

  void Refuse(std::string_view kind, const Status& refusal) { store_.WriteRefusal(kind, refusal); }

  void Finish(const CompanyConditions& conditions) {
    SettleApplications();
    SettleLinks();
    for (const auto& [sequence, last] : lastNumbers_) txns_.NoteRefNumber(sequence, last.second);
    store_.RaiseCounters(highest_);
    store_.WriteConditions(conditions);
    transaction_.Commit();
  }

 private:
  // Of several lists that have a record of that identifier, the first one keeps it.
  [[nodiscard]] std::string IdOf(std::string_view kind, std::string_view listId) const {
    const auto owners = owners_.find(listId);
    const bool isFirst = owners != owners_.end() && owners->second.front() == kind;
    return isFirst ? std::string(listId) : OfKind(listId, kind);
  }
  [[nodiscard]] static std::string OfKind(std::string_view listId, std::string_view kind) {
    return fmt::format("{}{}{}", listId, kIdOfKind, kind);
  }
  [[nodiscard]] std::string IdNamed(std::string_view field, std::string_view listId) const {
    if (listId.empty()) return {};
    const auto owners = owners_.find(listId);
    const auto* rule = FindReferenceRule(field);
    if (rule != nullptr && owners != owners_.end()) {
      for (const auto kind : rule->kinds) {
        if (std::ranges::find(owners->second, kind) != owners->second.end()) return IdOf(kind, listId);
      }
    }
    if (const auto told = told_.find(listId); rule != nullptr && told != told_.end()) {
      for (const auto kind : rule->kinds) {
        if (std::ranges::find(told->second, kind) != told->second.end()) return OfKind(listId, kind);
      }
    }
    return fmt::format("{}{}", listId, kIdOfKind);
  }
  [[nodiscard]] std::string Referenced(pugi::xml_node parent, std::string_view field) const {
    return field.empty() ? std::string() : IdNamed(field, ChildText(ChildElement(parent, field), "ListID"));
  }
  // What a line takes from an item, and the rates of a group of sales tax: of each part, and, where all are known, of
  // the whole.
  [[nodiscard]] std::string BodyOfTold(pugi::xml_node told) const {
    std::string body;
    for (const auto* field : {"SalesDesc", "SalesPrice", "PurchaseDesc", "PurchaseCost", "ItemDesc"}) {
      AppendLeaf(body, field, ChildText(told, field));
    }
    for (const auto* field : {"SalesTaxCodeRef", "TaxCodeForSaleRef", "TaxCodeForPurchaseRef"}) {
      const auto code = Referenced(told, field);
      if (code.empty()) continue;
      AppendOpenTag(body, field);
      AppendLeaf(body, "ListID", code);
      AppendCloseTag(body, field);
    }
    std::optional<std::int64_t> whole;
    bool areAllKnown = true;
    for (const auto part : told.children("ItemSalesTaxRef")) {
      const auto rate = taxRates_.find(IdNamed("ItemSalesTaxRef", ChildText(part, "ListID")));
      const auto value = rate == taxRates_.end() ? std::nullopt : Decimal::Parse(rate->second);
      areAllKnown = areAllKnown && value;
      if (!value) continue;
      AppendLeaf(body, "PartRate", value->Text());
      whole = whole.value_or(0) + value->Units();
    }
    if (whole && areAllKnown) AppendLeaf(body, "TaxRate", Decimal::FromUnits(*whole).Text());
    return body;
  }
  void LayElementOf(std::string& body, pugi::xml_node told, const Element& row) const {
    LayElement(body, told, row,
               [this](std::string_view field, std::string_view listId) { return IdNamed(field, listId); });
  }

  [[nodiscard]] std::int64_t MomentOf(std::string_view text) const {
    const auto told = messages::ParseDateTime(text);
    if (!told) return clock_.now;
    // Behind the wall clock stands the standard offset, in daylight time too.
    if (told->offsetMinutes && *told->offsetMinutes != -clock_.standardBias) {
      return told->local.PlusMinutes(-*told->offsetMinutes).UnixSeconds();
    }
    return FromWallClock(told->local, Occurrence::First, clock_);
  }

  [[nodiscard]] ListRecord RecordOf(pugi::xml_node told) const {
    ListRecord record;
    record.listId = TextOf(told, "ListID");
    record.name = TextOf(told, "Name");
    const auto parent = ChildElement(told, "ParentRef");
    record.parentId = TextOf(parent, "ListID");
    record.parentFullName = TextOf(parent, "FullName");
    record.fullName = TextOf(told, "FullName");
    const auto key = NameKey(record.name);
    record.fullKey = record.parentId.empty() ? key : ChildKey(FullNameKey(record.parentFullName), key);
    if (record.fullName.empty()) record.fullName = record.name;
    record.sublevel =
        record.parentId.empty() ? 0 : 1 + static_cast<int>(std::ranges::count(record.parentFullName, kLevelSeparator));
    record.active = messages::ParseBool(ChildText(told, "IsActive")).value_or(true);
    record.created = MomentOf(ChildText(told, "TimeCreated"));
    record.modified = MomentOf(ChildText(told, "TimeModified"));
    record.editSequence = Integer(ChildText(told, "EditSequence"));
    record.balance = AmountIn(told, "Balance").value_or(Currency{});
    record.totalBalance = AmountIn(told, "TotalBalance").value_or(record.balance);
    return record;
  }

  void LayField(std::string& body, pugi::xml_node told, const Element& row) const {
    for (const auto field : told.children()) {
      if (row.name != field.name()) continue;
      LayElementOf(body, field, row);
    }
  }

  static void TakeAmounts(pugi::xml_node told, TxnRecord& txn) {
    const auto open = FirstAmount(told, {"BalanceRemaining", "CreditRemaining", "UnusedPayment", "OpenAmount"});
    if (txn.kind->settlement != Settlement::None) txn.open = open.value_or(Currency{});
    if (const auto amount = FirstAmount(told, {"TotalAmount", "Amount", "AmountDue"})) {
      txn.amount = *amount;
    } else if (const auto applied = AmountIn(told, "AppliedAmount")) {
      txn.amount = txn.open - *applied;
    }
    const bool mayBeOpen = !messages::ParseBool(ChildText(told, "IsPaid")).value_or(false);
    if (txn.kind->settlement == Settlement::Charge && !open && mayBeOpen) txn.open = txn.amount;
  }

  void TakeFields(pugi::xml_node told, TxnRecord& txn) {
    const auto& rows = RecordRow(txn.kind->name).Children();
    for (const auto field : told.children()) {
      const auto* row = FindRow(rows, field.name());
      if (row == nullptr || IsTxnColumn(row->name) || row->name == "UnusedCredits") continue;
      std::string element;
      LayElementOf(element, field, *row);
      if (row->name == kLink) {
        links_.push_back({.owner = txn.txnId, .other = TextOf(field, "TxnID"), .element = std::move(element)});
        if (txn.kind->settlement == Settlement::Credit) NoteCredit(field, txn);
      } else if (row->name == kApplied) {
        NoteApplication(field, txn, std::move(element));
      } else if (IsLine(*txn.kind, row->name)) {
        txn.lines += element;
        NoteLines(field);
      } else {
        txn.body += element;
      }
    }
  }

  static bool IsLine(const TxnKind& kind, std::string_view answer) {
    return std::ranges::any_of(kind.lines, [&](const TxnLineKind& line) { return AnswerName(line) == answer; });
  }

  void NoteLines(pugi::xml_node line) {
    highest_.txn = std::max(highest_.txn, CountIn(ChildText(line, "TxnLineID")));
    for (const auto inside : line.children()) {
      if (std::string_view(inside.name()).ends_with("LineRet")) NoteLines(inside);
    }
  }

  void NoteNumbers(const TxnRecord& txn) {
    highest_.txn = std::max(highest_.txn, CountIn(txn.txnId));
    highest_.txnNumber = std::max(highest_.txnNumber, txn.number);
    if (txn.kind->numbers.empty() || txn.refNumber.empty()) return;
    auto& last = lastNumbers_[txn.kind->numbers];
    if (last.second.empty() || txn.number > last.first) last = {txn.number, txn.refNumber};
  }

  void NoteApplication(pugi::xml_node told, const TxnRecord& payment, std::string element) {
    applications_.push_back({.number = payment.number,
                             .application = {.paymentId = payment.txnId,
                                             .sourceId = payment.txnId,
                                             .targetId = TextOf(told, "TxnID"),
                                             .amount = AmountIn(told, "Amount").value_or(Currency{}),
                                             .discount = AmountIn(told, "DiscountAmount").value_or(Currency{}),
                                             .discountAccountId = Referenced(told, "DiscountAccountRef")},
                             .element = std::move(element)});
  }

  // Which payment set the credit against the charge nobody tells.
  void NoteCredit(pugi::xml_node told, const TxnRecord& credit) {
    applications_.push_back({.number = credit.number,
                             .application = {.paymentId = {},
                                             .sourceId = credit.txnId,
                                             .targetId = TextOf(told, "TxnID"),
                                             .amount = Positive(AmountIn(told, "Amount").value_or(Currency{})),
                                             .discount = {},
                                             .discountAccountId = {}},
                             .element = {}});
  }

  void SettleApplications() {
    std::ranges::stable_sort(applications_, {}, &ToldApplication::number);
    for (const auto& [number, application, element] : applications_) {
      const auto target = entered_.find(application.targetId);
      if (target != entered_.end() && target->second->settlement == Settlement::Charge) {
        txns_.AddApplication(application);
        settled_.emplace(application.sourceId, application.targetId);
      } else {
        txns_.AppendToLines(application.paymentId, element);
      }
    }
  }

  void SettleLinks() {
    for (const auto& [owner, other, element] : links_) {
      if (settled_.contains({owner, other}) || settled_.contains({other, owner})) continue;
      txns_.AppendToBody(owner, element);
    }
  }

  void SetUses(std::string_view owner, const std::string& body) {
    pugi::xml_document parsed;
    ParseBody(parsed, body);
    if (const auto uses = UsesOf(parsed); !uses.empty()) store_.SetUses(owner, uses);
  }

  CompanyStore store_;
  TxnStore txns_;
  SqliteTransaction transaction_;
  ClockReading clock_;
  CompanyStore::Highest highest_;
  std::map<std::string, std::vector<std::string_view>, std::less<>> owners_;  // kinds, by identifier
  std::map<std::string, std::vector<std::string_view>, std::less<>> told_;    // the same of ToldKinds
  std::map<std::string, std::string, std::less<>> taxRates_;                  // by identifier
  std::map<std::string, const TxnKind*> entered_;
  std::vector<ToldLink> links_;
  std::vector<ToldApplication> applications_;
  std::set<std::pair<std::string, std::string>> settled_;
  std::map<std::string_view, std::pair<std::int64_t, std::string>>
      lastNumbers_;  // by sequence; with the entry's number
};

namespace {

std::string MadeAt(const std::string& path, const CompanyOptions& options, Machine& machine) {
  CompanyStore::Create(path, options, ReadClock(machine).now, CompanyStore::Content::Nothing);
  return path;
}

}  // namespace

RecordIntake::RecordIntake(const std::string& path, const CompanyOptions& options, Machine& machine)
    : laying_(std::make_unique<Laying>(MadeAt(path, options, machine), machine)) {}
RecordIntake::~RecordIntake() = default;

void RecordIntake::Announce(const ListKind& kind, pugi::xml_node response) { laying_->Announce(kind, response); }

void RecordIntake::Lay(const ListKind& kind, pugi::xml_node response) {
  for (const auto record : response.children()) laying_->LayRecord(kind, record);
}

void RecordIntake::Lay(const TxnKind& kind, pugi::xml_node response) {
  for (const auto record : response.children()) laying_->LayTxn(kind, record);
}

void RecordIntake::AnnounceTold(const ListKind& kind, pugi::xml_node response) {
  laying_->AnnounceTold(kind, response);
}

void RecordIntake::LayTold(const ListKind& kind, pugi::xml_node response) {
  for (const auto record : response.children()) laying_->LayTold(kind, record);
}

void RecordIntake::Refuse(std::string_view kind, int code, std::string_view message) {
  laying_->Refuse(kind, {.code = code, .message = std::string(message)});
}

void RecordIntake::Finish(const CompanyConditions& conditions) { laying_->Finish(conditions); }

}  // namespace twqb::company
