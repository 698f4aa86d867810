// How BillingDb's texts and dates compare: the two collations that its columns are declared with.
//
// They decide what WHERE, BETWEEN, ORDER BY and the unique keys take for equal, so an index is only good with the same
// rules it was built with. Every connection registers both before its first statement.
#pragma once

#include <compare>
#include <string_view>

struct sqlite3;

namespace twqb::sqlite {

inline constexpr std::string_view kTextCollation = "TWTEXT";
inline constexpr std::string_view kDateCollation = "TWDATE";

// By Unicode's simple case folding, character by character; trailing blanks (U+0020) do not count.
[[nodiscard]] std::strong_ordering CompareTexts(std::string_view a, std::string_view b);
// By the dates that the texts name, in whatever form (see ParseDate). A text that is no date comes behind all dates;
// two such texts compare as texts.
[[nodiscard]] std::strong_ordering CompareDates(std::string_view a, std::string_view b);

// Registers both on a connection. Answers SQLite's result code.
[[nodiscard]] int RegisterCollations(sqlite3* handle);

}  // namespace twqb::sqlite
