// A text of several SQL statements, cut into its statements.
//
// A semicolon ends a statement wherever it stands outside literals, quoted names and comments. What a statement means,
// the database tells; a trigger, with semicolons of its own, is none that this reads.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace twqb::cli {

// In their order, without the semicolons; what holds blanks and comments alone is left out. A literal that is not
// closed is part of the last statement.
[[nodiscard]] std::vector<std::string> SplitStatements(std::string_view script);

}  // namespace twqb::cli
