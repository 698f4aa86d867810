// Turns a statement as the library writes it, in either dialect, into what SQLite reads.
//
// Stands between the connection and the engine, and works on tokens: text literals, comments and quoted names pass
// through byte for byte. It does not check the statement; what it does not know it leaves as it is.
#pragma once

#include <string>
#include <string_view>

namespace twqb::sqlite {

// What changes:
//   #1/31/2008 10:15:00#     a text literal with the same date
//   {guid {...}}             a text literal of the braces and what is in them
//   True, False              -1 and 0
//   + with a text literal    || (on either side of the sign)
// and in CREATE TABLE, behind the type of a column:
//   VARCHAR(n), TEXT(n)      the collation of texts, and a check that refuses more than n characters
//   TEXT                     the collation of texts
//   DATETIME                 the collation of dates
[[nodiscard]] std::string TranslateSql(std::string_view statement);

}  // namespace twqb::sqlite
