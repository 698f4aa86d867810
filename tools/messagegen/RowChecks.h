// What the readers of the table take for granted of rows that stand together. Part of the resolver.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "messagegen/Table.h"

namespace twqb::messagegen {

struct RowFault {
  Place place;
  std::string what;  // to be followed by where the rows are
};

// What is wrong with rows that follow each other; nothing when they are in order. No two of one name are known in one
// form: a name finds one row.
[[nodiscard]] std::optional<RowFault> FaultOfSequence(std::span<const Row> rows);

// The same of the branches of a choice. No two of them begin with the same element in one form: what stands in a
// document is matched to its branch without a look ahead.
[[nodiscard]] std::optional<RowFault> FaultOfBranches(const Table& table, std::span<const Row> branches);

}  // namespace twqb::messagegen
