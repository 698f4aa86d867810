#include "cli/import/ImportColumns.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/Currency.h"
#include "platform/Date.h"
#include "platform/Text.h"
#include "services/Sql.h"

namespace twqb::cli {

namespace {

ColumnType TypeOf(std::string_view declared) {
  const auto type = UpperCase(declared);
  if (type.starts_with("DATE")) return ColumnType::Date;
  if (type.starts_with("DECIMAL")) return ColumnType::Money;
  if (type == "DOUBLE" || type == "REAL" || type == "FLOAT") return ColumnType::Floating;
  return type.find("INT") == std::string::npos ? ColumnType::Text : ColumnType::Whole;
}

// "VARCHAR(65)"
std::size_t LengthOf(std::string_view declared) {
  const auto open = declared.find('(');
  if (open == std::string_view::npos || TypeOf(declared) != ColumnType::Text) return 0;
  std::size_t length = 0;
  std::from_chars(declared.data() + open + 1, declared.data() + declared.size(), length);
  return length;
}

FieldValue Refused(std::string reason) { return {.value = Null(), .refused = std::move(reason)}; }

bool IsDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// The digits of a number, with the sign and the point; nothing for what is none. No thousands are set apart, since a
// comma may as well be a decimal point.
struct Digits {
  bool isNegative = false;
  std::string whole;
  std::string fraction;
};
std::optional<Digits> DigitsOf(std::string_view text) {
  Digits digits;
  if (text.starts_with('-') || text.starts_with('+')) {
    digits.isNegative = text.front() == '-';
    text.remove_prefix(1);
  }
  const auto point = text.find('.');
  digits.whole = text.substr(0, point);
  if (point != std::string_view::npos) digits.fraction = text.substr(point + 1);
  const bool isWhole =
      point == std::string_view::npos ? IsDigits(digits.whole) : IsDigits(digits.whole + digits.fraction);
  if (!isWhole) return std::nullopt;
  return digits;
}

constexpr std::string_view kNoNumber = "is no number: write 1234.50, without commas and signs of currency";

FieldValue ReadMoney(std::string_view text) {
  constexpr std::size_t kDecimals = 4;
  constexpr std::size_t kMostDigits = 18;  // what fits for certain
  const auto digits = DigitsOf(text);
  if (!digits) return Refused(std::string(kNoNumber));
  if (digits->fraction.size() > kDecimals) return Refused("has more than four decimals");
  auto all = digits->whole + digits->fraction + std::string(kDecimals - digits->fraction.size(), '0');
  all.erase(0, std::min(all.find_first_not_of('0'), all.size() - 1));
  if (all.size() > kMostDigits) return Refused("is too large");
  std::int64_t units = 0;
  std::from_chars(all.data(), all.data() + all.size(), units);
  return {.value = Currency::FromTenThousandths(digits->isNegative ? -units : units), .refused = {}};
}

FieldValue ReadFloating(std::string_view text) {
  constexpr std::size_t kMostDigits = 15;  // what such a number tells apart
  const auto digits = DigitsOf(text);
  if (!digits) return Refused(std::string(kNoNumber));
  if (digits->whole.size() + digits->fraction.size() > kMostDigits) return Refused("has more than fifteen digits");
  return {.value = TextToNumber(text), .refused = {}};
}

FieldValue ReadWhole(std::string_view text) {
  constexpr std::int64_t kLeast = -32768;
  constexpr std::int64_t kGreatest = 32767;
  for (const auto word : {"true", "yes"}) {
    if (FoldCase(text) == word) return {.value = std::int64_t{-1}, .refused = {}};
  }
  for (const auto word : {"false", "no"}) {
    if (FoldCase(text) == word) return {.value = std::int64_t{0}, .refused = {}};
  }
  const auto digits = DigitsOf(text);
  if (!digits || !digits->fraction.empty() || digits->whole.size() > 9) {
    return Refused("is no whole number from -32768 to 32767, and not True or False");
  }
  const auto number = TextToInteger(text);
  if (number < kLeast || number > kGreatest) return Refused("is no whole number from -32768 to 32767");
  return {.value = number, .refused = {}};
}

FieldValue ReadText(const ImportColumn& column, std::string_view text) {
  if (WithoutControls(text) != text) return Refused("holds a control character");
  const auto length = CharacterCount(text);
  if (column.length > 0 && length > column.length) {
    return Refused(fmt::format("has {} characters, and the column {}", length, column.length));
  }
  return {.value = std::string(text), .refused = {}};
}

// The three numbers of a date with slashes, up to the blank ahead of a time; nothing for another form.
struct Slashed {
  int first = 0;
  int second = 0;
  std::size_t yearDigits = 0;
};
std::optional<Slashed> SlashedOf(std::string_view text) {
  const auto parts = Split(text.substr(0, text.find(' ')), '/');
  if (parts.size() != 3) return std::nullopt;
  for (const auto& part : parts) {
    if (!IsDigits(part) || part.size() > 4) return std::nullopt;
  }
  return Slashed{.first = std::stoi(parts[0]), .second = std::stoi(parts[1]), .yearDigits = parts[2].size()};
}

constexpr int kMonths = 12;

FieldValue ReadDate(std::string_view text, DayFirst others) {
  constexpr std::string_view kNoDate = "is no date: write 2008-03-05, or 3/5/2008 with the month first";
  constexpr std::size_t kYearDigits = 4;
  const auto date = ParseDate(text);
  const auto slashed = SlashedOf(text);
  const bool isIso = text.size() > kYearDigits && text[kYearDigits] == '-';
  // A time alone is one, too, for the parser.
  if (!slashed && (!date || !isIso)) return Refused(std::string(kNoDate));
  if (slashed && slashed->yearDigits != kYearDigits) return Refused("has a year without its four digits");
  if (IsDayFirst(text)) return Refused("has the day first: write 2008-03-05, or 3/5/2008 with the month first");
  if (!date) return Refused(std::string(kNoDate));
  const bool mayBeEither = slashed && slashed->second <= kMonths && slashed->first != slashed->second;
  if (mayBeEither && others == DayFirst::Yes) {
    return Refused("may have the day first, as another date of the column has: write 2008-03-05");
  }
  return {.value = *date, .refused = {}};
}

}  // namespace

std::vector<ImportColumn> ColumnsOf(ado::Connection& connection, std::string_view table) {
  const auto rows = connection.Execute(
      Sql("SELECT name, type, \"notnull\", dflt_value, pk FROM pragma_table_info('{}')", table), nullptr);
  std::vector<ImportColumn> columns;
  for (; !rows->Eof(); rows->MoveNext()) {
    const auto type = ToText(rows->FieldAt(1));
    columns.push_back({.name = ToText(rows->FieldAt(0)),
                       .type = TypeOf(type),
                       .length = LengthOf(type),
                       .isRequired = ToText(rows->FieldAt(2)) != "0" && IsNull(rows->FieldAt(3)),
                       .isKey = ToText(rows->FieldAt(4)) != "0"});
  }
  return columns;
}

bool IsDayFirst(std::string_view text) {
  const auto slashed = SlashedOf(text);
  return slashed && slashed->first > kMonths && slashed->second <= kMonths;
}

FieldValue ReadField(const ImportColumn& column, std::string_view text, DayFirst others) {
  const auto trimmed = Trim(text);
  if (trimmed.empty()) return {};
  switch (column.type) {
    case ColumnType::Text:
      return ReadText(column, text);
    case ColumnType::Date:
      return ReadDate(trimmed, others);
    case ColumnType::Money:
      return ReadMoney(trimmed);
    case ColumnType::Floating:
      return ReadFloating(trimmed);
    case ColumnType::Whole:
      return ReadWhole(trimmed);
  }
  return {};
}

}  // namespace twqb::cli
