// Rows as text for other programs: tab-separated, or one JSON object a line.
//
// In tab-separated text NULL is \N, dates are ISO, and CR, LF, tab and backslash are \r, \n, \t and \\. In JSON NULL is
// null, a date an ISO text, numbers are numbers.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/Value.h"
#include "platform/ado.h"

namespace twqb::cli {

// How a command prints its rows: for a person, or in one of the forms of this file.
enum class RowForm : std::uint8_t { Readable, Tabbed, Json };

// Each line comes with its end. Of columns with one name the last one counts in JSON; bytes that are no UTF-8 come out
// as U+FFFD there.
[[nodiscard]] std::string TabbedNames(std::span<const std::string> names);
[[nodiscard]] std::string TabbedValues(std::span<const Value> values);
[[nodiscard]] std::string JsonValues(std::span<const std::string> names, std::span<const Value> values);

// Of a recordset: the names of its columns, and the current row.
[[nodiscard]] std::string TabbedHeader(const ado::Recordset& rows);
[[nodiscard]] std::string TabbedRow(const ado::Recordset& rows);
[[nodiscard]] std::string JsonRow(const ado::Recordset& rows);

}  // namespace twqb::cli
