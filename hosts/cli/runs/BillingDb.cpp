#include "cli/runs/BillingDb.h"

#include "cli/runs/Checks.h"

namespace twqb::cli {

namespace {

Workplace Checked(const Options& options) {
  auto place = WorkplaceOf(options);
  CheckBilling(place);
  return place;
}

}  // namespace

BillingDb::BillingDb(const Options& options)
    : composition_(Checked(options), ReadSurroundings(options)),
      connection_(composition_.Seams().database->CreateConnection()) {
  connection_->SetMode(ado::ConnectMode::ReadWrite);
  connection_->SetConnectionString(composition_.Place().billing);
  connection_->Open();
}

}  // namespace twqb::cli
