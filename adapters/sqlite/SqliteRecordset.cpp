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
  if (index < 0 || index >= static_cast<int>(columns().size())) {
    throw Failure(error::kNoSuchField, fmt::format("({})", index));
  }
  return static_cast<std::size_t>(index);
}

int SqliteRecordset::FieldCount() const {
  RequireOpen();
  return static_cast<int>(columns().size());
}

std::string SqliteRecordset::FieldName(int index) const {
  RequireOpen();
  return columns()[CheckedIndex(index)].name;
}

Value SqliteRecordset::Field(std::string_view name) const {
  RequireOpen();
  return FieldAt(static_cast<int>(IndexOf(name)));
}

int SqliteRecordset::DefinedSize(std::string_view name) const {
  RequireOpen();
  const auto index = IndexOf(name);
  return columns()[index].definedSize;
}

}  // namespace twqb::sqlite
