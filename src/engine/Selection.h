// What the selection statement of a table is made of, and the forms of the statements for named records. The texts are
// those that the database gets, byte for byte.
//
// A part of a table's description; read by SelectionQueries alone, which decides what clauses a statement has and puts
// the values in.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "engine/SavedFilters.h"
#include "services/Sql.h"

namespace twqb {

// What turns a clause on, and so the values that stand in it.
enum class ClauseOn : std::uint8_t {
  LastSend,       // the table was sent before, and the first dates are not both given: the time of that
  Range,          // both of the first dates: these, the second one a day later
  Filter1,        // both values of the pair, here and below
  Filter2,        //
  Filter3,        //
  FromTo,         // both of the second dates: these
  RangeOnFromTo,  // both of the second dates, but the values are those of Range, or zero dates without it
};

// In the text {K} is the connecting word (WHERE or AND), {P} the prefix of the table's columns, {a} and {b} the values:
// filter values as they are, dates with their delimiters.
struct Clause {
  ClauseOn on;
  std::string_view text;
};

// The clauses that most tables have: changed since the last send, never linked, or without a date; and a range of
// dates.
inline constexpr std::string_view kChangedSinceLastSend =
    "{K}(({P}LastUpdated > {a}) OR {P}QBLinkID IS NULL OR {P}QBLinkID = '' OR {P}LastUpdated IS NULL) ";
inline constexpr std::string_view kChangedInRange = "{K}({P}LastUpdated BETWEEN {a} AND {b})";

// One table's statement: the base, its clauses in this order, the tail. Without a base there is none.
struct Selection {
  bool onlyPassed = false;  // no statement without PassedID
  std::string_view base = {};
  std::string_view where = {};       // a condition behind the base that is always there
  std::string_view noteColumn = {};  // a part of the base that stands there only while notes are mapped
  std::string_view prefix = {};
  std::span<const Clause> clauses = {};
  std::string_view activeOnly = {};  // begins with AND even behind a base without WHERE
  std::string_view tail = {};
  // The statement instead of all that when PassedID names records; empty: there is none.
  Sql (*passed)(std::string_view base, const SavedFilters& filters) = nullptr;
};

}  // namespace twqb
