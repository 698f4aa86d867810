// The columns of a statement or table, and how values go in and out of them.
//
// What a column holds follows from the type that it was declared with: the engine itself keeps dates and money as text
// and numbers. Both kinds of recordset read and write through here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/Database.h"
#include "platform/Value.h"

namespace twqb::sqlite {

enum class ColumnKind : std::uint8_t {
  Untyped,  // an expression: the value as the engine has it
  Text,
  Date,      // DATETIME, kept as text
  Money,     // DECIMAL
  Floating,  // DOUBLE, REAL, FLOAT
  Whole,     // SMALLINT, INTEGER
};

struct Column {
  std::string name;
  ColumnKind kind = ColumnKind::Untyped;
  int definedSize = 0;  // characters; 0 is no limit
};

// The result columns of a prepared statement, but for the first `skip`.
[[nodiscard]] std::vector<Column> DescribeColumns(const Statement& statement, int skip = 0);

// The same of a kept statement: described once, and anew when the tables have changed since.
[[nodiscard]] const std::shared_ptr<const std::vector<Column>>& ColumnsOf(Statement& statement, int skip = 0);

// The place of a column by its name, without case; the first of several.
[[nodiscard]] std::optional<std::size_t> FindColumn(const std::vector<Column>& columns, std::string_view name);
// The same; raises `kNoSuchField`.
[[nodiscard]] std::size_t ColumnIndex(const std::vector<Column>& columns, std::string_view name);

// The current row, one value a column. A text in a date column that is no date, and a text in a column of numbers, come
// out as the text.
[[nodiscard]] std::vector<Value> ReadRow(const Statement& statement, const std::vector<Column>& columns, int skip = 0);
// The same into a row that has its memory already.
void ReadRow(const Statement& statement, const std::vector<Column>& columns, int skip, std::vector<Value>& row);

// What the column will hold once `value` is assigned: texts become the dates and numbers that they name, numbers and
// dates the texts. Raises `kConversion` where there is none; an empty text is neither a date nor a number.
[[nodiscard]] Value Assignable(const Column& column, const Value& value);

// Binds a value as it is kept: a date as "yyyy-mm-dd hh:mm:ss" (and .mmm if there are milliseconds), money as a number.
void Bind(Statement& statement, int parameter, const Value& value);

// Whether a value is equal to a text in the sense of "column = 'text'". NULL never is.
[[nodiscard]] bool EqualsText(const Value& value, std::string_view text);

}  // namespace twqb::sqlite
