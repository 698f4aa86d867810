#include "transactions/NewRow.h"

#include "platform/PlatformError.h"
#include "services/Conversions.h"
#include "services/Database.h"
#include "services/Errors.h"
#include "services/ModuleVariables.h"

namespace twqb {

Given TextOf(const Record& field) { return field.IsNothing() ? Given() : field.GetValue(); }
Given DateOf(const Record& field) { return field.IsNothing() ? Given() : field.GetDate(); }

std::optional<Currency> AmountOf(const Record& field) {
  return field.IsNothing() ? std::nullopt : std::optional(field.GetAmount());
}

Given PresentMoment() { return LocalToUTC(TheMachine().Now()); }

OpenTable::OpenTable(ado::Connection& connection, std::string_view table) {
  OpenConnection(connection, &rows_, table);
  if (!rows_) throw PlatformError(error::kObjectNothing);
}

OpenTable::~OpenTable() {
  IgnoreErrors([&] {
    if (rows_->EditState() != ado::EditMode::None) rows_->CancelUpdate();
  });
  IgnoreErrors([&] { rows_->Close(); });
}

}  // namespace twqb
