#include "adapters/companyfile/TxnText.h"

#include <algorithm>
#include <array>

#include "adapters/companyfile/RecordText.h"
#include "adapters/companyfile/SchemaWalk.h"
#include "adapters/companyfile/TxnAmounts.h"
#include "adapters/companyfile/TxnLines.h"
#include "adapters/companyfile/XmlText.h"
#include "messages/ValueFormat.h"

namespace twqb::company {

namespace {

using messages::Element;

// The fields that are columns of the storage, whatever the kind calls the amount and the open amount.
struct ColumnField {
  std::string_view name;
  std::string (*text)(const TxnRecord&, const ClockReading&);
};
std::string AmountOfTxn(const TxnRecord& t, const ClockReading&) { return MoneyText(t.amount); }
std::string OpenOfTxn(const TxnRecord& t, const ClockReading&) { return MoneyText(t.open); }
constexpr std::array kColumnFields = {
    ColumnField{"TxnID", [](const TxnRecord& t, const ClockReading&) { return t.txnId; }},
    ColumnField{"TimeCreated", [](const TxnRecord& t, const ClockReading& c) { return TimeText(t.created, c); }},
    ColumnField{"TimeModified", [](const TxnRecord& t, const ClockReading& c) { return TimeText(t.modified, c); }},
    ColumnField{"EditSequence", [](const TxnRecord& t, const ClockReading&) { return std::to_string(t.editSequence); }},
    ColumnField{"TxnNumber", [](const TxnRecord& t, const ClockReading&) { return std::to_string(t.number); }},
    ColumnField{"TxnDate", [](const TxnRecord& t, const ClockReading&) { return t.date; }},
    ColumnField{"RefNumber", [](const TxnRecord& t, const ClockReading&) { return t.refNumber; }},
    ColumnField{"TotalAmount", AmountOfTxn},
    ColumnField{"Amount", AmountOfTxn},
    ColumnField{"AmountDue", AmountOfTxn},
    ColumnField{"OpenAmount", OpenOfTxn},
    ColumnField{"BalanceRemaining", OpenOfTxn},
    ColumnField{"CreditRemaining", OpenOfTxn},
    ColumnField{"UnusedPayment", OpenOfTxn},
    ColumnField{"AppliedAmount", [](const TxnRecord& t, const ClockReading&) { return MoneyText(t.open - t.amount); }},
    ColumnField{"IsPaid",
                [](const TxnRecord& t, const ClockReading&) { return messages::BoolText(t.open == Currency{}); }},
};

const ColumnField* FindColumn(std::string_view name) {
  const auto* found = std::ranges::find(kColumnFields, name, &ColumnField::name);
  return found == kColumnFields.end() ? nullptr : found;
}

const TxnLineKind* LineOfAnswer(const TxnKind& kind, std::string_view name) {
  const auto found =
      std::ranges::find_if(kind.lines, [&](const TxnLineKind& line) { return AnswerName(line) == name; });
  return found == kind.lines.end() ? nullptr : &*found;
}

void TellBilled(const pugi::xml_document& lines, const std::vector<BilledLine>& billed) {
  for (const auto& line : billed) {
    const auto found =
        lines.find_child([&](pugi::xml_node node) { return ChildText(node, "TxnLineID") == line.lineId; });
    SetLeaf(found, "BillableStatus", "HasBeenBilled");
  }
}

}  // namespace

bool IsTxnColumn(std::string_view field) { return FindColumn(field) != nullptr; }

void TxnWriter::Append(std::string& out, const TxnRecord& txn) {
  ParseBody(body_, txn.body);
  ParseBody(lines_, txn.lines);
  AppendOpenTag(out, record_.name);
  bool linesAppended = false;
  ForEachElementRow(record_.Children(), [&](const Element& row) {
    const auto* line = LineOfAnswer(context_.kind, row.name);
    if (line == nullptr) {
      if (row.KnownIn(context_.form)) AppendField(out, txn, row);
    } else if (detail_.parts == TxnParts::Header) {
      return;
    } else if (line->role == LineRole::Application) {
      AppendApplications(out, txn, row);
    } else if (!linesAppended) {
      // The rows of lines stand side by side, and the lines of a choice come in an order of their own.
      AppendLines(out, txn);
      linesAppended = true;
    }
  });
  AppendCloseTag(out, record_.name);
}

void TxnWriter::AppendField(std::string& out, const TxnRecord& txn, const Element& row) {
  if (row.name == "UnusedCredits") return AppendLeaf(out, row.name, MoneyText(txns_.OpenCredit(txn.entityId)));
  if (row.name == "LinkedTxn") return AppendLinks(out, txn, row);
  if (const auto* column = FindColumn(row.name)) return AppendLeaf(out, row.name, column->text(txn, context_.clock));
  if (const auto element = ChildElement(body_, row.name)) {
    return AnswerElement(out, element, row, context_.form, names_);
  }
  const auto& defaults = context_.kind.defaults;
  const auto value = std::ranges::find(defaults, row.name, &FieldDefault::field);
  if (value != defaults.end()) AppendLeaf(out, row.name, value->value);
}

void TxnWriter::AppendLines(std::string& out, const TxnRecord& txn) {
  if (context_.kind.side == ItemSide::Purchase) TellBilled(lines_, txns_.BilledLinesOf(txn.txnId));
  for (const auto line : lines_.children()) {
    AnswerElement(out, line, *FindRow(record_.Children(), line.name()), context_.form, names_);
  }
}

// A payment seen from a charge is negative, a charge seen from a credit too.
void TxnWriter::AppendLinks(std::string& out, const TxnRecord& txn, const Element& row) {
  if (detail_.links == TxnDetail::Links::LeftOut) return;
  for (const auto& step : txns_.ApplicationsOf(txn.txnId)) {
    const auto other = txns_.Find(step.sourceId == txn.txnId ? step.targetId : step.sourceId);
    if (!other) continue;
    pugi::xml_document link;
    SetLeaf(link, "TxnID", other->txnId);
    SetLeaf(link, "TxnType", std::string(other->kind->name));
    SetLeaf(link, "TxnDate", other->date);
    SetLeaf(link, "RefNumber", other->refNumber);
    SetLeaf(link, "LinkType", "AMTTYPE");
    SetLeaf(link, "Amount", MoneyText(Negated(step.amount + step.discount)));
    AnswerElement(out, link, row, context_.form, names_);
  }
  AppendTold(out, body_, row);
}

// What another QuickBooks told of links that lead out of this file, or are of a sort that it does not make.
void TxnWriter::AppendTold(std::string& out, pugi::xml_node told, const Element& row) {
  for (const auto link : told.children()) {
    if (row.name == link.name()) AnswerElement(out, link, row, context_.form, names_);
  }
}

// What the payment itself paid; credits that it used are links of the charge and the credit.
void TxnWriter::AppendApplications(std::string& out, const TxnRecord& txn, const Element& row) {
  for (const auto& step : txns_.ApplicationsMadeBy(txn.txnId)) {
    const auto target = step.sourceId == txn.txnId ? txns_.Find(step.targetId) : std::nullopt;
    if (!target) continue;
    pugi::xml_document applied;
    SetLeaf(applied, "TxnID", target->txnId);
    SetLeaf(applied, "TxnType", std::string(target->kind->name));
    SetLeaf(applied, "TxnDate", target->date);
    SetLeaf(applied, "RefNumber", target->refNumber);
    SetLeaf(applied, "BalanceRemaining", MoneyText(target->open));
    SetLeaf(applied, "Amount", MoneyText(step.amount));
    if (step.discount != Currency{}) {
      SetLeaf(applied, "DiscountAmount", MoneyText(step.discount));
      SetReference(applied, "DiscountAccountRef", step.discountAccountId);
    }
    AnswerElement(out, applied, row, context_.form, names_);
  }
  AppendTold(out, lines_, row);
}

}  // namespace twqb::company
