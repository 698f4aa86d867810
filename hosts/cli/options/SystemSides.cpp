#include "cli/options/SystemSides.h"

#include "adapters/sqlite/SqliteProvider.h"
#include "cli/options/ExitStatus.h"

namespace twqb::cli {

namespace {

[[noreturn]] void Refuse() {
  throw UsageError(
      "QuickBooks itself runs on Windows, and so does --quickbooks: give it to twqb.exe there.\nHere a company file "
      "stands in QuickBooks' place; --company names it.");
}

}  // namespace

std::unique_ptr<ado::Provider> MakeBillingProvider() { return std::make_unique<SqliteProvider>(); }

void RequireQuickBooksItself() { Refuse(); }
std::unique_ptr<TransportFactory> MakeQuickBooksItself() { Refuse(); }
std::unique_ptr<CallbackFactory> MakeHostCallback() { Refuse(); }

}  // namespace twqb::cli
