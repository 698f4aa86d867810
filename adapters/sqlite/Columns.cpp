#include "adapters/sqlite/Columns.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>

#include "adapters/sqlite/Collations.h"
#include "adapters/sqlite/Failure.h"
#include "adapters/sqlite/SqlTokens.h"
#include "platform/Text.h"

namespace twqb::sqlite {

namespace {

constexpr std::int64_t kTrue = -1;
constexpr std::int64_t kFalse = 0;

std::int64_t BooleanNumber(bool value) { return value ? kTrue : kFalse; }

ColumnKind KindOf(std::string_view declared) {
  const auto type = UpperCase(declared);
  if (type.starts_with("DATETIME")) return ColumnKind::Date;
  if (type.starts_with("DECIMAL")) return ColumnKind::Money;
  if (type.starts_with("DOUBLE") || type.starts_with("REAL") || type.starts_with("FLOAT")) return ColumnKind::Floating;
  if (type.find("INT") != std::string::npos) return ColumnKind::Whole;
  if (type.find("CHAR") != std::string::npos || type.starts_with("TEXT")) return ColumnKind::Text;
  return ColumnKind::Untyped;
}

// The n of "VARCHAR(n)".
int SizeOf(std::string_view declared) {
  for (const auto& token : SignificantTokens(declared)) {
    if (token.kind == TokenKind::Number) return static_cast<int>(TextToInteger(token.text));
  }
  return 0;
}

Value ReadNumber(double number, ColumnKind kind) {
  if (kind == ColumnKind::Money) return Currency::FromDouble(number);
  return number;
}

Value ReadText(std::string text, ColumnKind kind) {
  if (kind == ColumnKind::Date) {
    // What other programs leave in a column that holds no date.
    if (Trim(text).empty()) return Null{};
    if (const auto date = ParseDate(text)) return *date;
  }
  return text;
}

std::string BytesOf(sqlite3_stmt* raw, int index) {
  const void* bytes = sqlite3_column_blob(raw, index);
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(raw, index));
  return size == 0 ? std::string() : std::string(static_cast<const char*>(bytes), size);
}

Value ReadColumn(sqlite3_stmt* raw, int index, ColumnKind kind) {
  switch (sqlite3_column_type(raw, index)) {
    case SQLITE_NULL:
      return Null{};
    case SQLITE_INTEGER:
      if (kind == ColumnKind::Money || kind == ColumnKind::Floating) {
        return ReadNumber(sqlite3_column_double(raw, index), kind);
      }
      return std::int64_t{sqlite3_column_int64(raw, index)};
    case SQLITE_FLOAT:
      return ReadNumber(sqlite3_column_double(raw, index), kind);
    default:
      return ReadText(BytesOf(raw, index), kind);
  }
}

std::string StoredDate(Date date) {
  auto text = IsoDate(date);
  text[text.find('T')] = ' ';
  return text;
}

// Nothing for NULL alone, which no caller passes.
double NumberOf(const Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return TextToNumber(*text);
  if (const auto* boolean = std::get_if<bool>(&value)) return static_cast<double>(BooleanNumber(*boolean));
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  if (const auto* money = std::get_if<Currency>(&value)) return money->ToDouble();
  if (const auto* date = std::get_if<Date>(&value)) return date->Serial();
  return std::get<double>(value);
}

std::int64_t WholeOf(const Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return *whole;
  constexpr double kLimit = 9.2e18;
  const double number = NumberOf(value);
  if (!(std::fabs(number) < kLimit)) throw PlatformError(error::kConversion);
  return std::llrint(number);  // halves to even
}

std::string StoredText(const Value& value) {
  if (const auto* boolean = std::get_if<bool>(&value)) return fmt::format("{}", BooleanNumber(*boolean));
  if (const auto* date = std::get_if<Date>(&value)) return StoredDate(*date);
  return ToText(value);
}

Date DateOf(const Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return Date::FromSerial(static_cast<double>(*whole));
  return ToDate(value);
}

Value Converted(ColumnKind kind, const Value& value) {
  switch (kind) {
    case ColumnKind::Text:
      return StoredText(value);
    case ColumnKind::Date:
      return DateOf(value);
    case ColumnKind::Money:
      return std::holds_alternative<Currency>(value) ? value : Value(Currency::FromDouble(NumberOf(value)));
    case ColumnKind::Floating:
      return NumberOf(value);
    case ColumnKind::Whole:
      return WholeOf(value);
    case ColumnKind::Untyped:
      break;
  }
  return value;
}

}  // namespace

std::vector<Column> DescribeColumns(const Statement& statement, int skip) {
  std::vector<Column> columns;
  for (int i = skip; i < statement.ColumnCount(); ++i) {
    const char* declared = sqlite3_column_decltype(statement.raw(), i);
    Column column{.name = sqlite3_column_name(statement.raw(), i)};
    if (declared != nullptr) column.kind = KindOf(declared);
    if (column.kind == ColumnKind::Text) column.definedSize = SizeOf(declared);
    columns.push_back(std::move(column));
  }
  return columns;
}

const std::shared_ptr<const std::vector<Column>>& ColumnsOf(Statement& statement, int skip) {
  auto& described = statement.Described();
  if (!described.columns || described.timesPreparedAnew != statement.TimesPreparedAnew()) {
    described = {.columns = std::make_shared<const std::vector<Column>>(DescribeColumns(statement, skip)),
                 .timesPreparedAnew = statement.TimesPreparedAnew()};
  }
  return described.columns;
}

std::optional<std::size_t> FindColumn(const std::vector<Column>& columns, std::string_view name) {
  // Nearly all ask in the column's own spelling.
  const auto exact = std::ranges::find(columns, name, &Column::name);
  if (exact != columns.end()) return exact - columns.begin();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (SameName(columns[i].name, name)) return i;
  }
  return std::nullopt;
}

std::size_t ColumnIndex(const std::vector<Column>& columns, std::string_view name) {
  if (const auto index = FindColumn(columns, name)) return *index;
  throw Failure(error::kNoSuchField, fmt::format("({})", name));
}

std::vector<Value> ReadRow(const Statement& statement, const std::vector<Column>& columns, int skip) {
  std::vector<Value> row;
  ReadRow(statement, columns, skip, row);
  return row;
}

void ReadRow(const Statement& statement, const std::vector<Column>& columns, int skip, std::vector<Value>& row) {
  row.clear();
  row.reserve(columns.size());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    row.push_back(ReadColumn(statement.raw(), skip + static_cast<int>(i), columns[i].kind));
  }
}

Value Assignable(const Column& column, const Value& value) {
  if (IsNull(value)) return value;
  try {
    return Converted(column.kind, value);
  } catch (const PlatformError& failure) {
    // The value itself stays out of the text: it may be a number that identifies a person.
    throw Failure(failure.number(), fmt::format("column {} can't hold this value.", column.name));
  }
}

void Bind(Statement& statement, int parameter, const Value& value) {
  if (IsNull(value)) {
    statement.BindNull(parameter);
  } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    statement.BindInteger(parameter, *whole);
  } else if (const auto* boolean = std::get_if<bool>(&value)) {
    statement.BindInteger(parameter, BooleanNumber(*boolean));
  } else if (const auto* number = std::get_if<double>(&value)) {
    statement.BindReal(parameter, *number);
  } else if (const auto* money = std::get_if<Currency>(&value)) {
    statement.BindReal(parameter, money->ToDouble());
  } else {
    statement.BindText(parameter, StoredText(value));
  }
}

bool EqualsText(const Value& value, std::string_view text) {
  if (IsNull(value)) return false;
  if (const auto* own = std::get_if<std::string>(&value)) return CompareTexts(*own, text) == 0;
  if (const auto* date = std::get_if<Date>(&value)) return ParseDate(text) == *date;
  try {
    return NumberOf(value) == TextToNumber(text);
  } catch (const PlatformError&) {
    return false;  // a text that is no number equals none
  }
}

}  // namespace twqb::sqlite
