// What a CSV file would add to a table of BillingDb: its rows, read and checked, and those that are refused with their
// reasons; and the adding itself, of all rows or none.
//
// What a single field becomes is ImportColumns' affair, what the person sees of it the command's.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cli/import/ImportColumns.h"
#include "cli/screen/CsvText.h"
#include "engine/Table.h"
#include "platform/Value.h"
#include "platform/ado.h"

namespace twqb::cli {

// Which columns of a file go into which of the table, where their names differ: "" for one that goes nowhere.
using ColumnMap = std::map<std::string, std::string>;
// Reads "FILE-COLUMN=DB-COLUMN,...". Raises UsageError.
[[nodiscard]] ColumnMap ReadColumnMap(std::string_view text);

struct ImportRow {
  std::size_t line = 0;       // of the file
  std::vector<Value> values;  // one for each column of the plan
};

struct RefusedField {
  std::size_t line = 0;
  std::string column;  // empty: it is about the whole row
  std::string reason;
};

struct ImportPlan {
  std::vector<std::string> columns;  // those of the file in its order, behind them those that the program fills
  std::size_t fileColumns = 0;       // how many of them are the file's
  std::vector<ImportRow> rows;       // that can be added
  std::vector<RefusedField> refused;
  std::size_t refusedRows = 0;
};

// Reads the file for the table, and looks at the keys that BillingDb has. Raises UsageError for columns that the table
// does not have or that are missing, and PlatformError.
[[nodiscard]] ImportPlan PlanImport(ado::Connection& connection, const Table& table,
                                    const std::vector<CsvRecord>& records, const ColumnMap& map);

// Adds the rows in one transaction. Raises PlatformError, and then none is there; `line` names the row in hand.
void AddRows(ado::Connection& connection, const Table& table, const ImportPlan& plan, std::size_t& line);

}  // namespace twqb::cli
