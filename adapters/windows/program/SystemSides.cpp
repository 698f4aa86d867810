#include "cli/options/SystemSides.h"

#include "adapters/sqlite/ConnectionText.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/windows/ado/AdoProvider.h"
#include "adapters/windows/ado/BillingProvider.h"
#include "adapters/windows/qbfc/HostCallback.h"
#include "adapters/windows/qbfc/QbfcTransport.h"

namespace twqb::cli {

namespace {

class EitherProvider : public ado::Provider {
 public:
  std::unique_ptr<ado::Connection> CreateConnection() override { return either_.CreateConnection(); }

 private:
  SqliteProvider embedded_;
  windows::AdoProvider ado_;
  windows::BillingProvider either_{embedded_, ado_, sqlite::NamesEmbeddedEngine};
};

}  // namespace

std::unique_ptr<ado::Provider> MakeBillingProvider() { return std::make_unique<EitherProvider>(); }

void RequireQuickBooksItself() {}
std::unique_ptr<TransportFactory> MakeQuickBooksItself() { return std::make_unique<windows::QbfcTransportFactory>(); }
std::unique_ptr<CallbackFactory> MakeHostCallback() { return std::make_unique<windows::HostCallbackFactory>(); }

}  // namespace twqb::cli
