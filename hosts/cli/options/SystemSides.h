// The sides of a run that this system has beside the embedded ones: QuickBooks itself, and databases of other makers.
//
// Both are on Windows alone, where adapters/windows/program/SystemSides.cpp takes the place of the file of that name
// here: QuickBooks by its session library, other databases by ADO. Elsewhere QuickBooks itself is refused, and a
// provider that is not the embedded engine is one that does not exist.
#pragma once

#include <functional>
#include <memory>

#include "platform/ado.h"
#include "platform/callback.h"
#include "platform/transport.h"

namespace twqb::cli {

// Sides that a program brings in the place of those of this system.
struct OtherSides {
  std::function<std::unique_ptr<ado::Provider>()> billing;
  std::function<std::unique_ptr<TransportFactory>()> quickBooks;
};

// What BillingDb is opened by, whichever provider its connection string names.
[[nodiscard]] std::unique_ptr<ado::Provider> MakeBillingProvider();

// Raises the UsageError of a system that QuickBooks does not run on.
void RequireQuickBooksItself();
// Both raise the same. Whether QuickBooks is installed shows when they are first used.
[[nodiscard]] std::unique_ptr<TransportFactory> MakeQuickBooksItself();
// What QuickBooks tells of its changes, so that a run can hold it still.
[[nodiscard]] std::unique_ptr<CallbackFactory> MakeHostCallback();

// Those that a program brings, or, for nullptr, this system's.
[[nodiscard]] inline std::unique_ptr<ado::Provider> BillingProviderOf(const OtherSides* sides) {
  return sides != nullptr ? sides->billing() : MakeBillingProvider();
}
[[nodiscard]] inline std::unique_ptr<TransportFactory> QuickBooksItselfOf(const OtherSides* sides) {
  return sides != nullptr ? sides->quickBooks() : MakeQuickBooksItself();
}

}  // namespace twqb::cli
