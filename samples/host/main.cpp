// A host: sends all clients of the firm in this folder, which `twqb init --sample` makes, to its company file.

#include <cstdio>

#include "adapters/companyfile/CompanyTransport.h"
#include "adapters/sqlite/SqliteProvider.h"
#include "adapters/system/Callbacks.h"
#include "adapters/system/SystemMachine.h"
#include "adapters/terminal/TerminalDesk.h"
#include "twqb/CTWQBBridge.h"

int main() {
  twqb::SystemMachine machine({.libraryFolder = ".", .registryFile = "registry.ini"});
  twqb::SqliteProvider database;
  twqb::company::CompanyTransportFactory quickbooks("company.twq", machine);
  twqb::TerminalDesk desk;
  twqb::NoCallbackFactory callback;
  twqb::Compose({&database, &quickbooks, &desk, &machine, &callback});

  twqb::CTWQBBridge bridge;
  bridge.SetConnectString("Provider=SQLITE;Data Source=billing.db");
  bridge.SetTWSettingsPath("twqb.ini");
  bridge.SetUsePreferencesTW(true);
  const bool sent = bridge.SendDataToQB(twqb::enClients);
  std::puts(sent ? "The clients are in QuickBooks." : "The clients are not all in QuickBooks.");
  return sent ? 0 : 1;
}
