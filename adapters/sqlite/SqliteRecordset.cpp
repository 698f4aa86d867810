#include "adapters/sqlite/SqliteRecordset.h"

#include <fmt/core.h>

#include "adapters/sqlite/Failure.h"

namespace twqb::sqlite {

ado::ObjectState SqliteRecordset::State() const {
  return database_ && database_->IsOpen() ? ado::ObjectState::Open : ado::ObjectState::Closed;
}

void SqliteRecordset::RequireOpen() const {
  if (State() == ado::ObjectState::Closed) throw PlatformError(error::kObjectClosed);
}

std::size_t SqliteRecordset::CheckedIndex(int index) const {
  if (index < 0 || index >= static_cast<int>(columns_.size())) {
    throw Failure(error::kNoSuchField, fmt::format("({})", index));
  }
  return static_cast<std::size_t>(index);
}

int SqliteRecordset::FieldCount() const {
  RequireOpen();
  return static_cast<int>(columns_.size());
}

std::string SqliteRecordset::FieldName(int index) const {
  RequireOpen();
  return columns_[CheckedIndex(index)].name;
}

Value SqliteRecordset::Field(std::string_view name) const {
  RequireOpen();
  return FieldAt(static_cast<int>(ColumnIndex(columns_, name)));
}

int SqliteRecordset::DefinedSize(std::string_view name) const {
  RequireOpen();
  return columns_[ColumnIndex(columns_, name)].definedSize;
}

}  // namespace twqb::sqlite
