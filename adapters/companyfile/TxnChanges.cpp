#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>

#include "adapters/companyfile/LineBilling.h"
#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/RefNumbers.h"
#include "adapters/companyfile/References.h"
#include "adapters/companyfile/Refused.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/SpecialAccounts.h"
#include "adapters/companyfile/Terms.h"
#include "adapters/companyfile/TxnLines.h"
#include "adapters/companyfile/TxnPosting.h"
#include "adapters/companyfile/TxnRequests.h"
#include "adapters/companyfile/TxnSettlement.h"
#include "adapters/companyfile/TxnText.h"
#include "adapters/companyfile/XmlText.h"
#include "messages/ValueFormat.h"
#include "platform/PlatformError.h"

namespace twqb::company {

namespace {

using messages::Element;

constexpr std::string_view kRefNumber = "RefNumber";
constexpr std::string_view kPositive = "The amount of a transaction must not be negative.";
constexpr std::string_view kBlank = "A transaction without lines cannot be recorded.";

void CheckBooks(const CompanyConditions& conditions, std::string_view date) {
  if (conditions.closingDate != kNeverClosed && date <= conditions.closingDate) {
    Refuse(status::BooksClosed(date, conditions.closingDate));
  }
}

Currency ReadMoney(pugi::xml_node parent, std::string_view name) {
  return messages::ParseAmount(ChildText(parent, name)).value_or(Currency{});
}

// One transaction on its way into the file: the header as it will be stored, completed from what it names.
class NewTxn {
 public:
  NewTxn(const TxnContext& context, const Request& request)
      : context_(context),
        record_(request.message->response.front()),
        rows_(request.message->request.front().Children()),
        fields_(ChildElement(request.node, request.message->name)),
        referrer_(SpokenName(context.kind.name)),
        txns_(context.store.Database()),
        header_(document_.append_child("Header")),
        lines_(context, record_) {
    txn_.kind = &context.kind;
  }

  TxnRecord Enter() {
    CheckConditions();
    for (const auto field : fields_.children()) {
      if (const auto* row = FindRow(record_.Children(), field.name()); row != nullptr) header_.append_copy(field);
    }
    const auto entity = Resolve(context_.kind.entity);
    txn_.entityId = entity ? entity->record.listId : std::string{};
    CheckTime(entity);
    if (entity) TakeFromEntity(*entity);
    CheckTemplate();
    FillDates();
    lines_.Read(fields_);
    TakeAccounts();
    if (context_.kind.settlement == Settlement::Payment) {
      EnterPayment(*entity);
    } else {
      FillAmounts();
      Store();
    }
    PostBalances(context_.store, txns_, txn_, Posting::Enter);
    return std::move(txn_);
  }

 private:
  [[nodiscard]] bool Has(std::string_view field) const {
    const auto* row = FindRow(record_.Children(), field);
    return row != nullptr && row->KnownIn(context_.form);
  }

  void CheckConditions() {
    const auto date = ChildText(fields_, "TxnDate");
    txn_.date = messages::DateText(messages::ParseDateText(date).value_or(context_.clock.today));
    txn_.refNumber = ChildText(fields_, kRefNumber);
    CheckBooks(context_.store.ReadConditions(), txn_.date);
  }

  // The record that a field of the header names. Throws Refused where it names none and the request has to name one.
  std::optional<FoundRecord> Resolve(std::string_view field) {
    auto found = FindReferenced(context_.store, ChildElement(header_, field), referrer_);
    const auto* row = FindRow(rows_, field);
    if (!found && row != nullptr && !row->optional) Refuse(status::MissingElement(field));
    return found;
  }

  // Time that is billable has somebody to bill it to, and an employee's time that is paid makes paychecks or not.
  void CheckTime(const std::optional<FoundRecord>& entity) {
    const bool billable = messages::ParseBool(ChildText(header_, "IsBillable")).value_or(false);
    if (billable && ReadReference(ChildElement(header_, "CustomerRef")).Value().empty()) {
      Refuse(status::CannotSave(referrer_, "Billable time must have a customer or job."));
    }
    if (!entity || entity->kind->name != "Employee") return;
    if (ReadReference(ChildElement(header_, "PayrollItemWageRef")).Value().empty()) return;
    pugi::xml_document body;
    ParseBody(body, entity->record.body);
    const auto payroll = ChildElement(body, "EmployeePayrollInfo");
    const auto use = ChildText(payroll, "UseTimeDataToCreatePaychecks");
    const bool known =
        !ChildText(payroll, "IsUsingTimeDataToCreatePaychecks").empty() || (!use.empty() && use != "NotSet");
    if (!known) Refuse(status::TimeForPaychecksUnknown(entity->record.name));
  }

  // What a sale takes from its customer, and a bill from its vendor, where it says nothing itself.
  void TakeFromEntity(const FoundRecord& entity) {
    if (!Has("TermsRef")) return;
    pugi::xml_document body;
    ParseBody(body, entity.record.body);
    struct Taken {
      std::string_view from;
      const char* to;
    };
    constexpr std::array kTerms = {Taken{"TermsRef", "TermsRef"}};
    constexpr std::array kOfSale = {Taken{"BillAddress", "BillAddress"}, Taken{"ShipAddress", "ShipAddress"},
                                    Taken{"ItemSalesTaxRef", "ItemSalesTaxRef"},
                                    Taken{"SalesTaxCodeRef", "CustomerSalesTaxCodeRef"}};
    const auto take = [&](const Taken& taken) {
      const auto own = ChildElement(body, taken.from);
      if (!own || !Has(taken.to) || ChildElement(header_, taken.to)) return;
      header_.append_copy(own).set_name(taken.to);
    };
    std::ranges::for_each(kTerms, take);
    if (Has("Subtotal")) std::ranges::for_each(kOfSale, take);
  }

  // A template is for one kind of transaction.
  void CheckTemplate() {
    const auto found = Resolve("TemplateRef");
    if (!found) return;
    pugi::xml_document body;
    ParseBody(body, found->record.body);
    if (ChildText(body, "TemplateType") != context_.kind.name) {
      const auto value = ReadReference(ChildElement(header_, "TemplateRef")).Value();
      Refuse(status::ReferenceOfWrongKind("TemplateRef", value, referrer_));
    }
  }

  Date DueOn(const FoundRecord& terms, Date day) {
    const auto due = DueDate(terms, day);
    constexpr int kLastYear = 9999;
    if (due.ToCivil().year > kLastYear)
      Refuse(status::CannotSave(referrer_, "The due date is behind the last day of 9999."));
    return due;
  }

  void FillDates() {
    const auto terms = Resolve("TermsRef");
    for (const char* field : {"DueDate", "ShipDate"}) {
      if (!Has(field) || !ChildText(header_, field).empty()) continue;
      const auto day = messages::ParseDateText(txn_.date);
      const bool isDue = terms && day && std::string_view(field) == "DueDate";
      SetLeaf(header_, field, isDue ? messages::DateText(DueOn(*terms, *day)) : txn_.date);
    }
  }

  void TakeAccounts() {
    const auto& kind = context_.kind;
    if (Has("DepositToAccountRef") && !Resolve("DepositToAccountRef")) {
      SetReference(header_, "DepositToAccountRef", MakeAccount(kUndepositedFunds));
    }
    if (kind.account.empty()) return;
    if (const auto account = Resolve(kind.account)) {
      if (std::ranges::find(kind.accountTypes, account->record.type) == kind.accountTypes.end()) {
        Refuse(status::ReferenceOfWrongKind(kind.account, ReadReference(ChildElement(header_, kind.account)).Value(),
                                            referrer_));
      }
      txn_.accountId = account->record.listId;
      return;
    }
    for (const auto& account : {kAccountsReceivable, kAccountsPayable}) {
      if (account.type == kind.accountTypes.front()) txn_.accountId = MakeAccount(account);
    }
    SetReference(header_, std::string(kind.account).c_str(), txn_.accountId);
  }

  std::string MakeAccount(const SpecialAccount& account) {
    return FindOrMakeSpecialAccount(context_.store, account, context_.clock.now).listId;
  }

  void FillAmounts() {
    const auto& kind = context_.kind;
    auto total = lines_.Subtotal() + ReadMoney(fields_, "Tax1Total") + ReadMoney(fields_, "Tax2Total");
    if (Has("Subtotal")) total = total + FillTax();
    // No verdict hangs on a sum that is not QuickBooks'.
    const bool isGuess = !lines_.AreKnown();
    if (isGuess) total = std::max(total, Currency{});
    if (total < Currency{}) Refuse(status::CannotSave(referrer_, kPositive));
    if (total == Currency{} && !isGuess && kind.zeroTotal == ZeroTotal::Refused)
      throw PlatformError(error::kRequestIncomplete);
    if (!kind.lines.empty() && lines_.Empty()) Refuse(status::CannotSave(referrer_, kBlank));
    txn_.amount = total;
    if (kind.settlement != Settlement::None) txn_.open = total;
    txn_.posted = !messages::ParseBool(ChildText(fields_, "IsPending")).value_or(false);
  }

  // The tax on the taxable lines, if the customer is taxable at all.
  Currency FillTax() {
    SetLeaf(header_, "Subtotal", MoneyText(lines_.Subtotal()));
    const auto item = Resolve("ItemSalesTaxRef");
    pugi::xml_document body;
    if (item) ParseBody(body, item->record.body);
    const auto customerCode = ChildElement(header_, "CustomerSalesTaxCodeRef");
    const bool taxable = !customerCode || IsTaxable(context_.store, customerCode, referrer_);
    const auto percent = taxable ? ReadDecimal(body, "TaxRate").value_or(Decimal{}) : Decimal{};
    const auto tax = PercentOf(lines_.Taxable(), percent).value_or(Currency{});
    if (percent != Decimal{} && !lines_.IsTaxKnown()) isKnown_ = false;
    if (item && taxable && item->kind->name == "ItemSalesTaxGroup" && !IsTaxOfGroup(body, tax)) isKnown_ = false;
    SetLeaf(header_, "SalesTaxPercentage", percent.TextToCents());
    SetLeaf(header_, "SalesTaxTotal", MoneyText(tax));
    return tax;
  }

  // Where QuickBooks rounds, on the whole or on each part of a group, is not known: where that makes a difference, or
  // the parts were not told, the tax isn't either.
  bool IsTaxOfGroup(pugi::xml_node group, Currency tax) const {
    if (ChildText(group, "TaxRate").empty()) return false;
    Currency byParts;
    for (const auto part : group.children("PartRate")) {
      const auto rate = Decimal::Parse(part.child_value()).value_or(Decimal{});
      byParts = byParts + PercentOf(lines_.Taxable(), rate).value_or(Currency{});
    }
    return byParts == tax;
  }

  void EnterPayment(const FoundRecord& payer) {
    TxnSettlement settlement(context_, txns_, payer.record, txn_.accountId);
    settlement.Plan(fields_, messages::ParseAmount(ChildText(fields_, "TotalAmount")));
    txn_.amount = settlement.Total();
    txn_.open = settlement.Unused();
    Store();
    settlement.CarryOut(txn_.txnId);
  }

  void Store() {
    ForEachElementRow(record_.Children(), [&](const Element& row) {
      if (IsTxnColumn(row.name)) return;
      if (const auto field = ChildElement(header_, row.name)) {
        StoreElement(txn_.body, field, row, context_.store, referrer_);
      }
    });
    txn_.lines = lines_.Store();

    NumberReference();
    const auto now = context_.clock.now;
    txn_.txnId = context_.store.NewTxnId(now);
    TxnLines::Number(txn_.lines, [&] { return context_.store.NewTxnId(now); });
    txn_.number = txns_.NewNumber();
    txn_.created = txn_.modified = txn_.editSequence = now;
    txns_.Insert(txn_);
    NoteUses();
    if (!isKnown_ || !lines_.AreKnown()) context_.store.NoteUnknownAmounts(txn_.txnId);
  }

  // A number that is left out is the one behind the last that was given; one that is given empty stays so.
  void NumberReference() {
    const auto sequence = context_.kind.numbers;
    if (sequence.empty()) return;
    if (!ChildElement(fields_, kRefNumber)) txn_.refNumber = NextRefNumber(txns_.LastRefNumber(sequence));
    if (!txn_.refNumber.empty()) txns_.NoteRefNumber(sequence, txn_.refNumber);
  }

  void NoteUses() {
    pugi::xml_document all;
    ParseBody(all, txn_.body + txn_.lines);
    for (const auto line : fields_.children()) {
      const auto account = FindReferenced(context_.store, ChildElement(line, "DiscountAccountRef"), referrer_);
      if (account) SetReference(all, "DiscountAccountRef", account->record.listId);
    }
    context_.store.SetUses(txn_.txnId, UsesOf(all));
  }

  const TxnContext& context_;
  const Element& record_;
  std::span<const Element> rows_;
  pugi::xml_node fields_;
  std::string referrer_;
  TxnStore txns_;
  pugi::xml_document document_;
  pugi::xml_node header_;
  TxnLines lines_;
  TxnRecord txn_;
  bool isKnown_ = true;  // what it comes to, as far as that doesn't hang on its lines
};

TxnRecord Delete(CompanyStore& store, TxnStore& txns, const ClockReading& clock, const Request& request) {
  const auto txnId = ChildText(request.node, "TxnID");
  auto txn = txns.Find(txnId);
  if (!txn || txn->kind->name != ChildText(request.node, "TxnDelType")) Refuse(status::ObjectNotFound(txnId));
  CheckBooks(store.ReadConditions(), txn->date);
  for (const auto& step : txns.ApplicationsOf(txnId)) {
    if (step.paymentId != txnId) Refuse(status::CannotDelete(txnId, "Another transaction is applied to it."));
  }
  if (!txns.BilledLinesOf(txnId).empty()) Refuse(status::CannotDelete(txnId, "A line of it has been billed."));
  PostBalances(store, txns, *txn, Posting::TakeBack);
  TxnSettlement::Undo(txns, txn->txnId, clock);
  GiveLinesBack(txns, txn->txnId, clock);
  txns.Delete(txnId);
  store.SetUses(txnId, {});
  store.NoteDeletion(txnId, txn->kind->name, txn->refNumber, clock.now);
  return *std::move(txn);
}

// Carries out `change` as a whole or not at all, and answers with what `write` makes of it.
template <typename Change, typename Write>
void Answer(CompanyStore& store, Response& response, const Change& change, const Write& write) {
  try {
    SqliteSavepoint savepoint(store.Database());
    const auto txn = change();
    savepoint.Keep();
    response.Begin({});
    write(txn);
    response.End();
  } catch (const Refused& refused) {
    response.Answer(refused.status);
  }
}

}  // namespace

void RequireFeature(const TxnContext& context) {
  const auto feature = context.kind.feature;
  if (feature != nullptr && context.store.ReadConditions().*feature == Feature::Disabled) {
    Refuse(status::FeatureNotEnabled(context.kind.name));
  }
}

void AddTxn(const TxnContext& context, const Request& request, Response& response) {
  Answer(
      context.store, response,
      [&] {
        RequireFeature(context);
        auto txn = NewTxn(context, request).Enter();
        context.macros.Define(ChildElement(request.node, request.message->name), txn.txnId);
        return txn;
      },
      [&](const TxnRecord& txn) {
        TxnStore txns(context.store.Database());
        TxnWriter(context, txns, request.message->response.front(), {}).Append(response.Content(), txn);
      });
}

void DeleteTxn(CompanyStore& store, const ClockReading& clock, const Request& request, Response& response) {
  TxnStore txns(store.Database());
  Answer(
      store, response, [&] { return Delete(store, txns, clock, request); },
      [&](const TxnRecord& txn) {
        auto& out = response.Content();
        AppendLeaf(out, "TxnDelType", txn.kind->name);
        AppendLeaf(out, "TxnID", txn.txnId);
        AppendLeaf(out, "TimeDeleted", TimeText(clock.now, clock));
        AppendLeaf(out, "RefNumber", txn.refNumber);
      });
}

void DisplayTxn(CompanyStore& store, const Request& request, Response& response) {
  const auto txnId = ChildText(request.node, "TxnID");
  const auto txn = TxnStore(store.Database()).Find(txnId);
  const bool there = txn && txn->kind->name == ChildText(request.node, "TxnDisplayModType");
  response.Answer(there ? Status{} : status::ObjectNotFound(txnId));
}

}  // namespace twqb::company
