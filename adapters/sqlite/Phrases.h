// The two fixed phrases of the seam that this adapter takes apart itself: the statement that opens a table for writing,
// and the criterion of Find.
//
// Both are read strictly; every other statement goes to the engine as a whole.
#pragma once

#include <string>
#include <string_view>

namespace twqb::sqlite {

struct OpenedTable {
  std::string table;
  std::string filledColumn;  // of which rows without a value stay out; empty: all rows
};

// Reads "SELECT * FROM table;" or "SELECT * FROM table WHERE column IS NOT NULL;" (spacing, case and the semicolon are
// free). Raises `kBadSyntax` for any other text.
[[nodiscard]] OpenedTable ParseOpening(std::string_view statement);

struct Criterion {
  std::string column;
  std::string text;
};

// Reads "COLUMN = 'TEXT'". Raises `kBadArgument` for any other text.
[[nodiscard]] Criterion ParseCriterion(std::string_view criterion);

}  // namespace twqb::sqlite
