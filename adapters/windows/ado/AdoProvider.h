// The database seam on ADO, by late binding: any database that has a provider on this computer.
//
// Statements and criteria go through as they are written. Numbers and texts of errors are ADO's and the provider's own.
#pragma once

#include <memory>

#include "platform/ado.h"

namespace twqb::windows {

class AdoProvider : public ado::Provider {
 public:
  // Raises the system's number where ADO is not installed.
  std::unique_ptr<ado::Connection> CreateConnection() override;
};

}  // namespace twqb::windows
