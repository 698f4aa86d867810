#include "adapters/sqlite/SnapshotRecordset.h"

#include "adapters/sqlite/Phrases.h"
#include "platform/PlatformError.h"

namespace twqb::sqlite {

void SnapshotRecordset::Close() {
  RequireOpen();
  rows_.Clear();
  row_.clear();
  LetGo();
}

bool SnapshotRecordset::Eof() const {
  RequireOpen();
  return current_ >= rows_.Count();
}

void SnapshotRecordset::MoveFirst() {
  RequireOpen();
  current_ = 0;
}

void SnapshotRecordset::MoveNext() {
  if (Eof()) throw PlatformError(error::kAtEof);
  ++current_;
}

std::int64_t SnapshotRecordset::RecordCount() const {
  RequireOpen();
  return static_cast<std::int64_t>(rows_.Count());
}

void SnapshotRecordset::Find(std::string_view criterion) {
  RequireOpen();
  const auto [column, text] = ParseCriterion(criterion);
  const auto index = IndexOf(column);
  while (current_ < rows_.Count() && !EqualsText(Current()[index], text)) ++current_;
}

const std::vector<Value>& SnapshotRecordset::Current() const {
  if (decoded_ != current_ + 1) {
    row_.resize(columns().size());
    rows_.Read(current_, row_);
    decoded_ = current_ + 1;
  }
  return row_;
}

Value SnapshotRecordset::FieldAt(int index) const {
  RequireOpen();
  const auto column = CheckedIndex(index);
  if (current_ >= rows_.Count()) throw PlatformError(error::kAtEof);
  return Current()[column];
}

ado::EditMode SnapshotRecordset::EditState() const {
  RequireOpen();
  return ado::EditMode::None;
}

void SnapshotRecordset::AddNew() {
  RequireOpen();
  throw PlatformError(error::kReadOnly);
}

void SnapshotRecordset::SetField(std::string_view /*name*/, Value /*value*/) {
  RequireOpen();
  throw PlatformError(error::kReadOnly);
}

void SnapshotRecordset::Update() {
  RequireOpen();
  throw PlatformError(error::kReadOnly);
}

void SnapshotRecordset::CancelUpdate() { RequireOpen(); }

}  // namespace twqb::sqlite
