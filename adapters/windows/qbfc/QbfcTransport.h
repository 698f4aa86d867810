// The QuickBooks seam on QuickBooks' own object library, by late binding: text in, text out, through its entries for
// XML.
//
// Several versions of the library may be installed side by side; the first that is there serves, beginning with the one
// that hosts of this product have had longest. It knows nothing of messages.
#pragma once

#include <memory>

#include "platform/transport.h"

namespace twqb::windows {

class LastAnswer;

class QbfcTransportFactory : public TransportFactory {
 public:
  QbfcTransportFactory();
  ~QbfcTransportFactory() override;
  // Raises 0x8007007E where no version is installed, and else what making the object raises. It must outlive what it
  // makes.
  std::unique_ptr<Transport> CreateTransport() override;

  // To a set of requests, by any transport that it made.
  [[nodiscard]] LastAnswer& Last() { return *last_; }

 private:
  std::unique_ptr<LastAnswer> last_;
};

}  // namespace twqb::windows
