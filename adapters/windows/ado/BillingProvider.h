// Which database a connection is to: by the provider in its connection string, the embedded engine or ADO.
//
// SQLITE and JETLITE are names of the embedded engine; every other string is ADO's. Nothing is opened before it is
// asked.
#pragma once

#include <functional>
#include <memory>

#include "platform/ado.h"

namespace twqb::windows {

class BillingProvider : public ado::Provider {
 public:
  // Whether a connection string is the embedded engine's.
  using IsEmbedded = std::function<bool(const std::string&)>;

  // Neither is owned; both must outlive the connections.
  BillingProvider(ado::Provider& embedded, ado::Provider& other, IsEmbedded isEmbedded);

  // What it is told ahead of its connection string is handed on then.
  std::unique_ptr<ado::Connection> CreateConnection() override;

 private:
  ado::Provider& embedded_;
  ado::Provider& other_;
  IsEmbedded isEmbedded_;
};

}  // namespace twqb::windows
