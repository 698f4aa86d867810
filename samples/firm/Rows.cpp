#include "samples/firm/Rows.h"

#include <fmt/format.h>

#include <utility>

#include "platform/Text.h"
#include "samples/firm/DecimalText.h"

namespace twqb::firm {

namespace {

constexpr int kRowsOfAStatement = 40;

}  // namespace

Row& Row::PutLiteral(std::string_view column, std::string_view literal) {
  if (!columns_.empty()) {
    columns_ += ", ";
    values_ += ", ";
  }
  columns_ += column;
  values_ += literal;
  return *this;
}

Row& Row::Put(std::string_view column, const Text& text) {
  return text ? PutLiteral(column, "'" + ReplaceAll(*text, "'", "''") + "'") : Null(column);
}

Row& Row::Number(std::string_view column, std::int64_t digits, int decimals) {
  return PutLiteral(column, DecimalText(digits, decimals));
}

Row& Row::Number(std::string_view column, const std::optional<std::int64_t>& digits, int decimals) {
  return digits ? Number(column, *digits, decimals) : Null(column);
}

Row& Row::Moment(std::string_view column, const std::optional<Date>& date) {
  return date ? Put(column, ReplaceAll(IsoDate(*date), "T", " ")) : Null(column);
}

void Rows::Add(const std::string& table, const Row& row) {
  auto& gathered = tables_[table];
  if (gathered.count == kRowsOfAStatement || gathered.columns != row.Columns()) Flush(table, gathered);
  gathered.columns = row.Columns();
  gathered.values += fmt::format("{}({})", gathered.count == 0 ? "" : ", ", row.Values());
  ++gathered.count;
}

void Rows::Flush() {
  for (auto& [table, gathered] : tables_) Flush(table, gathered);
}

void Rows::Flush(const std::string& table, Gathered& gathered) {
  if (gathered.count == 0) return;
  const auto full = std::exchange(gathered, {});
  take_(fmt::format("INSERT INTO {} ({}) VALUES {}", table, full.columns, full.values));
}

std::string RowKey(std::uint32_t kind, std::int64_t number) {
  return fmt::format("{{{:08X}-2007-4000-8000-{:012X}}}", kind, number);
}

}  // namespace twqb::firm
