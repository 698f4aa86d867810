// A whole table opened for writing, or those of its rows that have a value in some column: the optimistic recordset.
//
// No row is read ahead. The recordset knows a row by its rowid and reads it when it is first asked for, so moving and
// Find cost one indexed lookup each, whatever the size of the table, and see what others have written since, and which
// columns the table has by then. The row read stays as it was until the recordset moves or updates it. No statement is
// left running between calls.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "adapters/sqlite/Phrases.h"
#include "adapters/sqlite/SqliteRecordset.h"

namespace twqb::sqlite {

class TableRecordset : public SqliteRecordset {
 public:
  // Raises `kNoSuchTable`, and `kBadSyntax` for a column that the table lacks.
  static std::unique_ptr<TableRecordset> Open(std::shared_ptr<Database> database, const OpenedTable& opened);

  void Close() override;

  // False while a row is being added.
  [[nodiscard]] bool Eof() const override;
  // On an empty table it does nothing but leave Eof.
  void MoveFirst() override;
  void MoveNext() override;
  // Counts the rows of the table: the one call here that costs a pass over it.
  [[nodiscard]] std::int64_t RecordCount() const override;
  // At Eof there is nothing behind, so it stays there; MoveFirst first. Raises `kBadArgument`, `kNoSuchField`.
  void Find(std::string_view criterion) override;

  [[nodiscard]] Value Field(std::string_view name) const override;
  [[nodiscard]] Value FieldAt(int index) const override;

  [[nodiscard]] ado::EditMode EditState() const override;
  void AddNew() override;
  // Raises `kConversion` for a value that the column can't hold; what was pending stays.
  void SetField(std::string_view name, Value value) override;
  // Writes the assigned columns alone, in the order of their first assignment; nothing when no edit is pending. A row
  // added is the current row after it. Raises `kConstraint`, `kAtEof` when someone has deleted the row, and
  // `kNoSuchField` when someone has removed one of the columns; the edit stays pending then.
  void Update() override;
  // The row that was current before the edit is current after it.
  void CancelUpdate() override;

 private:
  // What is known of the current row.
  enum class Place : std::uint8_t {
    AtOrBehind,  // the first row from rowid_ on, not read yet
    Exactly,     // the row rowid_, not read yet
    OnRow,       // the row rowid_, in row_
    Eof,
  };

  TableRecordset(std::shared_ptr<Database> database, std::shared_ptr<const Columns> columns, std::string quotedTable,
                 std::string condition);

  [[nodiscard]] std::size_t IndexOf(std::string_view name) const override;

  void RequireNoEdit() const;
  void Locate() const;
  // To be called ahead of looking a column up for the current row: to read the row may find other columns, and then
  // their places are others. A row that is being added has none to be read.
  void HaveRow() const;
  // The columns that there are by now.
  void DescribeAnew() const;
  // Runs a statement for the rowid and the columns of a row. False when it answers none: then it is Eof.
  bool ReadFrom(Statement& statement) const;
  [[nodiscard]] std::string InsertText() const;
  [[nodiscard]] std::string UpdateText() const;
  [[nodiscard]] const Value* Pending(std::string_view column) const;
  void Write();

  std::string table_;      // quoted
  std::string condition_;  // which rows it moves over, as SQL; a row that was added stays in hand, whatever it holds
  ado::EditMode edit_ = ado::EditMode::None;
  // By the names of their columns, whose places may change, in the order of their first assignment.
  std::vector<std::pair<std::string, Value>> pending_;

  // Looking at the current row is what reads it, and at a column that was not there what finds others.
  mutable Place place_;
  mutable std::int64_t rowid_;
  mutable std::vector<Value> row_;
};

}  // namespace twqb::sqlite
