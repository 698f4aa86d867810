// The rows of one statement, all in memory: the read-only recordset.
//
// The statement has been run to its end before this exists, so it holds no lock and sees no later change. It can't be
// edited: AddNew, SetField and Update raise `kReadOnly`.
#pragma once

#include <vector>

#include "adapters/sqlite/CompactRows.h"
#include "adapters/sqlite/SqliteRecordset.h"

namespace twqb::sqlite {

class SnapshotRecordset : public SqliteRecordset {
 public:
  // Closed: what a statement without rows answers.
  SnapshotRecordset() : SqliteRecordset(nullptr, nullptr) {}
  SnapshotRecordset(std::shared_ptr<Database> database, Columns columns, CompactRows rows)
      : SqliteRecordset(std::move(database), std::make_shared<const Columns>(std::move(columns))),
        rows_(std::move(rows)) {}

  void Close() override;

  [[nodiscard]] bool Eof() const override;
  // On a recordset without rows it does nothing: Eof stays true.
  void MoveFirst() override;
  void MoveNext() override;
  [[nodiscard]] std::int64_t RecordCount() const override;
  void Find(std::string_view criterion) override;

  [[nodiscard]] Value FieldAt(int index) const override;

  [[nodiscard]] ado::EditMode EditState() const override;
  void AddNew() override;
  void SetField(std::string_view name, Value value) override;
  void Update() override;
  void CancelUpdate() override;

 private:
  // The current row, decoded once.
  [[nodiscard]] const std::vector<Value>& Current() const;

  CompactRows rows_;
  std::size_t current_ = 0;
  mutable std::vector<Value> row_;
  mutable std::size_t decoded_ = 0;  // whose row that is, counted from 1
};

}  // namespace twqb::sqlite
