#include "adapters/companyfile/RecordFilter.h"

#include <fmt/core.h>

#include <array>

#include "platform/Text.h"

namespace twqb::company {

FilterStatement::FilterStatement(std::string_view select, const ListKind& kind, const RecordFilter& filter)
    : sql_(select) {
  sql_ += "WHERE r.kind = ?";
  values_.emplace_back(kind.name);
  if (filter.activeStatus != ActiveStatus::All) {
    Add(" AND r.active = ?", std::int64_t{filter.activeStatus == ActiveStatus::ActiveOnly});
  }
  if (filter.modifiedFrom) Add(" AND r.modified >= ?", *filter.modifiedFrom);
  if (filter.modifiedTo) Add(" AND r.modified <= ?", *filter.modifiedTo);
  if (filter.nameFrom) Add(" AND r.name_key >= ?", std::string_view(*filter.nameFrom));
  if (filter.nameTo) Add(" AND r.name_key <= ?", std::string_view(*filter.nameTo));
  if (filter.nameMatch) AddNameMatch(*filter.nameMatch);
  if (filter.totalBalance) {
    constexpr std::array<std::string_view, 5> kOperators = {"<", "<=", "=", ">", ">="};
    const auto comparison = static_cast<std::size_t>(filter.totalBalance->comparison);
    Add(fmt::format(" AND r.total_balance {} ?", kOperators[comparison]), filter.totalBalance->amount.TenThousandths());
  }
  AddTypes(filter.types);
  sql_ += kind.order == ListOrder::FullName ? " ORDER BY r.full_key" : " ORDER BY r.name_key, r.full_key";
  if (filter.maxReturned) Add(" LIMIT ?", *filter.maxReturned);
}

void FilterStatement::Add(std::string_view condition, SqlValue value) {
  sql_ += condition;
  values_.push_back(value);
}

void FilterStatement::AddNameMatch(const RecordFilter::NameMatch& match) {
  const std::string_view text = match.text;
  const auto length = static_cast<std::int64_t>(CharacterCount(text));
  switch (match.criterion) {
    case MatchCriterion::StartsWith:
      Add(" AND substr(r.name_key, 1, ?)", length);
      return Add(" = ?", text);
    case MatchCriterion::Contains:
      return Add(" AND instr(r.name_key, ?) > 0", text);
    case MatchCriterion::EndsWith:
      Add(" AND length(r.name_key) >= ?", length);
      Add(" AND substr(r.name_key, length(r.name_key) - ? + 1)", length);
      return Add(" = ?", text);
  }
}

void FilterStatement::AddTypes(const std::vector<std::string>& types) {
  if (types.empty()) return;
  std::string_view separator = " AND r.type IN (";
  for (const auto& type : types) {
    Add(fmt::format("{}?", separator), std::string_view(type));
    separator = ", ";
  }
  sql_ += ")";
}

}  // namespace twqb::company
