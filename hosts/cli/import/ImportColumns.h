// The columns of a table of BillingDb that an import fills, and what a text of a file becomes in them.
//
// The rules are those of docs/import.md. Nothing is written here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Value.h"
#include "platform/ado.h"

namespace twqb::cli {

enum class ColumnType : std::uint8_t { Text, Date, Money, Floating, Whole };

struct ImportColumn {
  std::string name;
  ColumnType type = ColumnType::Text;
  std::size_t length = 0;   // characters; 0 is no limit
  bool isRequired = false;  // NULL is refused, and nothing stands in its place
  bool isKey = false;       // a part of the primary key
};

// In the order of the table; none when BillingDb has no such table.
[[nodiscard]] std::vector<ImportColumn> ColumnsOf(ado::Connection& connection, std::string_view table);

// What a field becomes: a value, or the reason why not, which goes on from the name of the column.
struct FieldValue {
  Value value = Null();
  std::string refused;
};

// Whether a date is written with the day first, and can't be with the month.
[[nodiscard]] bool IsDayFirst(std::string_view text);

// How the column's other dates are written.
enum class DayFirst : bool { No, Yes };

// An empty field is NULL.
[[nodiscard]] FieldValue ReadField(const ImportColumn& column, std::string_view text, DayFirst others);

}  // namespace twqb::cli
