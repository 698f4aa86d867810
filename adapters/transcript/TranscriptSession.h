// The QuickBooks seam with its events: session, request, response.
#pragma once

#include <memory>

#include "platform/transport.h"

namespace twqb {
class TranscriptWriter;
}

namespace twqb::transcript {

class TranscriptTransportFactory : public TransportFactory {
 public:
  // Both must outlive the factory and every transport of it.
  TranscriptTransportFactory(TransportFactory& inner, TranscriptWriter& writer) : inner_(inner), writer_(writer) {}
  std::unique_ptr<Transport> CreateTransport() override;

 private:
  TransportFactory& inner_;
  TranscriptWriter& writer_;
};

}  // namespace twqb::transcript
