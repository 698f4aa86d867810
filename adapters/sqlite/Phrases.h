// The two fixed phrases of the seam that this adapter takes apart itself: the statement that opens a table for writing,
// and the criterion of Find.
//
// Both are read strictly; every other statement goes to the engine as a whole.
#pragma once

#include <string>
#include <string_view>

namespace twqb::sqlite {

// The table of "SELECT * FROM table;" (spacing, case and the semicolon are free). Raises `kBadSyntax` for any other
// text.
[[nodiscard]] std::string TableOfStatement(std::string_view statement);

struct Criterion {
  std::string column;
  std::string text;
};

// Reads "COLUMN = 'TEXT'". Raises `kBadArgument` for any other text.
[[nodiscard]] Criterion ParseCriterion(std::string_view criterion);

}  // namespace twqb::sqlite
