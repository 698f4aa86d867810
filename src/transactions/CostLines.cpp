#include "transactions/CostLines.h"

#include <fmt/format.h>

#include <utility>

#include "engine/PairMoves.h"
#include "platform/Text.h"
#include "services/Conversions.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"
#include "services/RecordInHand.h"
#include "services/Sql.h"
#include "transactions/TxnTable.h"

namespace twqb {

namespace {

std::string LookUpOrNothing(ado::Connection& connection, const Sql& statement) {
  std::string found;
  IgnoreErrors([&] { found = LookUp(connection, statement); });
  return found;
}

}  // namespace

LineCode CodeOfItem(ado::Connection& connection, const Record& line) {
  const auto item = TextOr(line["ItemRef"], "ListID", "");
  if (item.empty()) return {};
  auto activity = LookUpOrNothing(connection, Sql("SELECT ActivityID FROM Activity WHERE QBLinkID = '{}';", item));
  if (!activity.empty()) return {.kind = CodeKind::Activity, .code = std::move(activity)};
  return {.kind = CodeKind::Expense,
          .code = LookUpOrNothing(connection, Sql("SELECT ExpID FROM Expense WHERE QBLinkID = '{}';", item))};
}

std::string DescriptionOf(ado::Connection& connection, const LineCode& code) {
  return LookUp(connection, code.kind == CodeKind::Activity
                                ? Sql("SELECT ActivityDescription FROM Activity WHERE ActivityID = '{}';", code.code)
                                : Sql("SELECT ExpDescription FROM Expense WHERE ExpID = '{}';", code.code));
}

std::string TextOr(const Record& line, std::string_view field, std::string_view otherwise) {
  std::string text(otherwise);
  IgnoreErrors([&] { text = line[field].GetValue(); });
  return text;
}

Currency AmountOr(const Record& line, std::string_view field, Currency otherwise) {
  IgnoreErrors([&] { otherwise = line[field].GetAmount(); });
  return otherwise;
}

Decimal NumberOr(const Record& line, std::string_view field, Decimal otherwise) {
  IgnoreErrors([&] { otherwise = Decimal::FromDouble(line[field].GetNumber()); });
  return otherwise;
}

std::string MadeUpNumber() {
  // Seven decimals: the whole is no longer than what QuickBooks takes as a number.
  constexpr double kDecimals = 1e7;
  const auto now = TheMachine().Now().ToCivil();
  const auto chance = static_cast<std::int64_t>(TheMachine().Random() * kDecimals);
  return fmt::format("{}{}{}{}{}", now.year, now.month, now.minute, now.second,
                     NumberToText(static_cast<double>(chance) / kDecimals));
}

std::string NumberOfDocument(const Record& document) {
  auto number = document["RefNumber"].GetValueOrEmpty();
  return Trim(number).empty() ? MadeUpNumber() : number;
}

bool MayBeChanged(ado::Recordset& rows, std::string_view keyColumn, std::string_view link, TwinRule rule,
                  const Record& record) {
  if (rule == TwinRule::LeaveAlone) {
    NoteFate(Fate::LeftAsItWas, kNeverChanged);
    return false;
  }
  const bool may = FindRowToChange(rows, link, rule, record, "LastUpdated");
  NoteKeyOf(rows, keyColumn);
  return may;
}

LineRow::LineRow(ado::Connection& connection, const LineTable& table, std::string link)
    : table_(table),
      link_(std::move(link)),
      isNew_(!IsLinkedTo(connection, table.table, link_)),
      rows_(connection, table.opened) {}

bool LineRow::MayBeChanged(TwinRule rule, const Record& record) const {
  return twqb::MayBeChanged(Row(), table_.keyColumn, link_, rule, record);
}

void LineRow::Add() const {
  Row().AddNew();
  auto key = GenerateGUID();
  NoteKey(key);
  Row().SetField(table_.keyColumn, std::move(key));
}

bool IsBilled(std::string_view status) {
  const auto upper = UpperCase(status);
  return upper == "P" || upper == "B";
}

void ForEachLine(const Record& lines, std::string_view branch, const std::function<void(const Record& line)>& take) {
  if (lines.IsNothing()) return;
  for (std::size_t i = 0; i < lines.Count(); ++i) {
    const auto entry = lines.GetAt(i);
    const auto line = branch.empty() ? entry : entry[branch];
    if (!line.IsNothing()) take(line);
  }
}

}  // namespace twqb
