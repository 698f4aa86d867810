// The named ranges of dates that a query for transactions may use in place of two dates.
//
// Weeks begin on Sunday; the fiscal year is the calendar's.
#pragma once

#include <optional>
#include <string_view>

#include "platform/Date.h"

namespace twqb::company {

// Both inclusive; a side that is not set is open.
struct DateRange {
  std::optional<Date> from;
  std::optional<Date> to;
};

// The range that the name of a DateMacro ("LastMonthToDate") means on the day `today`. Nothing for a name that is none.
[[nodiscard]] std::optional<DateRange> RangeOfMacro(std::string_view macro, Date today);

}  // namespace twqb::company
