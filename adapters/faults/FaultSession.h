// The QuickBooks seam behind the gate, with its scripted answers.
#pragma once

#include <memory>

#include "adapters/faults/FaultAnswers.h"
#include "adapters/faults/FaultGate.h"
#include "platform/transport.h"

namespace twqb::faults {

class FaultTransportFactory : public TransportFactory {
 public:
  // All three must outlive the factory and every transport of it. A request counts as on the wire when the call that
  // carries it does not fail before it takes effect.
  FaultTransportFactory(TransportFactory& inner, FaultGate& gate, FaultAnswers& answers)
      : inner_(inner), gate_(gate), answers_(answers) {}
  std::unique_ptr<Transport> CreateTransport() override;

 private:
  TransportFactory& inner_;
  FaultGate& gate_;
  FaultAnswers& answers_;
};

}  // namespace twqb::faults
