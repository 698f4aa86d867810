// The database seam behind the gate.
#pragma once

#include <memory>

#include "adapters/faults/FaultGate.h"
#include "platform/ado.h"

namespace twqb::faults {

class FaultProvider : public ado::Provider {
 public:
  // Both must outlive the provider and every connection of it.
  FaultProvider(ado::Provider& inner, FaultGate& gate) : inner_(inner), gate_(gate) {}
  std::unique_ptr<ado::Connection> CreateConnection() override;

 private:
  ado::Provider& inner_;
  FaultGate& gate_;
};

}  // namespace twqb::faults
