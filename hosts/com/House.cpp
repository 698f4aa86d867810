#include "com/House.h"

#include <optional>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/sqlite/ConnectionText.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/ProfileFile.h"
#include "adapters/windows/ado/AdoProvider.h"
#include "adapters/windows/ado/BillingProvider.h"
#include "adapters/windows/desk/WindowsDesk.h"
#include "adapters/windows/machine/WindowsMachine.h"
#include "adapters/windows/qbfc/HostCallback.h"
#include "adapters/windows/qbfc/QbfcTransport.h"
#include "com/Module.h"
#include "twqb/CTWQBBridge.h"

namespace twqb::com {

namespace {

class House {
 public:
  House() : machine_(Module::Folder()) {
    const auto file = ProfileFile(Module::Folder() + "\\TWQBClient90.ini").Read("QUICKBOOKS", "CompanyFile");
    if (file && !file->empty()) embedded_.emplace(*file, machine_);
    TransportFactory* const other = embedded_ ? static_cast<TransportFactory*>(&*embedded_) : &quickbooks_;
    twqb::Compose(
        {.database = &database_, .quickbooks = other, .desk = &desk_, .machine = &machine_, .callback = &callback_});
  }
  // The library keeps connection and session until it is composed anew, and they stand on what goes here.
  ~House() { twqb::Compose({}); }
  House(const House&) = delete;
  House& operator=(const House&) = delete;

  [[nodiscard]] windows::QbfcTransportFactory* Library() { return embedded_ ? nullptr : &quickbooks_; }

 private:
  windows::WindowsMachine machine_;
  SqliteProvider engine_;
  windows::AdoProvider ado_;
  windows::BillingProvider database_{engine_, ado_, sqlite::NamesEmbeddedEngine};
  windows::QbfcTransportFactory quickbooks_;
  std::optional<company::CompanyTransportFactory> embedded_;
  windows::WindowsDesk desk_;
  windows::HostCallbackFactory callback_;
};

windows::QbfcTransportFactory* library = nullptr;  // the house's

}  // namespace

void Compose() {
  static House house;
  library = house.Library();
}

windows::QbfcTransportFactory* SessionLibrary() { return library; }

}  // namespace twqb::com
