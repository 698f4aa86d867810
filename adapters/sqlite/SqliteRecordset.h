// What the two kinds of recordset have in common: columns, and the state that they share with their connection.
//
// A recordset is open until it is closed or its connection is. Where it stands and how it reads is left to the kinds:
// SnapshotRecordset for the rows of a statement, TableRecordset for a table opened for writing.
#pragma once

#include <memory>
#include <vector>

#include "adapters/sqlite/Columns.h"
#include "adapters/sqlite/Database.h"
#include "platform/ado.h"

namespace twqb::sqlite {

class SqliteRecordset : public ado::Recordset {
 public:
  [[nodiscard]] ado::ObjectState State() const override;

  [[nodiscard]] int FieldCount() const override;
  [[nodiscard]] std::string FieldName(int index) const override;
  [[nodiscard]] Value Field(std::string_view name) const override;
  [[nodiscard]] int DefinedSize(std::string_view name) const override;

 protected:
  using Columns = std::vector<Column>;

  // Closed from the start without a database.
  SqliteRecordset(std::shared_ptr<Database> database, std::shared_ptr<const Columns> columns)
      : database_(std::move(database)), columns_(std::move(columns)) {}

  // Raises `kObjectClosed`.
  void RequireOpen() const;
  // Raises `kNoSuchField` for an index that is out of range.
  [[nodiscard]] std::size_t CheckedIndex(int index) const;
  [[nodiscard]] Database& database() const { return *database_; }
  [[nodiscard]] const Columns& columns() const { return *columns_; }
  // What they are found to be by now.
  void Describe(std::shared_ptr<const Columns> columns) const { columns_ = std::move(columns); }
  // The place of a column; raises `kNoSuchField`.
  [[nodiscard]] virtual std::size_t IndexOf(std::string_view name) const { return ColumnIndex(columns(), name); }
  void LetGo() { database_.reset(); }

 private:
  std::shared_ptr<Database> database_;
  mutable std::shared_ptr<const Columns> columns_;  // to read is what finds them changed
};

}  // namespace twqb::sqlite
