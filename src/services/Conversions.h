// The small rules by which values change form between BillingDb and QuickBooks. Pure functions, unless the time zone, a
// GUID or the database is asked.
#pragma once

#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/machine.h"

namespace twqb {

// Every ",", "#", ";", ":" and "'" becomes one blank: a QuickBooks name turns into a key of BillingDb. Blanks are not
// folded.
[[nodiscard]] std::string ReplaceJunkChars(std::string_view text);

// "" without a digit in it; else the digits as "(nnn)-nnn-nnnn", more of them behind, with fewer than three "(nn)".
[[nodiscard]] std::string FormatPhoneForQB(std::string_view text);
// Without blanks, brackets, dots, dashes, underscores and commas; letters stay.
[[nodiscard]] std::string CleanPhoneFromQB(std::string_view text);

// Every single quote doubled: safe inside a quoted SQL literal.
[[nodiscard]] std::string DoubleQuotes(std::string_view text);
[[nodiscard]] std::string FixQuote(std::string_view text);

// Whether the clock is on daylight time now. Errors read as False.
[[nodiscard]] bool IsDaylightTime();
// "UTC-5", or "UTC+5:30": the zone of a computer, now.
[[nodiscard]] std::string ZoneName(Machine& machine);
// Both use the offset of this moment for every date, whatever the date's own season.
[[nodiscard]] Date LocalToUTC(Date date);
[[nodiscard]] Date UTCToLocal(Date date);

enum class DateForm { DateOnly, WithTime };
// "mm/dd/yyyy" or "mm/dd/yyyy hh:mm:ss", 24 hours.
[[nodiscard]] std::string FormatSQLDate(Date date, DateForm form);

// The date, but none before 1901: QuickBooks knows no earlier one.
[[nodiscard]] Date DateFloor(Date date);

// The QBLinkID of the row with that key; `kind` is EMPLOYEE, CLIENT, PROJECT, ACTIVITY or EXPENSE in any case. "" when
// there is none, and on any error.
[[nodiscard]] std::string GetQBLinkIDOf(std::string_view kind, std::string_view key);

// Whether the text is a Canadian social insurance number, nnn nnn nnn or nnn-nnn-nnn, with a right check digit.
[[nodiscard]] bool ValidateSIN(std::string_view text);

// Upper-case hexadecimal digits in braces, in groups of 8, 4, 4, 4 and 12; after a box, "" when the system can't make
// one.
[[nodiscard]] std::string GenerateGUID();

// The plain text of a rich-text note; a note that is none comes back unchanged.
[[nodiscard]] std::string StripRichText(std::string_view text);

}  // namespace twqb
