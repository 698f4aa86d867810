// Rows of a recordset as text for other programs: tab-separated, or one JSON object a line.
//
// In tab-separated text NULL is \N, dates are ISO, and CR, LF, tab and backslash are \r, \n, \t and \\. In JSON NULL is
// null, a date an ISO text, numbers are numbers.
#pragma once

#include <string>

#include "platform/ado.h"

namespace twqb::cli {

// The names of the columns, with the line end.
[[nodiscard]] std::string TabbedHeader(const ado::Recordset& rows);
// The current row, with the line end.
[[nodiscard]] std::string TabbedRow(const ado::Recordset& rows);
// The same as an object. Of columns with one name the last one counts; bytes that are no UTF-8 come out as U+FFFD.
[[nodiscard]] std::string JsonRow(const ado::Recordset& rows);

}  // namespace twqb::cli
