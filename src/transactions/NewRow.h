// A new row as rows say it: which columns it has, in their order, and what each is made of.
//
// For gets whose tables differ in a few values. `Source` is whatever the values come from. Knows no table.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/ado.h"
#include "quickbooks/ResponseModel.h"
#include "services/RecordInHand.h"

namespace twqb {

// A value for a column, or none: then the column is not written.
using Given = std::optional<Value>;

template <typename Source>
struct NewColumn {
  std::string_view column;
  Given (*value)(const Source& source);
};

// Assigns to the row in hand.
template <typename Source>
void WriteColumns(ado::Recordset& row, std::span<const NewColumn<Source>> columns, const Source& source) {
  for (const auto& column : columns) {
    if (auto value = column.value(source)) row.SetField(column.column, std::move(*value));
  }
}

// Adds a row and writes it. The row is the current one afterwards.
template <typename Source>
void AddRow(ado::Recordset& rows, std::span<const NewColumn<Source>> columns, const Source& source) {
  rows.AddNew();
  WriteColumns(rows, columns, source);
  rows.Update();
  NoteFate(Fate::Added);
}

// Fields that QuickBooks may leave out.
[[nodiscard]] Given TextOf(const Record& field);
[[nodiscard]] Given DateOf(const Record& field);
[[nodiscard]] std::optional<Currency> AmountOf(const Record& field);

// The present moment as BillingDb keeps it.
[[nodiscard]] Given PresentMoment();

// A second table, open for the time of one record: whatever end that takes, a row that is not written by then is
// dropped, and the table closed. Raises 91 when it can't be opened, which has been told.
class OpenTable {
 public:
  OpenTable(ado::Connection& connection, std::string_view table);
  ~OpenTable();
  OpenTable(const OpenTable&) = delete;
  OpenTable& operator=(const OpenTable&) = delete;

  [[nodiscard]] ado::Recordset& Rows() const { return *rows_; }

 private:
  std::unique_ptr<ado::Recordset> rows_;
};

}  // namespace twqb
